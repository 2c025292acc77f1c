#include "ZORGeoPointOnCurve.h"

#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoCurve.h>
#include <ZORGeometry/ZORGeoObjectStorage.h>
#include <ZORGeometry/ZORGeoTypeRegistration.h>
#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysException.h>

#include <algorithm>
#include <cmath>

ZOR_GEO_REGISTER_TYPE(ZORGeoPointOnCurve)

class ZORGeoPointOnCurve::Private
{
public:
    ZORGeoLocationOnCurve location;
    ZORGeoReference<const ZORGeoCurve> curve;
};

ZORGeoPointOnCurve::ZORGeoPointOnCurve(const ZORGeoLocationOnCurve& location)
    : ZORGeoPoint(location.curve ? location.curve->GetContainer() : nullptr)
    , d(new Private{location, {}})
{
    ZOR_TRACE_CALL(location);
    if (location.IsNull())
        throw ZORSysException(tr("location is not on a curve"));
    d->curve = ZORGeoReference<const ZORGeoCurve>(location.curve, this);
    FollowShape(location.curve);
}

ZORGeoPointOnCurve::ZORGeoPointOnCurve(ZORGeoContainer* container, const ZORMathPoint& point)
    : ZORGeoPoint(container)
    , d(new Private{{nullptr, 0, point}, {}})
{
}

ZORGeoPointOnCurve::~ZORGeoPointOnCurve() = default;

ZORMathPoint ZORGeoPointOnCurve::GetMathPoint() const
{
    return d->location.point;
}

const ZORGeoCurve* ZORGeoPointOnCurve::GetCurve() const
{
    return d->curve;
}

ZORGeoLocationOnCurve ZORGeoPointOnCurve::GetLocationOnCurve() const
{
    return d->curve ? d->location : ZORGeoLocationOnCurve();
}

void ZORGeoPointOnCurve::UpdateShape()
{
    if (!d->curve)
        return;
    const ZORGeoLocationOnCurve location =
        d->curve->GetLocation(std::min(d->location.distance, d->curve->GetLength()), nullptr);
    // The constructor accepts distances that no curve has: such a point stays where it is.
    if (!location.IsNull())
        d->location = location;
}

struct ZORGeoPointOnCurveStorage
{
    static void Write(const ZORGeoPointOnCurve& point, ZORGeoObjectWriter& writer)
    {
        writer.WriteReference("curve", point.GetCurve());
        writer.WriteDouble("distance", point.GetLocationOnCurve().distance);
        writer.WritePoint("point", point.GetMathPoint());
    }
    static ZORGeoPointOnCurve* Create(ZORGeoContainer* container, const ZORGeoObjectReader& reader)
    {
        const ZORMathPoint point = reader.GetPoint("point");
        const double distance = reader.GetDouble("distance");
        if (!point.IsFinite() || !std::isfinite(distance))
            reader.Fail(ZORGeoPointOnCurve::tr("location is not finite"));
        const auto* curve = reader.GetReference<ZORGeoCurve>("curve");
        if (!curve)
            return new ZORGeoPointOnCurve(container, point);
        return new ZORGeoPointOnCurve(ZORGeoLocationOnCurve{curve, distance, point});
    }
};

ZOR_GEO_REGISTER_STORAGE(ZORGeoPointOnCurve)
