// Feature that is a curve computed over a surface from other features.

#pragma once

#include <ZORFeature/ZORFeatComputedGeometry.h>
#include <ZORWireframe/ZORWireframeGlobal.h>

#include <QList>

#include <memory>

/// A curve over a support surface, kept up to date with its inputs as every ZORFeatComputedGeometry.
///
/// Methods.    PointToPoint: a shortest way from the start to the end point. PointDirection: the straightest
///             geodesic through the start point. ConstantAngle: the curve through the start point that keeps
///             its angle to the projected direction. ZORGeoCurveOnSurfaceProcessor says more. Lengths, limits,
///             direction, angle and flip belong to the latter two, which run both ways from the start point;
///             the end point belongs to the first.
/// Inputs.     Features; their geometry is that of their bodies. What the method does not use may be set all the
///             same and is kept.
/// Result.     A body around a ZORGeoCurveOnSurface. A curve without length has one point.
/// Failures.   "the support is no surface", "the start point is no point", "the start point cannot be projected
///             onto the support" (it is empty), the same of "the end point", "the support does not connect the
///             start point with the end point", "the direction is neither a curve nor a point", "the curve of
///             the direction ends where it starts", "the point of the direction is the start point", "the
///             direction is perpendicular to the support at the start point" (for ConstantAngle), "the limit
///             '%1' is no curve on the support", "start length is negative", "end length is negative", "angle
///             is not finite".
///
/// Thread safety: thread of the container; objects may be shared read-only.
class ZORWIREFRAME_EXPORT ZORWFCurveOnSupport : public ZORFeatComputedGeometry
{
    Q_OBJECT

public:
    enum ComputationMethod : int {
        PointToPoint = 0,
        PointDirection = 1,
        ConstantAngle = 2,
    };

    /// Without inputs and lengths, for the method PointToPoint, with the angle 0.
    /// \param folder  the feature the curve lies in; null leaves it without a container
    explicit ZORWFCurveOnSupport(ZORFeatObject* folder);
    ~ZORWFCurveOnSupport() override;

    /// As ZORFeatObject; those of the limits last.
    QList<ZORFeatObject*> GetInputs() const override;

    // All setters of features throw "a feature cannot depend on itself" for this feature and those computed
    // from it, and change nothing then. Nothing is owned; null takes the input away.

    /// \param support  a feature around a surface
    void SetSupport(ZORFeatGeometry* support);
    /// \throws ZORSysException "computation method %1 is unknown"; nothing is changed then
    void SetComputationMethod(ComputationMethod method);
    /// \param point  a feature around a point. The curve starts at its own place if that is tied to the support,
    ///               else at the place of the support nearest to it.
    void SetStartPoint(ZORFeatGeometry* point);
    /// \param point  as for the start point
    void SetEndPoint(ZORFeatGeometry* point);

    /// \param length  millimetres against the direction; NaN or infinity: no bound
    void SetStartLength(double length);
    /// \param length  millimetres in the direction; NaN or infinity: no bound
    void SetEndLength(double length);
    /// Adds a curve on the support that ends the side against the direction where it meets it first. Limits are
    /// soft: they never lengthen a side beyond its length.
    /// \param limit  a feature around a ZORGeoCurveOnSurface on the surface of the support. Null, and one that is
    ///               removed later, limits nothing.
    void AddStartLimit(ZORFeatGeometry* limit);
    /// As AddStartLimit(), for the side in the direction.
    void AddEndLimit(ZORFeatGeometry* limit);
    /// Removes the limits of both sides.
    void ClearLimits();

    /// \param direction  a feature around a curve: from its first to its last point; around a point: from the
    ///                   place of the start point to it; a feature without a shape of its own, a folder or
    ///                   root: along X, or Y where X is perpendicular to the support at the start point
    void SetDirection(ZORFeatObject* direction);
    /// \param angle  radians, from the direction, counter-clockwise about the normal of the support
    void SetAngle(double angle);
    /// Adds half a turn to the angle.
    void SetDirectionFlipped(bool isFlipped);

    ZORFeatGeometry* GetSupport() const;
    ComputationMethod GetComputationMethod() const;
    ZORFeatGeometry* GetStartPoint() const;
    ZORFeatGeometry* GetEndPoint() const;
    /// NaN without a bound.
    double GetStartLength() const;
    /// NaN without a bound.
    double GetEndLength() const;
    /// Those that are left, in the order in which they were added.
    QList<ZORFeatGeometry*> GetStartLimits() const;
    QList<ZORFeatGeometry*> GetEndLimits() const;
    ZORFeatObject* GetDirection() const;
    double GetAngle() const;
    bool IsDirectionFlipped() const;

protected:
    bool IsComplete() const override;
    ZORFeatShape Compute() const override;

private:
    void SetNumber(double& member, double value);
    void AddLimit(QList<ZORGeoReference<ZORFeatGeometry>>& limits, ZORFeatGeometry* limit);
    bool IsDirected() const;

    class Private;
    const std::unique_ptr<Private> d;
};
