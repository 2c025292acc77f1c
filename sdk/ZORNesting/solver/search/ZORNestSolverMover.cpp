#include "ZORNestSolverMover.h"

#include <array>
#include <numbers>

namespace ZORNestSolver {

namespace {

constexpr double kDegree = std::numbers::pi / 180;
constexpr double kSuccessFactor = 1.1;
constexpr double kFailureFactor = 0.5;
constexpr int kFreeAngles = 16; // samples of a full turn
constexpr double kSameDistance = 0.01;
constexpr double kNearbyReach = 0.5;    // of the item's smaller side
constexpr double kHoleReach = 0.5;      // of the radius: how far from the middle of a hole samples lie
constexpr size_t kExactShare = 4;       // one in so many samples in holes
constexpr double kSameDirection = 0.01; // the sine between edges that count as parallel
constexpr double kClampReach = 0.25;    // of the item's smaller side: how far a window may push a sample
constexpr int kMostRounds = 300;        // of a descent
constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// Directions of a descent: x, y, both diagonals, rotation.
constexpr std::array<Point, 5> kAxes{{{1, 0}, {0, 1}, {0.7071, 0.7071}, {0.7071, -0.7071}, {0, 0}}};
constexpr size_t kRotationAxis = 4;

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

Mover::Mover(Layout& layout, Random& random)
    : m_layout(layout)
    , m_random(random)
{
    for (size_t item = 0; item < layout.GetItemCount(); ++item)
        if (!layout.GetType(item).holes.empty())
            m_holders.push_back(item);
}

const Shape& Mover::GetShape(size_t item, const Stand& stand)
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

double Mover::Evaluate(size_t item, const Stand& stand, double bound)
{
    return m_layout.Evaluate(item, GetShape(item, stand), stand.position, bound);
}

/// A random place in the window, or in the part of it that \a around covers; none if the item does not fit.
std::optional<Stand> Mover::SampleIn(size_t item, Stand stand, const Box* around)
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

std::optional<Stand> Mover::Sample(size_t item, uint32_t window)
{
    const ItemType& type = m_layout.GetType(item);
    Stand stand;
    stand.window = window;
    stand.poseClass = static_cast<uint32_t>(m_random.Index(type.classes.size()));
    const PoseClass& poseClass = type.classes[stand.poseClass];
    stand.angle = poseClass.angle;
    if (poseClass.IsContinuous()) {
        const double step = 2 * std::numbers::pi / kFreeAngles;
        const double steps = std::floor(poseClass.deviation / step);
        stand.angle += steps >= 1 ? step * std::round(m_random.Between(-steps, steps))
                                  : m_random.Between(-poseClass.deviation, poseClass.deviation);
    }
    std::optional<Stand> sample = SampleIn(item, stand, nullptr);
    return sample || !poseClass.IsContinuous() ? sample : SampleFitting(item, stand);
}

/// A random place at an angle at which the item fits the window; none if there is none.
std::optional<Stand> Mover::SampleFitting(size_t item, Stand stand)
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

std::optional<Stand> Mover::SampleNear(size_t item, const Stand& centre)
{
    const double reach = kNearbyReach * m_layout.GetType(item).smallerSide;
    const Box around = Box{centre.position, centre.position}.Grown(reach);
    return SampleIn(item, centre, &around);
}

/// An edge of the item, picked at random among those that run against the direction; among all of them where
/// there is none. At a free angle any edge does, since the item is turned for it.
size_t Mover::PickEdgeAgainst(size_t item, Stand& stand, Point direction)
{
    const PoseClass& poseClass = m_layout.GetType(item).classes[stand.poseClass];
    const Shape& shape = GetShape(item, stand);
    const size_t start = m_random.Index(shape.edgeCount);
    if (poseClass.IsContinuous()) {
        const Point own = GetEdge(shape, start, poseClass.mirrored).GetVector();
        const double turn = std::atan2(-direction.y, -direction.x) - std::atan2(own.y, own.x);
        const double off = std::remainder(stand.angle + turn - poseClass.angle, 2 * std::numbers::pi);
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

/// A place where an edge of the item lies along an edge of another one, with an end at its end; where none can
/// lie so, a corner at a corner. None where the window is in the way.
std::optional<Stand> Mover::SampleMatch(size_t item)
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

/// A place in some hole of another item that may be large enough; none where there is none.
std::optional<Stand> Mover::SampleInHole(size_t item)
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

void Mover::Offer(size_t item, const Stand& stand, size_t keep)
{
    const double bound = m_best.size() < keep ? kInfinity : m_best.back().loss;
    const double loss = Evaluate(item, stand, bound);
    if (loss >= bound)
        return;
    const double same = kSameDistance * m_layout.GetType(item).smallerSide;
    for (size_t i = 0; i < m_best.size(); ++i) {
        const Stand& other = m_best[i].stand;
        if (other.poseClass != stand.poseClass || std::abs(other.angle - stand.angle) > kDegree
            || Length(other.position - stand.position) > same)
            continue;
        if (m_best[i].loss <= loss)
            return;
        m_best.erase(m_best.begin() + static_cast<std::ptrdiff_t>(i));
        break;
    }
    if (m_best.size() == keep)
        m_best.pop_back();
    const auto place =
        std::find_if(m_best.begin(), m_best.end(), [loss](const Candidate& c) { return c.loss > loss; });
    m_best.insert(place, {stand, loss});
}

void Mover::Clamp(size_t item, Stand& stand)
{
    const Box room = GetRoom(m_layout.GetWindow(stand.window), GetShape(item, stand));
    stand.position.x =
        room.min.x <= room.max.x ? std::clamp(stand.position.x, room.min.x, room.max.x) : room.min.x;
    stand.position.y =
        room.min.y <= room.max.y ? std::clamp(stand.position.y, room.min.y, room.max.y) : room.min.y;
}

Stand Mover::Shifted(size_t item, const Stand& stand, Point by, double turn)
{
    Stand shifted = stand;
    shifted.position = stand.position + by;
    if (turn != 0) {
        const PoseClass& poseClass = m_layout.GetType(item).classes[stand.poseClass];
        shifted.angle = std::clamp(stand.angle + turn, poseClass.angle - poseClass.deviation,
                                   poseClass.angle + poseClass.deviation);
        const Box room = GetRoom(m_layout.GetWindow(stand.window), GetShape(item, shifted));
        if (room.IsEmpty())
            return stand;
    }
    Clamp(item, shifted);
    return shifted;
}

void Mover::Descend(size_t item, Candidate& candidate, const Steps& steps)
{
    const ItemType& type = m_layout.GetType(item);
    const size_t axes = type.classes[candidate.stand.poseClass].IsContinuous() ? 5 : 4;
    double step = steps.first * type.smallerSide;
    double turn = steps.firstTurn;
    size_t axis = m_random.Index(axes);
    for (int round = 0; round < kMostRounds && candidate.loss > 0
                        && (step > steps.last * type.smallerSide || (axes == 5 && turn > steps.lastTurn));
         ++round) {
        bool improved = false;
        const Stand from = candidate.stand;
        for (const double sign : {1.0, -1.0}) {
            const double by = axis == kRotationAxis ? sign * turn : 0;
            const Stand tried = Shifted(item, from, kAxes[axis] * (sign * step), by);
            const double loss = Evaluate(item, tried, candidate.loss);
            if (loss < candidate.loss) {
                candidate = {tried, loss};
                improved = true;
            }
        }
        double& length = axis == kRotationAxis ? turn : step;
        length *= improved ? kSuccessFactor : kFailureFactor;
        if (!improved)
            axis = m_random.Index(axes);
        if (axes == 5 && axis == kRotationAxis && turn <= steps.lastTurn)
            axis = m_random.Index(4);
        else if (axes == 5 && axis != kRotationAxis && step <= steps.last * type.smallerSide)
            axis = kRotationAxis;
    }
}

/// Ends early with a place without loss.
void Mover::OfferSamples(size_t item, const MoveEffort& effort)
{
    const Stand present = m_best.front().stand;
    const size_t windows = m_layout.GetWindows().size();
    const int around = effort.matching + effort.nearby;
    const int open = around + effort.everywhere;
    const int count = open + (m_holders.empty() ? 0 : effort.inHoles);
    for (int i = 0; i < count && m_best.front().loss > 0; ++i) {
        std::optional<Stand> stand;
        if (i < effort.matching)
            stand = SampleMatch(item);
        else if (i < around)
            stand = SampleNear(item, present);
        else if (i >= open)
            stand = SampleInHole(item);
        else
            stand = Sample(item, static_cast<uint32_t>(windows > 1 ? m_random.Index(windows) : 0));
        if (stand)
            Offer(item, *stand, effort.refined);
    }
}

Stand Mover::FindBetter(size_t item, const MoveEffort& effort)
{
    constexpr Steps coarse{0.25, 0.02, 5 * kDegree, 1 * kDegree};
    constexpr Steps fine{0.01, 0.001, 0.5 * kDegree, 0.05 * kDegree};
    const Stand present = m_layout.GetStand(item);
    const double presentLoss = m_layout.GetWeightedItemLoss(item);
    m_best.clear();
    m_best.push_back({present, presentLoss});
    OfferSamples(item, effort);
    if (m_best.front().loss <= 0)
        return m_best.front().stand;
    for (Candidate& candidate : m_best)
        Descend(item, candidate, coarse);
    Candidate best = *std::min_element(
        m_best.begin(), m_best.end(), [](const Candidate& a, const Candidate& b) { return a.loss < b.loss; });
    Descend(item, best, fine);
    return best.loss < presentLoss ? best.stand : present;
}

} // namespace ZORNestSolver
