#include "ZORFeatDrawnOf.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatGeometry.h>
#include <ZORGeometry/ZORGeoCurve.h>
#include <ZORGeometry/ZORGeoPoint.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORTopology/ZORTopBody.h>

#include <algorithm>

namespace {

bool IsShape(const ZORGeoGeometry* object)
{
    return qobject_cast<const ZORGeoPoint*>(object) || qobject_cast<const ZORGeoCurve*>(object)
           || qobject_cast<const ZORGeoSurface*>(object);
}

/// Checks whether a feature has more than a body around something else.
bool OwnsShape(const ZORFeatGeometry& feature)
{
    const QList<ZORGeoGeometry*> owned = feature.GetOwnedGeometry();
    return std::any_of(owned.begin(), owned.end(), IsShape);
}

} // namespace

ZORGeoGeometry* ZORFeatDrawnOf(const ZORGeoGeometry* object)
{
    const auto* const container =
        object ? qobject_cast<const ZORFeatContainer*>(object->GetContainer()) : nullptr;
    if (!container)
        return nullptr;
    if (const ZORFeatGeometry* owner = container->GetOwner(object))
        return ZORFeatDrawnOf(owner);
    const auto* const feature = qobject_cast<const ZORFeatGeometry*>(object);
    if (feature ? OwnsShape(*feature) : IsShape(object))
        return const_cast<ZORGeoGeometry*>(object);
    const auto* const body = feature ? feature->GetBody() : qobject_cast<const ZORTopBody*>(object);
    const QList<const ZORGeoGeometry*> parts = body ? body->GetGeometries() : QList<const ZORGeoGeometry*>();
    return parts.isEmpty() ? nullptr : ZORFeatDrawnOf(parts.first());
}
