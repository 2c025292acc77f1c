#include "ZORGeoCurveOnSurfaceSmoother.h"

#include "mesh/ZORGeoSurface_p.h"
#include "path/ZORGeoArcSearch_p.h"
#include "path/ZORGeoPathGaps_p.h"
#include "path/ZORGeoPathSmoother_p.h"
#include "path/ZORGeoShortestPath_p.h"

#include <ZORGeometry/ZORGeoOnSurface.h>
#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysException.h>

#include <algorithm>
#include <cmath>
#include <limits>

using Locations = ZORGeoCurveOnSurfaceSmoother::Locations;
using zor::geo::ProgressReporter;

namespace {

constexpr double kSmallestRadius = 1e-6; // as part of the coordinates
constexpr double kSmallestLength = 1e-9; // of the curve before

void Check(const Locations& locations)
{
    for (qsizetype i = 0; i < locations.size(); ++i) {
        const ZORGeoLocationOnSurface& at = locations[i];
        QString error;
        if (at.IsNull())
            error = ZORGeoCurveOnSurfaceSmoother::tr("location %1 of the curve is not on a surface");
        else if (at.surface != locations.constFirst().surface)
            error = ZORGeoCurveOnSurfaceSmoother::tr("location %1 of the curve is on another surface");
        else if (at.triangle < 1 || at.triangle > at.surface->GetNumTriangles()
                 || !ZORGeoOnSurface::IsWithinTriangle(at) || !at.point.IsFinite())
            error = ZORGeoCurveOnSurfaceSmoother::tr("location %1 of the curve is not within its triangle");
        if (!error.isEmpty())
            throw ZORSysException(error.arg(i));
    }
}

const ZORGeoMesh& MeshOf(const Locations& locations)
{
    return *ZORGeoSurfacePrivate::Of(*locations.constFirst().surface).mesh;
}

ZORGeoMeshPlace PlaceOf(const ZORGeoMesh& mesh, const ZORGeoLocationOnSurface& location)
{
    ZORGeoMeshPlace place = ZorGeoSnapPlace(mesh, location.triangle - 1, location.weightB, location.weightC);
    place.point = location.point;
    return place;
}

// The path through the locations; \a isConnected reports whether it consists of them alone.
ZORGeoMeshPath PathOf(const Locations& locations, bool& isConnected, ProgressReporter& progress)
{
    Check(locations);
    isConnected = true;
    ZORGeoMeshPath path;
    for (qsizetype i = 0; i < locations.size(); ++i) {
        progress.Check();
        const ZORGeoMesh& mesh = MeshOf(locations);
        const ZORGeoMeshPlace place = PlaceOf(mesh, locations[i]);
        if (path.empty() || ZorGeoHoldsPlace(mesh, path.back().triangle, place)) {
            path.push_back(place);
            continue;
        }
        isConnected = false;
        const ZORGeoMeshPath way = ZORGeoShortestPath(mesh, &progress).Find(path.back(), place);
        if (way.empty())
            throw ZORSysException(
                ZORGeoCurveOnSurfaceSmoother::tr("no way over the surface leads to location %1 of the curve")
                    .arg(i));
        const ZORMathPoint former = path.back().point;
        path.pop_back();
        path.insert(path.end(), way.begin(), way.end());
        path[path.size() - way.size()].point = former;
        path.back().point = place.point;
    }
    return path;
}

// Locations of a path; those of its beginning and end that are among the given ones stay as they are.
Locations LocationsOf(const ZORGeoMeshPath& path, const Locations& given, ProgressReporter& progress)
{
    const ZORGeoMesh& mesh = MeshOf(given);
    const auto isSame = [&](const ZORGeoMeshPlace& place, const ZORGeoLocationOnSurface& location) {
        const ZORGeoMeshPlace other = PlaceOf(mesh, location);
        return place.triangle == other.triangle && place.weights == other.weights
               && place.point == other.point;
    };
    Locations locations;
    locations.reserve(qsizetype(path.size()));
    for (const ZORGeoMeshPlace& place : path) {
        progress.Check();
        locations.append(ZorGeoLocationOf(given.constFirst().surface, place));
    }
    const qsizetype common = std::min(locations.size(), given.size());
    for (qsizetype i = 0; i < common && isSame(path[size_t(i)], given[i]); ++i)
        locations[i] = given[i];
    for (qsizetype i = 1; i <= common; ++i) {
        if (!isSame(path[path.size() - size_t(i)], given[given.size() - i]))
            break;
        locations[locations.size() - i] = given[given.size() - i];
    }
    return locations;
}

} // namespace

