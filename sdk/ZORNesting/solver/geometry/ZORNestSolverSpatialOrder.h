// Boxes in an order in which neighbors lie close together.

#pragma once

#include "ZORNestSolverGeometry.h"

namespace ZORNestSolver {

/// Returns the indices of the boxes along a curve that fills the plane. Trees over chains of many rings need it, as
/// rings may be given in any order. O(n log n); boxes without a finite center are allowed.
std::vector<size_t> GetSpatialOrder(const std::vector<Box>& boxes);

} // namespace ZORNestSolver
