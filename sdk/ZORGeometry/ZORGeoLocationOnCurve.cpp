#include "ZORGeoLocationOnCurve.h"

#include <ZORGeometry/ZORGeoCurve.h>
#include <ZORSystem/ZORSysApiTrace.h>

void ZorTraceAppend(QByteArray& out, const ZORGeoLocationOnCurve& location)
{
    ZorTraceAppend(out, static_cast<const QObject*>(location.curve));
    out += '@';
    ZorTraceAppend(out, location.distance);
}
