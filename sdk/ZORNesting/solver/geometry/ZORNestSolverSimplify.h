// Polygons with fewer vertices that contain the given ones.

#pragma once

#include "ZORNestSolverGeometry.h"
#include "solver/base/ZORNestSolverInterruption.h"

namespace ZORNestSolver {

/// Returns the number of corners of all rings.
size_t CountCorners(const Polygon& polygon);

/// Drops the vertices whose removal adds the least area, as long as the area grows by no more than
/// \a largestGrowth (relative) altogether: a reflex vertex by its chord, an edge between two convex ones by
/// extending its neighbors. Area is only ever added, edges on the box of the polygon stay, and rings neither cross
/// nor swallow each other. O(n log n). Interrupted, it returns what it has reached.
/// \param mostCorners  where there are more, the area may grow by any amount
Polygon SimplifyOutwards(const Polygon& polygon, double largestGrowth,
                         const Interruption& isOver = NeverInterrupted,
                         size_t mostCorners = std::numeric_limits<size_t>::max());

} // namespace ZORNestSolver
