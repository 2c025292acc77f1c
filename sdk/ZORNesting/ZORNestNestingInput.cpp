#include "ZORNestNestingInput.h"

#include <ZORSystem/ZORSysApiTrace.h>

ZORNestNestingInput::ZORNestNestingInput(const QString& materialId, double thickness,
                                         const QList<ZORNestNestingInputItem>& items,
                                         const QList<ZORNestNestingInputPackaging>& packagings)
    : m_materialId(materialId)
    , m_materialThickness(thickness)
    , m_items(items)
    , m_packagings(packagings)
{
    ZOR_TRACE_CALL(materialId, thickness, items, packagings);
}

void ZORNestNestingInput::SetMaxDeviation(double angle)
{
    ZOR_TRACE_CALL(angle);
    m_maxDeviation = angle;
}

void ZORNestNestingInput::SetDeviationIncrement(double angle)
{
    ZOR_TRACE_CALL(angle);
    m_deviationIncrement = angle;
}

void ZORNestNestingInput::SetSingleSidedMaterial(bool isSingleSided)
{
    ZOR_TRACE_CALL(isSingleSided);
    m_isSingleSided = isSingleSided;
}

void ZORNestNestingInput::SetGrain90(bool isSet)
{
    ZOR_TRACE_CALL(isSet);
    m_isGrain90Set = isSet;
}

void ZORNestNestingInput::SetGrain180(bool isSet)
{
    ZOR_TRACE_CALL(isSet);
    m_isGrain180Set = isSet;
}

void ZORNestNestingInput::SetGrain270(bool isSet)
{
    ZOR_TRACE_CALL(isSet);
    m_isGrain270Set = isSet;
}

void ZORNestNestingInput::SetItemSeparation(double distance)
{
    ZOR_TRACE_CALL(distance);
    m_itemSeparation = distance;
}

void ZORNestNestingInput::SetFrameWidth(double width)
{
    ZOR_TRACE_CALL(width);
    m_frameWidth = width;
}

void ZORNestNestingInput::SetPackagingUsageRule(ZORNestBaseFeature::PackagingUsageRule rule)
{
    ZOR_TRACE_CALL(rule);
    m_packagingUsageRule = rule;
}

void ZORNestNestingInput::SetMaxRunTime(double seconds)
{
    ZOR_TRACE_CALL(seconds);
    m_maxRunTime = seconds;
}

void ZORNestNestingInput::SetMinRunTime(double seconds)
{
    ZOR_TRACE_CALL(seconds);
    m_minRunTime = seconds;
}

void ZORNestNestingInput::SetStackSize(int size)
{
    ZOR_TRACE_CALL(size);
    m_stackSize = size;
}

void ZORNestNestingInput::SetSeed(quint64 seed)
{
    ZOR_TRACE_CALL(seed);
    m_seed = seed;
}

void ZORNestNestingInput::SetMaxSteps(qint64 steps)
{
    ZOR_TRACE_CALL(steps);
    m_maxSteps = steps;
}

void ZorTraceAppend(QByteArray& out, const ZORNestNestingInput& input)
{
    out += '(';
    ZorTraceAppend(out, input.m_materialId);
    out += ", ";
    ZorTraceAppend(out, input.m_items.size());
    out += ", ";
    ZorTraceAppend(out, input.m_packagings.size());
    out += ')';
}
