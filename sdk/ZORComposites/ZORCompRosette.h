// Axis system from which fibre angles are measured.

#pragma once

#include <ZORComposites/ZORCompAttributed.h>
#include <ZORFeature/ZORFeatGeometry.h>
#include <ZORMathematics/ZORMathPoint.h>
#include <ZORMathematics/ZORMathVector.h>

#include <memory>

class ZORGeoSurface;

/// An origin with three axes: X is the direction of the angle 0, Z the normal, Y = Z x X. Angles run from X
/// towards Y.
///
/// Surface.   On a surface, the origin goes to the nearest place, Z is the normal of the triangle there and X the
///            given one projected into it. When the surface is removed the axes stay.
/// Body.      A line of AxisLength from the origin along X, registered and owned by the feature; each change of
///            the axes makes another one and emits BodyChanged().
///
/// Thread safety: thread of the container; objects may be shared read-only.
class ZORCOMPOSITES_EXPORT ZORCompRosette : public ZORFeatGeometry, public ZORCompAttributed
{
    Q_OBJECT

public:
    /// Of the line that shows the rosette, millimetres.
    static constexpr double AxisLength = 10;

    /// Along the axes of space.
    /// \param parent  null leaves the rosette without a container
    explicit ZORCompRosette(ZORFeatObject* parent);
    /// \throws ZORSysException as SetAxes()
    ZORCompRosette(ZORFeatObject* parent, const ZORMathPoint& origin, const ZORMathVector& xAxis,
                   const ZORMathVector& normal);
    ~ZORCompRosette() override;

    /// Registers the line, its body and then the feature.
    /// \throws ZORSysException as ZORFeatObject::Initialize(); the line and the body then go with the feature
    void Initialize() override;

    /// Null once somebody has destroyed it.
    ZORTopBody* GetBody() const override;
    QList<ZORGeoGeometry*> GetOwnedGeometry() const override;

    /// \param origin  millimetres, coordinates up to 1e60
    /// \param xAxis   of any length; its part perpendicular to \a normal counts
    /// \param normal  of any length
    /// \throws ZORSysException "the origin of the rosette is not finite or too far away", "the normal of the
    ///         rosette has no direction", "the X axis of the rosette has no direction", "the X axis of the
    ///         rosette is parallel to its normal" (within 1e-9 rad), and those of SetSurface(). Nothing is
    ///         changed then.
    void SetAxes(const ZORMathPoint& origin, const ZORMathVector& xAxis, const ZORMathVector& normal);
    /// Sets the axes and the surface in one step.
    /// \param surface  as for SetSurface()
    /// \throws ZORSysException as SetAxes() and SetSurface(). Nothing is changed then.
    void SetAxes(const ZORMathPoint& origin, const ZORMathVector& xAxis, const ZORMathVector& normal,
                 const ZORGeoSurface* surface);
    /// \param surface  not owned; null: off any surface, with the axes as given
    /// \throws ZORSysException "the surface of the rosette is empty", "the X axis of the rosette is
    ///         perpendicular to the surface". Nothing is changed then.
    void SetSurface(const ZORGeoSurface* surface);
    /// Null without one, and once it has been destroyed.
    const ZORGeoSurface* GetSurface() const;

    // The axes in effect, those of a surface included: of length 1, perpendicular to each other.
    ZORMathPoint GetOrigin() const;
    ZORMathVector GetXAxis() const;
    ZORMathVector GetYAxis() const;
    ZORMathVector GetNormal() const;

    // The axes as they were given.
    ZORMathPoint GetGivenOrigin() const;
    ZORMathVector GetGivenXAxis() const;
    ZORMathVector GetGivenNormal() const;

    /// The direction of an angle in a tangent plane: X projected into it, then turned about its normal.
    /// \param normal  of the plane, of any length; X may lie at either side of it
    /// \param angle   radians
    /// \return of length 1; zero when the projection has no direction (X within 1e-9 rad of the normal, or a
    ///         value that is not finite)
    ZORMathVector GetDirection(const ZORMathVector& normal, double angle) const;

private:
    friend struct ZORCompRosetteStorage;
    void Place(const ZORMathPoint& origin, const ZORMathVector& xAxis, const ZORMathVector& normal,
               const ZORGeoSurface* surface);
    void ReplaceBody();

    class Private;
    const std::unique_ptr<Private> d;
};
