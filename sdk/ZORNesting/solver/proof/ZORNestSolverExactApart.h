// Proves that shapes are apart.

#pragma once

namespace ZORNestSolver::Exact {

class Shape;

/// Checks that regions keep a distance, less the tolerance.
///
/// Regions that need no distance may overlap by the tolerance: no point of the lines and arcs of one lies
/// deeper than that in the other, measured to the other's nearest line or arc, and they have no deeper point
/// in common. So they may touch along edges and arcs; needles, equal regions and regions within each other
/// overlap.
///
/// Takes O(n log n) for n pieces near each other.
bool AreApart(const Shape& a, const Shape& b, double distance);

} // namespace ZORNestSolver::Exact
