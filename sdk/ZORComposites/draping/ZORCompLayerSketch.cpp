#include <ZORComposites/ZORCompDrapingLayer.h>
#include <ZORFeature/ZORFeatSketch.h>

#include <algorithm>
#include <numeric>
#include <vector>

namespace {

using Node = ZORCompDrapingNode;

// A net is drawn by at most about that many points; finer ones by every second yarn, every third ...
constexpr qsizetype kMostLinePoints = 100'000;

// Splits nodes, sorted along yarns, into chains of neighbors on the yarns to be drawn.
template<class Yarn, class Step>
void AddYarns(const QList<Node>& nodes, const std::vector<qsizetype>& order, Yarn yarn, Step step, int stride,
              QList<ZORMathSetOfPoints>& chains)
{
    ZORMathSetOfPoints chain;
    const Node* last = nullptr;
    const auto end = [&] {
        if (chain.size() > 1)
            chains.append(chain);
        chain.clear();
    };
    for (const qsizetype index : order) {
        const Node& node = nodes[index];
        if (yarn(node) % stride != 0)
            continue;
        if (last && (yarn(*last) != yarn(node) || step(*last) + 1 != step(node)))
            end();
        chain.append(node.location.point);
        last = &node;
    }
    end();
}

QList<ZORMathSetOfPoints> YarnsOf(const QList<Node>& nodes)
{
    const auto stride = int(1 + 2 * nodes.size() / kMostLinePoints);
    const auto warp = [](const Node& node) { return node.warp; };
    const auto weft = [](const Node& node) { return node.weft; };
    std::vector<qsizetype> order(size_t(nodes.size()));
    std::iota(order.begin(), order.end(), 0); // sorted by weft, then by warp
    QList<ZORMathSetOfPoints> chains;
    AddYarns(nodes, order, weft, warp, stride, chains);
    std::stable_sort(order.begin(), order.end(),
                     [&](qsizetype a, qsizetype b) { return nodes[a].warp < nodes[b].warp; });
    AddYarns(nodes, order, warp, weft, stride, chains);
    return chains;
}

const ZORFeatSketcherRegistration
    kLayerSketcher({&ZORCompDrapingLayer::staticMetaObject, ZORFeatKind::Layer,
                    [](const ZORGeoGeometry& object, ZORFeatSketch& sketch) {
                        const QList<Node> nodes =
                            static_cast<const ZORCompDrapingLayer&>(object).GetNet().GetNodes();
                        sketch.numLinePoints = 2 * nodes.size();
                        sketch.makeLines = [nodes] { return YarnsOf(nodes); };
                    }});

} // namespace
