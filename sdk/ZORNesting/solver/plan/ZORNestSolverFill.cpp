#include "ZORNestSolverFill.h"

#include "solver/proof/ZORNestSolverApart.h"
#include "solver/search/ZORNestSolverCompaction.h"

namespace ZORNestSolver {

namespace {

constexpr int kCoverAttempts = 20; // where the time is unlimited
constexpr int kMostCoverAttempts = 1000;
constexpr double kCoverShare = 0.2; // of the time at most goes to exact covers
constexpr double kRemnantTime = 1;  // seconds to push a sheet's items to the left
constexpr double kRemnantTimeOfItem = 0.05;
constexpr double kExploreShare = 0.7; // of that time

} // namespace

Filler::Filler(const PreparedJob& prepared, int stack, uint64_t seed, SheetsListener listener)
    : m_prepared(prepared)
    , m_job(prepared.job)
    , m_stack(stack)
    , m_seed(seed)
    , m_listener(std::move(listener))
{
}

std::vector<Placement> Filler::GetPlacements(const std::vector<size_t>& items,
                                             const std::vector<Stand>& stands) const
{
    std::vector<Placement> placements;
    for (size_t i = 0; i < items.size(); ++i)
        placements.push_back({items[i], m_prepared.types[items[i]]->GetPose(
                                            stands[i].poseClass, stands[i].angle, stands[i].position)});
    return placements;
}

bool Filler::AreApart(size_t kind, const std::vector<Placement>& placements) const
{
    std::vector<Polygon> placed;
    placed.reserve(placements.size());
    for (const Placement& placement : placements)
        placed.push_back(Transform(placement.pose).Apply(m_prepared.types[placement.item]->outer));
    return AreAllApart(placed, m_job.separation)
           && std::all_of(placed.begin(), placed.end(),
                          [&](const Polygon& polygon) { return m_prepared.areas[kind].IsClear(polygon); });
}

void Filler::SetCost(Plan& plan) const
{
    plan.cost = 0;
    for (NestedSheet& sheet : plan.sheets) {
        MeasureSheet(sheet, m_prepared);
        plan.cost += GetSheetCost(sheet, m_prepared);
    }
    plan.restAreas = m_prepared.GetAreaOfLevels(plan.rest);
}

std::shared_ptr<Problem> Filler::MakeProblem(size_t kind, std::vector<size_t> items) const
{
    auto problem = std::make_shared<Problem>();
    problem->types = m_prepared.types;
    problem->windows = {m_prepared.areas[kind].window};
    problem->hazards = m_prepared.areas[kind].hazards;
    problem->items = std::move(items);
    return problem;
}

/// A strip without waste; empty if there is none.
std::vector<Stand> Filler::CoverRoll(size_t kind, const std::vector<size_t>& items,
                                     const Budget& budget) const
{
    Box box = m_prepared.areas[kind].window;
    box.max.x = box.min.x + m_prepared.GetArea(items) / box.GetHeight();
    if (m_job.separation > 0 || !m_prepared.areas[kind].hazards.empty())
        return {};
    Jigsaw jigsaw(m_prepared.types, items, m_seed);
    const auto places = jigsaw.Fill(box, 1, budget.Part(kCoverShare));
    if (places.size() != items.size())
        return {};
    std::vector<Stand> stands(items.size());
    for (const Jigsaw::Place& place : places)
        stands[place.item] = place.stand;
    return AreApart(kind, GetPlacements(items, stands)) ? stands : std::vector<Stand>{};
}

/// Offers the sheets before a roll together with it.
void Filler::OfferRoll(NestedSheet roll, const Plan& before) const
{
    if (!m_listener)
        return;
    MeasureSheet(roll, m_prepared);
    std::vector<NestedSheet> sheets = before.sheets;
    sheets.push_back(std::move(roll));
    m_listener(sheets);
}

/// The same for the sheets of one kind.
void Filler::OfferSheets(const Mix::Part& part, const Packing& packing, const Plan& before) const
{
    Plan plan = before;
    AddPacking(part, packing, plan);
    SetCost(plan);
    m_listener(plan.sheets);
}

void Filler::FillRoll(size_t kind, Plan& plan, const FillEffort& effort, const Budget& budget) const
{
    std::vector<size_t> items;
    std::vector<size_t> rest;
    for (const size_t item : plan.rest)
        (m_prepared.FitsOn(item, kind) ? items : rest).push_back(item);
    if (items.empty())
        return;
    std::vector<Stand> stands = CoverRoll(kind, items, budget);
    if (stands.empty()) {
        const auto proof = [&](const std::vector<Stand>& tried) {
            const std::vector<Placement> placements = GetPlacements(items, tried);
            if (!AreApart(kind, placements))
                return false;
            OfferRoll({kind, 0, m_stack, placements, 0}, plan);
            return true;
        };
        const StripEffort stripEffort{effort.threads, effort.shortestTime, m_job.separation, effort.quick};
        stands = SearchStrip(MakeProblem(kind, items), m_seed, proof, stripEffort, budget);
    }
    if (stands.empty()) // no proof even of the items one behind the other
        return;
    plan.sheets.push_back({kind, 0, m_stack, GetPlacements(items, stands), 0});
    plan.rest = std::move(rest);
}

/// Takes items off the sheet that, by true distances, are too near to earlier ones.
void Filler::KeepApart(NestedSheet& sheet, std::vector<size_t>& removed) const
{
    std::vector<Polygon> placed;
    for (const Placement& placement : sheet.placements)
        placed.push_back(Transform(placement.pose).Apply(m_prepared.types[placement.item]->outer));
    std::vector<Placement> placements;
    size_t next = 0;
    for (const size_t kept : FindAllApart(placed, m_job.separation)) {
        for (; next < kept; ++next)
            removed.push_back(sheet.placements[next].item);
        placements.push_back(sheet.placements[next++]);
    }
    for (; next < sheet.placements.size(); ++next)
        removed.push_back(sheet.placements[next].item);
    sheet.placements = std::move(placements);
}

/// Sheets that the items fill without waste, where all of them may: what remains is filled by searching.
size_t Filler::CoverSheets(const Mix::Part& part, Plan& plan, const FillEffort& effort,
                           const Budget& budget) const
{
    const SheetArea& area = m_prepared.areas[part.kind];
    if (m_job.separation > 0 || !area.hazards.empty() || effort.byPriority
        || !IsWholeNumberOf(m_prepared.GetArea(plan.rest), area.area))
        return 0;
    Jigsaw jigsaw(m_prepared.types, plan.rest, m_seed);
    const Budget own = budget.Part(kCoverShare);
    std::vector<bool> used(plan.rest.size(), false);
    const int attempts = effort.quick ? 1 : budget.HasEnd() ? kMostCoverAttempts : kCoverAttempts;
    size_t sheets = 0;
    while (sheets < part.most) {
        const auto places = jigsaw.Fill(area.window, attempts, own);
        std::vector<size_t> items;
        std::vector<Stand> stands;
        for (const Jigsaw::Place& place : places) {
            items.push_back(plan.rest[place.item]);
            stands.push_back(place.stand);
        }
        const std::vector<Placement> placements = GetPlacements(items, stands);
        if (places.empty() || !AreApart(part.kind, placements))
            break;
        for (const Jigsaw::Place& place : places)
            used[place.item] = true;
        plan.sheets.push_back({part.kind, m_job.kinds[part.kind].length, m_stack, placements, 0});
        ++sheets;
    }
    std::vector<size_t> rest;
    for (size_t i = 0; i < used.size(); ++i)
        if (!used[i])
            rest.push_back(plan.rest[i]);
    plan.rest = std::move(rest);
    return sheets;
}

/// With an effort by priority, the items of each priority are all given a place before those of the next.
Packing Filler::Pack(SheetSearch& search, const std::vector<size_t>& items, const FillEffort& effort,
                     const Budget& budget) const
{
    Packing packing;
    for (size_t first = 0; first < items.size();) {
        size_t last = items.size();
        if (effort.byPriority) {
            const int priority = m_job.items[items[first]].priority;
            last = first + 1;
            while (last < items.size() && m_job.items[items[last]].priority == priority)
                ++last;
        }
        std::vector<size_t> level;
        for (size_t i = first; i < last; ++i)
            level.push_back(i);
        search.Add(packing, level, budget);
        const double share = static_cast<double>(last - first) / static_cast<double>(items.size() - first);
        if (!effort.quick)
            search.AddRest(packing, effort.shortestTime * share, budget.Part(share));
        first = last;
    }
    if (!effort.quick)
        search.RemoveSheets(packing, effort.shortestTime - budget.GetElapsed(), budget);
    return packing;
}

void Filler::FillSheets(const Mix::Part& part, Plan& plan, const FillEffort& effort,
                        const Budget& budget) const
{
    const size_t most = part.most - CoverSheets(part, plan, effort, budget);
    if (most == 0 || plan.rest.empty())
        return;
    SheetSearch search(m_prepared.types, plan.rest, m_prepared.areas[part.kind], most, m_seed);
    if (m_listener)
        search.SetListener([&](const Packing& packing) { OfferSheets(part, packing, plan); });
    AddPacking(part, Pack(search, plan.rest, effort, budget), plan);
}

/// \param packing  of the rest of the plan
void Filler::AddPacking(const Mix::Part& part, const Packing& packing, Plan& plan) const
{
    std::vector<NestedSheet> sheets(packing.sheets,
                                    {part.kind, m_job.kinds[part.kind].length, m_stack, {}, 0});
    for (const PackedItem& packed : packing.placed) {
        const auto placements = GetPlacements({plan.rest[packed.item]}, {packed.stand});
        sheets[packed.stand.window].placements.push_back(placements.front());
    }
    std::vector<size_t> rest;
    for (NestedSheet& sheet : sheets)
        KeepApart(sheet, rest);
    std::erase_if(sheets, [](const NestedSheet& sheet) { return sheet.placements.empty(); });
    const auto getArea = [this](const NestedSheet& sheet) {
        double area = 0;
        for (const Placement& placement : sheet.placements)
            area += m_prepared.types[placement.item]->area;
        return area;
    };
    std::stable_sort(sheets.begin(), sheets.end(), [&getArea](const NestedSheet& a, const NestedSheet& b) {
        return getArea(a) > getArea(b);
    });
    plan.sheets.insert(plan.sheets.end(), sheets.begin(), sheets.end());
    for (const size_t i : packing.rest)
        rest.push_back(plan.rest[i]);
    plan.rest = std::move(rest);
}

Plan Filler::Follow(const Mix& mix, const std::vector<size_t>& items, const FillEffort& effort,
                    const Budget& budget) const
{
    Plan plan;
    plan.rest = items;
    for (size_t i = 0; i < mix.parts.size() && !plan.rest.empty(); ++i) {
        const Mix::Part& part = mix.parts[i];
        if (part.most == 0 || m_prepared.areas[part.kind].window.IsEmpty())
            continue;
        const double share = 1.0 / static_cast<double>(mix.parts.size() - i);
        FillEffort own = effort;
        own.shortestTime = std::max(0.0, effort.shortestTime - budget.GetElapsed()) * share;
        if (m_job.kinds[part.kind].IsRoll())
            FillRoll(part.kind, plan, own, budget.Part(share));
        else
            FillSheets(part, plan, own, budget.Part(share));
    }
    SetCost(plan);
    return plan;
}

void Filler::PackSheet(NestedSheet& sheet, double shortestTime, const Budget& budget) const
{
    std::vector<size_t> items;
    std::vector<Stand> stands;
    for (const Placement& placement : sheet.placements) {
        const ItemType& type = *m_prepared.types[placement.item];
        const auto poseClass = type.FindClass(placement.pose);
        items.push_back(placement.item);
        stands.push_back({Transform(placement.pose).Apply(type.reference), placement.pose.angle,
                          static_cast<uint32_t>(poseClass), 0});
    }
    const auto problem = MakeProblem(sheet.kind, items);
    const auto proof = [this, kind = sheet.kind, &items](const std::vector<Stand>& tried) {
        return AreApart(kind, GetPlacements(items, tried));
    };
    StripSearch search(problem, m_seed,
                       [&proof](const std::vector<Stand>& tried, double) { return proof(tried); });
    search.Continue(stands);
    if (search.GetStands().empty())
        return;
    const double time = kRemnantTime + kRemnantTimeOfItem * static_cast<double>(items.size());
    const Budget usual = budget.Limited(time);
    const Budget own = usual.GetRest() < shortestTime ? budget.LimitedTo(shortestTime) : usual;
    search.Explore(own.HasEnd() ? own.Part(kExploreShare) : own);
    search.Compress(own);
    const Compaction compaction(*problem, m_job.separation, proof);
    const auto placements =
        GetPlacements(items, compaction.Shorten(search.GetStands(), [&budget] { return budget.IsOver(); }));
    if (GetRightEnd(m_prepared, placements) < GetRightEnd(m_prepared, sheet.placements))
        sheet.placements = placements;
    MeasureSheet(sheet, m_prepared);
}

} // namespace ZORNestSolver
