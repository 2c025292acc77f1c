// What holds for every curve that the SDK computes on a surface.

#pragma once

#include <ZORGeometry/ZORGeoLocationOnSurface.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORMathematics/ZORMathBoundingBox.h>
#include <ZORMathematics/ZORMathPoint.h>

#include <QList>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>

/// The point of a triangle of a surface (1 ... T) that is nearest to a point: the best of its sides and face.
inline ZORMathPoint NearestOfTriangle(const ZORGeoSurface& surface, int triangle, const ZORMathPoint& point)
{
    std::array<ZORMathPoint, 3> corners;
    surface.GetVertices(triangle, corners[0], corners[1], corners[2]);
    ZORMathPoint nearest = corners[0];
    const auto tryPoint = [&](const ZORMathPoint& candidate) {
        if (candidate.DistanceTo(point) < nearest.DistanceTo(point))
            nearest = candidate;
    };
    for (size_t i = 0; i < 3; ++i) {
        const ZORMathVector side = corners[(i + 1) % 3] - corners[i];
        const double squared = Dot(side, side);
        if (squared > 0)
            tryPoint(corners[i] + std::clamp(Dot(point - corners[i], side) / squared, 0.0, 1.0) * side);
    }
    const ZORMathVector b = corners[1] - corners[0];
    const ZORMathVector c = corners[2] - corners[0];
    const ZORMathVector normal = Cross(b, c);
    const double squared = Dot(normal, normal);
    if (squared > 1e-20 * Dot(b, b) * Dot(c, c)) {
        const double weightB = Dot(Cross(point - corners[0], c), normal) / squared;
        const double weightC = Dot(Cross(b, point - corners[0]), normal) / squared;
        if (weightB >= 0 && weightC >= 0 && weightB + weightC <= 1)
            tryPoint(corners[0] + weightB * b + weightC * c);
    }
    return nearest;
}

/// The largest distance of a location's weights from its point, and of both ends of a segment from the
/// triangle it is stored in, as a part of the surface's extent; infinite for values that are no numbers.
inline double DeviationFromSurface(const QList<ZORGeoLocationOnSurface>& locations)
{
    if (locations.isEmpty())
        return 0;
    const ZORGeoSurface& surface = *locations.constFirst().surface;
    const ZORMathBoundingBox box = surface.GetBoundingBox();
    const double extent = (box.GetUpperPoint() - box.GetLowerPoint()).GetLength();
    double deviation = 0;
    for (qsizetype i = 0; i < locations.size(); ++i) {
        const auto& [owner, triangle, weightB, weightC, point] = locations[i];
        ZORMathPoint a;
        ZORMathPoint b;
        ZORMathPoint c;
        surface.GetVertices(triangle, a, b, c);
        const double weightA = 1 - weightB - weightC;
        const bool isInside = weightA >= -1e-12 && weightB >= 0 && weightC >= 0 && point.IsFinite();
        if (!isInside || owner != &surface)
            return INFINITY;
        deviation = std::max(deviation, point.DistanceTo(a + weightB * (b - a) + weightC * (c - a)));
        if (i + 1 < locations.size())
            deviation = std::max(deviation, NearestOfTriangle(surface, triangle, locations[i + 1].point)
                                                .DistanceTo(locations[i + 1].point));
    }
    return extent > 0 ? deviation / extent : deviation;
}

inline double LengthOf(const QList<ZORGeoLocationOnSurface>& locations)
{
    double length = 0;
    for (qsizetype i = 1; i < locations.size(); ++i)
        length += locations[i - 1].point.DistanceTo(locations[i].point);
    return length;
}
