#include "ZORGeoCurveOnSurfaceProcessor.h"

#include "ZORGeoShortestPath_p.h"
#include "ZORGeoSurfaceTrace_p.h"
#include "ZORGeoSurface_p.h"
#include "ZORGeometryLog_p.h"

#include <ZORGeometry/ZORGeoCurveOnSurface.h>
#include <ZORMathematics/ZORMathVector.h>
#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysException.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

using Result = ZORGeoCurveOnSurfaceResult;

class ZORGeoCurveOnSurfaceProcessor::Private
{
public:
    explicit Private(const ZORGeoSurface& s)
        : surface(&s)
        , mesh(ZORGeoSurfacePrivate::Of(s).mesh.get())
        , limits(s)
    {
    }

    void Check(const ZORGeoLocationOnSurface& location, const QString& name) const;
    void Check(const ZORGeoLocationOnSurface& start, const ZORMathVector& direction, double angle) const;
    Result Straight(const ZORGeoLocationOnSurface& start, const ZORMathVector& direction, double angle) const;
    Result Shortest(const ZORGeoLocationOnSurface& start, const ZORGeoLocationOnSurface& end) const;

    const ZORGeoSurface* surface; // not owned
    const ZORGeoMesh* mesh;       // of the surface
    ZORGeoLimitBuckets limits;
    double startLength = 0;
    double endLength = 0;

private:
    using Starts = ZORGeoStraightStarts;
    template<class Trace>
    Result TraceSides(const ZORGeoLocationOnSurface& start, const Starts& starts, const Trace& trace) const;
};

void ZORGeoCurveOnSurfaceProcessor::Private::Check(const ZORGeoLocationOnSurface& location,
                                                   const QString& name) const
{
    if (location.IsNull())
        throw ZORSysException(tr("%1 location is not on a surface").arg(name));
    if (location.surface != surface)
        throw ZORSysException(tr("%1 location is on another surface").arg(name));
    const auto isWeight = [](double weight) { return weight >= -1e-9 && weight <= 1 + 1e-9; };
    if (location.triangle < 1 || location.triangle > mesh->GetNumTriangles() || !isWeight(location.weightB)
        || !isWeight(location.weightC) || !isWeight(location.weightB + location.weightC))
        throw ZORSysException(tr("%1 location is not within its triangle").arg(name));
}

void ZORGeoCurveOnSurfaceProcessor::Private::Check(const ZORGeoLocationOnSurface& start,
                                                   const ZORMathVector& direction, double angle) const
{
    Check(start, tr("start"));
    if (!direction.IsFinite())
        throw ZORSysException(tr("direction is not finite"));
    if (!std::isfinite(angle))
        throw ZORSysException(tr("angle is not finite"));
}

// Joins both sides to one curve.
template<class Trace>
Result ZORGeoCurveOnSurfaceProcessor::Private::TraceSides(const ZORGeoLocationOnSurface& start,
                                                          const Starts& starts, const Trace& trace) const
{
    const ZORGeoLimitBuckets* const used = limits.HasAny(0) ? &limits : nullptr;
    const auto run = [&](const std::optional<ZORGeoWalkStart>& walk, ZORGeoTraceRecorder& recorder,
                         double length) {
        if (length == 0)
            return;
        if (walk)
            trace(*walk, recorder);
        else
            recorder.Stop(Result::Border);
        if (recorder.GetSide().reason == Result::Cap)
            qCWarning(ZorGeometryLog, "curve over a surface ends after %lld triangles, %g mm from its start",
                      ZorGeoGetMaximumCrossings(*mesh), recorder.GetSide().length);
    };
    ZORGeoTraceRecorder ahead({surface, used, End, endLength}, true);
    run(starts.ahead, ahead, endLength);
    ZORGeoTraceRecorder behind({surface, used, ZORGeoCurveOnSurfaceProcessor::Start, startLength}, false);
    // A closed curve is complete.
    if (ahead.GetSide().reason == Result::Closed)
        behind.Stop(Result::Closed);
    else
        run(starts.behind, behind, startLength);

    const auto& back = behind.GetLocations();
    const auto& forth = ahead.GetLocations();
    QList<ZORGeoLocationOnSurface> locations;
    locations.reserve(qsizetype(back.size() + forth.size() + 1));
    std::copy(back.rbegin(), back.rend(), std::back_inserter(locations));
    if (forth.empty())
        locations.append(start);
    std::copy(forth.begin(), forth.end(), std::back_inserter(locations));
    return Result(locations, int(back.size()), behind.GetSide(), ahead.GetSide());
}

