// Inputs of a curve on support, and its computation.

#pragma once

#include <ZORFeature/ZORFeatGeometry.h>
#include <ZORGeometry/ZORGeoLocationOnSurface.h>
#include <ZORGeometry/ZORGeoReference.h>
#include <ZORWireframe/ZORWFCurveOnSupport.h>

#include <QList>

#include <limits>

class ZORGeoSurface;
class ZORMathVector;

/// What a ZORWFCurveOnSupport is computed from.
struct ZORWFCurveComputation
{
    using Input = ZORGeoReference<ZORFeatGeometry>;
    using Method = ZORWFCurveOnSupport::ComputationMethod;

    /// Whether nothing that the method needs is missing.
    bool IsComplete() const;
    /// \return at least one location
    /// \throws ZORSysException the failures of ZORWFCurveOnSupport; all inputs must be there
    QList<ZORGeoLocationOnSurface> Run() const;

    Method method = ZORWFCurveOnSupport::PointToPoint;
    Input support;
    Input startPoint;
    Input endPoint;
    double startLength = std::numeric_limits<double>::quiet_NaN();
    double endLength = std::numeric_limits<double>::quiet_NaN();
    QList<Input> startLimits;
    QList<Input> endLimits;
    ZORGeoReference<ZORFeatObject> direction;
    double angle = 0;
    bool isFlipped = false;

private:
    QList<ZORGeoLocationOnSurface> RunDirected(const ZORGeoSurface* surface,
                                               const ZORGeoLocationOnSurface& start) const;
    ZORMathVector GetDirectionAt(const ZORGeoLocationOnSurface& start) const;
};
