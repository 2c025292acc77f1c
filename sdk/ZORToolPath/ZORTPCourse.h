// Feature that is a course of a fibre placement machine.

#pragma once

#include <ZORFeature/ZORFeatGeometry.h>
#include <ZORGeometry/ZORGeoLocationOnSurface.h>
#include <ZORToolPath/ZORToolPathGlobal.h>
#include <ZORTopology/ZORTopBody.h>

#include <QList>

#include <functional>
#include <memory>

class ZORGeoCurveOnSurface;
class ZORGeoSurface;

/// A strip of tows that is laid on a surface: a centre line on the surface and a width. The shape of the
/// feature is a body of dimension 1 around the centre line.
///
/// Ownership.  The course makes the centre line and the body of its own, registers them with its container, and
///             takes them out again when it is removed or destroyed, whatever their reference counts are. It
///             holds a reference to the body, which holds one to the centre line, and that to the surface:
///             nobody can remove them as unused while the course is there.
/// Changes.    The course changes in place: center line and body stay the same objects with their names,
///             references and positions in the container. Points on the center line, bodies of it and features
///             around it follow, see ZORGeoGeometry. BodyChanged() reports it.
/// Lifetime.   When somebody destroys the body or the centre line all the same, the course stays, without a
///             body or with an empty one. When the surface is destroyed the points of the centre line remain.
///
/// Thread safety: thread of the container; objects may be shared read-only.
class ZORTOOLPATH_EXPORT ZORTPCourse : public ZORFeatGeometry
{
    Q_OBJECT

public:
    /// A course along a copy of a curve.
    /// \param folder      the feature the course lies in; null leaves it without a container
    /// \param centerLine  not kept
    /// \param width       of the strip, millimeters
    /// \throws ZORSysException "centre line is null", and as the other constructor
    ZORTPCourse(ZORFeatObject* folder, const ZORGeoCurveOnSurface* centerLine, double width);
    /// A course through places of a surface. Where two of them are not in one triangle the centre line takes a
    /// shortest way from one to the next.
    /// \param locations  two or more places of one surface
    /// \throws ZORSysException "a course needs two places", "width is not a positive number", "surface is in
    ///         another container", and as ZORGeoCurveOnSurfaceSmoother::Connect()
    ZORTPCourse(ZORFeatObject* folder, const QList<ZORGeoLocationOnSurface>& locations, double width);
    ~ZORTPCourse() override;

    /// Registers the centre line, its body and then the course, so that receivers of the container's signals
    /// meet the course complete.
    /// \throws ZORSysException as ZORFeatObject::Initialize(); centre line and body then go with the course
    void Initialize() override;

    /// Of dimension 1, from construction on; null once somebody has destroyed it.
    ZORTopBody* GetBody() const override;
    QList<ZORGeoGeometry*> GetOwnedGeometry() const override;
    /// From construction on; null once somebody has destroyed it.
    const ZORGeoCurveOnSurface* GetCenterLine() const;
    /// Null once it has been destroyed.
    const ZORGeoSurface* GetSurface() const;
    /// Millimeters.
    double GetWidth() const;
    /// \param width  of the strip, millimeters
    /// \throws ZORSysException "width is not a positive number"; nothing is changed then
    void SetWidth(double width);
    /// Leads the center line through other locations of its surface, as the constructor does. Changes it in place.
    /// \param locations  two or more locations on the surface of the course
    /// \throws ZORSysException "the course has no centre line", "the surface of the course does not exist any more",
    ///         "a course needs two places", and as ZORGeoCurveOnSurfaceSmoother::Connect() and
    ///         ZORGeoCurveOnSurface::SetLocations(); the course is unchanged then
    void SetCenterLine(const QList<ZORGeoLocationOnSurface>& locations);

    /// Gives the centre line a minimum radius: bends below it become tangent arcs, as
    /// ZORGeoCurveOnSurfaceSmoother explains. Both ends stay. Changes the center line in place. A course that is
    /// smooth already, and every course for a radius of 0 or NaN, is left as it is.
    /// \param radius  millimeters
    /// \throws ZORSysException "radius is negative", "radius is infinite", "the course has no centre line",
    ///         "the surface of the course does not exist any more", "the surface has no room for the radius %1
    ///         at (%2, %3, %4)"; the course is unchanged then
    void Smooth(double radius);
    /// Smooths with progress, for hosts that show it or let their users cancel.
    /// \param radius  millimeters
    /// \param report  as ZORGeoCurveOnSurfaceSmoother::Smooth() calls it: in the same thread, with the part that
    ///                is done, 0 to 1; returns false to cancel. Must not change or destroy the course or its
    ///                surface. What it throws passes through, the course is then unchanged
    /// \return false when canceled; the course is then unchanged
    /// \throws ZORSysException as Smooth(radius)
    bool Smooth(double radius, const std::function<bool(double)>& report);

private:
    friend struct ZORTPCourseStorage;
    /// To be completed with what was stored.
    ZORTPCourse(ZORFeatObject* folder, double width);

    void CheckCenterLine() const;
    void Make(const QList<ZORGeoLocationOnSurface>& locations);
    bool SmoothCenterLine(double radius, const std::function<bool(double)>& report);
    /// Takes the center line and its body; either may be null.
    void Adopt(ZORGeoCurveOnSurface* centerLine, ZORTopBody* body);

    class Private;
    const std::unique_ptr<Private> d;
};
