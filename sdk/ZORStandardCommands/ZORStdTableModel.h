// Base of the tables whose cells are edited.

#pragma once

#include <QAbstractTableModel>
#include <QIcon>

/// A table of titled columns whose cells can all be edited. Derived classes hold the rows.
class ZORStdTableModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    int rowCount(const QModelIndex& parent = {}) const final;
    int columnCount(const QModelIndex& parent = {}) const final;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const final;
    QVariant data(const QModelIndex& index, int role) const final;
    bool setData(const QModelIndex& index, const QVariant& value, int role) final;
    Qt::ItemFlags flags(const QModelIndex& index) const final;

protected:
    /// \param warning  icon of cells that do not fit
    ZORStdTableModel(int numColumns, const QIcon& warning, QObject* parent);

    const QIcon& GetWarning() const { return m_warning; }

private:
    virtual int GetNumRows() const = 0;
    virtual QString GetTitle(int column) const = 0;
    /// Returns the data of a cell of the table.
    virtual QVariant GetCell(int row, int column, int role) const = 0;
    /// Changes what a cell of the table holds, and reports it by dataChanged().
    /// \return false when nothing changes
    virtual bool SetCell(int row, int column, const QVariant& value) = 0;

    const int m_numColumns;
    const QIcon m_warning;
};
