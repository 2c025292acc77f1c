// Named curve of a layup.

#pragma once

#include <ZORComposites/ZORCompAttributed.h>
#include <ZORFeature/ZORFeatGeometry.h>
#include <ZORMathematics/ZORMathSetOfPoints.h>

#include <memory>

class ZORGeoCurve;
class ZORGeoPolyline;

/// A chain of points that plies take as boundaries, or that merely comes with a layup.
///
/// Ownership. The feature makes a ZORGeoPolyline and its body, registers them with its container, and takes them
///            out again when it is removed or destroyed.
///
/// Thread safety: thread of the container; objects may be shared read-only.
class ZORCOMPOSITES_EXPORT ZORCompContour : public ZORFeatGeometry, public ZORCompAttributed
{
    Q_OBJECT

public:
    /// \param parent  null leaves the contour without a container
    /// \param points  millimetres, kept exactly as given
    /// \throws ZORSysException "point %1 of the curve is not finite or too far away", counted from 0
    ZORCompContour(ZORFeatObject* parent, const ZORMathSetOfPoints& points);
    ~ZORCompContour() override;

    /// Registers the curve, its body and then the feature.
    /// \throws ZORSysException as ZORFeatObject::Initialize(); the curve and the body then go with the feature
    void Initialize() override;

    /// Null once somebody has destroyed it.
    ZORTopBody* GetBody() const override;
    QList<ZORGeoGeometry*> GetOwnedGeometry() const override;
    /// The curve that plies refer to; not owned by the caller, null once somebody has destroyed it.
    ZORGeoCurve* GetCurve() const;

private:
    friend struct ZORCompContourStorage;
    /// Around what is there already; null for what has been destroyed.
    ZORCompContour(ZORFeatObject* parent, ZORGeoPolyline* curve, ZORTopBody* body);

    class Private;
    const std::unique_ptr<Private> d;
};
