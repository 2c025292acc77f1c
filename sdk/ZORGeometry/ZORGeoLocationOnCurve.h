// A place on a curve.

#pragma once

#include <ZORGeometry/ZORGeometryGlobal.h>
#include <ZORMathematics/ZORMathPoint.h>

class ZORGeoCurve;

/// A place on a curve or on the straight continuation of one of its ends; null until an operation fills it.
/// A value that does not keep its curve alive: use it until the curve is destroyed or changes in place.
///
/// Thread safety: reentrant; objects may be shared read-only.
struct ZORGEOMETRY_EXPORT ZORGeoLocationOnCurve
{
    const ZORGeoCurve* curve = nullptr; // not owned; null: no location
    double distance = 0; // arc length from the start, millimeters; outside 0 ... length: continued
    ZORMathPoint point;  // the same place in 3-space, millimeters

    bool IsNull() const { return !curve; }

    friend ZORGEOMETRY_EXPORT void ZorTraceAppend(QByteArray& out, const ZORGeoLocationOnCurve& location);
};
