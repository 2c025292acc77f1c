#include "ZORWorkResult.h"

#include <ZORSystem/ZORSysApiTrace.h>

class ZORWorkResultData : public QSharedData
{
public:
    QList<ZORWorkResource> resources;
    QByteArray data;
};

ZORWorkResult::ZORWorkResult()
    : d(new ZORWorkResultData)
{
}

ZORWorkResult::ZORWorkResult(const ZORWorkResult& other) = default;
ZORWorkResult::ZORWorkResult(ZORWorkResult&& other) noexcept = default;
ZORWorkResult& ZORWorkResult::operator=(const ZORWorkResult& other) = default;
ZORWorkResult& ZORWorkResult::operator=(ZORWorkResult&& other) noexcept = default;
ZORWorkResult::~ZORWorkResult() = default;

ZORWorkResult::ZORWorkResult(const QList<ZORWorkResource>& resources, const QByteArray& data)
    : ZORWorkResult()
{
    ZOR_TRACE_CALL(resources, data);
    d->resources = resources;
    d->data = data;
}

ZORWorkResult::ZORWorkResult(const QByteArray& data)
    : ZORWorkResult()
{
    ZOR_TRACE_CALL(data);
    d->data = data;
}

QList<ZORWorkResource> ZORWorkResult::GetResources() const
{
    return d->resources;
}

QByteArray ZORWorkResult::GetData() const
{
    return d->data;
}
