// Finds a better place for one item.

#pragma once

#include "ZORNestSolverSampler.h"

namespace ZORNestSolver {

/// How thoroughly to look for a place.
struct MoveEffort
{
    int everywhere = 50; // samples over all sheets
    int nearby = 25;     // samples around the present place
    int matching = 15;   // samples with an edge along an edge of another item
    int inHoles = 10;    // samples in holes of other items
    size_t refined = 3;  // so many of the best are improved
};

/// Samples places for an item and improves the best ones by descent along single axes. Holds scratch
/// memory: one for each layout and thread.
class Mover
{
public:
    Mover(Layout& layout, Random& random);

    /// A place of less weighted loss than the present one, or the present one.
    Stand FindBetter(size_t item, const MoveEffort& effort);
    /// A free place in the window as far left as found, then as low; none where no sample was free.
    /// \param count  number of samples
    std::optional<Stand> FindFree(size_t item, uint32_t window, int count);

private:
    struct Candidate
    {
        Stand stand;
        double loss = 0;
    };
    /// Step lengths of a descent as fractions of the item's smaller side, and in radians.
    struct Steps
    {
        double first, last;
        double firstTurn, lastTurn;
    };

    double Evaluate(size_t item, const Stand& stand, double bound);
    void MoveToSide(size_t item, Stand& stand, int sample);
    void SlideToContact(size_t item, Stand& stand);
    bool SlideToCorner(size_t item, Stand& stand, double step);
    void Offer(size_t item, const Stand& stand, size_t keep);
    void OfferSamples(size_t item, const MoveEffort& effort);
    void Descend(size_t item, Candidate& candidate, const Steps& steps);
    Stand Shifted(size_t item, const Stand& stand, Point by, double turn);

    Layout& m_layout;
    Random& m_random;
    Sampler m_sampler;
    std::vector<Candidate> m_best; // ascending by loss
};

} // namespace ZORNestSolver
