// What outlines draw forth and back.

#pragma once

#include "ZORNestSolverGeometry.h"

namespace ZORNestSolver {

/// Returns thin counter-clockwise rectangles along what the rings draw forth and back, within the box of the rings.
/// Such a spur encloses no area, so that cleaning drops it, but no other part may lie on it. Typically takes O(n);
/// returns at most two rectangles for each point.
Polygon GetSpurs(const Polygon& rings);

} // namespace ZORNestSolver
