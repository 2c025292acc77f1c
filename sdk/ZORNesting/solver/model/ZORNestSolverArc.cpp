#include "ZORNestSolverArc.h"

#include "solver/base/ZORNestSolverAngle.h"

#include <numbers>

namespace ZORNestSolver {

namespace {

constexpr double kEqualEnds = 1e-9; // of the radius
constexpr double kShortestGap = 1e-9;
constexpr double kLongestGap = 1e-6;
constexpr double kSmallestAngle = 1e-12;

double GetLargestCoordinate(std::initializer_list<Point> points)
{
    double largest = 0;
    for (const Point p : points)
        largest = std::max({largest, std::abs(p.x), std::abs(p.y)});
    return largest;
}

/// Scales by a power of two, which is exact, so that products of huge coordinates stay finite.
Point Normalized(Point arm, double length)
{
    const int exponent = -std::ilogb(length);
    return {std::scalbn(arm.x, exponent), std::scalbn(arm.y, exponent)};
}

double FindSweep(const Arc& arc, bool counterClockwise)
{
    const double gap = Length(arc.end - arc.start);
    if (arc.radius == 0 || !std::isfinite(arc.radius) || !std::isfinite(gap))
        return 0;
    const double turn = counterClockwise ? kFullTurn : -kFullTurn;
    if (gap <= std::clamp(kEqualEnds * arc.radius, kShortestGap, kLongestGap))
        return turn;
    const Point to = arc.end - arc.center;
    const double reach = Length(to);
    if (reach == 0 || !std::isfinite(reach))
        return 0;
    const Point a = Normalized(arc.start - arc.center, arc.radius);
    const Point b = Normalized(to, reach);
    const double angle = std::atan2(Cross(a, b), Dot(a, b));
    const double rounding =
        4 * std::numeric_limits<double>::epsilon() * GetLargestCoordinate({arc.start, arc.end, arc.center});
    if (std::abs(angle) <= std::max(kSmallestAngle, rounding / arc.radius + rounding / reach))
        return 0;
    return (angle > 0) == counterClockwise ? angle : angle + turn;
}

} // namespace

double GetAngleMinusSine(double t)
{
    if (std::abs(t) > 0.05)
        return t - std::sin(t);
    const double square = t * t;
    return t * square / 6 * (1 - square / 20 * (1 - square / 42));
}

Arc::Arc(Point arcStart, Point arcEnd, Point arcCenter, bool counterClockwise)
    : start(arcStart)
    , end(arcEnd)
    , center(arcCenter)
    , radius(Length(arcStart - arcCenter))
    , startAngle(std::atan2(arcStart.y - arcCenter.y, arcStart.x - arcCenter.x))
    , reached(arcStart)
{
    sweep = FindSweep(*this, counterClockwise);
    if (sweep != 0 && std::abs(sweep) < kFullTurn)
        reached = Evaluate(1);
    hasTail = Length(end - reached) > kJoinTolerance || (IsChord() && !(end == start));
    endOnCircle = hasTail ? reached : end;
}

Point Arc::Evaluate(double part) const
{
    const double angle = part * sweep;
    const double half = std::sin(angle / 2);
    const Point arm = start - center;
    return start + arm * (-2 * half * half) + GetNormal(arm) * std::sin(angle);
}

Box Arc::GetBox() const
{
    Box box;
    box.Add(start);
    box.Add(reached);
    box.Add(end);
    if (IsChord())
        return box;
    const double low = std::min(startAngle, startAngle + sweep);
    const double high = std::max(startAngle, startAngle + sweep);
    for (double i = std::ceil(low / kQuarterTurn); i <= std::floor(high / kQuarterTurn); ++i) {
        const Point axis{std::round(std::cos(i * kQuarterTurn)), std::round(std::sin(i * kQuarterTurn))};
        const double part = std::clamp((i * kQuarterTurn - startAngle) / sweep, 0.0, 1.0);
        box.Add(radius < kFarCenter ? center + axis * radius : Evaluate(part));
    }
    return box;
}

double Arc::GetArea(Point origin) const
{
    const double chord =
        Cross(start - origin, endOnCircle - origin) + Cross(endOnCircle - origin, end - origin);
    return IsChord() ? chord / 2 : (chord + radius * radius * GetAngleMinusSine(sweep)) / 2;
}

double Arc::GetLength() const
{
    const double onCircle = IsChord() ? 0 : radius * std::abs(sweep);
    return onCircle + Length(end - endOnCircle);
}

bool Arc::IsInSweep(Point p) const
{
    if (IsChord())
        return false;
    if (std::abs(sweep) >= kFullTurn)
        return true;
    const double side = sweep > 0 ? 1 : -1;
    const Point first = start - center;
    const Point last = reached - center;
    const Point arm = p - center;
    if (std::abs(sweep) <= std::numbers::pi)
        return side * Cross(first, arm) >= 0 && side * Cross(arm, last) >= 0;
    return side * Cross(last, arm) <= 0 || side * Cross(arm, first) <= 0;
}

double Arc::GetDistance(Point p) const
{
    const double ends = std::min(GetDistanceToSegment(p, reached, end), Length(p - start));
    if (!IsInSweep(p))
        return ends;
    // The difference of the squares, factored: a huge radius costs no digits.
    const Point sum = (p - center) + (start - center);
    return std::min(ends, std::abs(Dot(p - start, sum)) / (Length(p - center) + radius));
}

} // namespace ZORNestSolver
