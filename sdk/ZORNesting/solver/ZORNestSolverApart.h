// Distances between the polygons of the search. The proof of a solution measures by itself.

#pragma once

#include "ZORNestSolverGeometry.h"

namespace ZORNestSolver {

/// Depth to which polygons may overlap each other, and by which distances may fall short.
constexpr double kApartTolerance = 1e-6;

/// The polygons keep the distance, or with a distance of 0 overlap nowhere deeper than the tolerance.
bool AreApart(const Polygon& a, const Polygon& b, double distance, double tolerance = kApartTolerance);

/// Every two of the polygons are apart.
bool AreAllApart(const std::vector<Polygon>& polygons, double distance);

} // namespace ZORNestSolver
