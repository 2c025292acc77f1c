#include "ZORNestSolverSheets.h"

namespace ZORNestSolver {

namespace {

constexpr int kConstructionSamples = 200;
constexpr size_t kSpareSheets = 2; // on top of twice as many as the area takes
constexpr SeparationLimits kSheetLimits{60, 2};
constexpr int kMostFailures = 12; // in a row of one kind of improvement

} // namespace

SheetSearch::SheetSearch(std::vector<std::shared_ptr<const ItemType>> types, std::vector<size_t> items,
                         SheetArea area, size_t mostSheets, uint64_t seed)
    : m_types(std::move(types))
    , m_items(std::move(items))
    , m_area(std::move(area))
    , m_mostSheets(std::min(mostSheets, m_items.size()))
    , m_random(seed)
{
    double diameter = 0;
    for (const auto& type : m_types)
        diameter = std::max(diameter, type->base.diameter);
    for (const Hazard& hazard : m_area.hazards)
        diameter = std::max(diameter, hazard.shape.diameter);
    m_pitch = m_area.window.max.x + 2 * diameter;
}

std::shared_ptr<Problem> SheetSearch::MakeProblem(const std::vector<PackedItem>& items, size_t sheets) const
{
    auto problem = std::make_shared<Problem>();
    problem->types = m_types;
    for (const PackedItem& packed : items)
        problem->items.push_back(m_items[packed.item]);
    for (size_t s = 0; s < sheets; ++s) {
        problem->windows.push_back(m_area.window.Moved(GetOrigin(s)));
        for (const Hazard& hazard : m_area.hazards)
            problem->hazards.push_back({hazard.shape, hazard.position + GetOrigin(s)});
    }
    return problem;
}

/// Adds items as long as so many sheets have room, and returns the others.
std::vector<size_t> SheetSearch::AddTo(Packing& packing, const std::vector<size_t>& items, size_t sheets,
                                       const Budget& budget)
{
    std::vector<PackedItem> all = packing.placed;
    for (const size_t item : items)
        all.push_back({item, {}});
    Layout layout(MakeProblem(all, sheets));
    Mover mover(layout, m_random);
    for (size_t i = 0; i < packing.placed.size(); ++i) {
        Stand stand = packing.placed[i].stand;
        stand.position = stand.position + GetOrigin(stand.window);
        layout.Place(i, stand);
    }
    std::vector<size_t> rest;
    std::vector<uint32_t> firstSheets(m_types.size(), 0); // those before had no room for an equal item
    for (size_t i = packing.placed.size(); i < all.size(); ++i) {
        std::optional<Stand> stand;
        const bool fits = Fits(all[i].item);
        uint32_t& s = firstSheets[m_items[all[i].item]];
        while (s < sheets && !stand && fits && !budget.IsRunOver()) {
            stand = mover.FindFree(i, s, kConstructionSamples);
            if (!stand && s >= packing.sheets && m_area.hazards.empty()) { // an empty sheet has room
                stand = FindFitting(layout.GetType(i), layout.GetWindow(s));
                stand->window = s;
            }
            s += stand ? 0 : 1;
        }
        if (!stand) {
            rest.push_back(all[i].item);
            continue;
        }
        layout.Place(i, *stand);
        packing.sheets = std::max(packing.sheets, size_t{stand->window} + 1);
        stand->position = stand->position - GetOrigin(stand->window);
        packing.placed.push_back({all[i].item, *stand});
    }
    return rest;
}

void SheetSearch::Add(Packing& packing, std::vector<size_t> items, const Budget& budget)
{
    size_t sheets = 0;
    for (size_t before = items.size() + 1;
         !items.empty() && items.size() < before && sheets < m_mostSheets;) {
        before = items.size();
        sheets = std::min(m_mostSheets, packing.sheets + 2 * GetFewestSheets(items) + kSpareSheets);
        items = AddTo(packing, items, sheets, budget);
    }
    packing.rest.insert(packing.rest.end(), items.begin(), items.end());
    Offer(packing);
}

void SheetSearch::Offer(const Packing& packing) const
{
    if (m_listener)
        m_listener(packing);
}

/// Removes the overlaps of items on so many sheets, leaving the items as they were if that fails.
bool SheetSearch::Separate(std::vector<PackedItem>& items, size_t sheets, const Budget& budget)
{
    Layout layout(MakeProblem(items, sheets));
    std::vector<Stand> stands;
    for (const PackedItem& packed : items) {
        stands.push_back(packed.stand);
        stands.back().position = packed.stand.position + GetOrigin(packed.stand.window);
    }
    layout.PlaceAll(stands);
    Separator separator(layout, m_random);
    if (separator.Separate(kSheetLimits, budget) > 0)
        return false;
    for (size_t i = 0; i < items.size(); ++i) {
        items[i].stand = layout.GetStand(i);
        items[i].stand.position = items[i].stand.position - GetOrigin(items[i].stand.window);
    }
    return true;
}

PackedItem SheetSearch::PutAnywhere(size_t item, size_t sheets)
{
    PackedItem packed{item, *FindFitting(*m_types[m_items[item]], m_area.window)};
    packed.stand.window = static_cast<uint32_t>(m_random.Index(sheets));
    return packed;
}

/// Tries one item of each type, since equal ones have equal chances.
bool SheetSearch::AddOneOfRest(Packing& packing, size_t sheets, const Budget& budget)
{
    std::vector<bool> isTried(m_types.size(), false);
    for (size_t i = 0; i < packing.rest.size() && sheets > 0; ++i) {
        const size_t type = m_items[packing.rest[i]];
        if (isTried[type])
            continue;
        if (budget.IsOver())
            return false;
        isTried[type] = true;
        if (!Fits(packing.rest[i]))
            continue;
        std::vector<PackedItem> items = packing.placed;
        items.push_back(PutAnywhere(packing.rest[i], sheets));
        if (!Separate(items, sheets, budget))
            continue;
        packing.placed = std::move(items);
        for (const PackedItem& packed : packing.placed)
            packing.sheets = std::max(packing.sheets, size_t{packed.stand.window} + 1);
        packing.rest.erase(packing.rest.begin() + static_cast<std::ptrdiff_t>(i));
        Offer(packing);
        return true;
    }
    return false;
}

/// Spreads the items of the emptiest sheet over the others.
bool SheetSearch::RemoveSheet(Packing& packing, const Budget& budget)
{
    std::vector<double> filled(packing.sheets, 0);
    for (const PackedItem& packed : packing.placed)
        filled[packed.stand.window] += m_types[m_items[packed.item]]->area * m_random.Between(0.8, 1);
    const auto emptiest =
        static_cast<size_t>(std::min_element(filled.begin(), filled.end()) - filled.begin());
    std::vector<PackedItem> items = packing.placed;
    for (PackedItem& packed : items) {
        if (packed.stand.window == emptiest)
            packed = PutAnywhere(packed.item, packing.sheets - 1);
        else if (packed.stand.window > emptiest)
            --packed.stand.window;
    }
    if (!Separate(items, packing.sheets - 1, budget))
        return false;
    packing.placed = std::move(items);
    --packing.sheets;
    Offer(packing);
    return true;
}

/// No fewer sheets can hold these items, by their areas.
size_t SheetSearch::GetFewestSheets(const std::vector<size_t>& items) const
{
    double area = 0;
    for (const size_t item : items)
        area += m_types[m_items[item]]->area;
    return static_cast<size_t>(std::max(1.0, std::ceil(area / m_area.area - 1e-9)));
}

void SheetSearch::AddRest(Packing& packing, double shortestTime, const Budget& budget)
{
    const auto fits = [this](size_t item) { return Fits(item); };
    const auto addOne = [&] {
        const bool hasMore = !m_area.hazards.empty() && packing.sheets < m_mostSheets;
        return AddOneOfRest(packing, packing.sheets, budget)
               || (hasMore && AddOneOfRest(packing, packing.sheets + 1, budget));
    };
    for (int failures = 0; std::any_of(packing.rest.begin(), packing.rest.end(), fits)
                           && (failures < kMostFailures || budget.GetElapsed() < shortestTime)
                           && !budget.IsOver();)
        failures = addOne() ? 0 : failures + 1;
}

void SheetSearch::RemoveSheets(Packing& packing, double shortestTime, const Budget& budget)
{
    std::vector<size_t> items;
    for (const PackedItem& packed : packing.placed)
        items.push_back(packed.item);
    const size_t fewest = GetFewestSheets(items);
    for (int failures = 0; packing.sheets > fewest
                           && (failures < kMostFailures || budget.GetElapsed() < shortestTime)
                           && !budget.IsOver();)
        failures = RemoveSheet(packing, budget) ? 0 : failures + 1;
}

} // namespace ZORNestSolver
