#include "ZORCompNetOverlap_p.h"

#include <algorithm>
#include <cmath>

namespace {

// Whether places of the grid are further apart than a cell and its neighbours.
bool IsApart(int warp, int weft, const ZORCompNetOverlap::Place& node, int width)
{
    return node.warp < warp - 1 || node.warp > warp + width || node.weft < weft - 1
           || node.weft > weft + width;
}

} // namespace

ZORCompNetOverlap::ZORCompNetOverlap(double step)
    : m_step(step)
{
}

ZORCompNetOverlap::Voxel ZORCompNetOverlap::VoxelOf(const ZORMathPoint& point) const
{
    const double size = 2 * m_step;
    return {qint64(std::floor(point.GetX() / size)), qint64(std::floor(point.GetY() / size)),
            qint64(std::floor(point.GetZ() / size))};
}

void ZORCompNetOverlap::AddCell(int warp, int weft, const std::array<ZORMathPoint, 4>& corners)
{
    Cell cell;
    cell.warp = warp;
    cell.weft = weft;
    cell.warpSide = 0.5 * ((corners[1] - corners[0]) + (corners[2] - corners[3]));
    cell.weftSide = 0.5 * ((corners[3] - corners[0]) + (corners[2] - corners[1]));
    cell.center =
        corners[0]
        + 0.25 * ((corners[1] - corners[0]) + (corners[2] - corners[0]) + (corners[3] - corners[0]));
    cell.normal = Cross(cell.warpSide, cell.weftSide).GetNormalized();
    m_cells[VoxelOf(cell.center)].push_back(cell);
}

// Items whose places are nearer than a step are in the voxels that this box reaches into.
template<class Item, class Test>
bool ZORCompNetOverlap::AnyNear(const QHash<Voxel, std::vector<Item>>& items, const ZORMathPoint& point,
                                const Test& test) const
{
    const ZORMathVector reach(m_step, m_step, m_step);
    const Voxel lower = VoxelOf(point - reach);
    const Voxel upper = VoxelOf(point + reach);
    for (qint64 x = lower.x; x <= upper.x; ++x) {
        for (qint64 y = lower.y; y <= upper.y; ++y) {
            for (qint64 z = lower.z; z <= upper.z; ++z) {
                const auto found = items.constFind(Voxel{x, y, z});
                if (found != items.constEnd() && std::any_of(found->begin(), found->end(), test))
                    return true;
            }
        }
    }
    return false;
}

bool ZORCompNetOverlap::Covers(const Cell& cell, const Place& node) const
{
    constexpr double kHalf = 0.5 + 0.02; // a net that closes on itself to rounding meets itself
    if (!IsApart(cell.warp, cell.weft, node, 2) || Dot(cell.normal, node.normal) <= 0)
        return false;
    const ZORMathVector offset = node.point - cell.center;
    if (std::abs(Dot(offset, cell.normal)) > 0.25 * m_step)
        return false;
    const double area = Dot(Cross(cell.warpSide, cell.weftSide), cell.normal);
    const double alongWarp = Dot(Cross(offset, cell.weftSide), cell.normal);
    const double alongWeft = Dot(Cross(cell.warpSide, offset), cell.normal);
    return std::abs(alongWarp) <= kHalf * area && std::abs(alongWeft) <= kHalf * area;
}

bool ZORCompNetOverlap::IsOnCell(const Place& node) const
{
    return AnyNear(m_cells, node.point, [&](const Cell& cell) { return Covers(cell, node); });
}

bool ZORCompNetOverlap::IsOnYarn(const Place& node) const
{
    return AnyNear(m_yarnNodes, node.point, [&](const Place& other) {
        return IsApart(other.warp, other.weft, node, 1) && Dot(other.normal, node.normal) > 0
               && (other.point - node.point).GetLength() < 0.5 * m_step;
    });
}
