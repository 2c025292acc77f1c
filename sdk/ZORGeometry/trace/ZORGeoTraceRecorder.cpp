#include "ZORGeoTraceRecorder_p.h"
#include "walk/ZORGeoMeshWalker_p.h"

#include <ZORGeometry/ZORGeoCurveOnSurfaceProcessor.h>

#include <algorithm>

using Result = ZORGeoCurveOnSurfaceResult;

namespace {

bool IsPoint(const ZORGeoTraceSegment& segment, double fraction)
{
    const double length = fraction * segment.length;
    return !(length > 0) || length * length <= 1e-26 * segment.squaredScale;
}

double GetTolerance(const ZORGeoTraceSegment& segment)
{
    return ZORGeoMeshWalker::kSnap * std::sqrt(segment.squaredScale);
}

} // namespace

ZORGeoTraceRecorder::ZORGeoTraceRecorder(const ZORGeoTraceBounds& bounds, Side side)
    : m_bounds(bounds)
    , m_isAhead(side == Side::Ahead)
    , m_hasHardLimits(bounds.limits
                      && bounds.limits->HasAny(bounds.side | ZORGeoCurveOnSurfaceProcessor::Hard))
    , m_touched(bounds.limits ? size_t(bounds.limits->GetNumCurves()) : 0)
{
    m_locations.reserve(256);
}

ZORGeoLocationOnSurface ZORGeoTraceRecorder::MakeLocation(int triangle, const double (&weights)[3],
                                                          const ZORMathPoint& point) const
{
    return {m_bounds.surface, triangle + 1, weights[1], weights[2], point};
}

bool ZORGeoTraceRecorder::Add(const ZORGeoTraceSegment& segment)
{
    const double before = m_side.length;
    double fraction = 1;
    double best = 2;
    Result::StopReason reason = Result::Length;
    if (!m_isProlonged && ReachesLength(segment, fraction))
        best = fraction;
    if (m_bounds.limits && m_bounds.limits->Has(segment.triangle) && MeetsLimit(segment, fraction)) {
        best = fraction;
        reason = Result::Limit;
    } else if (best <= 1 && m_hasHardLimits) {
        KeepRequested(segment, best);
        best = 2;
    }
    if (Closes(segment, fraction) && fraction <= best) {
        best = fraction;
        reason = Result::Closed;
    }
    if (best > 1) {
        Append(segment);
        return false;
    }
    if (reason == Result::Closed && m_isProlonged) {
        ReturnToRequested();
        return true;
    }
    AppendEnd(segment, best);
    m_side.length = reason == Result::Length ? m_bounds.length : before + best * segment.length;
    m_side.reason = reason;
    if (reason == Result::Closed)
        m_locations.back().point = m_firstLocation.point;
    return true;
}

bool ZORGeoTraceRecorder::ReachesLength(const ZORGeoTraceSegment& segment, double& fraction) const
{
    if (!(m_side.length + segment.length * (1 + 1e-9) >= m_bounds.length))
        return false;
    const double remaining = m_bounds.length - m_side.length;
    const double tolerance = GetTolerance(segment);
    if (segment.length < remaining - tolerance)
        return false;
    fraction = segment.length <= remaining + tolerance ? 1 : remaining / segment.length;
    return true;
}

bool ZORGeoTraceRecorder::MeetsLimit(const ZORGeoTraceSegment& segment, double& fraction)
{
    m_bounds.limits->FindHits(segment.triangle, segment.begin, segment.end, m_hits);
    const double tolerance = 1e3 * GetTolerance(segment) + 1e-12 * m_side.length;
    for (const ZORGeoLimitBuckets::Hit& hit : m_hits) {
        if ((hit.behavior & m_bounds.side) == 0)
            continue;
        const double begin = m_side.length + hit.begin * segment.length;
        double& touched = m_touched[size_t(hit.curve)];
        if (begin <= touched + tolerance) {
            touched = std::max(touched, m_side.length + hit.end * segment.length);
            continue;
        }
        const bool isHard = (hit.behavior & ZORGeoCurveOnSurfaceProcessor::Hard) != 0;
        if (!isHard && (m_isProlonged || begin >= m_bounds.length - GetTolerance(segment)))
            continue;
        fraction = hit.begin;
        return true;
    }
    return false;
}

