// Solves a nesting job.

#pragma once

#include "solver/base/ZORNestSolverBudget.h"
#include "solver/model/ZORNestSolverJob.h"
#include "solver/model/ZORNestSolverSolution.h"

#include <functional>
#include <optional>

namespace ZORNestSolver {

struct RunOptions
{
    Budget::Clock clock = Budget::Clock::Wall;
    double maximumTime = 0; // seconds; 0: until nothing is gained any more
    double minimumTime = 0; // seconds; no end for lack of progress before
    int threads = 1;
    int mostCopies = 0; // the rest is reported, low priorities first; 0: no limit
    /// Receives complete solutions on the way that have passed the check, each better than the one before. Called in
    /// another thread than the run's, one call at a time and none after the run; it changes nothing about the run.
    std::function<void(const Solution& solution)> listener;
};

/// Nests the items of the job on its sheets. What cannot be nested is reported with its reason and stops
/// nothing. Every solution has passed the check of FindFaults(). With the same job and an equal number of
/// evaluations on one thread the solution is the same.
///
/// May run in any thread; \a control is read and written meanwhile.
/// \return nothing if the run was cancelled
std::optional<Solution> Solve(const Job& job, const RunOptions& options, Control& control);

} // namespace ZORNestSolver
