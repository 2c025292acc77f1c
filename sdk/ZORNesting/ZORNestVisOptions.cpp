#include "ZORNestVisOptions.h"

#include <ZORSystem/ZORSysApiTrace.h>

void ZORNestVisOptions::SetFilters(int bits)
{
    ZOR_TRACE_CALL(bits);
    m_filters = bits;
}

void ZorTraceAppend(QByteArray& out, const ZORNestVisOptions& options)
{
    ZorTraceAppend(out, options.m_filters);
}
