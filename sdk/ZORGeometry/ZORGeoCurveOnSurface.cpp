#include "ZORGeoCurveOnSurface.h"

#include "mesh/ZORGeoCoincidence_p.h"
#include "storage/ZORGeoStoredLocations_p.h"

#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoObjectStorage.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORGeometry/ZORGeoTypeRegistration.h>
#include <ZORMathematics/ZORMathSetOfPoints.h>
#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysException.h>

ZOR_GEO_REGISTER_TYPE(ZORGeoCurveOnSurface)

namespace {

using Locations = QList<ZORGeoLocationOnSurface>;

const ZORGeoSurface* SurfaceOf(const Locations& locations)
{
    return locations.isEmpty() ? nullptr : locations.constFirst().surface;
}

ZORGeoContainer* ContainerOf(const Locations& locations)
{
    const ZORGeoSurface* surface = SurfaceOf(locations);
    return surface ? surface->GetContainer() : nullptr;
}

double LengthOf(const Locations& locations)
{
    double length = 0;
    for (qsizetype i = 1; i < locations.size(); ++i)
        length += locations[i - 1].point.DistanceTo(locations[i].point);
    return length;
}

Locations Close(Locations locations, bool isClosed)
{
    if (isClosed && locations.size() > 1
        && !ZorGeoCoincide(locations.constFirst().point, locations.constLast().point, LengthOf(locations)))
        locations.append(locations.constFirst());
    return locations;
}

ZORMathSetOfPoints PointsOf(const Locations& locations)
{
    ZORMathSetOfPoints points;
    points.reserve(locations.size());
    for (const ZORGeoLocationOnSurface& location : locations)
        points.append(location.point);
    return points;
}

void Check(const Locations& locations, const ZORGeoSurface* surface)
{
    for (qsizetype i = 0; i < locations.size(); ++i) {
        if (locations[i].IsNull())
            throw ZORSysException(
                ZORGeoCurveOnSurface::tr("location %1 of the curve is not on a surface").arg(i));
        if (locations[i].surface != surface)
            throw ZORSysException(
                ZORGeoCurveOnSurface::tr("location %1 of the curve is on another surface").arg(i));
    }
}

} // namespace

class ZORGeoCurveOnSurface::Private
{
public:
    Locations locations;
    ZORGeoReference<const ZORGeoSurface> surface;
};

ZORGeoCurveOnSurface::ZORGeoCurveOnSurface(const QList<ZORGeoLocationOnSurface>& locations, bool isClosed)
    : ZORGeoCurve(ContainerOf(locations), PointsOf(Close(locations, isClosed)))
    , d(new Private{Close(locations, isClosed), {}})
{
    ZOR_TRACE_CALL(locations, isClosed);
    Check(locations, SurfaceOf(locations));
    CheckPoints();
    d->surface = ZORGeoReference<const ZORGeoSurface>(SurfaceOf(locations), this);
}

ZORGeoCurveOnSurface::ZORGeoCurveOnSurface(ZORGeoContainer* container, const ZORMathSetOfPoints& points)
    : ZORGeoCurve(container, points)
    , d(std::make_unique<Private>())
{
    CheckPoints();
}

ZORGeoCurveOnSurface::~ZORGeoCurveOnSurface() = default;

void ZORGeoCurveOnSurface::SetLocations(const Locations& locations)
{
    ZOR_TRACE_CALL(locations);
    if (!d->surface)
        throw ZORSysException(tr("the curve has no surface"));
    if (locations.isEmpty())
        throw ZORSysException(tr("the curve needs a location"));
    Check(locations, d->surface);
    ReplacePoints(PointsOf(locations));
    d->locations = locations;
    ReportShapeChange();
}

const ZORGeoSurface* ZORGeoCurveOnSurface::GetSurface() const
{
    return d->surface;
}

QList<ZORGeoLocationOnSurface> ZORGeoCurveOnSurface::GetLocations() const
{
    return d->surface ? d->locations : Locations();
}

bool ZORGeoCurveOnSurface::IsClosed() const
{
    return GetNumPoints() > 1 && ZorGeoCoincide(GetPoint(0), GetPoint(GetNumPoints() - 1), GetLength());
}

struct ZORGeoCurveOnSurfaceStorage
{
    static void Write(const ZORGeoCurveOnSurface& curve, ZORGeoObjectWriter& writer)
    {
        writer.WriteReference("surface", curve.GetSurface());
        if (curve.GetSurface())
            ZorGeoWriteLocations(writer, curve.GetLocations());
        else
            writer.WritePoints("points", curve.GetPoints());
    }
    static ZORGeoCurveOnSurface* Create(ZORGeoContainer* container, const ZORGeoObjectReader& reader)
    {
        const auto* surface = reader.GetReference<ZORGeoSurface>("surface");
        if (!surface)
            return new ZORGeoCurveOnSurface(container, reader.GetPoints("points"));
        const Locations locations = ZorGeoReadLocations(reader, *surface);
        if (locations.isEmpty())
            reader.Fail(ZORGeoCurveOnSurface::tr("it has a surface, but no place on it"));
        return new ZORGeoCurveOnSurface(locations, false);
    }
};

ZOR_GEO_REGISTER_STORAGE(ZORGeoCurveOnSurface)
