// The cheapest mix of sheet kinds, by local moves.

#pragma once

#include "ZORNestSolverFill.h"

#include <set>

namespace ZORNestSolver {

/// Changes the best mix by one sheet after another. Moves: a sheet of another kind in place of one; one in
/// place of two; a sheet more or less; a roll for what is left, another one, or none. The cheapest by area
/// are tried first, and only those that can be cheaper than the best.
class MixSearch
{
public:
    /// \param items  items of the job, one entry for each copy, in the order of their claims
    /// \param stock  of each kind
    MixSearch(const PreparedJob& prepared, const Filler& filler, const std::vector<size_t>& items,
              const std::vector<size_t>& stock);

    /// Continues from this plan if it is better. Its sheets are not searched again.
    void Offer(const Plan& plan);
    /// The same for a plan that was only constructed: a search on its sheets may still find a better one.
    void OfferDraft(const Plan& plan);
    /// Until no move helps, or the budget is over.
    void Improve(const FillEffort& effort, const Budget& budget);
    /// Fills the sheets of the best mix once more, with all that is left of the budget.
    void Finish(const FillEffort& effort, const Budget& budget);

    const Plan& GetBest() const { return m_best; }

private:
    using Counts = std::vector<size_t>; // sheets of each kind; of rolls at most one is used
    struct Move
    {
        Counts counts;
        double bound = 0;    // no plan with these sheets costs less
        double estimate = 0; // what they cost if they are filled like those of the best plan
    };

    Counts Count(const Plan& plan) const;
    Mix MakeMix(const Counts& counts) const;
    double GetBound(const Counts& counts, double area) const;
    double GetDensity() const;
    void AddMove(const Counts& counts, std::vector<Move>& moves) const;
    void AddSheetMoves(const Counts& from, std::vector<Move>& moves) const;
    void AddRollMoves(const Counts& from, std::vector<Move>& moves) const;
    bool IsRoll(size_t kind) const { return m_prepared.job.kinds[kind].IsRoll(); }

    const PreparedJob& m_prepared;
    const Filler& m_filler;
    const std::vector<size_t>& m_items;
    const std::vector<size_t>& m_stock;
    double m_area = 0; // of the items
    Plan m_best;
    bool m_hasBest = false;
    std::set<Counts> m_tried;
};

} // namespace ZORNestSolver
