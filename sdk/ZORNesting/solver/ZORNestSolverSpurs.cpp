#include "ZORNestSolverSpurs.h"

namespace ZORNestSolver {

namespace {

constexpr double kWidth = 1e-4;        // thinner pieces are taken for rounding
constexpr double kFoldDistance = 1e-6; // of lines that lie on each other

/// Returns a rectangle along a line, within a box. The ends of the line are corners of it, since the box may cut off
/// others.
Ring MakeSpur(Point from, Point to, const Box& box)
{
    const Point along = to - from;
    const double length = Length(along);
    const bool hasDirection = length > kFoldDistance; // dividing by the least lengths gives no numbers
    const Point side = hasDirection ? Point{-along.y, along.x} * (kWidth / 2 / length) : Point{};
    Ring spur{from, from - side, to - side, to, to + side, from + side};
    for (Point& p : spur)
        p = {std::clamp(p.x, box.min.x, box.max.x), std::clamp(p.y, box.min.y, box.max.y)};
    return spur;
}

/// Follows a ring from one of its points to both sides as long as these lie on each other.
/// \param most  number of all spurs at which it ends
void AddSpurs(const Ring& ring, size_t tip, const Box& box, size_t most, Polygon& spurs)
{
    const size_t count = ring.size();
    Point pivot = ring[tip];
    size_t left = 1;
    size_t right = 1;
    while (left + right < count && spurs.size() < most) {
        const Point back = ring[(tip + count - left) % count] - pivot;
        const Point forth = ring[(tip + right) % count] - pivot;
        const double backLength = Length(back);
        const double forthLength = Length(forth);
        const double distance = std::abs(Cross(back, forth)) / std::max(backLength, forthLength);
        if (!(Dot(back, forth) > 0) || distance > kFoldDistance)
            return;
        const Point end = pivot + (backLength < forthLength ? back : forth);
        spurs.push_back(MakeSpur(pivot, end, box));
        pivot = end;
        left += backLength <= forthLength + kFoldDistance ? 1 : 0;
        right += forthLength <= backLength + kFoldDistance ? 1 : 0;
    }
}

} // namespace

Polygon GetSpurs(const Polygon& rings)
{
    const Box box = GetBox(rings);
    Polygon spurs;
    for (const Ring& ring : rings) {
        const size_t most = spurs.size() + 2 * ring.size(); // a ring may run along itself again and again
        for (size_t i = 0; i < ring.size() && spurs.size() < most; ++i)
            AddSpurs(ring, i, box, most, spurs);
    }
    return spurs;
}

} // namespace ZORNestSolver
