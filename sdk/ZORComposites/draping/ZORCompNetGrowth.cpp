#include "ZORCompNetGrowth_p.h"

#include <ZORComposites/ZORCompKinematicDraping.h>
#include <ZORGeometry/ZORGeoCurveOnSurfaceProcessor.h>
#include <ZORSystem/ZORSysException.h>
#include <ZORSystem/ZORSysProgress.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>

using Growth = ZORCompNetGrowth;
using Location = ZORGeoLocationOnSurface;

namespace {

constexpr int kMaximumNodes = 1000000;
constexpr double kMaximumReach = 1 << 29; // steps

constexpr std::array<std::array<int, 2>, 4> kSides{{{1, 0}, {-1, 0}, {0, 1}, {0, -1}}};
constexpr std::array<std::array<int, 2>, 4> kQuadrants{{{1, 1}, {-1, 1}, {-1, -1}, {1, -1}}};

quint64 KeyOf(int warp, int weft)
{
    return quint64(quint32(warp)) << 32 | quint32(weft);
}

// Steps within an extent; a step that ends on it to rounding is within.
double ReachOf(double extent, double step)
{
    return std::isfinite(extent) ? std::min(std::floor(extent / step + 1e-9), kMaximumReach) : kMaximumReach;
}

} // namespace

Growth::ZORCompNetGrowth(const ZORGeoSurface& surface, const ZORCompStrategyParameters& parameters)
    : m_surface(surface)
    , m_parameters(parameters)
    , m_step(parameters.step)
    , m_warpReach(ReachOf(parameters.warpExtent, parameters.step))
    , m_weftReach(ReachOf(parameters.weftExtent, parameters.step))
    , m_walk(surface)
    , m_overlap(parameters.step)
{
}

ZORCompDrapingNet Growth::Run(const Location& seed, const ZORMathVector& direction)
{
    const double area = std::min(m_surface.GetArea(), 4 * m_parameters.warpExtent * m_parameters.weftExtent);
    if (area > kMaximumNodes * m_step * m_step * std::sin(m_parameters.yarnAngle))
        ThrowTooManyNodes();
    const double expected = std::max(1.0, area / (m_step * m_step * std::sin(m_parameters.yarnAngle)));
    Start(seed, direction);
    while (!m_candidates.empty() || !m_prolongations.empty()) {
        ZORSysProgress::Check(double(m_nodes.size()) / expected);
        Queue& queue = m_candidates.empty() ? m_prolongations : m_candidates;
        const Candidate candidate = queue.top();
        queue.pop();
        Try(candidate);
    }
    return Finish(direction);
}

void Growth::Start(const Location& seed, const ZORMathVector& direction)
{
    ZORMathPoint a, b, c;
    m_surface.GetVertices(seed.triangle, a, b, c);
    const Node node{0, 0, seed, Cross(b - a, c - a).GetNormalized()};
    m_overlap.AddYarnNode({0, 0, seed.point, node.normal});
    Place(node);
    for (size_t side = 0; side < kSides.size(); ++side) {
        const double angle = m_parameters.fibreAngle + (side < 2 ? 0 : m_parameters.yarnAngle);
        const auto course = side % 2 == 1 ? ZORCompYarn::Course::Backward : ZORCompYarn::Course::Forward;
        m_yarns[side].emplace(m_parameters.generators, seed, direction, angle, course, m_step);
        const auto [warp, weft] = kSides[side];
        Push(Straight, warp, weft, -warp, -weft);
    }
}

void Growth::Try(const Candidate& candidate)
{
    if (Find(candidate.warp, candidate.weft) >= 0)
        return;
    if (candidate.kind == Crossing)
        TryCrossing(candidate);
    else if (candidate.kind == Straight)
        TryStraight(candidate);
    else
        TryProlonged(candidate);
}

void Growth::TryStraight(const Candidate& candidate)
{
    const std::array<int, 2> direction{-candidate.warpFrom, -candidate.weftFrom};
    const auto side = size_t(std::find(kSides.begin(), kSides.end(), direction) - kSides.begin());
    Location location;
    if (m_yarns[side]->Next(location))
        PlaceOnYarn(candidate, location);
}

void Growth::TryCrossing(const Candidate& candidate)
{
    const auto [ring, kind, number, warp, weft, warpFrom, weftFrom] = candidate;
    const Node& corner = m_nodes[size_t(Find(warp + warpFrom, weft + weftFrom))];
    const ZORMathPoint a = m_nodes[size_t(Find(warp + warpFrom, weft))].location.point;
    const ZORMathPoint b = m_nodes[size_t(Find(warp, weft + weftFrom))].location.point;
    Location location;
    const ZORCompSectionWalk::Outcome outcome = m_walk.FindCorner(corner.location, a, b, m_step, location);
    if (outcome == ZORCompSectionWalk::Folds)
        Block(candidate);
    if (outcome != ZORCompSectionWalk::Found)
        return;

    const ZORMathVector alongWarp = -warpFrom * (location.point - a);
    const ZORMathVector alongWeft = -weftFrom * (location.point - b);
    const ZORMathVector normal = Cross(alongWarp, alongWeft).GetNormalized();
    if (Dot(normal, corner.normal) < -0.5 || m_overlap.IsOnCell({warp, weft, location.point, normal}))
        Block(candidate);
    else
        Place({warp, weft, location, normal});
}

