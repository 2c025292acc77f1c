// A piece of a curve between two arc lengths.

#pragma once

#include <ZORGeometry/ZORGeometryGlobal.h>

#include <QByteArray>

#include <limits>

/// A piece of a curve; the whole curve by default, whatever its length.
/// Thread safety: reentrant; objects may be shared read-only.
class ZORGEOMETRY_EXPORT ZORGeoRangeOfCurve
{
public:
    constexpr ZORGeoRangeOfCurve() = default;
    /// \param start,end  arc lengths from the start of the curve, millimetres; what lies outside the curve
    ///                   is left out. With start > end, or a value that is not a number, the range is empty.
    constexpr ZORGeoRangeOfCurve(double start, double end)
        : m_start(start)
        , m_end(end)
    {
    }

    constexpr double GetStart() const { return m_start; }
    constexpr double GetEnd() const { return m_end; }
    constexpr bool IsEmpty() const { return !(m_start <= m_end); }

    friend constexpr bool operator==(const ZORGeoRangeOfCurve&, const ZORGeoRangeOfCurve&) = default;
    friend ZORGEOMETRY_EXPORT void ZorTraceAppend(QByteArray& out, const ZORGeoRangeOfCurve& range);

private:
    double m_start = -std::numeric_limits<double>::infinity();
    double m_end = std::numeric_limits<double>::infinity();
};
