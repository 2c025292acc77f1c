// Which sheets to use, and what to nest on them.

#pragma once

#include "ZORNestSolverSheets.h"
#include "ZORNestSolverStrip.h"

namespace ZORNestSolver {

/// A job made ready: what can be nested, and on what.
struct PreparedJob
{
    explicit PreparedJob(const Job& job);

    const Job& job;
    std::vector<std::shared_ptr<const ItemType>> types; // one for each item of the job
    std::vector<std::string> reasons;                   // why an item cannot be nested; "" if it can
    std::vector<SheetArea> areas;                       // one for each kind
    std::vector<std::string> remarks;

    /// In some allowed rotation, the defects left aside.
    bool FitsOn(size_t item, size_t kind) const;
    bool IsFree() const; // no kind has a cost: area is the cost
};

/// Sheets filled with items, and the items that found no sheet.
struct Plan
{
    std::vector<NestedSheet> sheets;
    std::vector<size_t> rest; // items of the job, one entry for each copy
    double cost = 0;
    double restArea = 0;

    bool IsBetterThan(const Plan& other) const;
};

/// The order in which kinds are used up, and the most sheets of each.
struct Mix
{
    struct Part
    {
        size_t kind;
        size_t most;
    };
    std::vector<Part> parts;
};

/// Fills sheets for one stack size.
class Planner
{
public:
    Planner(const PreparedJob& prepared, int stack, int threads, double shortestTime);

    /// \param items  items of the job, one entry for each copy
    /// \param stock  of each kind, in sheets of this stack
    Plan Run(std::vector<size_t> items, const std::vector<size_t>& stock, const Budget& budget);

private:
    Plan Follow(const Mix& mix, const std::vector<size_t>& items, const Budget& budget, bool quick);
    Plan FindBest(const std::vector<Mix>& mixes, const std::vector<size_t>& items, const Budget& budget);
    std::vector<Mix> GetMixes(const std::vector<size_t>& items, const std::vector<size_t>& stock,
                              const Mix& first) const;
    void FillSheets(const Mix::Part& part, Plan& plan, const Budget& budget, bool quick);
    void FillRoll(size_t kind, Plan& plan, const Budget& budget, bool quick);
    void Order(std::vector<size_t>& items, bool byPriority) const;
    void KeepApart(NestedSheet& sheet, std::vector<size_t>& removed) const;
    void SetCost(Plan& plan) const;
    double GetUsedLength(size_t kind, const std::vector<Placement>& placements) const;
    std::vector<Placement> GetPlacements(const std::vector<size_t>& items,
                                         const std::vector<Stand>& stands) const;

    const PreparedJob& m_prepared;
    const Job& m_job;
    int m_stack;
    int m_threads;
    double m_shortestTime;
    uint64_t m_seed;
};

} // namespace ZORNestSolver
