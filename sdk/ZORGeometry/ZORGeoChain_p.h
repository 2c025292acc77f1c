// Arc-length arithmetic on a chain of straight segments.

#pragma once

#include <ZORMathematics/ZORMathSetOfPoints.h>

#include <vector>

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

    const ZORMathSetOfPoints& GetPoints() const { return m_points; }
    double GetLength() const { return m_distances.empty() ? 0 : m_distances.back(); }

    /// The chain has points, the distance is finite.
    Place Locate(double distance) const;
    /// The chain has points, the point is finite.
    Place Project(const ZORMathPoint& point) const;
    ZORMathSetOfPoints Cut(double start, double end) const;

private:
    Place OnSegment(qsizetype segment, double distance) const;

    ZORMathSetOfPoints m_points;
    std::vector<double> m_distances; // arc length at each point, ascending
};
