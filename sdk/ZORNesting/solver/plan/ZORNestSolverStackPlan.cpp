#include "ZORNestSolverStackPlan.h"

#include "ZORNestSolverMix.h"

namespace ZORNestSolver {

namespace {

constexpr size_t kFinalKinds = 3;           // so many kinds are searched to the end
constexpr double kQuickShare = 0.3;         // of the time goes to comparing kinds
constexpr double kMixShare = 0.7;           // of the time goes to comparing mixes
constexpr double kBestSizeShareOfMix = 0.3; // of that time goes to single kinds

} // namespace

StackPlanner::StackPlanner(const PreparedJob& prepared, int stack, int threads, uint64_t seed,
                           const SheetsListener& listener)
    : m_prepared(prepared)
    , m_job(prepared.job)
    , m_filler(prepared, stack, seed, listener)
    , m_threads(threads)
{
}

/// Large items first; by priority, those of the highest one before all others.
void StackPlanner::Order(std::vector<size_t>& items, Claims claims) const
{
    std::stable_sort(items.begin(), items.end(), [&](size_t a, size_t b) {
        if (claims == Claims::ByPriority && m_prepared.levels[a] != m_prepared.levels[b])
            return m_prepared.levels[a] < m_prepared.levels[b];
        return m_prepared.types[a]->GetSize() > m_prepared.types[b]->GetSize();
    });
}

/// Compares first layouts on each kind, then continues with the best ones.
Plan StackPlanner::SearchSize(const std::vector<size_t>& items, const std::vector<size_t>& stock,
                              const FillEffort& effort, const Budget& budget) const
{
    std::vector<std::pair<Plan, Mix>> quick;
    FillEffort first = effort;
    first.quick = true;
    const Budget comparing = budget.Part(kQuickShare);
    for (size_t k = 0; k < stock.size() && (quick.empty() || !comparing.IsOver()); ++k) {
        const Mix mix{{{k, stock[k]}}};
        if (stock[k] > 0)
            quick.push_back({m_filler.Follow(mix, items, first, comparing), mix});
    }
    std::stable_sort(quick.begin(), quick.end(),
                     [](const auto& a, const auto& b) { return a.first.IsBetterThan(b.first); });
    const size_t finals = std::min(kFinalKinds, quick.size());
    Plan best = quick.front().first;
    for (size_t i = 0; i < finals && !budget.IsOver(); ++i) {
        FillEffort own = effort;
        const double share = 1.0 / static_cast<double>(finals - i);
        own.shortestTime = std::max(0.0, effort.shortestTime - budget.GetElapsed()) * share;
        const Plan plan = m_filler.Follow(quick[i].second, items, own, budget.Part(share));
        if (plan.IsBetterThan(best))
            best = plan;
    }
    return best;
}

Plan StackPlanner::SearchMix(const Plan& present, const std::vector<size_t>& items,
                             const std::vector<size_t>& stock, const FillEffort& effort,
                             const Budget& budget) const
{
    Mix asListed;
    for (size_t k = 0; k < stock.size(); ++k)
        asListed.parts.push_back({k, stock[k]});
    FillEffort trial = effort;
    trial.shortestTime = 0;
    const Budget comparing = budget.Part(kMixShare);
    MixSearch search(m_prepared, m_filler, items, stock);
    search.Offer(SearchSize(items, stock, trial, comparing.Part(kBestSizeShareOfMix)));
    search.Offer(m_filler.Follow(asListed, items, trial, comparing.Part(kBestSizeShareOfMix)));
    search.OfferDraft(present);
    search.Improve(trial, comparing);
    FillEffort last = effort;
    last.shortestTime = std::max(0.0, effort.shortestTime - budget.GetElapsed());
    search.Finish(last, budget);
    return search.GetBest();
}

Plan StackPlanner::Search(const Plan& present, const std::vector<size_t>& stock, Claims claims,
                          double shortestTime, const Budget& budget) const
{
    std::vector<size_t> items = present.rest;
    for (const NestedSheet& sheet : present.sheets)
        for (const Placement& placement : sheet.placements)
            items.push_back(placement.item);
    std::sort(items.begin(), items.end());
    Order(items, claims);
    const FillEffort effort{m_threads, shortestTime, false, claims == Claims::ByPriority};
    const auto kinds = std::count_if(stock.begin(), stock.end(), [](size_t count) { return count > 0; });
    if (m_job.usageRule == UsageRule::BestMix && kinds > 1)
        return SearchMix(present, items, stock, effort, budget);
    Mix asListed;
    for (size_t k = 0; k < stock.size(); ++k)
        asListed.parts.push_back({k, stock[k]});
    return m_filler.Follow(asListed, items, effort, budget);
}

} // namespace ZORNestSolver
