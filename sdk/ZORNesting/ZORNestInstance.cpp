#include "ZORNestInstance.h"

#include "formats/ZORNestInstanceReader_p.h"
#include "formats/ZORNestInstance_p.h"

#include <ZORSystem/ZORSysApiTrace.h>

ZORNestInstance::ZORNestInstance()
    : d(new ZORNestInstanceData)
{
}

ZORNestInstance::ZORNestInstance(ZORNestInstanceData* data)
    : d(data)
{
}

ZORNestInstance::ZORNestInstance(const ZORNestInstance& other) = default;
ZORNestInstance::ZORNestInstance(ZORNestInstance&& other) noexcept = default;
ZORNestInstance& ZORNestInstance::operator=(const ZORNestInstance& other) = default;
ZORNestInstance& ZORNestInstance::operator=(ZORNestInstance&& other) noexcept = default;
ZORNestInstance::~ZORNestInstance() = default;

ZORNestInstance ZORNestInstance::Read(const QByteArray& document, Purpose purpose)
{
    ZOR_TRACE_CALL(document, purpose);
    ZORNestInstance instance;
    ZORNestInstanceReader(*instance.d).Read(document, purpose);
    return instance;
}

QString ZORNestInstance::GetName() const
{
    return d->name;
}

qsizetype ZORNestInstance::GetNumItems() const
{
    return qsizetype(d->job.items.size());
}

QString ZORNestInstance::GetItemName(qsizetype index) const
{
    return QString::fromStdString(d->job.items[size_t(index)].name);
}

int ZORNestInstance::GetItemId(qsizetype index) const
{
    return d->itemIds[size_t(index)];
}

qsizetype ZORNestInstance::GetNumPackagings() const
{
    return qsizetype(d->job.kinds.size());
}

QString ZORNestInstance::GetPackagingName(qsizetype index) const
{
    return QString::fromStdString(d->job.kinds[size_t(index)].name);
}

int ZORNestInstance::GetPackagingId(qsizetype index) const
{
    return d->kindIds[size_t(index)];
}

QString ZORNestInstance::GetFault() const
{
    return d->fault;
}

quint64 ZORNestInstance::GetSeed() const
{
    return d->job.seed;
}

void ZORNestInstance::SetSeed(quint64 seed)
{
    ZOR_TRACE_CALL(seed);
    d->job.seed = seed;
}

void ZorTraceAppend(QByteArray& out, const ZORNestInstance& instance)
{
    out += '(';
    ZorTraceAppend(out, instance.GetName());
    out += ", ";
    ZorTraceAppend(out, instance.GetNumItems());
    out += ')';
}
