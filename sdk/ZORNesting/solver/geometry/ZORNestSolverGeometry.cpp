#include "ZORNestSolverGeometry.h"

#include "ZORNestSolverEdgeTree.h"
#include "ZORNestSolverSpatialOrder.h"

#include <numbers>
#include <numeric>

namespace ZORNestSolver {

namespace {

constexpr size_t kEdgesPerLook = 256; // between two questions whether to go on

struct Edge
{
    Point a;
    Point b;
    size_t ring;
    size_t index;
};

/// Returns the edges in an order in which trees over them are quick, whatever the order of the rings.
std::vector<Edge> GetEdges(const Polygon& polygon)
{
    std::vector<Edge> edges;
    std::vector<Box> boxes;
    for (size_t r = 0; r < polygon.size(); ++r) {
        const Ring& ring = polygon[r];
        for (size_t i = 0; i < ring.size(); ++i) {
            edges.push_back({ring[i], ring[(i + 1) % ring.size()], r, i});
            boxes.push_back({});
            boxes.back().Add(edges.back().a);
            boxes.back().Add(edges.back().b);
        }
    }
    std::vector<Edge> sorted;
    sorted.reserve(edges.size());
    for (const size_t i : GetSpatialOrder(boxes))
        sorted.push_back(edges[i]);
    return sorted;
}

/// Neighbours share an end and may have nothing else in common.
bool DoEdgesConflict(const Edge& a, const Edge& b, size_t ringSize)
{
    const bool follows = a.ring == b.ring && b.index == (a.index + 1) % ringSize;
    const bool precedes = a.ring == b.ring && a.index == (b.index + 1) % ringSize;
    if (!follows && !precedes)
        return DoSegmentsMeet(a.a, a.b, b.a, b.b);
    const Point in = follows ? a.b - a.a : b.b - b.a;
    const Point out = follows ? b.b - b.a : a.b - a.a;
    return Cross(in, out) == 0 && Dot(in, out) <= 0; // folded back
}

} // namespace

void Box::Add(Point p)
{
    min = {std::min(min.x, p.x), std::min(min.y, p.y)};
    max = {std::max(max.x, p.x), std::max(max.y, p.y)};
}

void Box::Add(const Box& other)
{
    min = {std::min(min.x, other.min.x), std::min(min.y, other.min.y)};
    max = {std::max(max.x, other.max.x), std::max(max.y, other.max.y)};
}

double GetSignedArea(const Ring& ring)
{
    double twice = 0;
    for (size_t i = 0; i < ring.size(); ++i) // relative to the first point, which keeps the digits
        twice += Cross(ring[i] - ring[0], ring[(i + 1) % ring.size()] - ring[0]);
    return twice / 2;
}

double GetArea(const Polygon& polygon)
{
    double area = 0;
    for (const Ring& ring : polygon)
        area += GetSignedArea(ring);
    return area;
}

bool HasPieces(const Polygon& polygon)
{
    const auto isOuter = [](const Ring& ring) { return GetSignedArea(ring) > 0; };
    return std::count_if(polygon.begin(), polygon.end(), isOuter) > 1;
}

Box GetBox(const Ring& ring)
{
    Box box;
    for (const Point& p : ring)
        box.Add(p);
    return box;
}

Box GetBox(const Polygon& polygon)
{
    Box box;
    for (const Ring& ring : polygon)
        for (const Point& p : ring)
            box.Add(p);
    return box;
}

Ring GetConvexHull(const Polygon& polygon)
{
    Ring points;
    for (const Ring& ring : polygon)
        points.insert(points.end(), ring.begin(), ring.end());
    std::sort(points.begin(), points.end(),
              [](Point a, Point b) { return a.x < b.x || (a.x == b.x && a.y < b.y); });
    points.erase(std::unique(points.begin(), points.end()), points.end());
    if (points.size() < 3)
        return points;
    Ring hull;
    const auto append = [&hull](Point p, size_t keep) {
        while (hull.size() > keep && Cross(hull.back() - hull[hull.size() - 2], p - hull.back()) <= 0)
            hull.pop_back();
        hull.push_back(p);
    };
    for (const Point& p : points)
        append(p, 1);
    const size_t lower = hull.size();
    for (size_t i = points.size() - 1; i-- > 0;)
        append(points[i], lower);
    hull.pop_back();
    return hull;
}

/// The points farthest from the edges of a convex ring go round with the edges; each pair of an edge's end with such
/// a point is looked at once.
double GetDiameter(const Ring& hull)
{
    double diameter = 0;
    const size_t count = hull.size();
    for (size_t i = 0, k = 0; i < count; ++i) {
        const Point edge = hull[(i + 1) % count] - hull[i];
        for (size_t n = 0; n < count && Cross(edge, hull[(k + 1) % count] - hull[k]) > 0; ++n)
            k = (k + 1) % count;
        const Point next = hull[(k + 1) % count]; // where edges are parallel, both their ends count
        for (const Point& p : {hull[k], next})
            diameter = std::max({diameter, Length(p - hull[i]), Length(p - hull[(i + 1) % count])});
    }
    return diameter;
}

double GetDistanceToSegment(Point p, Point a, Point b)
{
    const Point along = b - a;
    const double squared = Dot(along, along);
    const double t = squared > 0 ? std::clamp(Dot(p - a, along) / squared, 0.0, 1.0) : 0.0;
    return Length(p - (a + along * t));
}

double GetDistanceToBoundary(Point p, const Polygon& polygon)
{
    double distance = std::numeric_limits<double>::infinity();
    for (const Ring& ring : polygon)
        for (size_t i = 0; i < ring.size(); ++i)
            distance = std::min(distance, GetDistanceToSegment(p, ring[i], ring[(i + 1) % ring.size()]));
    return distance;
}

bool IsInside(Point p, const Polygon& polygon)
{
    bool inside = false;
    for (const Ring& ring : polygon) {
        for (size_t i = 0; i < ring.size(); ++i) {
            const Point a = ring[i];
            const Point b = ring[(i + 1) % ring.size()];
            if ((a.y > p.y) == (b.y > p.y))
                continue;
            const bool left = Cross(b - a, p - a) > 0;
            if (left == (b.y > a.y))
                inside = !inside;
        }
    }
    return inside;
}

bool DoSegmentsMeet(Point a1, Point a2, Point b1, Point b2)
{
    if (std::max(a1.x, a2.x) < std::min(b1.x, b2.x) || std::max(b1.x, b2.x) < std::min(a1.x, a2.x)
        || std::max(a1.y, a2.y) < std::min(b1.y, b2.y) || std::max(b1.y, b2.y) < std::min(a1.y, a2.y))
        return false;
    const double d1 = Cross(a2 - a1, b1 - a1);
    const double d2 = Cross(a2 - a1, b2 - a1);
    const double d3 = Cross(b2 - b1, a1 - b1);
    const double d4 = Cross(b2 - b1, a2 - b1);
    return !((d1 > 0 && d2 > 0) || (d1 < 0 && d2 < 0) || (d3 > 0 && d4 > 0) || (d3 < 0 && d4 < 0));
}

size_t CountConflicts(const Polygon& polygon, size_t most, const Interruption& isOver)
{
    const std::vector<Edge> edges = GetEdges(polygon);
    EdgeTree tree(edges.size());
    size_t count = 0;
    for (size_t i = 0; i < edges.size(); ++i) {
        const Edge& edge = edges[i];
        Box box;
        box.Add(edge.a);
        box.Add(edge.b);
        const auto isLast = [&](size_t k) {
            return k < i && DoEdgesConflict(edge, edges[k], polygon[edge.ring].size()) && ++count == most;
        };
        if (tree.HasAny(box, isLast))
            break;
        if (i % kEdgesPerLook == 0 && isOver())
            return most;
        tree.Add(i, edge.a, edge.b);
    }
    return count;
}

std::vector<size_t> GroupRings(const Polygon& polygon, const Interruption& isOver)
{
    std::vector<size_t> groups(polygon.size());
    std::iota(groups.begin(), groups.end(), size_t{0});
    const auto find = [&groups](size_t ring) {
        for (; groups[ring] != ring; ring = groups[ring])
            groups[ring] = groups[groups[ring]];
        return ring;
    };
    const std::vector<Edge> edges = polygon.size() < 2 ? std::vector<Edge>() : GetEdges(polygon);
    EdgeTree tree(edges.size());
    for (size_t i = 0; i < edges.size(); ++i) {
        const Edge& edge = edges[i];
        Box box;
        box.Add(edge.a);
        box.Add(edge.b);
        tree.HasAny(box, [&](size_t k) {
            const bool isOther = k < i && find(edges[k].ring) != find(edge.ring);
            if (isOther && DoSegmentsMeet(edge.a, edge.b, edges[k].a, edges[k].b))
                groups[find(edges[k].ring)] = find(edge.ring);
            return false;
        });
        if (i % kEdgesPerLook == 0 && isOver())
            break;
        tree.Add(i, edge.a, edge.b);
    }
    for (size_t ring = 0; ring < groups.size(); ++ring)
        groups[ring] = find(ring);
    return groups;
}

bool IsSimple(const Polygon& polygon, const Interruption& isOver)
{
    return CountConflicts(polygon, 1, isOver) == 0;
}

Ring RemoveIdlePoints(const Ring& ring, double tolerance)
{
    Ring distinct;
    for (const Point& p : ring)
        if (distinct.empty() || Length(p - distinct.back()) > tolerance)
            distinct.push_back(p);
    while (distinct.size() > 1 && Length(distinct.front() - distinct.back()) <= tolerance)
        distinct.pop_back();
    Ring result;
    for (size_t i = 0; i < distinct.size(); ++i) {
        const Point before = result.empty() ? distinct.back() : result.back();
        const bool isLast = i + 1 == distinct.size();
        const Point after = !isLast ? distinct[i + 1] : result.empty() ? distinct.front() : result.front();
        const bool canGo = result.size() + distinct.size() - i > 3;
        if (!canGo || GetDistanceToSegment(distinct[i], before, after) > tolerance)
            result.push_back(distinct[i]);
    }
    return result;
}

} // namespace ZORNestSolver
