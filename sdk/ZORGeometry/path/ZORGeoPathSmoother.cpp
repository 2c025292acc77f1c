#include "ZORGeoArcSearch_p.h"
#include "ZORGeoPathGaps_p.h"
#include "ZORGeoPathSmoother_p.h"
#include "ZORGeoPathWindow_p.h"
#include "ZORGeoShortestPath_p.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

using std::numbers::pi;

namespace {

constexpr double kLargestStep = pi / 36;
constexpr double kRadiusTolerance = 1e-4;
// Cuts reach so far to both sides, in the radius, and shorten what they replace by this part at least.
constexpr double kShortestCut = 0.25;
constexpr double kLongestCut = 4;
constexpr double kSmallestGain = 1e-9;
// Bends are examined with this much of the path on both sides, in the radius: room for a cut or for an arc and as
// much again, up to bends of 175 degrees.
constexpr double kSmallestWindow = 6;
constexpr double kLargestWindow = 48;
constexpr size_t kPlacesToTry = 48;
constexpr int kMaximumSweeps = 20;
// Part of the remaining progress that is left to the sweeps after one: nearly all courses need one only.
constexpr double kLaterSweeps = 0.2;
constexpr size_t kLargestNumber = 1000; // of arcs and cuts, besides one for each place

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

// Segments up to the given one that an arc may begin at the end of, the farther away, the fewer of them.
std::vector<size_t> SegmentsToTry(const ZORGeoArcSearch& search, size_t last)
{
    std::vector<size_t> segments;
    for (size_t segment = last + 1; segment > 0 && segments.size() < kPlacesToTry;) {
        segment -= std::min(segment, size_t(1) << (segments.size() / 8));
        while (segment > 0 && !search.IsUsable(segment))
            --segment;
        segments.push_back(segment);
    }
    return segments;
}

} // namespace

ZORGeoPathSmoother::ZORGeoPathSmoother(const ZORGeoMesh& mesh, double radius,
                                       zor::geo::ProgressReporter& progress)
    : m_mesh(mesh)
    , m_radius(radius)
    , m_progress(progress)
{
}

double ZORGeoPathSmoother::CurvatureAt(const ZORGeoPathTurn& turn) const
{
    const double longest = m_radius * kLargestStep;
    const double length = (std::min(turn.before, longest) + std::min(turn.behind, longest)) / 2;
    return turn.IsStraight() ? 0 : std::abs(turn.angle) / length;
}

bool ZORGeoPathSmoother::IsTooSharp(const ZORGeoPathTurn& turn) const
{
    return CurvatureAt(turn) * m_radius > 1 + kRadiusTolerance;
}

double ZORGeoPathSmoother::FindSmallestRadius(const ZORGeoMeshPath& path) const
{
    const ZORGeoPathTurns turns(m_mesh, path);
    double curvature = 0;
    for (const ZORGeoPathTurn& turn : turns.GetTurns())
        curvature = std::max(curvature, CurvatureAt(turn));
    return curvature > 0 ? 1 / curvature : std::numeric_limits<double>::infinity();
}

std::optional<ZORMathPoint> ZORGeoPathSmoother::FindSharpBend(const ZORGeoMeshPath& path) const
{
    const ZORGeoPathTurns turns(m_mesh, path);
    for (size_t i = 0; i < path.size(); ++i) {
        if (IsTooSharp(turns.GetTurns()[i]))
            return path[i].point;
    }
    return std::nullopt;
}

