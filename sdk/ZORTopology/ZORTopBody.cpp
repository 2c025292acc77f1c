#include "ZORTopBody.h"

#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoCurve.h>
#include <ZORGeometry/ZORGeoPoint.h>
#include <ZORGeometry/ZORGeoReference.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORGeometry/ZORGeoTypeRegistration.h>
#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysException.h>

ZOR_GEO_REGISTER_TYPE(ZORTopBody)

class ZORTopBodyPrivate
{
public:
    ZORGeoReference<const ZORGeoGeometry> geometry;
    int dimension = ZORTopBody::EmptyDimension; // of the geometry
};

namespace {

int DimensionOf(const ZORGeoGeometry* geometry)
{
    if (!geometry)
        return ZORTopBody::EmptyDimension;
    if (qobject_cast<const ZORGeoPoint*>(geometry))
        return 0;
    if (qobject_cast<const ZORGeoCurve*>(geometry))
        return 1;
    if (qobject_cast<const ZORGeoSurface*>(geometry))
        return 2;
    throw ZORSysException(ZORTopBody::tr("a body needs a point, a curve or a surface"));
}

} // namespace

ZORTopBody::ZORTopBody(ZORGeoContainer* container, const ZORGeoGeometry* geometry)
    : ZORGeoGeometry(container)
    , d_ptr(std::make_unique<ZORTopBodyPrivate>())
{
    ZOR_TRACE_CALL(container, geometry);
    Q_D(ZORTopBody);
    d->dimension = DimensionOf(geometry);
    d->geometry = ZORGeoReference<const ZORGeoGeometry>(geometry, this);
}

ZORTopBody::~ZORTopBody() = default;

int ZORTopBody::GetDimension() const
{
    Q_D(const ZORTopBody);
    return d->geometry.Get() ? d->dimension : EmptyDimension;
}

const ZORGeoGeometry* ZORTopBody::GetGeometry() const
{
    Q_D(const ZORTopBody);
    return d->geometry.Get();
}
