#include "ZORNestSolverPlan.h"

#include "ZORNestSolverCheck.h"
#include "ZORNestSolverStripRun.h"

#include <set>

namespace ZORNestSolver {

namespace {

constexpr size_t MostMixes = 60;
constexpr size_t FinalMixes = 3;
constexpr double QuickShare = 0.3; // of the time goes to comparing mixes

std::vector<Point> GetCorners(const Polygon& polygon)
{
    std::vector<Point> corners;
    for (const Ring& ring : polygon)
        corners.insert(corners.end(), ring.begin(), ring.end());
    return corners;
}

} // namespace

PreparedJob::PreparedJob(const Job& newJob)
    : job(newJob)
{
    for (const Item& item : job.items) {
        reasons.emplace_back();
        types.push_back(std::make_shared<const ItemType>(PrepareItem(item, job, reasons.back())));
    }
    for (const SheetKind& kind : job.kinds) {
        areas.push_back(PrepareSheet(kind, job));
        if (areas.back().window.IsEmpty())
            remarks.push_back("sheet \"" + kind.name + "\" has no usable area");
    }
}

bool PreparedJob::FitsOn(size_t item, size_t kind) const
{
    return reasons[item].empty() && !areas[kind].window.IsEmpty()
           && FindFitting(*types[item], areas[kind].window).has_value();
}

bool PreparedJob::IsFree() const
{
    return std::all_of(job.kinds.begin(), job.kinds.end(),
                       [](const SheetKind& kind) { return kind.cost == 0; });
}

bool Plan::IsBetterThan(const Plan& other) const
{
    constexpr double noise = 1e-9;
    if (std::abs(restArea - other.restArea) > noise * std::max(restArea, other.restArea))
        return restArea < other.restArea;
    return cost < other.cost;
}

Planner::Planner(const PreparedJob& prepared, int stack, int threads, double shortestTime)
    : m_prepared(prepared)
    , m_job(prepared.job)
    , m_stack(stack)
    , m_threads(threads)
    , m_shortestTime(shortestTime)
    , m_seed(prepared.job.seed)
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

std::vector<Placement> Planner::GetPlacements(const std::vector<size_t>& items,
                                              const std::vector<Stand>& stands) const
{
    std::vector<Placement> placements;
    for (size_t i = 0; i < items.size(); ++i)
        placements.push_back({items[i], m_prepared.types[items[i]]->GetPose(
                                            stands[i].poseClass, stands[i].angle, stands[i].position)});
    return placements;
}

double Planner::GetUsedLength(size_t kind, const std::vector<Placement>& placements) const
{
    const SheetKind& sheet = m_job.kinds[kind];
    if (!sheet.IsRoll())
        return sheet.length;
    double right = 0;
    for (const Placement& placement : placements) {
        const Transform transform(placement.pose);
        for (const Point& corner : GetCorners(m_prepared.types[placement.item]->outer))
            right = std::max(right, transform.Apply(corner).x);
    }
    return right + m_job.frameWidth + sheet.rightTrim;
}

void Planner::SetCost(Plan& plan) const
{
    plan.cost = 0;
    for (const NestedSheet& sheet : plan.sheets) {
        const SheetKind& kind = m_job.kinds[sheet.kind];
        const double units = kind.IsRoll() ? sheet.usedLength : 1;
        const double area = kind.width * sheet.usedLength;
        plan.cost += (m_prepared.IsFree() ? area : kind.cost * units) * sheet.stack;
    }
    plan.restArea = 0;
    for (const size_t item : plan.rest)
        plan.restArea += m_prepared.types[item]->area;
}

void Planner::FillRoll(size_t kind, Plan& plan, const Budget& budget, bool quick)
{
    auto problem = std::make_shared<Problem>();
    problem->types = m_prepared.types;
    problem->windows = {m_prepared.areas[kind].window};
    problem->hazards = m_prepared.areas[kind].hazards;
    std::vector<size_t> rest;
    for (const size_t item : plan.rest)
        (m_prepared.FitsOn(item, kind) ? problem->items : rest).push_back(item);
    if (problem->items.empty())
        return;
    const std::vector<size_t>& items = problem->items;
    const auto proof = [&](const std::vector<Stand>& tried) {
        std::vector<Polygon> placed;
        for (const Placement& placement : GetPlacements(items, tried))
            placed.push_back(Transform(placement.pose).Apply(m_prepared.types[placement.item]->outer));
        return AreAllApart(placed, m_job.separation);
    };
    const StripEffort effort{m_threads, m_shortestTime, m_job.separation, quick};
    const std::vector<Stand> stands = SearchStrip(problem, m_seed, proof, effort, budget);
    const std::vector<Placement> placements = GetPlacements(items, stands);
    plan.sheets.push_back({kind, GetUsedLength(kind, placements), m_stack, placements});
    plan.rest = std::move(rest);
}

/// Takes items off the sheet that, by true distances, are too near to earlier ones.
void Planner::KeepApart(NestedSheet& sheet, std::vector<size_t>& removed) const
{
    std::vector<Polygon> kept;
    std::vector<Placement> placements;
    for (const Placement& placement : sheet.placements) {
        Polygon placed = Transform(placement.pose).Apply(m_prepared.types[placement.item]->outer);
        const bool isApart = std::all_of(kept.begin(), kept.end(), [&](const Polygon& other) {
            return AreApart(placed, other, m_job.separation);
        });
        if (isApart) {
            kept.push_back(std::move(placed));
            placements.push_back(placement);
        } else {
            removed.push_back(placement.item);
        }
    }
    sheet.placements = std::move(placements);
}

void Planner::FillSheets(const Mix::Part& part, Plan& plan, const Budget& budget, bool quick)
{
    SheetSearch search(m_prepared.types, plan.rest, m_prepared.areas[part.kind], part.most, m_seed);
    Packing packing = search.Construct(budget);
    if (!quick)
        search.Improve(packing, budget);
    const size_t first = plan.sheets.size();
    plan.sheets.resize(first + packing.sheets);
    for (size_t s = first; s < plan.sheets.size(); ++s)
        plan.sheets[s] = {part.kind, m_job.kinds[part.kind].length, m_stack, {}};
    for (const PackedItem& packed : packing.placed) {
        const auto placements = GetPlacements({plan.rest[packed.item]}, {packed.stand});
        plan.sheets[first + packed.stand.window].placements.push_back(placements.front());
    }
    std::vector<size_t> rest;
    for (size_t s = first; s < plan.sheets.size(); ++s)
        KeepApart(plan.sheets[s], rest);
    std::erase_if(plan.sheets, [](const NestedSheet& sheet) { return sheet.placements.empty(); });
    for (const size_t i : packing.rest)
        rest.push_back(plan.rest[i]);
    plan.rest = std::move(rest);
}

Plan Planner::Follow(const Mix& mix, const std::vector<size_t>& items, const Budget& budget, bool quick)
{
    Plan plan;
    plan.rest = items;
    for (size_t i = 0; i < mix.parts.size() && !plan.rest.empty(); ++i) {
        const Mix::Part& part = mix.parts[i];
        const Budget own =
            budget.HasEnd() ? budget.Part(1.0 / static_cast<double>(mix.parts.size() - i)) : budget;
        if (part.most == 0 || m_prepared.areas[part.kind].window.IsEmpty())
            continue;
        if (m_job.kinds[part.kind].IsRoll())
            FillRoll(part.kind, plan, own, quick);
        else
            FillSheets(part, plan, own, quick);
    }
    SetCost(plan);
    return plan;
}

/// The given one, then every number of sheets of each kind in turn, the last kind taking what is left, in every
/// order of the kinds that differs by its last one.
std::vector<Mix> Planner::GetMixes(const std::vector<size_t>& items, const std::vector<size_t>& stock,
                                   const Mix& first) const
{
    double area = 0;
    for (const size_t item : items)
        area += m_prepared.types[item]->area;
    std::vector<Mix> mixes{first};
    for (size_t last = 0; last < stock.size(); ++last) {
        std::vector<Mix> partial{Mix{}};
        for (size_t k = 0; k < stock.size(); ++k) {
            if (k == last)
                continue;
            const double own = m_prepared.areas[k].area;
            const bool countable = !m_job.kinds[k].IsRoll() && own > 0;
            const size_t most =
                countable ? std::min(stock[k], static_cast<size_t>(std::ceil(area / own))) : 0;
            std::vector<Mix> extended;
            for (const Mix& mix : partial) {
                for (size_t count = 0; count <= most && extended.size() < MostMixes; ++count) {
                    extended.push_back(mix);
                    extended.back().parts.push_back({k, count});
                }
            }
            partial = std::move(extended);
        }
        for (Mix& mix : partial) {
            mix.parts.push_back({last, stock[last]});
            mixes.push_back(std::move(mix));
        }
    }
    return mixes;
}

/// Compares first layouts, then searches on with the best ones.
Plan Planner::FindBest(const std::vector<Mix>& mixes, const std::vector<size_t>& items, const Budget& budget)
{
    std::vector<std::pair<Plan, const Mix*>> quick;
    const Budget comparing = budget.HasEnd() ? budget.Part(QuickShare) : budget;
    bool placesAll = false;
    for (const Mix& mix : mixes) { // until one places every item, time is no reason to end
        if (!quick.empty() && (budget.IsStopped() || (placesAll && comparing.IsOver())))
            break;
        quick.push_back({Follow(mix, items, comparing, true), &mix});
        placesAll = placesAll || quick.back().first.rest.empty();
    }
    std::stable_sort(quick.begin(), quick.end(),
                     [](const auto& a, const auto& b) { return a.first.IsBetterThan(b.first); });
    const size_t finals = std::min(FinalMixes, quick.size());
    Plan best = quick.empty() ? Plan{} : quick.front().first;
    for (size_t i = 0; i < finals && !budget.IsOver(); ++i) {
        const Budget own = budget.HasEnd() ? budget.Part(1.0 / static_cast<double>(finals - i)) : budget;
        const Plan plan = Follow(*quick[i].second, items, own, false);
        if (plan.IsBetterThan(best))
            best = plan;
    }
    return best;
}

Plan Planner::Run(std::vector<size_t> items, const std::vector<size_t>& stock, const Budget& budget)
{
    Mix all;
    std::vector<Mix> singles;
    for (size_t k = 0; k < stock.size(); ++k) {
        all.parts.push_back({k, stock[k]});
        singles.push_back({{{k, stock[k]}}});
    }
    std::set<int> priorities;
    for (const size_t item : items)
        priorities.insert(m_job.items[item].priority);
    const auto run = [&](const Budget& own) {
        if (m_job.usageRule == UsageRule::BestSize && stock.size() > 1)
            return FindBest(singles, items, own);
        if (m_job.usageRule == UsageRule::BestMix && stock.size() > 1)
            return FindBest(GetMixes(items, stock, all), items, own);
        return Follow(all, items, own, false);
    };
    Order(items, false);
    Plan plan = run(budget.HasEnd() && priorities.size() > 1 ? budget.Part(0.6) : budget);
    const bool isShort = std::any_of(plan.rest.begin(), plan.rest.end(), [this](size_t item) {
        for (size_t k = 0; k < m_job.kinds.size(); ++k)
            if (m_prepared.FitsOn(item, k))
                return true;
        return false;
    });
    if (isShort && priorities.size() > 1 && !budget.IsStopped()) {
        Order(items, true);
        plan = run(budget);
    }
    return plan;
}

} // namespace ZORNestSolver
