// Resolution of the coordinates that the module computes with.

#pragma once

#include <ZORMathematics/ZORMathPoint.h>

/// Returns whether two points of a curve are the same up to the rounding of what computed them.
/// \param length  of the curve
inline bool ZorGeoCoincide(const ZORMathPoint& a, const ZORMathPoint& b, double length)
{
    constexpr double kCoincidence = 1e-9;
    return a.DistanceTo(b) <= kCoincidence * length;
}
