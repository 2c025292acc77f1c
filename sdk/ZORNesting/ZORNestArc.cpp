#include "ZORNestArc_p.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

constexpr double fullTurn = 2 * std::numbers::pi;
constexpr double smallestTolerance = 1e-6;
constexpr double equalEnds = 1e-9; // of the size
constexpr double mostStepsPerTurn = 16384;
constexpr double fewestStepsPerTurn = 8;

double GetSweep(bool isClockwise, const ZORMathVector& from, const ZORMathVector& to, double radius)
{
    const double turn = isClockwise ? -fullTurn : fullTurn;
    const ZORMathVector gap = to - from;
    if (std::hypot(gap.GetX(), gap.GetY()) <= equalEnds * std::max(1.0, radius))
        return turn;
    const double cross = from.GetX() * to.GetY() - from.GetY() * to.GetX();
    const double dot = from.GetX() * to.GetX() + from.GetY() * to.GetY();
    const double angle = std::atan2(cross, dot);
    if (angle == 0.0 || (angle < 0) == isClockwise)
        return angle;
    return angle + turn;
}

} // namespace

ZORNestArc::ZORNestArc(ZORNestResultSegment::SegmentType type, const ZORMathPoint& arcStart,
                       const ZORMathPoint& arcEnd, const ZORMathPoint& arcCenter)
    : start(arcStart)
    , end(arcEnd)
    , center(arcCenter)
{
    const ZORMathVector from = start - center;
    const ZORMathVector to = end - center;
    radius = std::hypot(from.GetX(), from.GetY());
    startAngle = std::atan2(from.GetY(), from.GetX());
    sweep = GetSweep(type == ZORNestResultSegment::ArcClockwise, from, to, radius);
    const ZORMathPoint reached = Evaluate(1);
    tail = std::hypot(end.GetX() - reached.GetX(), end.GetY() - reached.GetY())
           > ZORNestResultSegment::joinTolerance;
}

ZORMathPoint ZORNestArc::Evaluate(double part) const
{
    const double angle = startAngle + part * sweep;
    return {center.GetX() + radius * std::cos(angle), center.GetY() + radius * std::sin(angle), start.GetZ()};
}

ZORMathPoint ZORNestArc::GetEndOnCircle() const
{
    return tail ? Evaluate(1) : end;
}

void ZorNestSampleArc(const ZORNestArc& arc, double tolerance, ZORMathSetOfPoints& points)
{
    if (!std::isfinite(arc.radius) || arc.radius == 0.0) {
        points.append(arc.end);
        return;
    }
    const double allowed = tolerance > smallestTolerance ? tolerance : smallestTolerance;
    const double sagitta = std::min(allowed / arc.radius, 1.0);
    const double stepsPerTurn =
        std::clamp(fullTurn / (2 * std::acos(1 - sagitta)), fewestStepsPerTurn, mostStepsPerTurn);
    const int steps = std::max(1, int(std::ceil(std::abs(arc.sweep) / fullTurn * stepsPerTurn)));
    points.reserve(points.size() + steps + 1);
    for (int step = 1; step < steps; ++step)
        points.append(arc.Evaluate(double(step) / steps));
    if (arc.HasTail())
        points.append(arc.GetEndOnCircle());
    points.append(arc.end);
}
