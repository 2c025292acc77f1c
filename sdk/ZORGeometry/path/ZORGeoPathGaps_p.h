// Paths over triangles without area.

#pragma once

#include "walk/ZORGeoMeshJoin_p.h"

/// Takes the segments of a path that lie in triangles without area over to triangles beside them, and inserts
/// places without a length between them where it crosses such triangles, so that each place can be told by the
/// triangles of both its segments.
void ZorGeoFillGaps(const ZORGeoMesh& mesh, ZORGeoMeshPath& path);

/// Whether a triangle holds a place of another triangle, directly or over triangles without area.
bool ZorGeoHoldsPlace(const ZORGeoMesh& mesh, int triangle, const ZORGeoMeshPlace& place);
