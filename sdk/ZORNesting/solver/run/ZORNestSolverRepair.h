// Makes solutions valid that are not.

#pragma once

#include "solver/plan/ZORNestSolverFill.h"

namespace ZORNestSolver {

/// Removes what keeps the solution from passing FindFaults(), in case the search and the proof should ever
/// disagree: of two items that are too near to each other the later one, items that are not valid by
/// themselves, copies beyond the ordered ones, and sheets beyond the stock. Everything else stays where it is.
///
/// Changed sheets get their used lengths and remnants, empty sheets go, and the cost is that of the sheets left.
/// Removed copies are reported as unplaced, in the entry of the item with the same reason if there is one.
void RemoveFaults(const PreparedJob& prepared, Solution& solution);

} // namespace ZORNestSolver
