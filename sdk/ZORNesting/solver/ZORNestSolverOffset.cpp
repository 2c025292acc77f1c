#include "ZORNestSolverOffset.h"

#include <numbers>
#include <polyclipping/clipper.hpp>

namespace ZORNestSolver {

namespace {

constexpr double Grid = 1e-6;
constexpr double NoArea = 1e-6;          // of a hole: less outside of the outline is due to rounding
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
    ClipperLib::Paths ToGrid(const Polygon& rings) const
    {
        ClipperLib::Paths paths;
        for (const Ring& ring : rings)
            paths.push_back(ToGrid(ring));
        return paths;
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

/// Neither the clipper nor a tree of paths can be copied.
void Load(ClipperLib::Clipper& clipper, const ClipperLib::Paths& subject, const ClipperLib::Paths& clip)
{
    clipper.StrictlySimple(true);
    clipper.AddPaths(subject, ClipperLib::ptSubject, true);
    clipper.AddPaths(clip, ClipperLib::ptClip, true);
}

ClipperLib::Paths Combine(ClipperLib::ClipType type, const ClipperLib::Paths& subject,
                          const ClipperLib::Paths& clip)
{
    ClipperLib::Clipper clipper;
    Load(clipper, subject, clip);
    ClipperLib::Paths paths;
    clipper.Execute(type, paths, ClipperLib::pftNonZero, ClipperLib::pftNonZero);
    return paths;
}

std::vector<Polygon> MakePieces(ClipperLib::ClipType type, const ClipperLib::Paths& subject,
                                const ClipperLib::Paths& clip, ClipperLib::PolyFillType fill,
                                const Scale& scale)
{
    ClipperLib::Clipper clipper;
    Load(clipper, subject, clip);
    ClipperLib::PolyTree tree;
    clipper.Execute(type, tree, fill, fill);
    std::vector<Polygon> pieces;
    CollectPolygons(tree, scale, pieces);
    return pieces;
}

double GetArea(const ClipperLib::Paths& paths)
{
    double area = 0;
    for (const ClipperLib::Path& path : paths)
        area += ClipperLib::Area(path);
    return area;
}

std::vector<Polygon> Unite(const Polygon& rings, const Scale& scale, ClipperLib::PolyFillType fill)
{
    return MakePieces(ClipperLib::ctUnion, scale.ToGrid(rings), {}, fill, scale);
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

Polygon CleanPiece(const Polygon& rings)
{
    const Scale scale(GetBox(rings));
    const ClipperLib::Paths outline = Combine(ClipperLib::ctUnion, {scale.ToGrid(rings[0])}, {});
    ClipperLib::Paths solid = outline;
    ClipperLib::Paths holes;
    for (size_t i = 1; i < rings.size(); ++i) {
        const ClipperLib::Paths hole = Combine(ClipperLib::ctUnion, {scale.ToGrid(rings[i])}, {});
        const double area = GetArea(hole);
        const double beyond = GetArea(Combine(ClipperLib::ctDifference, hole, outline));
        if (area > 0 && beyond >= (1 - NoArea) * area)
            return {};
        ClipperLib::Paths& kind = beyond > NoArea * area ? solid : holes;
        kind.insert(kind.end(), hole.begin(), hole.end());
    }
    constexpr auto fill = ClipperLib::pftNonZero;
    std::vector<Polygon> pieces = MakePieces(ClipperLib::ctDifference, solid, holes, fill, scale);
    if (pieces.size() > 1)
        pieces = MakePieces(ClipperLib::ctUnion, solid, {}, fill, scale);
    return TakeLargest(pieces);
}

std::vector<Polygon> CutFromBox(const Box& box, const Polygon& polygon)
{
    const Scale scale(box);
    const Ring frame{box.min, {box.max.x, box.min.y}, box.max, {box.min.x, box.max.y}};
    return MakePieces(ClipperLib::ctDifference, {scale.ToGrid(frame)}, scale.ToGrid(polygon),
                      ClipperLib::pftEvenOdd, scale);
}

} // namespace ZORNestSolver
