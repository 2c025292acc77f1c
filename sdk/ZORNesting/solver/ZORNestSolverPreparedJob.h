// A nesting job made ready for the search.

#pragma once

#include "ZORNestSolverArea.h"
#include "ZORNestSolverBudget.h"
#include "ZORNestSolverItemType.h"

#include <memory>

namespace ZORNestSolver {

/// A job made ready: what can be nested, and on what.
struct PreparedJob
{
    explicit PreparedJob(const Job& job);
    /// Prepares what the time allows. Once the run is stopped or over, it goes on thoroughly only for a moment,
    /// then with the convex hulls of the items, and soon with none: those left over have no time left.
    PreparedJob(const Job& job, const Budget& budget);

    const Job& job;
    std::vector<std::shared_ptr<const ItemType>> types; // one for each item of the job
    std::vector<std::string> reasons;                   // why an item cannot be nested; "" if it can
    std::vector<SheetArea> areas;                       // one for each kind
    std::vector<std::string> remarks; // on parts whose outlines are changed and sheets without use
    std::vector<size_t> levels;       // the rank of each item's priority; 0 is the highest
    size_t levelCount = 0;

    /// In some allowed rotation, the defects left aside.
    bool FitsOn(size_t item, size_t kind) const { return m_fits[kind * types.size() + item]; }
    /// The area of so many items.
    double GetArea(const std::vector<size_t>& items) const;
    /// The same for each level of priority.
    std::vector<double> GetAreaOfLevels(const std::vector<size_t>& items) const;
    /// Of a sheet, or of a unit of length of a roll; where no kind has a cost, its area.
    double GetCost(size_t kind) const;

private:
    void AddItem(const Item& item, class Patience& patience);
    void AddKinds();
    void SetLevels();

    std::vector<bool> m_fits; // by kind and item
};

} // namespace ZORNestSolver
