#include "ZORNestSolverJigsaw.h"

#include "solver/base/ZORNestSolverAngle.h"

#include <numbers>
#include <polyclipping/clipper.hpp>

namespace ZORNestSolver {

namespace {

constexpr double kFinestGrid = 1e-6;   // coarser by powers of ten for large boxes
constexpr double kMostGridSteps = 1e9; // in steps of the grid, for the clipping library's fast path
constexpr double kSameAngle = 1e-5;
constexpr double kSameDistance = 1e-5; // areas are equal when they differ by this times a perimeter
constexpr double kWholeNumberAccuracy = 1e-7;
constexpr size_t kStepsOfAttempt = 20000;
constexpr double kRankNoise = 0.25;

/// From -pi to pi, the noise at their meeting removed.
double GetAngle(Point direction)
{
    const double angle = std::atan2(direction.y, direction.x);
    return angle > std::numbers::pi - kSameAngle ? angle - kFullTurn : angle;
}

double GetPathArea(const ClipperLib::Path& path, double grid)
{
    return ClipperLib::Area(path) * grid * grid;
}

} // namespace

/// What is free of the box, and what fills the rest of it.
struct Jigsaw::State
{
    ClipperLib::Paths free;
    double freeArea = 0;
    std::vector<Place> places;
    double grid = kFinestGrid;
    size_t stepsLeft = 0;
    const Budget* budget = nullptr; // not owned
};

namespace {

Ring ToRing(const ClipperLib::Path& path, double grid)
{
    Ring ring;
    for (const ClipperLib::IntPoint& p : path)
        ring.push_back({static_cast<double>(p.X) * grid, static_cast<double>(p.Y) * grid});
    return ring;
}

ClipperLib::Path PlaceRing(const Ring& ring, Point at, double grid)
{
    ClipperLib::Path path;
    for (const Point& p : ring)
        path.emplace_back(std::llround((p.x + at.x) / grid), std::llround((p.y + at.y) / grid));
    return path;
}

/// The area of outer paths less that of holes.
double GetFreeArea(const ClipperLib::Paths& paths, double grid)
{
    double area = 0;
    for (const ClipperLib::Path& path : paths)
        area += GetPathArea(path, grid);
    return area;
}

/// What is left of the free area, slivers dropped.
ClipperLib::Paths Subtract(const ClipperLib::Paths& free, const ClipperLib::Path& piece, double least)
{
    ClipperLib::Clipper clipper;
    clipper.AddPaths(free, ClipperLib::ptSubject, true);
    clipper.AddPath(piece, ClipperLib::ptClip, true);
    ClipperLib::Paths rest;
    clipper.Execute(ClipperLib::ctDifference, rest, ClipperLib::pftNonZero, ClipperLib::pftNonZero);
    std::erase_if(rest, [least](const auto& path) { return std::abs(ClipperLib::Area(path)) < least; });
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
    for (size_t i = 0; i < m_pieces.size(); ++i) {
        for (Corner corner : GetCorners(m_pieces[i].ring)) {
            corner.piece = i;
            m_corners.push_back(corner);
        }
    }
    std::stable_sort(m_corners.begin(), m_corners.end(),
                     [](const Corner& a, const Corner& b) { return a.direction < b.direction; });
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
    double perimeter = 0;
    for (size_t i = 0; i < ring.size(); ++i)
        perimeter += Length(ring[(i + 1) % ring.size()] - ring[i]);
    piece.area = GetSignedArea(ring);
    piece.tolerance = kSameDistance * perimeter;
    const Point origin = ring[0];
    for (Point& p : ring)
        p = p - origin;
    piece.stand = {turn.Apply(m_types[type]->reference) - origin, allowed.angle, poseClass, 0};
    piece.ring = std::move(ring);
    m_pieces.push_back(std::move(piece));
}

/// The corners of a ring with its inside on the left.
std::vector<Jigsaw::Corner> Jigsaw::GetCorners(const Ring& ring)
{
    std::vector<Corner> corners;
    for (size_t i = 0; i < ring.size(); ++i) {
        const Point in = ring[i] - ring[(i + ring.size() - 1) % ring.size()];
        const Point out = ring[(i + 1) % ring.size()] - ring[i];
        const double turn = std::atan2(Cross(in, out), Dot(in, out));
        corners.push_back({GetAngle(out), std::numbers::pi - turn, Length(out), 0, ring[i]});
    }
    return corners;
}

/// Every separate part of the free area must hold the smallest item, and one
/// that does not hold two must be as large as some item. Areas around others
/// that are covered count as a whole.
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
        holes -= std::min(0.0, GetPathArea(path, state.grid));
    return std::all_of(state.free.begin(), state.free.end(), [&](const ClipperLib::Path& path) {
        const double area = GetPathArea(path, state.grid);
        return area < 0 || holes > 0 || area > 2 * smallest * (1 - kWholeNumberAccuracy) || isAreaOfOne(area);
    });
}

/// The corners of pieces that fit this corner of what is free.
/// \param canExceed  an edge may run on beyond the free one after the corner
std::vector<size_t> Jigsaw::FindCorners(const State& state, const Corner& free, bool canExceed) const
{
    std::vector<size_t> found;
    const auto isBefore = [](const Corner& corner, double direction) { return corner.direction < direction; };
    auto corner = std::lower_bound(m_corners.begin(), m_corners.end(), free.direction - kSameAngle, isBefore);
    for (; corner != m_corners.end() && corner->direction <= free.direction + kSameAngle; ++corner) {
        const Piece& piece = m_pieces[corner->piece];
        const bool isLonger = corner->length > free.length + kSameDistance;
        if (!m_left[piece.type].empty() && corner->angle <= free.angle + kSameAngle
            && (canExceed || !isLonger) && piece.area <= state.freeArea + piece.tolerance)
            found.push_back(static_cast<size_t>(corner - m_corners.begin()));
    }
    return found;
}

/// The corners of pieces that fit where the fewest do.
std::vector<size_t> Jigsaw::ChooseCorner(const State& state, Point& point) const
{
    std::vector<size_t> best;
    bool hasBest = false;
    for (const ClipperLib::Path& path : state.free) {
        const std::vector<Corner> corners = GetCorners(ToRing(path, state.grid));
        for (size_t i = 0; i < corners.size(); ++i) {
            const Corner& free = corners[i];
            if (free.angle >= std::numbers::pi - kSameAngle)
                continue; // an edge may run on there
            const Corner& next = corners[(i + 1) % corners.size()];
            std::vector<size_t> found = FindCorners(state, free, next.angle >= std::numbers::pi - kSameAngle);
            if (hasBest && found.size() >= best.size())
                continue;
            best = std::move(found);
            hasBest = true;
            point = free.point;
            if (best.empty())
                return best;
        }
    }
    std::stable_sort(best.begin(), best.end(), [this](size_t a, size_t b) {
        return m_pieces[m_corners[a].piece].rank > m_pieces[m_corners[b].piece].rank;
    });
    return best;
}

/// \param at  the first point of the piece
bool Jigsaw::TryPiece(State& state, const Piece& piece, Point at)
{
    const double least = piece.tolerance / (state.grid * state.grid);
    ClipperLib::Paths rest = Subtract(state.free, PlaceRing(piece.ring, at, state.grid), least);
    double restArea = GetFreeArea(rest, state.grid);
    if (restArea > state.freeArea - piece.area + piece.tolerance)
        return false; // it reaches beyond what is free
    std::swap(rest, state.free);
    std::swap(restArea, state.freeArea);
    Stand stand = piece.stand;
    stand.position = stand.position + at;
    state.places.push_back({m_left[piece.type].back(), stand});
    m_left[piece.type].pop_back();
    if (Descend(state))
        return true;
    m_left[piece.type].push_back(state.places.back().item);
    state.places.pop_back();
    std::swap(rest, state.free);
    std::swap(restArea, state.freeArea);
    return false;
}

bool Jigsaw::Descend(State& state)
{
    if (state.free.empty())
        return true;
    if (!CanBeFilled(state))
        return false;
    Point point;
    for (const size_t chosen : ChooseCorner(state, point)) {
        if (state.stepsLeft == 0 || state.budget->IsOver())
            return false;
        --state.stepsLeft;
        const Corner& corner = m_corners[chosen];
        if (TryPiece(state, m_pieces[corner.piece], point - corner.point))
            return true;
    }
    return false;
}

/// The large items first, and ever less so from one attempt to the next.
void Jigsaw::OrderPieces(int attempt)
{
    for (Piece& piece : m_pieces)
        piece.rank = piece.area * std::pow(m_random.Between(0.2, 1), attempt * kRankNoise);
}

std::vector<Jigsaw::Place> Jigsaw::Fill(const Box& box, int mostAttempts, const Budget& budget)
{
    const double width = box.GetWidth();
    const double height = box.GetHeight();
    double grid = kFinestGrid;
    while (std::max(width, height) > kMostGridSteps * grid)
        grid *= 10;
    for (int attempt = 0; attempt < mostAttempts && !budget.IsOver(); ++attempt) {
        OrderPieces(attempt);
        State state;
        state.free = {PlaceRing({{0, 0}, {width, 0}, {width, height}, {0, height}}, {}, grid)};
        state.grid = grid;
        state.freeArea = width * height;
        state.stepsLeft = kStepsOfAttempt;
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
           && std::abs(number - std::round(number)) < kWholeNumberAccuracy * number;
}

} // namespace ZORNestSolver
