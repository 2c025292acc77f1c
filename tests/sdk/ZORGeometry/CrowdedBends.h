// A curve of crowded bends.

#pragma once

#include "SmootherChecks.h"

#include <numbers>

using Locations = ZORGeoCurveOnSurfaceSmoother::Locations;
using std::numbers::pi;

// Bends in both directions, far nearer to each other than the radius.
inline Locations CrowdedZigzag(const ZORGeoSurface& surface, int bends, double pitch, double height)
{
    QList<ZORMathPoint> points;
    for (int i = 0; i < bends + 2; ++i)
        points.append({-290 + i * pitch, i % 2 == 0 ? -height : height, 0});
    return Through(surface, points);
}
