// Which sheets to use, and what to nest on them.

#pragma once

#include "ZORNestSolverFill.h"

namespace ZORNestSolver {

/// Chooses the sheets for one stack size by the usage rule of the job.
class Planner
{
public:
    /// \param shortestTime  no end for lack of progress before, in seconds of the budget's clock
    Planner(const PreparedJob& prepared, int stack, int threads, double shortestTime);

    /// \param items  items of the job, one entry for each copy
    /// \param stock  of each kind, in sheets of this stack
    Plan Run(std::vector<size_t> items, const std::vector<size_t>& stock, const Budget& budget) const;

private:
    Plan Choose(const std::vector<size_t>& items, const std::vector<size_t>& stock, bool byPriority,
                const Budget& budget) const;
    Plan FindBestSize(const std::vector<size_t>& items, const std::vector<size_t>& stock,
                      const FillEffort& effort, const Budget& budget) const;
    void Order(std::vector<size_t>& items, bool byPriority) const;

    const PreparedJob& m_prepared;
    const Job& m_job;
    Filler m_filler;
    int m_threads;
    double m_shortestTime;
};

} // namespace ZORNestSolver
