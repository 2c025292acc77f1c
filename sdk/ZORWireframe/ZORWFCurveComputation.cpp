#include "ZORWFCurveComputation_p.h"

#include <ZORFeature/ZORFeatShapeOf.h>
#include <ZORGeometry/ZORGeoCurveOnSurface.h>
#include <ZORGeometry/ZORGeoCurveOnSurfaceProcessor.h>
#include <ZORGeometry/ZORGeoOnSurface.h>
#include <ZORGeometry/ZORGeoPoint.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORMathematics/ZORMathVector.h>
#include <ZORSystem/ZORSysException.h>

#include <algorithm>
#include <numbers>

using Computation = ZORWFCurveComputation;
using Location = ZORGeoLocationOnSurface;
using Processor = ZORGeoCurveOnSurfaceProcessor;

namespace {

bool IsReady(const QList<Computation::Input>& limits)
{
    return std::all_of(limits.begin(), limits.end(),
                       [](const Computation::Input& limit) { return !limit.Get() || ZORFeatShapeOf(limit); });
}

Location LocationOf(const ZORFeatGeometry* feature, const ZORGeoSurface* surface, const QString& name)
{
    const auto* point = ZORFeatShapeOf<ZORGeoPoint>(feature);
    if (!point)
        throw ZORSysException(ZORWFCurveOnSupport::tr("the %1 is no point").arg(name));
    const Location location = ZORGeoOnSurface::Locate(*point, *surface);
    if (location.IsNull())
        throw ZORSysException(
            ZORWFCurveOnSupport::tr("the %1 cannot be projected onto the support").arg(name));
    return location;
}

ZORGeoCurveOnSurfaceLimits LimitsOf(const QList<Computation::Input>& features, const ZORGeoSurface* surface)
{
    QList<const ZORGeoCurveOnSurface*> curves;
    for (const Computation::Input& feature : features) {
        if (!feature.Get())
            continue;
        const auto* curve = ZORFeatShapeOf<ZORGeoCurveOnSurface>(feature);
        if (!curve || curve->GetSurface() != surface)
            throw ZORSysException(ZORWFCurveOnSupport::tr("the limit '%1' is no curve on the support")
                                      .arg(feature->GetLabel()));
        curves.append(curve);
    }
    ZORGeoCurveOnSurfaceLimits limits;
    limits.SetGeometry(curves);
    return limits;
}

// Such directions are those that curves at a constant angle cannot follow.
bool IsPerpendicularTo(const Location& location, const ZORMathVector& direction)
{
    return ZORGeoOnSurface::IsPerpendicular(direction, location, ZORGeoOnSurface::kVanishingProjection);
}

} // namespace

bool Computation::IsComplete() const
{
    if (!ZORFeatShapeOf(support) || !ZORFeatShapeOf(startPoint))
        return false;
    if (method == ZORWFCurveOnSupport::PointToPoint)
        return ZORFeatShapeOf(endPoint);
    const auto* shaped = qobject_cast<const ZORFeatGeometry*>(direction.Get());
    return direction.Get() && (!shaped || ZORFeatShapeOf(shaped)) && IsReady(startLimits)
           && IsReady(endLimits);
}

QList<Location> Computation::Run() const
{
    const auto* surface = ZORFeatShapeOf<ZORGeoSurface>(support);
    if (!surface)
        throw ZORSysException(ZORWFCurveOnSupport::tr("the support is no surface"));
    const Location start = LocationOf(startPoint, surface, ZORWFCurveOnSupport::tr("start point"));
    if (method != ZORWFCurveOnSupport::PointToPoint)
        return RunDirected(surface, start);

    const Location end = LocationOf(endPoint, surface, ZORWFCurveOnSupport::tr("end point"));
    const double unbounded = std::numeric_limits<double>::infinity();
    const QList<Location> locations =
        Processor(surface, unbounded, unbounded).ComputePointToPoint(start, end).GetLocations();
    if (locations.isEmpty())
        throw ZORSysException(
            ZORWFCurveOnSupport::tr("the support does not connect the start point with the end point"));
    return locations;
}

QList<Location> Computation::RunDirected(const ZORGeoSurface* surface, const Location& start) const
{
    Processor processor(surface, startLength, endLength);
    processor.AddGeometricLimits(LimitsOf(startLimits, surface), Processor::Start);
    processor.AddGeometricLimits(LimitsOf(endLimits, surface), Processor::End);
    const ZORMathVector vector = GetDirectionAt(start);
    const double turn = isFlipped ? angle + std::numbers::pi : angle;
    if (method == ZORWFCurveOnSupport::PointDirection)
        return processor.ComputeGeodesic(start, vector, turn).GetLocations();

    const QList<Location> locations = processor.ComputeConstantAngle(start, vector, turn).GetLocations();
    if (locations.size() == 1 && IsPerpendicularTo(start, vector))
        throw ZORSysException(
            ZORWFCurveOnSupport::tr("the direction is perpendicular to the support at the start point"));
    return locations;
}

ZORMathVector Computation::GetDirectionAt(const Location& start) const
{
    const auto* shaped = qobject_cast<const ZORFeatGeometry*>(direction.Get());
    if (!shaped) {
        const ZORMathVector x(1, 0, 0);
        return IsPerpendicularTo(start, x) ? ZORMathVector(0, 1, 0) : x;
    }
    const ZORGeoGeometry* const geometry = ZORFeatShapeOf(shaped);
    if (const auto* point = qobject_cast<const ZORGeoPoint*>(geometry)) {
        const ZORMathVector vector = point->GetMathPoint() - start.point;
        if (vector.GetLength() == 0)
            throw ZORSysException(ZORWFCurveOnSupport::tr("the point of the direction is the start point"));
        return vector.GetNormalized();
    }
    const auto* curve = qobject_cast<const ZORGeoCurve*>(geometry);
    if (!curve)
        throw ZORSysException(ZORWFCurveOnSupport::tr("the direction is neither a curve nor a point"));
    const int numPoints = curve->GetNumPoints();
    const ZORMathVector vector =
        numPoints < 2 ? ZORMathVector() : curve->GetPoint(numPoints - 1) - curve->GetPoint(0);
    if (vector.GetLength() == 0)
        throw ZORSysException(ZORWFCurveOnSupport::tr("the curve of the direction ends where it starts"));
    return vector.GetNormalized();
}
