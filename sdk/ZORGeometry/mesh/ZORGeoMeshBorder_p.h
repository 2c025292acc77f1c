// The border of a triangle mesh.

#pragma once

#include "ZORGeoMesh_p.h"

#include <ZORGeometry/ZORGeoTriangleEdgeCurve.h>

/// A side of a triangle, walked towards one of its ends.
struct ZORGeoDirectedSide
{
    int triangle; // from 0
    int side;
    bool isReversed;

    int GetEndCorner() const { return (side + (isReversed ? 0 : 1)) % 3; }
};

/// The border side that begins where the border side \a at ends: the one at the other end of the fan of
/// neighbouring triangles.
ZORGeoDirectedSide ZorGeoFindNextBorderSide(const ZORGeoMesh& mesh, ZORGeoDirectedSide at);

/// The sides without a neighbour, chained into closed loops: every one in one loop, once. Linear time.
///
/// At a vertex a loop goes on with the border side at the other end of the fan of neighbouring triangles, so
/// that pieces which touch in a vertex or in an edge of several triangles keep loops of their own. A loop
/// starts with its lowest triangle and runs in that one's winding; loops are in the order of their starts.
QList<QList<ZORGeoTriangleEdgeCurve::Edge>> ZorGeoFindBorderLoops(const ZORGeoMesh& mesh);
