// Circle parallel to the x-y plane.

#pragma once

#include <ZORMathematics/ZORMathPoint.h>

/// A circle parallel to the x-y plane, with angles in radians: counter-clockwise seen from above, 0 in
/// the direction of x.
///
/// Thread safety: reentrant; objects may be shared read-only.
class ZORMATHEMATICS_EXPORT ZORMathCircle
{
public:
    /// Outcome of ProjectPoint().
    enum Projection : int {
        OnCircle = 0,   ///< the point lies on the circle
        OffCircle = 1,  ///< it lies farther from the circle than the tolerance
        NoDirection = 2 ///< every point of the circle is as near: it lies over the centre, or is not finite
    };
    /// Largest distance of a point that lies on the circle, millimetres.
    static constexpr double tolerance = 0.001;

    /// Radius 0 about the origin.
    ZORMathCircle() = default;
    /// \param radius  taken without its sign
    ZORMathCircle(const ZORMathPoint& center, double radius);

    ZORMathPoint GetCenter() const { return m_center; }
    double GetRadius() const { return m_radius; }

    /// Finds the angle of the point of the circle that is nearest to \a point.
    /// \param parameter  the angle, 0 up to but not including 2 pi; unchanged for NoDirection
    /// \return a code of Projection: 0 when the point lies on the circle
    int ProjectPoint(const ZORMathPoint& point, double& parameter) const;
    /// The part of a full turn that an angle stands for: 0 up to but not including 1; 0 unless it is finite.
    double GetParam(double parameter) const;
    /// The point at an angle.
    ZORMathPoint Evaluate(double parameter) const;

    friend bool operator==(const ZORMathCircle&, const ZORMathCircle&) = default;
    /// (centre, radius)
    friend ZORMATHEMATICS_EXPORT void ZorTraceAppend(QByteArray& out, const ZORMathCircle& circle);

private:
    ZORMathPoint m_center;
    double m_radius = 0;
};
