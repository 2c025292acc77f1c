#include "ZORGeoCurveOnSurfaceLimits.h"

#include <ZORSystem/ZORSysApiTrace.h>

void ZORGeoCurveOnSurfaceLimits::SetGeometry(const QList<const ZORGeoCurveOnSurface*>& curves)
{
    ZOR_TRACE_CALL(curves);
    m_curves = curves;
}

void ZorTraceAppend(QByteArray& out, const ZORGeoCurveOnSurfaceLimits& limits)
{
    ZorTraceAppendCount(out, limits.m_curves.size());
}