void Growth::TryProlonged(const Candidate& candidate)
{
    const auto [ring, kind, number, warp, weft, warpFrom, weftFrom] = candidate;
    if (IsBlocked(warp, weft) || IsBlocked(warp + weftFrom, weft + warpFrom)
        || IsBlocked(warp - weftFrom, weft - warpFrom)) {
        Block(candidate);
        return;
    }
    const Location end = m_nodes[size_t(Find(warp + warpFrom, weft + weftFrom))].location;
    const Location before = m_nodes[size_t(Find(warp + 2 * warpFrom, weft + 2 * weftFrom))].location;
    ZORCompYarn yarn(ZORCompStrategyParameters::Geodesic, end, DirectionAt(before, end), 0,
                     ZORCompYarn::Course::Forward, m_step);
    Location location;
    if (yarn.Next(location))
        PlaceOnYarn(candidate, location);
}

// The direction in which the straight way between two neighbouring nodes arrives. That of the chord would turn a
// yarn that is prolonged again and again.
ZORMathVector Growth::DirectionAt(const Location& before, const Location& end) const
{
    const QList<Location> way = ZORGeoCurveOnSurfaceProcessor(&m_surface, m_step, m_step)
                                    .ComputePointToPoint(before, end)
                                    .GetLocations();
    for (qsizetype i = way.size() - 1; i > 0; --i) {
        const ZORMathVector segment = way[i].point - way[i - 1].point;
        if (segment.GetLength() > 1e-6 * m_step)
            return segment;
    }
    return end.point - before.point;
}

void Growth::PlaceOnYarn(const Candidate& candidate, const Location& location)
{
    const int warp = candidate.warp;
    const int weft = candidate.weft;
    const Node& before = m_nodes[size_t(Find(warp + candidate.warpFrom, weft + candidate.weftFrom))];
    const ZORCompNetOverlap::Place place{warp, weft, location.point, NormalAt(location, before.normal)};
    if (m_overlap.IsOnCell(place) || m_overlap.IsOnYarn(place)) {
        Block(candidate);
        return;
    }
    m_overlap.AddYarnNode(place);
    Place({warp, weft, location, place.normal});
    if (candidate.kind == Straight)
        Push(Straight, warp - candidate.warpFrom, weft - candidate.weftFrom, candidate.warpFrom,
             candidate.weftFrom);
}

// The normal of the triangle of a location, at the side of a normal nearby.
ZORMathVector Growth::NormalAt(const Location& location, const ZORMathVector& like) const
{
    ZORMathPoint a, b, c;
    m_surface.GetVertices(location.triangle, a, b, c);
    const ZORMathVector normal = Cross(b - a, c - a).GetNormalized();
    if (normal == ZORMathVector())
        return like;
    return Dot(normal, like) < 0 ? -normal : normal;
}

void Growth::ThrowTooManyNodes()
{
    throw ZORSysException(
        ZORCompKinematicDraping::tr("the net would have more than %1 nodes, take a larger step")
            .arg(kMaximumNodes));
}

void Growth::Place(const Node& node)
{
    if (m_nodes.size() >= size_t(kMaximumNodes))
        ThrowTooManyNodes();
    m_nodes.push_back(node);
    SlotOf(node.warp, node.weft) = int(m_nodes.size());
    MakeCells(node.warp, node.weft);
    PushCrossings(node.warp, node.weft);
    PushProlongations(node.warp, node.weft);
}

// Makes the cells that a new node completes. Where the net has grown around a hole, or from two sides, four
// neighbours may be no cell.
void Growth::MakeCells(int warp, int weft)
{
    for (const auto& [warpTo, weftTo] : kQuadrants) {
        const int i = std::min(warp, warp + warpTo);
        const int j = std::min(weft, weft + weftTo);
        const std::array<int, 4> nodes{Find(i, j), Find(i + 1, j), Find(i + 1, j + 1), Find(i, j + 1)};
        if (std::any_of(nodes.begin(), nodes.end(), [](int node) { return node < 0; }))
            continue;
        std::array<ZORMathPoint, 4> corners;
        for (size_t k = 0; k < 4; ++k)
            corners[k] = m_nodes[size_t(nodes[k])].location.point;
        bool isClosed = true;
        for (size_t k = 0; k < 4; ++k)
            isClosed = isClosed
                       && std::abs((corners[(k + 1) % 4] - corners[k]).GetLength() - m_step) < 1e-6 * m_step;
        if (isClosed) {
            m_cells.push_back(nodes);
            m_overlap.AddCell(i, j, corners);
        }
    }
}

