// A place on a triangle mesh and the triangles that hold it.

#pragma once

#include "ZORGeoMesh_p.h"

#include <ZORGeometry/ZORGeoLocationOnSurface.h>

#include <array>
#include <vector>

/// A place in one triangle of a mesh. A weight of exactly 0 says that it lies on the side opposite to that
/// corner; two of them, that it is the vertex at the third corner.
struct ZORGeoMeshPlace
{
    int triangle = -1; // from 0
    std::array<double, 3> weights = {0, 0, 0};
    ZORMathPoint point;

    bool IsOnSide(int side) const { return weights[size_t(side + 2) % 3] == 0; }
};

/// Weights below 1e-12 become 0 and the point moves there: what lies next to a side or vertex lies on it.
ZORGeoMeshPlace ZorGeoSnapPlace(const ZORGeoMesh& mesh, int triangle, double weightB, double weightC);
ZORGeoMeshPlace ZorGeoPlaceAtCorner(const ZORGeoMesh& mesh, int triangle, int corner);
/// \param t  0 ... 1, from the start of the side to its end
ZORGeoMeshPlace ZorGeoPlaceOnSide(const ZORGeoMesh& mesh, int triangle, int side, double t);

/// Tells the same place by another triangle, which has its vertex, or the edge it lies on, as a corner or side.
/// \return false when the triangle does not hold the place; \a result is unchanged then
bool ZorGeoExpressPlace(const ZORGeoMesh& mesh, const ZORGeoMeshPlace& place, int triangle,
                        ZORGeoMeshPlace& result);

/// The triangles around a place that are reached from its own one over neighbours: that one first, the other
/// one of an edge, all of a vertex. Replaces \a triangles.
void ZorGeoFindTriangles(const ZORGeoMesh& mesh, const ZORGeoMeshPlace& place, std::vector<int>& triangles);

/// Whether the place lies on a side of its triangle that has no neighbour.
bool ZorGeoIsOnBorder(const ZORGeoMesh& mesh, const ZORGeoMeshPlace& place);

/// Returns the corner of a triangle at a vertex.
/// \return -1 when it has none there
int ZorGeoCornerOf(const ZORGeoMesh& mesh, int triangle, int vertex);

ZORGeoLocationOnSurface ZorGeoLocationOf(const ZORGeoSurface* surface, const ZORGeoMeshPlace& place);
