#include "ZORGeoRangeOfCurve.h"

#include <ZORSystem/ZORSysApiTrace.h>

void ZorTraceAppend(QByteArray& out, const ZORGeoRangeOfCurve& range)
{
    out += '[';
    ZorTraceAppend(out, range.GetStart());
    out += ", ";
    ZorTraceAppend(out, range.GetEnd());
    out += ']';
}
