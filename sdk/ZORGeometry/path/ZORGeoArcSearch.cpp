#include "ZORGeoArcSearch_p.h"
#include "trace/ZORGeoStraightWalk_p.h"

#include <algorithm>
#include <numbers>

using std::numbers::pi;

namespace {

// Parts of the radius, or of the path if that is shorter: arcs that turn away from the start of the path meet
// nothing before the first, and ends that are nearer to a place than the second are that place.
constexpr double kShortestArc = 1e-6;
constexpr double kSamePlace = 1e-9;
// Just before the end of a segment, so that the arc arrives there in the triangle of the segment.
constexpr double kBeforeEnd = 1 - 1e-8;
constexpr double kLargestRadius = 1e6; // in the radius to use
constexpr double kTurnStep = pi / 36;
constexpr int kBisections = 46;
// Turns of more than five degrees are below every radius; some more, since angles are those of arcs nearby.
constexpr double kCorner = pi / 24;
// Once arcs differ by less than this part of the radius, or of the curvature, they touch the same.
constexpr double kTouchKnown = 1.0 / 128;

void AppendPlace(ZORGeoMeshPath& path, const ZORGeoMeshPlace& place)
{
    if (!path.empty() && path.back().point == place.point && path.back().triangle == place.triangle)
        path.back() = place;
    else
        path.push_back(place);
}

// Halves the interval between an argument for which the predicate holds and one for which it does not.
template<class Predicate>
void Bisect(double& yes, double& no, const Predicate& predicate)
{
    for (int i = 0; i < kBisections; ++i) {
        const double middle = (yes + no) / 2;
        (predicate(middle) ? yes : no) = middle;
    }
}

} // namespace

std::optional<ZORGeoMeshPlace> ZorGeoPlaceOnSegment(const ZORGeoMesh& mesh, const ZORGeoMeshPath& path,
                                                    size_t segment, double u)
{
    const ZORGeoMeshPlace& from = path[segment];
    ZORGeoMeshPlace to;
    if (!ZorGeoExpressPlace(mesh, path[segment + 1], from.triangle, to))
        return std::nullopt;
    ZORGeoMeshPlace place = from;
    for (size_t kCorner = 0; kCorner < 3; ++kCorner)
        place.weights[kCorner] = (1 - u) * from.weights[kCorner] + u * to.weights[kCorner];
    place.point = from.point + u * (to.point - from.point);
    return place;
}

ZORGeoArcSearch::ZORGeoArcSearch(const ZORGeoMesh& mesh, const ZORGeoMeshPath& path,
                                 const ZORGeoPathTurns& turns, size_t place, double radius,
                                 zor::geo::ProgressReporter& progress)
    : m_mesh(mesh)
    , m_path(path)
    , m_turns(turns)
    , m_place(place)
    , m_radius(radius)
    , m_progress(progress)
    , m_isLeft(turns.GetTurns()[place].angle > 0)
    , m_ahead(mesh, path, place)
    , m_lengths(path.size())
{
    for (size_t i = 1; i < path.size(); ++i)
        m_lengths[i] = m_lengths[i - 1] + path[i - 1].point.DistanceTo(path[i].point);
}

std::optional<ZORGeoArcStart> ZORGeoArcSearch::StartOn(size_t segment, double u) const
{
    const ZORMathVector direction = (m_path[segment + 1].point - m_path[segment].point).GetNormalized();
    const ZORMathVector normal = ZorGeoTwiceAreaNormal(m_mesh, m_path[segment].triangle).GetNormalized();
    const auto place = ZorGeoPlaceOnSegment(m_mesh, m_path, segment, u);
    if (!place || direction == ZORMathVector() || normal == ZORMathVector())
        return std::nullopt;
    const ZORMathVector left = Cross(normal, direction).GetNormalized();
    return ZORGeoArcStart{*place, direction, m_isLeft == m_turns.IsOwnSide(segment) ? left : -left};
}

