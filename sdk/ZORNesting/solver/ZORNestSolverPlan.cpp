#include "ZORNestSolverPlan.h"

#include "ZORNestSolverMix.h"

#include <set>

namespace ZORNestSolver {

namespace {

constexpr size_t FinalKinds = 3;           // so many kinds are searched to the end
constexpr double QuickShare = 0.3;         // of the time goes to comparing kinds
constexpr double PriorityShare = 0.5;      // of the time goes to nesting without regard to priorities
constexpr double PackingShare = 0.9;       // of the time, the rest is for pushing the last sheet's items
constexpr double MixShare = 0.7;           // of the time goes to comparing mixes
constexpr double BestSizeShareOfMix = 0.3; // of that time goes to single kinds

Budget PartOf(const Budget& budget, double share)
{
    return budget.HasEnd() ? budget.Part(share) : budget;
}

} // namespace

Planner::Planner(const PreparedJob& prepared, int stack, int threads, double shortestTime)
    : m_prepared(prepared)
    , m_job(prepared.job)
    , m_filler(prepared, stack)
    , m_threads(threads)
    , m_shortestTime(shortestTime)
{
}

/// Large items first; with priorities, those of the highest one before all others.
void Planner::Order(std::vector<size_t>& items, bool byPriority) const
{
    const auto getSize = [this](size_t item) {
        const Shape& base = m_prepared.types[item]->base;
        return base.weight * base.weight * base.diameter;
    };
    std::stable_sort(items.begin(), items.end(), [&](size_t a, size_t b) {
        if (byPriority && m_job.items[a].priority != m_job.items[b].priority)
            return m_job.items[a].priority > m_job.items[b].priority;
        return getSize(a) > getSize(b);
    });
}

/// Compares first layouts on each kind, then searches on with the best ones.
Plan Planner::FindBestSize(const std::vector<size_t>& items, const std::vector<size_t>& stock,
                           const FillEffort& effort, const Budget& budget) const
{
    std::vector<std::pair<Plan, Mix>> quick;
    FillEffort first = effort;
    first.quick = true;
    const Budget comparing = PartOf(budget, QuickShare);
    for (size_t k = 0; k < stock.size() && (quick.empty() || !comparing.IsOver()); ++k) {
        const Mix mix{{{k, stock[k]}}};
        quick.push_back({m_filler.Follow(mix, items, first, comparing), mix});
    }
    std::stable_sort(quick.begin(), quick.end(),
                     [](const auto& a, const auto& b) { return a.first.IsBetterThan(b.first); });
    const size_t finals = std::min(FinalKinds, quick.size());
    Plan best = quick.front().first;
    for (size_t i = 0; i < finals && !budget.IsOver(); ++i) {
        FillEffort own = effort;
        const double share = 1.0 / static_cast<double>(finals - i);
        own.shortestTime = std::max(0.0, effort.shortestTime - budget.GetElapsed()) * share;
        const Plan plan = m_filler.Follow(quick[i].second, items, own, PartOf(budget, share));
        if (plan.IsBetterThan(best))
            best = plan;
    }
    return best;
}

Plan Planner::Choose(const std::vector<size_t>& items, const std::vector<size_t>& stock, bool byPriority,
                     const Budget& budget) const
{
    const FillEffort effort{m_threads, m_shortestTime, false, byPriority};
    Mix asListed;
    for (size_t k = 0; k < stock.size(); ++k)
        asListed.parts.push_back({k, stock[k]});
    if (m_job.usageRule == UsageRule::AsListed || stock.size() < 2)
        return m_filler.Follow(asListed, items, effort, budget);
    if (m_job.usageRule == UsageRule::BestSize)
        return FindBestSize(items, stock, effort, budget);
    FillEffort trial = effort;
    trial.shortestTime = 0;
    const Budget comparing = PartOf(budget, MixShare);
    const Plan single = FindBestSize(items, stock, trial, PartOf(comparing, BestSizeShareOfMix));
    MixSearch search(m_prepared, m_filler, items, stock);
    search.Offer(single);
    search.Offer(m_filler.Follow(asListed, items, trial, PartOf(comparing, BestSizeShareOfMix)));
    search.Improve(trial, comparing);
    FillEffort last = effort;
    last.shortestTime = std::max(0.0, effort.shortestTime - budget.GetElapsed());
    search.Finish(last, budget);
    return search.GetBest();
}

Plan Planner::Run(std::vector<size_t> items, const std::vector<size_t>& stock, const Budget& budget) const
{
    std::set<int> priorities;
    for (const size_t item : items)
        priorities.insert(m_job.items[item].priority);
    const Budget packing = PartOf(budget, PackingShare);
    Order(items, false);
    Plan plan = Choose(items, stock, false, priorities.size() > 1 ? PartOf(packing, PriorityShare) : packing);
    const bool isShort = std::any_of(plan.rest.begin(), plan.rest.end(), [this](size_t item) {
        for (size_t k = 0; k < m_job.kinds.size(); ++k)
            if (m_prepared.FitsOn(item, k))
                return true;
        return false;
    });
    if (isShort && priorities.size() > 1) {
        Order(items, true);
        plan = Choose(items, stock, true, packing);
    }
    m_filler.PackLastSheet(plan, m_shortestTime - budget.GetElapsed(), budget);
    return plan;
}

} // namespace ZORNestSolver
