// Range of the coordinates that curves and surfaces accept.

#pragma once

#include <ZORMathematics/ZORMathPoint.h>

#include <cmath>

namespace ZORGeoRange {

/// Millimeters. The largest products the algorithms form are fourth powers, far from overflow here.
constexpr double kLargestCoordinate = 1e60;

/// Returns whether no coordinate of a point lies beyond kLargestCoordinate; false for coordinates that are not numbers.
inline bool Contains(const ZORMathPoint& point)
{
    return std::abs(point.GetX()) <= kLargestCoordinate && std::abs(point.GetY()) <= kLargestCoordinate
           && std::abs(point.GetZ()) <= kLargestCoordinate;
}

} // namespace ZORGeoRange
