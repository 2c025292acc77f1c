#include "ZORNestSolverApart.h"

#include "ZORNestSolverPoles.h"

namespace ZORNestSolver {

namespace {

struct Edge
{
    Point a;
    Point b;
    Box GetBox() const
    {
        Box box;
        box.Add(a);
        box.Add(b);
        return box;
    }
};

/// The edges that reach into a box, in the order of their rings.
std::vector<Edge> GetEdges(const Polygon& polygon, const Box& within)
{
    std::vector<Edge> edges;
    for (const Ring& ring : polygon) {
        for (size_t i = 0; i < ring.size(); ++i) {
            const Edge edge{ring[i], ring[(i + 1) % ring.size()]};
            if (edge.GetBox().Overlaps(within))
                edges.push_back(edge);
        }
    }
    return edges;
}

double GetDistance(Point p, const Edge& edge)
{
    return GetDistanceToSegment(p, edge.a, edge.b);
}

/// Whether no point of a segment lies deeper in the polygon than the tolerance. The distance from one edge is
/// convex along the segment: where both ends are near to the same edge, all of it is.
class DepthTest
{
public:
    DepthTest(const Polygon& polygon, std::vector<Edge> edges, double tolerance)
        : m_polygon(polygon)
        , m_edges(std::move(edges))
        , m_tolerance(tolerance)
    {
    }
    bool IsShallow(Point a, Point b) const
    {
        const bool flat = std::any_of(m_edges.begin(), m_edges.end(), [&](const Edge& edge) {
            return GetDistance(a, edge) <= m_tolerance && GetDistance(b, edge) <= m_tolerance;
        });
        if (flat || Length(b - a) <= m_tolerance)
            return true;
        const Point middle = (a + b) * 0.5;
        if (!IsInside(middle, m_polygon) && !DoesCross(a, b))
            return true;
        return IsShallow(middle) && IsShallow(a, middle) && IsShallow(middle, b);
    }
    bool IsShallow(Point p) const
    {
        return !IsInside(p, m_polygon) || std::any_of(m_edges.begin(), m_edges.end(), [&](const Edge& edge) {
            return GetDistance(p, edge) <= m_tolerance;
        });
    }

private:
    bool DoesCross(Point a, Point b) const
    {
        return std::any_of(m_edges.begin(), m_edges.end(),
                           [&](const Edge& edge) { return DoSegmentsMeet(a, b, edge.a, edge.b); });
    }

    const Polygon& m_polygon;
    std::vector<Edge> m_edges;
    double m_tolerance;
};

bool IsDeepInside(Point p, const Polygon& polygon, double tolerance)
{
    return IsInside(p, polygon) && GetDistanceToBoundary(p, polygon) > tolerance;
}

/// Of some piece of b, the innermost point lies deep inside of a. No edge may lie deep inside of the other polygon:
/// then a piece with a corner outside of a is not held.
bool HoldsPiece(const Polygon& a, const Polygon& b, double tolerance)
{
    const Box box = GetBox(a).Grown(tolerance);
    const auto isOutside = [&](Point p) {
        return !box.Contains(p) || (!IsInside(p, a) && GetDistanceToBoundary(p, a) > tolerance);
    };
    const std::vector<Point> points = FindDeepPoints(
        b, [&](const Ring& ring) { return std::none_of(ring.begin(), ring.end(), isOutside); });
    return std::any_of(points.begin(), points.end(),
                       [&](Point p) { return box.Contains(p) && IsDeepInside(p, a, tolerance); });
}

bool AreEdgesShallow(const Polygon& a, const Polygon& b, const Box& common, double tolerance)
{
    const DepthTest test(b, GetEdges(b, common), tolerance);
    const std::vector<Edge> edges = GetEdges(a, common);
    return std::all_of(edges.begin(), edges.end(),
                       [&test](const Edge& edge) { return test.IsShallow(edge.a, edge.b); });
}

bool AreEdgesFar(const Polygon& a, const Polygon& b, const Box& common, double distance)
{
    const std::vector<Edge> others = GetEdges(b, common);
    for (const Edge& edge : GetEdges(a, common))
        for (const Edge& other : others)
            if (edge.GetBox().Grown(distance).Overlaps(other.GetBox())
                && GetSegmentDistance(edge.a, edge.b, other.a, other.b) < distance)
                return false;
    return true;
}

/// Calls a function with the places of two polygons whose boxes come that near, until it returns false; a
/// sweep along x. Returns whether it never did.
template<class Function>
bool ForEachNearPair(const std::vector<Polygon>& polygons, double distance, Function function)
{
    std::vector<std::pair<Box, size_t>> sorted;
    for (size_t i = 0; i < polygons.size(); ++i)
        sorted.push_back({GetBox(polygons[i]).Grown(distance / 2), i});
    std::sort(sorted.begin(), sorted.end(),
              [](const auto& a, const auto& b) { return a.first.min.x < b.first.min.x; });
    for (size_t a = 0; a < sorted.size(); ++a)
        for (size_t b = a + 1; b < sorted.size() && sorted[b].first.min.x <= sorted[a].first.max.x; ++b)
            if (sorted[a].first.Overlaps(sorted[b].first) && !function(sorted[a].second, sorted[b].second))
                return false;
    return true;
}

} // namespace

bool AreApart(const Polygon& a, const Polygon& b, double distance, double tolerance)
{
    const double reach = std::max(distance - tolerance, 0.0);
    const Box boxA = GetBox(a).Grown(reach / 2 + tolerance);
    const Box boxB = GetBox(b).Grown(reach / 2 + tolerance);
    if (!boxA.Overlaps(boxB))
        return true;
    const Box common{{std::max(boxA.min.x, boxB.min.x), std::max(boxA.min.y, boxB.min.y)},
                     {std::min(boxA.max.x, boxB.max.x), std::min(boxA.max.y, boxB.max.y)}};
    const Box wide = common.Grown(reach + tolerance);
    const bool areEdgesApart =
        reach > 0 ? AreEdgesFar(a, b, wide, reach)
                  : AreEdgesShallow(a, b, wide, tolerance) && AreEdgesShallow(b, a, wide, tolerance);
    // The innermost points take by far the longest to find, and most polygons that meet do so at their edges.
    return areEdgesApart && !HoldsPiece(a, b, tolerance) && !HoldsPiece(b, a, tolerance);
}

bool AreAllApart(const std::vector<Polygon>& polygons, double distance)
{
    return ForEachNearPair(polygons, distance, [&polygons, distance](size_t i, size_t j) {
        return AreApart(polygons[i], polygons[j], distance);
    });
}

} // namespace ZORNestSolver
