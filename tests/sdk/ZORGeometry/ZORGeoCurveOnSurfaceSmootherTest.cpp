// Tests of ZORGeoCurveOnSurfaceSmoother.

#include "CrowdedBends.h"
#include "support/Printers.h"

#include <ZORSystem/ZORSysException.h>

#include <algorithm>
#include <cmath>

namespace {

QString MessageOf(double radius, const Locations& curve = {})
{
    try {
        ZORGeoCurveOnSurfaceSmoother(radius).Smooth(curve);
    } catch (const ZORSysException& exception) {
        return exception.GetMessage();
    }
    return {};
}

TEST(ZORGeoCurveOnSurfaceSmootherTest, RoundsOffACornerInAPlaneByTheTangentArc)
{
    for (const int cells : {1, 2, 7, 20, 64}) {
        SCOPED_TRACE(cells);
        const auto surface = Plane(cells).Make();
        const Locations curve = Through(*surface, Corner(pi / 3, 200, 200));
        const Locations smooth = SmoothAndCheck(curve, 100);
        EXPECT_GE(SmallestPlaneRadius(smooth, 100) * kAllowed, 100);
        // Tangent length 57.735027, arc 104.719755, offset 15.470054; chords are shorter than arcs.
        EXPECT_NEAR(LengthOf(smooth), 400 - 2 * 57.735027 + 104.719755, 3e-5);
        EXPECT_NEAR(DistanceTo(smooth, {0, 0, 0}), 15.470054, 5e-5);
        EXPECT_NEAR(DistanceTo(smooth, {-57.735027, 0, 0}), 0, 1e-6);
        EXPECT_NEAR(DistanceTo(smooth, {28.867513, 50, 0}), 0, 1e-6);
        EXPECT_GT(DistanceTo(smooth, {-56, 0, 0}), 0.01) << "the arc has begun";
        for (const auto& location : smooth) {
            const double distance = location.point.DistanceTo({-57.735027, 100, 0});
            const double x = location.point.GetX();
            if (x > -57.735 && x < 28.867) {
                EXPECT_NEAR(distance, 100, 1e-6);
            }
        }
    }
}

TEST(ZORGeoCurveOnSurfaceSmootherTest, TakesRightTurnsAsLeftOnes)
{
    const auto surface = Plane(7).Make();
    const Locations left = SmoothAndCheck(Through(*surface, Corner(1, 200, 200)), 80);
    const Locations right = SmoothAndCheck(Through(*surface, Corner(-1, 200, 200)), 80);
    EXPECT_NEAR(LengthOf(left), LengthOf(right), 1e-4);
    EXPECT_NEAR(LengthOf(left), 400 - 160 * std::tan(0.5) + 80, 1e-4);
}

TEST(ZORGeoCurveOnSurfaceSmootherTest, LeavesSmoothCurvesAsTheyAre)
{
    const auto surface = Plane(7).Make();
    const Locations straight = Through(*surface, {{-200, 10, 0}, {250, 130, 0}});
    EXPECT_TRUE(IsSame(straight, ZORGeoCurveOnSurfaceSmoother(1e5).Smooth(straight)));
    QList<ZORMathPoint> points;
    for (int i = 0; i <= 90; ++i)
        points.append({150 * std::cos(i * pi / 90), 150 * std::sin(i * pi / 90), 0});
    const Locations circle = Through(*surface, points);
    EXPECT_TRUE(IsSame(circle, ZORGeoCurveOnSurfaceSmoother(100).Smooth(circle)));
    EXPECT_FALSE(IsSame(circle, ZORGeoCurveOnSurfaceSmoother(200).Smooth(circle)));
    EXPECT_TRUE(ZORGeoCurveOnSurfaceSmoother(5).Smooth({}).isEmpty());
    const Locations point = {surface->Project({1, 2, 0})};
    EXPECT_TRUE(IsSame(point, ZORGeoCurveOnSurfaceSmoother(5).Smooth(point)));
    const Locations twice = {point[0], point[0], point[0]};
    EXPECT_TRUE(IsSame(twice, ZORGeoCurveOnSurfaceSmoother(5).Smooth(twice)));
}

TEST(ZORGeoCurveOnSurfaceSmootherTest, NeedsARadiusThatIsOne)
{
    EXPECT_EQ(QStringLiteral("radius is negative"), MessageOf(-1e-9));
    EXPECT_EQ(QStringLiteral("radius is negative"), MessageOf(-INFINITY));
    EXPECT_EQ(QStringLiteral("radius is infinite"), MessageOf(INFINITY));
    const auto surface = Plane(2).Make();
    const Locations curve = Through(*surface, Corner(pi / 3, 200, 200));
    for (const double radius : {0.0, -0.0, std::nan(""), 1e-300, 1e-5}) {
        EXPECT_EQ(QString(), MessageOf(radius));
        EXPECT_TRUE(IsSame(curve, ZORGeoCurveOnSurfaceSmoother(radius).Smooth(curve))) << radius;
    }
    SmoothAndCheck(curve, 0.01);
    for (const double radius : {1e4, 1e9, 1e100, 1e300})
        EXPECT_NEAR(LengthOf(SmoothAndCheck(curve, radius)), 200 * std::sqrt(3.0), 0.1) << "nearly straight";
}

TEST(ZORGeoCurveOnSurfaceSmootherTest, TurnsAtTheEndsOfLegsThatAreTooShort)
{
    const auto surface = Plane(20).Make();
    // One arc of 100 mm through both ends.
    const double chord = 60 * std::cos(pi / 6);
    const Locations both = SmoothAndCheck(Through(*surface, Corner(pi / 3, 30, 30)), 100);
    EXPECT_NEAR(LengthOf(both), 200 * std::asin(chord / 200), 1e-4);
    const Locations first = SmoothAndCheck(Through(*surface, Corner(pi / 3, 30, 200)), 100);
    const Locations last = SmoothAndCheck(Through(*surface, Corner(pi / 3, 200, 30)), 100);
    EXPECT_NEAR(LengthOf(first), LengthOf(last), 1e-4);
    EXPECT_GE(SmallestPlaneRadius(first, 100) * kAllowed, 100);
}

TEST(ZORGeoCurveOnSurfaceSmootherTest, GivesNeighbouringCornersOneArcAndCutsCrowdedOnesShort)
{
    const auto surface = Plane(20).Make();
    const Locations sameWay =
        Through(*surface, {{-200, 0, 0}, {0, 0, 0}, {30, 20, 0}, {40, 60, 0}, {40, 250, 0}});
    SmoothAndCheck(sameWay, 100);
    const Locations zigzag =
        Through(*surface, {{-200, 0, 0}, {-100, 50, 0}, {0, 0, 0}, {100, 50, 0}, {200, 10, 0}});
    EXPECT_GT(LengthOf(SmoothAndCheck(zigzag, 50)), 432) << "every bend has its arc";
    const Locations crowded = Through(
        *surface, {{-200, 0, 0}, {-180, 50, 0}, {-160, 0, 0}, {-140, 50, 0}, {-120, 0, 0}, {-100, 50, 0}});
    EXPECT_LT(LengthOf(SmoothAndCheck(crowded, 100)), 120);
    const Locations hairpin = Through(*surface, {{-200, 0, 0}, {0, 0, 0}, {0, 40, 0}, {-200, 40, 0}});
    SmoothAndCheck(hairpin, 15);
    EXPECT_NEAR(LengthOf(SmoothAndCheck(hairpin, 100)), 200 * std::asin(0.2), 1e-4) << "from end to end";
}

TEST(ZORGeoCurveOnSurfaceSmootherTest, KeepsTheClosingPlaceOfClosedCurves)
{
    const auto surface = Plane(7).Make();
    const Locations square =
        Through(*surface, {{-100, -100, 0}, {100, -100, 0}, {100, 100, 0}, {-100, 100, 0}, {-100, -100, 0}});
    const Locations smooth = SmoothAndCheck(square, 40);
    EXPECT_NEAR(LengthOf(smooth), 800 - 6 * 40 + 3 * 40 * pi / 2, 1e-3);
}

TEST(ZORGeoCurveOnSurfaceSmootherTest, ClosedCurvesThatWouldShrinkToAPointAreLeft)
{
    const auto surface = Plane(7).Make();
    QList<ZORMathPoint> points;
    for (int i = 0; i <= 72; ++i)
        points.append({50 * std::cos(i * pi / 36), 50 * std::sin(i * pi / 36), 0});
    points.last() = points.first();
    const Locations circle = Through(*surface, points);
    EXPECT_TRUE(
        MessageOf(100, circle).startsWith(QStringLiteral("the surface has no room for the radius 100")))
        << MessageOf(100, circle).toStdString();
    const Locations fold = Through(*surface, {{0, 0, 0}, {40, 20, 0}, {0, 0, 0}});
    EXPECT_FALSE(MessageOf(100, fold).isEmpty());
}

TEST(ZORGeoCurveOnSurfaceSmootherTest, RoundsOffEveryCornerOfALongCurve)
{
    const auto surface = Plane(64).Make();
    constexpr int kLegs = 20;
    QList<ZORMathPoint> corners;
    for (int i = 0; i < kLegs; ++i) {
        const double x = -280 + i * 560.0 / kLegs;
        const double y = i % 2 == 0 ? -100 : 100;
        corners << ZORMathPoint(x, y, 0) << ZORMathPoint(x, -y, 0);
    }
    QList<ZORMathPoint> points;
    for (qsizetype i = 0; i + 1 < corners.size(); ++i) {
        for (int k = 0; k < 100; ++k)
            points.append(corners[i] + k * 0.01 * (corners[i + 1] - corners[i]));
    }
    const Locations curve = Through(*surface, points);
    const Locations smooth = SmoothAndCheck(curve, 2);
    EXPECT_GE(SmallestPlaneRadius(smooth, 2) * kAllowed, 2);
    const int bends = 2 * kLegs - 2;
    EXPECT_NEAR(LengthOf(smooth), LengthOf(curve) - bends * (4 - pi), 1e-4);
}

TEST(ZORGeoCurveOnSurfaceSmootherTest, TakesFoldsOutOfCurvesThatGoBackOnThemselves)
{
    const auto surface = Plane(7).Make();
    const Locations smooth =
        SmoothAndCheck(Through(*surface, {{-100, 0, 0}, {60, 0, 0}, {0, 0, 0}, {0, 100, 0}}), 20);
    EXPECT_NEAR(LengthOf(smooth), 200 - 40 + 10 * pi, 1e-3);
}

TEST(ZORGeoCurveOnSurfaceSmootherTest, MeasuresTheSmallestRadius)
{
    const auto surface = Plane(1).Make();
    QList<ZORMathPoint> points;
    for (int i = 0; i <= 100; ++i)
        points.append({50 * std::cos(i * 0.02), 50 * std::sin(i * 0.02), 0});
    const Locations circle = Through(*surface, points);
    EXPECT_NEAR(ZORGeoCurveOnSurfaceSmoother(50).FindSmallestRadius(circle), 50, 0.01);
    EXPECT_EQ(INFINITY, ZORGeoCurveOnSurfaceSmoother(50).FindSmallestRadius(circle.mid(0, 2)));
    EXPECT_EQ(INFINITY, ZORGeoCurveOnSurfaceSmoother(0).FindSmallestRadius(circle));
}

TEST(ZORGeoCurveOnSurfaceSmootherTest, GivesCylindersTheArcsOfTheUnrolledPlane)
{
    // A fine prism; the corner lies on its back, where x < 0.
    const double radius = 100;
    const auto surface = Scaled(Prism(256, radius, 400, 30), 1, {0, 0, -200}).Make();
    const auto roll = [&](const ZORMathPoint& point) {
        const double angle = point.GetX() / radius + pi;
        return ZORMathPoint(radius * std::cos(angle), radius * std::sin(angle), point.GetY());
    };
    QList<ZORMathPoint> points;
    for (const ZORMathPoint& point : Corner(pi / 3, 150, 150))
        points.append(roll(point));
    const Locations smooth = SmoothAndCheck(Through(*surface, points), 80);
    const double expected = 300 - 160 * std::tan(pi / 6) + 80 * pi / 3;
    EXPECT_NEAR(LengthOf(smooth), expected, 2e-4 * expected);
    EXPECT_NEAR(DistanceTo(smooth, roll({0, 0, 0})), 80 / std::cos(pi / 6) - 80, 0.02);
}

TEST(ZORGeoCurveOnSurfaceSmootherTest, LaysSmallCirclesOnSpheres)
{
    // An arc of geodesic curvature 1 / R on a sphere lies in a plane.
    const double sphereRadius = 100;
    const double radius = 30;
    double former = INFINITY;
    for (const int rows : {30, 60, 120}) {
        SCOPED_TRACE(rows);
        const auto surface = Sphere(sphereRadius, rows).Make();
        const Locations curve = Through(*surface, {{100, -60, 13}, {100, 17, 11}, {60, 20, 70}});
        const Locations smooth = SmoothAndCheck(curve, radius);
        // Chords of a degree and less belong to the arc; the legs have longer ones.
        double deviation = 0;
        const double planeRadius = radius / std::hypot(1, radius / sphereRadius);
        for (qsizetype i = 30; i + 60 < smooth.size(); ++i) {
            const ZORMathVector a = smooth[i - 30].point - ZORMathPoint();
            const ZORMathVector b = smooth[i].point - ZORMathPoint();
            const ZORMathVector c = smooth[i + 30].point - ZORMathPoint();
            const double ab = (b - a).GetLength();
            const double bc = (c - b).GetLength();
            if (ab > 3 || bc > 3)
                continue;
            const double around = ab * bc * (c - a).GetLength() / (2 * Cross(b - a, c - a).GetLength());
            if (ab > 1 && bc > 1 && around < 2 * planeRadius)
                deviation = std::max(deviation, std::abs(around - planeRadius));
        }
        EXPECT_LT(deviation, former);
        former = deviation * 1.01;
    }
    EXPECT_LT(former, 0.5 * radius);
}

TEST(ZORGeoCurveOnSurfaceSmootherTest, PassesVerticesAndRunsAlongSides)
{
    // All places on the lines of the grid, the arc through its vertices.
    const auto surface = Scaled(Sheet(4), 400, {-200, -200, 0}).Make();
    for (const double radius : {25.0, 50.0, 100.0, 150.0}) {
        SCOPED_TRACE(radius);
        SmoothAndCheck(Through(*surface, {{-200, 0, 0}, {0, 0, 0}, {0, 200, 0}}), radius);
        SmoothAndCheck(Through(*surface, {{-200, -200, 0}, {0, 0, 0}, {100, 0, 0}, {200, 100, 0}}), radius);
        SmoothAndCheck(Through(*surface, {{-200, -200, 0}, {200, -200, 0}, {200, 200, 0}, {-200, 200, 0}}),
                       radius);
    }
}

TEST(ZORGeoCurveOnSurfaceSmootherTest, TellsWhereTheSurfaceHasNoRoom)
{
    // A grid without its middle cells: the corner of the curve is that of the hole.
    TestMesh mesh = Plane(6);
    mesh.triangles.removeIf([&](const ZORGeoSurface::Corners& corners) {
        ZORMathVector sum;
        for (const int corner : corners)
            sum += mesh.vertices[corner] - ZORMathPoint();
        return std::max(std::abs(sum.GetX()), std::abs(sum.GetY())) < 300;
    });
    const auto surface = mesh.Make();
    // Shorter around the other side of the hole, where a corner stays.
    const Locations around = Through(*surface, {{-100, -250, 0}, {-100, 100, 0}, {250, 100, 0}});
    EXPECT_EQ(QStringLiteral("the surface has no room for the radius 60 at (100, -100, 0)"),
              MessageOf(60, around));
    EXPECT_EQ(QString(), MessageOf(0, around));
    const Locations beside = Through(*surface, {{-250, -250, 0}, {-250, 250, 0}, {250, 250, 0}});
    SmoothAndCheck(beside, 60);
}

TEST(ZORGeoCurveOnSurfaceSmootherTest, ConnectsPlacesOverTheSurface)
{
    const auto surface = Plane(20).Make();
    const Locations places = {surface->Project({-200, 0, 0}), surface->Project({200, 10, 0})};
    const Locations connected = ZORGeoCurveOnSurfaceSmoother::Connect(places);
    EXPECT_GT(connected.size(), 20);
    EXPECT_NEAR(LengthOf(connected), std::hypot(400, 10), 1e-9);
    EXPECT_LT(DeviationFromSurface(connected), 1e-12);
    EXPECT_TRUE(IsSame(connected, ZORGeoCurveOnSurfaceSmoother::Connect(connected)));
    const auto slivers = SliverSheet(4).Make();
    EXPECT_LT(DeviationFromSurface(Through(*slivers, {{0.1, 0.2, 0}, {0.9, 0.7, 0}})), 1e-12);
}

TEST(ZORGeoCurveOnSurfaceSmootherTest, TellsWhichLocationIsWrong)
{
    const auto surface = Plane(2).Make();
    const auto other = Plane(2).Make();
    TestMesh torn = Plane(1);
    const TestMesh second = Scaled(Sheet(1), 1, {1000, 0, 0});
    for (const auto& corners : second.triangles)
        torn.triangles.append({corners[0] + 4, corners[1] + 4, corners[2] + 4});
    torn.vertices.append(second.vertices);
    const auto pieces = torn.Make();
    const ZORGeoLocationOnSurface good = surface->Project({1, 2, 0});
    ZORGeoLocationOnSurface outside = good;
    outside.weightB = 1.5;
    ZORGeoLocationOnSurface unknown = good;
    unknown.triangle = 9;
    const auto messageOf = [](const Locations& locations) -> QString {
        try {
            ZORGeoCurveOnSurfaceSmoother(10).Smooth(locations);
        } catch (const ZORSysException& exception) {
            return exception.GetMessage();
        }
        return {};
    };
    EXPECT_EQ(QStringLiteral("location 1 of the curve is not on a surface"), messageOf({good, {}}));
    EXPECT_EQ(QStringLiteral("location 2 of the curve is on another surface"),
              messageOf({good, good, other->Project({1, 2, 0})}));
    EXPECT_EQ(QStringLiteral("location 0 of the curve is not within its triangle"),
              messageOf({outside, good}));
    EXPECT_EQ(QStringLiteral("location 1 of the curve is not within its triangle"),
              messageOf({good, unknown}));
    EXPECT_EQ(QStringLiteral("no way over the surface leads to location 1 of the curve"),
              messageOf({pieces->Project({0, 0, 0}), pieces->Project({1000.5, 0.5, 0})}));
}

TEST(ZORGeoCurveOnSurfaceSmootherTest, SmoothsBendsThatAreCrowdedWithinTheirRadius)
{
    const auto surface = Plane(60).Make();
    for (const double height : {4.0, 10.0, 30.0}) {
        SCOPED_TRACE(height);
        const Locations smooth = SmoothAndCheck(CrowdedZigzag(*surface, 24, 9, height), 50);
        EXPECT_GE(SmallestPlaneRadius(smooth, 50) * kAllowed, 50);
        EXPECT_LT(LengthOf(smooth), 260) << "the bends are cut short to the length of their middle line";
    }
}

} // namespace
