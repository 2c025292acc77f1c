#include "ZORFeatBrowserFilter_p.h"

#include <ZORGeometry/ZORGeoGeometry.h>

ZORFeatBrowserFilter::ZORFeatBrowserFilter(QObject* parent)
    : QSortFilterProxyModel(parent)
{
    setRecursiveFilteringEnabled(true);
}

void ZORFeatBrowserFilter::SetText(const QString& text)
{
    m_text = text;
    invalidateFilter();
}

bool ZORFeatBrowserFilter::filterAcceptsRow(int row, const QModelIndex& parent) const
{
    return m_text.isEmpty() || MatchesSource(sourceModel()->index(row, 0, parent));
}

bool ZORFeatBrowserFilter::MatchesSource(const QModelIndex& index) const
{
    const bool isGroup = !index.data(Qt::UserRole).value<ZORGeoGeometry*>();
    return !isGroup && index.data(Qt::EditRole).toString().contains(m_text, Qt::CaseInsensitive);
}
