// The items of the feature browser that match a search.

#pragma once

#include <QSortFilterProxyModel>

/// Shows the geometries whose names contain a text, in any case, and their ancestors; everything for an empty text.
class ZORFeatBrowserFilter final : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    explicit ZORFeatBrowserFilter(QObject* parent);

    void SetText(const QString& text);
    /// Checks whether the item itself matches, not only one below it.
    /// \param index  of this model
    bool Matches(const QModelIndex& index) const { return MatchesSource(mapToSource(index)); }

protected:
    bool filterAcceptsRow(int row, const QModelIndex& parent) const override;

private:
    bool MatchesSource(const QModelIndex& index) const;

    QString m_text;
};
