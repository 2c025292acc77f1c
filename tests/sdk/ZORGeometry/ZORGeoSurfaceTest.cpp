// Tests of ZORGeoSurface: shape, closest points and rays.

#include "TestMeshes.h"
#include "support/Printers.h"
#include "support/TestData.h"

#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoStlLoader.h>
#include <ZORMathematics/ZORMathBoundingBox.h>
#include <ZORMathematics/ZORMathVector.h>
#include <ZORSystem/ZORSysException.h>

#include <QFile>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <thread>

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

QString MessageOf(const TestMesh& mesh)
{
    try {
        mesh.Make();
    } catch (const ZORSysException& exception) {
        return exception.GetMessage();
    }
    return {};
}

double SegmentDistance(const ZORMathPoint& p, const ZORMathPoint& a, const ZORMathPoint& b)
{
    const ZORMathVector ab = b - a;
    const double squared = Dot(ab, ab);
    return p.DistanceTo(squared > 0 ? a + std::clamp(Dot(p - a, ab) / squared, 0.0, 1.0) * ab : a);
}

// By another road than the SDK's: the height over the plane where the foot lies inside, else the sides.
double TriangleDistance(const ZORMathPoint& p, const ZORMathPoint& a, const ZORMathPoint& b,
                        const ZORMathPoint& c)
{
    const ZORMathVector normal = Cross(b - a, c - a).GetNormalized();
    const bool isInside = Dot(Cross(b - a, p - a), normal) > 0 && Dot(Cross(c - b, p - b), normal) > 0
                          && Dot(Cross(a - c, p - c), normal) > 0;
    const double sides =
        std::min({SegmentDistance(p, a, b), SegmentDistance(p, b, c), SegmentDistance(p, c, a)});
    return isInside ? std::min(sides, std::abs(Dot(p - a, normal))) : sides;
}

double SurfaceDistance(const ZORGeoSurface& surface, const ZORMathPoint& p)
{
    double nearest = kInfinity;
    for (const auto [a, b, c] : surface.GetCornerArray()) {
        const QList<ZORMathPoint>& v = surface.GetVertexArray();
        nearest = std::min(nearest, TriangleDistance(p, v[a], v[b], v[c]));
    }
    return nearest;
}

// A location is a place of its triangle.
void ExpectConsistent(const ZORGeoSurface& surface, const ZORGeoLocationOnSurface& location)
{
    ASSERT_EQ(&surface, location.surface);
    ASSERT_GE(location.triangle, 1);
    ASSERT_LE(location.triangle, surface.GetNumTriangles());
    EXPECT_GE(location.weightB, -1e-12);
    EXPECT_GE(location.weightC, -1e-12);
    EXPECT_LE(location.weightB + location.weightC, 1 + 1e-12);
    ZORMathPoint a;
    ZORMathPoint b;
    ZORMathPoint c;
    surface.GetVertices(location.triangle, a, b, c);
    const ZORMathPoint point = a + location.weightB * (b - a) + location.weightC * (c - a);
    EXPECT_LE(point.DistanceTo(location.point), 1e-9);
}

TEST(ZORGeoSurfaceTest, TellsItsShape)
{
    const auto cube = Cube().Make();
    EXPECT_EQ(12, cube->GetNumTriangles());
    EXPECT_EQ(8, cube->GetVertexArray().size());
    EXPECT_DOUBLE_EQ(6, cube->GetArea());
    EXPECT_EQ(ZORMathBoundingBox({0, 0, 0}, {1, 1, 1}), cube->GetBoundingBox());
    ZORMathPoint a;
    ZORMathPoint b;
    ZORMathPoint c;
    cube->GetVertices(3, a, b, c);
    EXPECT_EQ(ZORMathPoint(0, 0, 1), a);
    EXPECT_EQ(ZORMathPoint(1, 0, 1), b);
    EXPECT_EQ(ZORMathPoint(1, 1, 1), c);
}

TEST(ZORGeoSurfaceTest, MayBeEmpty)
{
    const auto empty = TestMesh{{{1, 2, 3}}, {}}.Make();
    EXPECT_EQ(0, empty->GetNumTriangles());
    EXPECT_EQ(0, empty->GetArea());
    EXPECT_TRUE(empty->GetBoundingBox().IsEmpty());
    EXPECT_TRUE(empty->Project({0, 0, 0}).IsNull());
    EXPECT_TRUE(empty->IntersectRay({0, 0, 0}, {0, 0, 1}).IsNull());
}

