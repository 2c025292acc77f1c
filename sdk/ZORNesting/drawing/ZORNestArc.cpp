#include "ZORNestArc_p.h"
#include "solver/base/ZORNestSolverAngle.h"

#include <algorithm>
#include <cmath>

using ZORNestSolver::kFullTurn;

namespace {

constexpr double kSmallestTolerance = 1e-6;
constexpr double kFewestStepsPerTurn = 8;

static_assert(ZORNestSolver::Arc::kJoinTolerance == ZORNestResultSegment::joinTolerance);

} // namespace

ZORNestArc::ZORNestArc(ZORNestResultSegment::SegmentType type, const ZORMathPoint& arcStart,
                       const ZORMathPoint& arcEnd, const ZORMathPoint& arcCenter)
    : start(arcStart)
    , end(arcEnd)
    , flat(zor::nest::Flattened(arcStart), zor::nest::Flattened(arcEnd), zor::nest::Flattened(arcCenter),
           type == ZORNestResultSegment::ArcCounterClockwise)
{
}

ZORMathPoint ZORNestArc::Evaluate(double part) const
{
    const ZORNestSolver::Point point = flat.Evaluate(part);
    return {point.x, point.y, start.GetZ()};
}

ZORMathPoint ZORNestArc::GetEndOnCircle() const
{
    return HasTail() ? ZORMathPoint(flat.reached.x, flat.reached.y, start.GetZ()) : end;
}

void ZorNestSampleArc(const ZORNestArc& arc, double tolerance, ZORMathSetOfPoints& points)
{
    if (arc.flat.IsChord()) {
        points.append(arc.end);
        return;
    }
    const double allowed = tolerance > kSmallestTolerance ? tolerance : kSmallestTolerance;
    const double sagitta = std::min(allowed / arc.flat.radius, 1.0);
    const double stepsPerTurn = std::clamp(kFullTurn / (2 * std::acos(1 - sagitta)), kFewestStepsPerTurn,
                                           ZORNestSolver::Arc::kMostStepsPerTurn);
    const int steps = std::max(1, int(std::ceil(std::abs(arc.flat.sweep) / kFullTurn * stepsPerTurn)));
    points.reserve(points.size() + steps + 1);
    for (int step = 1; step < steps; ++step)
        points.append(arc.Evaluate(double(step) / steps));
    if (arc.HasTail())
        points.append(arc.GetEndOnCircle());
    points.append(arc.end);
}
