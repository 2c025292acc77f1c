#include "ZORCompStrategyParameters.h"

#include "formats/ZORCompNumbers_p.h"

#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysException.h>

#include <cmath>

namespace {

constexpr double kMargin = 1e-9; // limits in degrees are met by angles converted from degrees

bool IsBetween(double angle, double lowestDegrees, double highestDegrees)
{
    return angle >= ZorCompToRadians(lowestDegrees) - kMargin
           && angle <= ZorCompToRadians(highestDegrees) + kMargin;
}

bool IsSameExtent(double a, double b)
{
    return a == b || (!std::isfinite(a) && !std::isfinite(b));
}

} // namespace

void ZORCompStrategyParameters::Check() const
{
    if (generators != Geodesic && generators != ConstantAngle)
        throw ZORSysException(tr("generators %1 are unknown").arg(int(generators)));
    if (!(step > 0) || !std::isfinite(step))
        throw ZORSysException(tr("step is not a length above 0"));
    if (!std::isfinite(fibreAngle))
        throw ZORSysException(tr("fibre angle is not finite"));
    if (!IsBetween(yarnAngle, 10, 170))
        throw ZORSysException(tr("yarn angle is not between 10 and 170 degrees"));
    if (!IsBetween(lockingAngle, 0, 90))
        throw ZORSysException(tr("locking angle is not between 0 and 90 degrees"));
    if (warpExtent < 0 || weftExtent < 0)
        throw ZORSysException(tr("extent is negative"));
}

bool operator==(const ZORCompStrategyParameters& a, const ZORCompStrategyParameters& b)
{
    return a.generators == b.generators && a.step == b.step && a.fibreAngle == b.fibreAngle
           && a.yarnAngle == b.yarnAngle && a.lockingAngle == b.lockingAngle
           && IsSameExtent(a.warpExtent, b.warpExtent) && IsSameExtent(a.weftExtent, b.weftExtent);
}

void ZorTraceAppend(QByteArray& out, const ZORCompStrategyParameters& parameters)
{
    out += '{';
    ZorTraceAppend(out, int(parameters.generators));
    for (const double number : {parameters.step, parameters.fibreAngle, parameters.yarnAngle,
                                parameters.lockingAngle, parameters.warpExtent, parameters.weftExtent}) {
        out += ", ";
        ZorTraceAppend(out, number);
    }
    out += '}';
}
