// A point tied to a surface.

#pragma once

#include <ZORGeometry/ZORGeoLocationOnSurface.h>
#include <ZORGeometry/ZORGeoPoint.h>
#include <ZORGeometry/ZORGeoReference.h>

#include <memory>

class ZORGeoSurface;

/// A point at a place of a surface. Holds a counted reference to the surface and keeps its position when the
/// surface is destroyed.
///
/// Thread safety: thread of the container; objects may be shared read-only.
class ZORGEOMETRY_EXPORT ZORGeoPointOnSurface : public ZORGeoPoint
{
    Q_OBJECT

public:
    /// The container is that of the surface, which owns the point from Initialize() on.
    /// \throws ZORSysException "location is not on a surface" for a null location, such as the projection on
    ///         a surface without triangles
    explicit ZORGeoPointOnSurface(const ZORGeoLocationOnSurface& location);
    ~ZORGeoPointOnSurface() override;

    ZORMathPoint GetMathPoint() const override;
    /// Null once the surface has been destroyed.
    const ZORGeoSurface* GetSurface() const;
    /// Null once the surface has been destroyed.
    ZORGeoLocationOnSurface GetLocationOnSurface() const;

private:
    friend struct ZORGeoPointOnSurfaceStorage;
    /// A point whose surface has been destroyed.
    ZORGeoPointOnSurface(ZORGeoContainer* container, const ZORMathPoint& point);

    class Private;
    const std::unique_ptr<Private> d;
};
