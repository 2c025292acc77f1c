// Functions of points and vectors.

#pragma once

#include <ZORMathematics/ZORMathPoint.h>
#include <ZORMathematics/ZORMathVector.h>

#include <algorithm>
#include <cmath>

/// Returns whether a vector is exactly zero, such as ZORMathVector::GetNormalized() of one without a direction.
constexpr bool IsZero(const ZORMathVector& vector)
{
    return vector == ZORMathVector();
}

/// Returns the angle from one vector to the other, 0 ... pi. Accurate to rounding for all angles; 0 when one of the vectors
/// is zero.
inline double AngleBetween(const ZORMathVector& a, const ZORMathVector& b)
{
    return std::atan2(Cross(a, b).GetLength(), Dot(a, b));
}

/// Returns the point of the line through \a a and \a b at \a part of the distance between them: \a a at 0.
constexpr ZORMathPoint PointBetween(const ZORMathPoint& a, const ZORMathPoint& b, double part)
{
    return a + part * (b - a);
}

/// Returns the largest absolute value of the coordinates of a point.
inline double LargestCoordinate(const ZORMathPoint& point)
{
    return std::max({std::abs(point.GetX()), std::abs(point.GetY()), std::abs(point.GetZ())});
}
