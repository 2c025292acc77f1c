// A curve that runs over a triangulated surface.

#pragma once

#include <ZORGeometry/ZORGeoCurve.h>
#include <ZORGeometry/ZORGeoLocationOnSurface.h>
#include <ZORGeometry/ZORGeoReference.h>

#include <QList>

#include <memory>

class ZORGeoSurface;

/// A chain of straight segments between places of one surface. Holds a counted reference to the surface and
/// keeps its points when the surface is destroyed.
///
/// The curves that the SDK computes keep every segment within one triangle: the segment from location i to
/// i + 1 lies in the triangle of location i, which also holds location i + 1, on its border as a rule.
///
/// SetLocations() changes the curve in place, see ZORGeoGeometry: points on it, bodies of it and features
/// around them follow.
///
/// Thread safety: thread of the container; objects may be shared read-only.
class ZORGEOMETRY_EXPORT ZORGeoCurveOnSurface : public ZORGeoCurve
{
    Q_OBJECT

public:
    /// The container is that of the surface, which owns the curve from Initialize() on. A curve without
    /// locations has none: it can be made, but not initialized.
    /// \param locations  places of one surface, in the order of the curve, any number of them
    /// \param isClosed   true: ends where it starts; the first location is appended unless the last one is
    ///                   at the same point, to 1e-9 of the length
    /// \throws ZORSysException "location %1 of the curve is not on a surface", "location %1 of the curve is on
    ///         another surface", counted from 0, "point %1 of the curve is not finite or too far away"
    ZORGeoCurveOnSurface(const QList<ZORGeoLocationOnSurface>& locations, bool isClosed);
    ~ZORGeoCurveOnSurface() override;

    /// Replaces the locations; the curve stays the same object on the same surface. O(n), and what its
    /// followers cost. Locations on the curve that were taken before are out of date afterwards.
    /// \param locations  one or more locations on the surface of the curve, in the order of the curve; a
    ///                   closed curve ends with the location it starts with
    /// \throws ZORSysException "the curve has no surface", "the curve needs a location", and as the
    ///         constructor; the curve is unchanged then
    void SetLocations(const QList<ZORGeoLocationOnSurface>& locations);

    /// Null for a curve without locations, and once the surface has been destroyed.
    const ZORGeoSurface* GetSurface() const;
    /// One for each point of the curve; none once the surface has been destroyed.
    QList<ZORGeoLocationOnSurface> GetLocations() const;
    /// Whether the curve ends where it starts, to 1e-9 of its length; false for fewer than two points.
    bool IsClosed() const;

protected:
    /// A curve whose surface has been destroyed.
    /// \throws ZORSysException "point %1 of the curve is not finite or too far away", counted from 0
    ZORGeoCurveOnSurface(ZORGeoContainer* container, const ZORMathSetOfPoints& points);

private:
    friend struct ZORGeoCurveOnSurfaceStorage;

    class Private;
    const std::unique_ptr<Private> d;
};
