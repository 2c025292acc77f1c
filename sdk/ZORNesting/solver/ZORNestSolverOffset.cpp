#include "ZORNestSolverOffset.h"

#include <numbers>
#include <polyclipping/clipper.hpp>

namespace ZORNestSolver {

namespace {

constexpr double Grid = 1e-6;
constexpr double CornerTolerance = 0.01; // of the distance: how far a corner may reach beyond the circle

/// The grid coarsens where the coordinates would leave the range of the clipping library's fast path.
struct Scale
{
    explicit Scale(const Box& box)
        : origin(box.GetCentre())
        , grid(std::max(Grid, std::max(box.GetWidth(), box.GetHeight()) / 1e9))
    {
    }
    ClipperLib::IntPoint ToGrid(Point p) const
    {
        return {std::llround((p.x - origin.x) / grid), std::llround((p.y - origin.y) / grid)};
    }
    Point FromGrid(const ClipperLib::IntPoint& p) const
    {
        return {origin.x + static_cast<double>(p.X) * grid, origin.y + static_cast<double>(p.Y) * grid};
    }
    ClipperLib::Path ToGrid(const Ring& ring) const
    {
        ClipperLib::Path path;
        for (const Point& p : ring)
            path.push_back(ToGrid(p));
        return path;
    }
    Ring FromGrid(const ClipperLib::Path& path) const
    {
        Ring ring;
        for (const auto& p : path)
            ring.push_back(FromGrid(p));
        return ring;
    }

    Point origin;
    double grid;
};

/// The offset of one ring to its right side, with loops that the union removes.
Ring OffsetRing(const Ring& ring, double distance)
{
    Ring result;
    for (size_t i = 0; i < ring.size(); ++i) {
        const Point p = ring[i];
        const Point in = p - ring[(i + ring.size() - 1) % ring.size()];
        const Point out = ring[(i + 1) % ring.size()] - p;
        const Point normalIn = Point{in.y, -in.x} * (distance / Length(in));
        const Point normalOut = Point{out.y, -out.x} * (distance / Length(out));
        const double turn = std::atan2(Cross(in, out), Dot(in, out));
        result.push_back(p + normalIn);
        if (turn <= 0) {
            result.push_back(p);
        } else {
            const double largest = 2 * std::acos(1 / (1 + CornerTolerance));
            const int steps = std::max(1, static_cast<int>(std::ceil(turn / largest)));
            const double reach = 1 / std::cos(turn / steps / 2);
            for (int s = 0; s < steps; ++s) {
                const double angle = turn * (s + 0.5) / steps;
                const double c = std::cos(angle) * reach;
                const double n = std::sin(angle) * reach;
                result.push_back(p + Point{c * normalIn.x - n * normalIn.y, n * normalIn.x + c * normalIn.y});
            }
        }
        result.push_back(p + normalOut);
    }
    return result;
}

Polygon ReadNode(const ClipperLib::PolyNode& outer, const Scale& scale)
{
    Polygon polygon{RemoveIdlePoints(scale.FromGrid(outer.Contour), 0)};
    for (const ClipperLib::PolyNode* hole : outer.Childs) {
        Ring ring = RemoveIdlePoints(scale.FromGrid(hole->Contour), 0);
        if (ring.size() >= 3)
            polygon.push_back(std::move(ring));
    }
    return polygon;
}

void CollectPolygons(const ClipperLib::PolyNode& parent, const Scale& scale, std::vector<Polygon>& polygons)
{
    for (const ClipperLib::PolyNode* outer : parent.Childs) {
        if (outer->Contour.size() >= 3)
            polygons.push_back(ReadNode(*outer, scale));
        for (const ClipperLib::PolyNode* hole : outer->Childs)
            CollectPolygons(*hole, scale, polygons);
    }
}

Polygon TakeLargest(std::vector<Polygon>& polygons)
{
    Polygon largest;
    double area = 0;
    for (Polygon& polygon : polygons) {
        if (const double own = GetArea(polygon); own > area) {
            area = own;
            largest = std::move(polygon);
        }
    }
    return largest;
}

std::vector<Polygon> Unite(const Polygon& rings, const Scale& scale, ClipperLib::PolyFillType fill)
{
    ClipperLib::Clipper clipper(ClipperLib::ioStrictlySimple);
    for (const Ring& ring : rings)
        clipper.AddPath(scale.ToGrid(ring), ClipperLib::ptSubject, true);
    ClipperLib::PolyTree tree;
    clipper.Execute(ClipperLib::ctUnion, tree, fill, fill);
    std::vector<Polygon> polygons;
    CollectPolygons(tree, scale, polygons);
    return polygons;
}

} // namespace

Polygon GrowPolygon(const Polygon& polygon, double distance)
{
    const Scale scale(GetBox(polygon).Grown(2 * distance));
    Polygon raw;
    for (const Ring& ring : polygon) {
        const Ring clean = RemoveIdlePoints(ring, 0);
        if (clean.size() >= 3)
            raw.push_back(OffsetRing(clean, distance + 2 * scale.grid));
    }
    std::vector<Polygon> grown = Unite(raw, scale, ClipperLib::pftPositive);
    return TakeLargest(grown);
}

Polygon CleanPolygon(const Polygon& polygon)
{
    std::vector<Polygon> pieces = Unite(polygon, Scale(GetBox(polygon)), ClipperLib::pftNonZero);
    return TakeLargest(pieces);
}

std::vector<Polygon> CutFromBox(const Box& box, const Polygon& polygon)
{
    const Scale scale(box);
    ClipperLib::Clipper clipper(ClipperLib::ioStrictlySimple);
    const Ring frame{box.min, {box.max.x, box.min.y}, box.max, {box.min.x, box.max.y}};
    clipper.AddPath(scale.ToGrid(frame), ClipperLib::ptSubject, true);
    for (const Ring& ring : polygon)
        clipper.AddPath(scale.ToGrid(ring), ClipperLib::ptClip, true);
    ClipperLib::PolyTree tree;
    clipper.Execute(ClipperLib::ctDifference, tree, ClipperLib::pftNonZero, ClipperLib::pftEvenOdd);
    std::vector<Polygon> rest;
    CollectPolygons(tree, scale, rest);
    return rest;
}

} // namespace ZORNestSolver
