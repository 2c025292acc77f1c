// Runs of the strip search within a budget, on one thread or several.

#pragma once

#include "ZORNestSolverStrip.h"

namespace ZORNestSolver {

/// How a strip is searched.
struct StripEffort
{
    int threads = 1;
    double shortestTime = 0; // no end for lack of progress before, in seconds of the budget's clock
    double separation = 0;   // of the items, for the exact finish
    bool quick = false;      // the first layout only
};

/// Tells whether a layout is valid. Called from several threads.
using StripProof = std::function<bool(const std::vector<Stand>& stands)>;

/// The shortest layout found, its items pushed together at the end by their true outlines. Ends when nothing is
/// gained for a while, or with the budget; an unlimited budget ends for lack of progress only.
std::vector<Stand> SearchStrip(const std::shared_ptr<const Problem>& problem, uint64_t seed,
                               const StripProof& proof, const StripEffort& effort, const Budget& budget);

} // namespace ZORNestSolver
