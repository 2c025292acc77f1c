// Tests of shortest geodesics between two places of a surface.

#include "CurveChecks.h"
#include "TestMeshes.h"
#include "support/Printers.h"
#include "support/TestData.h"

#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoCurveOnSurfaceProcessor.h>
#include <ZORGeometry/ZORGeoStlLoader.h>
#include <ZORMathematics/ZORMathVector.h>
#include <ZORSystem/ZORSysException.h>

#include <QFile>
#include <queue>

#include <gtest/gtest.h>

#include <limits>
#include <numbers>

namespace {

using Result = ZORGeoCurveOnSurfaceResult;
constexpr double pi = std::numbers::pi;

ZORGeoLocationOnSurface Locate(const ZORGeoSurface& surface, int triangle, double weightB, double weightC)
{
    ZORMathPoint a;
    ZORMathPoint b;
    ZORMathPoint c;
    surface.GetVertices(triangle, a, b, c);
    return {&surface, triangle, weightB, weightC, a + weightB * (b - a) + weightC * (c - a)};
}

ZORGeoLocationOnSurface RandomPlace(const ZORGeoSurface& surface, std::mt19937& random, bool isOnEdges = true)
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
Result Connect(const ZORGeoLocationOnSurface& start, const ZORGeoLocationOnSurface& end)
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

double DistanceBetween(const ZORGeoSurface& surface, const ZORMathPoint& start, const ZORMathPoint& end)
{
    return Connect(surface.Project(start), surface.Project(end)).GetEndLength();
}

/// Shortest ways on convex surfaces: every sequence of different triangles is unfolded as long as it can be
/// seen through from the start.
class ConvexSearch
{
public:
    ConvexSearch(const ZORGeoSurface& surface, const ZORGeoLocationOnSurface& end)
        : m_surface(surface)
        , m_end(end)
        , m_used(size_t(surface.GetNumTriangles()) + 1)
    {
    }

    double Run(const ZORGeoLocationOnSurface& start)
    {
        const auto corners = m_surface.GetCornerArray()[start.triangle - 1];
        for (int side = 0; side < 3; ++side) {
            const auto at = [&](int corner) {
                return m_surface.GetVertexArray()[corners[size_t(corner) % 3]];
            };
            const double length = at(side).DistanceTo(at(side + 1));
            const ZORMathVector along = (at(side + 1) - at(side)) * (1 / length);
            const ZORMathVector way = start.point - at(side);
            const double x = Dot(way, along);
            const double y = (way - x * along).GetLength();
            m_used.assign(m_used.size(), false);
            m_used[size_t(start.triangle)] = true;
            // The start at the origin, the triangle below the side.
            Unfold(start.triangle, side, {length - x, y}, {-x, y}, {length - x, y}, {-x, y});
        }
        if (start.triangle == m_end.triangle)
            m_best = std::min(m_best, start.point.DistanceTo(m_end.point));
        return m_best;
    }

private:
    struct Point
    {
        double x;
        double y;
    };
    static double Turn(const Point& a, const Point& b) { return a.x * b.y - a.y * b.x; }

