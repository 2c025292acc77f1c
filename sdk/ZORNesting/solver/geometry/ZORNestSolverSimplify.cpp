#include "ZORNestSolverSimplify.h"

#include "ZORNestSolverEdgeTree.h"

#include <queue>

namespace ZORNestSolver {

namespace {

constexpr size_t kFewestCorners = 4;   // of a ring that is simplified
constexpr double kSameSide = 1e-9;     // of the size: how near to the box an edge lies on it
constexpr size_t kChangesPerLook = 64; // between two questions whether to go on

/// Rings as linked lists, and the changes that would remove a corner, the one of least area first.
class Simplifier
{
public:
    Simplifier(const Polygon& polygon, double budget, size_t mostCorners);
    void Run(const Interruption& isOver);
    Polygon GetResult() const;

private:
    struct Corner
    {
        Point place;
        size_t before;
        size_t after;
        size_t ring;
        unsigned stamp = 0; // changes proposed with an older one are void
        bool isAlive = true;
    };
    enum class Kind {
        Cut,   // a reflex corner gives way to its chord
        Extend // the edge after a corner gives way to the meeting point of the edges next to it
    };
    struct Change
    {
        double area;
        size_t corner;
        Kind kind;
        unsigned stamp;
        Point meeting;
        bool operator<(const Change& other) const { return area > other.area; } // least area on top
    };

    size_t Before(size_t corner) const { return m_corners[corner].before; }
    size_t After(size_t corner) const { return m_corners[corner].after; }
    Point At(size_t corner) const { return m_corners[corner].place; }
    void ProposeCut(size_t corner);
    void ProposeExtension(size_t corner);
    void Refresh(size_t corner);
    void AddEdge(size_t corner) { m_tree.Add(corner, At(corner), At(After(corner))); }
    bool IsFree(Point from, Point to, std::initializer_list<size_t> vanishing) const;
    bool HoldsRing(Point a, Point b, Point c, size_t ring) const;
    bool IsOnBox(Point a, Point b) const;
    bool IsAllowed(const Change& change) const;
    void Apply(const Change& change);
    void RemoveAfter(size_t corner);

