// Points, boxes and maps of the plane.

#pragma once

#include "solver/geometry/ZORNestSolverGeometry.h"

/// A point or vector of the plane, millimeters.
using ZORNestPlanePoint = ZORNestSolver::Point;
using ZORNestPlaneBox = ZORNestSolver::Box;

/// An affine map of the plane: p to x * p.x + y * p.y + origin.
struct ZORNestPlaneMap
{
    ZORNestPlanePoint x{1, 0};
    ZORNestPlanePoint y{0, 1};
    ZORNestPlanePoint origin;

    ZORNestPlanePoint MapVector(ZORNestPlanePoint v) const { return v.x * x + v.y * y; }
    ZORNestPlanePoint Map(ZORNestPlanePoint p) const { return MapVector(p) + origin; }
    double GetDeterminant() const { return Cross(x, y); }
    /// Whether circles stay circles (to 1e-9 of their size).
    bool IsSimilarity() const;
    /// The map that applies \a inner first.
    ZORNestPlaneMap operator*(const ZORNestPlaneMap& inner) const
    {
        return {MapVector(inner.x), MapVector(inner.y), Map(inner.origin)};
    }
};
