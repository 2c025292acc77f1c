#include "ZORGeoHolders.h"

#include "storage/ZORGeoContainerIndex_p.h"

#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoGeometry.h>

#include <map>

ZORGeoHolders::ZORGeoHolders(const ZORGeoContainer& container)
{
    const int count = container.GetNumGeometry();
    m_entries.reserve(count);
    for (int i = 0; i < count; ++i) {
        ZORGeoGeometry* const geometry = container.GetGeometryByIndex(i);
        m_entries.insert(geometry, {geometry, i});
    }
}

QList<ZORGeoGeometry*> ZORGeoHolders::GetHolders(const ZORGeoGeometry& geometry) const
{
    std::map<int, ZORGeoGeometry*> found;
    for (const auto& [user, count] : ZORGeoContainerIndex::UsersOf(geometry)) {
        if (const auto entry = m_entries.constFind(user); entry != m_entries.constEnd())
            found.emplace(entry->index, entry->geometry);
    }
    QList<ZORGeoGeometry*> holders;
    for (const auto& [index, holder] : found)
        holders.append(holder);
    return holders;
}

int ZORGeoHolders::GetNumOtherReferences(const ZORGeoGeometry& geometry) const
{
    int others = geometry.GetReferenceCount();
    for (const auto& [user, count] : ZORGeoContainerIndex::UsersOf(geometry)) {
        if (m_entries.contains(user))
            others -= count;
    }
    return others;
}
