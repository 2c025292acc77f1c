// Base of the point geometries.

#pragma once

#include <ZORGeometry/ZORGeoGeometry.h>
#include <ZORMathematics/ZORMathPoint.h>

/// A point of 3-space, free or tied to another geometry.
/// Thread safety: thread of the container; objects may be shared read-only.
class ZORGEOMETRY_EXPORT ZORGeoPoint : public ZORGeoGeometry
{
    Q_OBJECT

public:
    ~ZORGeoPoint() override;

    /// The position, millimetres.
    virtual ZORMathPoint GetMathPoint() const = 0;

protected:
    using ZORGeoGeometry::ZORGeoGeometry;
};
