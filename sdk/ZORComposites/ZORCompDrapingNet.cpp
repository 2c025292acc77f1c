#include "ZORCompDrapingNet.h"

#include <ZORSystem/ZORSysException.h>

#include <algorithm>
#include <cmath>
#include <utility>

using Node = ZORCompDrapingNode;
using Cell = ZORCompDrapingCell;

namespace {

using GridPlace = std::pair<int, int>; // weft, warp

GridPlace PlaceOf(const Node& node)
{
    return {node.weft, node.warp};
}

bool IsCell(const QList<Node>& nodes, const Cell& cell)
{
    for (const int node : cell.nodes) {
        if (node < 0 || node >= nodes.size())
            return false;
    }
    const auto [weft, warp] = PlaceOf(nodes[cell.nodes[0]]);
    return PlaceOf(nodes[cell.nodes[1]]) == GridPlace(weft, warp + 1)
           && PlaceOf(nodes[cell.nodes[2]]) == GridPlace(weft + 1, warp + 1)
           && PlaceOf(nodes[cell.nodes[3]]) == GridPlace(weft + 1, warp);
}

} // namespace

class ZORCompDrapingNetData : public QSharedData
{
public:
    double step = 0;
    double yarnAngle = 0;
    QList<Node> nodes;
    QList<Cell> cells;
};

ZORCompDrapingNet::ZORCompDrapingNet()
    : d(new ZORCompDrapingNetData)
{
}

ZORCompDrapingNet::ZORCompDrapingNet(const ZORCompDrapingNet& other) = default;
ZORCompDrapingNet::ZORCompDrapingNet(ZORCompDrapingNet&& other) noexcept = default;
ZORCompDrapingNet& ZORCompDrapingNet::operator=(const ZORCompDrapingNet& other) = default;
ZORCompDrapingNet& ZORCompDrapingNet::operator=(ZORCompDrapingNet&& other) noexcept = default;
ZORCompDrapingNet::~ZORCompDrapingNet() = default;

ZORCompDrapingNet::ZORCompDrapingNet(double step, double yarnAngle, const QList<Node>& nodes,
                                     const QList<Cell>& cells)
    : ZORCompDrapingNet()
{
    d->step = step;
    d->yarnAngle = yarnAngle;
    d->nodes = nodes;
    d->cells = cells;
    for (qsizetype i = 1; i < nodes.size(); ++i) {
        if (PlaceOf(nodes[i]) <= PlaceOf(nodes[i - 1]))
            throw ZORSysException(tr("nodes of the net are not in order"));
    }
    for (qsizetype i = 0; i < cells.size(); ++i) {
        if (!IsCell(nodes, cells[i]) || (i > 0 && cells[i].nodes[0] <= cells[i - 1].nodes[0]))
            throw ZORSysException(tr("cell %1 of the net is not between four neighbouring nodes").arg(i));
    }
}

void ZORCompDrapingNet::Measure(Cell& cell, const QList<Node>& nodes, double yarnAngle,
                                const ZORMathVector& reference)
{
    const auto point = [&](size_t corner) { return nodes[cell.nodes[corner]].location.point; };
    const ZORMathVector warp = (point(1) - point(0)) + (point(2) - point(3));
    const ZORMathVector weft = (point(3) - point(0)) + (point(2) - point(1));
    const ZORMathVector across = Cross(warp, weft);
    cell.shear = yarnAngle - std::atan2(across.GetLength(), Dot(warp, weft));

    constexpr double kVanishing = 1e-9; // of the length
    const ZORMathVector normal = across.GetNormalized();
    const ZORMathVector direction = reference.GetNormalized();
    const ZORMathVector zero = direction - Dot(direction, normal) * normal;
    cell.fibreAngle =
        zero.GetLength() < kVanishing ? 0 : std::atan2(Dot(Cross(zero, warp), normal), Dot(zero, warp));
}

bool ZORCompDrapingNet::IsEmpty() const
{
    return d->nodes.isEmpty();
}

double ZORCompDrapingNet::GetStep() const
{
    return d->step;
}

double ZORCompDrapingNet::GetYarnAngle() const
{
    return d->yarnAngle;
}

const QList<Node>& ZORCompDrapingNet::GetNodes() const
{
    return d->nodes;
}

const QList<Cell>& ZORCompDrapingNet::GetCells() const
{
    return d->cells;
}

int ZORCompDrapingNet::FindNode(int warp, int weft) const
{
    const GridPlace place(weft, warp);
    const auto found =
        std::lower_bound(d->nodes.begin(), d->nodes.end(), place,
                         [](const Node& node, const GridPlace& wanted) { return PlaceOf(node) < wanted; });
    return found != d->nodes.end() && PlaceOf(*found) == place ? int(found - d->nodes.begin()) : -1;
}

int ZORCompDrapingNet::FindCell(int warp, int weft) const
{
    const int node = FindNode(warp, weft);
    const auto found = std::lower_bound(d->cells.begin(), d->cells.end(), node,
                                        [](const Cell& cell, int wanted) { return cell.nodes[0] < wanted; });
    return node >= 0 && found != d->cells.end() && found->nodes[0] == node ? int(found - d->cells.begin())
                                                                           : -1;
}

void ZORCompDrapingNet::DetachFromSurface()
{
    const QList<Node>& nodes = GetNodes(); // without copying what other nets share
    if (nodes.isEmpty() || nodes.constFirst().location.IsNull())
        return;
    for (Node& node : d->nodes)
        node.location = {nullptr, 0, 0, 0, node.location.point};
}

double ZORCompDrapingNet::GetMaximumShear() const
{
    double maximum = 0;
    for (const Cell& cell : d->cells)
        maximum = std::max(maximum, std::abs(cell.shear));
    return maximum;
}

QList<int> ZORCompDrapingNet::GetLockedCells(double lockingAngle) const
{
    QList<int> locked;
    for (int i = 0; i < int(d->cells.size()); ++i) {
        if (std::abs(d->cells[i].shear) > lockingAngle)
            locked.append(i);
    }
    return locked;
}
