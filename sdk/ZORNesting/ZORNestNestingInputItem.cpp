#include "ZORNestNestingInputItem.h"

#include <ZORSystem/ZORSysApiTrace.h>

ZORNestNestingInputItem::ZORNestNestingInputItem(const QString& name, const QByteArray& contents)
    : m_name(name)
    , m_contents(contents)
{
    ZOR_TRACE_CALL(name, contents.size());
}

void ZORNestNestingInputItem::SetQuantity(int quantity)
{
    ZOR_TRACE_CALL(quantity);
    m_quantity = quantity;
}

void ZORNestNestingInputItem::SetMirrored(bool isMirrored)
{
    ZOR_TRACE_CALL(isMirrored);
    m_isMirrored = isMirrored;
}

void ZORNestNestingInputItem::SetOrientation(double angle)
{
    ZOR_TRACE_CALL(angle);
    m_orientation = angle;
}

void ZORNestNestingInputItem::SetFlippable(bool isFlippable)
{
    ZOR_TRACE_CALL(isFlippable);
    m_isFlippable = isFlippable;
}

void ZORNestNestingInputItem::SetGrain90(bool isSet)
{
    ZOR_TRACE_CALL(isSet);
    m_isGrain90Set = isSet;
}

void ZORNestNestingInputItem::SetGrain180(bool isSet)
{
    ZOR_TRACE_CALL(isSet);
    m_isGrain180Set = isSet;
}

void ZORNestNestingInputItem::SetGrain270(bool isSet)
{
    ZOR_TRACE_CALL(isSet);
    m_isGrain270Set = isSet;
}

void ZORNestNestingInputItem::SetMaxDeviation(double angle)
{
    ZOR_TRACE_CALL(angle);
    m_maxDeviation = angle;
}

void ZORNestNestingInputItem::SetPriority(int priority)
{
    ZOR_TRACE_CALL(priority);
    m_priority = priority;
}

void ZorTraceAppend(QByteArray& out, const ZORNestNestingInputItem& item)
{
    out += '(';
    ZorTraceAppend(out, item.m_name);
    out += ", ";
    ZorTraceAppend(out, item.m_quantity);
    out += ')';
}
