// A point tied to a curve.

#pragma once

#include <ZORGeometry/ZORGeoLocationOnCurve.h>
#include <ZORGeometry/ZORGeoPoint.h>
#include <ZORGeometry/ZORGeoReference.h>

class ZORGeoCurve;

/// A point at a place of a curve, or on the straight continuation of one of its ends. Holds a counted
/// reference to the curve and keeps its position when the curve is destroyed.
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

private:
    friend struct ZORGeoPointOnCurveStorage;
    /// A point whose curve has been destroyed.
    ZORGeoPointOnCurve(ZORGeoContainer* container, const ZORMathPoint& point);

    const ZORGeoLocationOnCurve m_location;
    ZORGeoReference<const ZORGeoCurve> m_curve;
};
