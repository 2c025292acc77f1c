#include "ZORGeoLocationOnSurface.h"

#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORSystem/ZORSysApiTrace.h>

void ZorTraceAppend(QByteArray& out, const ZORGeoLocationOnSurface& location)
{
    ZorTraceAppend(out, static_cast<const QObject*>(location.surface));
    out += '#' + QByteArray::number(location.triangle) + '@';
    ZorTraceAppend(out, location.point);
}
