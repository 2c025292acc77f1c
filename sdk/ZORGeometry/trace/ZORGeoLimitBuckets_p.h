// Limit curves by the triangles they run over.

#pragma once

#include "mesh/ZORGeoMesh_p.h"

#include <QList>

#include <array>
#include <unordered_map>
#include <vector>

class ZORGeoCurveOnSurface;
class ZORGeoSurface;
struct ZORGeoTrianglePlace;

/// The segments of limit curves, found by triangle in constant time for triangles without any. A segment on an
/// edge is in the triangles on both sides, its ends on a vertex in all triangles around.
class ZORGeoLimitBuckets
{
public:
    /// \param surface  of all limits; not owned
    explicit ZORGeoLimitBuckets(const ZORGeoSurface& surface);

    void Clear();
    /// Adds the segments of curves, linear in their number whatever has been added before.
    /// \param behavior  bits of ZORGeoCurveOnSurfaceProcessor::LimitBehavior
    /// \throws ZORSysException as ZORGeoCurveOnSurfaceProcessor::AddGeometricLimits(); the limits are then those
    ///         from before
    void Add(const QList<const ZORGeoCurveOnSurface*>& curves, int behavior);

    int GetNumCurves() const { return m_curveCount; }
    /// Whether some segment has all of these bits. Costs the same for any number of segments.
    bool HasAny(int behavior) const;
    bool Has(int triangle) const
    {
        return !m_isLimited.empty() && (m_isLimited[size_t(triangle) / 64] >> (triangle % 64) & 1) != 0;
    }

    /// A common part of a limit and a segment of a walk.
    struct Hit
    {
        double begin = 0; // 0 at the begin of the segment, 1 at its end
        double end = 0;   // larger where both run along each other
        int behavior = 0;
        int curve = 0; // 0 ... GetNumCurves() - 1
    };
    /// The hits of a segment in a triangle with limits, by their begin.
    /// \param begin,end  weights of the corners A, B, C
    /// \param[out] hits  replaced
    void FindHits(int triangle, const double (&begin)[3], const double (&end)[3],
                  std::vector<Hit>& hits) const;

private:
    struct Segment
    {
        int triangle = 0;
        int behavior = 0;
        int curve = 0;
        double begin[2]; // weights of the corners B and C
        double end[2];
        int next = -1; // number of another segment of the triangle; -1 for none
    };
    class Collector;
    void Insert(const Segment& segment);

    static constexpr size_t kBehaviorCount = 16; // combinations of the bits of LimitBehavior

    const ZORGeoSurface* m_surface; // not owned
    const ZORGeoMesh* m_mesh;       // not owned
    int m_curveCount = 0;
    std::vector<Segment> m_segments;              // in the order in which they were added
    std::unordered_map<int, int> m_firstSegments; // of the triangles that have some
    std::vector<quint64> m_isLimited;             // a bit a triangle; empty without limits
    std::array<bool, kBehaviorCount> m_hasBehavior = {};
};
