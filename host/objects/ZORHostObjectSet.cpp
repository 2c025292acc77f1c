#include "objects/ZORHostObjectSet.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatDrawnOf.h>
#include <ZORFeature/ZORFeatGeometry.h>

#include <QSet>

namespace {

/// A list without duplicates.
class UniqueObjects
{
public:
    bool Add(ZORGeoGeometry* object)
    {
        if (!object || m_known.contains(object))
            return false;
        m_known.insert(object);
        m_objects.append(object);
        return true;
    }
    const QList<ZORGeoGeometry*>& Get() const { return m_objects; }

private:
    QSet<const ZORGeoGeometry*> m_known;
    QList<ZORGeoGeometry*> m_objects;
};

} // namespace

QList<ZORGeoGeometry*> ZORHostObjectsWithParts(const QList<ZORGeoGeometry*>& objects)
{
    UniqueObjects found;
    const auto addWithOwned = [&found](ZORGeoGeometry* object) {
        found.Add(object);
        const auto* const feature = qobject_cast<const ZORFeatGeometry*>(object);
        const QList<ZORGeoGeometry*> owned = feature ? feature->GetOwnedGeometry() : QList<ZORGeoGeometry*>();
        for (ZORGeoGeometry* part : owned)
            found.Add(part);
    };
    for (ZORGeoGeometry* object : objects) {
        addWithOwned(object);
        if (const auto* feature = qobject_cast<const ZORFeatObject*>(object)) {
            for (ZORFeatObject* child : feature->GetAllChildren())
                addWithOwned(child);
        }
    }
    return found.Get();
}

QList<ZORGeoGeometry*> ZORHostDrawnObjects(const QList<ZORGeoGeometry*>& objects)
{
    UniqueObjects found;
    for (ZORGeoGeometry* object : objects) {
        found.Add(ZORFeatDrawnOf(object));
        if (const auto* feature = qobject_cast<const ZORFeatObject*>(object)) {
            for (const ZORFeatObject* child : feature->GetAllChildren())
                found.Add(ZORFeatDrawnOf(child));
        }
    }
    return found.Get();
}

QList<ZORGeoGeometry*> ZORHostDrawnObjects(const ZORFeatContainer& container)
{
    UniqueObjects found;
    for (int i = 0; i < container.GetNumGeometry(); ++i)
        found.Add(ZORFeatDrawnOf(container.GetGeometryByIndex(i)));
    return found.Get();
}
