#include "ZORNestPiece_p.h"
#include "solver/base/ZORNestSolverAngle.h"

#include <algorithm>

using ZORNestSolver::kFullTurn;

namespace {

// Crossings of the ray with a part of an arc that rises or falls all the way from a to b.
int CountMonotone(ZORNestPlanePoint a, ZORNestPlanePoint b, const ZORNestPiece& arc, double radius,
                  bool isRight, ZORNestPlanePoint point)
{
    if ((a.y <= point.y) == (b.y <= point.y))
        return 0;
    const double height = point.y - arc.center.y;
    const double half = std::sqrt(std::max(0.0, radius * radius - height * height));
    return arc.center.x + (isRight ? half : -half) > point.x ? 1 : 0;
}

} // namespace

double ZORNestPiece::GetSweep() const
{
    if (IsLine())
        return 0;
    if (start == end)
        return kFullTurn;
    const ZORNestPlanePoint from = start - center;
    const ZORNestPlanePoint to = end - center;
    const double angle = turn * std::atan2(Cross(from, to), Dot(from, to));
    return angle > 0 ? angle : angle + kFullTurn;
}

double ZORNestPiece::GetLength() const
{
    return IsLine() ? Length(start - end) : GetRadius() * GetSweep();
}

ZORNestPlanePoint ZORNestPiece::GetMiddle() const
{
    if (IsLine())
        return 0.5 * (start + end);
    const double half = turn * GetSweep() / 2;
    const ZORNestPlanePoint from = start - center;
    return center + std::cos(half) * from + std::sin(half) * GetNormal(from);
}

ZORNestPlaneBox ZORNestPiece::GetBox() const
{
    ZORNestPlaneBox box;
    box.Add(start);
    box.Add(end);
    if (IsLine())
        return box;
    const double radius = GetRadius();
    const double sweep = GetSweep();
    const ZORNestPlanePoint from = start - center;
    for (const ZORNestPlanePoint& axis : {ZORNestPlanePoint{1, 0}, {0, 1}, {-1, 0}, {0, -1}}) {
        double angle = turn * std::atan2(Cross(from, axis), Dot(from, axis));
        if (angle < 0)
            angle += kFullTurn;
        if (angle <= sweep)
            box.Add(center + radius * axis);
    }
    return box;
}

double ZORNestPiece::GetTwiceArea(ZORNestPlanePoint origin) const
{
    const double chord = Cross(start - origin, end - origin);
    if (IsLine())
        return chord;
    const double radius = GetRadius();
    const double sweep = GetSweep();
    return chord + turn * radius * radius * (sweep - std::sin(sweep));
}

int ZORNestPiece::CountCrossings(ZORNestPlanePoint point) const
{
    if (IsLine()) {
        if ((start.y <= point.y) == (end.y <= point.y))
            return 0;
        const double x = start.x + (point.y - start.y) * ((end.x - start.x) / (end.y - start.y));
        return x > point.x ? 1 : 0;
    }
    // Cut at the top and the bottom of the circle.
    const double radius = GetRadius();
    const double sweep = GetSweep();
    const ZORNestPlanePoint from = start - center;
    double cuts[2];
    int count = 0;
    for (const double y : {radius, -radius}) {
        const ZORNestPlanePoint axis{0, y};
        double angle = turn * std::atan2(Cross(from, axis), Dot(from, axis));
        if (angle < 0)
            angle += kFullTurn;
        if (angle > 0 && angle < sweep)
            cuts[count++] = angle;
    }
    if (count == 2 && cuts[1] < cuts[0])
        std::swap(cuts[0], cuts[1]);
    int crossings = 0;
    double last = 0;
    ZORNestPlanePoint a = start;
    for (int i = 0; i <= count; ++i) {
        const double next = i < count ? cuts[i] : sweep;
        const double middle = turn * (last + next) / 2;
        const bool isRight = std::cos(middle) * from.x - std::sin(middle) * from.y > 0;
        ZORNestPlanePoint b = end;
        if (i < count) {
            const double y = std::sin(turn * next) * from.x + std::cos(turn * next) * from.y;
            b = {center.x, center.y + (y > 0 ? radius : -radius)};
        }
        crossings += CountMonotone(a, b, *this, radius, isRight, point);
        a = b;
        last = next;
    }
    return crossings;
}

void ZORNestPiece::Reverse()
{
    std::swap(start, end);
    turn = -turn;
}
