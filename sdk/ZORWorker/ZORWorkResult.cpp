#include "ZORWorkResult.h"

#include <ZORSystem/ZORSysApiTrace.h>

ZORWorkResult::ZORWorkResult(const QList<ZORWorkResource>& resources)
    : m_resources(resources)
{
    ZOR_TRACE_CALL(resources);
}