TEST(ZORGeoSurfaceTest, RefusesWrongInput)
{
    EXPECT_EQ(QString("triangle 1 refers to vertex 3 of 3"),
              MessageOf({{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, {{0, 1, 3}}}));
    EXPECT_EQ(QString("triangle 2 refers to vertex -1 of 3"),
              MessageOf({{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, {{0, 1, 2}, {0, -1, 2}}}));
    for (const double value : {kNan, kInfinity, -kInfinity, 1e61})
        EXPECT_EQ(QString("vertex 1 is not finite or too far away"),
                  MessageOf({{{0, 0, 0}, {0, value, 0}}, {}}));
}

TEST(ZORGeoSurfaceTest, ProjectsOnFacesEdgesAndCorners)
{
    const auto cube = Cube().Make();
    EXPECT_TRUE(IsNear({0.25, 0.5, 1}, cube->Project({0.25, 0.5, 4}).point));
    EXPECT_TRUE(IsNear({0.25, 0.5, 1}, cube->Project({0.25, 0.5, 0.9}).point));
    EXPECT_TRUE(IsNear({1, 0.5, 1}, cube->Project({3, 0.5, 2}).point));
    EXPECT_TRUE(IsNear({1, 1, 1}, cube->Project({3, 2, 5}).point));
    EXPECT_EQ(cube->GetVertexArray()[6], cube->Project({1, 1, 1}).point);
}

TEST(ZORGeoSurfaceTest, OfEquallyNearTrianglesTheLowestIsTaken)
{
    const auto cube = Cube().Make();
    EXPECT_EQ(1, cube->Project({-1, -1, -1}).triangle);
    const auto sheet = Sheet(20).Make();
    EXPECT_EQ(1, sheet->Project({0, 0, 1}).triangle);
    // Vertex (10, 10) belongs to six triangles, first to the second half of the cell below left of it.
    EXPECT_EQ(2 * (9 * 20 + 9) + 1, sheet->Project({0.5, 0.5, 1}).triangle);
}

TEST(ZORGeoSurfaceTest, PlacesThatAreNotFiniteProjectNowhere)
{
    const auto cube = Cube().Make();
    for (const double value : {kNan, kInfinity, -kInfinity, 1e61}) {
        EXPECT_TRUE(cube->Project({value, 0, 0}).IsNull());
        EXPECT_TRUE(cube->IntersectRay({0, value, 0}, {0, 0, 1}).IsNull());
        EXPECT_TRUE(cube->IntersectRay({0, 0, 0}, {0, 0, value}).IsNull());
    }
    EXPECT_TRUE(cube->IntersectRay({0.5, 0.5, 0.5}, {0, 0, 0}).IsNull());
}

TEST(ZORGeoSurfaceTest, ProjectionIsTheNearestOfAllTriangles)
{
    std::mt19937 random(17);
    std::normal_distribution<double> coordinate(0, 1);
    for (const int size : {1, 3, 4, 5, 17, 300, 3000}) {
        const auto soup = Soup(size, unsigned(size)).Make();
        for (int i = 0; i < 300; ++i) {
            const double spread = i % 3 == 0 ? 0.3 : i % 3 == 1 ? 1 : 100;
            const ZORMathPoint p(spread * coordinate(random), spread * coordinate(random),
                                 spread * coordinate(random));
            const ZORGeoLocationOnSurface location = soup->Project(p);
            ExpectConsistent(*soup, location);
            EXPECT_NEAR(SurfaceDistance(*soup, p), p.DistanceTo(location.point), 1e-12 * (1 + spread) + 1e-9)
                << size << ' ' << i;
        }
    }
}

TEST(ZORGeoSurfaceTest, DegenerateTrianglesAreSegmentsAndPoints)
{
    const auto point = TestMesh{{{1, 2, 3}, {1, 2, 3}, {1, 2, 3}}, {{0, 1, 2}, {0, 0, 0}}}.Make();
    EXPECT_EQ(ZORMathPoint(1, 2, 3), point->Project({7, 7, 7}).point);
    const auto segment = TestMesh{{{0, 0, 0}, {4, 0, 0}, {1, 0, 0}}, {{0, 1, 2}}}.Make();
    EXPECT_TRUE(IsNear({3, 0, 0}, segment->Project({3, 5, 0}).point));
    EXPECT_TRUE(IsNear({4, 0, 0}, segment->Project({9, 5, 0}).point));
    EXPECT_TRUE(segment->IntersectRay({2, 0, 1}, {0, 0, -1}).IsNull());
}

TEST(ZORGeoSurfaceTest, ExtremeSizesStayFinite)
{
    for (const double scale : {1e-300, 1e-150, 1e-40, 1e-12, 1e12, 1e40, 5e59}) {
        TestMesh mesh = Soup(200, 8);
        for (ZORMathPoint& vertex : mesh.vertices)
            vertex *= scale;
        const auto soup = mesh.Make();
        for (const ZORMathPoint& p : {ZORMathPoint(0, 0, 0), ZORMathPoint(scale, -scale, scale),
                                      ZORMathPoint(1e60, 1e60, -1e60), mesh.vertices[5]}) {
            const ZORGeoLocationOnSurface location = soup->Project(p);
            EXPECT_FALSE(location.IsNull());
            EXPECT_TRUE(location.point.IsFinite()) << scale;
            EXPECT_TRUE(std::isfinite(location.weightB) && std::isfinite(location.weightC)) << scale;
        }
        const ZORGeoLocationOnSurface hit = soup->IntersectRay({0, 0, 2 * std::min(scale, 5e59)}, {0, 0, -1});
        EXPECT_TRUE(hit.point.IsFinite()) << scale;
    }
}

// Millimetres far from the origin, as in machine coordinates.
TEST(ZORGeoSurfaceTest, PrecisionHoldsFarFromTheOrigin)
{
    TestMesh mesh = Sheet(30);
    for (ZORMathPoint& vertex : mesh.vertices)
        vertex = vertex + ZORMathVector(1e7, -2e7, 3e7);
    const auto sheet = mesh.Make();
    const ZORGeoLocationOnSurface location = sheet->Project({1e7 + 0.3, -2e7 + 0.7, 3e7 + 0.1});
    EXPECT_LE(location.point.DistanceTo({1e7 + 0.3, -2e7 + 0.7, 3e7}), 1e-8);
}

TEST(ZORGeoSurfaceTest, ARayHitsTheFirstTriangleFromEitherFace)
{
    const auto cube = Cube().Make();
    double parameter = 0;
    ZORGeoLocationOnSurface hit = cube->IntersectRay({0.25, 0.5, 5}, {0, 0, -2}, &parameter);
    EXPECT_TRUE(IsNear({0.25, 0.5, 1}, hit.point));
    EXPECT_DOUBLE_EQ(2, parameter);
    hit = cube->IntersectRay({0.25, 0.5, 0.5}, {0, 0, -2}, &parameter);
    EXPECT_TRUE(IsNear({0.25, 0.5, 0}, hit.point));
    EXPECT_DOUBLE_EQ(0.25, parameter);
    EXPECT_TRUE(cube->IntersectRay({0.25, 0.5, 5}, {0, 0, 1}, &parameter).IsNull());
    EXPECT_TRUE(cube->IntersectRay({2, 0.5, 5}, {0, 0, -1}, &parameter).IsNull());
    EXPECT_DOUBLE_EQ(0.25, parameter);
}

TEST(ZORGeoSurfaceTest, RaysSlipThroughNoEdge)
{
    const auto sheet = Sheet(10).Make();
    std::mt19937 random(23);
    std::uniform_real_distribution<double> coordinate(0.01, 0.99);
    for (int i = 0; i < 3000; ++i) {
        // Places on the lines between the cells and on their diagonals.
        const double u = coordinate(random);
        const double line = double(1 + random() % 9) / 10;
        const ZORMathPoint target = i % 3 == 0   ? ZORMathPoint(u, line, 0)
                                    : i % 3 == 1 ? ZORMathPoint(line, u, 0)
                                                 : ZORMathPoint(u, u, 0);
        const ZORMathVector direction(coordinate(random), -coordinate(random), -coordinate(random));
        const ZORGeoLocationOnSurface hit = sheet->IntersectRay(target - direction, direction);
        ASSERT_FALSE(hit.IsNull()) << i;
        EXPECT_LE(hit.point.DistanceTo(target), 1e-12);
    }
}

// Signed volumes instead of the SDK's edge functions; rays within rounding of an edge are left out.
std::optional<double> FirstParameter(const ZORGeoSurface& surface, const ZORMathPoint& o,
                                     const ZORMathVector& d)
{
    double first = kInfinity;
    for (const auto [ia, ib, ic] : surface.GetCornerArray()) {
        const ZORMathPoint& a = surface.GetVertexArray()[ia];
        const ZORMathPoint& b = surface.GetVertexArray()[ib];
        const ZORMathPoint& c = surface.GetVertexArray()[ic];
        const double weights[3] = {Dot(d, Cross(b - o, c - o)), Dot(d, Cross(c - o, a - o)),
                                   Dot(d, Cross(a - o, b - o))};
        const auto [least, most] = std::minmax_element(std::begin(weights), std::end(weights));
        const double parameter = Dot(a - o, Cross(b - a, c - a)) / Dot(d, Cross(b - a, c - a));
        if (std::min(std::abs(*least), std::abs(*most)) < 1e-7)
            return std::nullopt;
        if ((*least > 0 || *most < 0) && parameter >= 0)
            first = std::min(first, parameter);
    }
    return first;
}

TEST(ZORGeoSurfaceTest, ARayHitsTheFirstOfAllTriangles)
{
    std::mt19937 random(29);
    std::normal_distribution<double> coordinate(0, 1);
    TestMesh mesh;
    for (int i = 0; i < 900; ++i)
        mesh.vertices.append(ZORMathPoint(coordinate(random), coordinate(random), coordinate(random)));
    for (int i = 0; i < 300; ++i)
        mesh.triangles.append({3 * i, 3 * i + 1, 3 * i + 2});
    const auto surface = mesh.Make();
    int compared = 0;
    int hits = 0;
    for (int i = 0; i < 2000; ++i) {
        const ZORMathPoint origin(3 * coordinate(random), 3 * coordinate(random), 3 * coordinate(random));
        const ZORMathVector direction =
            i % 5 == 0 ? ZORMathVector(0, 0, coordinate(random))
                       : ZORMathVector(coordinate(random), coordinate(random), coordinate(random));
        const std::optional<double> expected = FirstParameter(*surface, origin, direction);
        if (!expected)
            continue;
        double parameter = kInfinity;
        const ZORGeoLocationOnSurface hit = surface->IntersectRay(origin, direction, &parameter);
        ++compared;
        ASSERT_EQ(std::isinf(*expected), hit.IsNull()) << i;
        if (hit.IsNull())
            continue;
        ++hits;
        EXPECT_NEAR(*expected, parameter, 1e-9 * (1 + *expected));
        EXPECT_LE(hit.point.DistanceTo(origin + parameter * direction), 1e-9 * (1 + *expected));
        ExpectConsistent(*surface, hit);
    }
    EXPECT_GT(compared, 1500);
    EXPECT_GT(hits, 300);
}

TEST(ZORGeoSurfaceTest, ManyThreadsMayAskAtOnce)
{
    const auto soup = Soup(2000, 31).Make();
    std::array<double, 8> sums = {};
    std::vector<std::thread> threads;
    threads.reserve(sums.size());
    for (double& sum : sums) {
        threads.emplace_back([&sum, &soup] {
            for (int i = 0; i < 500; ++i)
                sum += soup->Project({i * 0.002, 0.5, 1 - i * 0.004}).point.GetX();
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    for (const double sum : sums)
        EXPECT_EQ(sums[0], sum);
}

TEST(ZORGeoSurfaceTest, RealMeshesProjectExactly)
{
    ZOR_REQUIRE_TEST_DATA(path, "meshes/meshes/fandisk.stl");
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    ZORGeoContainer container;
    const ZORGeoSurface& surface =
        *ZORGeoStlLoader(&file).Load(&container, ZORSysValue::Millimeter).constFirst();
    EXPECT_NEAR(60.6691074, surface.GetArea(), 1e-6);
    std::mt19937 random(37);
    std::uniform_real_distribution<double> coordinate(-5, 25);
    for (int i = 0; i < 100; ++i) {
        const ZORMathPoint p(coordinate(random), coordinate(random), coordinate(random));
        EXPECT_NEAR(SurfaceDistance(surface, p), p.DistanceTo(surface.Project(p).point), 1e-11);
    }
    for (int i = 0; i < 100; ++i) {
        const ZORMathPoint vertex = surface.GetVertexArray()[i * 60];
        EXPECT_EQ(vertex, surface.Project(vertex).point);
    }
}

} // namespace
