#include "ZORMathVector.h"

#include <ZORSystem/ZORSysApiTrace.h>

ZORMathVector ZORMathVector::GetNormalized() const
{
    // Between these bounds no square over- or underflows far enough to cost digits.
    constexpr double shortest = 1e-140;
    constexpr double longest = 1e140;
    const double length = GetLength();
    if (length > shortest && length < longest)
        return (1 / length) * *this;
    // Scale by the largest component first.
    const double largest = std::fmax(std::fabs(m_x), std::fmax(std::fabs(m_y), std::fabs(m_z)));
    if (!(largest > 0) || !IsFinite())
        return {};
    const ZORMathVector scaled(m_x / largest, m_y / largest, m_z / largest);
    return (1 / scaled.GetLength()) * scaled;
}

bool ZORMathVector::IsFinite() const
{
    return std::isfinite(m_x) && std::isfinite(m_y) && std::isfinite(m_z);
}

namespace {

void AppendTriple(QByteArray& out, double x, double y, double z)
{
    out += '(';
    ZorTraceAppend(out, x);
    out += ", ";
    ZorTraceAppend(out, y);
    out += ", ";
    ZorTraceAppend(out, z);
    out += ')';
}

} // namespace

void ZorTraceAppend(QByteArray& out, const ZORMathVector& vector)
{
    AppendTriple(out, vector.m_x, vector.m_y, vector.m_z);
}
