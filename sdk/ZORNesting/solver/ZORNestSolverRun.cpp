#include "ZORNestSolverRun.h"

#include "ZORNestSolverCheck.h"
#include "ZORNestSolverPlan.h"
#include "ZORNestSolverRepair.h"
#include "ZORNestSolverReporter.h"
#include "ZORNestSolverUsable.h"

#include <numeric>

namespace ZORNestSolver {

namespace {

/// Plans what can be nested at all, and reports the rest with its reasons.
class Run
{
public:
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
            const bool isProved = FindFaults(m_job, solution, isOver).empty() && !isOver();
            return isProved ? std::optional(std::move(solution)) : std::nullopt;
        };
        PlanReporter reporter(prove, m_options.listener);
        return Complete(Planner(m_prepared, m_demand, effort, m_budget, reporter).Run());
    }

    /// Takes away what does not pass the check, in case that the search and the check should ever disagree.
    void Prove(Solution& solution) const
    {
        if (!FindFaults(m_job, solution).empty())
            RemoveFaults(m_prepared, solution);
    }

private:
    /// The solution of a plan: what was set aside before is reported as well.
    Solution Complete(const JobPlan& plan) const
    {
        Solution solution;
        solution.unplaced = m_setAside;
        for (size_t i = 0; i < plan.left.size(); ++i)
            Report(i, plan.left[i],
                   plan.isCutShort        ? "no time left"
                   : IsSheetLeft(i, plan) ? "no room found on an empty sheet"
                                          : "no sheet left",
                   solution.unplaced);
        solution.sheets = plan.sheets;
        solution.cost = plan.cost;
        solution.remarks = m_prepared.remarks;
        return solution;
    }

    static void Report(size_t item, int count, const std::string& reason, std::vector<UnplacedItem>& entries)
    {
        if (count <= 0)
            return;
        const auto known = std::find_if(entries.begin(), entries.end(), [&](const UnplacedItem& entry) {
            return entry.item == item && entry.reason == reason;
        });
        if (known != entries.end())
            known->count += count;
        else
            entries.push_back({item, count, reason});
    }

    /// Whether a sheet of a kind that the plan may use is left for the item.
    bool IsSheetLeft(size_t item, const JobPlan& plan) const
    {
        std::vector<int> used(m_job.kinds.size(), 0);
        for (const NestedSheet& sheet : plan.sheets)
            used[sheet.kind] += sheet.stack;
        const bool hasOneKind = m_job.usageRule == UsageRule::BestSize && !plan.sheets.empty();
        for (size_t k = 0; k < m_job.kinds.size(); ++k)
            if ((!hasOneKind || used[k] > 0) && m_prepared.FitsOn(item, k)
                && Constructor::HasStock(m_job.kinds[k], used[k], 1))
                return true;
        return false;
    }

    void SetAside(size_t item, int count, const std::string& reason)
    {
        Report(item, count, reason, m_setAside);
        m_demand[item] -= count;
    }

    /// Parts that fit on no sheet, or on none of which there is any, take no part in what follows.
    void SetAsideHopeless()
    {
        for (size_t i = 0; i < m_demand.size(); ++i) {
            bool fits = false;
            bool isThere = false;
            for (size_t k = 0; k < m_job.kinds.size() && !isThere; ++k) {
                const bool fitsOnKind = m_prepared.FitsOn(i, k);
                fits = fits || fitsOnKind;
                isThere = fitsOnKind && Constructor::HasStock(m_job.kinds[k], 0, 1);
            }
            if (isThere)
                continue;
            const std::string& reason = m_prepared.reasons[i];
            SetAside(i, m_demand[i],
                     !reason.empty()               ? reason
                     : m_job.kinds.empty() || fits ? "no sheet left"
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
    std::vector<UnplacedItem> m_setAside;
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
