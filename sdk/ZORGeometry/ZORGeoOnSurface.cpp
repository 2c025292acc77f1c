#include "ZORGeoOnSurface.h"

#include <ZORGeometry/ZORGeoPointOnSurface.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORMathematics/ZORMathFunctions.h>

bool ZORGeoOnSurface::IsWithinTriangle(const ZORGeoLocationOnSurface& location)
{
    constexpr double kRounding = 1e-9;
    return location.weightB >= -kRounding && location.weightC >= -kRounding
           && location.weightB + location.weightC <= 1 + kRounding;
}

ZORGeoLocationOnSurface ZORGeoOnSurface::Locate(const ZORGeoPoint& point, const ZORGeoSurface& surface)
{
    const auto* const tied = qobject_cast<const ZORGeoPointOnSurface*>(&point);
    return tied && tied->GetSurface() == &surface ? tied->GetLocationOnSurface()
                                                  : surface.Project(point.GetMathPoint());
}

bool ZORGeoOnSurface::IsPerpendicular(const ZORMathVector& direction, const ZORGeoLocationOnSurface& location,
                                      double tolerance)
{
    ZORMathPoint a, b, c;
    location.surface->GetVertices(location.triangle, a, b, c);
    // Lengths of 1 keep the products of small and of large triangles in range.
    const ZORMathVector normal = Cross((b - a).GetNormalized(), (c - a).GetNormalized()).GetNormalized();
    return !IsZero(normal) && Cross(normal, direction.GetNormalized()).GetLength() <= tolerance;
}
