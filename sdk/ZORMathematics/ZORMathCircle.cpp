#include "ZORMathCircle.h"

#include <ZORSystem/ZORSysTraceArguments.h>

#include <cmath>
#include <numbers>

namespace {

constexpr double kFullTurn = 2 * std::numbers::pi;

} // namespace

ZORMathCircle::ZORMathCircle(const ZORMathPoint& center, double radius)
    : m_center(center)
    , m_radius(std::abs(radius))
{
}

int ZORMathCircle::ProjectPoint(const ZORMathPoint& point, double& parameter) const
{
    const ZORMathVector offset = point - m_center;
    const double distance = std::hypot(offset.GetX(), offset.GetY());
    if (distance == 0.0 || !offset.IsFinite())
        return NoDirection;
    double angle = std::atan2(offset.GetY(), offset.GetX());
    if (angle < 0)
        angle += kFullTurn;
    parameter = angle < kFullTurn ? angle : 0; // the sum may round up
    return std::hypot(distance - m_radius, offset.GetZ()) <= tolerance ? OnCircle : OffCircle;
}

double ZORMathCircle::GetParam(double parameter) const
{
    if (!std::isfinite(parameter))
        return 0;
    const double turns = parameter / kFullTurn;
    const double part = turns - std::floor(turns);
    return part < 1 ? part : 0; // the difference may round up
}

ZORMathPoint ZORMathCircle::Evaluate(double parameter) const
{
    return m_center + ZORMathVector(m_radius * std::cos(parameter), m_radius * std::sin(parameter), 0);
}

void ZorTraceAppend(QByteArray& out, const ZORMathCircle& circle)
{
    out += '(';
    ZorTraceAppend(out, circle.m_center);
    out += ", ";
    ZorTraceAppend(out, circle.m_radius);
    out += ')';
}
