#include "ZORMathVector.h"

#include <ZORSystem/ZORSysTraceArguments.h>

#include <limits>

namespace {

// Brings the largest component close to 1 without rounding; all must be finite, and one not zero.
ZORMathVector Scaled(const ZORMathVector& vector, int exponent)
{
    return {std::ldexp(vector.GetX(), exponent), std::ldexp(vector.GetY(), exponent),
            std::ldexp(vector.GetZ(), exponent)};
}

double LargestComponent(const ZORMathVector& vector)
{
    return std::fmax(std::fabs(vector.GetX()), std::fmax(std::fabs(vector.GetY()), std::fabs(vector.GetZ())));
}

} // namespace

double ZORMathVector::GetExtremeLength() const
{
    const double largest = LargestComponent(*this);
    if (std::isinf(largest))
        return largest;
    if (!IsFinite())
        return std::numeric_limits<double>::quiet_NaN();
    if (largest == 0)
        return 0;
    const int exponent = std::ilogb(largest);
    return std::ldexp(Scaled(*this, -exponent).GetLength(), exponent);
}

ZORMathVector ZORMathVector::GetNormalized() const
{
    const double square = Dot(*this, *this);
    if (IsAccurate(square))
        return (1 / std::sqrt(square)) * *this;
    const double largest = LargestComponent(*this);
    if (largest == 0 || !IsFinite())
        return {};
    const ZORMathVector scaled = Scaled(*this, -std::ilogb(largest));
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
