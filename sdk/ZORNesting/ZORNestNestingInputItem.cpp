#include "ZORNestNestingInputItem.h"

#include <ZORSystem/ZORSysApiTrace.h>

class ZORNestNestingInputItemData : public QSharedData
{
public:
    QString name;
    QByteArray contents;
    int quantity = 1;
    bool isMirrored = false;
    double orientation = 0;
    bool isFlippable = false;
    bool isGrain90Set = false;
    bool isGrain180Set = false;
    bool isGrain270Set = false;
    double maxDeviation = 0;
    double deviationIncrement = 0;
    int priority = 0;
};

ZORNestNestingInputItem::ZORNestNestingInputItem(const QString& name, const QByteArray& contents)
    : d(new ZORNestNestingInputItemData)
{
    ZOR_TRACE_CALL(name, contents.size());
    d->name = name;
    d->contents = contents;
}

ZORNestNestingInputItem::ZORNestNestingInputItem(const ZORNestNestingInputItem& other) = default;
ZORNestNestingInputItem::ZORNestNestingInputItem(ZORNestNestingInputItem&& other) noexcept = default;
ZORNestNestingInputItem& ZORNestNestingInputItem::operator=(const ZORNestNestingInputItem& other) = default;
ZORNestNestingInputItem&
ZORNestNestingInputItem::operator=(ZORNestNestingInputItem&& other) noexcept = default;
ZORNestNestingInputItem::~ZORNestNestingInputItem() = default;

QString ZORNestNestingInputItem::GetName() const
{
    return d->name;
}

QByteArray ZORNestNestingInputItem::GetContents() const
{
    return d->contents;
}

double ZORNestNestingInputItem::GetDeviationIncrement() const
{
    return d->deviationIncrement;
}

void ZORNestNestingInputItem::SetQuantity(int quantity)
{
    ZOR_TRACE_CALL(quantity);
    d->quantity = quantity;
}

int ZORNestNestingInputItem::GetQuantity() const
{
    return d->quantity;
}

void ZORNestNestingInputItem::SetMirrored(bool isMirrored)
{
    ZOR_TRACE_CALL(isMirrored);
    d->isMirrored = isMirrored;
}

bool ZORNestNestingInputItem::IsMirrored() const
{
    return d->isMirrored;
}

void ZORNestNestingInputItem::SetOrientation(double angle)
{
    ZOR_TRACE_CALL(angle);
    d->orientation = angle;
}

double ZORNestNestingInputItem::GetOrientation() const
{
    return d->orientation;
}

void ZORNestNestingInputItem::SetFlippable(bool isFlippable)
{
    ZOR_TRACE_CALL(isFlippable);
    d->isFlippable = isFlippable;
}

bool ZORNestNestingInputItem::IsFlippable() const
{
    return d->isFlippable;
}

void ZORNestNestingInputItem::SetGrain90(bool isSet)
{
    ZOR_TRACE_CALL(isSet);
    d->isGrain90Set = isSet;
}

bool ZORNestNestingInputItem::IsGrain90Set() const
{
    return d->isGrain90Set;
}

void ZORNestNestingInputItem::SetGrain180(bool isSet)
{
    ZOR_TRACE_CALL(isSet);
    d->isGrain180Set = isSet;
}

bool ZORNestNestingInputItem::IsGrain180Set() const
{
    return d->isGrain180Set;
}

void ZORNestNestingInputItem::SetGrain270(bool isSet)
{
    ZOR_TRACE_CALL(isSet);
    d->isGrain270Set = isSet;
}

bool ZORNestNestingInputItem::IsGrain270Set() const
{
    return d->isGrain270Set;
}

void ZORNestNestingInputItem::SetMaxDeviation(double angle)
{
    ZOR_TRACE_CALL(angle);
    d->maxDeviation = angle;
}

double ZORNestNestingInputItem::GetMaxDeviation() const
{
    return d->maxDeviation;
}

void ZORNestNestingInputItem::SetPriority(int priority)
{
    ZOR_TRACE_CALL(priority);
    d->priority = priority;
}

int ZORNestNestingInputItem::GetPriority() const
{
    return d->priority;
}

void ZorTraceAppend(QByteArray& out, const ZORNestNestingInputItem& item)
{
    out += '(';
    ZorTraceAppend(out, item.d->name);
    out += ", ";
    ZorTraceAppend(out, item.d->quantity);
    out += ')';
}
