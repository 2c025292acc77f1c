#include "ZORGeoSurfaceTrace_p.h"
#include "ZORGeoVertexFan_p.h"

#include <ZORGeometry/ZORGeoCurveOnSurfaceProcessor.h>

#include <algorithm>

using Result = ZORGeoCurveOnSurfaceResult;

namespace {

constexpr double snap = ZORGeoMeshWalker::Snap;

bool IsPoint(const ZORGeoTraceSegment& segment, double fraction)
{
    const double length = fraction * segment.length;
    return !(length > 0) || length * length <= 1e-26 * segment.squaredScale;
}

double GetTolerance(const ZORGeoTraceSegment& segment)
{
    return snap * std::sqrt(segment.squaredScale);
}

} // namespace

ZORGeoTraceRecorder::ZORGeoTraceRecorder(const ZORGeoTraceBounds& bounds, bool isAhead)
    : m_bounds(bounds)
    , m_isAhead(isAhead)
    , m_hasHardLimits(bounds.limits
                      && bounds.limits->HasAny(bounds.side | ZORGeoCurveOnSurfaceProcessor::Hard))
{
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
        if (begin <= m_touched + tolerance) {
            m_touched = std::max(m_touched, m_side.length + hit.end * segment.length);
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
    const double tolerance = 1e-10 * m_side.length;
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

namespace {

// Goes on straight behind an exit.
class StraightGuide
{
public:
    explicit StraightGuide(const ZORGeoMesh& mesh)
        : m_mesh(mesh)
    {
    }

    // Returns false when the walk ends here.
    bool Advance(ZORGeoMeshWalker& walker, const ZORGeoMeshWalker::Exit& exit) const
    {
        if (ZORGeoMeshWalker::IsCorner(exit)) [[unlikely]]
            return PassVertex(walker, walker.GetCorner(exit));
        return walker.Continue(exit);
    }

private:
    bool PassVertex(ZORGeoMeshWalker& walker, int corner) const
    {
        const ZORGeoMeshEntry& from = walker.GetEntry();
        const double x = walker.GetApexAlong();
        const double y = walker.GetApexAcross();
        struct Vector
        {
            double x, y;
        };
        // The sides at the corner in the frame of the walk, the right one first.
        ZORGeoMeshEntry entry = from;
        Vector right = {1, 0};
        Vector left = {x, y};
        if (corner == from.q) {
            entry = {from.triangle, from.q, from.r, from.p, 0};
            right = {x - 1, y};
            left = {-1, 0};
        } else if (corner == from.r) {
            entry = {from.triangle, from.r, from.p, from.q, 0};
            right = {-x, -y};
            left = {1 - x, -y};
        }
        const ZORGeoVertexFan fan(m_mesh, entry);
        const Vector back = {-walker.GetHeading().along, -walker.GetHeading().across};
        const auto angle = [&right](const Vector& v) {
            return std::atan2(right.x * v.y - right.y * v.x, right.x * v.x + right.y * v.y);
        };
        const double sector = std::max(0.0, angle(left));
        const auto departure = fan.GoStraight(fan.GetFirstAngle() + std::clamp(angle(back), 0.0, sector));
        if (!departure)
            return false;
        walker.Enter(departure->entry);
        walker.SetHeading(departure->heading);
        return true;
    }

    const ZORGeoMesh& m_mesh;
};

// The place where a walk that begins inside leaves the first triangle, never behind the start.
void ShortenFirst(ZORGeoMeshWalker::Exit& exit, const ZORGeoWalkStart& start)
{
    if (exit.length < start.skipped) {
        const double far = start.weights[start.entry.r];
        const double near = start.weights[exit.isOverQ ? start.entry.q : start.entry.p];
        exit.s = far + near > 0 ? far / (far + near) : 0;
        exit.length = start.skipped;
    }
    exit.length -= start.skipped;
}

template<class Guide>
void Trace(ZORGeoMeshWalker& walker, Guide& guide, const ZORGeoWalkStart& start, qint64 cap,
           ZORGeoTraceRecorder& recorder)
{
    walker.Enter(start.entry);
    walker.SetHeading(start.heading);
    ZORGeoTraceSegment segment;
    std::copy(std::begin(start.weights), std::end(start.weights), std::begin(segment.begin));
    const ZORGeoMeshEntry& entry = walker.GetEntry();
    segment.beginPoint = walker.GetP() + start.weights[entry.q] * (walker.GetQ() - walker.GetP())
                         + start.weights[entry.r] * (walker.GetR() - walker.GetP());
    for (qint64 crossed = 0;; ++crossed) {
        ZORGeoMeshWalker::Exit exit = walker.FindExit();
        if (!exit.isFinite)
            return recorder.Stop(Result::Degenerate);
        if (crossed == 0)
            ShortenFirst(exit, start);
        else
            walker.GetEntryWeights(segment.begin);
        segment.triangle = entry.triangle;
        walker.GetExitWeights(exit, segment.end);
        segment.endPoint = walker.GetPoint(exit);
        segment.length = exit.length;
        segment.squaredScale = walker.GetSquaredLength();
        if (recorder.Add(segment))
            return;
        if (crossed >= cap)
            return recorder.Stop(Result::Cap);
        if (!guide.Advance(walker, exit))
            return recorder.Stop(Result::Border);
        segment.beginPoint = segment.endPoint;
    }
}

} // namespace

void ZorGeoTraceStraight(const ZORGeoMesh& mesh, const ZORGeoWalkStart& start, ZORGeoTraceRecorder& recorder)
{
    ZORGeoMeshWalker walker(mesh);
    StraightGuide guide(mesh);
    Trace(walker, guide, start, ZorGeoGetMaximumCrossings(mesh), recorder);
}
