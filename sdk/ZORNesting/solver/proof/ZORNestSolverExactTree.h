// Boxes of boxes.
//
// Part of the proof, whose geometry stays apart from that of the search on purpose: a fault that both share would
// hide from the proof.

#pragma once

#include "solver/geometry/ZORNestSolverGeometry.h"

namespace ZORNestSolver::Exact {

/// The gap between two boxes; 0 where they overlap.
inline double GetGap(const Box& a, const Box& b)
{
    const double x = std::max({0.0, a.min.x - b.max.x, b.min.x - a.max.x});
    const double y = std::max({0.0, a.min.y - b.max.y, b.min.y - a.max.y});
    return x > 0 && y > 0 ? std::hypot(x, y) : std::max(x, y);
}

/// Boxes in the order of a chain, whose neighbors lie close together: each four share a box on the next
/// level.
class BoxTree
{
public:
    BoxTree() = default;
    explicit BoxTree(std::vector<Box> leaves);

    bool IsEmpty() const { return m_levels.empty(); }
    const Box& GetBox() const { return m_levels.back().front(); }
    const Box& GetLeaf(size_t i) const { return m_levels.front()[i]; }

    /// Calls visit(leaf) in ascending order for the leaves in whose boxes, and those above, mayHold(box) is
    /// true.
    template<class Test, class Visit>
    void ForEach(const Test& mayHold, const Visit& visit) const
    {
        if (!IsEmpty())
            Descend(m_levels.size() - 1, 0, mayHold, visit);
    }

    /// Calls visit(leaf, other leaf) for the pairs of leaves whose boxes come within \a distance, until it
    /// returns false.
    /// \return whether it never did
    template<class Visit>
    bool ForEachPair(const BoxTree& other, double distance, const Visit& visit) const
    {
        return IsEmpty() || other.IsEmpty()
               || Meet(m_levels.size() - 1, 0, other, other.m_levels.size() - 1, 0, distance, visit);
    }

private:
    static constexpr size_t kBranches = 4;

    size_t GetEnd(size_t level, size_t node) const
    {
        return std::min((node + 1) * kBranches, m_levels[level - 1].size());
    }

    template<class Test, class Visit>
    void Descend(size_t level, size_t node, const Test& mayHold, const Visit& visit) const
    {
        if (!mayHold(m_levels[level][node]))
            return;
        if (level == 0)
            return visit(node);
        for (size_t child = node * kBranches; child < GetEnd(level, node); ++child)
            Descend(level - 1, child, mayHold, visit);
    }

    template<class Visit>
    bool Meet(size_t level, size_t node, const BoxTree& other, size_t otherLevel, size_t otherNode,
              double distance, const Visit& visit) const
    {
        if (GetGap(m_levels[level][node], other.m_levels[otherLevel][otherNode]) > distance)
            return true;
        if (level == 0 && otherLevel == 0)
            return visit(node, otherNode);
        if (level >= otherLevel) {
            for (size_t child = node * kBranches; child < GetEnd(level, node); ++child)
                if (!Meet(level - 1, child, other, otherLevel, otherNode, distance, visit))
                    return false;
            return true;
        }
        for (size_t child = otherNode * kBranches; child < other.GetEnd(otherLevel, otherNode); ++child)
            if (!Meet(level, node, other, otherLevel - 1, child, distance, visit))
                return false;
        return true;
    }

    std::vector<std::vector<Box>> m_levels; // the leaves first
};

} // namespace ZORNestSolver::Exact