    std::vector<Corner> m_corners;
    std::vector<size_t> m_ringSizes;
    Ring m_ringPoints;   // a corner of each ring as it was at first
    EdgeTree m_ringTree; // of these
    Box m_box;
    EdgeTree m_tree; // of edges, by their first corners
    std::priority_queue<Change> m_changes;
    double m_budget;
    size_t m_cornersLeft = 0;
    size_t m_mostCorners = 0;
};

Simplifier::Simplifier(const Polygon& polygon, double budget, size_t mostCorners)
    : m_ringTree(polygon.size())
    , m_box(GetBox(polygon))
    , m_tree(CountCorners(polygon))
    , m_budget(budget)
    , m_cornersLeft(CountCorners(polygon))
    , m_mostCorners(mostCorners)
{
    for (size_t r = 0; r < polygon.size(); ++r) {
        const size_t first = m_corners.size();
        const size_t size = polygon[r].size();
        m_ringSizes.push_back(size);
        m_ringPoints.push_back(size > 0 ? polygon[r][0] : Point{});
        m_ringTree.Add(r, m_ringPoints.back(), m_ringPoints.back());
        for (size_t i = 0; i < size; ++i)
            m_corners.push_back({polygon[r][i], first + (i + size - 1) % size, first + (i + 1) % size, r});
    }
    for (size_t i = 0; i < m_corners.size(); ++i) {
        AddEdge(i);
        Refresh(i);
    }
}

/// Edges along the sides of the box are kept: they let parts fit exactly.
bool Simplifier::IsOnBox(Point a, Point b) const
{
    const double tolerance = kSameSide * (m_box.GetWidth() + m_box.GetHeight());
    const auto isNear = [tolerance](double u, double v, double side) {
        return std::abs(u - side) <= tolerance && std::abs(v - side) <= tolerance;
    };
    return isNear(a.x, b.x, m_box.min.x) || isNear(a.x, b.x, m_box.max.x) || isNear(a.y, b.y, m_box.min.y)
           || isNear(a.y, b.y, m_box.max.y);
}

void Simplifier::ProposeCut(size_t corner)
{
    const double twice = Cross(At(corner) - At(Before(corner)), At(After(corner)) - At(corner));
    if (twice <= 0)
        m_changes.push({-twice / 2, corner, Kind::Cut, m_corners[corner].stamp, {}});
}

void Simplifier::ProposeExtension(size_t corner)
{
    const Point a = At(corner);
    const Point b = At(After(corner));
    const Point in = a - At(Before(corner));
    const Point out = At(After(After(corner))) - b;
    const double turn = Cross(in, out);
    if (Cross(in, b - a) <= 0 || Cross(b - a, out) <= 0 || turn <= 0 || IsOnBox(a, b))
        return;
    const Point meeting = a + in * (Cross(b - a, out) / turn);
    if (IsFinite(meeting))
        m_changes.push({std::abs(Cross(b - a, meeting - a)) / 2, corner, Kind::Extend,
                        m_corners[corner].stamp, meeting});
}

void Simplifier::Refresh(size_t corner)
{
    ++m_corners[corner].stamp;
    ProposeCut(corner);
    ProposeExtension(corner);
}

/// No edge but the vanishing ones, named by their first corners, meets the new edge.
bool Simplifier::IsFree(Point from, Point to, std::initializer_list<size_t> vanishing) const
{
    Box box;
    box.Add(from);
    box.Add(to);
    return !m_tree.HasAny(box, [&](size_t i) {
        return m_corners[i].isAlive && DoSegmentsMeet(from, to, At(i), At(After(i)))
               && std::find(vanishing.begin(), vanishing.end(), i) == vanishing.end();
    });
}

/// Another ring lies in the triangle, which no edge of it crosses.
bool Simplifier::HoldsRing(Point a, Point b, Point c, size_t ring) const
{
    const Polygon triangle{{a, b, c}};
    return m_ringTree.HasAny(GetBox(triangle),
                             [&](size_t r) { return r != ring && IsInside(m_ringPoints[r], triangle); });
}

bool Simplifier::IsAllowed(const Change& change) const
{
    const Corner& corner = m_corners[change.corner];
    if (m_ringSizes[corner.ring] <= kFewestCorners)
        return false;
    const size_t i = change.corner;
    const size_t before = corner.before;
    const size_t next = corner.after;
    if (change.kind == Kind::Cut)
        return IsFree(At(before), At(next), {Before(before), before, i, next})
               && !HoldsRing(At(before), At(i), At(next), corner.ring);
    const size_t end = After(next);
    return !HoldsRing(At(i), change.meeting, At(next), corner.ring)
           && IsFree(At(before), change.meeting, {Before(before), before, i, next})
           && IsFree(change.meeting, At(end), {before, i, next, end});
}

void Simplifier::RemoveAfter(size_t corner)
{
    Corner& removed = m_corners[m_corners[corner].after];
    removed.isAlive = false;
    --m_ringSizes[removed.ring];
    --m_cornersLeft;
    m_corners[corner].after = removed.after;
    m_corners[removed.after].before = corner;
}

void Simplifier::Apply(const Change& change)
{
    size_t kept = change.corner;
    if (change.kind == Kind::Cut)
        kept = Before(kept);
    else
        m_corners[kept].place = change.meeting;
    RemoveAfter(kept);
    AddEdge(Before(kept));
    AddEdge(kept);
    for (const size_t corner : {Before(Before(kept)), Before(kept), kept, After(kept)})
        Refresh(corner);
}

void Simplifier::Run(const Interruption& isOver)
{
    size_t changes = 0;
    while (!m_changes.empty() && (m_changes.top().area <= m_budget || m_cornersLeft > m_mostCorners)) {
        if (++changes % kChangesPerLook == 0 && isOver())
            return;
        const Change change = m_changes.top();
        m_changes.pop();
        const Corner& corner = m_corners[change.corner];
        if (!corner.isAlive || corner.stamp != change.stamp || !IsAllowed(change))
            continue;
        m_budget -= change.area;
        Apply(change);
    }
}

Polygon Simplifier::GetResult() const
{
    Polygon result(m_ringSizes.size());
    std::vector<bool> isDone(m_ringSizes.size(), false);
    for (size_t i = 0; i < m_corners.size(); ++i) {
        const size_t ring = m_corners[i].ring;
        if (!m_corners[i].isAlive || isDone[ring])
            continue;
        isDone[ring] = true;
        size_t corner = i;
        do {
            result[ring].push_back(At(corner));
            corner = After(corner);
        } while (corner != i);
    }
    return result;
}

} // namespace

size_t CountCorners(const Polygon& polygon)
{
    size_t count = 0;
    for (const Ring& ring : polygon)
        count += ring.size();
    return count;
}

Polygon SimplifyOutwards(const Polygon& polygon, double largestGrowth, const Interruption& isOver,
                         size_t mostCorners)
{
    Simplifier simplifier(polygon, GetArea(polygon) * largestGrowth, mostCorners);
    simplifier.Run(isOver);
    return simplifier.GetResult();
}

} // namespace ZORNestSolver
