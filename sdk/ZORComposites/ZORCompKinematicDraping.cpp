#include "ZORCompKinematicDraping.h"

#include "draping/ZORCompNetGrowth_p.h"

#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORMathematics/ZORMathBoundingBox.h>
#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysException.h>

#include <algorithm>
#include <cmath>

namespace {

double LargestCoordinate(const ZORMathPoint& point)
{
    return std::max({std::abs(point.GetX()), std::abs(point.GetY()), std::abs(point.GetZ())});
}

bool IsWithin(const ZORGeoLocationOnSurface& location, const ZORGeoSurface* surface)
{
    constexpr double rounding = 1e-9;
    return location.surface == surface && location.triangle >= 1
           && location.triangle <= surface->GetNumTriangles() && location.weightB >= -rounding
           && location.weightC >= -rounding && location.weightB + location.weightC <= 1 + rounding
           && location.point.IsFinite();
}

bool IsPerpendicular(const ZORMathVector& direction, const ZORGeoLocationOnSurface& location)
{
    ZORMathPoint a, b, c;
    location.surface->GetVertices(location.triangle, a, b, c);
    const ZORMathVector normal = Cross((b - a).GetNormalized(), (c - a).GetNormalized()).GetNormalized();
    if (normal == ZORMathVector()) // without area: all directions end where they begin
        return false;
    return Cross(normal, direction.GetNormalized()).GetLength() <= 1e-9;
}

} // namespace

ZORCompKinematicDraping::ZORCompKinematicDraping(const ZORGeoSurface* surface,
                                                 const ZORCompStrategyParameters& parameters)
    : m_surface(surface)
    , m_parameters(parameters)
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

ZORCompDrapingNet ZORCompKinematicDraping::Run(const ZORGeoLocationOnSurface& seed,
                                               const ZORMathVector& direction) const
{
    ZOR_TRACE_CALL(seed, direction);
    if (!IsWithin(seed, m_surface))
        throw ZORSysException(tr("seed is not on the surface"));
    if (!direction.IsFinite())
        throw ZORSysException(tr("direction is not finite"));
    if (IsPerpendicular(direction, seed))
        throw ZORSysException(tr("the direction is perpendicular to the surface at the seed"));
    ZORCompDrapingNet net;
    if (m_parameters.step <= m_surface->GetBoundingBox().GetDiagonal())
        net = ZORCompNetGrowth(*m_surface, m_parameters).Run(seed, direction);
    if (net.GetCells().isEmpty())
        throw ZORSysException(tr("no cell of the net fits on the surface at the seed"));
    return net;
}
