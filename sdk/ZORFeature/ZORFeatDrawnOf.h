// The object by whose drawing people see an object.

#pragma once

#include <ZORFeature/ZORFeatureGlobal.h>

class ZORGeoGeometry;

/// Returns the object by whose drawing people see an object: the feature that it belongs to, the geometry that a body or a
/// feature is made of, or the object itself. The style of that object counts.
/// \return null for null and where there is nothing to see, such as for folders; not owned
ZORFEATURE_EXPORT ZORGeoGeometry* ZORFeatDrawnOf(const ZORGeoGeometry* object);
