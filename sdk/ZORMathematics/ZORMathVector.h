// A direction or displacement of 3-space.

#pragma once

#include <ZORMathematics/ZORMathematicsGlobal.h>

#include <QByteArray>
#include <QTypeInfo>

#include <cmath>

/// A vector; as a displacement in millimetres.
/// Thread safety: reentrant; objects may be shared read-only.
class ZORMATHEMATICS_EXPORT ZORMathVector
{
public:
    constexpr ZORMathVector() = default;
    constexpr ZORMathVector(double x, double y, double z)
        : m_x(x)
        , m_y(y)
        , m_z(z)
    {
    }

    constexpr double GetX() const { return m_x; }
    constexpr double GetY() const { return m_y; }
    constexpr double GetZ() const { return m_z; }

    /// Accurate to some units in the last place at every magnitude; infinity when a component is infinite,
    /// else not a number when one is not.
    double GetLength() const
    {
        const double square = m_x * m_x + m_y * m_y + m_z * m_z;
        return IsAccurate(square) ? std::sqrt(square) : GetExtremeLength();
    }
    /// The vector of length 1 in the same direction; the zero vector when the length is zero, or when a
    /// component is not finite. Exact to rounding for every other vector.
    ZORMathVector GetNormalized() const;
    /// False when a component is infinite or not a number.
    bool IsFinite() const;

    constexpr ZORMathVector operator-() const { return {-m_x, -m_y, -m_z}; }
    constexpr ZORMathVector& operator+=(const ZORMathVector& v)
    {
        m_x += v.m_x;
        m_y += v.m_y;
        m_z += v.m_z;
        return *this;
    }
    constexpr ZORMathVector& operator*=(double s)
    {
        m_x *= s;
        m_y *= s;
        m_z *= s;
        return *this;
    }

    friend constexpr ZORMathVector operator+(const ZORMathVector& a, const ZORMathVector& b)
    {
        return {a.m_x + b.m_x, a.m_y + b.m_y, a.m_z + b.m_z};
    }
    friend constexpr ZORMathVector operator-(const ZORMathVector& a, const ZORMathVector& b)
    {
        return {a.m_x - b.m_x, a.m_y - b.m_y, a.m_z - b.m_z};
    }
    friend constexpr ZORMathVector operator*(double s, const ZORMathVector& v)
    {
        return {s * v.m_x, s * v.m_y, s * v.m_z};
    }
    friend constexpr ZORMathVector operator*(const ZORMathVector& v, double s) { return s * v; }
    friend constexpr double Dot(const ZORMathVector& a, const ZORMathVector& b)
    {
        return a.m_x * b.m_x + a.m_y * b.m_y + a.m_z * b.m_z;
    }
    friend constexpr ZORMathVector Cross(const ZORMathVector& a, const ZORMathVector& b)
    {
        return {a.m_y * b.m_z - a.m_z * b.m_y, a.m_z * b.m_x - a.m_x * b.m_z, a.m_x * b.m_y - a.m_y * b.m_x};
    }
    friend constexpr bool operator==(const ZORMathVector&, const ZORMathVector&) = default;
    friend ZORMATHEMATICS_EXPORT void ZorTraceAppend(QByteArray& out, const ZORMathVector& vector);

private:
    // Whether a sum of squares lost nothing to overflow or underflow.
    static bool IsAccurate(double square) { return square > 1e-280 && square < 1e300; }
    double GetExtremeLength() const;

    double m_x = 0;
    double m_y = 0;
    double m_z = 0;
};

Q_DECLARE_TYPEINFO(ZORMathVector, Q_PRIMITIVE_TYPE);
