// A place on a triangulated surface.

#pragma once

#include <ZORGeometry/ZORGeometryGlobal.h>
#include <ZORMathematics/ZORMathPoint.h>

class ZORGeoSurface;

/// A place on a surface, inside or on the border of one triangle; null until an operation fills it.
/// A value that does not keep its surface alive: use it no longer than the surface.
///
/// Thread safety: reentrant; objects may be shared read-only.
struct ZORGEOMETRY_EXPORT ZORGeoLocationOnSurface
{
    const ZORGeoSurface* surface = nullptr; // not owned; null: no location
    int triangle = 0;                       // 1 ... GetNumTriangles()
    double weightB = 0;                     // barycentric weights of the corners B and C, 0 ... 1;
    double weightC = 0;                     // the weight of A is 1 - weightB - weightC
    ZORMathPoint point;                     // the same place in 3-space, millimetres

    bool IsNull() const { return !surface; }

    friend ZORGEOMETRY_EXPORT void ZorTraceAppend(QByteArray& out, const ZORGeoLocationOnSurface& location);
};
