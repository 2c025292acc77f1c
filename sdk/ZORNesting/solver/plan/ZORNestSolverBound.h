// Proofs that a plan cannot become better.

#pragma once

#include "ZORNestSolverJobPlan.h"

namespace ZORNestSolver {

/// The cost of a unit of area of the kind.
double GetCostByArea(const PreparedJob& prepared, size_t kind);

/// Whether no plan on these kinds costs less: all items are placed, and their area takes as many sheets, or as
/// long a roll. Where kinds are used up in order, everything must be on the first one.
bool IsCheapest(const PreparedJob& prepared, const std::vector<size_t>& kinds, const JobPlan& plan);

/// Whether the items of the sheet cannot end further left, by their area and by the widest one.
bool IsShortest(const PreparedJob& prepared, const NestedSheet& sheet);

/// Whether the plan is the cheapest one and leaves the longest remnant of the last sheet of each stack size.
bool IsOptimal(const PreparedJob& prepared, const std::vector<size_t>& kinds, const JobPlan& plan);

} // namespace ZORNestSolver
