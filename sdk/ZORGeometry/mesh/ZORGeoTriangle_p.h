// Geometry of single triangles in 3-space.

#pragma once

#include <ZORMathematics/ZORMathPoint.h>

/// A place on a triangle abc: weightA * a + weightB * b + weightC * c with weights of sum 1.
struct ZORGeoTrianglePlace
{
    ZORMathPoint point;
    double weightB = 0;
    double weightC = 0;
    double squaredDistance = 0; // from the point asked for
};

/// The place of triangle abc nearest to p. A degenerate triangle is the segment or point that it is; thin
/// ones lose no accuracy. Never a NaN for finite input.
///
/// Regions of well-shaped triangles after C. Ericson, Real-Time Collision Detection, Morgan Kaufmann 2005,
/// section 5.1.5.
ZORGeoTrianglePlace ZorGeoClosestOnTriangle(const ZORMathPoint& p, const ZORMathPoint& a,
                                            const ZORMathPoint& b, const ZORMathPoint& c);

/// A ray prepared for intersections with many triangles: no gaps between triangles that share an edge.
///
/// S. Woop, C. Benthin, I. Wald: Watertight Ray/Triangle Intersection, JCGT 2(1), 2013; in double precision.
class ZORGeoRay
{
public:
    /// \param direction  finite and not zero, of any length
    ZORGeoRay(const ZORMathPoint& origin, const ZORMathVector& direction);

    struct Hit
    {
        double parameter = 0; // the place is origin + parameter * direction
        double weightB = 0;
        double weightC = 0;
    };
    /// Hits both faces and the border.
    /// \return false also for a triangle seen edge-on or degenerate
    bool Intersect(const ZORMathPoint& a, const ZORMathPoint& b, const ZORMathPoint& c, Hit& hit) const;

    const double (&GetOrigin() const)[3] { return m_origin; }
    const double (&GetDirection() const)[3] { return m_direction; }

private:
    double m_origin[3];
    double m_direction[3];
    double m_shear[3];
    int m_x = 0; // axes permuted so that the direction is largest along m_z
    int m_y = 1;
    int m_z = 2;
};
