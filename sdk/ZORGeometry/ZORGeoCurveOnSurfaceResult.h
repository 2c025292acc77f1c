// Outcome of the computation of a curve over a surface.

#pragma once

#include <ZORGeometry/ZORGeoLocationOnSurface.h>

#include <QList>
#include <QSharedDataPointer>

class ZORGeoCurveOnSurfaceResultData;

/// The places of a computed curve and why it ends where it does. The curve has two sides: the start side lies behind
/// the start location, the end side ahead of it. A value: copies share their data, O(1). One that was moved from may
/// only be assigned or destroyed.
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
    ZORGeoCurveOnSurfaceResult();
    /// \param startIndex  index of the start location in \a locations
    ZORGeoCurveOnSurfaceResult(const QList<ZORGeoLocationOnSurface>& locations, int startIndex,
                               const Side& start, const Side& end);
    ZORGeoCurveOnSurfaceResult(const ZORGeoCurveOnSurfaceResult& other);
    ZORGeoCurveOnSurfaceResult(ZORGeoCurveOnSurfaceResult&& other) noexcept;
    ZORGeoCurveOnSurfaceResult& operator=(const ZORGeoCurveOnSurfaceResult& other);
    ZORGeoCurveOnSurfaceResult& operator=(ZORGeoCurveOnSurfaceResult&& other) noexcept;
    ~ZORGeoCurveOnSurfaceResult();
    void swap(ZORGeoCurveOnSurfaceResult& other) noexcept { d.swap(other.d); }

    /// From the end of the start side over the start location to the end of the end side. The segment from
    /// location i to i + 1 lies in the triangle of location i. One location when both sides have no length.
    QList<ZORGeoLocationOnSurface> GetLocations() const;
    /// Index of the start location in GetLocations().
    int GetStartIndex() const;

    /// Arc length of the start side, millimetres.
    double GetStartLength() const;
    /// Arc length of the end side, millimetres.
    double GetEndLength() const;
    StopReason GetStartReason() const;
    StopReason GetEndReason() const;

private:
    QSharedDataPointer<ZORGeoCurveOnSurfaceResultData> d;
};

Q_DECLARE_SHARED(ZORGeoCurveOnSurfaceResult)
