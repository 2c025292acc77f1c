#include "ZORNestPlane_p.h"

#include <algorithm>

void ZORNestPlaneBox::Add(ZORNestPlanePoint point)
{
    xMin = std::min(xMin, point.x);
    yMin = std::min(yMin, point.y);
    xMax = std::max(xMax, point.x);
    yMax = std::max(yMax, point.y);
}

void ZORNestPlaneBox::Add(const ZORNestPlaneBox& box)
{
    xMin = std::min(xMin, box.xMin);
    yMin = std::min(yMin, box.yMin);
    xMax = std::max(xMax, box.xMax);
    yMax = std::max(yMax, box.yMax);
}

bool ZORNestPlaneMap::IsSimilarity() const
{
    constexpr double kRoundness = 1e-9;
    const double size = std::max(x.Dot(x), y.Dot(y));
    return std::abs(x.Dot(x) - y.Dot(y)) <= kRoundness * size && std::abs(x.Dot(y)) <= kRoundness * size;
}
