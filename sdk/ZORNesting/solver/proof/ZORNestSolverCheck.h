// The proof that a solution is valid, apart from everything that made it.

#pragma once

#include "solver/base/ZORNestSolverInterruption.h"
#include "solver/model/ZORNestSolverJob.h"
#include "solver/model/ZORNestSolverSolution.h"

#include <optional>

namespace ZORNestSolver {

/// A placement that is not valid.
struct PlacementFault
{
    size_t placement = 0;
    std::optional<size_t> other; // the earlier placement that it is too near to
    std::string text;            // "sheet 2: item 5 lies on a defect"
};

/// Returns what is wrong with the solution, a sentence each; nothing if it is valid.
///
/// The outlines are measured as they are drawn, lines and arcs, in the poses of the solution: penetration of
/// at most 1e-6 mm and spacing of at least the separation less 1e-6 mm are valid. The proof covers items,
/// frame, trims, the used length, defects, outlines of sheets, rotations, hands, stacks, and the quantities
/// of items and sheets. It shares nothing with the search but the model, and what
/// MakeUsable() makes of the job.
///
/// Takes O(n log n) for n lines and arcs. Interrupted, it proves nothing: it returns what it has found so far.
std::vector<std::string> FindFaults(const Job& job, const Solution& solution,
                                    const Interruption& isOver = NeverInterrupted);

/// Does the same for a job as MakeUsable() returns it, without a copy of it.
std::vector<std::string> FindFaultsOfUsable(const Job& job, const Solution& solution,
                                            const Interruption& isOver = NeverInterrupted);

/// Returns the faults of the placements of a single sheet of a kind of the job, sorted by placement.
/// \param job  as MakeUsable() returns it
std::vector<PlacementFault> FindPlacementFaults(const Job& job, const NestedSheet& sheet);

} // namespace ZORNestSolver
