// Arc-length arithmetic on a chain of straight segments.

#pragma once

#include <ZORMathematics/ZORMathSetOfPoints.h>

#include <memory>
#include <mutex>
#include <vector>

class ZORGeoChainTree;

/// Points with the arc lengths at which they lie. Knows nothing of curves.
class ZORGeoChain
{
public:
    struct Place
    {
        double distance = 0; // arc length from the first point
        ZORMathPoint point;
    };

    explicit ZORGeoChain(const ZORMathSetOfPoints& points);
    ~ZORGeoChain();

    const ZORMathSetOfPoints& GetPoints() const { return m_points; }
    double GetLength() const { return m_distances.empty() ? 0 : m_distances.back(); }

    /// The chain has points, the distance is finite.
    Place Locate(double distance) const;
    /// The nearest place, the first one of several. The chain has points, the point is finite. The first
    /// call of a long chain builds a search tree.
    Place Project(const ZORMathPoint& point) const;
    ZORMathSetOfPoints Cut(double start, double end) const;

private:
    Place OnSegment(qsizetype segment, double distance) const;
    const ZORGeoChainTree& GetTree() const;

    ZORMathSetOfPoints m_points;
    std::vector<double> m_distances; // arc length at each point, ascending
    mutable std::once_flag m_treeBuilt;
    mutable std::unique_ptr<const ZORGeoChainTree> m_tree;
};
