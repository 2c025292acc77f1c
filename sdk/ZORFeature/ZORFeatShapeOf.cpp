#include "ZORFeatShapeOf.h"

#include <ZORFeature/ZORFeatGeometry.h>
#include <ZORTopology/ZORTopBody.h>

const ZORGeoGeometry* ZORFeatShapeOf(const ZORGeoGeometry* object)
{
    if (!qobject_cast<const ZORFeatObject*>(object))
        return object;
    const auto* const feature = qobject_cast<const ZORFeatGeometry*>(object);
    const ZORTopBody* const body = feature ? feature->GetBody() : nullptr;
    return body ? body->GetGeometry() : nullptr;
}