class ZORGeoCurveOnSurfaceSmoother::Private
{
public:
    double radius; // millimeters
};

ZORGeoCurveOnSurfaceSmoother::ZORGeoCurveOnSurfaceSmoother(double radius)
    : d(new Private{radius})
{
    ZOR_TRACE_CALL(radius);
    if (radius < 0)
        throw ZORSysException(tr("radius is negative"));
    if (std::isinf(radius))
        throw ZORSysException(tr("radius is infinite"));
}

ZORGeoCurveOnSurfaceSmoother::~ZORGeoCurveOnSurfaceSmoother() = default;

bool ZORGeoCurveOnSurfaceSmoother::IsEverySmooth(const Locations& locations) const
{
    double extent = 0;
    for (const ZORGeoLocationOnSurface& location : locations)
        extent = std::max(extent, (location.point - ZORMathPoint()).GetLength());
    return !(d->radius > kSmallestRadius * extent);
}

Locations ZORGeoCurveOnSurfaceSmoother::Smooth(const Locations& locations) const
{
    ZOR_TRACE_CALL(locations);
    ProgressReporter progress;
    return Run(locations, progress);
}

std::optional<Locations> ZORGeoCurveOnSurfaceSmoother::Smooth(const Locations& locations,
                                                              const std::function<bool(double)>& report) const
{
    ZOR_TRACE_CALL(locations);
    ProgressReporter progress(report);
    try {
        progress.Report(0);
        const Locations smooth = Run(locations, progress);
        progress.Report(1);
        return smooth;
    } catch (const zor::geo::Canceled&) {
        return std::nullopt;
    }
}

Locations ZORGeoCurveOnSurfaceSmoother::Run(const Locations& locations, ProgressReporter& progress) const
{
    Check(locations);
    if (locations.size() < 2 || IsEverySmooth(locations))
        return locations;
    bool isConnected = true;
    ZORGeoMeshPath path = PathOf(locations, isConnected, progress);
    const ZORGeoPathSmoother smoother(MeshOf(locations), d->radius, progress);
    const double length = ZorGeoLengthOf(path);
    const bool isChanged = smoother.Run(path);
    auto bend = smoother.FindSharpBend(path);
    // A closed curve around less than its own arc: nothing would be left of it.
    if (isChanged && ZorGeoLengthOf(path) <= kSmallestLength * length)
        bend = path.front().point;
    if (bend)
        throw ZORSysException(tr("the surface has no room for the radius %1 at (%2, %3, %4)")
                                  .arg(QString::number(d->radius), QString::number(bend->GetX()),
                                       QString::number(bend->GetY()), QString::number(bend->GetZ())));
    return isChanged ? LocationsOf(path, locations, progress) : locations;
}

double ZORGeoCurveOnSurfaceSmoother::FindSmallestRadius(const Locations& locations) const
{
    ZOR_TRACE_CALL(locations);
    bool isConnected = true;
    ProgressReporter progress;
    ZORGeoMeshPath path = PathOf(locations, isConnected, progress);
    if (path.size() < 3 || !(d->radius > 0))
        return std::numeric_limits<double>::infinity();
    ZorGeoFillGaps(MeshOf(locations), path);
    return ZORGeoPathSmoother(MeshOf(locations), d->radius, progress).FindSmallestRadius(path);
}

Locations ZORGeoCurveOnSurfaceSmoother::Connect(const Locations& locations)
{
    ZOR_TRACE_CALL(locations);
    bool isConnected = true;
    ProgressReporter progress;
    const ZORGeoMeshPath path = PathOf(locations, isConnected, progress);
    return isConnected ? locations : LocationsOf(path, locations, progress);
}
