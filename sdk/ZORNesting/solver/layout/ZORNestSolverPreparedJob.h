// A nesting job made ready for the search.

#pragma once

#include "ZORNestSolverArea.h"
#include "ZORNestSolverItemType.h"
#include "solver/base/ZORNestSolverBudget.h"

#include <limits>
#include <memory>
#include <optional>

namespace ZORNestSolver {

/// A job made ready: what can be nested, and on what.
struct PreparedJob
{
    explicit PreparedJob(const Job& job);
    /// Prepares what the time allows. Once the run is stopped or over, it goes on thoroughly only for a moment,
    /// then with the convex hulls of the items, and soon with none: those left over have no time left. The same holds
    /// for sheets and their defects, and for the question what fits on which.
    PreparedJob(const Job& job, const Budget& budget);

    const Job& job;
    std::vector<std::shared_ptr<const ItemType>> types; // one for each item of the job
    std::vector<std::string> reasons;                   // why an item cannot be nested; "" if it can
    std::vector<SheetArea> areas;                       // one for each kind
    std::vector<std::string> remarks; // on parts whose outlines are changed and sheets without use
    std::vector<size_t> levels;       // the rank of each item's priority; 0 is the highest
    size_t levelCount = 0;

    /// In some allowed rotation, the defects left aside.
    bool FitsOn(size_t item, size_t kind) const
    {
        return m_rows[kind] != kNoRow && m_fits[m_rows[kind]][item];
    }
    /// Drops kinds that cannot be used, and all but the first of those with the same window.
    std::vector<size_t> DropEqual(const std::vector<size_t>& kinds) const;
    /// The area of so many items.
    double GetArea(const std::vector<size_t>& items) const;
    /// The same for each level of priority.
    std::vector<double> GetAreaOfLevels(const std::vector<size_t>& items) const;
    /// Of a sheet, or of a unit of length of a roll; where no kind has a cost, its area.
    double GetCost(size_t kind) const;

private:
    static constexpr size_t kNoRow = std::numeric_limits<size_t>::max();

    void AddItem(const Item& item, class Patience& patience);
    void AddKinds(class Patience& patience);
    SheetArea MakeArea(const SheetKind& kind, SheetEffort& effort, class Patience& patience) const;
    void AddRemarks(const SheetKind& kind, const SheetArea& area);
    std::optional<std::vector<bool>> FindFits(const Box& window, class Patience& patience);
    void SetAsideUndecided();
    void SetLevels();

    std::vector<std::vector<bool>> m_fits; // by item, for each window of another size or position
    std::vector<size_t> m_rows;            // of the kinds in these
    bool m_isCutShort = false;             // nobody has looked at some windows
    std::vector<bool> m_isUndecided;       // nobody has looked at all rotations of an item
};

} // namespace ZORNestSolver
