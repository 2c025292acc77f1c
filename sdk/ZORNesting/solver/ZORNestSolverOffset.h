// Outlines grown by a distance, cleaned of self-crossings, or cut from each other.

#pragma once

#include "ZORNestSolverGeometry.h"

namespace ZORNestSolver {

/// A polygon that contains every point within \a distance of the given one; its edges are exact, its round
/// corners tangent polygons. Holes that close up vanish. Coordinates are rounded to 1e-6 outwards.
/// \param distance  positive
Polygon GrowPolygon(const Polygon& polygon, double distance);

/// The polygon without crossings of its edges, by the non-zero rule; pieces apart from the largest one are
/// joined to it where they touch and dropped otherwise. Empty where nothing remains.
Polygon CleanPolygon(const Polygon& polygon);

/// What remains of the box outside of the polygon, whose rings may have either direction, as polygons of one outer ring each with holes.
std::vector<Polygon> CutFromBox(const Box& box, const Polygon& polygon);

} // namespace ZORNestSolver
