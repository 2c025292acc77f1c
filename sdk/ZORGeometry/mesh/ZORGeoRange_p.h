// Range and resolution of the coordinates that the module computes with.

#pragma once

#include <ZORMathematics/ZORMathPoint.h>

#include <cmath>

/// Millimeters. The largest products the algorithms form are fourth powers, far from overflow here.
inline constexpr double ZorGeoMaximumCoordinate = 1e60;

inline bool ZorGeoIsInRange(const ZORMathPoint& point)
{
    return std::abs(point.GetX()) <= ZorGeoMaximumCoordinate
           && std::abs(point.GetY()) <= ZorGeoMaximumCoordinate
           && std::abs(point.GetZ()) <= ZorGeoMaximumCoordinate;
}

/// Whether two points of a curve are the same up to the rounding of what computed them.
/// \param length  of the curve
inline bool ZorGeoCoincide(const ZORMathPoint& a, const ZORMathPoint& b, double length)
{
    constexpr double kCoincidence = 1e-9;
    return a.DistanceTo(b) <= kCoincidence * length;
}
