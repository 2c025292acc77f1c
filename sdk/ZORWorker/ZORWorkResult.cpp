#include "ZORWorkResult.h"

#include <ZORSystem/ZORSysApiTrace.h>

ZORWorkResult::ZORWorkResult(const QList<ZORWorkResource>& resources, const QByteArray& data)
    : m_resources(resources)
    , m_data(data)
{
    ZOR_TRACE_CALL(resources, data);
}

ZORWorkResult::ZORWorkResult(const QByteArray& data)
    : m_data(data)
{
    ZOR_TRACE_CALL(data);
}
