// Shortest geodesics, checked as they are computed.

#pragma once

#include "sdk/ZORGeometry/CurveChecks.h"
#include "sdk/ZORGeometry/TestMeshes.h"

#include <ZORGeometry/ZORGeoCurveOnSurfaceProcessor.h>
#include <ZORMathematics/ZORMathVector.h>

#include <gtest/gtest.h>

#include <numbers>

using Result = ZORGeoCurveOnSurfaceResult;
constexpr double kPi = std::numbers::pi;

inline ZORGeoLocationOnSurface Locate(const ZORGeoSurface& surface, int triangle, double weightB,
                                      double weightC)
{
    ZORMathPoint a;
    ZORMathPoint b;
    ZORMathPoint c;
    surface.GetVertices(triangle, a, b, c);
    return {&surface, triangle, weightB, weightC, a + weightB * (b - a) + weightC * (c - a)};
}

inline ZORGeoLocationOnSurface RandomPlace(const ZORGeoSurface& surface, std::mt19937& random,
                                           bool isOnEdges = true)
{
    std::uniform_int_distribution<int> triangle(1, surface.GetNumTriangles());
    std::uniform_real_distribution<double> weight(0, 1);
    std::uniform_int_distribution<int> kind(0, 9);
    const int shape = isOnEdges ? kind(random) : 9;
    double b = shape == 0 ? 1 : weight(random);
    double c = shape <= 1 ? 0 : weight(random);
    if (b + c > 1) {
        b = 1 - b;
        c = 1 - c;
    }
    return Locate(surface, triangle(random), b, c);
}

/// The way between two places of a surface, which keeps every segment in its triangle.
inline Result Connect(const ZORGeoLocationOnSurface& start, const ZORGeoLocationOnSurface& end)
{
    const ZORGeoCurveOnSurfaceProcessor processor(start.surface, 0, 0);
    const Result result = processor.ComputePointToPoint(start, end);
    EXPECT_LT(DeviationFromSurface(result.GetLocations()), 1e-9);
    EXPECT_NEAR(LengthOf(result.GetLocations()), result.GetEndLength(), 1e-9 * (1 + result.GetEndLength()));
    if (!result.GetLocations().isEmpty()) {
        EXPECT_LT(start.point.DistanceTo(result.GetLocations().constFirst().point), 1e-9);
        EXPECT_LT(end.point.DistanceTo(result.GetLocations().constLast().point), 1e-9);
    }
    return result;
}

inline double AngleBetween(const ZORMathVector& a, const ZORMathVector& b)
{
    return std::atan2(Cross(a, b).GetLength(), Dot(a, b));
}

/// The surface angles on both sides of a vertex that a curve passes; infinite beyond a border.
inline std::array<double, 2> SideAngles(const ZORGeoSurface& surface,
                                        const QList<ZORGeoLocationOnSurface>& curve, qsizetype index,
                                        int corner)
{
    const auto& vertices = surface.GetVertexArray();
    const int first = curve[index].triangle;
    const int last = curve[index - 1].triangle;
    const int vertex = surface.GetCornerArray()[first - 1][size_t(corner)];
    const ZORMathPoint& at = vertices[vertex];
    std::array<double, 2> angles = {0, 0};
    for (int way = 0; way < 2; ++way) {
        ZORMathPoint from = curve[index + 1].point;
        int triangle = first;
        int entered = -1; // the vertex at the far end of the side that was crossed last
        for (bool isFirst = true;; isFirst = false) {
            const auto& corners = surface.GetCornerArray()[triangle - 1];
            size_t here = 0;
            while (corners[here] != vertex)
                ++here;
            const bool overNext = isFirst ? way == 0 : corners[(here + 1) % 3] != entered;
            if (triangle == last && !(isFirst && first == last)) {
                angles[size_t(way)] += AngleBetween(from - at, curve[index - 1].point - at);
                break;
            }
            entered = corners[overNext ? (here + 1) % 3 : (here + 2) % 3];
            angles[size_t(way)] += AngleBetween(from - at, vertices[entered] - at);
            int across[3];
            surface.GetNeighbors(triangle, across[0], across[1], across[2]);
            triangle = across[overNext ? here : (here + 2) % 3];
            from = vertices[entered];
            if (triangle == 0) {
                angles[size_t(way)] = INFINITY;
                break;
            }
        }
    }
    return angles;
}

/// Straight over edges, at least pi wide on both sides of vertices.
inline void ExpectLocallyShortest(const ZORGeoSurface& surface, const QList<ZORGeoLocationOnSurface>& curve)
{
    for (qsizetype i = 1; i + 1 < curve.size(); ++i) {
        const auto& [owner, triangle, weightB, weightC, point] = curve[i];
        const double weights[3] = {1 - weightB - weightC, weightB, weightC};
        const int corner = int(std::max_element(weights, weights + 3) - weights);
        if (weights[corner] == 1) {
            const auto angles = SideAngles(surface, curve, i, corner);
            EXPECT_GT(angles[0], kPi - 1e-6);
            EXPECT_GT(angles[1], kPi - 1e-6);
            continue;
        }
        int onSide = 0;
        while (weights[(onSide + 2) % 3] > 1e-12)
            ASSERT_LT(++onSide, 3) << "turns within a triangle";
        if (weights[corner] > 1 - 1e-6)
            continue; // too close to a vertex for accurate directions
        ZORMathPoint corners[3];
        surface.GetVertices(triangle, corners[0], corners[1], corners[2]);
        const ZORMathVector edge = (corners[(onSide + 1) % 3] - corners[onSide]).GetNormalized();
        EXPECT_NEAR(Dot((point - curve[i - 1].point).GetNormalized(), edge),
                    Dot((curve[i + 1].point - point).GetNormalized(), edge), 1e-5);
    }
}

inline TestMesh Waves(int cells)
{
    TestMesh mesh = Sheet(cells);
    for (ZORMathPoint& vertex : mesh.vertices)
        vertex.SetZ(0.25 * std::sin(9 * vertex.GetX()) * std::cos(7 * vertex.GetY()));
    return mesh;
}
