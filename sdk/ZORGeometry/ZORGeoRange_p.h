// Range of the coordinates that the module computes with.

#pragma once

#include <ZORMathematics/ZORMathPoint.h>

#include <cmath>

/// Millimetres. The largest products the algorithms form are fourth powers, far from overflow here.
inline constexpr double ZorGeoMaximumCoordinate = 1e60;

inline bool ZorGeoIsInRange(const ZORMathPoint& point)
{
    return std::abs(point.GetX()) <= ZorGeoMaximumCoordinate
           && std::abs(point.GetY()) <= ZorGeoMaximumCoordinate
           && std::abs(point.GetZ()) <= ZorGeoMaximumCoordinate;
}
