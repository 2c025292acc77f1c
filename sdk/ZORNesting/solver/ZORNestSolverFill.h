// Fills the sheets of a mix of kinds with items.

#pragma once

#include "ZORNestSolverJigsaw.h"
#include "ZORNestSolverSheets.h"
#include "ZORNestSolverStripRun.h"

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
    std::vector<std::string> remarks;
    std::vector<size_t> levels; // the rank of each item's priority; 0 is the highest
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

/// Sheets filled with items, and the items that found no sheet.
struct Plan
{
    std::vector<NestedSheet> sheets;
    std::vector<size_t> rest; // items of the job, one entry for each copy
    double cost = 0;
    std::vector<double> restAreas; // by priority, the highest first

    /// Less left over at the highest priority at which the plans differ; then the lower cost.
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

/// How thoroughly sheets are filled.
struct FillEffort
{
    int threads = 1;
    double shortestTime = 0; // no end for lack of progress before, in seconds of the budget's clock
    bool quick = false;      // items are only placed one after another
    bool byPriority = false; // items of a lower priority take nothing away from those of a higher one
};

/// Fills sheets for one stack size.
class Filler
{
public:
    Filler(const PreparedJob& prepared, int stack, uint64_t seed);

    /// \param items  items of the job, one entry for each copy, in the order of their claims; with an effort
    ///               by priority, descending by priority
    Plan Follow(const Mix& mix, const std::vector<size_t>& items, const FillEffort& effort,
                const Budget& budget) const;
    /// Pushes the items of a sheet to the left, so that what remains of it can be used again.
    /// \param shortestTime  no end for lack of progress before, in seconds of the budget's clock
    void PackSheet(NestedSheet& sheet, double shortestTime, const Budget& budget) const;

private:
    void FillSheets(const Mix::Part& part, Plan& plan, const FillEffort& effort, const Budget& budget) const;
    size_t CoverSheets(const Mix::Part& part, Plan& plan, const FillEffort& effort,
                       const Budget& budget) const;
    Packing Pack(SheetSearch& search, const std::vector<size_t>& items, const FillEffort& effort,
                 const Budget& budget) const;
    void FillRoll(size_t kind, Plan& plan, const FillEffort& effort, const Budget& budget) const;
    std::vector<Stand> CoverRoll(size_t kind, const std::vector<size_t>& items, const Budget& budget) const;
    std::shared_ptr<Problem> MakeProblem(size_t kind, std::vector<size_t> items) const;
    void KeepApart(NestedSheet& sheet, std::vector<size_t>& removed) const;
    void SetCost(Plan& plan) const;
    bool AreApart(size_t kind, const std::vector<Placement>& placements) const;
    std::vector<Placement> GetPlacements(const std::vector<size_t>& items,
                                         const std::vector<Stand>& stands) const;

    const PreparedJob& m_prepared;
    const Job& m_job;
    int m_stack;
    uint64_t m_seed;
};

} // namespace ZORNestSolver
