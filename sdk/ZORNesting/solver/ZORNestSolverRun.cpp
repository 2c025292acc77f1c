#include "ZORNestSolverRun.h"

#include "ZORNestSolverCheck.h"
#include "ZORNestSolverPlan.h"
#include "ZORNestSolverRepair.h"

namespace ZORNestSolver {

namespace {

/// A number that can be used: not below zero, and zero where it is none.
double Positive(double value)
{
    return value > 0 && std::isfinite(value) ? value : 0;
}

Job MakeUsable(const Job& job)
{
    Job usable = job;
    for (double* value : {&usable.separation, &usable.frameWidth, &usable.defectSeparation,
                          &usable.maxDeviation, &usable.deviationIncrement})
        *value = Positive(*value);
    usable.stackSize = std::max(1, job.stackSize);
    for (Item& item : usable.items) {
        item.quantity = std::max(0, item.quantity);
        item.maxDeviation = Positive(item.maxDeviation);
        item.deviationIncrement = Positive(item.deviationIncrement);
        item.orientation = std::isfinite(item.orientation) ? item.orientation : 0;
        std::erase_if(item.allowedAngles, [](double angle) { return !std::isfinite(angle); });
    }
    for (SheetKind& kind : usable.kinds) {
        for (double* value : {&kind.leftTrim, &kind.rightTrim, &kind.topTrim, &kind.bottomTrim, &kind.cost})
            *value = Positive(*value);
        kind.width = Positive(kind.width);
    }
    return usable;
}

/// Nests for one stack size after another, the highest first.
class Run
{
public:
    Run(const Job& job, const RunOptions& options, Control& control)
        : m_job(job)
        , m_options(options)
        , m_budget(control, options.clock, Positive(options.maximumTime))
        , m_prepared(job, m_budget)
        , m_left(job.items.size())
        , m_used(job.kinds.size(), 0)
    {
        for (size_t i = 0; i < job.items.size(); ++i)
            m_left[i] = job.items[i].quantity;
    }

    Solution Solve()
    {
        SetAsideHopeless();
        int most = 0;
        for (const int left : m_left)
            most = std::max(most, left);
        for (int stack = std::min(m_job.stackSize, most); stack >= 1; --stack)
            SolveStack(stack);
        for (size_t i = 0; i < m_left.size(); ++i)
            Report(i, m_left[i], m_isCutShort ? "no time left" : "no sheet left");
        m_solution.remarks = m_prepared.remarks;
        return std::move(m_solution);
    }

    /// Takes away what does not pass the check, in case that the search and the check should ever disagree.
    void Prove(Solution& solution) const
    {
        if (!FindFaults(m_job, solution).empty())
            RemoveFaults(m_prepared, solution);
    }

private:
    void Report(size_t item, int count, const std::string& reason)
    {
        if (count > 0)
            m_solution.unplaced.push_back({item, count, reason});
    }

    void SetAsideHopeless()
    {
        for (size_t i = 0; i < m_left.size(); ++i) {
            bool fits = false;
            for (size_t k = 0; k < m_job.kinds.size() && !fits; ++k)
                fits = m_prepared.FitsOn(i, k);
            if (fits)
                continue;
            const std::string& reason = m_prepared.reasons[i];
            Report(i, m_left[i],
                   !reason.empty()       ? reason
                   : m_job.kinds.empty() ? "no sheet left"
                                         : "larger than every sheet");
            m_left[i] = 0;
        }
    }

    std::vector<size_t> GetStock(int stack) const
    {
        std::vector<size_t> stock;
        for (size_t k = 0; k < m_job.kinds.size(); ++k) {
            const SheetKind& kind = m_job.kinds[k];
            if (kind.IsRoll()) // never ends, however many layers of a stack are cut from it
                stock.push_back(kind.quantity == 0 ? 0 : 1);
            else if (kind.quantity < 0)
                stock.push_back(std::numeric_limits<uint32_t>::max());
            else
                stock.push_back(static_cast<size_t>(std::max(0, kind.quantity - m_used[k]) / stack));
        }
        return stock;
    }

    /// The share of the remaining work that stacks of this size do.
    double GetShare(int stack) const
    {
        double own = 0;
        double all = 0;
        for (size_t i = 0; i < m_left.size(); ++i) {
            int left = m_left[i];
            for (int s = stack; s >= 1 && left > 0; --s) {
                const double work = m_prepared.types[i]->area * (left / s);
                own += s == stack ? work : 0;
                all += work;
                left %= s;
            }
        }
        return all > 0 ? own / all : 1;
    }

    void SolveStack(int stack)
    {
        std::vector<size_t> items;
        for (size_t i = 0; i < m_left.size(); ++i)
            items.insert(items.end(), static_cast<size_t>(m_left[i] / stack), i);
        if (items.empty())
            return;
        const double share = GetShare(stack);
        const Budget budget = m_budget.HasEnd() ? m_budget.Part(share) : m_budget;
        Planner planner(m_prepared, stack, m_options.threads, Positive(m_options.minimumTime) * share);
        Plan plan = planner.Run(items, GetStock(stack), budget);
        m_isCutShort = m_isCutShort || plan.isCutShort;
        for (const NestedSheet& sheet : plan.sheets) {
            m_used[sheet.kind] += stack;
            for (const Placement& placement : sheet.placements)
                m_left[placement.item] -= stack;
        }
        m_solution.cost += plan.cost;
        m_solution.sheets.insert(m_solution.sheets.end(), plan.sheets.begin(), plan.sheets.end());
    }

    const Job& m_job;
    const RunOptions& m_options;
    Budget m_budget;
    PreparedJob m_prepared;
    std::vector<int> m_left;   // copies still to be placed, by item
    std::vector<int> m_used;   // physical sheets, by kind
    bool m_isCutShort = false; // the run was over before all items were tried
    Solution m_solution;
};

} // namespace

std::optional<Solution> Solve(const Job& job, const RunOptions& options, Control& control)
{
    const Job usable = MakeUsable(job);
    Run run(usable, options, control);
    Solution solution = run.Solve();
    if (control.cancel)
        return std::nullopt;
    run.Prove(solution);
    control.progress = 1;
    return solution;
}

} // namespace ZORNestSolver
