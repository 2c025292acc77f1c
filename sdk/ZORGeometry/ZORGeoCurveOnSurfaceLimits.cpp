#include "ZORGeoCurveOnSurfaceLimits.h"

#include <ZORSystem/ZORSysApiTrace.h>

class ZORGeoCurveOnSurfaceLimitsData : public QSharedData
{
public:
    QList<const ZORGeoCurveOnSurface*> curves; // not owned
};

ZORGeoCurveOnSurfaceLimits::ZORGeoCurveOnSurfaceLimits()
    : d(new ZORGeoCurveOnSurfaceLimitsData)
{
}

ZORGeoCurveOnSurfaceLimits::ZORGeoCurveOnSurfaceLimits(const ZORGeoCurveOnSurfaceLimits& other) = default;
ZORGeoCurveOnSurfaceLimits::ZORGeoCurveOnSurfaceLimits(ZORGeoCurveOnSurfaceLimits&& other) noexcept = default;
ZORGeoCurveOnSurfaceLimits&
ZORGeoCurveOnSurfaceLimits::operator=(const ZORGeoCurveOnSurfaceLimits& other) = default;
ZORGeoCurveOnSurfaceLimits&
ZORGeoCurveOnSurfaceLimits::operator=(ZORGeoCurveOnSurfaceLimits&& other) noexcept = default;
ZORGeoCurveOnSurfaceLimits::~ZORGeoCurveOnSurfaceLimits() = default;

void ZORGeoCurveOnSurfaceLimits::SetGeometry(const QList<const ZORGeoCurveOnSurface*>& curves)
{
    ZOR_TRACE_CALL(curves);
    d->curves = curves;
}

QList<const ZORGeoCurveOnSurface*> ZORGeoCurveOnSurfaceLimits::GetGeometry() const
{
    return d->curves;
}

void ZorTraceAppend(QByteArray& out, const ZORGeoCurveOnSurfaceLimits& limits)
{
    ZorTraceAppendCount(out, limits.d->curves.size());
}
