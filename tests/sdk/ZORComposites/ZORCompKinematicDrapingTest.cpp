// Tests the draped net on surfaces of which it is known.

#include "DrapingChecks.h"
#include "sdk/ZORGeometry/TestMeshes.h"
#include "support/SharedValue.h"

#include <ZORMathematics/ZORMathPoint.h>

#include <algorithm>
#include <array>
#include <limits>

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

// Between the two cells that a node of the diagonal is between.
double ShearOnDiagonal(const ZORCompDrapingNet& net, int node)
{
    const int before = net.FindCell(node - 1, node - 1);
    const int after = net.FindCell(node, node);
    return before < 0 || after < 0 ? kNaN : (net.GetCells()[before].shear + net.GetCells()[after].shear) / 2;
}

// The largest error in degrees of the shear half, three quarters and a whole radius from the seed on both yarns.
double SphereError(const ZORGeoSurface& sphere, double radius, int stepsPerRadius, const ZORMathPoint& seed,
                   const ZORMathVector& direction)
{
    ZORCompStrategyParameters parameters = WithStep(radius / stepsPerRadius);
    parameters.warpExtent = parameters.weftExtent = 1.2 * radius;
    const ZORCompDrapingNet net = Drape(sphere, parameters, seed, direction);
    CheckNet(sphere, net);
    const std::array<double, 3> expected{14.274425, 31.674575, 54.318276};
    double error = 0;
    for (int i = 0; i < 3; ++i) {
        const double shear = ShearOnDiagonal(net, stepsPerRadius * (i + 2) / 4) / kDegree;
        error = std::max(error, std::abs(shear - expected[size_t(i)]));
    }
    return error;
}

} // namespace

TEST(ZORCompKinematicDrapingTest, ShearsNothingInThePlane)
{
    for (const double angle : {0.0, 30.0, 45.0, 77.0}) {
        for (const TestMesh& mesh : {Sheet(16), JitteredSheet(16, 4), SliverSheet(16), DoubledSheet(16),
                                     WithRandomWindings(JitteredSheet(16, 5), 6)}) {
            const auto sheet = mesh.Make();
            const ZORCompDrapingNet net =
                Drape(*sheet, WithStep(1.0 / 32, angle * kDegree), {0.5, 0.5, 0}, {1, 0, 0});
            CheckNet(*sheet, net);
            EXPECT_LT(net.GetMaximumShear(), 1e-8) << angle;
            EXPECT_GT(AreaOf(net), 0.85) << angle;
            for (const ZORCompDrapingCell& cell : net.GetCells())
                ASSERT_NEAR(angle * kDegree, cell.fibreAngle, 1e-8);
        }
    }
}

TEST(ZORCompKinematicDrapingTest, PutsNodesOnTheBorderWhereStepsEndThere)
{
    const auto sheet = Sheet(16).Make();
    const ZORCompDrapingNet net = Drape(*sheet, WithStep(1.0 / 32), {0.5, 0.5, 0}, {1, 0, 0});
    EXPECT_EQ(33 * 33, net.GetNodes().size());
    EXPECT_EQ(32 * 32, net.GetCells().size());
    EXPECT_EQ(0, net.GetMaximumShear());
    const int corner = net.FindNode(-16, 16);
    ASSERT_GE(corner, 0);
    EXPECT_EQ(ZORMathPoint(0, 1, 0), net.GetNodes()[corner].location.point);
    EXPECT_EQ(-1, net.FindNode(-17, 16));
    EXPECT_EQ(0, net.FindCell(-16, -16));
    EXPECT_EQ(-1, net.FindCell(16, 0)) << "a node without cell";
}

TEST(ZORCompKinematicDrapingTest, TurnsTheWeftByTheYarnAngle)
{
    const auto sheet = JitteredSheet(16, 1).Make();
    ZORCompStrategyParameters parameters = WithStep(1.0 / 32, 20 * kDegree);
    for (const double yarnAngle : {30.0, 60.0, 120.0, 150.0}) {
        parameters.yarnAngle = yarnAngle * kDegree;
        const ZORCompDrapingNet net = Drape(*sheet, parameters, {0.4, 0.6, 0}, {0, 1, 0});
        CheckNet(*sheet, net);
        EXPECT_LT(net.GetMaximumShear(), 1e-8);
        EXPECT_GT(AreaOf(net), 0.8);
        const ZORMathPoint seed = net.GetNodes()[net.FindNode(0, 0)].location.point;
        const ZORMathVector weft = net.GetNodes()[net.FindNode(0, 1)].location.point - seed;
        const double angle = std::atan2(weft.GetY(), weft.GetX()) / kDegree;
        EXPECT_NEAR(0, std::remainder(90 + 20 + yarnAngle - angle, 360), 1e-6);
    }
}

