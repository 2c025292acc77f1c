#include "SolverProof.h"

#include "FuzzTarget.h"

#include <ZORNesting/solver/proof/ZORNestSolverCheck.h>
#include <ZORNesting/solver/run/ZORNestSolverRun.h>

#include <cstdio>

namespace FuzzSolver {

using ZORNestSolver::Budget;
using ZORNestSolver::Control;
using ZORNestSolver::Job;
using ZORNestSolver::NestedSheet;
using ZORNestSolver::Placement;
using ZORNestSolver::RunOptions;
using ZORNestSolver::Solution;
using ZORNestSolver::UnplacedItem;

namespace {

constexpr int kMostCopies = 12; // more take longer without reaching other code

void RequireNoFaults(const Job& job, const Solution& solution)
{
    const std::vector<std::string> faults = FindFaults(job, solution);
    for (const std::string& fault : faults)
        std::fprintf(stderr, "fault: %s\n", fault.c_str());
    Require(faults.empty(), "the solution passes the check");
}

void RequireEveryCopy(const Job& job, const Solution& solution)
{
    std::vector<int64_t> counts(job.items.size(), 0);
    for (const NestedSheet& sheet : solution.sheets)
        for (const Placement& placement : sheet.placements)
            counts[placement.item] += sheet.stack;
    for (const UnplacedItem& unplaced : solution.unplaced) {
        Require(unplaced.count > 0, "what is not placed is counted");
        Require(!unplaced.reason.empty(), "what is not placed has a reason");
        Require(unplaced.reason != "its place did not pass the check", "the search knows what is valid");
        counts[unplaced.item] += unplaced.count;
    }
    for (size_t i = 0; i < counts.size(); ++i)
        Require(counts[i] == std::max(0, job.items[i].quantity), "every copy is placed or reported");
}

} // namespace

Solution SolveAndProve(const Job& job, int moves, Start start)
{
    Control control;
    control.stop = start == Start::Stopped;
    RunOptions options;
    options.clock = Budget::Clock::Steps;
    options.maximumTime = moves;
    options.mostCopies = kMostCopies;
    const std::optional<Solution> solution = Solve(job, options, control);
    Require(solution.has_value(), "a run that nobody cancels has a solution");
    Require(control.progress == 1, "a run ends with full progress");
    RequireNoFaults(job, *solution);
    RequireEveryCopy(job, *solution);
    return *solution;
}

} // namespace FuzzSolver
