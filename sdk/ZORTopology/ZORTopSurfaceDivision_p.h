// Division of a surface into faces, edges and vertices.

#pragma once

#include "ZORTopStructure_p.h"

class ZORGeoSurface;

/// Divides a surface at its border, where it turns by more than the tolerance, and at edges of more than two
/// triangles. O(T), and O(s log s) for the s sides on edges.
/// \param tolerance  radians, 0 or more
/// \return nothing for a surface without triangles
ZORTopStructure ZorTopDivideSurface(const ZORGeoSurface& surface, double tolerance);
