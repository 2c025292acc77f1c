// Outcome of the computation of a curve over a surface.

#pragma once

#include <ZORGeometry/ZORGeoLocationOnSurface.h>

#include <QList>

/// The places of a computed curve and why it ends where it does; a value. The curve has two sides: the start
/// side lies behind the start location, the end side ahead of it.
///
/// Thread safety: reentrant; objects may be shared read-only.
class ZORGEOMETRY_EXPORT ZORGeoCurveOnSurfaceResult
{
public:
    /// Why a side ends.
    enum StopReason {
        Length,      // it has the requested length
        Border,      // straight on there is no surface
        Limit,       // a geometric limit
        Closed,      // the curve arrives where it started, in the direction in which it started
        Cap,         // more triangles than one computation may cross; a warning was logged
        Degenerate,  // no direction to go on: only triangles without area, or a vanishing reference direction
        Unreachable, // no way over the surface leads to the requested end
    };
    struct Side
    {
        double length = 0; // arc length from the start location, millimetres
        StopReason reason = Length;
    };

    /// No locations.
    ZORGeoCurveOnSurfaceResult() = default;
    /// \param startIndex  index of the start location in \a locations
    ZORGeoCurveOnSurfaceResult(const QList<ZORGeoLocationOnSurface>& locations, int startIndex,
                               const Side& start, const Side& end);

    /// From the end of the start side over the start location to the end of the end side. The segment from
    /// location i to i + 1 lies in the triangle of location i. One location when both sides have no length.
    QList<ZORGeoLocationOnSurface> GetLocations() const { return m_locations; }
    /// Index of the start location in GetLocations().
    int GetStartIndex() const { return m_startIndex; }

    /// Arc length of the start side, millimetres.
    double GetStartLength() const { return m_start.length; }
    /// Arc length of the end side, millimetres.
    double GetEndLength() const { return m_end.length; }
    StopReason GetStartReason() const { return m_start.reason; }
    StopReason GetEndReason() const { return m_end.reason; }

private:
    QList<ZORGeoLocationOnSurface> m_locations;
    int m_startIndex = 0;
    Side m_start;
    Side m_end;
};
