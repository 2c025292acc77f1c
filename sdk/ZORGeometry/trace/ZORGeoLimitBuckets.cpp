#include "ZORGeoLimitBuckets_p.h"
#include "mesh/ZORGeoSurface_p.h"
#include "mesh/ZORGeoTriangle_p.h"
#include "walk/ZORGeoPlaneVector_p.h"
#include "walk/ZORGeoVertexFan_p.h"

#include <ZORGeometry/ZORGeoCurveOnSurface.h>
#include <ZORGeometry/ZORGeoCurveOnSurfaceProcessor.h>
#include <ZORSystem/ZORSysException.h>

#include <algorithm>
#include <utility>

namespace {

constexpr double kTolerance = 1e-10; // of weights

using Vector = ZORGeoPlaneVector;

// Where the segment from `from` by `way` meets the one from `limit` by `side`, as parts of `way`.
bool FindHit(const Vector& from, const Vector& way, const Vector& limit, const Vector& side, double& begin,
             double& end)
{
    const Vector to = limit - from;
    const double wayLength = std::sqrt(Dot(way, way));
    const double sideLength = std::sqrt(Dot(side, side));
    if (wayLength <= kTolerance) {
        const double t = sideLength > 0 ? std::clamp(-Dot(to, side) / Dot(side, side), 0.0, 1.0) : 0;
        begin = end = 0;
        return std::hypot(to.x + t * side.x, to.y + t * side.y) <= kTolerance;
    }
    const double slack = kTolerance / wayLength;
    const double cross = Cross(way, side);
    if (sideLength > kTolerance && std::abs(cross) > 1e-9 * wayLength * sideLength) {
        const double onWay = Cross(to, side) / cross;
        const double onSide = Cross(to, way) / cross;
        begin = end = std::clamp(onWay, 0.0, 1.0);
        return std::abs(onWay - begin) <= slack && onSide >= -kTolerance / sideLength
               && onSide <= 1 + kTolerance / sideLength;
    }
    // A point, or parallel.
    const double first = Dot(to, way) / (wayLength * wayLength);
    const double last = first + Dot(side, way) / (wayLength * wayLength);
    begin = std::clamp(std::min(first, last), 0.0, 1.0);
    end = std::clamp(std::max(first, last), 0.0, 1.0);
    return std::abs(Cross(to, way)) <= kTolerance * wayLength && std::max(first, last) >= -slack
           && std::min(first, last) <= 1 + slack;
}

} // namespace

/// Collects the segments of a curve in all triangles that they touch.
class ZORGeoLimitBuckets::Collector
{
public:
    /// \param surface   of the curves; not owned
    /// \param segments  not owned; segments are appended
    Collector(const ZORGeoSurface& surface, int behavior, std::vector<Segment>& segments)
        : m_surface(&surface)
        , m_mesh(*ZORGeoSurfacePrivate::Of(surface).mesh)
        , m_behavior(behavior)
        , m_segments(segments)
    {
    }

    /// \param number  of the curve in messages
    /// \param id      of the curve in the segments
    /// \throws ZORSysException as ZORGeoLimitBuckets::Add()
    void AddCurve(const ZORGeoCurveOnSurface* curve, qsizetype number, int id);

private:
    bool AddSegment(int triangle, const ZORMathPoint& begin, const ZORMathPoint& end);
    void AddAcross(int triangle, int side, const ZORGeoTrianglePlace (&places)[2]);
    void AddAround(int triangle, int corner);

    const ZORGeoSurface* m_surface;
    const ZORGeoMesh& m_mesh;
    const int m_behavior;
    int m_curve = 0;
    std::vector<Segment>& m_segments;
};

ZORGeoLimitBuckets::ZORGeoLimitBuckets(const ZORGeoSurface& surface)
    : m_surface(&surface)
    , m_mesh(ZORGeoSurfacePrivate::Of(surface).mesh.get())
{
}

void ZORGeoLimitBuckets::Clear()
{
    m_curveCount = 0;
    m_segments.clear();
    m_firstSegments.clear();
    m_isLimited.clear();
    m_hasBehavior = {};
}

bool ZORGeoLimitBuckets::HasAny(int behavior) const
{
    for (size_t i = 0; i < kBehaviorCount; ++i) {
        if (m_hasBehavior[i] && (int(i) & behavior) == behavior)
            return true;
    }
    return false;
}

void ZORGeoLimitBuckets::Add(const QList<const ZORGeoCurveOnSurface*>& curves, int behavior)
{
    // Nothing is inserted before all curves have proved to be valid.
    std::vector<Segment> segments;
    Collector collector(*m_surface, behavior & int(kBehaviorCount - 1), segments);
    for (qsizetype i = 0; i < curves.size(); ++i)
        collector.AddCurve(curves[i], i, m_curveCount + int(i));
    for (const Segment& segment : segments)
        Insert(segment);
    m_curveCount += int(curves.size());
}

void ZORGeoLimitBuckets::Collector::AddCurve(const ZORGeoCurveOnSurface* curve, qsizetype number, int id)
{
    if (!curve)
        throw ZORSysException(ZORGeoCurveOnSurfaceProcessor::tr("limit curve %1 is null").arg(number));
    if (curve->GetNumPoints() > 0 && curve->GetSurface() != m_surface)
        throw ZORSysException(
            ZORGeoCurveOnSurfaceProcessor::tr("limit curve %1 is on another surface").arg(number));
    m_curve = id;
    const QList<ZORGeoLocationOnSurface> locations = curve->GetLocations();
    for (qsizetype i = 0; i + 1 < locations.size(); ++i) {
        // Most segments lie within the triangle of their first location.
        const bool isHeld =
            AddSegment(locations[i].triangle - 1, locations[i].point, locations[i + 1].point)
            || AddSegment(locations[i + 1].triangle - 1, locations[i].point, locations[i + 1].point);
        if (!isHeld)
            throw ZORSysException(
                ZORGeoCurveOnSurfaceProcessor::tr("segment %1 of limit curve %2 is not within a triangle")
                    .arg(QString::number(i), QString::number(number)));
    }
}

