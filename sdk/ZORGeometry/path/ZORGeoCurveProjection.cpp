#include "ZORGeoCurveProjection_p.h"
#include "mesh/ZORGeoCoincidence_p.h"

#include <ZORGeometry/ZORGeoCurve.h>
#include <ZORGeometry/ZORGeoRange.h>
#include <ZORMathematics/ZORMathFunctions.h>
#include <ZORSystem/ZORSysProgress.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

constexpr int kMaximumSteps = 100000;
constexpr int kMaximumHalvings = 100000;
constexpr int kMaximumJumps = 1000; // beyond, the source is not halved to find where it jumps
constexpr int kMaximumDepth = 16;
constexpr int kBorderDepth = 12;
constexpr int kMaximumDescent = 10000;

// Sides that are shorter, compared to the longest, do not shorten the steps.
constexpr double kMaximumSlenderness = 50;

// Far from the surface the steps grow with the distance, of which this is the part.
constexpr double kStepOfDistance = 0.25;

// Points of the source are left out while it turns less than this within a part of a step.
constexpr double kLeftOutTurn = std::numbers::pi / 180;
constexpr double kLeftOutOfStep = 0.25;

// The longest way between two places, as a multiple of their distance.
constexpr double kLongestWay = 2;

} // namespace

ZORGeoCurveProjection::ZORGeoCurveProjection(const ZORGeoMesh& mesh, const ZORGeoMeshTree& tree,
                                             const ZORMathBoundingBox& box)
    : m_mesh(mesh)
    , m_tree(tree)
    , m_join(mesh)
    , m_minimumSide(1e-4 * (box.GetUpperPoint() - box.GetLowerPoint()).GetLength())
{
}

void ZORGeoCurveProjection::Measure(const ZORGeoCurve& source)
{
    double length = 0;
    for (int i = 1; i < source.GetNumPoints(); ++i) {
        const double distance = source.GetPoint(i - 1).DistanceTo(source.GetPoint(i));
        length += std::isfinite(distance) ? distance : 0;
    }
    m_minimumStep = length / kMaximumSteps;
    const int count = source.GetNumPoints();
    m_isClosed = count > 2 && ZorGeoCoincide(source.GetPoint(0), source.GetPoint(count - 1), length);
}

ZORGeoMeshPath ZORGeoCurveProjection::Run(const ZORGeoCurve& source)
{
    const int count = source.GetNumPoints();
    Measure(source);
    double turn = 0;
    ZORMathVector direction;
    for (int i = 0; i < count; ++i) {
        m_part = double(i) / count;
        // Where two triangles are equally near, rounding must not decide for another one at the end.
        const ZORMathPoint point = source.GetPoint(m_isClosed && i + 1 == count ? 0 : i);
        if (!ZORGeoRange::Contains(point))
            continue;
        if (m_runs.empty()) {
            if (!Take(point, 0, m_last))
                return {};
            m_runs.push_back({m_last.place});
            continue;
        }
        // Whether the source goes on so straight from here that the point can be left out.
        const ZORMathVector arriving = point - m_last.point;
        if (i + 1 < count) {
            const ZORMathVector leaving = source.GetPoint(i + 1) - point;
            if (leaving == ZORMathVector() || arriving == ZORMathVector())
                continue;
            const ZORMathVector former = direction == ZORMathVector() ? arriving : direction;
            direction = leaving;
            turn += AngleBetween(former, leaving);
            const double length = arriving.GetLength();
            if (length < m_minimumStep || (turn < kLeftOutTurn && length < kLeftOutOfStep * GetStep(m_last)))
                continue;
        }
        turn = 0;
        Follow(point);
    }
    return FinishRuns();
}

bool ZORGeoCurveProjection::Take(const ZORMathPoint& point, int depth, Sample& sample)
{
    const ZORGeoMeshTree::Nearest nearest = m_tree.FindNearest(point, m_last.place.triangle);
    if (nearest.triangle < 0)
        return false;
    const ZORGeoMeshPlace place =
        ZorGeoSnapPlace(m_mesh, nearest.triangle, nearest.place.weightB, nearest.place.weightC);
    sample = {point, place, std::sqrt(nearest.place.squaredDistance), depth};
    return true;
}

// How far to go along the source at once.
double ZORGeoCurveProjection::GetStep(const Sample& sample) const
{
    const auto [a, b, c] = m_mesh.triangles[sample.place.triangle];
    const double sides[3] = {m_mesh.vertices[a].DistanceTo(m_mesh.vertices[b]),
                             m_mesh.vertices[b].DistanceTo(m_mesh.vertices[c]),
                             m_mesh.vertices[c].DistanceTo(m_mesh.vertices[a])};
    const auto [shortest, longest] = std::minmax_element(sides, sides + 3);
    return std::max({*shortest, *longest / kMaximumSlenderness, m_minimumSide,
                     kStepOfDistance * sample.distance, m_minimumStep});
}

// Goes straight from the last sample to the end, step by step.
void ZORGeoCurveProjection::Follow(const ZORMathPoint& end)
{
    for (int steps = 0; steps < kMaximumSteps; ++steps) {
        ZORSysProgress::Check(m_part);
        const ZORMathVector way = end - m_last.point;
        const double length = way.GetLength();
        const double step = GetStep(m_last);
        if (length <= step)
            break;
        const ZORMathPoint next = m_last.point + (1 / std::ceil(length / step)) * way;
        if (next == m_last.point)
            break;
        Reach(next);
    }
    Reach(end);
}

