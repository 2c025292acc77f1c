#include "ZORGeoLimitBuckets_p.h"
#include "ZORGeoSurface_p.h"
#include "ZORGeoTriangle_p.h"
#include "ZORGeoVertexFan_p.h"

#include <ZORGeometry/ZORGeoCurveOnSurface.h>
#include <ZORGeometry/ZORGeoCurveOnSurfaceProcessor.h>
#include <ZORSystem/ZORSysException.h>

#include <algorithm>

namespace {

constexpr double tolerance = 1e-10; // of weights

struct Vector
{
    double x;
    double y;
};

Vector operator-(const Vector& a, const Vector& b)
{
    return {a.x - b.x, a.y - b.y};
}

double Dot(const Vector& a, const Vector& b)
{
    return a.x * b.x + a.y * b.y;
}

double Cross(const Vector& a, const Vector& b)
{
    return a.x * b.y - a.y * b.x;
}

// Where the segment from `from` by `way` meets the one from `limit` by `side`, as parts of `way`.
bool FindHit(const Vector& from, const Vector& way, const Vector& limit, const Vector& side, double& begin,
             double& end)
{
    const Vector to = limit - from;
    const double wayLength = std::sqrt(Dot(way, way));
    const double sideLength = std::sqrt(Dot(side, side));
    if (wayLength <= tolerance) {
        const double t = sideLength > 0 ? std::clamp(-Dot(to, side) / Dot(side, side), 0.0, 1.0) : 0;
        begin = end = 0;
        return std::hypot(to.x + t * side.x, to.y + t * side.y) <= tolerance;
    }
    const double slack = tolerance / wayLength;
    const double cross = Cross(way, side);
    if (sideLength > tolerance && std::abs(cross) > 1e-9 * wayLength * sideLength) {
        const double onWay = Cross(to, side) / cross;
        const double onSide = Cross(to, way) / cross;
        begin = end = std::clamp(onWay, 0.0, 1.0);
        return std::abs(onWay - begin) <= slack && onSide >= -tolerance / sideLength
               && onSide <= 1 + tolerance / sideLength;
    }
    // A point, or parallel.
    const double first = Dot(to, way) / (wayLength * wayLength);
    const double last = first + Dot(side, way) / (wayLength * wayLength);
    begin = std::clamp(std::min(first, last), 0.0, 1.0);
    end = std::clamp(std::max(first, last), 0.0, 1.0);
    return std::abs(Cross(to, way)) <= tolerance * wayLength && std::max(first, last) >= -slack
           && std::min(first, last) <= 1 + slack;
}

} // namespace

ZORGeoLimitBuckets::ZORGeoLimitBuckets(const ZORGeoSurface& surface)
    : m_surface(&surface)
    , m_mesh(ZORGeoSurfacePrivate::Of(surface).mesh.get())
{
}

void ZORGeoLimitBuckets::Clear()
{
    m_curveCount = 0;
    m_segments.clear();
    m_isLimited.clear();
}

bool ZORGeoLimitBuckets::HasAny(int behavior) const
{
    return std::any_of(m_segments.begin(), m_segments.end(), [behavior](const Segment& segment) {
        return (segment.behavior & behavior) == behavior;
    });
}

void ZORGeoLimitBuckets::Add(const QList<const ZORGeoCurveOnSurface*>& curves, int behavior)
{
    for (qsizetype i = 0; i < curves.size(); ++i)
        AddCurve(curves[i], behavior, i);
    std::stable_sort(m_segments.begin(), m_segments.end(),
                     [](const Segment& a, const Segment& b) { return a.triangle < b.triangle; });
}

void ZORGeoLimitBuckets::AddCurve(const ZORGeoCurveOnSurface* curve, int behavior, qsizetype number)
{
    using Processor = ZORGeoCurveOnSurfaceProcessor;
    if (!curve)
        throw ZORSysException(Processor::tr("limit curve %1 is null").arg(number));
    if (curve->GetNumPoints() > 0 && curve->GetSurface() != m_surface)
        throw ZORSysException(Processor::tr("limit curve %1 is on another surface").arg(number));
    ++m_curveCount;
    const QList<ZORGeoLocationOnSurface> locations = curve->GetLocations();
    for (qsizetype i = 0; i + 1 < locations.size(); ++i) {
        // As a rule the first triangle holds the segment.
        const bool isHeld =
            AddSegment(locations[i].triangle - 1, behavior, locations[i].point, locations[i + 1].point)
            || AddSegment(locations[i + 1].triangle - 1, behavior, locations[i].point,
                          locations[i + 1].point);
        if (!isHeld)
            throw ZORSysException(
                Processor::tr("segment %1 of limit curve %2 is not within a triangle").arg(i).arg(number));
    }
}

