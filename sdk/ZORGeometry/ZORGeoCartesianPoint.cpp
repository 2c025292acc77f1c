#include "ZORGeoCartesianPoint.h"

#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoObjectStorage.h>
#include <ZORGeometry/ZORGeoTypeRegistration.h>
#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysException.h>

ZOR_GEO_REGISTER_TYPE(ZORGeoCartesianPoint)

class ZORGeoCartesianPoint::Private
{
public:
    ZORMathPoint point;
};

ZORGeoCartesianPoint::ZORGeoCartesianPoint(ZORGeoContainer* container, const ZORMathPoint& point)
    : ZORGeoPoint(container)
    , d(new Private{point})
{
    ZOR_TRACE_CALL(container, point);
    if (!point.IsFinite())
        throw ZORSysException(tr("point is not finite"));
}

ZORGeoCartesianPoint::~ZORGeoCartesianPoint() = default;

ZORMathPoint ZORGeoCartesianPoint::GetMathPoint() const
{
    return d->point;
}

struct ZORGeoCartesianPointStorage
{
    static void Write(const ZORGeoCartesianPoint& point, ZORGeoObjectWriter& writer)
    {
        writer.WritePoint("point", point.GetMathPoint());
    }
    static ZORGeoCartesianPoint* Create(ZORGeoContainer* container, const ZORGeoObjectReader& reader)
    {
        return new ZORGeoCartesianPoint(container, reader.GetPoint("point"));
    }
};

ZOR_GEO_REGISTER_STORAGE(ZORGeoCartesianPoint)
