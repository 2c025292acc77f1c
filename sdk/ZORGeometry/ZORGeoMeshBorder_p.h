// Border loops of a triangle mesh.

#pragma once

#include "ZORGeoMesh_p.h"

#include <ZORGeometry/ZORGeoTriangleEdgeCurve.h>

/// The sides without a neighbour, chained into closed loops: every one in one loop, once. Linear time.
///
/// At a vertex a loop goes on with the border side at the other end of the fan of neighbouring triangles, so
/// that pieces which touch in a vertex or in an edge of several triangles keep loops of their own. A loop
/// starts with its lowest triangle and runs in that one's winding; loops are in the order of their starts.
QList<QList<ZORGeoTriangleEdgeCurve::Edge>> ZorGeoFindBorderLoops(const ZORGeoMesh& mesh);