// Adds a segment to the triangle that holds it, and what lies on its border to the triangles there.
bool ZORGeoLimitBuckets::AddSegment(int triangle, int behavior, const ZORMathPoint& begin,
                                    const ZORMathPoint& end)
{
    if (triangle < 0 || triangle >= m_mesh->GetNumTriangles())
        return false;
    const ZORGeoMesh::Corners& corners = m_mesh->triangles[triangle];
    const ZORMathPoint& a = m_mesh->vertices[corners[0]];
    const ZORMathPoint& b = m_mesh->vertices[corners[1]];
    const ZORMathPoint& c = m_mesh->vertices[corners[2]];
    const double size = std::max({a.DistanceTo(b), b.DistanceTo(c), c.DistanceTo(a)});
    const ZORGeoTrianglePlace places[2] = {ZorGeoClosestOnTriangle(begin, a, b, c),
                                           ZorGeoClosestOnTriangle(end, a, b, c)};
    for (const ZORGeoTrianglePlace& place : places) {
        if (!(place.squaredDistance <= 1e-16 * size * size))
            return false;
    }
    Insert({triangle,
            behavior,
            m_curveCount - 1,
            {places[0].weightB, places[0].weightC},
            {places[1].weightB, places[1].weightC}});
    for (int side = 0; side < 3; ++side)
        AddAcross(triangle, side, behavior, places);
    return true;
}

void ZORGeoLimitBuckets::AddAcross(int triangle, int side, int behavior,
                                   const ZORGeoTrianglePlace (&places)[2])
{
    const ZORGeoMesh::Corners& corners = m_mesh->triangles[triangle];
    const quint32 neighbor = m_mesh->GetNeighbor(triangle, side);
    const int next = (side + 1) % 3;
    double along[2];
    bool isOnSide[2];
    for (int i = 0; i < 2; ++i) {
        const double weights[3] = {1 - places[i].weightB - places[i].weightC, places[i].weightB,
                                   places[i].weightC};
        isOnSide[i] = weights[(side + 2) % 3] <= tolerance;
        along[i] = weights[next];
        if (weights[side] >= 1 - tolerance)
            AddAround(triangle, side, behavior);
    }
    if (neighbor == 0 || (!isOnSide[0] && !isOnSide[1]))
        return;
    const int beyond = int(neighbor / 4) - 1;
    const int first = int(neighbor % 4);
    const bool isSame = m_mesh->triangles[beyond][size_t(first)] == corners[size_t(side)];
    Segment segment{beyond, behavior, m_curveCount - 1, {0, 0}, {0, 0}};
    // One end on the side is a point for the neighbour.
    for (int i = 0; i < 2; ++i) {
        const double place = along[isOnSide[i] ? i : 1 - i];
        double weights[3] = {0, 0, 0};
        weights[first] = isSame ? 1 - place : place;
        weights[(first + 1) % 3] = isSame ? place : 1 - place;
        std::copy(weights + 1, weights + 3, i == 0 ? segment.begin : segment.end);
    }
    Insert(segment);
}

// A limit through a vertex is met wherever the vertex is.
void ZORGeoLimitBuckets::AddAround(int triangle, int corner, int behavior)
{
    const ZORGeoVertexFan fan(*m_mesh, {triangle, corner, (corner + 1) % 3, (corner + 2) % 3, 0});
    for (const auto& sector : fan.GetSectors()) {
        double weights[3] = {0, 0, 0};
        weights[sector.entry.p] = 1;
        Insert({sector.entry.triangle,
                behavior,
                m_curveCount - 1,
                {weights[1], weights[2]},
                {weights[1], weights[2]}});
    }
}

void ZORGeoLimitBuckets::Insert(const Segment& segment)
{
    if (m_isLimited.empty())
        m_isLimited.resize(size_t(m_mesh->GetNumTriangles()) / 64 + 1);
    m_isLimited[size_t(segment.triangle) / 64] |= quint64(1) << (segment.triangle % 64);
    m_segments.push_back(segment);
}

void ZORGeoLimitBuckets::FindHits(int triangle, const double (&begin)[3], const double (&end)[3],
                                  std::vector<Hit>& hits) const
{
    hits.clear();
    const auto first = std::lower_bound(m_segments.begin(), m_segments.end(), triangle,
                                        [](const Segment& segment, int t) { return segment.triangle < t; });
    const Vector from = {begin[1], begin[2]};
    const Vector way = Vector{end[1], end[2]} - from;
    for (auto segment = first; segment != m_segments.end() && segment->triangle == triangle; ++segment) {
        const Vector limit = {segment->begin[0], segment->begin[1]};
        const Vector side = Vector{segment->end[0], segment->end[1]} - limit;
        Hit hit;
        hit.behavior = segment->behavior;
        hit.curve = segment->curve;
        if (FindHit(from, way, limit, side, hit.begin, hit.end))
            hits.push_back(hit);
    }
    std::sort(hits.begin(), hits.end(), [](const Hit& a, const Hit& b) { return a.begin < b.begin; });
}
