#include "ZORGeoPolyline.h"

#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoObjectStorage.h>
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

struct ZORGeoPolylineStorage
{
    static void Write(const ZORGeoPolyline& polyline, ZORGeoObjectWriter& writer)
    {
        QList<ZORMathPoint> points;
        points.reserve(polyline.GetNumPoints());
        for (int i = 0; i < polyline.GetNumPoints(); ++i)
            points.append(polyline.GetPoint(i));
        writer.WritePoints("points", points);
    }
    static ZORGeoPolyline* Create(ZORGeoContainer* container, const ZORGeoObjectReader& reader)
    {
        return new ZORGeoPolyline(container, ZORMathSetOfPoints(reader.GetPoints("points")), true);
    }
};

ZOR_GEO_REGISTER_STORAGE(ZORGeoPolyline)
