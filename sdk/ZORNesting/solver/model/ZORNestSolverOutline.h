// Outlines as they are drawn, of lines and arcs, and the polygons that contain them.

#pragma once

#include "solver/base/ZORNestSolverInterruption.h"
#include "solver/geometry/ZORNestSolverGeometry.h"

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

/// What a polygon around an outline lacks beyond tolerance.
enum class OutlineLoss {
    None,
    Coarse,    // it has fewer corners than the outline needs
    Hull,      // it is the convex hull
    CostlyHull // it is the convex hull, since the outline has too many corners to be cleaned
};

/// A contour of straight edges; the first point may be repeated at the end.
Contour MakeContour(const Ring& ring);

bool HasArcs(const Contour& contour);

/// Computes the area with the arcs as they are, closed; positive for a counter-clockwise contour.
double GetSignedArea(const Contour& contour);
/// Computes the area of all loops of a contour, whatever their directions; of one that crosses itself more than
/// 20,000 times, the area of its convex hull.
double GetEnclosedArea(const Contour& contour);
/// Computes the length of the segments, arcs as they are; without the straight one that closes an open contour.
double GetLength(const Contour& contour);

/// Returns what has to stand for rings with so many corners or crossings that to clean them would take seconds: a hull,
/// and why. None for all others. Interrupted, it returns a hull.
OutlineLoss GetLossOfTangled(const Polygon& rings, const Interruption& isOver = NeverInterrupted);

/// Returns the outline as a polygon that contains it: arcs that bulge outwards become tangents, the others chords,
/// within min(0.05, 2e-4 of the diameter) of the arc. Tangents touch where an arc reaches farthest along an axis, so
/// that the box is exact there. Contours may be given in either direction. The largest one is the outer ring; the
/// others are holes, or material where they lie in holes. A contour that crosses or touches itself encloses all of
/// its loops, each of which may become a separate ring; a hole that crosses the outer ring is added to it, and
/// where holes cross each other the common part is material. Of an outline with more than 20,000 crossings, and four
/// for each of its edges, the polygon is the convex hull.
/// \param reason  why there is no polygon; "" otherwise
/// \param loss    what the polygon lacks, where somebody asks; set together with a polygon
/// \return empty where the outline has coordinates that are no numbers or lie beyond kLargestCoordinate, encloses no
///     area or has a hole outside; and where it was interrupted
Polygon MakeOuterPolygon(const std::vector<Contour>& contours, std::string& reason,
                         const Interruption& isOver = NeverInterrupted, OutlineLoss* loss = nullptr);

/// Seconds of processor time for the polygons around the parts of a result, which reports and densities need: whoever stops
/// a job waits for them.
constexpr double kMostMeasuring = 1;

/// Returns the convex hull of points around all contours, much more quickly than the polygon itself.
/// \param reason  as for MakeOuterPolygon()
/// \param loss    the same; None where the outline is convex, unless it has too many edges to check that
Polygon MakeOuterHull(const std::vector<Contour>& contours, std::string& reason, OutlineLoss* loss = nullptr);

} // namespace ZORNestSolver
