// A chain of straight segments through given points.

#pragma once

#include <ZORGeometry/ZORGeoCurve.h>
#include <ZORMathematics/ZORMathSetOfPoints.h>

/// A curve given by its points.
/// Thread safety: thread of the container; objects may be shared read-only.
class ZORGEOMETRY_EXPORT ZORGeoPolyline : public ZORGeoCurve
{
    Q_OBJECT

public:
    /// \param container      owner of the polyline from Initialize() on
    /// \param points         millimetres, any number of them, none included
    /// \param keepAllPoints  true: the points are kept exactly as given; false: a point equal to the one
    ///                       before it is left out
    /// \throws ZORSysException "point %1 of the curve is not finite or too far away", counted from 0
    ZORGeoPolyline(ZORGeoContainer* container, const ZORMathSetOfPoints& points, bool keepAllPoints);
    ~ZORGeoPolyline() override;
};
