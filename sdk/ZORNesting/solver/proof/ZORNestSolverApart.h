// Distances between the placed polygons of the search, measured as the proof measures those of outlines.

#pragma once

#include "ZORNestSolverExactShape.h"

namespace ZORNestSolver {

/// Depth to which polygons may overlap each other, and by which distances may fall short.
constexpr double kApartTolerance = Exact::kTolerance;

/// The polygons keep the distance, or with a distance of 0 overlap nowhere deeper than the tolerance. Takes
/// O(n log n) for n edges near each other.
bool AreApart(const Polygon& a, const Polygon& b, double distance);

/// Every two of the polygons are apart.
bool AreAllApart(const std::vector<Polygon>& polygons, double distance);

/// Returns the indices of polygons that keep the distance from each other: each of them, in ascending order, that
/// keeps it from those returned before.
std::vector<size_t> FindAllApart(const std::vector<Polygon>& polygons, double distance);

} // namespace ZORNestSolver