bool ZORGeoPathSmoother::Run(ZORGeoMeshPath& path) const
{
    ZorGeoFillGaps(m_mesh, path);
    bool isChanged = false;
    double remaining = 1; // part of the progress
    const auto startSweep = [&] {
        m_progress.SetRange(1 - remaining, 1 - remaining * kLaterSweeps);
        remaining *= kLaterSweeps;
    };
    for (int sweep = 0; sweep < kMaximumSweeps; ++sweep) {
        startSweep();
        bool isSwept = Sweep(path);
        // Bends that find no arc from one end may find one from the other.
        ZORGeoMeshPath reversed = path;
        if (FindSharpBend(path) && Reverse(m_mesh, reversed)) {
            startSweep();
            if (Sweep(reversed) && Reverse(m_mesh, reversed)) {
                path = std::move(reversed);
                isSwept = true;
            }
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
    ZORGeoPathWindow window(m_mesh, path);
    // Rounding could make two bends take turns.
    for (size_t remaining = kLargestNumber + path.size(); !window.IsAtEnd() && remaining > 0;) {
        m_progress.Update(window.GetPart());
        window.Open(kSmallestWindow * m_radius);
        if (const size_t smooth = CountSmooth(window)) {
            window.Advance(smooth);
        } else if (Improve(window)) {
            isChanged = true;
            --remaining;
        } else {
            window.Advance(1);
        }
    }
    if (isChanged)
        path = window.GetWholePath();
    return isChanged;
}

// The number of places from the one reached on that turn as they may and whose ways are all in the window.
size_t ZORGeoPathSmoother::CountSmooth(const ZORGeoPathWindow& window) const
{
    const ZORGeoMeshPath& path = window.GetPath();
    size_t end = path.size();
    for (double length = 0;
         !window.IsToEnd() && end > window.GetPlace() + 1 && length < m_radius * kLargestStep;)
        length += path[end - 2].point.DistanceTo(path[end - 1].point), --end;
    size_t place = window.GetPlace();
    while (place < end && !IsTooSharp(window.GetTurns()[place]))
        ++place;
    return place - window.GetPlace();
}

// Rounds off or cuts short the bend at the place reached.
bool ZORGeoPathSmoother::Improve(ZORGeoPathWindow& window) const
{
    const double tangentLength = std::tan(std::abs(window.GetTurns()[window.GetPlace()].angle) / 2);
    const bool isWide = 2 * tangentLength > kSmallestWindow;
    if (isWide)
        window.Open(std::min(2 * tangentLength, kLargestWindow) * m_radius);
    ZORGeoMeshPath changed;
    bool isChanged = RoundOff(window, changed);
    if (!isChanged) {
        if (isWide)
            window.Open(kSmallestWindow * m_radius);
        isChanged = CutShort(window, changed);
    }
    if (isChanged)
        window.Replace(changed, m_radius * kLargestStep);
    return isChanged;
}

bool ZORGeoPathSmoother::RoundOff(const ZORGeoPathWindow& window, ZORGeoMeshPath& changed) const
{
    const double length = ZorGeoLengthOf(window.GetPath());
    const ZORGeoArcSearch search(m_mesh, window.GetPath(), window.GetPathTurns(), window.GetPlace(), m_radius,
                                 m_progress);
    const auto apply = [&](const std::optional<ZORGeoArcSearch::Arc>& arc) {
        auto replacement = arc ? search.Replace(*arc) : std::nullopt;
        if (!replacement || !IsBetter(replacement->path, replacement->first, replacement->last, length))
            return false;
        // Only at its own end may the path be left in another direction.
        if (!window.IsToEnd() && replacement->last + 1 == replacement->path.size())
            return false;
        changed = std::move(replacement->path);
        return true;
    };
    const auto latest = search.FindOnSegments();
    if (apply(latest.arc))
        return true;
    const std::vector<size_t> segments = SegmentsToTry(search, latest.segment);
    // Between arcs that end in the same bend all others do. Wider and wider steps pass over them.
    size_t bend = 0; // of the last arc
    size_t next = 0; // number of segments that are done with
    for (size_t step = 1; next < segments.size();) {
        const size_t tried = std::min(next + step, segments.size()) - 1;
        const auto trial = search.FindAtEnd(segments[tried]);
        const bool isSameBend = trial.bend > 0 && trial.bend == bend;
        if (tried > next && !isSameBend) {
            step = (tried - next + 1) / 2;
            continue;
        }
        if (apply(trial.arc))
            return true;
        step = isSameBend ? 2 * step : 1;
        next = tried + 1;
        bend = trial.bend;
    }
    return window.IsFromStart() && apply(search.FindAtStart());
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
bool ZORGeoPathSmoother::CutShort(const ZORGeoPathWindow& window, ZORGeoMeshPath& changed) const
{
    const ZORGeoMeshPath& path = window.GetPath();
    const size_t place = window.GetPlace();
    const auto lengthOf = [&](size_t i) { return path[i].point.DistanceTo(path[i + 1].point); };
    const auto isEnd = [&](size_t i, double length) {
        return length >= kShortestCut * m_radius && !window.GetTurns()[i].IsStraight();
    };
    const double longest = kLongestCut * m_radius;
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
    ZORGeoMeshPath way = ZORGeoShortestPath(m_mesh, &m_progress).Find(*start, *end);
    if (way.size() == 1) // the path turns back on itself: the fold goes
        way.push_back(*end);
    if (way.size() < 2 || ZorGeoLengthOf(way) > (from.length + to.length) * (1 - kSmallestGain))
        return false;
    way.front().point = start->point;
    ZorGeoFillGaps(m_mesh, way);
    changed.assign(path.begin(), path.begin() + qsizetype(from.segment) + (from.u > 0 ? 1 : 0));
    changed.insert(changed.end(), way.begin(), way.end() - 1);
    if (to.u < 1)
        changed.push_back(*end);
    changed.insert(changed.end(), path.begin() + qsizetype(to.segment) + 1, path.end());
    return true;
}

// Whether the places first ... last turn as they may and the path has not become longer.
bool ZORGeoPathSmoother::IsBetter(const ZORGeoMeshPath& path, size_t first, size_t last,
                                  double oldLength) const
{
    if (ZorGeoLengthOf(path) > oldLength)
        return false;
    // As much on both sides as counts.
    const double longest = m_radius * kLargestStep;
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
