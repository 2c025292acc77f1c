// What a job means whose numbers cannot be used as they are.

#pragma once

#include "ZORNestSolverJob.h"

namespace ZORNestSolver {

/// Returns a number that can be used: not below zero, and zero where it is not finite.
double Positive(double value);

/// Returns the job as the search and the check understand it. Distances, trims, costs, deviations and
/// widths that are negative or not finite count as 0, and so do negative quantities of items; allowed
/// angles that are not finite are left out. A roll with an outline is a sheet that is as long as its
/// outline, of which the right end counts. A job that was made usable stays as it is.
Job MakeUsable(const Job& job);

} // namespace ZORNestSolver
