#include "ZORGeoPointOnCurve.h"

#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoCurve.h>
#include <ZORGeometry/ZORGeoTypeRegistration.h>
#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysException.h>

ZOR_GEO_REGISTER_TYPE(ZORGeoPointOnCurve)

ZORGeoPointOnCurve::ZORGeoPointOnCurve(const ZORGeoLocationOnCurve& location)
    : ZORGeoPoint(location.curve ? location.curve->GetContainer() : nullptr)
    , m_location(location)
{
    ZOR_TRACE_CALL(location);
    if (location.IsNull())
        throw ZORSysException(tr("location is not on a curve"));
    m_curve = ZORGeoReference<const ZORGeoCurve>(location.curve, this);
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
