// An arc of a nesting result, in the numbers that closed forms need.

#pragma once

#include "solver/model/ZORNestSolverArc.h"

#include <ZORMathematics/ZORMathSetOfPoints.h>
#include <ZORNesting/ZORNestResultSegment.h>

namespace zor::nest {

/// Returns whether a segment of this type is one arc.
constexpr bool IsArc(ZORNestResultSegment::SegmentType type)
{
    return type == ZORNestResultSegment::ArcClockwise || type == ZORNestResultSegment::ArcCounterClockwise;
}

/// Returns a point without its height.
inline ZORNestSolver::Point Flattened(const ZORMathPoint& point)
{
    return {point.GetX(), point.GetY()};
}

} // namespace zor::nest

/// An arc as ZORNestSolver::Arc defines it, between points of space.
struct ZORNestArc
{
    /// \param type  ArcClockwise or ArcCounterClockwise
    ZORNestArc(ZORNestResultSegment::SegmentType type, const ZORMathPoint& arcStart,
               const ZORMathPoint& arcEnd, const ZORMathPoint& arcCenter);

    /// Returns the point of the circle at a part of the sweep, 0 to 1; at the height of the start.
    ZORMathPoint Evaluate(double part) const;
    /// Returns the end of the arc proper: \a end, or the point of the circle before it.
    ZORMathPoint GetEndOnCircle() const;
    /// Checks whether the end is reached by a straight line.
    bool HasTail() const { return flat.hasTail; }

    ZORMathPoint start;
    ZORMathPoint end;
    ZORNestSolver::Arc flat; // without heights
};

/// Appends points along the arc to \a points, which hold the start already; the last one is the end.
/// \param tolerance  as for ZORNestResultSegment::GetPoints()
void ZorNestSampleArc(const ZORNestArc& arc, double tolerance, ZORMathSetOfPoints& points);
