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

ZORGeoPointOnCurve::ZORGeoPointOnCurve(const ZORGeoLocationOnCurve& location)
    : ZORGeoPoint(location.curve ? location.curve->GetContainer() : nullptr)
    , m_location(location)
{
    ZOR_TRACE_CALL(location);
    if (location.IsNull())
        throw ZORSysException(tr("location is not on a curve"));
    m_curve = ZORGeoReference<const ZORGeoCurve>(location.curve, this);
    FollowShape(location.curve);
}

ZORGeoPointOnCurve::ZORGeoPointOnCurve(ZORGeoContainer* container, const ZORMathPoint& point)
    : ZORGeoPoint(container)
    , m_location{nullptr, 0, point}
{
}

ZORGeoPointOnCurve::~ZORGeoPointOnCurve() = default;

ZORMathPoint ZORGeoPointOnCurve::GetMathPoint() const
{
    return m_location.point;
}

const ZORGeoCurve* ZORGeoPointOnCurve::GetCurve() const
{
    return m_curve;
}

ZORGeoLocationOnCurve ZORGeoPointOnCurve::GetLocationOnCurve() const
{
    return m_curve ? m_location : ZORGeoLocationOnCurve();
}

void ZORGeoPointOnCurve::UpdateShape()
{
    if (!m_curve)
        return;
    const ZORGeoLocationOnCurve location =
        m_curve->GetLocation(std::min(m_location.distance, m_curve->GetLength()), nullptr);
    // The constructor accepts distances that no curve has: such a point stays where it is.
    if (!location.IsNull())
        m_location = location;
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
