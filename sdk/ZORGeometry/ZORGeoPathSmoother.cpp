#include "ZORGeoArcSearch_p.h"
#include "ZORGeoPathSmoother_p.h"
#include "ZORGeoShortestPath_p.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

using std::numbers::pi;

namespace {

constexpr double largestStep = pi / 36;
constexpr double radiusTolerance = 1e-4;
// Cuts reach so far to both sides, in the radius, and shorten what they replace by this part at least.
constexpr double shortestCut = 0.25;
constexpr double longestCut = 4;
constexpr double smallestGain = 1e-9;
constexpr int placesToTry = 48;
constexpr int maximumSweeps = 20;
constexpr size_t largestNumber = 1000; // of arcs and cuts, besides one for each place

// The same path from its end to its start. Returns false when a place is not in both of its triangles.
bool Reverse(const ZORGeoMesh& mesh, ZORGeoMeshPath& path)
{
    ZORGeoMeshPath reversed;
    reversed.reserve(path.size());
    for (size_t i = path.size() - 1; i > 0; --i) {
        ZORGeoMeshPlace place;
        if (!ZorGeoExpressPlace(mesh, path[i], path[i - 1].triangle, place))
            return false;
        reversed.push_back(place);
    }
    reversed.push_back(path.front());
    path = std::move(reversed);
    return true;
}

} // namespace

ZORGeoPathSmoother::ZORGeoPathSmoother(const ZORGeoMesh& mesh, double radius)
    : m_mesh(mesh)
    , m_radius(radius)
{
}

double ZORGeoPathSmoother::CurvatureAt(const ZORGeoPathTurn& turn) const
{
    const double longest = m_radius * largestStep;
    const double length = (std::min(turn.before, longest) + std::min(turn.behind, longest)) / 2;
    return turn.IsStraight() ? 0 : std::abs(turn.angle) / length;
}

bool ZORGeoPathSmoother::IsTooSharp(const ZORGeoPathTurn& turn) const
{
    return CurvatureAt(turn) * m_radius > 1 + radiusTolerance;
}

double ZORGeoPathSmoother::FindSmallestRadius(const ZORGeoMeshPath& path) const
{
    double curvature = 0;
    for (const ZORGeoPathTurn& turn : ZORGeoPathTurns(m_mesh, path).GetTurns())
        curvature = std::max(curvature, CurvatureAt(turn));
    return curvature > 0 ? 1 / curvature : std::numeric_limits<double>::infinity();
}

bool ZORGeoPathSmoother::IsSmooth(const ZORGeoMeshPath& path) const
{
    const ZORGeoPathTurns turns(m_mesh, path);
    return std::none_of(turns.GetTurns().begin(), turns.GetTurns().end(),
                        [this](const ZORGeoPathTurn& turn) { return IsTooSharp(turn); });
}

bool ZORGeoPathSmoother::Run(ZORGeoMeshPath& path) const
{
    ZorGeoFillGaps(m_mesh, path);
    bool isChanged = false;
    for (int sweep = 0; sweep < maximumSweeps; ++sweep) {
        bool isSwept = Sweep(path);
        // Bends that find no arc from one end may find one from the other.
        ZORGeoMeshPath reversed = path;
        if (!IsSmooth(path) && Reverse(m_mesh, reversed) && Sweep(reversed) && Reverse(m_mesh, reversed)) {
            path = std::move(reversed);
            isSwept = true;
        }
        if (!isSwept)
            break;
        isChanged = true;
    }
    return isChanged;
}

bool ZORGeoPathSmoother::Sweep(ZORGeoMeshPath& path) const
{
    bool isChanged = false;
    // Rounding could make two bends take turns.
    size_t remaining = largestNumber + path.size();
    size_t left = 0; // where the last bend is that nothing was found for, counted from the end
    for (;; --remaining) {
        const ZORGeoPathTurns turns(m_mesh, path);
        size_t place = left > 0 ? path.size() - left + 1 : 1;
        while (place < path.size() && !IsTooSharp(turns.GetTurns()[place]))
            ++place;
        if (place >= path.size() || remaining == 0)
            return isChanged;
        if (RoundOff(path, turns, place) || CutShort(path, turns, place))
            isChanged = true;
        else
            left = path.size() - place;
    }
}

