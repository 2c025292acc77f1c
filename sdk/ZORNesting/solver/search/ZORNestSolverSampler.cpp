#include "ZORNestSolverSampler.h"

#include "solver/base/ZORNestSolverAngle.h"

namespace ZORNestSolver {

namespace {

constexpr int kFreeAngles = 16;         // samples of a full turn
constexpr double kNearbyReach = 0.5;    // of the item's smaller side
constexpr double kHoleReach = 0.5;      // of the radius: how far from the middle of a hole samples lie
constexpr size_t kExactShare = 4;       // one in so many samples in holes
constexpr double kSameDirection = 0.01; // the sine between edges that count as parallel
constexpr double kClampReach = 0.25;    // of the item's smaller side: how far a window may push a sample

struct Edge
{
    Point from, to;

    Point GetVector() const { return to - from; }
};

/// The edge with the inside of the shape left of it.
Edge GetEdge(const Shape& shape, size_t index, bool mirrored)
{
    const Point a{shape.ax[index], shape.ay[index]};
    const Point b{shape.bx[index], shape.by[index]};
    return mirrored ? Edge{b, a} : Edge{a, b};
}

bool AreOpposite(Point u, Point v)
{
    return std::abs(Cross(u, v)) < -kSameDirection * Dot(u, v);
}

} // namespace

Sampler::Sampler(const Layout& layout, Random& random)
    : m_layout(layout)
    , m_random(random)
{
    for (size_t item = 0; item < layout.GetItemCount(); ++item)
        if (!layout.GetType(item).holes.empty())
            m_holders.push_back(item);
}

const Shape& Sampler::GetShape(size_t item, const Stand& stand)
{
    const ItemType& type = m_layout.GetType(item);
    const PoseClass& poseClass = type.classes[stand.poseClass];
    if (!poseClass.IsContinuous())
        return type.shapes[stand.poseClass];
    if (m_scratchBase != &type.base || m_scratchAngle != stand.angle
        || m_scratchMirrored != poseClass.mirrored) {
        type.Turn(poseClass.mirrored, stand.angle, m_scratch);
        m_scratchBase = &type.base;
        m_scratchAngle = stand.angle;
        m_scratchMirrored = poseClass.mirrored;
    }
    return m_scratch;
}

/// A random place in the window, or in the part of it that \a around covers; none if the item does not fit.
std::optional<Stand> Sampler::SampleIn(size_t item, Stand stand, const Box* around)
{
    Box room = GetRoom(m_layout.GetWindow(stand.window), GetShape(item, stand));
    if (room.IsEmpty())
        return std::nullopt;
    if (around) {
        const Box window = room;
        room.min = {std::clamp(around->min.x, window.min.x, window.max.x),
                    std::clamp(around->min.y, window.min.y, window.max.y)};
        room.max = {std::clamp(around->max.x, window.min.x, window.max.x),
                    std::clamp(around->max.y, window.min.y, window.max.y)};
    }
    stand.position = {m_random.Between(room.min.x, room.max.x), m_random.Between(room.min.y, room.max.y)};
    return stand;
}

std::optional<Stand> Sampler::Sample(size_t item, uint32_t window)
{
    const ItemType& type = m_layout.GetType(item);
    Stand stand;
    stand.window = window;
    stand.poseClass = static_cast<uint32_t>(m_random.Index(type.classes.size()));
    const PoseClass& poseClass = type.classes[stand.poseClass];
    stand.angle = poseClass.angle;
    if (poseClass.IsContinuous()) {
        const double step = kFullTurn / kFreeAngles;
        const double steps = std::floor(poseClass.deviation / step);
        stand.angle += steps >= 1 ? step * std::round(m_random.Between(-steps, steps))
                                  : m_random.Between(-poseClass.deviation, poseClass.deviation);
    }
    std::optional<Stand> sample = SampleIn(item, stand, nullptr);
    return sample || !poseClass.IsContinuous() ? sample : SampleFitting(item, stand);
}

/// A random place at an angle at which the item fits the window; none if there is none.
std::optional<Stand> Sampler::SampleFitting(size_t item, Stand stand)
{
    const ItemType& type = m_layout.GetType(item);
    const Box& window = m_layout.GetWindow(stand.window);
    FittingAngles& known = m_fittings[&type.classes[stand.poseClass]];
    if (known.length != window.GetWidth() || known.width != window.GetHeight())
        known = {window.GetWidth(), window.GetHeight(), FindFittingAngles(type, stand.poseClass, window)};
    if (known.ranges.empty())
        return std::nullopt;
    const AngleRange& range = known.ranges[m_random.Index(known.ranges.size())];
    stand.angle = m_random.Between(range.from, range.to);
    return SampleIn(item, stand, nullptr);
}

std::optional<Stand> Sampler::SampleNear(size_t item, const Stand& centre)
{
    const double reach = kNearbyReach * m_layout.GetType(item).smallerSide;
    const Box around = Box{centre.position, centre.position}.Grown(reach);
    return SampleIn(item, centre, &around);
}

/// An edge of the item, picked at random among those that run against the direction; among all of them where
/// there is none. At a free angle any edge does, since the item is turned for it.
size_t Sampler::PickEdgeAgainst(size_t item, Stand& stand, Point direction)
{
    const PoseClass& poseClass = m_layout.GetType(item).classes[stand.poseClass];
    const Shape& shape = GetShape(item, stand);
    const size_t start = m_random.Index(shape.edgeCount);
    if (poseClass.IsContinuous()) {
        const Point own = GetEdge(shape, start, poseClass.mirrored).GetVector();
        const double turn = std::atan2(-direction.y, -direction.x) - std::atan2(own.y, own.x);
        const double off = std::remainder(stand.angle + turn - poseClass.angle, kFullTurn);
        if (std::abs(off) <= poseClass.deviation)
            stand.angle = poseClass.angle + off;
        return start;
    }
    for (size_t n = 0; n < shape.edgeCount; ++n) {
        const size_t index = (start + n) % shape.edgeCount;
        if (AreOpposite(GetEdge(shape, index, poseClass.mirrored).GetVector(), direction))
            return index;
    }
    return start;
}

std::optional<Stand> Sampler::SampleMatch(size_t item)
{
    const size_t other = m_random.Index(m_layout.GetItemCount());
    if (other == item || !m_layout.IsStanding(other))
        return std::nullopt;
    const Stand& beside = m_layout.GetStand(other);
    std::optional<Stand> stand = Sample(item, beside.window);
    if (!stand)
        return std::nullopt;
    const Shape& fixed = m_layout.GetShape(other);
    const Edge along = GetEdge(fixed, m_random.Index(fixed.edgeCount),
                               m_layout.GetType(other).classes[beside.poseClass].mirrored);
    const size_t chosen = PickEdgeAgainst(item, *stand, along.GetVector());
    const Shape& shape = GetShape(item, *stand);
    if (GetRoom(m_layout.GetWindow(beside.window), shape).IsEmpty())
        return std::nullopt;
    const Edge own = GetEdge(shape, chosen, m_layout.GetType(item).classes[stand->poseClass].mirrored);
    const bool isForward = m_random.Index(2) == 0;
    const Point run = along.GetVector();
    const Point away = Point{run.y, -run.x} * (kContactGap / Length(run)); // from the other item
    const Point place = beside.position + away + (isForward ? along.to - own.from : along.from - own.to);
    stand->position = place;
    Clamp(item, *stand);
    const double reach = kClampReach * m_layout.GetType(item).smallerSide;
    return Length(stand->position - place) <= reach ? stand : std::nullopt;
}

std::optional<Stand> Sampler::SampleInHole(size_t item)
{
    const size_t holder = m_holders[m_random.Index(m_holders.size())];
    if (holder == item || !m_layout.IsStanding(holder))
        return std::nullopt;
    const ItemType& other = m_layout.GetType(holder);
    const size_t chosen = m_random.Index(other.holes.size());
    const Circle& hole = other.holes[chosen];
    if (hole.radius < static_cast<double>(m_layout.GetType(item).base.poleR[0]))
        return std::nullopt;
    const Stand& around = m_layout.GetStand(holder);
    std::optional<Stand> stand = Sample(item, around.window);
    if (!stand)
        return std::nullopt;
    const Transform place({other.classes[around.poseClass].mirrored, around.angle, around.position});
    const double reach = kHoleReach * hole.radius;
    const Point offset{m_random.Between(-reach, reach), m_random.Between(-reach, reach)};
    Point middle = place.Apply(hole.centre) + offset;
    if (m_random.Index(kExactShare) == 0) { // in the middle of the box, for items as large as the hole
        Box box;
        for (const Point& p : other.body[other.holeRings[chosen]])
            box.Add(place.Apply(p));
        middle = box.GetCentre();
    }
    stand->position = middle - GetShape(item, *stand).box.GetCentre();
    Clamp(item, *stand);
    return stand;
}

void Sampler::Clamp(size_t item, Stand& stand)
{
    const Box room = GetRoom(m_layout.GetWindow(stand.window), GetShape(item, stand));
    stand.position.x =
        room.min.x <= room.max.x ? std::clamp(stand.position.x, room.min.x, room.max.x) : room.min.x;
    stand.position.y =
        room.min.y <= room.max.y ? std::clamp(stand.position.y, room.min.y, room.max.y) : room.min.y;
}

} // namespace ZORNestSolver
