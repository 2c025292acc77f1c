#include "ZORMathVector.h"

#include <ZORSystem/ZORSysApiTrace.h>

ZORMathVector ZORMathVector::GetNormalized() const
{
    const double length = GetLength();
    if (length > 0 && std::isfinite(length))
        return (1 / length) * *this;
    // The square under- or overflowed, or the vector is zero: scale by the largest component first.
    const double largest = std::fmax(std::fabs(m_x), std::fmax(std::fabs(m_y), std::fabs(m_z)));
    if (!(largest > 0) || !std::isfinite(largest))
        return {};
    const ZORMathVector scaled(m_x / largest, m_y / largest, m_z / largest);
    return (1 / scaled.GetLength()) * scaled;
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
