#include "ZORGeoWalkStart_p.h"
#include "mesh/ZORGeoTriangle_p.h"

#include <algorithm>
#include <vector>

namespace {

ZORGeoWalkPlace Classify(int triangle, const double (&weights)[3])
{
    ZORGeoWalkPlace place;
    place.triangle = triangle;
    double sum = 0;
    for (int i = 0; i < 3; ++i) {
        place.weights[i] = weights[i] > ZORGeoMeshWalker::kSnap ? weights[i] : 0;
        sum += place.weights[i];
    }
    for (double& weight : place.weights)
        weight /= sum;
    for (int i = 0; i < 3; ++i) {
        const int next = (i + 1) % 3;
        const int last = (i + 2) % 3;
        if (place.weights[next] == 0 && place.weights[last] == 0) {
            place.part = ZORGeoWalkPlace::OnCorner;
            place.corner = i;
        } else if (place.weights[last] == 0 && place.weights[i] > 0 && place.weights[next] > 0) {
            place.part = ZORGeoWalkPlace::OnSide;
            place.corner = i;
            place.u = place.weights[next];
        }
    }
    return place;
}

} // namespace

ZORMathVector ZorGeoSideVector(const ZORGeoMesh& mesh, int triangle, int side)
{
    const ZORGeoMesh::Corners& corners = mesh.triangles[triangle];
    return mesh.vertices[corners[size_t(side + 1) % 3]] - mesh.vertices[corners[size_t(side)]];
}

bool zor::geo::HasArea(const ZORGeoMesh& mesh, int triangle, double smallest)
{
    double longest = 0;
    for (int side = 0; side < 3; ++side)
        longest = std::max(longest, ZorGeoSideVector(mesh, triangle, side).GetLength());
    return ZorGeoTwiceAreaNormal(mesh, triangle).GetLength() > smallest * longest * longest;
}

ZORMathVector ZorGeoTwiceAreaNormal(const ZORGeoMesh& mesh, int triangle)
{
    const ZORMathPoint& a = mesh.GetCorner(triangle, 0);
    return Cross(mesh.GetCorner(triangle, 1) - a, mesh.GetCorner(triangle, 2) - a);
}

std::optional<ZORGeoWalkPlace> ZorGeoFindWalkPlace(const ZORGeoMesh& mesh, int triangle,
                                                   const double (&weights)[3])
{
    if (zor::geo::HasArea(mesh, triangle, ZORGeoMeshWalker::kSnap))
        return Classify(triangle, weights);
    const ZORMathPoint& a = mesh.GetCorner(triangle, 0);
    const ZORMathPoint point =
        a + weights[1] * (mesh.GetCorner(triangle, 1) - a) + weights[2] * (mesh.GetCorner(triangle, 2) - a);
    // Outwards over edges, as far as the triangles hold the place.
    constexpr size_t kBound = 64;
    std::vector<int> reached = {triangle};
    for (size_t i = 0; i < reached.size() && reached.size() < kBound; ++i) {
        for (int side = 0; side < 3; ++side) {
            const quint32 neighbor = mesh.GetNeighbor(reached[i], side);
            const int next = int(neighbor / 4) - 1;
            if (neighbor == 0 || std::find(reached.begin(), reached.end(), next) != reached.end())
                continue;
            const ZORMathPoint& b = mesh.GetCorner(next, 0);
            const ZORMathVector bc = mesh.GetCorner(next, 1) - b;
            const ZORMathVector bd = mesh.GetCorner(next, 2) - b;
            const auto nearest = ZorGeoClosestOnTriangle(point, b, b + bc, b + bd);
            const double size = std::max(bc.GetLength(), bd.GetLength());
            if (nearest.squaredDistance > 1e-22 * size * size)
                continue;
            if (zor::geo::HasArea(mesh, next, ZORGeoMeshWalker::kSnap)) {
                const double weight[3] = {1 - nearest.weightB - nearest.weightC, nearest.weightB,
                                          nearest.weightC};
                return Classify(next, weight);
            }
            reached.push_back(next);
        }
    }
    return std::nullopt;
}

