// Polygons with fewer vertices that contain the given ones.

#pragma once

#include "ZORNestSolverGeometry.h"

namespace ZORNestSolver {

/// Drops the vertices whose removal adds the least area, as long as the area grows by no more than
/// \a largestGrowth (relative) altogether: a reflex vertex by its chord, an edge between two convex ones by
/// extending its neighbours. Area is only ever added and the result stays simple. O(n log n), and O(n) for every vertex dropped.
Polygon SimplifyOutwards(const Polygon& polygon, double largestGrowth);

} // namespace ZORNestSolver
