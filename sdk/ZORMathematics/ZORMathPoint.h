// A point of 3-space.

#pragma once

#include <ZORMathematics/ZORMathVector.h>
#include <ZORMathematics/ZORMathematicsGlobal.h>

#include <QList>
#include <QMetaType>
#include <QString>

/// A point of 3-space, millimetres; the origin by default.
/// Thread safety: reentrant; objects may be shared read-only.
class ZORMATHEMATICS_EXPORT ZORMathPoint
{
public:
    constexpr ZORMathPoint() = default;
    constexpr ZORMathPoint(double x, double y, double z)
        : m_x(x)
        , m_y(y)
        , m_z(z)
    {
    }

    constexpr double GetX() const { return m_x; }
    constexpr double GetY() const { return m_y; }
    constexpr double GetZ() const { return m_z; }
    constexpr void SetX(double x) { m_x = x; }
    constexpr void SetY(double y) { m_y = y; }
    constexpr void SetZ(double z) { m_z = z; }

    double DistanceTo(const ZORMathPoint& other) const { return (other - *this).GetLength(); }
    /// False when a coordinate is infinite or not a number.
    bool IsFinite() const;

    /// "(x, y, z)", every coordinate as QString::number() writes it.
    /// \param format     'e', 'f' or 'g'
    /// \param precision  digits, as for QString::number()
    QString ToString(char format, int precision) const;

    /// Scales the coordinates about the origin.
    constexpr ZORMathPoint& operator*=(double s)
    {
        m_x *= s;
        m_y *= s;
        m_z *= s;
        return *this;
    }

    friend constexpr ZORMathVector operator-(const ZORMathPoint& a, const ZORMathPoint& b)
    {
        return {a.m_x - b.m_x, a.m_y - b.m_y, a.m_z - b.m_z};
    }
    friend constexpr ZORMathPoint operator+(const ZORMathPoint& p, const ZORMathVector& v)
    {
        return {p.m_x + v.GetX(), p.m_y + v.GetY(), p.m_z + v.GetZ()};
    }
    friend constexpr ZORMathPoint operator-(const ZORMathPoint& p, const ZORMathVector& v)
    {
        return {p.m_x - v.GetX(), p.m_y - v.GetY(), p.m_z - v.GetZ()};
    }
    friend constexpr bool operator==(const ZORMathPoint&, const ZORMathPoint&) = default;
    friend ZORMATHEMATICS_EXPORT void ZorTraceAppend(QByteArray& out, const ZORMathPoint& point);

private:
    double m_x = 0;
    double m_y = 0;
    double m_z = 0;
};

Q_DECLARE_TYPEINFO(ZORMathPoint, Q_PRIMITIVE_TYPE);

/// The vector from the origin to \a point.
constexpr ZORMathVector PositionVector(const ZORMathPoint& point)
{
    return {point.GetX(), point.GetY(), point.GetZ()};
}