ZORGeoWalkStart ZorGeoStartInside(const ZORGeoMesh& mesh, const ZORGeoWalkPlace& place,
                                  const ZORMathVector& direction)
{
    const ZORMathVector normal = ZorGeoTwiceAreaNormal(mesh, place.triangle);
    const double twiceArea = normal.GetLength();
    const ZORMathVector left = Cross(normal.GetNormalized(), direction);
    // The walk has come through the side whose weight vanishes first on the way back.
    ZORGeoWalkStart start;
    double rates[3];
    int third = -1;
    for (int i = 0; i < 3; ++i) {
        const ZORMathVector side =
            mesh.GetCorner(place.triangle, (i + 2) % 3) - mesh.GetCorner(place.triangle, (i + 1) % 3);
        rates[i] = -Dot(side, left) / twiceArea;
        const double back = rates[i] > 0 ? place.weights[i] / rates[i] : 0;
        if (rates[i] > 0 && (third < 0 || back < start.skipped)) {
            start.skipped = back;
            third = i;
        }
    }
    const int p = (third + 1) % 3;
    const int q = (third + 2) % 3;
    const ZORMathVector side = mesh.GetCorner(place.triangle, q) - mesh.GetCorner(place.triangle, p);
    const double u = place.weights[q] - start.skipped * rates[q];
    start.entry = {place.triangle, p, q, third, std::clamp(u, 0.0, 1.0)};
    start.heading.along = Dot(direction, side) / Dot(side, side);
    start.heading.across = rates[third] * twiceArea / Dot(side, side);
    std::copy(std::begin(place.weights), std::end(place.weights), start.weights);
    return start;
}

ZORGeoMeshEntry ZorGeoMakeEntry(const ZORGeoWalkPlace& place)
{
    const int p = place.corner;
    return {place.triangle, p, (p + 1) % 3, (p + 2) % 3, place.part == ZORGeoWalkPlace::OnSide ? place.u : 0};
}

std::optional<ZORGeoMeshEntry> ZorGeoEnterBeyond(const ZORGeoMesh& mesh, const ZORGeoMeshEntry& entry)
{
    const quint32 neighbor = mesh.GetNeighbor(entry.triangle, (entry.r + 1) % 3);
    if (neighbor == 0)
        return std::nullopt;
    // There the same side runs from Q to P, so that the third corner is on its left.
    const int triangle = int(neighbor / 4) - 1;
    const int first = int(neighbor % 4);
    const int second = (first + 1) % 3;
    const bool isSame =
        mesh.triangles[triangle][size_t(first)] == mesh.triangles[entry.triangle][size_t(entry.p)];
    return ZORGeoMeshEntry{triangle, isSame ? second : first, isSame ? first : second, 3 - first - second,
                           1 - entry.u};
}

ZORGeoWalkStart ZorGeoStartAt(const ZORGeoMeshEntry& entry, const ZORGeoMeshHeading& heading)
{
    ZORGeoWalkStart start{entry, heading, 0, {0, 0, 0}};
    start.weights[entry.p] = 1 - entry.u;
    start.weights[entry.q] = entry.u;
    return start;
}

std::optional<ZORGeoWalkStart> ZorGeoStartOnSide(const ZORGeoMesh& mesh, const ZORGeoWalkPlace& place,
                                                 double angle)
{
    const ZORGeoMeshEntry entry = ZorGeoMakeEntry(place);
    const auto beyond = ZorGeoEnterBeyond(mesh, entry);
    const double length =
        (mesh.GetCorner(entry.triangle, entry.q) - mesh.GetCorner(entry.triangle, entry.p)).GetLength();
    double along = std::cos(angle);
    double across = std::sin(angle);
    bool isBeyond = across < 0;
    if (std::abs(across) <= ZORGeoMeshWalker::kSnap) {
        along = along > 0 ? 1 : -1;
        across = 0;
        isBeyond = beyond && beyond->triangle < entry.triangle;
    }
    if (!isBeyond)
        return ZorGeoStartAt(entry, {along / length, across / length});
    if (!beyond)
        return std::nullopt;
    return ZorGeoStartAt(*beyond, {-along / length, -across / length});
}
