#include "ZORNestSolverPlan.h"

#include "solver/plan/ZORNestSolverBound.h"
#include "solver/plan/ZORNestSolverStackPlan.h"

#include <numeric>
#include <set>

namespace ZORNestSolver {

namespace {

constexpr size_t kConstructedChoices = 4; // so many are constructed with samples
constexpr size_t kImprovedChoices = 3;
constexpr int kFewestOthers = 4; // constructions at random
constexpr int kMostOthers = 200;
constexpr int kCopiesOfOthers = 4000; // of all these constructions
constexpr double kPackingShare = 0.1; // of the time goes to pushing the last sheets' items
constexpr uint64_t kSeedStep = 0x9E3779B97F4A7C15U;

/// The stack sizes of the sheets, and those that copies without a place could have; the highest first.
std::set<int, std::greater<>> GetStacks(const JobPlan& plan, int highest)
{
    std::set<int, std::greater<>> stacks;
    for (const NestedSheet& sheet : plan.sheets)
        stacks.insert(sheet.stack);
    for (const int left : plan.left)
        if (left > 0)
            stacks.insert({1, std::min(left, highest)});
    return stacks;
}

/// The sheets of one stack size, and the items that could join them.
Plan TakeStack(const JobPlan& plan, int stack)
{
    Plan own;
    for (const NestedSheet& sheet : plan.sheets)
        if (sheet.stack == stack)
            own.sheets.push_back(sheet);
    for (size_t i = 0; i < plan.left.size(); ++i)
        own.rest.insert(own.rest.end(), static_cast<size_t>(plan.left[i] / stack), i);
    return own;
}

/// The plan with other sheets of one stack size.
JobPlan ReplaceStack(const JobPlan& plan, int stack, const std::vector<NestedSheet>& own,
                     const std::vector<int>& demand)
{
    JobPlan replaced = plan;
    std::erase_if(replaced.sheets, [stack](const NestedSheet& sheet) { return sheet.stack == stack; });
    const auto place = std::find_if(replaced.sheets.begin(), replaced.sheets.end(),
                                    [stack](const NestedSheet& sheet) { return sheet.stack < stack; });
    replaced.sheets.insert(place, own.begin(), own.end());
    replaced.left = demand;
    for (const NestedSheet& sheet : replaced.sheets)
        for (const Placement& placement : sheet.placements)
            replaced.left[placement.item] -= sheet.stack;
    return replaced;
}

} // namespace

Planner::Planner(const PreparedJob& prepared, const std::vector<int>& demand, const PlanEffort& effort,
                 const Budget& budget, PlanReporter& reporter)
    : m_prepared(prepared)
    , m_job(prepared.job)
    , m_demand(demand)
    , m_effort(effort)
    , m_budget(budget)
    , m_reporter(reporter)
    , m_constructor(prepared, demand, prepared.job.seed, budget)
{
}

/// As listed, all kinds in their order; best size, each kind by itself; best mix, both and all kinds in the
/// order of their costs by area.
void Planner::AddChoices()
{
    for (size_t k = 0; k < m_job.kinds.size(); ++k)
        if (!m_prepared.areas[k].window.IsEmpty() && Constructor::HasStock(m_job.kinds[k], 0, 1))
            m_kinds.push_back(k);
    const int most = m_demand.empty() ? 1 : *std::max_element(m_demand.begin(), m_demand.end());
    const auto add = [this, most](const std::vector<size_t>& used) {
        m_choices.push_back({{used, std::min(m_job.stackSize, most)}, {}});
    };
    if (m_job.usageRule != UsageRule::BestSize || m_kinds.size() < 2)
        add(m_kinds);
    if (m_job.usageRule == UsageRule::AsListed || m_kinds.size() < 2)
        return;
    for (const size_t kind : m_kinds)
        add({kind});
    if (m_job.usageRule == UsageRule::BestSize)
        return;
    std::vector<size_t> kinds = m_kinds;
    std::stable_sort(kinds.begin(), kinds.end(), [this](size_t a, size_t b) {
        return GetCostByArea(m_prepared, a) < GetCostByArea(m_prepared, b);
    });
    add(kinds);
}

void Planner::SortChoices()
{
    std::stable_sort(m_choices.begin(), m_choices.end(),
                     [](const Choice& a, const Choice& b) { return a.plan.IsBetterThan(b.plan); });
}

/// Continues from the best plan on whatever sheets there are.
void Planner::KeepBestMix()
{
    m_choices.resize(1);
    m_choices.front().supply.kinds = m_kinds;
}

/// By priority first, which is right whatever the stock. Where sheets are short, lower stacks may waste fewer.
void Planner::ConstructChoice(Choice& choice, Placing placing)
{
    const bool isFirst = choice.plan.left.empty();
    const auto offer = [&](const Supply& supply, Claims claims) {
        JobPlan plan = m_constructor.Build(supply, claims, placing);
        const bool isHigh = supply.highestStack == choice.supply.highestStack;
        const bool isBetter = isHigh ? plan.IsBetterThan(choice.plan)
                                     : CompareInOrder(plan.restAreas, choice.plan.restAreas) < 0;
        if (choice.plan.left.empty() || isBetter)
            choice = {supply, std::move(plan)};
        Offer(choice.plan);
    };
    const bool hasLevels = m_prepared.levelCount > 1;
    const bool isShort = !isFirst && !choice.plan.IsComplete();
    offer(choice.supply, hasLevels && (isFirst || isShort) ? Claims::ByPriority : Claims::BySize);
    if (hasLevels && !m_constructor.IsOver())
        offer(choice.supply, isFirst || isShort ? Claims::BySize : Claims::ByPriority);
    const Claims claims = hasLevels ? Claims::ByPriority : Claims::BySize;
    for (int stack = choice.supply.highestStack / 2;
         isFirst && stack >= 1 && !choice.plan.IsComplete() && !m_constructor.IsOver(); stack /= 2)
        offer({choice.supply.kinds, stack}, claims);
}

/// Contacts take so little time that all choices are built until one of them places everything.
void Planner::Construct(Placing placing, size_t mostChoices)
{
    bool isComplete = placing == Placing::Samples;
    for (size_t i = 0; i < std::min(mostChoices, m_choices.size()) && !m_budget.IsCanceled(); ++i) {
        if (isComplete && m_constructor.IsOver())
            break;
        ConstructChoice(m_choices[i], placing);
        isComplete = isComplete || m_choices[i].plan.IsComplete();
    }
    std::erase_if(m_choices, [](const Choice& choice) { return choice.plan.left.empty(); });
    SortChoices();
}

/// \return whether a further construction may find more
bool Planner::OfferOther(Choice& choice, const Preference& preference)
{
    if (m_constructor.IsOver() || IsOptimal(m_prepared, choice.supply.kinds, choice.plan))
        return false;
    const bool isShort = m_prepared.levelCount > 1 && !choice.plan.IsComplete();
    auto plan = m_constructor.BuildOtherwise(choice.supply, isShort ? Claims::ByPriority : Claims::BySize,
                                             preference);
    if (plan && plan->IsBetterThan(choice.plan)) {
        choice.plan = std::move(*plan);
        Offer(choice.plan);
    }
    return plan.has_value();
}

/// Prefers other rotations, directions and orders in turn, then some at random.
void Planner::ConstructOtherwise(Choice& choice)
{
    using Turn = Preference::Turn;
    using Order = Preference::Order;
    if (std::all_of(choice.supply.kinds.begin(), choice.supply.kinds.end(),
                    [this](size_t kind) { return m_job.kinds[kind].IsRoll(); }))
        return;
    const int copies = std::accumulate(m_demand.begin(), m_demand.end(), 0);
    std::vector<Preference> preferences;
    for (int i = std::clamp(kCopiesOfOthers / copies, kFewestOthers, kMostOthers); i > 0; --i)
        preferences.push_back({Turn::Random, Order::Random, i % 2 == 0});
    if (m_pass == 0)
        preferences.insert(preferences.begin(), {{Turn::Narrow, Order::LargeFirst, false},
                                                 {Turn::Flat, Order::LargeFirst, false},
                                                 {Turn::Any, Order::LargestLast, false},
                                                 {Turn::Any, Order::LargeFirst, true},
                                                 {Turn::Narrow, Order::LargeFirst, true},
                                                 {Turn::Flat, Order::LargeFirst, true}});
    for (size_t i = 0; i < preferences.size() && OfferOther(choice, preferences[i]);)
        ++i;
}

std::vector<size_t> Planner::GetStock(const Choice& choice, int stack) const
{
    std::vector<int> used(m_job.kinds.size(), 0);
    for (const NestedSheet& sheet : choice.plan.sheets)
        if (sheet.stack != stack)
            used[sheet.kind] += sheet.stack;
    std::vector<size_t> stock(m_job.kinds.size(), 0);
    for (const size_t k : choice.supply.kinds) {
        const SheetKind& kind = m_job.kinds[k];
        if (kind.IsRoll()) // never ends, however many layers of a stack are cut from it
            stock[k] = 1;
        else if (kind.quantity < 0)
            stock[k] = std::numeric_limits<uint32_t>::max();
        else
            stock[k] = static_cast<size_t>(std::max(0, kind.quantity - used[k]) / stack);
    }
    return stock;
}

/// The area that a search for one stack size deals with.
double Planner::GetWork(const JobPlan& plan, int stack) const
{
    const Plan own = TakeStack(plan, stack);
    double work = m_prepared.GetArea(own.rest);
    for (const NestedSheet& sheet : own.sheets)
        for (const Placement& placement : sheet.placements)
            work += m_prepared.types[placement.item]->area;
    return work;
}

void Planner::ImproveStack(Choice& choice, int stack, double shortestTime, const Budget& budget)
{
    Plan present = TakeStack(choice.plan, stack);
    for (const NestedSheet& sheet : present.sheets)
        present.cost += GetSheetCost(sheet, m_prepared);
    present.restAreas = m_prepared.GetAreaOfLevels(present.rest);
    const bool isShort = m_prepared.levelCount > 1 && !choice.plan.IsComplete();
    const Claims claims = isShort ? Claims::ByPriority : Claims::BySize;
    const SheetsListener listener = [&](const std::vector<NestedSheet>& own) {
        OfferStack(choice.plan, stack, own);
    };
    const StackPlanner planner(m_prepared, stack, m_effort.threads, m_job.seed + m_pass * kSeedStep,
                               m_reporter.IsListening() ? listener : SheetsListener());
    const Plan found = planner.Search(present, GetStock(choice, stack), claims, shortestTime, budget);
    JobPlan plan = ReplaceStack(choice.plan, stack, found.sheets, m_demand);
    ServeEqualItems(plan, m_prepared);
    Measure(plan, m_prepared);
    if (plan.IsBetterThan(choice.plan)) {
        choice.plan = std::move(plan);
        Offer(choice.plan);
    }
}

/// A plan that was canceled on the way is not complete.
void Planner::Offer(const JobPlan& plan)
{
    if (!m_reporter.IsListening() || m_budget.IsCanceled())
        return;
    JobPlan offered = plan;
    offered.isCutShort = m_isCutShort;
    m_reporter.Offer(std::move(offered));
}

/// Offers the plan with other sheets of one stack size.
void Planner::OfferStack(const JobPlan& plan, int stack, const std::vector<NestedSheet>& own)
{
    JobPlan offered = ReplaceStack(plan, stack, own, m_demand);
    ServeEqualItems(offered, m_prepared);
    Measure(offered, m_prepared);
    Offer(offered);
}

void Planner::Improve(Choice& choice, double shortestTime, const Budget& budget)
{
    const Budget own = budget.Part(1);
    const auto stacks = GetStacks(choice.plan, choice.supply.highestStack);
    for (auto stack = stacks.begin(); stack != stacks.end() && !own.IsOver(); ++stack) {
        double work = 0;
        for (auto lower = stack; lower != stacks.end(); ++lower)
            work += GetWork(choice.plan, *lower);
        const double share = work > 0 ? GetWork(choice.plan, *stack) / work : 0;
        const double shortest = std::max(0.0, shortestTime - own.GetElapsed()) * share;
        if (share > 0)
            ImproveStack(choice, *stack, shortest, own.Part(share));
    }
}

void Planner::ImproveAll(double shortestTime, const Budget& budget)
{
    const Budget own = budget.Part(1);
    const bool hasOneKindEach = m_job.usageRule == UsageRule::BestSize;
    const size_t count = std::min(hasOneKindEach ? kImprovedChoices : 1, m_choices.size());
    for (size_t i = 0; i < count && !own.IsOver(); ++i) {
        const double share = 1.0 / static_cast<double>(count - i);
        const double shortest = std::max(0.0, shortestTime - own.GetElapsed()) * share;
        Improve(m_choices[i], shortest, own.Part(share));
    }
    SortChoices();
}

/// Checks whether there is time and hope to shorten the sheet. After a stop nothing is measured: outlines of
/// many corners would take seconds.
bool Planner::CanPack(const NestedSheet& sheet) const
{
    const bool isOver = m_budget.IsStopped() || m_budget.GetRest() <= 0;
    return !isOver && !m_job.kinds[sheet.kind].IsRoll() && !IsShortest(m_prepared, sheet);
}

/// Pushes the items of the last sheet of each stack size to the left.
void Planner::Pack(double shortestTime)
{
    JobPlan& plan = m_choices.front().plan;
    if (!plan.IsComplete())
        return;
    std::vector<size_t> last;
    for (size_t s = 0; s < plan.sheets.size(); ++s)
        if ((s + 1 == plan.sheets.size() || plan.sheets[s + 1].stack != plan.sheets[s].stack)
            && CanPack(plan.sheets[s]))
            last.push_back(s);
    const Budget own = m_budget.Part(1);
    for (size_t i = 0; i < last.size() && !own.IsOver(); ++i) {
        const double share = 1.0 / static_cast<double>(last.size() - i);
        NestedSheet& sheet = plan.sheets[last[i]];
        const Filler filler(m_prepared, sheet.stack, m_job.seed + m_pass * kSeedStep, {});
        filler.PackSheet(sheet, std::max(0.0, shortestTime - own.GetElapsed()) * share, own.Part(share));
    }
    Measure(plan, m_prepared);
    Offer(plan);
}

JobPlan Planner::Run()
{
    AddChoices();
    if (std::none_of(m_demand.begin(), m_demand.end(), [](int count) { return count > 0; })) {
        JobPlan plan;
        plan.left = m_demand;
        return plan;
    }
    Construct(Placing::Contacts, m_choices.size());
    if (m_choices.empty()) // canceled
        return {};
    Construct(Placing::Samples, kConstructedChoices);
    m_isCutShort = m_constructor.IsOver();
    for (size_t i = 0; i < std::min(kConstructedChoices, m_choices.size()); ++i)
        ConstructOtherwise(m_choices[i]);
    SortChoices();
    if (m_job.usageRule == UsageRule::BestMix)
        KeepBestMix();
    JobPlan& best = m_choices.front().plan;
    const auto getRest = [this] { return m_effort.shortestTime - m_budget.GetElapsed(); };
    do {
        const bool canPack = std::any_of(best.sheets.begin(), best.sheets.end(),
                                         [this](const NestedSheet& sheet) { return CanPack(sheet); });
        const double share = canPack && best.IsComplete() ? 1 - kPackingShare : 1;
        if (m_pass == 0 || !IsCheapest(m_prepared, m_choices.front().supply.kinds, best))
            ImproveAll(getRest() * share, m_budget.Part(share));
        Pack(getRest());
        ++m_pass;
        if (getRest() > 0)
            ConstructOtherwise(m_choices.front());
    } while (getRest() > 0 && !m_budget.IsOver()
             && !IsOptimal(m_prepared, m_choices.front().supply.kinds, best));
    best.isCutShort = m_isCutShort;
    return std::move(best);
}

} // namespace ZORNestSolver
