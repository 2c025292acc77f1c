#include "ZORNestSolverSheets.h"

namespace ZORNestSolver {

namespace {

constexpr int ConstructionSamples = 200;
constexpr SeparationLimits SheetLimits{60, 2};
constexpr int MostFailures = 12; // in a row of one kind of improvement

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

Packing SheetSearch::Construct(const Budget& budget)
{
    std::vector<PackedItem> all(m_items.size());
    for (size_t i = 0; i < all.size(); ++i)
        all[i].item = i;
    Layout layout(MakeProblem(all, m_mostSheets));
    Mover mover(layout, m_random);
    Packing packing;
    for (size_t i = 0; i < all.size(); ++i) {
        std::optional<Stand> stand;
        if (FindFitting(layout.GetType(i), m_area.window) && !budget.IsStopped())
            for (uint32_t s = 0; s < m_mostSheets && !stand; ++s)
                stand = mover.FindFree(i, s, ConstructionSamples);
        if (!stand) {
            packing.rest.push_back(i);
            continue;
        }
        layout.Place(i, *stand);
        packing.sheets = std::max(packing.sheets, size_t{stand->window} + 1);
        stand->position = stand->position - GetOrigin(stand->window);
        packing.placed.push_back({i, *stand});
    }
    return packing;
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
    if (separator.Separate(SheetLimits, budget) > 0)
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

/// Adds the first item left that can be added.
bool SheetSearch::AddRest(Packing& packing, const Budget& budget)
{
    for (size_t i = 0; i < packing.rest.size() && !budget.IsOver(); ++i) {
        if (packing.sheets == 0 || !FindFitting(*m_types[m_items[packing.rest[i]]], m_area.window))
            continue;
        std::vector<PackedItem> items = packing.placed;
        items.push_back(PutAnywhere(packing.rest[i], packing.sheets));
        if (!Separate(items, packing.sheets, budget))
            continue;
        packing.placed = std::move(items);
        packing.rest.erase(packing.rest.begin() + static_cast<std::ptrdiff_t>(i));
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
    return true;
}

size_t SheetSearch::GetFewestSheets() const
{
    double area = 0;
    for (const size_t item : m_items)
        area += m_types[item]->area;
    return static_cast<size_t>(std::ceil(area / m_area.area - 1e-9));
}

void SheetSearch::Improve(Packing& packing, const Budget& budget)
{
    int failures = 0;
    while (!packing.rest.empty() && failures < MostFailures && !budget.IsOver())
        failures = AddRest(packing, budget) ? 0 : failures + 1;
    const size_t fewest = packing.rest.empty() ? GetFewestSheets() : packing.sheets;
    failures = 0;
    while (packing.sheets > std::max<size_t>(fewest, 1) && failures < MostFailures && !budget.IsOver())
        failures = RemoveSheet(packing, budget) ? 0 : failures + 1;
}

} // namespace ZORNestSolver
