#include "ZORCompKinematicDraping.h"

#include "draping/ZORCompNetGrowth_p.h"
#include "features/ZORCompAngles_p.h"

#include <ZORGeometry/ZORGeoOnSurface.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORMathematics/ZORMathBoundingBox.h>
#include <ZORMathematics/ZORMathFunctions.h>
#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysException.h>

#include <algorithm>
#include <cmath>

namespace {

bool IsWithin(const ZORGeoLocationOnSurface& location, const ZORGeoSurface* surface)
{
    return location.surface == surface && location.triangle >= 1
           && location.triangle <= surface->GetNumTriangles() && ZORGeoOnSurface::IsWithinTriangle(location)
           && location.point.IsFinite();
}

} // namespace

class ZORCompKinematicDraping::Private
{
public:
    const ZORGeoSurface* surface; // not owned
    ZORCompStrategyParameters parameters;
};

ZORCompKinematicDraping::ZORCompKinematicDraping(const ZORGeoSurface* surface,
                                                 const ZORCompStrategyParameters& parameters)
    : d(new Private{surface, parameters})
{
    ZOR_TRACE_CALL(surface, parameters);
    if (!surface)
        throw ZORSysException(tr("surface is null"));
    parameters.Check();
    const ZORMathBoundingBox box = surface->GetBoundingBox();
    const double size = box.IsEmpty() ? 0
                                      : std::max(LargestCoordinate(box.GetLowerPoint()),
                                                 LargestCoordinate(box.GetUpperPoint()));
    if (parameters.step < 1e-8 * size)
        throw ZORSysException(tr("the step is too small for the surface"));
}

ZORCompKinematicDraping::~ZORCompKinematicDraping() = default;

ZORCompDrapingNet ZORCompKinematicDraping::Run(const ZORGeoLocationOnSurface& seed,
                                               const ZORMathVector& direction) const
{
    ZOR_TRACE_CALL(seed, direction);
    if (!IsWithin(seed, d->surface))
        throw ZORSysException(tr("seed is not on the surface"));
    if (!direction.IsFinite())
        throw ZORSysException(tr("direction is not finite"));
    if (ZORGeoOnSurface::IsPerpendicular(direction, seed, zor::comp::kSmallestAngle))
        throw ZORSysException(tr("the direction is perpendicular to the surface at the seed"));
    ZORCompDrapingNet net;
    if (d->parameters.step <= d->surface->GetBoundingBox().GetDiagonal())
        net = ZORCompNetGrowth(*d->surface, d->parameters).Run(seed, direction);
    if (net.GetCells().isEmpty())
        throw ZORSysException(tr("no cell of the net fits on the surface at the seed"));
    return net;
}
