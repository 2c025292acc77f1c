// What holds for every curve that is computed over a surface.

#pragma once

#include "support/Printers.h"

#include <ZORGeometry/ZORGeoCurveOnSurfaceResult.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORMathematics/ZORMathVector.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>

using TestTriangle = std::array<ZORMathPoint, 3>;

inline TestTriangle CornersOf(const ZORGeoSurface& surface, int triangle)
{
    TestTriangle corners;
    surface.GetVertices(triangle, corners[0], corners[1], corners[2]);
    return corners;
}

inline double SizeOf(const TestTriangle& t)
{
    return std::max({t[0].DistanceTo(t[1]), t[1].DistanceTo(t[2]), t[2].DistanceTo(t[0])});
}

inline ZORMathPoint NearestOnSegment(const ZORMathPoint& p, const ZORMathPoint& a, const ZORMathPoint& b)
{
    const ZORMathVector ab = b - a;
    const double squared = Dot(ab, ab);
    return squared > 0 ? a + std::clamp(Dot(p - a, ab) / squared, 0.0, 1.0) * ab : a;
}

inline double DistanceToTriangle(const ZORMathPoint& p, const TestTriangle& t)
{
    const ZORMathVector normal = Cross(t[1] - t[0], t[2] - t[0]).GetNormalized();
    bool isInside = true;
    ZORMathPoint nearest = t[0];
    for (size_t i = 0; i < 3; ++i) {
        const ZORMathPoint& from = t[i];
        const ZORMathPoint& to = t[(i + 1) % 3];
        isInside = isInside && Dot(Cross(to - from, p - from), normal) > 0;
        const ZORMathPoint onSide = NearestOnSegment(p, from, to);
        if (p.DistanceTo(onSide) < p.DistanceTo(nearest))
            nearest = onSide;
    }
    // The height over the plane, from near: the normals of thin triangles are not accurate.
    return isInside ? std::abs(Dot(p - nearest, normal)) : p.DistanceTo(nearest);
}

/// Every location is where it says, and every segment in the triangle of its first location.
inline void ExpectOnSurface(const ZORGeoSurface& surface, const QList<ZORGeoLocationOnSurface>& locations)
{
    for (qsizetype i = 0; i < locations.size(); ++i) {
        const ZORGeoLocationOnSurface& location = locations[i];
        ASSERT_EQ(&surface, location.surface);
        ASSERT_GE(location.triangle, 1);
        ASSERT_LE(location.triangle, surface.GetNumTriangles());
        ASSERT_TRUE(location.weightB >= -1e-9 && location.weightC >= -1e-9
                    && location.weightB + location.weightC <= 1 + 1e-9)
            << i << ": " << location.weightB << ' ' << location.weightC;
        const TestTriangle t = CornersOf(surface, location.triangle);
        const ZORMathPoint point = t[0] + location.weightB * (t[1] - t[0]) + location.weightC * (t[2] - t[0]);
        ASSERT_LE(point.DistanceTo(location.point), 1e-9 * SizeOf(t)) << i;
        if (i + 1 < locations.size()) {
            ASSERT_LE(DistanceToTriangle(locations[i + 1].point, t), 1e-9 * SizeOf(t)) << i;
        }
    }
}

inline double LengthOf(const QList<ZORGeoLocationOnSurface>& locations, qsizetype first, qsizetype last)
{
    double length = 0;
    for (qsizetype i = first; i < last; ++i)
        length += locations[i].point.DistanceTo(locations[i + 1].point);
    return length;
}

inline ZORMathPoint BeginOf(const ZORGeoCurveOnSurfaceResult& result)
{
    return result.GetLocations().constFirst().point;
}

inline ZORMathPoint EndOf(const ZORGeoCurveOnSurfaceResult& result)
{
    return result.GetLocations().constLast().point;
}

/// On the surface, and as long as it says on both sides.
inline void ExpectConsistent(const ZORGeoSurface& surface, const ZORGeoCurveOnSurfaceResult& result)
{
    const QList<ZORGeoLocationOnSurface> locations = result.GetLocations();
    ASSERT_FALSE(locations.isEmpty());
    ExpectOnSurface(surface, locations);
    const int start = result.GetStartIndex();
    ASSERT_TRUE(start >= 0 && start < locations.size());
    EXPECT_NEAR(result.GetStartLength(), LengthOf(locations, 0, start), 1e-9 * (1 + result.GetStartLength()));
    EXPECT_NEAR(result.GetEndLength(), LengthOf(locations, start, locations.size() - 1),
                1e-9 * (1 + result.GetEndLength()));
}

/// Crosses every edge as a straight line does in the unfolded triangles.
inline void ExpectStraight(const ZORGeoSurface& surface, const QList<ZORGeoLocationOnSurface>& locations)
{
    for (qsizetype i = 1; i + 1 < locations.size(); ++i) {
        const ZORMathVector before = locations[i].point - locations[i - 1].point;
        const ZORMathVector after = locations[i + 1].point - locations[i].point;
        const TestTriangle t = CornersOf(surface, locations[i].triangle);
        const double weights[3] = {1 - locations[i].weightB - locations[i].weightC, locations[i].weightB,
                                   locations[i].weightC};
        const auto smallest = std::min_element(std::begin(weights), std::end(weights)) - weights;
        const size_t p = size_t(smallest + 1) % 3;
        const size_t q = size_t(smallest + 2) % 3;
        int across[3];
        surface.GetNeighbors(locations[i].triangle, across[0], across[1], across[2]);
        // Only plain crossings: not in vertices, nor where triangles without area were passed in between.
        if (weights[p] < 1e-6 || weights[q] < 1e-6 || across[p] != locations[i - 1].triangle)
            continue;
        const ZORMathVector edge = (t[q] - t[p]).GetNormalized();
        const double shortest = std::min(before.GetLength(), after.GetLength());
        const double tolerance = 1e-9 + 1e-13 * (SizeOf(t) + PositionVector(t[0]).GetLength()) / shortest;
        ASSERT_NEAR(Dot(before.GetNormalized(), edge), Dot(after.GetNormalized(), edge), tolerance) << i;
    }
}
