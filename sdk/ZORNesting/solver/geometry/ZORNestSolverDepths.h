// Which rings lie in which.

#pragma once

#include "ZORNestSolverGeometry.h"
#include "solver/base/ZORNestSolverInterruption.h"

namespace ZORNestSolver {

/// Returns in how many of the other rings each ring lies. The rings neither cross nor touch themselves or each other.
/// O(n log n) for n corners. Interrupted, it returns nothing.
std::vector<size_t> GetDepths(const Polygon& polygon, const Interruption& isOver = NeverInterrupted);

} // namespace ZORNestSolver
