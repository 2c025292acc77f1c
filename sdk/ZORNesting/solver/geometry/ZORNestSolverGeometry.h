// Points, boxes and rings of the nesting solver, and the exact measures on them.

#pragma once

#include "solver/base/ZORNestSolverInterruption.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace ZORNestSolver {

struct Point
{
    double x = 0;
    double y = 0;

    friend Point operator+(Point a, Point b) { return {a.x + b.x, a.y + b.y}; }
    friend Point operator-(Point a, Point b) { return {a.x - b.x, a.y - b.y}; }
    friend Point operator*(Point a, double factor) { return {a.x * factor, a.y * factor}; }
    friend Point operator*(double factor, Point a) { return a * factor; }
    friend bool operator==(Point a, Point b) { return a.x == b.x && a.y == b.y; }
};

inline double Cross(Point a, Point b)
{
    return a.x * b.y - a.y * b.x;
}
inline double Dot(Point a, Point b)
{
    return a.x * b.x + a.y * b.y;
}
inline double Length(Point a)
{
    return std::hypot(a.x, a.y);
}
/// Returns a vector turned by a quarter to the left.
inline Point GetNormal(Point a)
{
    return {-a.y, a.x};
}
inline bool IsFinite(Point a)
{
    return std::isfinite(a.x) && std::isfinite(a.y);
}

/// The coordinates and sizes of parts and sheets that can be nested, in millimeters. Doubles have a tenth of the
/// tolerance of the proof as their last digit there.
constexpr double kLargestCoordinate = 1e9;

/// Empty as created: the minimum lies above the maximum.
struct Box
{
    Point min{std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity()};
    Point max{-std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity()};

    bool IsEmpty() const { return min.x > max.x || min.y > max.y; }
    double GetWidth() const { return max.x - min.x; }
    double GetHeight() const { return max.y - min.y; }
    Point GetCentre() const { return (min + max) * 0.5; }
    void Add(Point p);
    void Add(const Box& other);
    Box Moved(Point by) const { return {min + by, max + by}; }
    Box Grown(double by) const { return {{min.x - by, min.y - by}, {max.x + by, max.y + by}}; }
    bool Contains(Point p) const { return p.x >= min.x && p.x <= max.x && p.y >= min.y && p.y <= max.y; }
    bool Contains(const Box& other) const { return Contains(other.min) && Contains(other.max); }
    /// No coordinate lies beyond the largest one that can be nested; false where one is not a number.
    bool IsWithinReach() const { return std::max({-min.x, -min.y, max.x, max.y}) <= kLargestCoordinate; }
    bool Overlaps(const Box& other) const
    {
        return min.x <= other.max.x && other.min.x <= max.x && min.y <= other.max.y && other.min.y <= max.y;
    }
};

/// A closed chain of straight edges; the last point is joined to the first one and does not repeat it.
using Ring = std::vector<Point>;

/// The outer ring counter-clockwise, the holes clockwise; of several pieces, each has an outer ring, and the first
/// ring is one of them. A point is inside by the even-odd rule.
using Polygon = std::vector<Ring>;

/// Positive for a counter-clockwise ring.
double GetSignedArea(const Ring& ring);
/// The area of the outer rings less that of the holes.
double GetArea(const Polygon& polygon);
/// Checks whether the polygon has more than one outer ring.
bool HasPieces(const Polygon& polygon);
Box GetBox(const Ring& ring);
Box GetBox(const Polygon& polygon);
/// The convex hull, counter-clockwise, without collinear points.
Ring GetConvexHull(const Polygon& polygon);
/// The largest distance of two points of a convex ring; O(n).
double GetDiameter(const Ring& hull);

double GetDistanceToSegment(Point p, Point a, Point b);
/// Distance of a point from the edges of the polygon, whatever side it lies on.
double GetDistanceToBoundary(Point p, const Polygon& polygon);
bool IsInside(Point p, const Polygon& polygon);
/// Closed segments have a point in common; touching counts.
bool DoSegmentsMeet(Point a1, Point a2, Point b1, Point b2);
/// Counts the pairs of edges that meet elsewhere than neighbors in their common end. Ends at \a most of them, which it
/// also returns when it is interrupted.
size_t CountConflicts(const Polygon& polygon, size_t most, const Interruption& isOver = NeverInterrupted);
/// Returns a number for each ring, below the number of rings: the same one for rings that meet, directly or through
/// others. O(n log n) unless many boxes of edges overlap. Interrupted, it leaves off.
std::vector<size_t> GroupRings(const Polygon& polygon, const Interruption& isOver = NeverInterrupted);
/// No two edges meet but neighbours in their common end. O(n log n) unless many boxes of far edges overlap.
/// Interrupted, it returns false.
bool IsSimple(const Polygon& polygon, const Interruption& isOver = NeverInterrupted);

/// Removes repeated points and the middle ones of three in line.
Ring RemoveIdlePoints(const Ring& ring, double tolerance);

} // namespace ZORNestSolver
