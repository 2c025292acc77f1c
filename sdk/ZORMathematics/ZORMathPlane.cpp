#include "ZORMathPlane.h"

void ZORMathPlane::SetOrigin(const ZORMathPoint& origin)
{
    m_origin = origin;
}

void ZORMathPlane::SetDirections(const ZORMathVector& first, const ZORMathVector& second)
{
    m_first = first;
    m_second = second;
}

ZORMathPoint ZORMathPlane::Evaluate(double u, double v) const
{
    return m_origin + (u * m_first + v * m_second);
}

void ZorTraceAppend(QByteArray& out, const ZORMathPlane& plane)
{
    out += '[';
    ZorTraceAppend(out, plane.m_origin);
    out += ", ";
    ZorTraceAppend(out, plane.m_first);
    out += ", ";
    ZorTraceAppend(out, plane.m_second);
    out += ']';
}
