// Free places for items one after another: part of the mover.

#include "ZORNestSolverMover.h"

namespace ZORNestSolver {

namespace {

constexpr double kHeightShare = 0.1; // how much less it matters to lie low than to lie left
constexpr double kSlideAccuracy = 1e-4;
constexpr double kShortestSlide = 1e-3; // of the height of the window: the first step
constexpr int kContactRounds = 4;
constexpr double kContactReach = 4 * kSlideAccuracy; // of the item's smaller side, after a slide in steps
constexpr double kSmallestLoss = 1e-30;
constexpr double kInfinity = std::numeric_limits<double>::infinity();

} // namespace

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
            const Shape& shape = GetShape(item, stand);
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
    const Box room = GetRoom(m_layout.GetWindow(stand.window), GetShape(item, stand));
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
    const int inHoles = m_holders.empty() ? 0 : count / 2;
    for (int i = 0; i < count + inHoles; ++i) {
        auto stand = i < count ? Sample(item, window) : SampleInHole(item);
        if (!stand || stand->window != window)
            continue;
        if (i < count)
            MoveToSide(item, *stand, i);
        const Point corner =
            stand->position + GetShape(item, *stand).extent.max - m_layout.GetWindow(window).min;
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
