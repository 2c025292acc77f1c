// Outlines as they are drawn, of lines and arcs, and the polygons that contain them.

#pragma once

#include "ZORNestSolverGeometry.h"

#include <string>

namespace ZORNestSolver {

struct Segment
{
    Point end;
    bool isArc = false;
    bool counterClockwise = true; // of the arc
    Point centre;                 // of the arc
};

/// A closed chain of segments; where the last one does not end at the start, a straight one closes it.
struct Contour
{
    Point start;
    std::vector<Segment> segments;
};

/// A contour of straight edges; the first point may be repeated at the end.
Contour MakeContour(const Ring& ring);

/// With the arcs as they are, closed; positive for a counter-clockwise contour.
double GetSignedArea(const Contour& contour);
/// Length of the segments, arcs as they are; without the straight one that closes an open contour.
double GetLength(const Contour& contour);
/// The signed angle of an arc that begins at \a start, counter-clockwise positive; a full turn where it ends there.
double GetSweep(Point start, const Segment& arc);

/// The outline as a polygon that contains it: arcs that bulge outwards become tangents, the others chords,
/// within min(0.05, 2e-4 of the diameter) of the arc. The largest contour is the outer ring, the others
/// are holes; contours may come in either direction. An outline that crosses itself is cleaned by
/// the non-zero rule; holes that cross it are added to it, holes within holes are part of them.
/// \param reason  why there is no polygon; "" otherwise
/// \return  empty where the outline has coordinates that are no numbers, encloses no area or has a hole outside
Polygon MakeOuterPolygon(const std::vector<Contour>& contours, std::string& reason);

} // namespace ZORNestSolver
