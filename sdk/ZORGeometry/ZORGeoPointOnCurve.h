// A point tied to a curve.

#pragma once

#include <ZORGeometry/ZORGeoLocationOnCurve.h>
#include <ZORGeometry/ZORGeoPoint.h>
#include <ZORGeometry/ZORGeoReference.h>

#include <memory>

class ZORGeoCurve;

/// A point at a location of a curve, or on the straight continuation of one of its ends. Holds a counted
/// reference to the curve and keeps its position when the curve is destroyed.
///
/// When the curve changes in place the point keeps its distance along the curve, or is at its end where the
/// curve has become shorter than that. On a closed curve it does not pass the end either, so points keep their
/// order. On the continuation before the start it keeps its distance from the start.
///
/// Thread safety: thread of the container; objects may be shared read-only.
class ZORGEOMETRY_EXPORT ZORGeoPointOnCurve : public ZORGeoPoint
{
    Q_OBJECT

public:
    /// The container is that of the curve, which owns the point from Initialize() on.
    /// \throws ZORSysException "location is not on a curve" for a null location
    explicit ZORGeoPointOnCurve(const ZORGeoLocationOnCurve& location);
    ~ZORGeoPointOnCurve() override;

    ZORMathPoint GetMathPoint() const override;
    /// Null once the curve has been destroyed.
    const ZORGeoCurve* GetCurve() const;
    /// Null once the curve has been destroyed.
    ZORGeoLocationOnCurve GetLocationOnCurve() const;

protected:
    void UpdateShape() override;

private:
    friend struct ZORGeoPointOnCurveStorage;
    /// A point whose curve has been destroyed.
    ZORGeoPointOnCurve(ZORGeoContainer* container, const ZORMathPoint& point);

    class Private;
    const std::unique_ptr<Private> d;
};
