#include "ZORMathPoint.h"

#include <cmath>

bool ZORMathPoint::IsFinite() const
{
    return std::isfinite(m_x) && std::isfinite(m_y) && std::isfinite(m_z);
}

QString ZORMathPoint::ToString(char format, int precision) const
{
    return u'(' + QString::number(m_x, format, precision) + QLatin1String(", ")
           + QString::number(m_y, format, precision) + QLatin1String(", ")
           + QString::number(m_z, format, precision) + u')';
}

void ZorTraceAppend(QByteArray& out, const ZORMathPoint& point)
{
    ZorTraceAppend(out, PositionVector(point));
}