// From the start of the path, turned inwards from the path's own direction.
std::optional<ZORGeoArcStart> ZORGeoArcSearch::StartTurned(double angle) const
{
    size_t segment = 0;
    while (segment + 2 < m_path.size() && m_path[segment].point == m_path[segment + 1].point)
        ++segment;
    const ZORGeoMeshPlace& place = m_path[segment];
    const double weights[3] = {place.weights[0], place.weights[1], place.weights[2]};
    const auto found = ZorGeoFindWalkPlace(m_mesh, place.triangle, weights);
    if (!found || found->triangle != place.triangle)
        return std::nullopt;
    const ZORMathVector direction = m_path[segment + 1].point - place.point;
    const bool isLeft = m_isLeft == m_turns.IsOwnSide(segment);
    const auto walk = ZorGeoStartStraight(m_mesh, *found, direction, direction, isLeft ? angle : -angle);
    auto start = walk.ahead ? ZorGeoMakeArcStart(m_mesh, *walk.ahead) : std::nullopt;
    if (start && !isLeft)
        start->inward = -start->inward;
    if (start)
        start->place.point = place.point;
    return start;
}

std::optional<ZORGeoArcWalk::Meeting> ZORGeoArcSearch::Meet(const Arc& arc) const
{
    m_progress.Check();
    // Longer ones would make the path longer.
    const double longest = m_lengths.back() - m_lengths[arc.segment];
    return ZORGeoArcWalk(m_mesh, arc.curvature).Meet(arc.start, {0, longest}, m_ahead, nullptr);
}

// Whether an arc of the radius that begins on a segment is clear of the path.
bool ZORGeoArcSearch::IsClear(size_t segment, double u) const
{
    const auto start = StartOn(segment, u);
    return start && !Meet({*start, 1 / m_radius, segment, true});
}

// The bend that the arc would touch instead of the path beside it, when the arc crosses the path and others
// nearly the same do not: one that points to the arc, so that the arc had to leave it by a corner. The angle
// between the arc and the path behind the meeting shrinks as the arc turns. Where it vanishes on a straight way
// the arc touches that; where it jumps over zero it touches a bend. Returns 0 for none.
size_t ZORGeoArcSearch::FindBend(const ZORGeoArcWalk::Meeting& meeting, double curvature) const
{
    double angle = meeting.angle;
    double passed = meeting.u; // part of the segment
    for (size_t segment = meeting.segment; segment + 2 < m_path.size(); ++segment) {
        angle -= (1 - passed) * curvature * m_path[segment].point.DistanceTo(m_path[segment + 1].point);
        if (angle < kCorner)
            return 0;
        const double turn = m_turns.GetTurns()[segment + 1].angle;
        angle += m_isLeft ? turn : -turn;
        if (angle < -kCorner)
            return segment + 1;
        passed = 0;
    }
    return 0;
}

// Halves the interval between an arc that is clear of the path and one that crosses it. Up to the width `known`
// what the arc touches may still change.
template<class ArcAt>
ZORGeoArcSearch::Trial ZORGeoArcSearch::Narrow(size_t segment, double clear, double crossing, double known,
                                               const ArcAt& arcAt) const
{
    for (int i = 0; i < kBisections; ++i) {
        const double middle = (clear + crossing) / 2;
        const Arc arc = arcAt(middle);
        const auto meeting = Meet(arc);
        const bool isKnown = meeting && std::abs(clear - crossing) <= known;
        if (const size_t bend = isKnown ? FindBend(*meeting, arc.curvature) : 0; bend > 0)
            return {std::nullopt, segment, bend};
        (meeting ? crossing : clear) = middle;
    }
    return {arcAt(crossing), segment, 0};
}

// The last segment from the beginning of which the arc is clear of the path, and the one after it.
bool ZORGeoArcSearch::FindSegment(size_t& clear, size_t& crossing) const
{
    crossing = m_place;
    for (size_t step = 1;; step *= 2) {
        clear = crossing - std::min(step, crossing);
        while (clear > 0 && !IsUsable(clear))
            --clear;
        if (IsClear(clear, 0))
            break;
        crossing = clear;
        if (clear == 0)
            return false;
    }
    size_t untried = crossing; // segments from here on to `crossing` cannot be used
    while (untried - clear > 1) {
        size_t middle = (untried + clear) / 2;
        const size_t half = middle;
        while (middle > clear && !IsUsable(middle))
            --middle;
        if (middle == clear) {
            untried = half;
        } else if (IsClear(middle, 0)) {
            clear = middle;
        } else {
            crossing = middle;
            untried = middle;
        }
    }
    return true;
}