// The fourth corners of the cells of which a new node is the third one.
void Growth::PushCrossings(int warp, int weft)
{
    for (const auto& [warpTo, weftTo] : kQuadrants) {
        const bool isAlongWarp = Find(warp + warpTo, weft) >= 0;
        const bool isAlongWeft = Find(warp, weft + weftTo) >= 0;
        const bool isOpposite = Find(warp + warpTo, weft + weftTo) >= 0;
        if (isAlongWarp && isAlongWeft && !isOpposite)
            Push(Crossing, warp + warpTo, weft + weftTo, -warpTo, -weftTo);
        else if (isAlongWarp && !isAlongWeft && isOpposite)
            Push(Crossing, warp, weft + weftTo, warpTo, -weftTo);
        else if (!isAlongWarp && isAlongWeft && isOpposite)
            Push(Crossing, warp + warpTo, weft, -warpTo, weftTo);
    }
}

// The yarn ends that a new node makes: behind itself, and behind its neighbours that it stands before.
void Growth::PushProlongations(int warp, int weft)
{
    for (const auto& [warpTo, weftTo] : kSides) {
        if (Find(warp - warpTo, weft - weftTo) < 0)
            continue;
        if (Find(warp + warpTo, weft + weftTo) < 0)
            Push(Prolonged, warp + warpTo, weft + weftTo, -warpTo, -weftTo);
        if (Find(warp - 2 * warpTo, weft - 2 * weftTo) < 0)
            Push(Prolonged, warp - 2 * warpTo, weft - 2 * weftTo, warpTo, weftTo);
    }
}

void Growth::Push(Kind kind, int warp, int weft, int warpFrom, int weftFrom)
{
    if (std::abs(warp) > m_warpReach || std::abs(weft) > m_weftReach)
        return;
    Queue& queue = kind == Prolonged ? m_prolongations : m_candidates;
    queue.push({std::abs(warp) + std::abs(weft), kind, m_numCandidates++, warp, weft, warpFrom, weftFrom});
}

int& Growth::SlotOf(int warp, int weft)
{
    Tile& tile = m_tiles.try_emplace(KeyOf(warp >> kTileBits, weft >> kTileBits), Tile{}).first->second;
    return tile[TileIndex(warp, weft)];
}

int Growth::Find(int warp, int weft) const
{
    const auto found = m_tiles.find(KeyOf(warp >> kTileBits, weft >> kTileBits));
    return found == m_tiles.end() ? -1 : found->second[TileIndex(warp, weft)] - 1;
}

bool Growth::IsBlocked(int warp, int weft) const
{
    return m_blocked.contains(KeyOf(warp, weft));
}

void Growth::Block(const Candidate& candidate)
{
    m_blocked.insert(KeyOf(candidate.warp, candidate.weft));
}

// Sorts nodes and cells and measures the angles.
ZORCompDrapingNet Growth::Finish(const ZORMathVector& direction) const
{
    std::vector<int> order(m_nodes.size());
    for (size_t i = 0; i < order.size(); ++i)
        order[i] = int(i);
    std::sort(order.begin(), order.end(), [this](int a, int b) {
        const Node& first = m_nodes[size_t(a)];
        const Node& second = m_nodes[size_t(b)];
        return first.weft != second.weft ? first.weft < second.weft : first.warp < second.warp;
    });
    std::vector<int> place(m_nodes.size());
    QList<ZORCompDrapingNode> nodes;
    nodes.reserve(qsizetype(order.size()));
    for (const int index : order) {
        const Node& node = m_nodes[size_t(index)];
        place[size_t(index)] = int(nodes.size());
        nodes.append({node.warp, node.weft, node.location});
    }

    QList<ZORCompDrapingCell> cells;
    cells.reserve(qsizetype(m_cells.size()));
    for (std::array<int, 4> corners : m_cells) {
        for (int& corner : corners)
            corner = place[size_t(corner)];
        cells.append(ZORCompDrapingCell{corners});
    }
    std::sort(cells.begin(), cells.end(), [](const ZORCompDrapingCell& a, const ZORCompDrapingCell& b) {
        return a.nodes[0] < b.nodes[0];
    });
    for (ZORCompDrapingCell& cell : cells)
        ZORCompDrapingNet::Measure(cell, nodes, m_parameters.yarnAngle, direction);
    return ZORCompDrapingNet(m_step, m_parameters.yarnAngle, nodes, cells);
}
