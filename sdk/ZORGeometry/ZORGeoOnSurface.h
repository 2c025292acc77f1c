// Points and directions on a surface.

#pragma once

#include <ZORGeometry/ZORGeoLocationOnSurface.h>
#include <ZORGeometry/ZORGeometryGlobal.h>

class ZORGeoPoint;
class ZORGeoSurface;
class ZORMathVector;

namespace ZORGeoOnSurface {

/// Length below which the projection of a direction of length 1 onto a triangle does not count: it would consist of
/// rounding errors. In radians, how far from the normal a direction must be to be followed over a surface.
constexpr double kVanishingProjection = 1e-12;

/// Returns whether a location is within its triangle: no weight of a corner is below -1e-9, which allows for rounding.
ZORGEOMETRY_EXPORT bool IsWithinTriangle(const ZORGeoLocationOnSurface& location);

/// Returns where a point is on a surface: its own location when it is tied to this surface, otherwise the nearest one.
/// \return null as ZORGeoSurface::Project()
ZORGEOMETRY_EXPORT ZORGeoLocationOnSurface Locate(const ZORGeoPoint& point, const ZORGeoSurface& surface);

/// Returns whether a direction is perpendicular to the triangle of a location, also when it is zero.
/// \param tolerance  radians
/// \return false for a triangle without area
ZORGEOMETRY_EXPORT bool IsPerpendicular(const ZORMathVector& direction,
                                        const ZORGeoLocationOnSurface& location, double tolerance);

} // namespace ZORGeoOnSurface
