#include "ZORGeoPathGaps_p.h"
#include "walk/ZORGeoWalkStart_p.h"

#include <algorithm>
#include <optional>

namespace {

constexpr double kSameEdge = 1e-10; // of the coordinates: how far from an edge a place may lie on it
constexpr size_t kMostTriangles = 64;
constexpr double kNoArea = 1e-11; // height of a triangle, as a part of its longest side

// The place of a point on the edge of two neighbours, as the second one sees it.
std::optional<ZORGeoMeshPlace> PlaceBeyond(const ZORGeoMesh& mesh, int triangle, int side,
                                           const ZORMathPoint& point)
{
    const quint32 neighbor = mesh.GetNeighbor(triangle, side);
    if (neighbor == 0)
        return std::nullopt;
    const int next = int(neighbor / 4) - 1;
    const int entered = int(neighbor % 4);
    const ZORMathPoint& from = mesh.GetCorner(next, entered);
    const ZORMathVector along = ZorGeoSideVector(mesh, next, entered);
    const double squared = Dot(along, along);
    const double t = squared > 0 ? std::clamp(Dot(point - from, along) / squared, 0.0, 1.0) : 0;
    ZORGeoMeshPlace place = ZorGeoPlaceOnSide(mesh, next, entered, t);
    const double tolerance = kSameEdge * (point - ZORMathPoint()).GetLength();
    if (place.point.DistanceTo(point) > tolerance)
        return std::nullopt;
    place.point = point;
    return place;
}

// The places of a point in the triangles on the way from its triangle to one that is wanted, all of which hold
// it, and another point as well. Empty when there is no such way.
template<class Predicate>
ZORGeoMeshPath FindWayAt(const ZORGeoMesh& mesh, const ZORGeoMeshPlace& start, const ZORMathPoint& other,
                         const Predicate& isWanted)
{
    struct Step
    {
        ZORGeoMeshPlace place;
        size_t former;
    };
    std::vector<Step> steps = {{start, 0}};
    for (size_t i = 0; i < steps.size() && i < kMostTriangles; ++i) {
        for (int side = 0; side < 3; ++side) {
            const int triangle = steps[i].place.triangle;
            const auto next = PlaceBeyond(mesh, triangle, side, start.point);
            const auto isKnown = [&](const Step& step) { return step.place.triangle == next->triangle; };
            if (!next || std::any_of(steps.begin(), steps.end(), isKnown)
                || !PlaceBeyond(mesh, triangle, side, other))
                continue;
            steps.push_back({*next, i});
            if (!isWanted(next->triangle))
                continue;
            ZORGeoMeshPath way;
            for (size_t at = steps.size() - 1; at > 0; at = steps[at].former)
                way.insert(way.begin(), steps[at].place);
            return way;
        }
    }
    return {};
}

ZORGeoMeshPath FindWayTo(const ZORGeoMesh& mesh, int from, const ZORGeoMeshPlace& to)
{
    ZORGeoMeshPlace start = to;
    start.triangle = from;
    return FindWayAt(mesh, start, to.point, [&](int triangle) { return triangle == to.triangle; });
}

// Takes segments in triangles without area over to triangles with one beside them.
void LeaveFlatTriangles(const ZORGeoMesh& mesh, ZORGeoMeshPath& path)
{
    ZORGeoMeshPath left;
    left.reserve(path.size());
    for (size_t i = 0; i < path.size(); ++i) {
        left.push_back(path[i]);
        if (i + 1 == path.size() || path[i].point == path[i + 1].point
            || zor::geo::HasArea(mesh, path[i].triangle, kNoArea))
            continue;
        const ZORGeoMeshPath way = FindWayAt(mesh, path[i], path[i + 1].point, [&](int triangle) {
            return zor::geo::HasArea(mesh, triangle, kNoArea);
        });
        left.insert(left.end(), way.begin(), way.end());
    }
    path = std::move(left);
}

} // namespace

bool ZorGeoHoldsPlace(const ZORGeoMesh& mesh, int triangle, const ZORGeoMeshPlace& place)
{
    ZORGeoMeshPlace expressed;
    return ZorGeoExpressPlace(mesh, place, triangle, expressed) || !FindWayTo(mesh, triangle, place).empty();
}

void ZorGeoFillGaps(const ZORGeoMesh& mesh, ZORGeoMeshPath& path)
{
    LeaveFlatTriangles(mesh, path);
    ZORGeoMeshPath filled;
    filled.reserve(path.size());
    for (const ZORGeoMeshPlace& place : path) {
        ZORGeoMeshPlace expressed;
        if (!filled.empty() && !ZorGeoExpressPlace(mesh, place, filled.back().triangle, expressed)) {
            const ZORGeoMeshPath way = FindWayTo(mesh, filled.back().triangle, place);
            if (!way.empty()) {
                filled.insert(filled.end(), way.begin(), way.end());
                continue;
            }
        }
        filled.push_back(place);
    }
    path = std::move(filled);
}
