#include "ZORNestNestingInputPackaging.h"

#include <ZORSystem/ZORSysApiTrace.h>

ZORNestNestingInputPackaging::ZORNestNestingInputPackaging(const QString& name, double width, double length)
    : m_name(name)
    , m_width(width)
    , m_length(length)
{
    ZOR_TRACE_CALL(name, width, length);
}

void ZORNestNestingInputPackaging::SetQuantity(int quantity)
{
    ZOR_TRACE_CALL(quantity);
    m_quantity = quantity;
}

void ZORNestNestingInputPackaging::SetLeftTrim(double width)
{
    ZOR_TRACE_CALL(width);
    m_leftTrim = width;
}

void ZORNestNestingInputPackaging::SetRightTrim(double width)
{
    ZOR_TRACE_CALL(width);
    m_rightTrim = width;
}

void ZORNestNestingInputPackaging::SetTopTrim(double width)
{
    ZOR_TRACE_CALL(width);
    m_topTrim = width;
}

void ZORNestNestingInputPackaging::SetBottomTrim(double width)
{
    ZOR_TRACE_CALL(width);
    m_bottomTrim = width;
}

void ZORNestNestingInputPackaging::SetCost(double cost)
{
    ZOR_TRACE_CALL(cost);
    m_cost = cost;
}

void ZorTraceAppend(QByteArray& out, const ZORNestNestingInputPackaging& packaging)
{
    out += '(';
    ZorTraceAppend(out, packaging.m_name);
    out += ", ";
    ZorTraceAppend(out, packaging.m_width);
    out += ", ";
    ZorTraceAppend(out, packaging.m_length);
    out += ", ";
    ZorTraceAppend(out, packaging.m_quantity);
    out += ')';
}
