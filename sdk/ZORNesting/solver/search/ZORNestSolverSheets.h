// The fewest sheets of one kind that hold given items.

#pragma once

#include "ZORNestSolverSeparator.h"
#include "solver/layout/ZORNestSolverArea.h"

#include <functional>

namespace ZORNestSolver {

struct PackedItem
{
    size_t item = 0; // index in the list that was to be packed
    Stand stand;     // window: number of the sheet; position: on the sheet
};

struct Packing
{
    std::vector<PackedItem> placed;
    std::vector<size_t> rest; // what found no room
    size_t sheets = 0;
};

/// Packs items on equal sheets, first one after another, then by separating overlaps on fewer sheets.
class SheetSearch
{
public:
    /// \param items  the types of the items, in the order of their claims to a place
    SheetSearch(std::vector<std::shared_ptr<const ItemType>> types, std::vector<size_t> items, SheetArea area,
                size_t mostSheets, uint64_t seed);

    /// Receives the packing whenever it has become better.
    using Listener = std::function<void(const Packing& packing)>;
    void SetListener(Listener listener) { m_listener = std::move(listener); }

    /// Places items one after another on the first sheet with room.
    /// \param items  indices in the list that is to be packed
    void Add(Packing& packing, std::vector<size_t> items, const Budget& budget);
    /// Puts items that found no room on the sheets where overlaps can be removed, in their order. Beside obstacles
    /// even an empty sheet may need that.
    /// \param shortestTime  no end for lack of progress before, in seconds
    void AddRest(Packing& packing, double shortestTime, const Budget& budget);
    /// Empties sheets. Ends when a lower bound is reached, or for lack of progress.
    void RemoveSheets(Packing& packing, double shortestTime, const Budget& budget);

private:
    void Offer(const Packing& packing) const;
    std::shared_ptr<Problem> MakeProblem(const std::vector<PackedItem>& items, size_t sheets) const;
    Point GetOrigin(size_t sheet) const { return {m_pitch * static_cast<double>(sheet), 0}; }
    bool Separate(std::vector<PackedItem>& items, size_t sheets, const Budget& budget);
    std::vector<size_t> AddTo(Packing& packing, const std::vector<size_t>& items, size_t sheets,
                              const Budget& budget);
    bool AddOneOfRest(Packing& packing, size_t sheets, const Budget& budget);
    bool RemoveSheet(Packing& packing, const Budget& budget);
    PackedItem PutAnywhere(size_t item, size_t sheets);
    bool Fits(size_t item) const { return FindFitting(*m_types[m_items[item]], m_area.window).has_value(); }
    size_t GetFewestSheets(const std::vector<size_t>& items) const;

    std::vector<std::shared_ptr<const ItemType>> m_types;
    std::vector<size_t> m_items;
    SheetArea m_area;
    size_t m_mostSheets;
    double m_pitch = 0; // distance of the sheets in the plane
    Random m_random;
    Listener m_listener;
};

} // namespace ZORNestSolver
