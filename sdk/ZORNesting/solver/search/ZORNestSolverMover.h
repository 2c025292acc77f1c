// Finds a better place for one item.

#pragma once

#include "solver/base/ZORNestSolverRandom.h"
#include "solver/layout/ZORNestSolverLayout.h"

#include <optional>
#include <unordered_map>

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

    /// The rotations in which a family of free angles fits windows of a size.
    struct FittingAngles
    {
        double length = 0, width = 0;
        std::vector<AngleRange> ranges;
    };

    const Shape& GetShape(size_t item, const Stand& stand);
    double Evaluate(size_t item, const Stand& stand, double bound);
    std::optional<Stand> Sample(size_t item, uint32_t window);
    std::optional<Stand> SampleFitting(size_t item, Stand stand);
    void MoveToSide(size_t item, Stand& stand, int sample);
    void SlideToContact(size_t item, Stand& stand);
    bool SlideToCorner(size_t item, Stand& stand, double step);
    std::optional<Stand> SampleInHole(size_t item);
    size_t PickEdgeAgainst(size_t item, Stand& stand, Point direction);
    std::optional<Stand> SampleMatch(size_t item);
    std::optional<Stand> SampleNear(size_t item, const Stand& centre);
    std::optional<Stand> SampleIn(size_t item, Stand stand, const Box* around);
    void Offer(size_t item, const Stand& stand, size_t keep);
    void OfferSamples(size_t item, const MoveEffort& effort);
    void Descend(size_t item, Candidate& candidate, const Steps& steps);
    Stand Shifted(size_t item, const Stand& stand, Point by, double turn);
    void Clamp(size_t item, Stand& stand);

    Layout& m_layout;
    Random& m_random;
    std::vector<size_t> m_holders; // the items with holes
    std::vector<Candidate> m_best; // ascending by loss
    std::unordered_map<const PoseClass*, FittingAngles> m_fittings;
    Shape m_scratch;
    const Shape* m_scratchBase = nullptr;
    double m_scratchAngle = 0;
    bool m_scratchMirrored = false;
};

} // namespace ZORNestSolver