Result ZORGeoCurveOnSurfaceProcessor::Private::Straight(const ZORGeoLocationOnSurface& start,
                                                        const ZORMathVector& direction, double angle) const
{
    const int triangle = start.triangle - 1;
    const double weights[3] = {1 - start.weightB - start.weightC, start.weightB, start.weightC};
    const auto place = ZorGeoFindWalkPlace(*mesh, triangle, weights);
    if (!place)
        return Result({start}, 0, {0, Result::Degenerate}, {0, Result::Degenerate});
    const ZORGeoMesh::Corners& corners = mesh->triangles[triangle];
    const ZORMathVector zero = mesh->vertices[corners[1]] - mesh->vertices[corners[0]];
    const Starts starts = ZorGeoStartStraight(*mesh, *place, direction, zero, angle);
    return TraceSides(start, starts, [this](const ZORGeoWalkStart& walk, ZORGeoTraceRecorder& recorder) {
        ZorGeoTraceStraight(*mesh, walk, recorder);
    });
}

Result ZORGeoCurveOnSurfaceProcessor::Private::Shortest(const ZORGeoLocationOnSurface& start,
                                                        const ZORGeoLocationOnSurface& end) const
{
    const auto snapped = [this](const ZORGeoLocationOnSurface& location) {
        return ZorGeoSnapPlace(*mesh, location.triangle - 1, location.weightB, location.weightC);
    };
    const ZORGeoMeshPath path = ZORGeoShortestPath(*mesh).Find(snapped(start), snapped(end));
    if (path.empty())
        return Result({}, 0, {0, Result::Unreachable}, {0, Result::Unreachable});
    QList<ZORGeoLocationOnSurface> locations;
    locations.reserve(qsizetype(path.size()));
    double length = 0;
    for (const ZORGeoMeshPlace& place : path) {
        if (!locations.isEmpty())
            length += locations.constLast().point.DistanceTo(place.point);
        locations.append(ZorGeoLocationOf(surface, place));
    }
    return Result(locations, 0, {0, Result::Length}, {length, Result::Length});
}

namespace {

double CheckLength(double length, const char* message)
{
    if (length < 0)
        throw ZORSysException(ZORGeoCurveOnSurfaceProcessor::tr(message));
    return std::isnan(length) ? std::numeric_limits<double>::infinity() : length;
}

} // namespace

ZORGeoCurveOnSurfaceProcessor::ZORGeoCurveOnSurfaceProcessor(const ZORGeoSurface* surface, double startLength,
                                                             double endLength)
{
    ZOR_TRACE_CALL(surface, startLength, endLength);
    if (!surface)
        throw ZORSysException(tr("surface is null"));
    d = std::make_unique<Private>(*surface);
    d->startLength = CheckLength(startLength, QT_TR_NOOP("start length is negative"));
    d->endLength = CheckLength(endLength, QT_TR_NOOP("end length is negative"));
}

ZORGeoCurveOnSurfaceProcessor::~ZORGeoCurveOnSurfaceProcessor() = default;

void ZORGeoCurveOnSurfaceProcessor::ClearGeometricLimits()
{
    ZOR_TRACE_CALL();
    d->limits.Clear();
}

void ZORGeoCurveOnSurfaceProcessor::AddGeometricLimits(const ZORGeoCurveOnSurfaceLimits& limits,
                                                       QFlags<LimitBehavior> behavior)
{
    ZOR_TRACE_CALL(limits, behavior);
    if ((behavior.toInt() & (Start | End)) == 0)
        throw ZORSysException(tr("limits apply to neither side"));
    ZORGeoLimitBuckets more = d->limits;
    more.Add(limits.GetGeometry(), behavior.toInt());
    d->limits = std::move(more);
}

ZORGeoCurveOnSurfaceResult
ZORGeoCurveOnSurfaceProcessor::ComputeGeodesic(const ZORGeoLocationOnSurface& start,
                                               const ZORMathVector& direction, double angle) const
{
    ZOR_TRACE_CALL(start, direction, angle);
    d->Check(start, direction, angle);
    return d->Straight(start, direction, angle);
}

ZORGeoCurveOnSurfaceResult
ZORGeoCurveOnSurfaceProcessor::ComputePointToPoint(const ZORGeoLocationOnSurface& start,
                                                   const ZORGeoLocationOnSurface& end) const
{
    ZOR_TRACE_CALL(start, end);
    d->Check(start, tr("start"));
    d->Check(end, tr("end"));
    return d->Shortest(start, end);
}
