#include "ZORNestSolverJigsaw.h"

#include <numbers>
#include <polyclipping/clipper.hpp>

namespace ZORNestSolver {

namespace {

constexpr double Grid = 1e-6;
constexpr double LargestCoordinate = 1e9; // in steps of the grid, for the clipping library's fast path
constexpr double SameAngle = 1e-5;
constexpr double SameDistance = 1e-5; // areas are equal when they differ by this times a perimeter
constexpr double WholeNumberAccuracy = 1e-7;
constexpr size_t StepsOfAttempt = 20000;
constexpr double RankNoise = 0.25;

bool IsLeftOf(Point a, Point b)
{
    return a.x != b.x ? a.x < b.x : a.y < b.y;
}

double GetAngle(Point direction)
{
    return std::atan2(direction.y, direction.x);
}

/// The angle inside of a counter-clockwise ring at its leftmost corner.
double GetInnerAngle(Point before, Point corner, Point after)
{
    const double angle = GetAngle(before - corner) - GetAngle(after - corner);
    return angle < 0 ? angle + 2 * std::numbers::pi : angle;
}

ClipperLib::IntPoint ToGrid(Point p)
{
    return {std::llround(p.x / Grid), std::llround(p.y / Grid)};
}

Point FromGrid(const ClipperLib::IntPoint& p)
{
    return {static_cast<double>(p.X) * Grid, static_cast<double>(p.Y) * Grid};
}

double GetPathArea(const ClipperLib::Path& path)
{
    return ClipperLib::Area(path) * Grid * Grid;
}

} // namespace

/// What is free of the box, and what fills the rest of it.
struct Jigsaw::State
{
    ClipperLib::Paths free;
    double freeArea = 0;
    std::vector<Place> places;
    size_t stepsLeft = 0;
    const Budget* budget = nullptr; // not owned
};

namespace {

/// The leftmost, then lowest corner, with the direction of the edge after it and the angle inside.
struct FreeCorner
{
    Point point;
    double edge = 0;
    double angle = 0;
};

FreeCorner FindFreeCorner(const ClipperLib::Paths& free)
{
    const ClipperLib::Path* path = nullptr;
    size_t best = 0;
    for (const ClipperLib::Path& candidate : free) {
        for (size_t i = 0; i < candidate.size(); ++i) {
            if (!path || IsLeftOf(FromGrid(candidate[i]), FromGrid((*path)[best]))) {
                path = &candidate;
                best = i;
            }
        }
    }
    const size_t count = path->size();
    const Point corner = FromGrid((*path)[best]);
    const Point before = FromGrid((*path)[(best + count - 1) % count]);
    const Point after = FromGrid((*path)[(best + 1) % count]);
    return {corner, GetAngle(after - corner), GetInnerAngle(before, corner, after)};
}

ClipperLib::Path PlaceRing(const Ring& ring, Point at)
{
    ClipperLib::Path path;
    for (const Point& p : ring)
        path.push_back(ToGrid(p + at));
    return path;
}

/// What is left of the free area, slivers dropped.
ClipperLib::Paths Subtract(const ClipperLib::Paths& free, const ClipperLib::Path& piece, double tolerance)
{
    ClipperLib::Clipper clipper;
    clipper.AddPaths(free, ClipperLib::ptSubject, true);
    clipper.AddPath(piece, ClipperLib::ptClip, true);
    ClipperLib::Paths rest;
    clipper.Execute(ClipperLib::ctDifference, rest, ClipperLib::pftNonZero, ClipperLib::pftNonZero);
    std::erase_if(rest, [tolerance](const auto& path) { return std::abs(GetPathArea(path)) < tolerance; });
    return rest;
}

} // namespace

Jigsaw::Jigsaw(const std::vector<std::shared_ptr<const ItemType>>& types, std::vector<size_t> items,
               uint64_t seed)
    : m_types(types)
    , m_items(std::move(items))
    , m_left(types.size())
    , m_random(seed)
{
    for (size_t i = m_items.size(); i-- > 0;)
        m_left[m_items[i]].push_back(i);
    for (size_t t = 0; t < types.size(); ++t)
        if (!m_left[t].empty() && types[t]->outer.size() == 1)
            for (size_t c = 0; c < types[t]->classes.size(); ++c)
                AddPiece(t, static_cast<uint32_t>(c));
}

void Jigsaw::AddPiece(size_t type, uint32_t poseClass)
{
    const PoseClass& allowed = m_types[type]->classes[poseClass];
    if (allowed.IsContinuous())
        return;
    Piece piece;
    piece.type = type;
    const Transform turn({allowed.mirrored, allowed.angle, {}});
    Ring ring = RemoveIdlePoints(turn.Apply(m_types[type]->outer).front(), 0);
    if (ring.size() < 3)
        return;
    std::rotate(ring.begin(), std::min_element(ring.begin(), ring.end(), IsLeftOf), ring.end());
    double perimeter = 0;
    for (size_t i = 0; i < ring.size(); ++i)
        perimeter += Length(ring[(i + 1) % ring.size()] - ring[i]);
    piece.edge = GetAngle(ring[1] - ring[0]);
    piece.corner = GetInnerAngle(ring.back(), ring[0], ring[1]);
    piece.area = GetSignedArea(ring);
    piece.tolerance = SameDistance * perimeter;
    const Point corner = ring[0];
    for (Point& p : ring)
        p = p - corner;
    piece.stand = {turn.Apply(m_types[type]->reference) - corner, allowed.angle, poseClass, 0};
    piece.ring = std::move(ring);
    m_pieces.push_back(std::move(piece));
}

/// Every separate part of the free area must hold the smallest item, and one that does not hold two must be
/// as large as some item. Areas around others that are covered count as a whole.
bool Jigsaw::CanBeFilled(const State& state) const
{
    double smallest = std::numeric_limits<double>::infinity();
    for (const Piece& piece : m_pieces)
        if (!m_left[piece.type].empty())
            smallest = std::min(smallest, piece.area);
    const auto isAreaOfOne = [this](double area) {
        return std::any_of(m_pieces.begin(), m_pieces.end(), [this, area](const Piece& piece) {
            return !m_left[piece.type].empty() && std::abs(piece.area - area) < 2 * piece.tolerance;
        });
    };
    double holes = 0;
    for (const ClipperLib::Path& path : state.free)
        holes -= std::min(0.0, GetPathArea(path));
    return std::all_of(state.free.begin(), state.free.end(), [&](const ClipperLib::Path& path) {
        const double area = GetPathArea(path);
        return area < 0 || holes > 0 || area > 2 * smallest || isAreaOfOne(area);
    });
}

bool Jigsaw::Descend(State& state)
{
    if (state.free.empty())
        return true;
    if (!CanBeFilled(state))
        return false;
    const FreeCorner corner = FindFreeCorner(state.free);
    for (const Piece& piece : m_pieces) {
        if (m_left[piece.type].empty() || std::abs(piece.edge - corner.edge) > SameAngle
            || piece.corner > corner.angle + SameAngle || piece.area > state.freeArea + piece.tolerance)
            continue;
        if (state.stepsLeft == 0 || state.budget->IsOver())
            return false;
        --state.stepsLeft;
        ClipperLib::Paths rest = Subtract(state.free, PlaceRing(piece.ring, corner.point), piece.tolerance);
        double restArea = 0;
        for (const ClipperLib::Path& path : rest)
            restArea += GetPathArea(path);
        if (restArea > state.freeArea - piece.area + piece.tolerance)
            continue; // it reaches beyond what is free
        std::swap(rest, state.free);
        std::swap(restArea, state.freeArea);
        Stand stand = piece.stand;
        stand.position = stand.position + corner.point;
        state.places.push_back({m_left[piece.type].back(), stand});
        m_left[piece.type].pop_back();
        if (Descend(state))
            return true;
        m_left[piece.type].push_back(state.places.back().item);
        state.places.pop_back();
        std::swap(rest, state.free);
        std::swap(restArea, state.freeArea);
    }
    return false;
}

/// The large items first, and ever less so from one attempt to the next.
void Jigsaw::OrderPieces(int attempt)
{
    for (Piece& piece : m_pieces)
        piece.rank = piece.area * std::pow(m_random.Between(0.2, 1), attempt * RankNoise);
    std::stable_sort(m_pieces.begin(), m_pieces.end(),
                     [](const Piece& a, const Piece& b) { return a.rank > b.rank; });
}

std::vector<Jigsaw::Place> Jigsaw::Fill(const Box& box, int mostAttempts, const Budget& budget)
{
    const double width = box.GetWidth();
    const double height = box.GetHeight();
    if (std::max(width, height) > LargestCoordinate * Grid)
        return {};
    for (int attempt = 0; attempt < mostAttempts && !budget.IsOver(); ++attempt) {
        OrderPieces(attempt);
        State state;
        state.free = {PlaceRing({{0, 0}, {width, 0}, {width, height}, {0, height}}, {})};
        state.freeArea = width * height;
        state.stepsLeft = StepsOfAttempt;
        state.budget = &budget;
        if (Descend(state)) {
            for (Place& place : state.places)
                place.stand.position = place.stand.position + box.min;
            return state.places;
        }
        if (state.stepsLeft > 0) // every way was tried
            return {};
    }
    return {};
}

bool IsWholeNumberOf(double area, double boxArea)
{
    const double number = area / boxArea;
    return std::isfinite(number) && number > 0.5
           && std::abs(number - std::round(number)) < WholeNumberAccuracy * number;
}

} // namespace ZORNestSolver
