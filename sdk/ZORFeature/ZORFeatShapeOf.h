// The shape of an object, be it a feature or a geometry.

#pragma once

#include <ZORFeature/ZORFeatureGlobal.h>
#include <ZORGeometry/ZORGeoGeometry.h>

/// Returns the shape of an object: of a feature what its body is made of, of any other geometry itself.
/// \return null for null, for features without a body and for bodies of several geometries
ZORFEATURE_EXPORT const ZORGeoGeometry* ZORFeatShapeOf(const ZORGeoGeometry* object);

/// Returns the shape of an object as a \a Geometry; null when it is of another class.
template<class Geometry>
const Geometry* ZORFeatShapeOf(const ZORGeoGeometry* object)
{
    return qobject_cast<const Geometry*>(ZORFeatShapeOf(object));
}
