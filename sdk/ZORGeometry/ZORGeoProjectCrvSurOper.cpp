#include "ZORGeoProjectCrvSurOper.h"

#include "mesh/ZORGeoSurface_p.h"
#include "path/ZORGeoCurveProjection_p.h"

#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoCurveOnSurface.h>
#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysException.h>

#include <QPointer>

class ZORGeoProjectCrvSurOper::Private
{
public:
    QPointer<const ZORGeoSurface> surface; // not owned
    QPointer<const ZORGeoCurve> curve;     // not owned
};

ZORGeoProjectCrvSurOper::ZORGeoProjectCrvSurOper(const ZORGeoSurface* surface, const ZORGeoCurve* curve)
    : d(new Private{surface, curve})
{
    ZOR_TRACE_CALL(surface, curve);
}

ZORGeoProjectCrvSurOper::~ZORGeoProjectCrvSurOper() = default;

void ZORGeoProjectCrvSurOper::Run()
{
    ZOR_TRACE_CALL();
    SetCurve(nullptr);
    if (!d->surface)
        throw ZORSysException(tr("surface is null"));
    if (!d->curve)
        throw ZORSysException(tr("curve is null"));
    if (!d->surface->GetContainer())
        throw ZORSysException(tr("geometry has no container"));
    if (d->surface->GetNumTriangles() == 0 || d->curve->GetNumPoints() == 0)
        return;

    const ZORGeoSurfacePrivate& surface = ZORGeoSurfacePrivate::Of(*d->surface);
    const auto places =
        ZORGeoCurveProjection(*surface.mesh, surface.GetTree(), surface.mesh->GetBox()).Run(*d->curve);
    if (places.empty())
        return;
    QList<ZORGeoLocationOnSurface> locations;
    locations.reserve(qsizetype(places.size()));
    for (const ZORGeoMeshPlace& place : places)
        locations.append(ZorGeoLocationOf(d->surface, place));
    auto* const curve = new ZORGeoCurveOnSurface(locations, false);
    curve->Initialize();
    SetCurve(curve);
}
