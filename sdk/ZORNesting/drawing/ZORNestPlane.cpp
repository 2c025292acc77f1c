#include "ZORNestPlane_p.h"

#include <algorithm>

bool ZORNestPlaneMap::IsSimilarity() const
{
    constexpr double kRoundness = 1e-9;
    const double size = std::max(Dot(x, x), Dot(y, y));
    return std::abs(Dot(x, x) - Dot(y, y)) <= kRoundness * size && std::abs(Dot(x, y)) <= kRoundness * size;
}
