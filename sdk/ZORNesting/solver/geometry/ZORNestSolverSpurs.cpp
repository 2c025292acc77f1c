#include "ZORNestSolverSpurs.h"

#include "ZORNestSolverEdgeTree.h"

#include <array>

namespace ZORNestSolver {

namespace {

constexpr double kWidth = 1e-4;       // thinner pieces are taken for rounding
constexpr double kLeastLength = 1e-6; // of a line that has a direction
constexpr double kReach = 1e-7;       // of the material: a fraction of the depth to which parts may overlap
constexpr double kRelativeReach = 1e-14; // of its size, for rounding

struct Line
{
    Point from;
    Point to;

    friend bool operator==(const Line& a, const Line& b) { return a.from == b.from && a.to == b.to; }
    friend bool operator<(const Line& a, const Line& b)
    {
        return std::array{a.from.x, a.from.y, a.to.x, a.to.y}
               < std::array{b.from.x, b.from.y, b.to.x, b.to.y};
    }
};

/// Returns a rectangle along a line, within a box. The ends of the line are corners of it, since the box may cut off
/// others.
Ring MakeSpur(const Line& line, const Box& box)
{
    const Point along = line.to - line.from;
    const double length = Length(along);
    const bool hasDirection = length > kLeastLength; // dividing by the least lengths gives no numbers
    const Point side = hasDirection ? GetNormal(along) * (kWidth / 2 / length) : Point{};
    Ring spur{line.from, line.from - side, line.to - side, line.to, line.to + side, line.from + side};
    for (Point& p : spur)
        p = {std::clamp(p.x, box.min.x, box.max.x), std::clamp(p.y, box.min.y, box.max.y)};
    return spur;
}

/// Finds what of a line the material does not hold.
class Cover
{
public:
    Cover(const Polygon& material, const Box& box)
        : m_box(box)
        , m_reach(std::max(kReach, kRelativeReach * Length(m_box.max - m_box.min)))
        , m_tree(0)
    {
        for (const Ring& ring : material)
            for (size_t i = 0; i < ring.size(); ++i)
                m_edges.push_back({ring[i], ring[(i + 1) % ring.size()]});
        m_tree = EdgeTree(m_edges.size());
        for (size_t i = 0; i < m_edges.size(); ++i)
            m_tree.Add(i, m_edges[i].from, m_edges[i].to);
    }

    void AppendUncovered(const Line& line, std::vector<Line>& uncovered)
    {
        FindNear(line);
        const std::vector<double> parts = Divide(line);
        const Point along = line.to - line.from;
        bool goesOn = false;
        for (size_t i = 0; i + 1 < parts.size(); ++i) {
            const bool isLong = (parts[i + 1] - parts[i]) * Length(along) > m_reach;
            if (!isLong || IsHeld(line.from + along * ((parts[i] + parts[i + 1]) / 2))) {
                goesOn = goesOn && !isLong;
                continue;
            }
            const Point end = parts[i + 1] == 1 ? line.to : line.from + along * parts[i + 1];
            if (goesOn)
                uncovered.back().to = end;
            else
                uncovered.push_back({line.from + along * parts[i], end});
            goesOn = true;
        }
    }

private:
    void FindNear(const Line& line)
    {
        Box box;
        box.Add(line.from);
        box.Add(line.to);
        box = box.Grown(m_reach);
        m_near.clear();
        m_tree.HasAny(box, [&](size_t i) {
            Box edge;
            edge.Add(m_edges[i].from);
            edge.Add(m_edges[i].to);
            if (edge.Overlaps(box))
                m_near.push_back(m_edges[i]);
            return false;
        });
    }

    /// Returns the parts of the line, 0 to 1, at which it may come to or leave the material or an edge of it.
    std::vector<double> Divide(const Line& line) const
    {
        std::vector<double> parts{0, 1};
        const auto append = [&parts](double part) {
            if (part > 0 && part < 1)
                parts.push_back(part);
        };
        const Point along = line.to - line.from;
        for (const Line& edge : m_near) {
            const double first = Cross(along, edge.from - line.from);
            const double last = Cross(along, edge.to - line.from);
            const double from = Dot(along, edge.from - line.from) / Dot(along, along);
            const double to = Dot(along, edge.to - line.from) / Dot(along, along);
            append(from);
            append(to);
            if ((first > 0) != (last > 0))
                append(from + (to - from) * (first / (first - last)));
        }
        std::sort(parts.begin(), parts.end());
        return parts;
    }

    bool IsHeld(Point p) const
    {
        return std::any_of(
                   m_near.begin(), m_near.end(),
                   [&](const Line& edge) { return GetDistanceToSegment(p, edge.from, edge.to) <= m_reach; })
               || IsInside(p);
    }

    /// Counts the edges right of the point.
    bool IsInside(Point p) const
    {
        bool isInside = false;
        m_tree.HasAny({p, {std::max(p.x, m_box.max.x), p.y}}, [&](size_t i) {
            const Point a = m_edges[i].from;
            const Point b = m_edges[i].to;
            if ((a.y > p.y) != (b.y > p.y) && (Cross(b - a, p - a) > 0) == (b.y > a.y))
                isInside = !isInside;
            return false;
        });
        return isInside;
    }

    Box m_box;
    double m_reach;
    std::vector<Line> m_edges;
    EdgeTree m_tree;
    std::vector<Line> m_near; // edges that the present line may meet
};

/// Returns the edges of all rings, each once, whatever its direction.
std::vector<Line> GetLines(const Polygon& rings)
{
    std::vector<Line> lines;
    for (const Ring& ring : rings) {
        for (size_t i = 0; i < ring.size(); ++i) {
            const Line line{ring[i], ring[(i + 1) % ring.size()]};
            const Line reversed{line.to, line.from};
            if (!(line.from == line.to))
                lines.push_back(std::min(line, reversed));
        }
    }
    std::sort(lines.begin(), lines.end());
    lines.erase(std::unique(lines.begin(), lines.end()), lines.end());
    return lines;
}

} // namespace

Polygon GetSpurs(const Polygon& rings, const Polygon& material)
{
    Box box = GetBox(material);
    const Box drawn = GetBox(rings);
    box.Add(drawn);
    Cover cover(material, box);
    std::vector<Line> uncovered;
    for (const Line& line : GetLines(rings))
        cover.AppendUncovered(line, uncovered);
    Polygon spurs;
    for (const Line& line : uncovered)
        spurs.push_back(MakeSpur(line, box));
    return spurs;
}

} // namespace ZORNestSolver
