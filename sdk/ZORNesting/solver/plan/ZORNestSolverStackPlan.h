// Better sheets for the items of one stack size.

#pragma once

#include "ZORNestSolverConstruct.h"

namespace ZORNestSolver {

/// Searches sheets for one stack size by the usage rule of the job; where only one kind may be used, the rules agree.
class StackPlanner
{
public:
    /// \param listener  see Filler
    StackPlanner(const PreparedJob& prepared, int stack, int threads, uint64_t seed,
                 const SheetsListener& listener);

    /// \param present  what is known; its sheets and its rest hold the items to be placed
    /// \param stock    of each kind, in sheets of this stack
    /// \param shortestTime  no end for lack of progress before, in seconds of the budget's clock
    Plan Search(const Plan& present, const std::vector<size_t>& stock, Claims claims, double shortestTime,
                const Budget& budget) const;

private:
    Plan SearchMix(const Plan& present, const std::vector<size_t>& items, const std::vector<size_t>& stock,
                   const FillEffort& effort, const Budget& budget) const;
    Plan SearchSize(const std::vector<size_t>& items, const std::vector<size_t>& stock,
                    const FillEffort& effort, const Budget& budget) const;
    void Order(std::vector<size_t>& items, Claims claims) const;

    const PreparedJob& m_prepared;
    const Job& m_job;
    Filler m_filler;
    int m_threads;
};

} // namespace ZORNestSolver
