#include "ZORGeoProjectCrvSurOper.h"

#include "mesh/ZORGeoSurface_p.h"
#include "path/ZORGeoCurveProjection_p.h"

#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoCurveOnSurface.h>
#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysException.h>

ZORGeoProjectCrvSurOper::ZORGeoProjectCrvSurOper(const ZORGeoSurface* surface, const ZORGeoCurve* curve)
    : m_surface(surface)
    , m_curve(curve)
{
    ZOR_TRACE_CALL(surface, curve);
}

ZORGeoProjectCrvSurOper::~ZORGeoProjectCrvSurOper() = default;

void ZORGeoProjectCrvSurOper::Run()
{
    ZOR_TRACE_CALL();
    SetCurve(nullptr);
    if (!m_surface)
        throw ZORSysException(tr("surface is null"));
    if (!m_curve)
        throw ZORSysException(tr("curve is null"));
    if (!m_surface->GetContainer())
        throw ZORSysException(tr("geometry has no container"));
    if (m_surface->GetNumTriangles() == 0 || m_curve->GetNumPoints() == 0)
        return;

    const ZORGeoSurfacePrivate& surface = ZORGeoSurfacePrivate::Of(*m_surface);
    const auto places =
        ZORGeoCurveProjection(*surface.mesh, surface.GetTree(), surface.GetBox()).Run(*m_curve);
    if (places.empty())
        return;
    QList<ZORGeoLocationOnSurface> locations;
    locations.reserve(qsizetype(places.size()));
    for (const ZORGeoMeshPlace& place : places)
        locations.append(ZorGeoLocationOf(m_surface, place));
    auto* const curve = new ZORGeoCurveOnSurface(locations, false);
    curve->Initialize();
    SetCurve(curve);
}
