#include "ZORNestSolverConstruct.h"

#include <map>
#include <numeric>

namespace ZORNestSolver {

namespace {

constexpr double kGrace = 0.1;            // seconds for samples after a request to stop
constexpr double kGraceOfContacts = 0.25; // seconds for contacts in all rotations after it
constexpr size_t kMostPosesInHurry = 2;
constexpr int kMostSamples = 200;
constexpr int kFewestSamples = 40;
constexpr int kSamplesOfAll = 40000; // shared by the items of large jobs
constexpr double kWidestSpread = 3;  // of the order of items, in powers of e of their sizes
constexpr int kMostTries = 8;        // sheets on which an item is tried before a new one is begun

} // namespace

struct Constructor::State
{
    const Supply* supply = nullptr; // not owned
    Placing placing = Placing::Contacts;
    bool isOptional = false; // ends when the time is over
    std::vector<int> left;   // by item
    std::vector<int> used;   // by kind
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
    const int64_t copies = std::accumulate(demand.begin(), demand.end(), int64_t{0});
    m_samples = static_cast<int>(
        std::clamp<int64_t>(kSamplesOfAll / std::max<int64_t>(1, copies), kFewestSamples, kMostSamples));
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
    return GetSecondsSinceStop() > kGrace;
}

/// Returns the processor time since a request to stop was noticed.
double Constructor::GetSecondsSinceStop()
{
    const double now = GetThreadTime();
    if (!m_stopTime)
        m_stopTime = now;
    return now - *m_stopTime;
}

/// Checks whether contacts take too long as well. Counts no step, so that runs which are not stopped can be repeated.
bool Constructor::IsInHurry()
{
    return m_budget.IsStopped() && GetSecondsSinceStop() > kGraceOfContacts;
}

int Constructor::GetSamples(const State& state)
{
    return state.placing == Placing::Contacts || IsOver() ? 0 : m_samples;
}

/// The rotation that is tried first.
Leaning Constructor::GetLeaning(size_t item, const Preference& preference)
{
    Leaning leaning{preference.isLow, std::nullopt};
    const std::vector<ContactPose>& poses = m_poses.Get(item);
    const bool isNarrow = preference.turn == Preference::Turn::Narrow;
    const auto isShorter = [isNarrow](const ContactPose& a, const ContactPose& b) {
        return isNarrow ? a.box.GetWidth() < b.box.GetWidth() : a.box.GetHeight() < b.box.GetHeight();
    };
    if (preference.turn == Preference::Turn::Random)
        leaning.pose = m_random.Index(poses.size());
    else if (preference.turn != Preference::Turn::Any)
        leaning.pose =
            static_cast<size_t>(std::min_element(poses.begin(), poses.end(), isShorter) - poses.begin());
    return leaning;
}

/// Some copies of an item may come earlier than the others, and turned otherwise.
Constructor::Level Constructor::Shuffle(const std::vector<size_t>& items, const Preference& preference)
{
    const double spread = m_random.Between(0, kWidestSpread);
    std::vector<std::pair<double, Batch>> batches;
    const auto add = [&](size_t item, int most) {
        const double key = std::log(m_prepared.types[item]->GetSize()) + m_random.Normal(spread);
        batches.push_back({key, {item, most, GetLeaning(item, preference)}});
    };
    for (const size_t item : items) {
        if (m_demand[item] > 1)
            add(item, static_cast<int>(m_random.Index(static_cast<size_t>(m_demand[item]))));
        add(item, m_demand[item]);
    }
    std::stable_sort(batches.begin(), batches.end(),
                     [](const auto& a, const auto& b) { return a.first > b.first; });
    Level level;
    for (const auto& [key, batch] : batches)
        level.push_back(batch);
    return level;
}

/// \param items  the large ones first
Constructor::Level Constructor::Arrange(std::vector<size_t> items, const Preference& preference)
{
    if (preference.order == Preference::Order::Random)
        return Shuffle(items, preference);
    if (preference.order == Preference::Order::LargestLast && !items.empty())
        std::rotate(items.begin(), items.begin() + 1, items.end());
    Level level;
    for (const size_t item : items)
        level.push_back({item, m_demand[item], GetLeaning(item, preference)});
    return level;
}

std::vector<Constructor::Level> Constructor::GetLevels(Claims claims, const Preference& preference)
{
    std::vector<std::vector<size_t>> levels(claims == Claims::BySize ? 1 : m_prepared.levelCount);
    for (size_t item = 0; item < m_demand.size(); ++item)
        if (m_demand[item] > 0)
            levels[claims == Claims::BySize ? 0 : m_prepared.levels[item]].push_back(item);
    std::vector<Level> arranged;
    for (std::vector<size_t>& level : levels) {
        std::stable_sort(level.begin(), level.end(), [this](size_t a, size_t b) {
            return m_prepared.types[a]->GetSize() > m_prepared.types[b]->GetSize();
        });
        arranged.push_back(Arrange(std::move(level), preference));
    }
    return arranged;
}

/// Begins a sheet, unless the item finds no room there beside the defects.
bool Constructor::PlaceOnNew(State& state, const Batch& batch, size_t kind, int stack)
{
    auto& sheets = state.sheets[{kind, stack}];
    const SheetKind& source = m_prepared.job.kinds[kind];
    const int used = source.IsRoll() ? static_cast<int>(sheets.size()) : state.used[kind];
    if (!HasStock(source, used, stack))
        return false;
    auto sheet = std::make_unique<OpenSheet>(m_prepared, m_poses, kind, stack, m_random.Next());
    if (!sheet->TryPlace(batch.item, GetSamples(state), batch.leaning))
        return false;
    sheets.push_back(std::move(sheet));
    state.used[kind] += stack;
    return true;
}

/// Adds the item to the column on the last sheet of a kind, or on a new one.
bool Constructor::PlaceInColumn(State& state, size_t item, int stack)
{
    for (const size_t kind : state.supply->kinds) {
        if (!m_prepared.FitsOn(item, kind))
            continue;
        auto& sheets = state.sheets[{kind, stack}];
        if (!sheets.empty() && sheets.back()->TryPlaceInColumn(item))
            return true;
        const int used =
            m_prepared.job.kinds[kind].IsRoll() ? static_cast<int>(sheets.size()) : state.used[kind];
        if (!HasStock(m_prepared.job.kinds[kind], used, stack))
            continue;
        auto sheet = std::make_unique<OpenSheet>(m_prepared, m_poses, kind, stack, m_random.Next());
        if (!sheet->TryPlaceInColumn(item))
            continue;
        sheets.push_back(std::move(sheet));
        state.used[kind] += stack;
        return true;
    }
    return false;
}

bool Constructor::PlaceOne(State& state, const Batch& batch, int stack)
{
    if (!IsInHurry())
        return PlaceByContact(state, batch, stack);
    if (PlaceInColumn(state, batch.item, stack))
        return true;
    Batch hurried = batch; // the columns leave room that only contacts find
    hurried.leaning.mostPoses = kMostPosesInHurry;
    return PlaceByContact(state, hurried, stack);
}

bool Constructor::PlaceByContact(State& state, const Batch& batch, int stack)
{
    const size_t item = batch.item;
    for (const size_t kind : state.supply->kinds) {
        if (!m_prepared.FitsOn(item, kind))
            continue;
        const bool isScarce = !HasStock(m_prepared.job.kinds[kind], state.used[kind], stack);
        int tries = 0;
        for (const auto& sheet : state.sheets[{kind, stack}]) {
            if (!sheet->IsWorthTrying(item) || (!isScarce && tries >= kMostTries))
                continue;
            ++tries;
            if (sheet->TryPlace(item, GetSamples(state), batch.leaning))
                return true;
        }
        if (PlaceOnNew(state, batch, kind, stack))
            return true;
    }
    return false;
}

JobPlan Constructor::Build(State& state, const std::vector<Level>& levels)
{
    state.left = m_demand;
    state.used.assign(m_prepared.job.kinds.size(), 0);
    const auto isOver = [&] { return m_budget.IsCanceled() || (state.isOptional && IsOver()); };
    for (const Level& level : levels) {
        int most = 0;
        for (const Batch& batch : level)
            most = std::max(most, m_demand[batch.item]);
        for (int stack = std::min(state.supply->highestStack, most); stack >= 1; --stack)
            for (const Batch& batch : level)
                for (int placed = 0; placed < batch.most && state.left[batch.item] >= stack && !isOver()
                                     && PlaceOne(state, batch, stack);
                     ++placed)
                    state.left[batch.item] -= stack;
    }
    return Finish(state);
}

JobPlan Constructor::Build(const Supply& supply, Claims claims, Placing placing)
{
    State state;
    state.supply = &supply;
    state.placing = placing;
    return Build(state, GetLevels(claims, {}));
}

std::optional<JobPlan> Constructor::BuildOtherwise(const Supply& supply, Claims claims,
                                                   const Preference& preference)
{
    State state;
    state.supply = &supply;
    state.isOptional = true;
    JobPlan plan = Build(state, GetLevels(claims, preference));
    return IsOver() ? std::nullopt : std::optional(std::move(plan));
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
