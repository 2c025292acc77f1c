// Outlines grown by a distance, cleaned of self-crossings, or cut from each other.

#pragma once

#include "ZORNestSolverGeometry.h"

#include <optional>

namespace ZORNestSolver {

/// By how much the edges of search shapes are moved inwards, in millimeters: less than half of the depth to which
/// parts may overlap. Parts that touch exactly then never seem to collide by rounding.
constexpr double kInset = 2e-7;

/// Returns a polygon that contains every point within \a distance of the given one; its edges are exact, its round
/// corners tangent polygons. Holes that close up vanish. Coordinates are rounded by less than 1e-8.
/// \param distance  positive
Polygon GrowPolygon(const Polygon& polygon, double distance);

/// Returns the polygon with its edges moved inwards by kInset.
Polygon Inset(const Polygon& polygon);

/// Returns all that the rings enclose, by the non-zero rule, without crossings: a counter-clockwise ring for each
/// piece and a clockwise one for each hole. Pieces thinner than rounding are dropped. Empty where nothing remains.
Polygon CleanPolygon(const Polygon& polygon);

/// Checks whether to clean rings would take seconds. The library that does it passes the edges at a height whenever
/// another one begins or ends there, and at each local minimum all corners of the rings that meet there, directly or
/// through others. Takes O(n log n) unless many boxes of edges overlap. Interrupted, it returns true.
bool IsCostlyToClean(const Polygon& rings, const Interruption& isOver = NeverInterrupted);

/// Returns the area of all loops of a ring, whatever their directions.
double GetCleanArea(const Ring& ring);

/// Returns the material of a part whose rings may cross: the first one is the outline, cleaned like a polygon; the
/// others are holes. Where holes cross or hold each other the even-odd rule decides. Holes that cross the outline
/// are not cut out but added to it, whole, as the counter-clockwise rings \a added are. The result may consist of
/// several pieces.
/// \return nothing where a hole lies outside of the outline; empty where no material remains or it is interrupted
std::optional<Polygon> CleanPiece(const Polygon& rings, const Polygon& added,
                                  const Interruption& isOver = NeverInterrupted);

/// Returns the area of the box that none of the rings covers, by the non-zero rule.
double GetFreeArea(const Box& box, const Polygon& rings);

/// Returns all points around which an odd number of rings winds, in either direction and however often, as rings
/// without crossings: the meaning of sheet outlines and of defects. Pieces thinner than rounding are dropped.
Polygon GetRegion(const Polygon& rings);

/// Returns what remains of the box outside of the region of the polygon.
Polygon CutFromBox(const Box& box, const Polygon& polygon);

} // namespace ZORNestSolver
