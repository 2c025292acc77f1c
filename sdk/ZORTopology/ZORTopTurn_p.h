// Whether a curve or a surface is smooth at a place.

#pragma once

#include <ZORMathematics/ZORMathVector.h>

#include <cmath>
#include <limits>
#include <numbers>

/// Compares turns with the edge tolerance.
///
/// Turns that are greater by no more than 1e-9 radians are smooth as well, since designs turn by exactly 45 degrees
/// rather often: rounding shall not decide about them.
class ZORTopTurn
{
public:
    /// \param tolerance  radians, 0 or more
    explicit ZORTopTurn(double tolerance)
        : m_largest(tolerance + kMargin < std::numbers::pi ? tolerance + kMargin
                                                           : std::numeric_limits<double>::infinity())
        , m_cosine(std::isinf(m_largest) ? -2 : std::cos(m_largest))
    {
    }

    /// \param a,b  of length 1, or zero: a missing direction turns nowhere
    bool IsSmooth(const ZORMathVector& a, const ZORMathVector& b) const
    {
        constexpr double kDoubt = 1e-12; // cosines near 1 do not distinguish small angles
        const double cosine = Dot(a, b);
        if (std::abs(cosine - m_cosine) > kDoubt)
            return cosine > m_cosine || a == ZORMathVector() || b == ZORMathVector();
        return std::atan2(Cross(a, b).GetLength(), cosine) <= m_largest;
    }

private:
    static constexpr double kMargin = 1e-9;

    double m_largest; // radians
    double m_cosine;
};
