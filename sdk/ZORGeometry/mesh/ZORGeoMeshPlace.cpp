#include "ZORGeoMeshPlace_p.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kSnapWeight = 1e-12;

ZORMathPoint PointOnSide(const ZORGeoMesh& mesh, int triangle, int side, double t)
{
    const ZORMathPoint& from = mesh.GetCorner(triangle, side);
    const ZORMathPoint& to = mesh.GetCorner(triangle, (side + 1) % 3);
    return t == 1 ? to : from + t * (to - from);
}

} // namespace

ZORGeoMeshPlace ZorGeoPlaceAtCorner(const ZORGeoMesh& mesh, int triangle, int corner)
{
    ZORGeoMeshPlace place = {triangle, {0, 0, 0}, mesh.GetCorner(triangle, corner)};
    place.weights[size_t(corner)] = 1;
    return place;
}

ZORGeoMeshPlace ZorGeoPlaceOnSide(const ZORGeoMesh& mesh, int triangle, int side, double t)
{
    ZORGeoMeshPlace place = {triangle, {0, 0, 0}, PointOnSide(mesh, triangle, side, t)};
    place.weights[size_t(side)] = 1 - t;
    place.weights[size_t(side + 1) % 3] = t;
    return place;
}

ZORGeoMeshPlace ZorGeoSnapPlace(const ZORGeoMesh& mesh, int triangle, double weightB, double weightC)
{
    ZORGeoMeshPlace place = {triangle, {1 - weightB - weightC, weightB, weightC}, {}};
    for (double& weight : place.weights)
        weight = weight < kSnapWeight ? 0 : weight;
    for (int corner = 0; corner < 3; ++corner) {
        const bool isOpposite = place.weights[size_t(corner)] == 0;
        const double next = place.weights[size_t(corner + 1) % 3];
        const double last = place.weights[size_t(corner + 2) % 3];
        if (next == 0 && last == 0)
            return ZorGeoPlaceAtCorner(mesh, triangle, corner);
        if (isOpposite && next != 0 && last != 0)
            return ZorGeoPlaceOnSide(mesh, triangle, (corner + 1) % 3, last / (next + last));
    }
    const ZORMathPoint& a = mesh.GetCorner(triangle, 0);
    place.point =
        a + weightB * (mesh.GetCorner(triangle, 1) - a) + weightC * (mesh.GetCorner(triangle, 2) - a);
    return place;
}

int ZorGeoCornerOf(const ZORGeoMesh& mesh, int triangle, int vertex)
{
    const ZORGeoMesh::Corners& corners = mesh.triangles[triangle];
    const auto found = std::find(corners.begin(), corners.end(), vertex);
    return found == corners.end() ? -1 : int(found - corners.begin());
}

bool ZorGeoExpressPlace(const ZORGeoMesh& mesh, const ZORGeoMeshPlace& place, int triangle,
                        ZORGeoMeshPlace& result)
{
    if (place.triangle == triangle) {
        result = place;
        return true;
    }
    ZORGeoMeshPlace expressed = {triangle, {0, 0, 0}, place.point};
    for (size_t corner = 0; corner < 3; ++corner) {
        if (place.weights[corner] == 0)
            continue;
        const int same = ZorGeoCornerOf(mesh, triangle, mesh.triangles[place.triangle][corner]);
        if (same < 0)
            return false;
        expressed.weights[size_t(same)] += place.weights[corner];
    }
    result = expressed;
    return true;
}

namespace {

enum class Round { OverSideBehind, OverSideAhead };

// Collects the triangles around a vertex over one of the two sides of the first one there, up to a border.
// Returns whether it came round to the first triangle.
bool CollectFan(const ZORGeoMesh& mesh, int first, int corner, Round round, std::vector<int>& triangles)
{
    const int vertex = mesh.triangles[first][size_t(corner)];
    int triangle = first;
    int side = round == Round::OverSideBehind ? (corner + 2) % 3 : corner;
    for (;;) {
        const quint32 neighbor = mesh.GetNeighbor(triangle, side);
        if (neighbor == 0)
            return false;
        triangle = int(neighbor / 4) - 1;
        if (triangle == first)
            return true;
        triangles.push_back(triangle);
        const int entry = int(neighbor % 4);
        const int at = ZorGeoCornerOf(mesh, triangle, vertex);
        side = entry == at ? (at + 2) % 3 : at;
    }
}

} // namespace

void ZorGeoFindTriangles(const ZORGeoMesh& mesh, const ZORGeoMeshPlace& place, std::vector<int>& triangles)
{
    triangles.assign(1, place.triangle);
    for (int corner = 0; corner < 3; ++corner) {
        if (place.IsOnSide(corner) && place.IsOnSide((corner + 2) % 3)) {
            if (!CollectFan(mesh, place.triangle, corner, Round::OverSideAhead, triangles))
                CollectFan(mesh, place.triangle, corner, Round::OverSideBehind, triangles);
            return;
        }
    }
    for (int side = 0; side < 3; ++side) {
        if (!place.IsOnSide(side))
            continue;
        if (const quint32 neighbor = mesh.GetNeighbor(place.triangle, side); neighbor != 0)
            triangles.push_back(int(neighbor / 4) - 1);
    }
}

bool ZorGeoIsOnBorder(const ZORGeoMesh& mesh, const ZORGeoMeshPlace& place)
{
    for (int side = 0; side < 3; ++side) {
        if (place.IsOnSide(side) && mesh.GetNeighbor(place.triangle, side) == 0)
            return true;
    }
    return false;
}

ZORGeoLocationOnSurface ZorGeoLocationOf(const ZORGeoSurface* surface, const ZORGeoMeshPlace& place)
{
    return {surface, place.triangle + 1, place.weights[1], place.weights[2], place.point};
}
