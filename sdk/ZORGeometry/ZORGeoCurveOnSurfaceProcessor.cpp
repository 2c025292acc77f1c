#include "ZORGeoCurveOnSurfaceProcessor.h"

#include "mesh/ZORGeoSurface_p.h"
#include "path/ZORGeoShortestPath_p.h"
#include "storage/ZORGeometryLog_p.h"
#include "trace/ZORGeoConstantAngleWalk_p.h"
#include "trace/ZORGeoStraightWalk_p.h"
#include "trace/ZORGeoWalk_p.h"

#include <ZORGeometry/ZORGeoCurveOnSurface.h>
#include <ZORGeometry/ZORGeoOnSurface.h>
#include <ZORMathematics/ZORMathVector.h>
#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysException.h>
#include <ZORSystem/ZORSysMemory.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <numbers>
#include <optional>
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
    std::optional<ZORGeoWalkPlace> FindPlace(const ZORGeoLocationOnSurface& start) const;
    Result Straight(const ZORGeoLocationOnSurface& start, const ZORMathVector& direction, double angle) const;
    Result ConstantAngle(const ZORGeoLocationOnSurface& start, const ZORMathVector& direction,
                         double angle) const;
    Result Shortest(const ZORGeoLocationOnSurface& start, const ZORGeoLocationOnSurface& end) const;

    const ZORGeoSurface* surface; // not owned
    const ZORGeoMesh* mesh;       // of the surface
    ZORGeoLimitBuckets limits;
    double startLength = 0;
    double endLength = 0;

private:
    struct Side
    {
        std::optional<ZORGeoWalkStart> start;
        Result::StopReason otherwise; // why there is no start
        std::function<void(const ZORGeoWalkStart&, ZORGeoTraceRecorder&)> walk;
    };
    void Walk(const Side& side, double length, ZORGeoTraceRecorder& recorder) const;
    Result Join(const ZORGeoLocationOnSurface& start, const Side& ahead, const Side& behind) const;
};

void ZORGeoCurveOnSurfaceProcessor::Private::Check(const ZORGeoLocationOnSurface& location,
                                                   const QString& name) const
{
    if (location.IsNull())
        throw ZORSysException(tr("%1 location is not on a surface").arg(name));
    if (location.surface != surface)
        throw ZORSysException(tr("%1 location is on another surface").arg(name));
    if (location.triangle < 1 || location.triangle > mesh->GetNumTriangles()
        || !ZORGeoOnSurface::IsWithinTriangle(location))
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

std::optional<ZORGeoWalkPlace>
ZORGeoCurveOnSurfaceProcessor::Private::FindPlace(const ZORGeoLocationOnSurface& start) const
{
    const double weights[3] = {1 - start.weightB - start.weightC, start.weightB, start.weightC};
    return ZorGeoFindWalkPlace(*mesh, start.triangle - 1, weights);
}

void ZORGeoCurveOnSurfaceProcessor::Private::Walk(const Side& side, double length,
                                                  ZORGeoTraceRecorder& recorder) const
{
    if (length == 0 && !recorder.HasHardLimits())
        return;
    if (!side.start)
        return recorder.Stop(side.otherwise);
    side.walk(*side.start, recorder);
    if (recorder.GetSide().reason == Result::Cap)
        qCWarning(ZorGeometryLog, "curve over a surface ends after %lld triangles, %g mm from its start",
                  ZorGeoGetMaximumCrossings(*mesh), recorder.GetSide().length);
}

// Both sides as one curve.
Result ZORGeoCurveOnSurfaceProcessor::Private::Join(const ZORGeoLocationOnSurface& start, const Side& ahead,
                                                    const Side& behind) const
{
    const ZORGeoLimitBuckets* const used = limits.HasAny(0) ? &limits : nullptr;
    ZORGeoTraceRecorder end({surface, used, End, endLength}, ZORGeoTraceRecorder::Side::Ahead);
    Walk(ahead, endLength, end);
    ZORGeoTraceRecorder begin({surface, used, Start, startLength}, ZORGeoTraceRecorder::Side::Behind);
    // A closed curve is complete.
    if (end.GetSide().reason == Result::Closed)
        begin.Stop(Result::Closed);
    else
        Walk(behind, startLength, begin);

    const auto& back = begin.GetLocations();
    const auto& forth = end.GetLocations();
    auto locations = ZORSysMemory::MakeList<ZORGeoLocationOnSurface>(
        qsizetype(back.size() + std::max<size_t>(1, forth.size())));
    const auto middle = std::copy(back.rbegin(), back.rend(), locations.begin());
    *middle = start;
    std::copy(forth.begin(), forth.end(), middle);
    return Result(locations, int(back.size()), begin.GetSide(), end.GetSide());
}

Result ZORGeoCurveOnSurfaceProcessor::Private::Straight(const ZORGeoLocationOnSurface& start,
                                                        const ZORMathVector& direction, double angle) const
{
    const auto place = FindPlace(start);
    if (!place)
        return Result({start}, 0, {0, Result::Degenerate}, {0, Result::Degenerate});
    const ZORGeoMesh::Corners& corners = mesh->triangles[start.triangle - 1];
    const ZORMathVector zero = mesh->vertices[corners[1]] - mesh->vertices[corners[0]];
    const auto [ahead, behind] = ZorGeoStartStraight(*mesh, *place, direction, zero, angle);
    const auto walk = [this](const ZORGeoWalkStart& from, ZORGeoTraceRecorder& recorder) {
        ZorGeoWalkStraight(*mesh, from, recorder);
    };
    return Join(start, {ahead, Result::Border, walk}, {behind, Result::Border, walk});
}

Result ZORGeoCurveOnSurfaceProcessor::Private::ConstantAngle(const ZORGeoLocationOnSurface& start,
                                                             const ZORMathVector& direction,
                                                             double angle) const
{
    const auto place = FindPlace(start);
    if (!place)
        return Result({start}, 0, {0, Result::Degenerate}, {0, Result::Degenerate});
    const auto makeSide = [&](const ZORGeoAngleField& field) -> Side {
        bool isBorder = false;
        const auto first = ZorGeoStartAlongField(*mesh, field, *place, isBorder);
        return {first, isBorder ? Result::Border : Result::Degenerate,
                [this, &field](const ZORGeoWalkStart& from, ZORGeoTraceRecorder& recorder) {
                    ZorGeoWalkAlongField(*mesh, field, from, recorder);
                }};
    };
    const ZORGeoAngleField ahead(direction, angle);
    const ZORGeoAngleField behind(direction, angle + std::numbers::pi);
    return Join(start, makeSide(ahead), makeSide(behind));
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
    d->limits.Add(limits.GetGeometry(), behavior.toInt());
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
ZORGeoCurveOnSurfaceProcessor::ComputeConstantAngle(const ZORGeoLocationOnSurface& start,
                                                    const ZORMathVector& direction, double angle) const
{
    ZOR_TRACE_CALL(start, direction, angle);
    d->Check(start, direction, angle);
    return d->ConstantAngle(start, direction, angle);
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
