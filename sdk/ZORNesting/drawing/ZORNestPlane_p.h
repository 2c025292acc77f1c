// Points, boxes and maps of the plane.

#pragma once

#include <cmath>

/// A point or vector of the plane, millimetres.
struct ZORNestPlanePoint
{
    double x = 0;
    double y = 0;

    friend ZORNestPlanePoint operator+(ZORNestPlanePoint a, ZORNestPlanePoint b)
    {
        return {a.x + b.x, a.y + b.y};
    }
    friend ZORNestPlanePoint operator-(ZORNestPlanePoint a, ZORNestPlanePoint b)
    {
        return {a.x - b.x, a.y - b.y};
    }
    friend ZORNestPlanePoint operator*(double s, ZORNestPlanePoint a) { return {s * a.x, s * a.y}; }
    friend bool operator==(ZORNestPlanePoint, ZORNestPlanePoint) = default;

    double Dot(ZORNestPlanePoint b) const { return x * b.x + y * b.y; }
    double Cross(ZORNestPlanePoint b) const { return x * b.y - y * b.x; }
    double GetLength() const { return std::hypot(x, y); }
    double DistanceTo(ZORNestPlanePoint b) const { return std::hypot(x - b.x, y - b.y); }
    /// A quarter turn to the left.
    ZORNestPlanePoint GetNormal() const { return {-y, x}; }
    bool IsFinite() const { return std::isfinite(x) && std::isfinite(y); }
};

struct ZORNestPlaneBox
{
    double xMin = HUGE_VAL, yMin = HUGE_VAL, xMax = -HUGE_VAL, yMax = -HUGE_VAL;

    void Add(ZORNestPlanePoint point);
    void Add(const ZORNestPlaneBox& box);
    bool Contains(const ZORNestPlaneBox& box) const
    {
        return xMin <= box.xMin && yMin <= box.yMin && box.xMax <= xMax && box.yMax <= yMax;
    }
    bool Contains(ZORNestPlanePoint p) const
    {
        return xMin <= p.x && p.x <= xMax && yMin <= p.y && p.y <= yMax;
    }
};

/// An affine map of the plane: p to x * p.x + y * p.y + origin.
struct ZORNestPlaneMap
{
    ZORNestPlanePoint x{1, 0};
    ZORNestPlanePoint y{0, 1};
    ZORNestPlanePoint origin;

    ZORNestPlanePoint MapVector(ZORNestPlanePoint v) const { return v.x * x + v.y * y; }
    ZORNestPlanePoint Map(ZORNestPlanePoint p) const { return MapVector(p) + origin; }
    double GetDeterminant() const { return x.Cross(y); }
    /// Whether circles stay circles (to 1e-9 of their size).
    bool IsSimilarity() const;
    /// The map that applies \a inner first.
    ZORNestPlaneMap operator*(const ZORNestPlaneMap& inner) const
    {
        return {MapVector(inner.x), MapVector(inner.y), Map(inner.origin)};
    }
};