bool ZORGeoPathSmoother::RoundOff(ZORGeoMeshPath& path, const ZORGeoPathTurns& turns, size_t place) const
{
    const double length = ZorGeoLengthOf(path);
    const ZORGeoArcSearch search(m_mesh, path, turns, place, m_radius);
    const auto apply = [&](const std::optional<ZORGeoArcSearch::Arc>& arc) {
        auto replacement = arc ? search.Replace(*arc) : std::nullopt;
        if (!replacement || !IsBetter(replacement->path, replacement->first, replacement->last, length))
            return false;
        path = std::move(replacement->path);
        return true;
    };
    const auto latest = search.FindOnSegments();
    if (apply(latest))
        return true;
    size_t segment = latest ? latest->segment + 1 : place;
    for (int tried = 0; segment > 0 && tried < placesToTry;) {
        // The farther away, the fewer of them.
        segment -= std::min(segment, size_t(1) << (tried / 8));
        while (segment > 0 && !search.IsUsable(segment))
            --segment;
        if (apply(search.FindAtEnd(segment)))
            return true;
        ++tried;
    }
    return apply(search.FindAtStart());
}

namespace {

// Where a cut begins or ends: on the segment, at the distance from its place that is nearer to the bend.
struct CutEnd
{
    size_t segment;
    double u;      // on the segment
    double length; // from there to the bend
};

} // namespace

// Joins the turns before and behind, or places at a moderate distance, by a shortest way.
bool ZORGeoPathSmoother::CutShort(ZORGeoMeshPath& path, const ZORGeoPathTurns& turns, size_t place) const
{
    const auto lengthOf = [&](size_t i) { return path[i].point.DistanceTo(path[i + 1].point); };
    const auto isEnd = [&](size_t i, double length) {
        return length >= shortestCut * m_radius && !turns.GetTurns()[i].IsStraight();
    };
    const double longest = longestCut * m_radius;
    CutEnd from = {place, 0, 0};
    while (from.segment > 0 && from.u == 0 && !isEnd(from.segment, from.length)) {
        const double length = lengthOf(--from.segment);
        if (from.length + length > longest)
            from.u = 1 - (longest - from.length) / length;
        from.length = std::min(longest, from.length + length);
    }
    CutEnd to = {place - 1, 1, 0};
    while (to.segment + 2 < path.size() && to.u == 1 && !isEnd(to.segment + 1, to.length)) {
        const double length = lengthOf(++to.segment);
        if (to.length + length > longest)
            to.u = (longest - to.length) / length;
        to.length = std::min(longest, to.length + length);
    }
    const auto start = ZorGeoPlaceOnSegment(m_mesh, path, from.segment, from.u);
    const auto end = ZorGeoPlaceOnSegment(m_mesh, path, to.segment, to.u);
    if (!start || !end)
        return false;
    ZORGeoMeshPath way = ZORGeoShortestPath(m_mesh).Find(*start, *end);
    if (way.size() < 2 || ZorGeoLengthOf(way) > (from.length + to.length) * (1 - smallestGain))
        return false;
    way.front().point = start->point;
    ZorGeoFillGaps(m_mesh, way);
    ZORGeoMeshPath changed(path.begin(), path.begin() + qsizetype(from.segment) + (from.u > 0 ? 1 : 0));
    changed.insert(changed.end(), way.begin(), way.end() - 1);
    if (to.u < 1)
        changed.push_back(*end);
    changed.insert(changed.end(), path.begin() + qsizetype(to.segment) + 1, path.end());
    path = std::move(changed);
    return true;
}

// Whether the places first ... last turn as they may and the path has not become longer.
bool ZORGeoPathSmoother::IsBetter(const ZORGeoMeshPath& path, size_t first, size_t last,
                                  double oldLength) const
{
    if (ZorGeoLengthOf(path) > oldLength)
        return false;
    // As much on both sides as counts.
    const double longest = m_radius * largestStep;
    size_t begin = first > 3 ? first - 3 : 0;
    for (double length = 0; begin > 0 && length < longest; --begin)
        length += path[begin - 1].point.DistanceTo(path[begin].point);
    size_t end = std::min(path.size(), last + 4);
    for (double length = 0; end < path.size() && length < longest; ++end)
        length += path[end - 1].point.DistanceTo(path[end].point);
    const ZORGeoMeshPath part(path.begin() + qsizetype(begin), path.begin() + qsizetype(end));
    const ZORGeoPathTurns turns(m_mesh, part);
    for (size_t i = first > 0 ? first - 1 : 0; i <= last && i < end; ++i) {
        if (IsTooSharp(turns.GetTurns()[i - begin]))
            return false;
    }
    return true;
}