void ZORGeoCurveProjection::Reach(const ZORMathPoint& point)
{
    Sample sample;
    if (!Take(point, 0, sample))
        return;
    std::vector<Sample> pending = {sample};
    while (!pending.empty()) {
        if (!TryJoin(pending.back())) {
            if (Halve(pending))
                continue;
            Jump(pending.back());
        }
        m_last.point = pending.back().point;
        pending.pop_back();
    }
}

bool ZORGeoCurveProjection::TryJoin(const Sample& sample)
{
    const double chord = m_last.place.point.DistanceTo(sample.place.point);
    const bool isLast = sample.depth >= kMaximumDepth || m_halvings >= kMaximumHalvings;
    if (!isLast && !m_isDetached) {
        if (chord > 2 * GetStep(m_last) && chord > 2 * GetStep(sample))
            return false;
        // Where the source passes over the border the curve turns into it.
        const bool isPassing =
            ZorGeoIsOnBorder(m_mesh, m_last.place) != ZorGeoIsOnBorder(m_mesh, sample.place);
        if (isPassing && sample.depth < kBorderDepth && chord > 0)
            return false;
    }
    if (!m_join.Append(m_runs.back(), sample.place, kLongestWay * chord))
        return false;
    m_last = sample;
    m_isDetached = false;
    return true;
}

// Puts the middle of the source between the last sample and the pending one before that one.
bool ZORGeoCurveProjection::Halve(std::vector<Sample>& pending)
{
    const Sample& target = pending.back();
    if (m_isDetached || target.depth >= kMaximumDepth || m_halvings >= kMaximumHalvings
        || m_jumps >= kMaximumJumps)
        return false;
    const ZORMathPoint middle = m_last.point + 0.5 * (target.point - m_last.point);
    if (middle == m_last.point || middle == target.point)
        return false;
    ++m_halvings;
    const int depth = target.depth + 1;
    pending.back().depth = depth;
    Sample sample;
    if (!Take(middle, depth, sample))
        return false;
    pending.push_back(sample);
    return true;
}

// The nearest place is torn from the last one: stays near that one or begins anew.
void ZORGeoCurveProjection::Jump(const Sample& sample)
{
    ++m_jumps;
    ZORGeoMeshPath& run = m_runs.back();
    const double chord = m_last.place.point.DistanceTo(sample.place.point);
    if (m_join.Append(run, sample.place, kLongestWay * chord + GetStep(sample))) {
        m_last = sample;
        m_isDetached = false;
        return;
    }
    const ZORGeoMeshPlace beside = Descend(sample.point);
    const double distance = beside.point.DistanceTo(sample.point);
    const double way = kLongestWay * m_last.place.point.DistanceTo(beside.point);
    if (distance <= 2 * sample.distance + GetStep(sample)
        && m_join.Append(run, beside, way + GetStep(sample))) {
        m_last = {sample.point, beside, distance, 0};
        m_isDetached = true;
        return;
    }
    m_runs.push_back({sample.place});
    m_last = sample;
    m_isDetached = false;
}

// The nearest place that can be reached from the last one by going nearer from triangle to triangle.
ZORGeoMeshPlace ZORGeoCurveProjection::Descend(const ZORMathPoint& point) const
{
    ZORGeoMeshPlace place = m_last.place;
    std::vector<int> triangles;
    double squared = std::numeric_limits<double>::infinity();
    for (int step = 0; step < kMaximumDescent; ++step) {
        ZorGeoFindTriangles(m_mesh, place, triangles);
        bool isNearer = false;
        for (const int triangle : triangles) {
            const auto [a, b, c] = m_mesh.triangles[triangle];
            const ZORGeoTrianglePlace nearest =
                ZorGeoClosestOnTriangle(point, m_mesh.vertices[a], m_mesh.vertices[b], m_mesh.vertices[c]);
            if (nearest.squaredDistance >= squared)
                continue;
            squared = nearest.squaredDistance;
            place = ZorGeoSnapPlace(m_mesh, triangle, nearest.weightB, nearest.weightC);
            isNearer = true;
        }
        if (!isNearer)
            break;
    }
    return place;
}

ZORGeoMeshPath ZORGeoCurveProjection::FinishRuns()
{
    if (m_runs.empty())
        return {};
    // Where a closed source starts is no end of a run.
    if (m_isClosed && m_runs.size() > 1 && m_runs.back().back().point == m_runs.front().front().point) {
        ZORGeoMeshPath& last = m_runs.back();
        last.pop_back();
        last.insert(last.end(), m_runs.front().begin(), m_runs.front().end());
        m_runs.front() = std::move(last);
        m_runs.pop_back();
    }
    const auto longest =
        std::max_element(m_runs.begin(), m_runs.end(), [](const ZORGeoMeshPath& a, const ZORGeoMeshPath& b) {
            return ZorGeoLengthOf(a) < ZorGeoLengthOf(b);
        });
    // Segments without length.
    ZORGeoMeshPath path;
    for (const ZORGeoMeshPlace& place : *longest) {
        if (!path.empty() && path.back().point == place.point)
            path.back() = place;
        else
            path.push_back(place);
    }
    return path;
}
