// What holds for every curve that the SDK computes on a surface.

#pragma once

#include <ZORGeometry/ZORGeoLocationOnSurface.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORMathematics/ZORMathBoundingBox.h>
#include <ZORMathematics/ZORMathPoint.h>

#include <QList>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

/// How far a point lies from a triangle of a surface (1 ... T).
inline double DistanceToTriangle(const ZORGeoSurface& surface, int triangle, const ZORMathPoint& point)
{
    QList<ZORMathPoint> corners(3);
    surface.GetVertices(triangle, corners[0], corners[1], corners[2]);
    const ZORGeoSurface alone(nullptr, corners, {{0, 1, 2}});
    return alone.Project(point).point.DistanceTo(point);
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
            deviation = std::max(deviation, DistanceToTriangle(surface, triangle, locations[i + 1].point));
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
