// Arcs of outlines as straight edges.

#pragma once

#include "ZORNestSolverArc.h"
#include "ZORNestSolverOutline.h"

#include <optional>

namespace ZORNestSolver {

/// Calls a function with the start of every segment, the segment, and its arc where it is one.
template<class Function>
void ForEachSegment(const Contour& contour, Function function)
{
    Point from = contour.start;
    for (const Segment& segment : contour.segments) {
        std::optional<Arc> arc;
        if (segment.isArc)
            arc.emplace(from, segment.end, segment.centre, segment.counterClockwise);
        function(from, segment, arc);
        from = segment.end;
    }
}

/// How finely arcs are divided.
struct Fineness
{
    double sagitta = 0;    // by which edges may differ from an arc
    double coarsening = 1; // of the steps, where the part would have too many corners
    bool isCoarse = false; // whether some edges differ by more than the sagitta

    double GetLargestStep(double radius) const;
};

/// Returns the box of all segments, with their arcs as they are.
Box GetOutlineBox(const std::vector<Contour>& contours);

/// Returns how to divide the arcs of a part. One of many arcs gets as coarse as it must: tangents contain an arc however
/// few they are.
Fineness ChooseFineness(const std::vector<Contour>& contours, double diameter);

enum class ArcSide {
    Outer, // the material lies left of a counter-clockwise contour
    Hole,  // it lies right of it
    Chords // on either side
};

/// Returns a ring outside of the material's boundary, in the direction of the drawing.
Ring Flatten(const Contour& contour, ArcSide side, const Fineness& fineness);

/// Returns the areas between the chords and the tangents of all arcs.
Polygon GetCaps(const std::vector<Contour>& contours, const Fineness& fineness);

} // namespace ZORNestSolver