TEST(ZORCompKinematicDrapingTest, ReachesWhereTheYarnsThroughTheSeedDoNot)
{
    TestMesh mesh = Sheet(32);
    for (ZORMathPoint& vertex : mesh.vertices)
        vertex.SetX(8 * vertex.GetX());
    const auto strip = mesh.Make();
    const ZORCompDrapingNet net = Drape(*strip, WithStep(0.05, 45 * kDegree), {4, 0.5, 0}, {1, 0, 0});
    CheckNet(*strip, net);
    EXPECT_LT(net.GetMaximumShear(), 1e-8);
    EXPECT_GT(AreaOf(net), 0.9 * 8);
}

TEST(ZORCompKinematicDrapingTest, GoesAroundHoles)
{
    const TestMesh sheet = Sheet(32);
    TestMesh mesh{sheet.vertices, {}};
    for (const ZORGeoSurface::Corners& corners : sheet.triangles) {
        const ZORMathPoint corner = sheet.vertices[corners[0]];
        if (std::hypot(corner.GetX() - 0.6, corner.GetY() - 0.5) > 0.15)
            mesh.triangles.append(corners);
    }
    const auto surface = mesh.Make();
    for (const double angle : {0.0, 45.0}) {
        const ZORCompDrapingNet net =
            Drape(*surface, WithStep(0.02, angle * kDegree), {0.2, 0.45, 0}, {1, 0, 0});
        CheckNet(*surface, net);
        EXPECT_LT(net.GetMaximumShear(), 1e-7);
        EXPECT_GT(AreaOf(net), 0.9 * surface->GetArea());
        for (const ZORCompDrapingNode& node : net.GetNodes())
            EXPECT_LT(node.location.point.DistanceTo(surface->Project(node.location.point).point), 1e-12);
    }
}

TEST(ZORCompKinematicDrapingTest, KeepsWithinItsExtents)
{
    const auto sheet = Sheet(16).Make();
    ZORCompStrategyParameters parameters = WithStep(0.02);
    parameters.warpExtent = 0.2;
    parameters.weftExtent = 0.119;
    const ZORCompDrapingNet net = Drape(*sheet, parameters, {0.5, 0.5, 0}, {1, 0, 0});
    EXPECT_EQ(21 * 11, net.GetNodes().size());
    EXPECT_GE(net.FindNode(-10, 5), 0);
}

TEST(ZORCompKinematicDrapingTest, ShearsAlongTheDiagonalOfASphere)
{
    const auto sphere = Sphere(100, 256).Make();
    const double coarse = SphereError(*sphere, 100, 20, {100, 0, 0}, {0, 1, 0});
    const double fine = SphereError(*sphere, 100, 40, {100, 0, 0}, {0, 1, 0});
    EXPECT_LT(coarse, 0.04);
    EXPECT_LT(fine, 0.012) << "a quarter, but for the facets";
}

TEST(ZORCompKinematicDrapingTest, ShearsASphereAlikeFromEverySeed)
{
    const auto sphere = Sphere(100, 128).Make();
    EXPECT_LT(SphereError(*sphere, 100, 40, {87.3, 31.1, 44.7}, {0.2, 1, 0.3}), 0.1);
    EXPECT_LT(SphereError(*sphere, 100, 40, {10, 20, 95}, {1, 0.1, 0.3}), 0.1);
}

TEST(ZORCompKinematicDrapingTest, IsSymmetricOnASphere)
{
    const auto sphere = Sphere(100, 128).Make();
    ZORCompStrategyParameters parameters = WithStep(5);
    parameters.warpExtent = parameters.weftExtent = 100;
    const ZORCompDrapingNet net = Drape(*sphere, parameters, {100, 0, 0}, {0, 1, 0});
    for (int i = 0; i < 18; ++i) {
        for (int j = 0; j < 18; ++j) {
            const std::array<int, 4> cells{net.FindCell(i, j), net.FindCell(-1 - i, j),
                                           net.FindCell(-1 - i, -1 - j), net.FindCell(i, -1 - j)};
            ASSERT_GE(*std::min_element(cells.begin(), cells.end()), 0);
            const double shear = net.GetCells()[cells[0]].shear;
            EXPECT_GT(shear, 0);
            EXPECT_NEAR(shear, -net.GetCells()[cells[1]].shear, 0.003);
            EXPECT_NEAR(shear, net.GetCells()[cells[2]].shear, 0.003);
            EXPECT_NEAR(shear, -net.GetCells()[cells[3]].shear, 0.003);
        }
    }
}

