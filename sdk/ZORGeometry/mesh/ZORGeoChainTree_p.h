// Bounding volume hierarchy of a chain of segments.

#pragma once

#include <ZORMathematics/ZORMathBoundingBox.h>
#include <ZORMathematics/ZORMathSetOfPoints.h>

#include <vector>

/// Finds the segment of a chain nearest to a point.
///
/// The segments stay in the order of the chain, which keeps neighbours together: every node covers a run of
/// them, halved from level to level. Built in O(n), 48 bytes for every eight segments and level.
class ZORGeoChainTree
{
public:
    /// \param points  two or more
    explicit ZORGeoChainTree(const ZORMathSetOfPoints& points);

    struct Nearest
    {
        qsizetype segment = 0; // from point `segment` to the next one
        double parameter = 0;  // 0 ... 1 within the segment
        ZORMathPoint point;
        double squaredDistance = 0;
    };
    /// Of several places at the same distance the first. \a point is finite.
    Nearest FindNearest(const ZORMathPoint& point) const;

private:
    static constexpr qsizetype kLeafSize = 8;

    void TestLeaf(size_t leaf, const ZORMathPoint& point, Nearest& nearest) const;

    const ZORMathSetOfPoints m_points;
    size_t m_leafCount = 1;                  // a power of two; the last ones may be empty
    std::vector<ZORMathBoundingBox> m_boxes; // the root at 1, the children of i at 2 i and 2 i + 1
};
