// Runs the nesting solver and proves what it returns.

#pragma once

#include <ZORNesting/solver/model/ZORNestSolverJob.h>
#include <ZORNesting/solver/model/ZORNestSolverSolution.h>

namespace FuzzSolver {

/// Solves the job within a number of moves, of few copies, and requires that the solution is valid and accounts
/// for every copy that the job orders.
/// \param isStopped  whether a stop is requested before the run starts
ZORNestSolver::Solution SolveAndProve(const ZORNestSolver::Job& job, int moves, bool isStopped);

} // namespace FuzzSolver
