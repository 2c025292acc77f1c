// Tests of ZORGeoCurveOnSurfaceProcessor: starts in vertices, on edges and borders, wrong and extreme input.

#include "TraceShots.h"
#include "support/MessageOf.h"

#include <ZORSystem/ZORSysException.h>

#include <cmath>
#include <tuple>

namespace {

TEST(ZORGeoCurveOnSurfaceStartsTest, LeavesAVertexWithTheSameAngleOnBothSides)
{
    const auto cube = Cube().Make();
    // Towards the corner (1, 1, 1) on the diagonal of the top; 270 degrees are around it, so that it goes on
    // in the middle between the two other faces: down the edge.
    const Result result = Shoot(*cube, cube->Project({0.25, 0.25, 1}), 0.75 * std::sqrt(2) + 0.5, {1, 1, 0});
    EXPECT_TRUE(IsNear({1, 1, 0.5}, EndOf(result)));
    // Up the edge and back.
    const Result back = Shoot(*cube, cube->Project({1, 1, 0.5}), 0.5 + 0.75 * std::sqrt(2), {0, 0, 1});
    EXPECT_TRUE(IsNear({0.25, 0.25, 1}, EndOf(back)));
}

TEST(ZORGeoCurveOnSurfaceStartsTest, ScalesAnglesAtAVertex)
{
    const auto cube = Cube().Make();
    for (const int triangle : {3, 4, 7, 8, 9, 10}) {
        for (int corner = 0; corner < 3; ++corner) {
            if (CornersOf(*cube, triangle)[size_t(corner)] != ZORMathPoint(1, 1, 1))
                continue;
            const auto start = CornerOf(*cube, triangle, corner);
            const auto shoot = [&](double angle) {
                return EndOf(Shoot(*cube, start, 0.5, {-1, 0, 0}, angle));
            };
            // The three edges are 120 degrees from each other as seen from the corner, 90 on the cube.
            EXPECT_TRUE(IsNear({0.5, 1, 1}, shoot(0)));
            EXPECT_TRUE(IsNear({1, 0.5, 1}, shoot(2 * kPi / 3)));
            EXPECT_TRUE(IsNear({1, 1, 0.5}, shoot(4 * kPi / 3)));
            const double diagonal = 0.5 * std::sqrt(0.5);
            EXPECT_TRUE(IsNear({1 - diagonal, 1 - diagonal, 1}, shoot(kPi / 3)));
            // Half way around.
            EXPECT_TRUE(IsNear({1, 1 - diagonal, 1 - diagonal}, shoot(kPi)));
            EXPECT_TRUE(IsNear({1, 1 - diagonal, 1 - diagonal}, shoot(-kPi)));
        }
    }
}

TEST(ZORGeoCurveOnSurfaceStartsTest, TheSidesOfAVertexStartHaveTheSameAngleBetweenThem)
{
    const auto cube = Cube().Make();
    const Result result =
        Processor(cube.get(), 0.5, 0.5).ComputeGeodesic(cube->Project({1, 1, 1}), {-1, 0, 0}, 0);
    ExpectConsistent(*cube, result);
    EXPECT_TRUE(IsNear({0.5, 1, 1}, EndOf(result)));
    const double diagonal = 0.5 * std::sqrt(0.5);
    EXPECT_TRUE(IsNear({1, 1 - diagonal, 1 - diagonal}, BeginOf(result)));
}

TEST(ZORGeoCurveOnSurfaceStartsTest, AnEdgeStartTakesThePlaneBetweenBothTriangles)
{
    const auto cube = Cube().Make();
    const auto start = cube->Project({1, 0.5, 1});
    // The plane rises at 45 degrees; its normal is (1, 0, 1).
    for (const ZORMathVector& direction :
         {ZORMathVector(-1, 0, 0), ZORMathVector(0, 0, 1), ZORMathVector(-1, 0, 3)}) {
        const Result result = Processor(cube.get(), 0.25, 0.25).ComputeGeodesic(start, direction, 0);
        ExpectConsistent(*cube, result);
        EXPECT_TRUE(IsNear({0.75, 0.5, 1}, EndOf(result)));
        EXPECT_TRUE(IsNear({1, 0.5, 0.75}, BeginOf(result)));
    }
    const Result slanting = Shoot(*cube, start, 0.1, {-1, 0, 1}, kPi / 6);
    EXPECT_TRUE(IsNear({1 - 0.1 * std::cos(kPi / 6), 0.5 - 0.1 * std::sin(kPi / 6), 1}, EndOf(slanting)));
    const Result along = Shoot(*cube, start, kNan, {0, 1, 0});
    EXPECT_TRUE(IsNear({1, 1, 1}, along.GetLocations().at(1).point));
}

TEST(ZORGeoCurveOnSurfaceStartsTest, AVanishingProjectionTakesTheFirstSideOfTheTriangle)
{
    const auto cube = Cube().Make();
    // Triangle 3 of the top has A (0, 0, 1) and B (1, 0, 1).
    const ZORGeoLocationOnSurface inside{cube.get(), 3, 0.25, 0.25, {0.5, 0.25, 1}};
    for (const ZORMathVector& direction :
         {ZORMathVector(), ZORMathVector(0, 0, 1), ZORMathVector(1e-13, 1e-14, -1)}) {
        EXPECT_TRUE(IsNear({0.75, 0.25, 1}, EndOf(Shoot(*cube, inside, 0.25, direction))));
        EXPECT_TRUE(IsNear({0.5, 0.35, 1}, EndOf(Shoot(*cube, inside, 0.1, direction, kPi / 2))));
    }
    // Directions that are only small do not vanish.
    EXPECT_TRUE(IsNear({0.5, 0.35, 1}, EndOf(Shoot(*cube, inside, 0.1, {0, 1e-300, 0}))));
    // In a corner and on a side, too.
    EXPECT_TRUE(IsNear({0.25, 0, 1}, EndOf(Shoot(*cube, CornerOf(*cube, 3, 0), 0.25, {}))));
    EXPECT_TRUE(
        IsNear({1, 0.5, 0.75}, EndOf(Shoot(*cube, {cube.get(), 3, 0.5, 0.5, {1, 0.5, 1}}, 0.25, {}))));
}

TEST(ZORGeoCurveOnSurfaceStartsTest, BorderStartsStayOnTheSurface)
{
    const auto sheet = Sheet(10).Make();
    const auto onSide = sheet->Project({0.55, 0, 0});
    const Result out = ShootBoth(*sheet, onSide, {0, -1, 0});
    EXPECT_EQ(0, out.GetEndLength());
    EXPECT_EQ(Result::Border, out.GetEndReason());
    EXPECT_NEAR(1, out.GetStartLength(), 1e-12);
    EXPECT_TRUE(IsNear({0.55, 1, 0}, BeginOf(out)));
    EXPECT_TRUE(IsNear({0.55, 0, 0}, EndOf(out)));
    const Result along = ShootBoth(*sheet, onSide, {1, 0, 0});
    EXPECT_TRUE(IsNear({0, 0, 0}, BeginOf(along)));
    EXPECT_TRUE(IsNear({1, 0, 0}, EndOf(along)));
    const auto corner = sheet->Project({0, 0, 0});
    for (const double angle : {0.0, 0.3, kPi / 4, 1.2, kPi / 2}) {
        const Result inwards = ShootBoth(*sheet, corner, {1, 0, 0}, angle);
        EXPECT_NEAR(1 / std::max(std::cos(angle), std::sin(angle)), inwards.GetEndLength(), 1e-12) << angle;
        EXPECT_EQ(0, inwards.GetStartLength());
        const Result outwards = ShootBoth(*sheet, corner, {-1, 0, 0}, angle);
        EXPECT_EQ(0, outwards.GetEndLength());
        EXPECT_NEAR(inwards.GetEndLength(), outwards.GetStartLength(), 1e-12) << angle;
    }
    const Result outside = ShootBoth(*sheet, corner, {-1, 1, 0});
    EXPECT_EQ(1, outside.GetLocations().size());
    EXPECT_EQ(Result::Border, outside.GetStartReason());
    EXPECT_EQ(Result::Border, outside.GetEndReason());
}

TEST(ZORGeoCurveOnSurfaceStartsTest, StartsInTrianglesWithoutArea)
{
    const auto sheet = SliverSheet(8).Make();
    const int sliver = 3;
    const ZORGeoLocationOnSurface middle{sheet.get(), sliver, 0.5, 0.25, CornersOf(*sheet, sliver)[0]};
    const TestTriangle t = CornersOf(*sheet, sliver);
    ZORGeoLocationOnSurface start = middle;
    start.point = t[0] + 0.5 * (t[1] - t[0]) + 0.25 * (t[2] - t[0]);
    const Result result = ShootBoth(*sheet, start, {1, 0, 0}, 0);
    EXPECT_TRUE(IsNear({1, start.point.GetY(), 0}, EndOf(result)));
    EXPECT_TRUE(IsNear({0, start.point.GetY(), 0}, BeginOf(result)));
    const Result atCorner = ShootBoth(*sheet, CornerOf(*sheet, sliver, 1), {0, 1, 0}, 0);
    EXPECT_TRUE(IsNear({0.0625, 1, 0}, EndOf(atCorner)));
}

TEST(ZORGeoCurveOnSurfaceStartsTest, TrianglesAloneWithoutAreaGiveTheStart)
{
    const QList<TestMesh> meshes = {{{{0, 0, 0}, {1, 0, 0}, {2, 0, 0}}, {{0, 1, 2}}},
                                    {{{0, 0, 0}, {1, 0, 0}, {2, 0, 0}}, {{0, 1, 1}}},
                                    {{{1, 2, 3}, {1, 2, 3}, {1, 2, 3}}, {{0, 1, 2}}},
                                    {{{1, 2, 3}, {1, 2, 3}, {1, 2, 3}}, {{0, 0, 0}}}};
    for (const TestMesh& mesh : meshes) {
        const auto surface = mesh.Make();
        for (const ZORMathVector& direction : {ZORMathVector(), ZORMathVector(1, 2, 3)}) {
            const ZORGeoLocationOnSurface start{surface.get(), 1, 0.25, 0.5, CornersOf(*surface, 1)[0]};
            const Result result = Processor(surface.get(), kNan, 1).ComputeGeodesic(start, direction, 1);
            EXPECT_EQ(1, result.GetLocations().size());
            EXPECT_EQ(Result::Degenerate, result.GetStartReason());
            EXPECT_EQ(Result::Degenerate, result.GetEndReason());
        }
    }
}

TEST(ZORGeoCurveOnSurfaceStartsTest, RefusesWrongInput)
{
    const auto cube = Cube().Make();
    const auto other = Cube().Make();
    EXPECT_EQ(QString("surface is null"), MessageOf([] { Processor(nullptr, 1, 1); }));
    for (const double length : {-1.0, -1e-300, -kInfinity}) {
        EXPECT_EQ(QString("start length is negative"), MessageOf([&] { Processor(cube.get(), length, 1); }));
        EXPECT_EQ(QString("end length is negative"), MessageOf([&] { Processor(cube.get(), kNan, length); }));
    }
    const Processor processor(cube.get(), 1, 1);
    const auto message = [&](const ZORGeoLocationOnSurface& start, const ZORMathVector& direction,
                             double angle) {
        const QString text = MessageOf([&] { processor.ComputeGeodesic(start, direction, angle); });
        EXPECT_EQ(text, MessageOf([&] { processor.ComputeConstantAngle(start, direction, angle); }));
        return text;
    };
    const auto start = cube->Project({0.3, 0.4, 1});
    EXPECT_EQ(QString("start location is not on a surface"), message({}, {1, 0, 0}, 0));
    EXPECT_EQ(QString("start location is on another surface"),
              message(other->Project({0, 0, 0}), {1, 0, 0}, 0));
    for (const auto& [triangle, b, c] :
         {std::tuple(0, 0.2, 0.2), std::tuple(13, 0.2, 0.2), std::tuple(1, -0.1, 0.5),
          std::tuple(1, 0.6, 0.6), std::tuple(1, kNan, 0.5), std::tuple(1, 0.5, kInfinity)})
        EXPECT_EQ(QString("start location is not within its triangle"),
                  message({cube.get(), triangle, b, c, {}}, {1, 0, 0}, 0));
    for (const double value : {kNan, kInfinity, -kInfinity}) {
        EXPECT_EQ(QString("direction is not finite"), message(start, {0, value, 1}, 0));
        EXPECT_EQ(QString("angle is not finite"), message(start, {0, 1, 1}, value));
    }
}

TEST(ZORGeoCurveOnSurfaceStartsTest, TakesExtremeDirectionsAnglesAndLengths)
{
    const auto sheet = Sheet(4).Make();
    const auto start = sheet->Project({0.3, 0.4, 0});
    for (const double size : {1e-300, 1e-150, 1e150, 1e300}) {
        const Result result = ShootBoth(*sheet, start, {size, 0, size});
        EXPECT_TRUE(IsNear({1, 0.4, 0}, EndOf(result))) << size;
    }
    const Result turned = ShootBoth(*sheet, start, {1, 0, 0}, 2e6 * kPi);
    EXPECT_TRUE(IsNear({1, 0.4, 0}, EndOf(turned)));
    const Result endless = Processor(sheet.get(), kInfinity, 1e300).ComputeGeodesic(start, {1, 0, 0}, 0);
    EXPECT_EQ(Result::Border, endless.GetStartReason());
    EXPECT_EQ(Result::Border, endless.GetEndReason());
    const Result tiny = Processor(sheet.get(), 0, 1e-300).ComputeGeodesic(start, {1, 0, 0}, 0);
    EXPECT_EQ(Result::Length, tiny.GetEndReason());
    for (const double scale : {1e-50, 1e50}) {
        TestMesh mesh = Sheet(4);
        for (ZORMathPoint& vertex : mesh.vertices)
            vertex *= scale;
        const auto scaled = mesh.Make();
        const Result result =
            Processor(scaled.get(), kNan, kNan)
                .ComputeGeodesic(scaled->Project({0.3 * scale, 0.4 * scale, 0}), {1, 0, 0}, 0.3);
        EXPECT_NEAR(0.7 / std::cos(0.3), result.GetEndLength() / scale, 1e-12);
    }
}

} // namespace
