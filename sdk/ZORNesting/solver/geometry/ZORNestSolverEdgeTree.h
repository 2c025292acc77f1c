// Boxes of edges in the order of their outline, to find those in a region.

#pragma once

#include "ZORNestSolverGeometry.h"

#include <array>

namespace ZORNestSolver {

/// A binary tree over the edges of outlines, eight neighbors to a leaf. Neighbors in an outline are near to each
/// other, so that the tree needs no sorting, and a box that grows takes O(log n).
class EdgeTree
{
public:
    explicit EdgeTree(size_t edges)
    {
        while (m_leaves * kLeafSize < edges)
            m_leaves *= 2;
        m_boxes.resize(2 * m_leaves);
        m_count = edges;
    }

    /// Makes the boxes around the edge hold the segment from \a a to \a b as well.
    void Add(size_t edge, Point a, Point b)
    {
        for (size_t node = m_leaves + edge / kLeafSize; node > 0; node /= 2) {
            m_boxes[node].Add(a);
            m_boxes[node].Add(b);
        }
    }

    /// Checks whether the predicate holds for an edge whose leaf overlaps the box.
    template<class Predicate>
    bool HasAny(const Box& box, Predicate predicate) const
    {
        std::array<size_t, 2 * 64> open{};
        size_t count = 0;
        open[count++] = 1;
        while (count > 0) {
            const size_t node = open[--count];
            if (!m_boxes[node].Overlaps(box))
                continue;
            if (node < m_leaves) {
                open[count++] = 2 * node + 1;
                open[count++] = 2 * node;
                continue;
            }
            const size_t first = (node - m_leaves) * kLeafSize;
            const size_t end = std::min(first + kLeafSize, m_count);
            for (size_t edge = first; edge < end; ++edge)
                if (predicate(edge))
                    return true;
        }
        return false;
    }

private:
    static constexpr size_t kLeafSize = 8;

    size_t m_leaves = 1; // a power of two; node i has the children 2 i and 2 i + 1
    size_t m_count = 0;
    std::vector<Box> m_boxes;
};

} // namespace ZORNestSolver
