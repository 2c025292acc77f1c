#include "ZORNestSolverOffset.h"

#include <numbers>
#include <polyclipping/clipper.hpp>

namespace ZORNestSolver {

namespace {

constexpr double kGrid = 1e-9;            // far below the inset
constexpr double kThinnest = 1e-6;        // pieces and holes thinner than that are due to rounding
constexpr double kBluntest = 0.5;         // keeps the inset of a sharp corner within twice that of edges
constexpr double kNoArea = 1e-6;          // of a hole: less outside of the outline is due to rounding
constexpr double kMostWork = 1e8;         // edges and corners to be passed when rings are cleaned
constexpr double kCornerTolerance = 0.01; // of the distance: how far a corner may reach beyond the circle

/// The grid coarsens where the coordinates would lose digits in the clipping library.
struct Scale
{
    explicit Scale(const Box& box)
        : origin(box.GetCentre())
        , grid(std::max(kGrid, std::max(box.GetWidth(), box.GetHeight()) / 1e15))
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
            const double largest = 2 * std::acos(1 / (1 + kCornerTolerance));
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

bool IsThin(const ClipperLib::Path& path, const Scale& scale)
{
    double perimeter = 0;
    for (size_t i = 0; i < path.size(); ++i)
        perimeter += Length(scale.FromGrid(path[(i + 1) % path.size()]) - scale.FromGrid(path[i]));
    return std::abs(ClipperLib::Area(path)) * scale.grid * scale.grid < kThinnest * perimeter / 2;
}

/// Outer paths are counter-clockwise, holes clockwise.
Polygon ReadPaths(const ClipperLib::Paths& paths, const Scale& scale)
{
    Polygon polygon;
    for (const ClipperLib::Path& path : paths) {
        Ring ring = RemoveIdlePoints(scale.FromGrid(path), 0);
        if (ring.size() >= 3 && !IsThin(path, scale))
            polygon.push_back(std::move(ring));
    }
    const auto isOuter = [](const Ring& ring) { return GetSignedArea(ring) > 0; };
    std::stable_partition(polygon.begin(), polygon.end(), isOuter);
    return polygon;
}

ClipperLib::Paths Combine(ClipperLib::ClipType type, const ClipperLib::Paths& subject,
                          const ClipperLib::Paths& clip,
                          ClipperLib::PolyFillType fill = ClipperLib::pftNonZero)
{
    ClipperLib::Clipper
        clipper; // rings that touch themselves are fine, and quicker than strictly simple ones
    clipper.AddPaths(subject, ClipperLib::ptSubject, true);
    clipper.AddPaths(clip, ClipperLib::ptClip, true);
    ClipperLib::Paths paths;
    clipper.Execute(type, paths, fill, fill);
    return paths;
}

/// All points around which an odd number of rings winds.
ClipperLib::Paths CombineOdd(const Polygon& rings, const Scale& scale)
{
    ClipperLib::Paths paths;
    for (const Ring& ring : rings) {
        const ClipperLib::Paths loops = Combine(ClipperLib::ctUnion, {scale.ToGrid(ring)}, {});
        paths.insert(paths.end(), loops.begin(), loops.end());
    }
    return rings.size() < 2 ? paths : Combine(ClipperLib::ctUnion, paths, {}, ClipperLib::pftEvenOdd);
}

Ring GetFrame(const Box& box)
{
    return {box.min, {box.max.x, box.min.y}, box.max, {box.min.x, box.max.y}};
}

double GetArea(const ClipperLib::Paths& paths)
{
    double area = 0;
    for (const ClipperLib::Path& path : paths)
        area += ClipperLib::Area(path);
    return area;
}

/// Counts what the clipping library passes when it cleans rings.
class CleaningWork
{
public:
    explicit CleaningWork(const Polygon& rings)
    {
        const Scale scale(GetBox(rings));
        for (const Ring& ring : rings) {
            m_rings.emplace_back();
            for (const ClipperLib::IntPoint& p : scale.ToGrid(ring)) {
                m_rings.back().push_back({static_cast<double>(p.X), static_cast<double>(p.Y)});
                m_heights.push_back(m_rings.back().back().y);
            }
        }
        std::sort(m_heights.begin(), m_heights.end());
        m_heights.erase(std::unique(m_heights.begin(), m_heights.end()), m_heights.end());
    }

    /// Returns the rings as the library sees them.
    const Polygon& GetRoundedRings() const { return m_rings; }

    /// Counts the edges at all heights, and again at each local minimum.
    double CountEdges() const
    {
        std::vector<double> edges(m_heights.size() + 1,
                                  0); // that begin at a height, less those that end there
        std::vector<double> minima(m_heights.size() + 1, 0);
        ForEachCorner([&](size_t, double y, double before, double after) {
            edges[GetRank(std::min(y, after))] += 1;
            edges[GetRank(std::max(y, after))] -= 1;
            minima[GetRank(y)] += y < before && y <= after ? 1 : 0;
        });
        double alive = 0;
        double count = 0;
        for (size_t rank = 0; rank < m_heights.size(); ++rank) {
            alive += edges[rank];
            count += alive * (1 + minima[rank]);
        }
        return count;
    }

