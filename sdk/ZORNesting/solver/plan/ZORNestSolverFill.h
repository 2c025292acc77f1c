// Fills the sheets of a mix of kinds with items.

#pragma once

#include "ZORNestSolverJobPlan.h"
#include "solver/search/ZORNestSolverJigsaw.h"
#include "solver/search/ZORNestSolverSheets.h"
#include "solver/search/ZORNestSolverStripRun.h"

#include <functional>

namespace ZORNestSolver {

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

/// Receives valid sheets on the way; what is not on them has no place yet. Called from several threads.
using SheetsListener = std::function<void(const std::vector<NestedSheet>& sheets)>;

/// Fills sheets for one stack size.
class Filler
{
public:
    /// \param listener  receives all sheets whenever those of one kind have become better in Follow(); may be empty
    Filler(const PreparedJob& prepared, int stack, uint64_t seed, SheetsListener listener);

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
    void OfferRoll(NestedSheet roll, const Plan& before) const;
    void OfferSheets(const Mix::Part& part, const Packing& packing, const Plan& before) const;
    void AddPacking(const Mix::Part& part, const Packing& packing, Plan& plan) const;
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
    SheetsListener m_listener;
};

} // namespace ZORNestSolver