// Sides of a given length may run over themselves, unless they look for a hard limit beyond it.
bool ZORGeoTraceRecorder::Closes(const ZORGeoTraceSegment& segment, double& fraction)
{
    if (segment.triangle != m_firstTriangle) {
        if (m_firstTriangle < 0 && !IsPoint(segment, 1)) {
            m_firstTriangle = segment.triangle;
            m_firstLocation = MakeLocation(segment.triangle, segment.begin, segment.beginPoint);
            m_firstDirection = (segment.endPoint - segment.beginPoint).GetNormalized();
        }
        return false;
    }
    if (std::isfinite(m_bounds.length) && !m_isProlonged)
        return false;
    const double tolerance = 1e-12 * m_side.length;
    const ZORMathVector direction = (segment.endPoint - segment.beginPoint).GetNormalized();
    if (Dot(direction, m_firstDirection) < 1 - 1e-12)
        return false;
    const ZORMathVector back = m_firstLocation.point - segment.beginPoint;
    const double distance = Dot(back, direction);
    if ((back - distance * direction).GetLength() > tolerance || distance < -tolerance
        || distance > segment.length + tolerance)
        return false;
    fraction = std::clamp(distance / segment.length, 0.0, 1.0);
    return true;
}

void ZORGeoTraceRecorder::Append(const ZORGeoTraceSegment& segment)
{
    m_side.length += segment.length;
    m_lastEnd = MakeLocation(segment.triangle, segment.end, segment.endPoint);
    if (IsPoint(segment, 1))
        return;
    if (m_isAhead)
        m_locations.push_back(MakeLocation(segment.triangle, segment.begin, segment.beginPoint));
    else
        m_locations.push_back(m_lastEnd);
}

void ZORGeoTraceRecorder::AppendEnd(const ZORGeoTraceSegment& segment, double fraction)
{
    double weights[3];
    for (int i = 0; i < 3; ++i)
        weights[i] = fraction == 1 ? segment.end[i]
                                   : segment.begin[i] + fraction * (segment.end[i] - segment.begin[i]);
    const ZORMathPoint point = fraction == 1
                                   ? segment.endPoint
                                   : segment.beginPoint + fraction * (segment.endPoint - segment.beginPoint);
    const bool isPoint = IsPoint(segment, fraction);
    if (isPoint && (m_locations.empty() || !m_isAhead))
        return;
    if (m_isAhead && !isPoint)
        m_locations.push_back(MakeLocation(segment.triangle, segment.begin, segment.beginPoint));
    m_locations.push_back(MakeLocation(segment.triangle, weights, point));
}

void ZORGeoTraceRecorder::KeepRequested(const ZORGeoTraceSegment& segment, double fraction)
{
    m_isProlonged = true;
    m_requestedCount = m_locations.size();
    AppendEnd(segment, fraction);
    m_requestedTail.assign(m_locations.begin() + qptrdiff(m_requestedCount), m_locations.end());
    m_locations.resize(m_requestedCount);
}

void ZORGeoTraceRecorder::ReturnToRequested()
{
    m_locations.resize(m_requestedCount);
    m_locations.insert(m_locations.end(), m_requestedTail.begin(), m_requestedTail.end());
    m_side = {m_bounds.length, Result::Length};
}

void ZORGeoTraceRecorder::Stop(Result::StopReason reason)
{
    if (m_isProlonged) {
        ReturnToRequested();
        return;
    }
    m_side.reason = reason;
    if (m_isAhead && !m_locations.empty())
        m_locations.push_back(m_lastEnd);
}
