#include "ZORNestSolverRun.h"

#include "ZORNestSolverPlan.h"
#include "ZORNestSolverRepair.h"
#include "ZORNestSolverReporter.h"
#include "solver/model/ZORNestSolverUnplaced.h"
#include "solver/model/ZORNestSolverUsable.h"
#include "solver/proof/ZORNestSolverCheck.h"

#include <numeric>

namespace ZORNestSolver {

namespace {

/// Plans what can be nested at all, and reports the rest with its reasons.
class Run
{
public:
    /// \param job  as MakeUsable() returns it
    Run(const Job& job, const RunOptions& options, Control& control)
        : m_job(job)
        , m_options(options)
        , m_budget(control, options.clock, Positive(options.maximumTime))
        , m_prepared(job, m_budget)
        , m_demand(job.items.size())
    {
        for (size_t i = 0; i < job.items.size(); ++i)
            m_demand[i] = job.items[i].quantity;
    }

    Solution Solve()
    {
        SetAsideHopeless();
        if (m_options.mostCopies > 0)
            LimitCopies();
        const PlanEffort effort{m_options.threads, Positive(m_options.minimumTime)};
        const auto prove = [this](const JobPlan& plan,
                                  const Interruption& isOver) -> std::optional<Solution> {
            Solution solution = Complete(plan);
            const bool isProved = FindFaultsOfUsable(m_job, solution, isOver).empty() && !isOver();
            return isProved ? std::optional(std::move(solution)) : std::nullopt;
        };
        PlanReporter reporter(prove, m_options.listener);
        return Complete(Planner(m_prepared, m_demand, effort, m_budget, reporter).Run());
    }

    /// Takes away what does not pass the check, in case that the search and the check should ever disagree.
    void Prove(Solution& solution) const
    {
        if (!FindFaultsOfUsable(m_job, solution).empty())
            RemoveFaults(m_prepared, solution);
    }

private:
    /// The solution of a plan: what was set aside before is reported as well.
    Solution Complete(const JobPlan& plan) const
    {
        const std::vector<size_t> kindsLeft = GetKindsLeft(plan);
        const auto hasRoom = [&](size_t item) {
            return std::any_of(kindsLeft.begin(), kindsLeft.end(),
                               [&](size_t kind) { return m_prepared.FitsOn(item, kind); });
        };
        UnplacedList unplaced = m_setAside;
        for (size_t i = 0; i < plan.left.size(); ++i) {
            if (plan.left[i] > 0)
                unplaced.Add(i, plan.left[i],
                             plan.isCutShort ? "no time left"
                             : hasRoom(i)    ? "no room found on an empty sheet"
                                             : "no sheet left");
        }
        Solution solution;
        solution.unplaced = unplaced.GetEntries();
        solution.sheets = plan.sheets;
        solution.cost = plan.cost;
        solution.remarks = m_prepared.remarks;
        return solution;
    }

    /// Returns the kinds that the plan may use and of which a sheet is left, without equal ones.
    std::vector<size_t> GetKindsLeft(const JobPlan& plan) const
    {
        std::vector<int> used(m_job.kinds.size(), 0);
        for (const NestedSheet& sheet : plan.sheets)
            used[sheet.kind] += sheet.stack;
        const bool hasOneKind = m_job.usageRule == UsageRule::BestSize && !plan.sheets.empty();
        std::vector<size_t> kinds;
        for (size_t k = 0; k < m_job.kinds.size(); ++k)
            if ((!hasOneKind || used[k] > 0) && Constructor::HasStock(m_job.kinds[k], used[k], 1))
                kinds.push_back(k);
        return m_prepared.DropEqual(kinds);
    }

    void SetAside(size_t item, int count, const std::string& reason)
    {
        m_setAside.Add(item, count, reason);
        m_demand[item] -= count;
    }

    /// Parts that fit on no sheet, or on none of which there is any, take no part in what follows.
    void SetAsideHopeless()
    {
        std::vector<size_t> all(m_job.kinds.size());
        std::iota(all.begin(), all.end(), size_t{0});
        const auto isThere = [this](size_t kind) { return Constructor::HasStock(m_job.kinds[kind], 0, 1); };
        std::vector<size_t> stocked;
        std::copy_if(all.begin(), all.end(), std::back_inserter(stocked), isThere);
        all = m_prepared.DropEqual(all);
        stocked = m_prepared.DropEqual(stocked);
        for (size_t i = 0; i < m_demand.size(); ++i) {
            const auto fits = [this, i](size_t kind) { return m_prepared.FitsOn(i, kind); };
            if (std::any_of(stocked.begin(), stocked.end(), fits))
                continue;
            const std::string& reason = m_prepared.reasons[i];
            const bool hasNoSheet = m_job.kinds.empty() || std::any_of(all.begin(), all.end(), fits);
            SetAside(i, m_demand[i],
                     !reason.empty() ? reason
                     : hasNoSheet    ? "no sheet left"
                                     : "larger than every sheet");
        }
    }

    /// The area of all sheets; infinite where there is a roll, or any number of sheets.
    double GetRoom() const
    {
        double room = 0;
        for (size_t k = 0; k < m_job.kinds.size(); ++k) {
            const SheetKind& kind = m_job.kinds[k];
            if (m_prepared.areas[k].window.IsEmpty() || kind.quantity == 0)
                continue;
            if (kind.IsRoll() || kind.quantity < 0)
                return std::numeric_limits<double>::infinity();
            const Box usable = GetUsableBox(kind, m_job);
            room += kind.quantity * usable.GetWidth() * usable.GetHeight();
        }
        return room;
    }

    /// Sets aside copies that the sheets cannot hold by their area, and those beyond the most copies of a run.
    /// High priorities come first, then the order of the items. A copy of each item is kept as long as possible.
    void LimitCopies()
    {
        const double room = GetRoom();
        std::vector<size_t> order(m_demand.size());
        std::iota(order.begin(), order.end(), size_t{0});
        std::stable_sort(order.begin(), order.end(),
                         [this](size_t a, size_t b) { return m_prepared.levels[a] < m_prepared.levels[b]; });
        int left = m_options.mostCopies;
        for (const size_t item : order) {
            if (m_demand[item] == 0) // its outline may enclose no area
                continue;
            const double byArea = std::floor(room / m_prepared.types[item]->area * (1 + 1e-9));
            const int byRoom =
                static_cast<int>(std::clamp(byArea, 1.0, static_cast<double>(m_options.mostCopies) + 1));
            const int excess = m_demand[item] - std::min({m_demand[item], left, byRoom});
            SetAside(item, excess,
                     left < byRoom
                         ? "one job nests at most " + std::to_string(m_options.mostCopies) + " parts"
                         : "no sheet left");
            left -= m_demand[item];
        }
    }

    const Job& m_job;
    const RunOptions& m_options;
    Budget m_budget;
    PreparedJob m_prepared;
    std::vector<int> m_demand; // copies that can be placed, by item
    UnplacedList m_setAside;
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
