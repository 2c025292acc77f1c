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

/// One piece of material whose rings may cross: the first one is the outline, cleaned like a polygon; the others
/// are holes. Holes that cross the outline are not cut out but added to it, whole; holes within holes are part
/// of them; holes that would cut the piece in two are left filled.
/// \return  empty where a hole lies outside of the outline, or nothing remains
Polygon CleanPiece(const Polygon& rings);

/// What remains of the box outside of the polygon, whose rings may have either direction, as polygons of one outer ring each with holes.
std::vector<Polygon> CutFromBox(const Box& box, const Polygon& polygon);

} // namespace ZORNestSolver