    // Behind a side, whose ends lie at right and left, seen between two rays from the origin.
    void Unfold(int from, int side, const Point& right, const Point& left, const Point& rightRay,
                const Point& leftRay)
    {
        int across[3];
        m_surface.GetNeighbors(from, across[0], across[1], across[2]);
        const int triangle = across[side];
        if (triangle == 0 || m_used[size_t(triangle)])
            return;
        const auto& near = m_surface.GetCornerArray()[from - 1];
        const auto& corners = m_surface.GetCornerArray()[triangle - 1];
        const int rightVertex = near[size_t(side + 1) % 3];
        int entry = 0;
        while (corners[size_t(entry)] != rightVertex)
            ++entry; // the surface is well oriented: the side runs from right to left here
        const auto lay = [&](const ZORMathPoint& point) {
            const ZORMathPoint& r = m_surface.GetVertexArray()[rightVertex];
            const ZORMathPoint& l = m_surface.GetVertexArray()[near[size_t(side)]];
            const double squared = Dot(l - r, l - r);
            const double along = Dot(l - r, point - r) / squared;
            const double up = Cross(l - r, point - r).GetLength() / squared;
            const double dx = left.x - right.x;
            const double dy = left.y - right.y;
            return Point{right.x + along * dx + up * dy, right.y + along * dy - up * dx};
        };
        m_used[size_t(triangle)] = true;
        if (triangle == m_end.triangle) {
            const Point end = lay(m_end.point);
            if (Turn(rightRay, end) >= -1e-12 && Turn(end, leftRay) >= -1e-12)
                m_best = std::min(m_best, std::hypot(end.x, end.y));
        }
        const Point apex = lay(m_surface.GetVertexArray()[corners[size_t(entry + 2) % 3]]);
        const bool isAboveRight = Turn(rightRay, apex) > 0;
        const bool isBelowLeft = Turn(apex, leftRay) > 0;
        if (isAboveRight)
            Unfold(triangle, (entry + 2) % 3, right, apex, rightRay, isBelowLeft ? apex : leftRay);
        if (isBelowLeft)
            Unfold(triangle, (entry + 1) % 3, apex, left, isAboveRight ? apex : rightRay, leftRay);
        m_used[size_t(triangle)] = false;
    }

    const ZORGeoSurface& m_surface;
    const ZORGeoLocationOnSurface m_end;
    std::vector<bool> m_used;
    double m_best = std::numeric_limits<double>::infinity();
};

TestMesh Scaled(TestMesh mesh, double x, double y, double z)
{
    for (ZORMathPoint& vertex : mesh.vertices)
        vertex = ZORMathPoint(x * vertex.GetX(), y * vertex.GetY(), z * vertex.GetZ());
    return mesh;
}

TEST(ZORGeoShortestPathTest, GoesOverFiveFacesOfABoxOfTwelveTriangles)
{
    const auto box = Box(30, 12, 12).Make();
    EXPECT_NEAR(40, DistanceBetween(*box, {0, 6, 11}, {30, 6, 1}), 1e-9);
    EXPECT_NEAR(40, DistanceBetween(*box, {30, 6, 1}, {0, 6, 11}), 1e-9);
}

TEST(ZORGeoShortestPathTest, RunsFromAVertexOfATetrahedronToTheOppositeCentre)
{
    const auto tetrahedron = Tetrahedron().Make();
    EXPECT_NEAR(
        1.154700538379,
        DistanceBetween(*tetrahedron, tetrahedron->GetVertexArray()[3], {0.5, std::sqrt(1 / 12.0), 0}),
        1e-12);
}

TEST(ZORGeoShortestPathTest, IsExactOnSmallConvexSurfaces)
{
    std::mt19937 random(11);
    double sum = 0;
    double exactSum = 0;
    double worst = 0;
    for (const TestMesh& mesh : {Cube(), Box(30, 12, 12), Tetrahedron(), Scaled(Sphere(1, 3), 1, 0.6, 1.7),
                                 Scaled(Sphere(1, 4), 3, 1, 1), Sphere(1, 5)}) {
        const auto surface = mesh.Make();
        for (int i = 0; i < 60; ++i) {
            const auto start = RandomPlace(*surface, random, false);
            const auto end = RandomPlace(*surface, random, false);
            const double exact = ConvexSearch(*surface, end).Run(start);
            const double length = Connect(start, end).GetEndLength();
            EXPECT_GE(length, exact * (1 - 1e-9) - 1e-12);
            sum += length;
            exactSum += exact;
            worst = std::max(worst, length / exact);
        }
    }
    std::printf("sum %.6f worst %.6f\n", sum / exactSum, worst);
    EXPECT_LT(sum, 1.001 * exactSum);
    EXPECT_LT(worst, 1.02);
}

} // namespace
