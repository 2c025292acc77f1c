#include "ZORNestSolverMover.h"

#include "solver/base/ZORNestSolverAngle.h"

#include <array>

namespace ZORNestSolver {

namespace {

constexpr double kSuccessFactor = 1.1;
constexpr double kFailureFactor = 0.5;
constexpr double kSameDistance = 0.01;
constexpr int kMostRounds = 300;     // of a descent
constexpr double kHeightShare = 0.1; // how much less it matters to lie low than to lie left
constexpr double kSlideAccuracy = 1e-4;
constexpr double kShortestSlide = 1e-3; // of the height of the window: the first step
constexpr int kContactRounds = 4;
constexpr double kContactReach = 4 * kSlideAccuracy; // of the item's smaller side, after a slide in steps
constexpr double kSmallestLoss = 1e-30;
constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// Directions of a descent: x, y, both diagonals, rotation.
constexpr std::array<Point, 5> kAxes{{{1, 0}, {0, 1}, {0.7071, 0.7071}, {0.7071, -0.7071}, {0, 0}}};
constexpr size_t kRotationAxis = 4;

} // namespace

Mover::Mover(Layout& layout, Random& random)
    : m_layout(layout)
    , m_random(random)
    , m_sampler(layout, random)
{
}

double Mover::Evaluate(size_t item, const Stand& stand, double bound)
{
    return m_layout.Evaluate(item, m_sampler.GetShape(item, stand), stand.position, bound);
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

Stand Mover::Shifted(size_t item, const Stand& stand, Point by, double turn)
{
    Stand shifted = stand;
    shifted.position = stand.position + by;
    if (turn != 0) {
        const PoseClass& poseClass = m_layout.GetType(item).classes[stand.poseClass];
        shifted.angle = std::clamp(stand.angle + turn, poseClass.angle - poseClass.deviation,
                                   poseClass.angle + poseClass.deviation);
        const Box room = GetRoom(m_layout.GetWindow(stand.window), m_sampler.GetShape(item, shifted));
        if (room.IsEmpty())
            return stand;
    }
    m_sampler.Clamp(item, shifted);
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
    const int count = open + (m_sampler.HasHoles() ? effort.inHoles : 0);
    for (int i = 0; i < count && m_best.front().loss > 0; ++i) {
        std::optional<Stand> stand;
        if (i < effort.matching)
            stand = m_sampler.SampleMatch(item);
        else if (i < around)
            stand = m_sampler.SampleNear(item, present);
        else if (i >= open)
            stand = m_sampler.SampleInHole(item);
        else
            stand = m_sampler.Sample(item, static_cast<uint32_t>(windows > 1 ? m_random.Index(windows) : 0));
        if (stand)
            Offer(item, *stand, effort.refined);
    }
}

Stand Mover::FindBetter(size_t item, const MoveEffort& effort)
{
    constexpr Steps kCoarse{0.25, 0.02, 5 * kDegree, 1 * kDegree};
    constexpr Steps kFine{0.01, 0.001, 0.5 * kDegree, 0.05 * kDegree};
    const Stand present = m_layout.GetStand(item);
    const double presentLoss = m_layout.GetWeightedItemLoss(item);
    m_best.clear();
    m_best.push_back({present, presentLoss});
    OfferSamples(item, effort);
    if (m_best.front().loss <= 0)
        return m_best.front().stand;
    for (Candidate& candidate : m_best)
        Descend(item, candidate, kCoarse);
    Candidate best = *std::min_element(
        m_best.begin(), m_best.end(), [](const Candidate& a, const Candidate& b) { return a.loss < b.loss; });
    Descend(item, best, kFine);
    return best.loss < presentLoss ? best.stand : present;
}

bool Mover::SlideToCorner(size_t item, Stand& stand, double step)
{
    bool moved = false;
    for (const Point& direction : {Point{-1, 0}, Point{-1, 1}, Point{-1, -1}, Point{0, -1}}) {
        const Stand tried = Shifted(item, stand, direction * step, 0);
        const bool nearer = tried.position.x < stand.position.x
                            || (tried.position.x == stand.position.x && tried.position.y < stand.position.y);
        if (nearer && Evaluate(item, tried, kSmallestLoss) <= 0) {
            stand = tried;
            moved = true;
        }
    }
    return moved;
}

/// Moves on to the left and down until something is touched, by exact distances: rows that fit exactly need it.
void Mover::SlideToContact(size_t item, Stand& stand)
{
    const double side = m_layout.GetType(item).smallerSide;
    for (int round = 0; round < kContactRounds; ++round) {
        const Point before = stand.position;
        for (const Axis axis : {Axis::Left, Axis::Down}) {
            const Shape& shape = m_sampler.GetShape(item, stand);
            const Box room = GetRoom(m_layout.GetWindow(stand.window), shape);
            Stand tried = stand;
            double& place = axis == Axis::Left ? tried.position.x : tried.position.y;
            const double end = axis == Axis::Left ? room.min.x : room.min.y;
            const double most = std::min(place - end, kContactReach * side);
            const double travel = m_layout.GetFreeTravel(item, shape, stand.position, axis, most);
            place = travel >= place - end ? end : place - travel;
            if (travel > 0 && Evaluate(item, tried, kSmallestLoss) <= 0)
                stand = tried;
        }
        if (stand.position == before)
            return;
    }
}

/// Moves some samples to the sides and corners of the window, where the last part of a row that fits exactly lies.
void Mover::MoveToSide(size_t item, Stand& stand, int sample)
{
    const Box room = GetRoom(m_layout.GetWindow(stand.window), m_sampler.GetShape(item, stand));
    const int kind = sample % 12;
    if (kind == 1 || kind == 2)
        stand.position.y = kind == 1 ? room.max.y : room.min.y;
    if (kind == 4 || kind == 5)
        stand.position.x = kind == 4 ? room.max.x : room.min.x;
    if (kind >= 8)
        stand.position = {kind % 2 == 0 ? room.max.x : room.min.x, kind < 10 ? room.max.y : room.min.y};
}

std::optional<Stand> Mover::FindFree(size_t item, uint32_t window, int count)
{
    std::optional<Stand> best;
    double bestEnd = kInfinity;
    const int inHoles = m_sampler.HasHoles() ? count / 2 : 0;
    for (int i = 0; i < count + inHoles; ++i) {
        auto stand = i < count ? m_sampler.Sample(item, window) : m_sampler.SampleInHole(item);
        if (!stand || stand->window != window)
            continue;
        if (i < count)
            MoveToSide(item, *stand, i);
        const Point corner =
            stand->position + m_sampler.GetShape(item, *stand).extent.max - m_layout.GetWindow(window).min;
        const double end = corner.x + kHeightShare * corner.y;
        if (end < bestEnd && Evaluate(item, *stand, kSmallestLoss) <= 0) {
            best = stand;
            bestEnd = end;
        }
    }
    if (!best)
        return best;
    const double side = m_layout.GetType(item).smallerSide;
    const double reach = m_layout.GetWindow(window).GetHeight() * kShortestSlide; // slivers would crawl
    for (double step = std::max(side, reach); step > kSlideAccuracy * side;)
        if (!SlideToCorner(item, *best, step))
            step /= 2;
    SlideToContact(item, *best);
    return best;
}

} // namespace ZORNestSolver
