// The way along an arc of a nesting result.

#pragma once

#include <ZORMathematics/ZORMathSetOfPoints.h>
#include <ZORNesting/ZORNestResultSegment.h>

/// An arc in the numbers that closed forms need. An end off the circle is reached by a straight line.
struct ZORNestArc
{
    /// \param type  ArcClockwise or ArcCounterClockwise
    ZORNestArc(ZORNestResultSegment::SegmentType type, const ZORMathPoint& arcStart,
               const ZORMathPoint& arcEnd, const ZORMathPoint& arcCenter);

    /// The point of the circle at a part of the sweep, 0 to 1; at the height of the start.
    ZORMathPoint Evaluate(double part) const;
    /// Where the arc proper ends: \a end, or the point of the circle before it.
    ZORMathPoint GetEndOnCircle() const;
    /// Whether the end is reached by a straight line.
    bool HasTail() const { return tail; }

    ZORMathPoint start;
    ZORMathPoint end;
    ZORMathPoint center;
    double radius;
    double startAngle;
    double sweep; ///< radians, positive counter-clockwise, at most a full turn
    bool tail;
};

/// Appends points along the arc to \a points, which hold the start already; the last one is the end.
/// \param tolerance  as for ZORNestResultSegment::GetPoints()
void ZorNestSampleArc(const ZORNestArc& arc, double tolerance, ZORMathSetOfPoints& points);
