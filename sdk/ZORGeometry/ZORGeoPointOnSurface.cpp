#include "ZORGeoPointOnSurface.h"

#include "storage/ZORGeoStoredLocations_p.h"

#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoObjectStorage.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORGeometry/ZORGeoTypeRegistration.h>
#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysException.h>

ZOR_GEO_REGISTER_TYPE(ZORGeoPointOnSurface)

class ZORGeoPointOnSurface::Private
{
public:
    ZORGeoLocationOnSurface location;
    ZORGeoReference<const ZORGeoSurface> surface;
};

ZORGeoPointOnSurface::ZORGeoPointOnSurface(const ZORGeoLocationOnSurface& location)
    : ZORGeoPoint(location.surface ? location.surface->GetContainer() : nullptr)
    , d(new Private{location, {}})
{
    ZOR_TRACE_CALL(location);
    if (location.IsNull())
        throw ZORSysException(tr("location is not on a surface"));
    d->surface = ZORGeoReference<const ZORGeoSurface>(location.surface, this);
}

ZORGeoPointOnSurface::ZORGeoPointOnSurface(ZORGeoContainer* container, const ZORMathPoint& point)
    : ZORGeoPoint(container)
    , d(new Private{{nullptr, 0, 0, 0, point}, {}})
{
}

ZORGeoPointOnSurface::~ZORGeoPointOnSurface() = default;

ZORMathPoint ZORGeoPointOnSurface::GetMathPoint() const
{
    return d->location.point;
}

const ZORGeoSurface* ZORGeoPointOnSurface::GetSurface() const
{
    return d->surface;
}

ZORGeoLocationOnSurface ZORGeoPointOnSurface::GetLocationOnSurface() const
{
    return d->surface ? d->location : ZORGeoLocationOnSurface();
}

struct ZORGeoPointOnSurfaceStorage
{
    static void Write(const ZORGeoPointOnSurface& point, ZORGeoObjectWriter& writer)
    {
        writer.WriteReference("surface", point.GetSurface());
        if (point.GetSurface())
            ZorGeoWriteLocations(writer, {point.GetLocationOnSurface()});
        else
            writer.WritePoint("points", point.GetMathPoint());
    }
    static ZORGeoPointOnSurface* Create(ZORGeoContainer* container, const ZORGeoObjectReader& reader)
    {
        const ZORMathPoint point = reader.GetPoint("points");
        if (!point.IsFinite())
            reader.Fail(ZORGeoPointOnSurface::tr("point is not finite"));
        const auto* surface = reader.GetReference<ZORGeoSurface>("surface");
        if (!surface)
            return new ZORGeoPointOnSurface(container, point);
        return new ZORGeoPointOnSurface(ZorGeoReadLocations(reader, *surface).constFirst());
    }
};

ZOR_GEO_REGISTER_STORAGE(ZORGeoPointOnSurface)
