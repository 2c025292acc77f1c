#include "ZORNestSolverConstruct.h"

#include <map>
#include <numeric>

namespace ZORNestSolver {

namespace {

constexpr double kGrace = 0.1; // seconds for samples after a request to stop
constexpr int kMostSamples = 200;
constexpr int kFewestSamples = 40;
constexpr int kSamplesOfAll = 40000; // shared by the items of large jobs
constexpr int kMostTries = 8;        // sheets on which an item is tried before a new one is begun

} // namespace

struct Constructor::State
{
    const Supply* supply = nullptr; // not owned
    Placing placing = Placing::Contacts;
    std::vector<int> left;                                                            // by item
    std::vector<int> used;                                                            // by kind
    std::map<std::pair<size_t, int>, std::vector<std::unique_ptr<OpenSheet>>> sheets; // by kind and stack
};

Constructor::Constructor(const PreparedJob& prepared, const std::vector<int>& demand, uint64_t seed,
                         const Budget& budget)
    : m_prepared(prepared)
    , m_demand(demand)
    , m_budget(budget)
    , m_random(seed)
    , m_poses(prepared)
{
    const int copies = std::accumulate(demand.begin(), demand.end(), 0);
    m_samples = std::clamp(kSamplesOfAll / std::max(1, copies), kFewestSamples, kMostSamples);
}

bool Constructor::HasStock(const SheetKind& kind, int used, int stack)
{
    if (kind.IsRoll())
        return kind.quantity != 0 && used == 0;
    return kind.quantity < 0 || (kind.quantity >= stack && used <= kind.quantity - stack);
}

bool Constructor::IsOver()
{
    if (!m_budget.IsOver())
        return false;
    if (!m_budget.IsStopped() || m_budget.IsCanceled())
        return true;
    const double now = GetThreadTime();
    if (!m_stopTime)
        m_stopTime = now;
    return now - *m_stopTime > kGrace;
}

int Constructor::GetSamples(const State& state)
{
    return state.placing == Placing::Contacts || IsOver() ? 0 : m_samples;
}

/// Items that claim places together, the large ones first.
std::vector<std::vector<size_t>> Constructor::GetLevels(Claims claims) const
{
    std::vector<size_t> order(m_demand.size());
    std::iota(order.begin(), order.end(), size_t{0});
    std::stable_sort(order.begin(), order.end(), [this](size_t a, size_t b) {
        return m_prepared.types[a]->GetSize() > m_prepared.types[b]->GetSize();
    });
    if (claims == Claims::BySize)
        return {order};
    std::vector<std::vector<size_t>> levels(m_prepared.levelCount);
    for (const size_t item : order)
        levels[m_prepared.levels[item]].push_back(item);
    return levels;
}

/// Begins a sheet, unless the item finds no room there beside the defects.
bool Constructor::PlaceOnNew(State& state, size_t item, size_t kind, int stack)
{
    auto& sheets = state.sheets[{kind, stack}];
    const SheetKind& source = m_prepared.job.kinds[kind];
    const int used = source.IsRoll() ? static_cast<int>(sheets.size()) : state.used[kind];
    if (!HasStock(source, used, stack))
        return false;
    auto sheet = std::make_unique<OpenSheet>(m_prepared, m_poses, kind, stack, m_random.Next());
    if (!sheet->TryPlace(item, GetSamples(state)))
        return false;
    sheets.push_back(std::move(sheet));
    state.used[kind] += stack;
    return true;
}

bool Constructor::PlaceOne(State& state, size_t item, int stack)
{
    for (const size_t kind : state.supply->kinds) {
        if (!m_prepared.FitsOn(item, kind))
            continue;
        const bool isScarce = !HasStock(m_prepared.job.kinds[kind], state.used[kind], stack);
        int tries = 0;
        for (const auto& sheet : state.sheets[{kind, stack}]) {
            if (!sheet->IsWorthTrying(item) || (!isScarce && tries >= kMostTries))
                continue;
            ++tries;
            if (sheet->TryPlace(item, GetSamples(state)))
                return true;
        }
        if (PlaceOnNew(state, item, kind, stack))
            return true;
    }
    return false;
}

JobPlan Constructor::Build(const Supply& supply, Claims claims, Placing placing)
{
    State state;
    state.supply = &supply;
    state.placing = placing;
    state.left = m_demand;
    state.used.assign(m_prepared.job.kinds.size(), 0);
    for (const std::vector<size_t>& level : GetLevels(claims)) {
        int most = 0;
        for (const size_t item : level)
            most = std::max(most, m_demand[item]);
        for (int stack = std::min(supply.highestStack, most); stack >= 1; --stack)
            for (const size_t item : level)
                while (state.left[item] >= stack && !m_budget.IsCanceled() && PlaceOne(state, item, stack))
                    state.left[item] -= stack;
    }
    return Finish(state);
}

JobPlan Constructor::Finish(const State& state) const
{
    JobPlan plan;
    plan.left = state.left;
    std::vector<const OpenSheet*> order;
    for (const size_t kind : state.supply->kinds) {
        const size_t first = order.size();
        for (const auto& [key, sheets] : state.sheets)
            for (const auto& sheet : sheets)
                if (key.first == kind)
                    order.push_back(sheet.get());
        std::stable_sort(
            order.begin() + static_cast<std::ptrdiff_t>(first), order.end(),
            [](const OpenSheet* a, const OpenSheet* b) { return a->GetFilledArea() > b->GetFilledArea(); });
    }
    std::stable_sort(order.begin(), order.end(),
                     [](const OpenSheet* a, const OpenSheet* b) { return a->GetStack() > b->GetStack(); });
    for (const OpenSheet* sheet : order) {
        plan.sheets.push_back({sheet->GetKind(), 0, sheet->GetStack(), sheet->GetPlacements(), 0});
        MeasureSheet(plan.sheets.back(), m_prepared);
    }
    ServeEqualItems(plan, m_prepared);
    Measure(plan, m_prepared);
    return plan;
}

} // namespace ZORNestSolver