    /// Counts the corners of its group for each local minimum.
    /// \param groups  of each ring
    double CountCorners(const std::vector<size_t>& groups) const
    {
        std::vector<double> corners(m_rings.size(), 0);
        for (size_t r = 0; r < m_rings.size(); ++r)
            corners[groups[r]] += static_cast<double>(m_rings[r].size());
        double count = 0;
        ForEachCorner([&](size_t ring, double y, double before, double after) {
            count += y < before && y <= after ? corners[groups[ring]] : 0;
        });
        return count;
    }

private:
    /// Calls a function with the ring of each corner, its height and those of its neighbors.
    template<class Function>
    void ForEachCorner(Function function) const
    {
        for (size_t r = 0; r < m_rings.size(); ++r) {
            const Ring& ring = m_rings[r];
            for (size_t i = 0; i < ring.size(); ++i)
                function(r, ring[i].y, ring[(i + ring.size() - 1) % ring.size()].y,
                         ring[(i + 1) % ring.size()].y);
        }
    }

    size_t GetRank(double height) const
    {
        return static_cast<size_t>(std::lower_bound(m_heights.begin(), m_heights.end(), height)
                                   - m_heights.begin());
    }

    Polygon m_rings;
    std::vector<double> m_heights; // of all corners, each once
};

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
    return ReadPaths(Combine(ClipperLib::ctUnion, scale.ToGrid(raw), {}, ClipperLib::pftPositive), scale);
}

Polygon Inset(const Polygon& polygon)
{
    Polygon result = polygon;
    for (size_t r = 0; r < polygon.size(); ++r) {
        const Ring& ring = polygon[r];
        for (size_t i = 0; i < ring.size(); ++i) {
            const Point in = ring[i] - ring[(i + ring.size() - 1) % ring.size()];
            const Point out = ring[(i + 1) % ring.size()] - ring[i];
            const Point u = in * (1 / Length(in));
            const Point v = out * (1 / Length(out));
            const Point inwards = Point{-u.y - v.y, u.x + v.x} * (1 / std::max(1 + Dot(u, v), kBluntest));
            if (IsFinite(inwards))
                result[r][i] = ring[i] + inwards * kInset;
        }
    }
    return result;
}

Polygon CleanPolygon(const Polygon& polygon)
{
    const Scale scale(GetBox(polygon));
    return ReadPaths(Combine(ClipperLib::ctUnion, scale.ToGrid(polygon), {}), scale);
}

bool IsCostlyToClean(const Polygon& rings, const Interruption& isOver)
{
    const CleaningWork work(rings);
    const double edges = work.CountEdges();
    if (edges > kMostWork)
        return true;
    if (edges + work.CountCorners(std::vector<size_t>(rings.size(), 0)) <= kMostWork)
        return false;
    const std::vector<size_t> groups = GroupRings(work.GetRoundedRings(), isOver);
    return isOver() || edges + work.CountCorners(groups) > kMostWork;
}

double GetCleanArea(const Ring& ring)
{
    return GetArea(CleanPolygon({ring}));
}

std::optional<Polygon> CleanPiece(const Polygon& rings, const Polygon& added, const Interruption& isOver)
{
    const Scale scale(GetBox(rings));
    const ClipperLib::Paths outline = Combine(ClipperLib::ctUnion, {scale.ToGrid(rings[0])}, {});
    ClipperLib::Paths solid = scale.ToGrid(added);
    ClipperLib::Paths inner = outline;
    for (size_t i = 1; i < rings.size(); ++i) {
        if (isOver())
            return Polygon();
        const ClipperLib::Paths hole = Combine(ClipperLib::ctUnion, {scale.ToGrid(rings[i])}, {});
        const double area = GetArea(hole);
        const double beyond = GetArea(Combine(ClipperLib::ctDifference, hole, outline));
        if (area > 0 && beyond >= (1 - kNoArea) * area)
            return std::nullopt;
        ClipperLib::Paths& kind = beyond > kNoArea * area ? solid : inner;
        kind.insert(kind.end(), hole.begin(), hole.end());
    }
    const ClipperLib::Paths material = Combine(ClipperLib::ctUnion, inner, {}, ClipperLib::pftEvenOdd);
    return ReadPaths(Combine(ClipperLib::ctUnion, material, solid), scale);
}

double GetFreeArea(const Box& box, const Polygon& rings)
{
    const Scale scale(box);
    return GetArea(Combine(ClipperLib::ctDifference, {scale.ToGrid(GetFrame(box))}, scale.ToGrid(rings)))
           * scale.grid * scale.grid;
}

Polygon GetRegion(const Polygon& rings)
{
    const Scale scale(GetBox(rings));
    return ReadPaths(CombineOdd(rings, scale), scale);
}

Polygon CutFromBox(const Box& box, const Polygon& polygon)
{
    const Scale scale(box);
    return ReadPaths(
        Combine(ClipperLib::ctDifference, {scale.ToGrid(GetFrame(box))}, CombineOdd(polygon, scale)), scale);
}

} // namespace ZORNestSolver
