// Records one side of a curve that is walked over a surface.

#pragma once

#include "ZORGeoLimitBuckets_p.h"

#include <ZORGeometry/ZORGeoCurveOnSurfaceResult.h>

#include <vector>

/// What one side of a curve is to keep to.
struct ZORGeoTraceBounds
{
    const ZORGeoSurface* surface = nullptr;     // not owned
    const ZORGeoLimitBuckets* limits = nullptr; // not owned; null: none
    int side = 0;                               // bit of the side in the behavior of limits
    double length = 0;                          // millimetres, infinity for no bound
};

/// A straight piece of a walk, in one triangle.
struct ZORGeoTraceSegment
{
    int triangle = 0; // counted from 0
    double begin[3];  // weights of the corners A, B, C
    double end[3];
    ZORMathPoint beginPoint;
    ZORMathPoint endPoint;
    double length = 0;
    double squaredScale = 0; // size of the triangle, for tolerances
};

/// Takes the segments of a walk one by one and tells when the side is complete.
class ZORGeoTraceRecorder
{
public:
    /// The side of the start that is recorded.
    enum class Side {
        Ahead,  ///< locations are in the triangles of the segments that they begin
        Behind, ///< of those that they end, which begin there once the side is reversed
    };

    ZORGeoTraceRecorder(const ZORGeoTraceBounds& bounds, Side side);

    /// Whether a hard limit may prolong the side.
    bool HasHardLimits() const { return m_hasHardLimits; }

    /// \return true when the side ends in the segment or at its end
    bool Add(const ZORGeoTraceSegment& segment);
    /// Ends the side where it is. A length that had been reached before counts.
    void Stop(ZORGeoCurveOnSurfaceResult::StopReason reason);

    /// Locations from the start on: ahead with the start, else without. Empty for a side without length.
    const std::vector<ZORGeoLocationOnSurface>& GetLocations() const { return m_locations; }
    const ZORGeoCurveOnSurfaceResult::Side& GetSide() const { return m_side; }

private:
    ZORGeoLocationOnSurface MakeLocation(int triangle, const double (&weights)[3],
                                         const ZORMathPoint& point) const;
    bool ReachesLength(const ZORGeoTraceSegment& segment, double& fraction) const;
    bool MeetsLimit(const ZORGeoTraceSegment& segment, double& fraction);
    bool Closes(const ZORGeoTraceSegment& segment, double& fraction);
    void Append(const ZORGeoTraceSegment& segment);
    void AppendEnd(const ZORGeoTraceSegment& segment, double fraction);
    void KeepRequested(const ZORGeoTraceSegment& segment, double fraction);
    void ReturnToRequested();

    const ZORGeoTraceBounds m_bounds;
    const bool m_isAhead;
    const bool m_hasHardLimits;
    std::vector<double> m_touched; // up to here the side has run along limit curves through its start
    std::vector<ZORGeoLocationOnSurface> m_locations;
    ZORGeoCurveOnSurfaceResult::Side m_side;
    std::vector<ZORGeoLimitBuckets::Hit> m_hits;

    ZORGeoLocationOnSurface m_lastEnd;

    // The side at its requested length, while it looks for a hard limit beyond.
    bool m_isProlonged = false;
    size_t m_requestedCount = 0;
    std::vector<ZORGeoLocationOnSurface> m_requestedTail;

    // The first segment, to notice the return to it.
    int m_firstTriangle = -1;
    ZORGeoLocationOnSurface m_firstLocation;
    ZORMathVector m_firstDirection;
};
