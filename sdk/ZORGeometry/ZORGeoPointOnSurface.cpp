#include "ZORGeoPointOnSurface.h"

#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORGeometry/ZORGeoTypeRegistration.h>
#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysException.h>

ZOR_GEO_REGISTER_TYPE(ZORGeoPointOnSurface)

ZORGeoPointOnSurface::ZORGeoPointOnSurface(const ZORGeoLocationOnSurface& location)
    : ZORGeoPoint(location.surface ? location.surface->GetContainer() : nullptr)
    , m_location(location)
{
    ZOR_TRACE_CALL(location);
    if (location.IsNull())
        throw ZORSysException(tr("location is not on a surface"));
    m_surface = ZORGeoReference<const ZORGeoSurface>(location.surface, this);
}

ZORGeoPointOnSurface::~ZORGeoPointOnSurface() = default;

ZORMathPoint ZORGeoPointOnSurface::GetMathPoint() const
{
    return m_location.point;
}

const ZORGeoSurface* ZORGeoPointOnSurface::GetSurface() const
{
    return m_surface;
}

ZORGeoLocationOnSurface ZORGeoPointOnSurface::GetLocationOnSurface() const
{
    return m_surface ? m_location : ZORGeoLocationOnSurface();
}
