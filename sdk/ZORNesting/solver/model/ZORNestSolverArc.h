// The one meaning of an arc that is given by its start, its end and its center.

#pragma once

#include "solver/geometry/ZORNestSolverGeometry.h"

namespace ZORNestSolver {

/// Computes t - sin(t) without the cancellation of small angles.
double GetAngleMinusSine(double t);

/// An arc segment as it is drawn: it runs on the circle about the center through the start, in its direction,
/// up to the direction of the end, and then straight to the end.
///
/// - Ends that coincide make a full circle: their gap is at most 1e-9 of the radius, but at least 1e-9 mm and
///   at most 1e-6 mm, so that a short flat arc of a huge radius never becomes a circle.
/// - An angle between start and end that is smaller than 1e-12, or than what rounding of the coordinates
///   changes, has no direction: the segment is the chord. The same holds for a start or an end at the center,
///   and for a radius that is not finite.
struct Arc
{
    /// Largest distance of an end from the circle that still counts as on it.
    static constexpr double kJoinTolerance = 0.001;
    /// Radius in mm from which center plus radius loses digits that matter.
    static constexpr double kFarCenter = 1e6;
    /// Largest number of steps in which a full turn is sampled: finer than any cut, and few enough for a huge radius.
    static constexpr double kMostStepsPerTurn = 16384;

    Arc(Point start, Point end, Point center, bool counterClockwise);

    /// Returns the point of the circle at a part of the sweep, 0 to 1. Its error is in proportion to the
    /// length of the arc, not to the radius.
    Point Evaluate(double part) const;
    /// Returns the smallest box around all that is drawn.
    Box GetBox() const;
    /// Returns the area that the segment adds to a closed outline, positive if it turns counter-clockwise
    /// around \a origin. The areas of all segments sum up to that of the outline, whatever the origin.
    double GetArea(Point origin) const;
    /// Returns the length of the arc and of its tail.
    double GetLength() const;
    /// Returns the distance of a point from the nearest point of what is drawn.
    double GetDistance(Point p) const;
    /// Checks whether the direction from the center to \a p lies within the sweep.
    bool IsInSweep(Point p) const;

    bool IsChord() const { return sweep == 0; }

    Point start;
    Point end;
    Point center;
    double radius = 0;
    double startAngle = 0; // in (-pi, pi], counter-clockwise from x
    double sweep = 0;      // radians, positive counter-clockwise, at most a full turn; 0: the chord
    Point reached;         // the point of the circle at the end of the sweep
    Point endOnCircle;     // `reached` before a tail, otherwise the end
    bool hasTail = false;  // the end lies farther than kJoinTolerance from the circle
};

} // namespace ZORNestSolver
