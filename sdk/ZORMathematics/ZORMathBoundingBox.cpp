#include "ZORMathBoundingBox.h"

#include <ZORSystem/ZORSysTraceArguments.h>

#include <algorithm>
#include <numeric>

ZORMathBoundingBox::ZORMathBoundingBox(const ZORMathPoint& lower, const ZORMathPoint& upper)
{
    Add(lower);
    Add(upper);
}

ZORMathPoint ZORMathBoundingBox::GetCenter() const
{
    return {std::midpoint(m_lower.GetX(), m_upper.GetX()), std::midpoint(m_lower.GetY(), m_upper.GetY()),
            std::midpoint(m_lower.GetZ(), m_upper.GetZ())};
}

double ZORMathBoundingBox::GetDiagonal() const
{
    return m_lower.DistanceTo(m_upper);
}

void ZORMathBoundingBox::Add(const ZORMathPoint& point)
{
    if (!point.IsFinite())
        return;
    if (m_empty) {
        m_lower = m_upper = point;
        m_empty = false;
        return;
    }
    m_lower = {std::min(m_lower.GetX(), point.GetX()), std::min(m_lower.GetY(), point.GetY()),
               std::min(m_lower.GetZ(), point.GetZ())};
    m_upper = {std::max(m_upper.GetX(), point.GetX()), std::max(m_upper.GetY(), point.GetY()),
               std::max(m_upper.GetZ(), point.GetZ())};
}

void ZORMathBoundingBox::Add(const ZORMathBoundingBox& box)
{
    if (box.m_empty)
        return;
    Add(box.m_lower);
    Add(box.m_upper);
}

void ZorTraceAppend(QByteArray& out, const ZORMathBoundingBox& box)
{
    out += '[';
    ZorTraceAppend(out, box.m_lower);
    out += ", ";
    ZorTraceAppend(out, box.m_upper);
    out += ']';
}
