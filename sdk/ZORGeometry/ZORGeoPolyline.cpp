#include "ZORGeoPolyline.h"

#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoTypeRegistration.h>
#include <ZORSystem/ZORSysApiTrace.h>

#include <algorithm>

ZOR_GEO_REGISTER_TYPE(ZORGeoPolyline)

namespace {

ZORMathSetOfPoints WithoutRepeats(ZORMathSetOfPoints points)
{
    points.erase(std::unique(points.begin(), points.end()), points.end());
    return points;
}

} // namespace

ZORGeoPolyline::ZORGeoPolyline(ZORGeoContainer* container, const ZORMathSetOfPoints& points,
                               bool keepAllPoints)
    : ZORGeoCurve(container, keepAllPoints ? points : WithoutRepeats(points))
{
    ZOR_TRACE_CALL(container, points, keepAllPoints);
    CheckPoints();
}

ZORGeoPolyline::~ZORGeoPolyline() = default;
