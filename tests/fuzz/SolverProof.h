// Runs the nesting solver and proves what it returns.

#pragma once

#include <ZORNesting/solver/model/ZORNestSolverJob.h>
#include <ZORNesting/solver/model/ZORNestSolverSolution.h>

namespace FuzzSolver {

/// What is requested before a run starts.
enum class Start { Normal, Stopped };

/// Solves the job within a number of moves, of few copies, and requires that the solution is valid and accounts
/// for every copy that the job orders.
ZORNestSolver::Solution SolveAndProve(const ZORNestSolver::Job& job, int moves, Start start);

} // namespace FuzzSolver
