// Feature that is the projection of a point or a curve onto a surface.

#pragma once

#include <ZORFeature/ZORFeatComputedGeometry.h>
#include <ZORWireframe/ZORWireframeGlobal.h>

#include <memory>

/// A point or a curve laid onto a support surface, kept up to date with its inputs as every
/// ZORFeatComputedGeometry.
///
/// Inputs.     The source, a feature around points or curves, and the support, a feature around a surface.
/// Result.     What ZORTopFactory::Project() makes: every point goes to the nearest place of the support, as a
///             ZORGeoPointOnSurface; every edge becomes a ZORGeoCurveOnSurface. An edge that the projection makes
///             a point is one.
/// Failures.   "the support is no surface", "the source is neither a point nor a curve", "nothing of the source can
///             be projected onto the support" (one of them is empty).
///
/// Thread safety: thread of the container; objects may be shared read-only.
class ZORWIREFRAME_EXPORT ZORWFProjection : public ZORFeatComputedGeometry
{
    Q_OBJECT

public:
    /// Without inputs.
    /// \param folder  the feature the projection lies in; null leaves it without a container
    explicit ZORWFProjection(ZORFeatObject* folder);
    ~ZORWFProjection() override;

    QList<ZORFeatObject*> GetInputs() const override;

    // The setters throw "a feature cannot depend on itself" for this feature and those computed from it, and change
    // nothing then. Nothing is owned; null takes the input away.

    void SetSource(ZORFeatGeometry* source);
    void SetSupport(ZORFeatGeometry* support);

    ZORFeatGeometry* GetSource() const;
    ZORFeatGeometry* GetSupport() const;

protected:
    bool IsComplete() const override;
    ZORFeatShape Compute() const override;

private:
    class Private;
    const std::unique_ptr<Private> d;
};