// Adds a segment to the triangle that holds it, and what lies on its border to the triangles there.
bool ZORGeoLimitBuckets::Collector::AddSegment(int triangle, const ZORMathPoint& begin,
                                               const ZORMathPoint& end)
{
    if (triangle < 0 || triangle >= m_mesh.GetNumTriangles())
        return false;
    const ZORGeoMesh::Corners& corners = m_mesh.triangles[triangle];
    const ZORMathPoint& a = m_mesh.vertices[corners[0]];
    const ZORMathPoint& b = m_mesh.vertices[corners[1]];
    const ZORMathPoint& c = m_mesh.vertices[corners[2]];
    const double size = std::max({a.DistanceTo(b), b.DistanceTo(c), c.DistanceTo(a)});
    const ZORGeoTrianglePlace places[2] = {ZorGeoClosestOnTriangle(begin, a, b, c),
                                           ZorGeoClosestOnTriangle(end, a, b, c)};
    for (const ZORGeoTrianglePlace& place : places) {
        if (!(place.squaredDistance <= 1e-16 * size * size))
            return false;
    }
    m_segments.push_back({triangle,
                          m_behavior,
                          m_curve,
                          {places[0].weightB, places[0].weightC},
                          {places[1].weightB, places[1].weightC}});
    for (int side = 0; side < 3; ++side)
        AddAcross(triangle, side, places);
    return true;
}

void ZORGeoLimitBuckets::Collector::AddAcross(int triangle, int side, const ZORGeoTrianglePlace (&places)[2])
{
    const ZORGeoMesh::Corners& corners = m_mesh.triangles[triangle];
    const quint32 neighbor = m_mesh.GetNeighbor(triangle, side);
    const int next = (side + 1) % 3;
    double along[2];
    bool isOnSide[2];
    for (int i = 0; i < 2; ++i) {
        const double weights[3] = {1 - places[i].weightB - places[i].weightC, places[i].weightB,
                                   places[i].weightC};
        isOnSide[i] = weights[(side + 2) % 3] <= kTolerance;
        along[i] = weights[next];
        if (weights[side] >= 1 - kTolerance)
            AddAround(triangle, side);
    }
    if (neighbor == 0 || (!isOnSide[0] && !isOnSide[1]))
        return;
    const int beyond = int(neighbor / 4) - 1;
    const int first = int(neighbor % 4);
    const bool isSame = m_mesh.triangles[beyond][size_t(first)] == corners[size_t(side)];
    Segment segment{beyond, m_behavior, m_curve, {0, 0}, {0, 0}};
    // One end on the side is a point for the neighbour.
    for (int i = 0; i < 2; ++i) {
        const double place = along[isOnSide[i] ? i : 1 - i];
        double weights[3] = {0, 0, 0};
        weights[first] = isSame ? 1 - place : place;
        weights[(first + 1) % 3] = isSame ? place : 1 - place;
        std::copy(weights + 1, weights + 3, i == 0 ? segment.begin : segment.end);
    }
    m_segments.push_back(segment);
}

// A limit through a vertex is met wherever the vertex is.
void ZORGeoLimitBuckets::Collector::AddAround(int triangle, int corner)
{
    const ZORGeoVertexFan fan(m_mesh, {triangle, corner, (corner + 1) % 3, (corner + 2) % 3, 0});
    for (const auto& sector : fan.GetSectors()) {
        double weights[3] = {0, 0, 0};
        weights[sector.entry.p] = 1;
        m_segments.push_back(
            {sector.entry.triangle, m_behavior, m_curve, {weights[1], weights[2]}, {weights[1], weights[2]}});
    }
}

void ZORGeoLimitBuckets::Insert(const Segment& segment)
{
    if (m_isLimited.empty())
        m_isLimited.resize(size_t(m_mesh->GetNumTriangles()) / 64 + 1);
    m_isLimited[size_t(segment.triangle) / 64] |= quint64(1) << (segment.triangle % 64);
    m_hasBehavior[size_t(segment.behavior)] = true;
    const auto [first, isNew] = m_firstSegments.try_emplace(segment.triangle, int(m_segments.size()));
    m_segments.push_back(segment);
    m_segments.back().next = isNew ? -1 : std::exchange(first->second, int(m_segments.size()) - 1);
}

void ZORGeoLimitBuckets::FindHits(int triangle, const double (&begin)[3], const double (&end)[3],
                                  std::vector<Hit>& hits) const
{
    hits.clear();
    const auto first = m_firstSegments.find(triangle);
    if (first == m_firstSegments.end())
        return;
    const Vector from = {begin[1], begin[2]};
    const Vector way = Vector{end[1], end[2]} - from;
    for (int i = first->second; i >= 0; i = m_segments[size_t(i)].next) {
        const Segment& segment = m_segments[size_t(i)];
        const Vector limit = {segment.begin[0], segment.begin[1]};
        const Vector side = Vector{segment.end[0], segment.end[1]} - limit;
        Hit hit;
        hit.behavior = segment.behavior;
        hit.curve = segment.curve;
        if (FindHit(from, way, limit, side, hit.begin, hit.end))
            hits.push_back(hit);
    }
    std::sort(hits.begin(), hits.end(), [](const Hit& a, const Hit& b) { return a.begin < b.begin; });
}
