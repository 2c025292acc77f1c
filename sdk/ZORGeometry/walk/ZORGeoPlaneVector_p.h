// Points and vectors in the plane of a triangle, or in the unfolded plane of several.

#pragma once

struct ZORGeoPlaneVector
{
    double x = 0;
    double y = 0;

    friend ZORGeoPlaneVector operator-(const ZORGeoPlaneVector& a, const ZORGeoPlaneVector& b)
    {
        return {a.x - b.x, a.y - b.y};
    }
    friend double Dot(const ZORGeoPlaneVector& a, const ZORGeoPlaneVector& b)
    {
        return a.x * b.x + a.y * b.y;
    }
    /// Returns twice the area of the triangle of both vectors, above 0 where the second one lies left of the first.
    friend double Cross(const ZORGeoPlaneVector& a, const ZORGeoPlaneVector& b)
    {
        return a.x * b.y - a.y * b.x;
    }
};
