// What outlines draw beyond the area that they enclose.

#pragma once

#include "ZORNestSolverGeometry.h"

namespace ZORNestSolver {

/// Returns thin counter-clockwise rectangles, within the box of both, along what rings draw outside of a material: a
/// line that is drawn forth and back, the common edge of a hole and the outline, or a sliver as thin as rounding.
/// Such a spur encloses no area, so that cleaning drops it, but no other part may lie on it. Returns equal ones once.
///
/// O(n log n) for n edges, unless many of them cross or lie beside each other.
Polygon GetSpurs(const Polygon& rings, const Polygon& material);

} // namespace ZORNestSolver