ZORGeoArcSearch::Trial ZORGeoArcSearch::FindOnSegments() const
{
    size_t clear = 0;
    size_t crossing = 0;
    if (!FindSegment(clear, crossing))
        return {std::nullopt, m_place - 1, 0};
    if (crossing < m_place && IsClear(clear, kBeforeEnd))
        return FindAtEnd(clear);
    const double length = m_path[clear].point.DistanceTo(m_path[clear + 1].point);
    return Narrow(clear, 0, 1, kTouchKnown * m_radius / length, [&](double u) {
        return Arc{*StartOn(clear, u), 1 / m_radius, clear, true};
    });
}

ZORGeoArcSearch::Trial ZORGeoArcSearch::FindAtEnd(size_t segment) const
{
    const auto start = StartOn(segment, kBeforeEnd);
    double clear = 1 / m_radius;
    const auto arcOf = [&](double curvature) { return Arc{*start, curvature, segment, true}; };
    if (!start || Meet(arcOf(clear)))
        return {std::nullopt, segment, 0};
    double crossing = clear / 2;
    while (!Meet(arcOf(crossing))) {
        clear = crossing;
        crossing /= 2;
        if (crossing * m_radius * kLargestRadius < 1)
            return {std::nullopt, segment, 0};
    }
    return Narrow(segment, clear, crossing, kTouchKnown * clear, arcOf);
}

std::optional<ZORGeoArcSearch::Arc> ZORGeoArcSearch::FindAtStart() const
{
    const ZORGeoPathSegments all(m_mesh, m_path, 0);
    const ZORGeoArcWalk walk(m_mesh, 1 / m_radius);
    const auto isClear = [&](double angle) {
        m_progress.Check();
        const auto start = StartTurned(angle);
        return start
               && !walk.Meet(*start, {kShortestArc * std::min(m_radius, m_lengths.back()), m_lengths.back()},
                             all, nullptr);
    };
    double clear = kTurnStep;
    while (!isClear(clear)) {
        clear += kTurnStep;
        if (clear > pi)
            return std::nullopt;
    }
    double crossing = clear - kTurnStep;
    Bisect(clear, crossing, isClear);
    const auto start = StartTurned(crossing);
    return start ? std::optional(Arc{*start, 1 / m_radius, 0, false}) : std::nullopt;
}

std::optional<ZORGeoArcSearch::Replacement> ZORGeoArcSearch::Replace(const Arc& arc) const
{
    ZORGeoMeshPath places;
    const double scale = std::min(m_radius, m_lengths.back());
    const double shortest = arc.isTangent ? 0 : kShortestArc * scale;
    const auto meeting =
        ZORGeoArcWalk(m_mesh, arc.curvature).Meet(arc.start, {shortest, m_lengths.back()}, m_ahead, &places);
    if (!meeting)
        return std::nullopt;
    const size_t met = meeting->segment;
    const double length = m_path[met].point.DistanceTo(m_path[met + 1].point);
    const bool isAtNext = (1 - meeting->u) * length <= kSamePlace * scale;
    const bool isAtPlace = meeting->u * length <= kSamePlace * scale;
    const auto end = ZorGeoPlaceOnSegment(m_mesh, m_path, met, isAtPlace ? 0 : meeting->u);
    if (!end)
        return std::nullopt;

    Replacement result;
    ZORGeoMeshPath& path = result.path;
    if (arc.isTangent)
        path.assign(m_path.begin(), m_path.begin() + qsizetype(arc.segment) + 1);
    result.first = path.size();
    places.pop_back();
    for (const ZORGeoMeshPlace& place : places)
        AppendPlace(path, place);
    if (!isAtNext)
        AppendPlace(path, *end);
    result.last = isAtNext ? path.size() : path.size() - 1;
    path.insert(path.end(), m_path.begin() + qsizetype(met) + 1, m_path.end());
    return result;
}
