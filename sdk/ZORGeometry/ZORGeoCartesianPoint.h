// A free point given by its coordinates.

#pragma once

#include <ZORGeometry/ZORGeoPoint.h>

#include <memory>

/// A point that depends on no other geometry.
/// Thread safety: thread of the container; objects may be shared read-only.
class ZORGEOMETRY_EXPORT ZORGeoCartesianPoint : public ZORGeoPoint
{
    Q_OBJECT

public:
    /// \param container  owner of the point from Initialize() on
    /// \param point      millimetres
    /// \throws ZORSysException "point is not finite"
    ZORGeoCartesianPoint(ZORGeoContainer* container, const ZORMathPoint& point);
    ~ZORGeoCartesianPoint() override;

    ZORMathPoint GetMathPoint() const override;

private:
    class Private;
    const std::unique_ptr<Private> d;
};
