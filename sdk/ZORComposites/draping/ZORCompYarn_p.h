// Yarn that runs straight over a surface.

#pragma once

#include <ZORComposites/ZORCompStrategyParameters.h>
#include <ZORGeometry/ZORGeoLocationOnSurface.h>
#include <ZORMathematics/ZORMathVector.h>

#include <QList>

/// Steps of equal straight length along a curve over a surface that does not depend on other yarns: a geodesic or
/// a curve of constant angle.
///
/// The curve is computed as far as it is needed, so that it may run around a closed surface without an end.
class ZORCompYarn
{
public:
    enum class Course { Forward, Backward };

    /// The surface is that of the start location.
    /// \param angle  radians, counter-clockwise from the direction about the normal of the surface
    ZORCompYarn(ZORCompStrategyParameters::Generators kind, const ZORGeoLocationOnSurface& start,
                const ZORMathVector& direction, double angle, Course course, double step);

    /// The first place of the curve, after those it has returned, that is one step from the last of them.
    /// \param[out] location  unchanged without one
    /// \return false where the curve ends before
    bool Next(ZORGeoLocationOnSurface& location);

private:
    void Compute(double length);
    bool FindLeave(ZORGeoLocationOnSurface& location);
    bool Lengthen();

    const ZORCompStrategyParameters::Generators m_kind;
    const ZORMathVector m_direction;
    const double m_angle;
    const bool m_isBackward;
    const double m_step;
    const ZORGeoLocationOnSurface m_start;
    QList<ZORGeoLocationOnSurface> m_locations; // segment i, from i to i + 1, lies within one triangle
    bool m_isOpenEnded = true;                  // the curve goes on behind the last location
    double m_length;                            // millimetres, of the curve as computed
    ZORGeoLocationOnSurface m_last;             // returned last
    qsizetype m_segment = 0;                    // that holds it
};
