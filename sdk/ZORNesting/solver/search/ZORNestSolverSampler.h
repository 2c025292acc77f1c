// Random places for items, some of them where items fit well.

#pragma once

#include "solver/base/ZORNestSolverRandom.h"
#include "solver/layout/ZORNestSolverLayout.h"

#include <optional>
#include <unordered_map>

namespace ZORNestSolver {

/// Samples poses and places inside the windows of a layout. Holds scratch memory: one for each layout and thread.
class Sampler
{
public:
    Sampler(const Layout& layout, Random& random);

    /// Returns the shape of an item in this rotation and hand; of a free angle, valid until the next call.
    const Shape& GetShape(size_t item, const Stand& stand);
    /// Moves an item into its window; one that is too large goes to the lower left.
    void Clamp(size_t item, Stand& stand);
    /// Checks whether any item has holes.
    bool HasHoles() const { return !m_holders.empty(); }

    /// Returns a random place in the window, in a random rotation; none if the item does not fit.
    std::optional<Stand> Sample(size_t item, uint32_t window);
    /// Returns a random place around another one of the item, in the same rotation.
    std::optional<Stand> SampleNear(size_t item, const Stand& centre);
    /// Returns a place where an edge of the item lies along an edge of another one, with an end at its end; where
    /// none can lie so, a corner at a corner. None where the window is in the way.
    std::optional<Stand> SampleMatch(size_t item);
    /// Returns a place in some hole of another item that may be large enough; none where there is none. Some item has
    /// to have holes.
    std::optional<Stand> SampleInHole(size_t item);

private:
    /// The rotations in which a family of free angles fits windows of a size.
    struct FittingAngles
    {
        double length = 0, width = 0;
        std::vector<AngleRange> ranges;
    };

    std::optional<Stand> SampleFitting(size_t item, Stand stand);
    std::optional<Stand> SampleIn(size_t item, Stand stand, const Box* around);
    size_t PickEdgeAgainst(size_t item, Stand& stand, Point direction);

    const Layout& m_layout;
    Random& m_random;
    std::vector<size_t> m_holders; // the items with holes
    std::unordered_map<const PoseClass*, FittingAngles> m_fittings;
    Shape m_scratch;
    const Shape* m_scratchBase = nullptr;
    double m_scratchAngle = 0;
    bool m_scratchMirrored = false;
};

} // namespace ZORNestSolver