TEST(ZORCompKinematicDrapingTest, CoversAClosedSurfaceOnce)
{
    const auto sphere = Sphere(100, 64).Make();
    const ZORCompDrapingNet whole = Drape(*sphere, WithStep(5), {87.3, 31.1, 44.7}, {0.2, 1, 0.3});
    CheckNet(*sphere, whole);
    EXPECT_LT(AreaOf(whole), 1.02 * sphere->GetArea());
    EXPECT_GT(AreaOf(whole), 0.5 * sphere->GetArea());

    const auto tube = Prism(256, 50, 300, 10).Make();
    for (const double angle : {0.0, 30.0, 45.0}) {
        const ZORCompDrapingNet net = Drape(*tube, WithStep(5, angle * kDegree), {50, 0.1, 150}, {0, 0, 1});
        CheckNet(*tube, net);
        EXPECT_LT(AreaOf(net), 1.001 * tube->GetArea());
        EXPECT_GT(AreaOf(net), 0.95 * tube->GetArea());
    }

    const auto torus = Torus(120, 60, 100, 30).Make();
    const ZORCompDrapingNet net = Drape(*torus, WithStep(5, 30 * kDegree), {130, 0.1, 0}, {0, 0, 1});
    CheckNet(*torus, net);
    EXPECT_LT(AreaOf(net), 1.02 * torus->GetArea());
}

TEST(ZORCompKinematicDrapingTest, HardlyShearsADevelopableSurface)
{
    const auto tube = Prism(1024, 50, 200, 1).Make();
    for (const double angle : {0.0, 30.0, 45.0}) {
        const double coarse =
            Drape(*tube, WithStep(10, angle * kDegree), {50, 0.1, 100}, {0, 0, 1}).GetMaximumShear();
        const double fine =
            Drape(*tube, WithStep(5, angle * kDegree), {50, 0.1, 100}, {0, 0, 1}).GetMaximumShear();
        EXPECT_LT(coarse, 0.6 * kDegree);
        EXPECT_LT(fine, std::max(0.35 * coarse, 1e-9)) << "a quarter, but for the facets";
    }
}

TEST(ZORCompKinematicDrapingTest, LocksOnASmallSphere)
{
    const auto sphere = Sphere(100, 128).Make();
    ZORCompStrategyParameters parameters = WithStep(5);
    parameters.warpExtent = parameters.weftExtent = 100;
    const ZORCompDrapingNet net = Drape(*sphere, parameters, {100, 0, 0}, {0, 1, 0});
    EXPECT_NEAR(net.GetMaximumShear(), 52 * kDegree, 2 * kDegree);
    const QList<int> locked = net.GetLockedCells(45 * kDegree);
    EXPECT_FALSE(locked.isEmpty());
    EXPECT_TRUE(locked.contains(net.FindCell(19, 19)));
    EXPECT_TRUE(locked.contains(net.FindCell(-20, 19))) << "opened as far as the other is closed";
    EXPECT_FALSE(locked.contains(net.FindCell(19, 0)));
    for (int i = 0; i < int(net.GetCells().size()); ++i)
        EXPECT_EQ(std::abs(net.GetCells()[i].shear) > 45 * kDegree, locked.contains(i));

    parameters.warpExtent = parameters.weftExtent = 50;
    EXPECT_TRUE(Drape(*sphere, parameters, {100, 0, 0}, {0, 1, 0}).GetLockedCells(45 * kDegree).isEmpty());
}

TEST(ZORCompKinematicDrapingTest, LaysGeneratorsOfConstantAngle)
{
    const auto sphere = Sphere(100, 128).Make();
    ZORCompStrategyParameters parameters = WithStep(5, 90 * kDegree);
    parameters.generators = ZORCompStrategyParameters::ConstantAngle;
    parameters.warpExtent = parameters.weftExtent = 100;
    const double height = 60;
    const ZORCompDrapingNet net = Drape(*sphere, parameters, {80, 0, height}, {0, 0, 1});
    CheckNet(*sphere, net);
    for (int i = -20; i <= 20; ++i) {
        const int node = net.FindNode(i, 0);
        ASSERT_GE(node, 0);
        EXPECT_NEAR(height, net.GetNodes()[node].location.point.GetZ(), 0.2)
            << "on the parallel, no great circle";
    }
}

TEST(ZORCompKinematicDrapingTest, StartsAnywhere)
{
    const auto sheet = Sheet(8).Make();
    for (const ZORMathPoint seed :
         {ZORMathPoint(0.5, 0.5, 0), ZORMathPoint(0.5, 0.53, 0), ZORMathPoint(0.53, 0.53, 0),
          ZORMathPoint(0.5, 0, 0), ZORMathPoint(0.53, 0, 0), ZORMathPoint(0, 0, 0), ZORMathPoint(1, 1, 0),
          ZORMathPoint(1, 0.25, 0)}) {
        const ZORCompDrapingNet net = Drape(*sheet, WithStep(0.05), seed, {1, 0, 0});
        CheckNet(*sheet, net);
        EXPECT_LT(net.GetMaximumShear(), 1e-8);
        EXPECT_GT(AreaOf(net), 0.85);
    }
    const ZORCompDrapingNet slanted = Drape(*sheet, WithStep(0.05, 30 * kDegree), {0.4, 0, 0}, {1, 0, 0});
    EXPECT_GT(AreaOf(slanted), 0.85) << "half of both yarns leave the sheet at once";
}

