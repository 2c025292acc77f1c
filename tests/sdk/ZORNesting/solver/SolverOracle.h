// A slow judge of solutions, by sampling. It shares no geometry with the solver or its check.

#pragma once

#include <ZORNesting/solver/model/ZORNestSolverJob.h>
#include <ZORNesting/solver/model/ZORNestSolverSolution.h>

#include <string>

namespace ZORNestSolver::SolverOracle {

/// Returns what is wrong with a solution, a sentence each: overlaps and distances on sampled outlines, up to
/// the error of sampling; the usable part of the sheets, rotations and hands, and quantities.
std::vector<std::string> FindFaults(const Job& job, const Solution& solution);

/// Returns the box of the outline in a pose, up to the error of sampling arcs.
Box GetBox(const Item& item, const Pose& pose);

} // namespace ZORNestSolver::SolverOracle
