// Tests of ZORGeoCurveOnSurfaceProcessor: curves of constant angle.

#include "TestMeshes.h"
#include "TraceChecks.h"

#include <ZORGeometry/ZORGeoCurveOnSurfaceProcessor.h>
#include <ZORSystem/ZORSysException.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>
#include <random>

namespace {

using Processor = ZORGeoCurveOnSurfaceProcessor;
using Result = ZORGeoCurveOnSurfaceResult;

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kPi = std::numbers::pi;

Result Follow(const ZORGeoSurface& surface, const ZORMathPoint& start, double startLength, double endLength,
              const ZORMathVector& direction, double angle)
{
    const Result result = Processor(&surface, startLength, endLength)
                              .ComputeConstantAngle(surface.Project(start), direction, angle);
    ExpectConsistent(surface, result);
    return result;
}

ZORMathPoint OnSphere(double longitude, double latitude)
{
    return {100 * std::cos(latitude) * std::cos(longitude), 100 * std::cos(latitude) * std::sin(longitude),
            100 * std::sin(latitude)};
}

TEST(ZORGeoConstantAngleTest, IsALineOfConstantBearingOnASphere)
{
    constexpr double kLength = 306.180080803;
    constexpr double kTurned = 3.618312084;
    const auto error = [](int rows) {
        const auto sphere = Sphere(100, rows).Make();
        double sum = 0;
        for (int i = 0; i < 10; ++i) {
            const double longitude = 0.1234 + 0.31 * i;
            // Clockwise from north, seen from outside.
            const Result result =
                Follow(*sphere, OnSphere(longitude, 0), 0, kLength, {0, 0, 1}, -70 * kPi / 180);
            sum += EndOf(result).DistanceTo(OnSphere(longitude + kTurned, kPi / 3)) / 10;
        }
        return sum;
    };
    const double fine = error(96);
    EXPECT_LT(fine, 0.05);
    EXPECT_NEAR(16, error(24) / fine, 0.5);
}

TEST(ZORGeoConstantAngleTest, TheStartSideRunsTheOppositeWay)
{
    const auto sphere = Sphere(100, 96).Make();
    const Result result = Follow(*sphere, OnSphere(0.1, 0), 306.18, 306.18, {0, 0, 1}, -70 * kPi / 180);
    EXPECT_LT(EndOf(result).DistanceTo(OnSphere(0.1 + 3.618312, kPi / 3)), 0.1);
    EXPECT_LT(BeginOf(result).DistanceTo(OnSphere(0.1 - 3.618312, -kPi / 3)), 0.1);
    const Result flipped = Follow(*sphere, OnSphere(0.1, 0), 306.18, 306.18, {0, 0, 1}, 110 * kPi / 180);
    EXPECT_TRUE(IsNear(EndOf(result), BeginOf(flipped)));
    EXPECT_TRUE(IsNear(BeginOf(result), EndOf(flipped)));
}

TEST(ZORGeoConstantAngleTest, ClimbsAPrismAsTheStraightestCurveDoes)
{
    const auto prism = Prism(64, 50, 400, 7).Make();
    const auto start = prism->Project({50, 0, 10});
    const Processor processor(prism.get(), kNan, 500);
    const Result straight = processor.ComputeGeodesic(start, {0, 0, 1}, -kPi / 3);
    const Result constant = processor.ComputeConstantAngle(start, {0, 0, 1}, -kPi / 3);
    ExpectConsistent(*prism, constant);
    EXPECT_LE(EndOf(straight).DistanceTo(EndOf(constant)), 1e-9);
    EXPECT_LE(BeginOf(straight).DistanceTo(BeginOf(constant)), 1e-9);
    EXPECT_EQ(Result::Border, constant.GetStartReason());
}

TEST(ZORGeoConstantAngleTest, EveryTriangleIsCrossedAtTheAngle)
{
    const auto torus = WithRandomWindings(Torus(40, 20, 100, 30), 4).Make();
    std::mt19937 random(3);
    std::uniform_real_distribution<double> angles(-kPi, kPi);
    const ZORMathVector axis = ZORMathVector(1, 2, 5).GetNormalized();
    int crossed = 0;
    for (int i = 0; i < 100; ++i) {
        const double around = angles(random);
        const double angle = angles(random);
        const Result result =
            Follow(*torus, {130 * std::cos(around), 130 * std::sin(around), 3}, 100, 200, axis, angle);
        const auto locations = result.GetLocations();
        for (qsizetype k = 0; k + 1 < locations.size(); ++k) {
            const TestTriangle t = CornersOf(*torus, locations[k].triangle);
            const ZORMathVector normal = Cross(t[1] - t[0], t[2] - t[0]).GetNormalized();
            const ZORMathVector zero = (axis - Dot(axis, normal) * normal).GetNormalized();
            const ZORMathVector way = locations[k + 1].point - locations[k].point;
            const ZORMathPoint middle = locations[k].point + 0.5 * way;
            double toEdge = 1;
            for (size_t side = 0; side < 3; ++side)
                toEdge =
                    std::min(toEdge, middle.DistanceTo(NearestOnSegment(middle, t[side], t[(side + 1) % 3])));
            if (way.GetLength() < 1e-3 || toEdge < 1e-9)
                continue; // too short to tell, or sliding along an edge
            ++crossed;
            ASSERT_NEAR(std::cos(angle), Dot(way.GetNormalized(), zero), 1e-6) << i << ' ' << k;
        }
    }
    EXPECT_GT(crossed, 2000);
}

TEST(ZORGeoConstantAngleTest, ClosesOnCirclesOfLatitude)
{
    const auto sphere = Sphere(100, 24).Make();
    for (const double latitude : {0.4, 2 * kPi / 24, 0.0}) {
        const Result result = Follow(*sphere, OnSphere(0.2, latitude), kNan, kNan, {0, 0, 1}, kPi / 2);
        EXPECT_EQ(Result::Closed, result.GetEndReason());
        EXPECT_EQ(Result::Closed, result.GetStartReason());
        EXPECT_EQ(BeginOf(result), EndOf(result));
        for (const auto& location : result.GetLocations())
            ASSERT_NEAR(BeginOf(result).GetZ(), location.point.GetZ(), 1e-9);
    }
}

TEST(ZORGeoConstantAngleTest, EndsAtThePoles)
{
    const auto sphere = Sphere(100, 24).Make();
    for (const double bearing : {0.0, 0.7, 1.3, -1.3}) {
        const Result result = Follow(*sphere, OnSphere(0.2, 0.3), kNan, kNan, {0, 0, 1}, bearing);
        EXPECT_EQ(Result::Degenerate, result.GetEndReason()) << bearing;
        EXPECT_EQ(Result::Degenerate, result.GetStartReason()) << bearing;
        EXPECT_LE(EndOf(result).DistanceTo({0, 0, 100}), 1e-9) << bearing;
        EXPECT_LE(BeginOf(result).DistanceTo({0, 0, -100}), 1e-9) << bearing;
    }
}

TEST(ZORGeoConstantAngleTest, EndsWhereTheProjectionVanishes)
{
    const auto cube = Cube().Make();
    const Result up = Follow(*cube, {1, 0.3, 0.5}, kNan, kNan, {0, 0, 1}, 0.2);
    EXPECT_EQ(Result::Degenerate, up.GetEndReason());
    EXPECT_NEAR(1, EndOf(up).GetZ(), 1e-12);
    EXPECT_NEAR(0, BeginOf(up).GetZ(), 1e-12);
    for (const ZORMathVector& direction : {ZORMathVector(), ZORMathVector(0, 0, 1)}) {
        const Result nowhere = Follow(*cube, {0.4, 0.3, 1}, kNan, 1, direction, 1);
        EXPECT_EQ(1, nowhere.GetLocations().size());
        EXPECT_EQ(Result::Degenerate, nowhere.GetStartReason());
        EXPECT_EQ(Result::Degenerate, nowhere.GetEndReason());
    }
}

TEST(ZORGeoConstantAngleTest, SlidesAlongAnEdgeThatBothSidesPushInto)
{
    // A valley along x whose flanks rise by 45 degrees; down and a little ahead.
    const auto valley = TestMesh{{{0, -1, 1}, {4, -1, 1}, {0, 0, 0}, {4, 0, 0}, {0, 1, 1}, {4, 1, 1}},
                                 {{0, 1, 3}, {0, 3, 2}, {2, 3, 5}, {2, 5, 4}}}
                            .Make();
    const Result result = Follow(*valley, {1, -0.5, 0.5}, 0, kNan, {0.5, 0, -1}, 0);
    EXPECT_TRUE(IsNear({4, 0, 0}, EndOf(result)));
    EXPECT_EQ(Result::Border, result.GetEndReason());
    // The fall line comes down steeper than the valley: 0.5 ahead for 1 down.
    const double ahead = 0.5 * 0.5 / 0.5;
    bool isInValley = false;
    for (const auto& location : result.GetLocations())
        isInValley = isInValley || location.point.DistanceTo({1 + ahead, 0, 0}) < 1e-9;
    EXPECT_TRUE(isInValley);
    // A start in the valley, and one in its end.
    EXPECT_TRUE(IsNear({4, 0, 0}, EndOf(Follow(*valley, {1, 0, 0}, 0, kNan, {0.5, 0, -1}, 0))));
    EXPECT_TRUE(IsNear({4, 0, 0}, EndOf(Follow(*valley, {0, 0, 0}, 0, kNan, {0.5, 0, -1}, 0))));
    // Head on, there is no way.
    const Result stuck = Follow(*valley, {1, -0.5, 0.5}, 0, kNan, {0, 0, -1}, 0);
    EXPECT_TRUE(IsNear({1, 0, 0}, EndOf(stuck)));
    EXPECT_EQ(Result::Degenerate, stuck.GetEndReason());
}

TEST(ZORGeoConstantAngleTest, IsAStraightLineOnFlatSheets)
{
    std::mt19937 random(5);
    std::uniform_real_distribution<double> inside(0.01, 0.99);
    std::uniform_real_distribution<double> angles(-kPi, kPi);
    for (const auto& mesh : {JitteredSheet(16, 3), SliverSheet(16), DoubledSheet(16)}) {
        const auto sheet = mesh.Make();
        for (int i = 0; i < 100; ++i) {
            const double x = inside(random);
            const ZORMathPoint start(x, inside(random), 0);
            const double angle = angles(random);
            const Result straight =
                Processor(sheet.get(), kNan, 0.3).ComputeGeodesic(sheet->Project(start), {1, 0, 2}, angle);
            const Result constant = Follow(*sheet, start, kNan, 0.3, {1, 0, 2}, angle);
            ASSERT_LE(EndOf(straight).DistanceTo(EndOf(constant)), 1e-9);
            ASSERT_LE(BeginOf(straight).DistanceTo(BeginOf(constant)), 1e-9);
            ASSERT_EQ(straight.GetStartReason(), constant.GetStartReason());
        }
    }
    const auto sheet = Sheet(10).Make();
    for (const ZORMathVector& direction : {ZORMathVector(1, 1, 0), ZORMathVector(1, 0, 0)}) {
        const Result exact = Follow(*sheet, {0.5, 0.5, 0}, kNan, kNan, direction, 0);
        EXPECT_TRUE(IsNear({1, direction.GetY() > 0 ? 1 : 0.5, 0}, EndOf(exact)));
        EXPECT_TRUE(IsNear({0, direction.GetY() > 0 ? 0 : 0.5, 0}, BeginOf(exact)));
    }
}

TEST(ZORGeoConstantAngleTest, BorderStartsStayOnTheSurface)
{
    const auto sheet = Sheet(10).Make();
    const Result out = Follow(*sheet, {0.55, 0, 0}, kNan, kNan, {0, -1, 0}, 0);
    EXPECT_EQ(0, out.GetEndLength());
    EXPECT_EQ(Result::Border, out.GetEndReason());
    EXPECT_NEAR(1, out.GetStartLength(), 1e-12);
    const Result corner = Follow(*sheet, {0, 0, 0}, kNan, kNan, {1, 2, 0}, 0);
    EXPECT_TRUE(IsNear({0.5, 1, 0}, EndOf(corner)));
    EXPECT_EQ(0, corner.GetStartLength());
    EXPECT_EQ(Result::Border, corner.GetStartReason());
}

} // namespace