TEST(ZORCompKinematicDrapingTest, GivesTheSameNetTwice)
{
    const auto torus = Torus(60, 30, 100, 30).Make();
    const ZORCompDrapingNet a = Drape(*torus, WithStep(4, 0.3), {130, 1, 2}, {0, 0, 1});
    const ZORCompDrapingNet b = Drape(*torus, WithStep(4, 0.3), {130, 1, 2}, {0, 0, 1});
    ASSERT_EQ(a.GetNodes().size(), b.GetNodes().size());
    for (qsizetype i = 0; i < a.GetNodes().size(); ++i)
        EXPECT_EQ(a.GetNodes()[i].location.point, b.GetNodes()[i].location.point);
    ASSERT_EQ(a.GetCells().size(), b.GetCells().size());
}

TEST(ZORCompKinematicDrapingTest, SaysWhatIsWrong)
{
    const auto sheet = Sheet(8).Make();
    const auto other = Sheet(8).Make();
    const ZORGeoLocationOnSurface seed = sheet->Project({0.5, 0.5, 0});
    const auto failureOf = [&](const ZORCompStrategyParameters& parameters,
                               const ZORGeoLocationOnSurface& start, const ZORMathVector& direction) {
        return MessageOf([&] { ZORCompKinematicDraping(sheet.get(), parameters).Run(start, direction); });
    };
    EXPECT_EQ(QLatin1String("surface is null"),
              MessageOf([] { ZORCompKinematicDraping(nullptr, WithStep(1)); }));
    for (const double step : {0.0, -1.0, kNaN, kInfinity})
        EXPECT_EQ(QLatin1String("step is not a length above 0"), failureOf(WithStep(step), seed, {1, 0, 0}));
    EXPECT_EQ(QLatin1String("the step is too small for the surface"),
              failureOf(WithStep(1e-9), seed, {1, 0, 0}));
    EXPECT_EQ(QLatin1String("the net would have more than 1000000 nodes, take a larger step"),
              failureOf(WithStep(1e-4), seed, {1, 0, 0}));
    for (const double step : {0.6, 1.2, 3.0, 1e9, 1e300})
        EXPECT_EQ(QLatin1String("no cell of the net fits on the surface at the seed"),
                  failureOf(WithStep(step), seed, {1, 0, 0}));
    EXPECT_EQ(QLatin1String("seed is not on the surface"), failureOf(WithStep(0.1), {}, {1, 0, 0}));
    EXPECT_EQ(QLatin1String("seed is not on the surface"),
              failureOf(WithStep(0.1), other->Project({0.5, 0.5, 0}), {1, 0, 0}));
    EXPECT_EQ(QLatin1String("seed is not on the surface"),
              failureOf(WithStep(0.1), {sheet.get(), 1, kNaN, 0, {}}, {1, 0, 0}));
    for (const ZORMathVector& direction :
         {ZORMathVector(), ZORMathVector(0, 0, 1), ZORMathVector(1e-12, 0, -5)})
        EXPECT_EQ(QLatin1String("the direction is perpendicular to the surface at the seed"),
                  failureOf(WithStep(0.1), seed, direction));
    EXPECT_EQ(QLatin1String("direction is not finite"), failureOf(WithStep(0.1), seed, {kNaN, 0, 0}));

    const ZORGeoSurface empty(nullptr, {}, {});
    EXPECT_EQ(QLatin1String("seed is not on the surface"), MessageOf([&] {
                  ZORCompKinematicDraping(&empty, WithStep(1)).Run({}, {1, 0, 0});
              }));
}

TEST(ZORCompKinematicDrapingTest, CopiesOfNetsAreIndependent)
{
    const ZORCompDrapingNode node{0, 0, {nullptr, 0, 0, 0, {1, 2, 3}}};
    const ZORCompDrapingNet net(2.5, 1.5, {node}, {});
    ExpectSharedValue(
        ZORCompDrapingNet(), [&net](ZORCompDrapingNet& changed) { changed = net; },
        [](const ZORCompDrapingNet& value) { return value.GetStep(); });
    EXPECT_EQ(1.5, net.GetYarnAngle());
    EXPECT_FALSE(net.IsEmpty());

    // Nothing is to be detached, so that the copy goes on sharing its nodes.
    ZORCompDrapingNet copy = net;
    copy.DetachFromSurface();
    EXPECT_EQ(net.GetNodes().constData(), copy.GetNodes().constData());
    EXPECT_EQ(&net.GetNodes(), &copy.GetNodes());
}
