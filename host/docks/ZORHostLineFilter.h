// Row filter of the log and API docks.

#pragma once

#include <QSortFilterProxyModel>

/// Keeps the rows of a ZORHostLineModel that have at least a level, that hold a text in any column (case
/// does not matter) and, when one is set, that equal a text in one column.
class ZORHostLineFilter : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    using QSortFilterProxyModel::QSortFilterProxyModel;

    void SetMinimumLevel(int level);
    void SetText(const QString& text);
    /// \param value  empty: any
    void SetColumnValue(int column, const QString& value);

protected:
    bool filterAcceptsRow(int sourceRow, const QModelIndex& sourceParent) const override;

private:
    int m_level = 0;
    QString m_text;
    int m_column = 0;
    QString m_value;
};
