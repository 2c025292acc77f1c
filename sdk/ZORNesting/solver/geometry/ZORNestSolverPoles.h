// Circles inside a polygon that stand for its area.

#pragma once

#include "ZORNestSolverGeometry.h"

namespace ZORNestSolver {

struct Circle
{
    Point centre;
    double radius = 0;
};

/// Largest number of circles that stand for a polygon in the search.
constexpr size_t kMostPoles = 32;

/// The largest inscribed circle, then each time the largest one that lies inside and overlaps no earlier one.
/// Ends at 8 circles where they cover 90 % of the area, at 16 where they cover 80 %, else at \a limit.
/// Radii are within 1 % of the largest possible ones. The polygon encloses area; at least one circle returns.
std::vector<Circle> FindPoles(const Polygon& polygon, size_t limit = kMostPoles);
/// Does the same as long as a common effort lasts, then finds a single circle that is not the largest one.
/// \param squares  that the search may try, of about half a microsecond each; becomes less
std::vector<Circle> FindPoles(const Polygon& polygon, double& squares);

/// Returns a point inside of each piece of a polygon, as far from its rings as possible; in the order of the
/// counter-clockwise rings, which do not cross.
std::vector<Point> FindDeepPoints(const Polygon& polygon);

} // namespace ZORNestSolver
