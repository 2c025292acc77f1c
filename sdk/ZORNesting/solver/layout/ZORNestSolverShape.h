// What the collision engine knows of a turned item, in arrays for vector arithmetic.

#pragma once

#include "solver/geometry/ZORNestSolverPoles.h"

namespace ZORNestSolver {

/// By which part of its area a shape may grow when it is simplified.
constexpr double kLargestGrowth = 0.001;
/// Largest number of corners of a shape: more would cost seconds to grow, and the search its speed.
constexpr size_t kMostShapeCorners = 2000;

/// Geometry relative to a reference point inside the item; placing it means moving that point.
/// Arrays of poles are padded to a multiple of 8 with circles of radius 0, arrays of edges to a multiple
/// of 4 with numbers that are none, which meet nothing.
struct Shape
{
    Box box; // of the edges
    Box extent; // what the window of a sheet has to hold: of an item, the box of its exact outline, grown likewise
    std::vector<float> poleX, poleY, poleR;
    std::vector<double> ax, ay, bx, by; // edges from a to b
    size_t poleCount = 0;
    size_t edgeCount = 0;
    double diameter = 0;           // of the convex hull
    double weight = 0;             // the square root of the area of the convex hull
    std::vector<Point> deepPoints; // of several pieces, a point inside of each; otherwise none
    std::vector<Shape> bare; // at most one: the item as it keeps its distance from hazards; otherwise as this

    size_t GetPaddedPoles() const { return poleX.size(); }
    size_t GetPaddedEdges() const { return ax.size(); }
};

/// \param polygon  relative to the reference point
Shape MakeShape(const Polygon& polygon, const std::vector<Circle>& poles);

/// Writes \a base mirrored and turned to \a turned, whose memory is used again. The extent is that of the edges.
void TurnShape(const Shape& base, bool mirrored, double angle, Shape& turned);

} // namespace ZORNestSolver
