// Tests of ZORGeoPolyline, ZORGeoLine and what they inherit from ZORGeoCurve.

#include "support/Printers.h"

#include <ZORGeometry/ZORGeoLine.h>
#include <ZORGeometry/ZORGeoPolyline.h>
#include <ZORMathematics/ZORMathBoundingBox.h>
#include <ZORSystem/ZORSysException.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

namespace {

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

// 3 mm along x, 4 mm along y.
const ZORMathSetOfPoints kCorner = {{0, 0, 0}, {3, 0, 0}, {3, 4, 0}};

TEST(ZORGeoPolylineTest, KeepsItsPointsAsGiven)
{
    const ZORMathSetOfPoints points = {{0, 0, 0}, {0, 0, 0}, {1, 0, 0}, {1, 0, 0}, {0, 0, 0}};
    const ZORGeoPolyline all(nullptr, points, true);
    EXPECT_EQ(5, all.GetNumPoints());
    EXPECT_EQ(ZORMathPoint(1, 0, 0), all.GetPoint(3));
    const ZORGeoPolyline distinct(nullptr, points, false);
    EXPECT_EQ(3, distinct.GetNumPoints());
    EXPECT_EQ(2, distinct.GetLength());
}

TEST(ZORGeoPolylineTest, MeasuresItself)
{
    const ZORGeoPolyline polyline(nullptr, kCorner, true);
    EXPECT_EQ(7, polyline.GetLength());
    EXPECT_EQ(ZORMathBoundingBox({0, 0, 0}, {3, 4, 0}), polyline.GetBoundingBox());
}

TEST(ZORGeoPolylineTest, LocatesByArcLengthAndGoesOnStraightBeyondItsEnds)
{
    const ZORGeoPolyline polyline(nullptr, kCorner, true);
    const std::pair<double, ZORMathPoint> places[] = {
        {0, {0, 0, 0}}, {1, {1, 0, 0}},  {3, {3, 0, 0}},   {5, {3, 2, 0}},
        {7, {3, 4, 0}}, {10, {3, 7, 0}}, {-2, {-2, 0, 0}},
    };
    for (const auto& [distance, point] : places) {
        const ZORGeoLocationOnCurve location = polyline.GetLocation(distance, nullptr);
        EXPECT_EQ(&polyline, location.curve);
        EXPECT_EQ(distance, location.distance);
        EXPECT_TRUE(IsNear(point, location.point)) << distance;
        const ZORGeoLocationOnCurve start = polyline.GetLocation(2, nullptr);
        EXPECT_TRUE(IsNear(point, polyline.GetLocation(distance - 2, &start).point)) << distance;
    }
}

TEST(ZORGeoPolylineTest, ContinuationSkipsSegmentsWithoutLength)
{
    const ZORMathSetOfPoints points = {{0, 0, 0}, {0, 0, 0}, {2, 0, 0}, {2, 0, 0}};
    const ZORGeoPolyline polyline(nullptr, points, true);
    EXPECT_EQ(ZORMathPoint(-1, 0, 0), polyline.GetLocation(-1, nullptr).point);
    EXPECT_EQ(ZORMathPoint(0, 0, 0), polyline.GetLocation(0, nullptr).point);
    EXPECT_EQ(ZORMathPoint(2, 0, 0), polyline.GetLocation(2, nullptr).point);
    EXPECT_EQ(ZORMathPoint(5, 0, 0), polyline.GetLocation(5, nullptr).point);
}

TEST(ZORGeoPolylineTest, WithoutPointsThereIsNoPlace)
{
    const ZORGeoPolyline empty(nullptr, {}, true);
    EXPECT_EQ(0, empty.GetNumPoints());
    EXPECT_EQ(0, empty.GetLength());
    EXPECT_TRUE(empty.GetBoundingBox().IsEmpty());
    EXPECT_TRUE(empty.GetLocation(1, nullptr).IsNull());
    EXPECT_TRUE(empty.GetPoints().isEmpty());
    ZORGeoLocationOnCurve location = {nullptr, 5, {1, 1, 1}};
    EXPECT_FALSE(empty.Project({0, 0, 0}, location));
    EXPECT_EQ(5, location.distance);
}

TEST(ZORGeoPolylineTest, OfOnePointStaysThere)
{
    const ZORGeoPolyline single(nullptr, {{1, 2, 3}}, true);
    EXPECT_EQ(ZORMathPoint(1, 2, 3), single.GetLocation(7, nullptr).point);
    EXPECT_EQ(0, single.GetLocation(7, nullptr).distance);
    ZORGeoLocationOnCurve location;
    EXPECT_TRUE(single.Project({9, 9, 9}, location));
    EXPECT_EQ(ZORMathPoint(1, 2, 3), location.point);
}

TEST(ZORGeoPolylineTest, ValuesThatAreNotFiniteGiveNoPlace)
{
    const ZORGeoPolyline polyline(nullptr, kCorner, true);
    ZORGeoLocationOnCurve location;
    for (const double value : {kNan, kInfinity, -kInfinity}) {
        EXPECT_TRUE(polyline.GetLocation(value, nullptr).IsNull());
        EXPECT_FALSE(polyline.Project({value, 0, 0}, location));
        EXPECT_THROW(ZORGeoPolyline(nullptr, {{0, 0, 0}, {0, value, 0}}, true), ZORSysException);
    }
}

TEST(ZORGeoPolylineTest, RefusesAStartOnAnotherCurve)
{
    const ZORGeoPolyline polyline(nullptr, kCorner, true);
    const ZORGeoLine line(nullptr, {0, 0, 0}, {1, 0, 0});
    const ZORGeoLocationOnCurve start = line.GetLocation(0.5, nullptr);
    EXPECT_THROW(polyline.GetLocation(1, &start), ZORSysException);
}

TEST(ZORGeoPolylineTest, CutsOutRanges)
{
    const ZORGeoPolyline polyline(nullptr, kCorner, true);
    EXPECT_EQ(kCorner, polyline.GetPoints());
    EXPECT_EQ(kCorner, polyline.GetPoints({-1, 9}));
    EXPECT_EQ(ZORMathSetOfPoints({{1, 0, 0}, {3, 0, 0}, {3, 1, 0}}), polyline.GetPoints({1, 4}));
    EXPECT_EQ(ZORMathSetOfPoints({{1, 0, 0}, {2, 0, 0}}), polyline.GetPoints({1, 2}));
    EXPECT_EQ(ZORMathSetOfPoints({{2, 0, 0}}), polyline.GetPoints({2, 2}));
    EXPECT_TRUE(polyline.GetPoints({4, 1}).isEmpty());
    EXPECT_TRUE(polyline.GetPoints({8, 9}).isEmpty());
    EXPECT_TRUE(polyline.GetPoints({kNan, 1}).isEmpty());
}

TEST(ZORGeoPolylineTest, ProjectionPrefersTheFirstOfEquallyNearPlaces)
{
    const ZORGeoPolyline square(nullptr, {{0, 0, 0}, {2, 0, 0}, {2, 2, 0}, {0, 2, 0}, {0, 0, 0}}, true);
    ZORGeoLocationOnCurve location;
    EXPECT_TRUE(square.Project({1, 1, 5}, location));
    EXPECT_EQ(1, location.distance);
    EXPECT_EQ(ZORMathPoint(1, 0, 0), location.point);
    EXPECT_TRUE(square.Project({-1, -1, 0}, location));
    EXPECT_EQ(0, location.distance);
}

// Against dense sampling of the curve.
TEST(ZORGeoPolylineTest, ProjectionIsTheNearestOfAllPlaces)
{
    std::mt19937 random(11);
    std::uniform_real_distribution<double> coordinate(-10, 10);
    const auto point = [&] {
        return ZORMathPoint(coordinate(random), coordinate(random), coordinate(random));
    };
    for (int round = 0; round < 50; ++round) {
        ZORMathSetOfPoints points;
        for (int i = 0; i < 6; ++i)
            points.append(point());
        const ZORGeoPolyline polyline(nullptr, points, true);
        const ZORMathPoint asked = point();
        ZORGeoLocationOnCurve location;
        ASSERT_TRUE(polyline.Project(asked, location));
        EXPECT_TRUE(IsNear(location.point, polyline.GetLocation(location.distance, nullptr).point));
        double nearest = kInfinity;
        for (int i = 0; i <= 2000; ++i) {
            const double distance = polyline.GetLength() * i / 2000;
            nearest = std::min(nearest, asked.DistanceTo(polyline.GetLocation(distance, nullptr).point));
        }
        EXPECT_LE(asked.DistanceTo(location.point), nearest + 1e-12);
        EXPECT_GE(asked.DistanceTo(location.point), nearest - polyline.GetLength() / 2000);
    }
}

TEST(ZORGeoPolylineTest, ALineIsACurveOfTwoPoints)
{
    const ZORGeoLine line(nullptr, {1, 1, 1}, {1, 1, 3});
    EXPECT_EQ(2, line.GetNumPoints());
    EXPECT_EQ(2, line.GetLength());
    EXPECT_EQ(ZORMathPoint(1, 1, 2.5), line.GetLocation(1.5, nullptr).point);
    EXPECT_EQ(ZORMathPoint(1, 1, 5), line.GetLocation(4, nullptr).point);
    const ZORGeoLine point(nullptr, {1, 1, 1}, {1, 1, 1});
    EXPECT_EQ(ZORMathPoint(1, 1, 1), point.GetLocation(4, nullptr).point);
}

TEST(ZORGeoPolylineTest, ProjectsLikeASearchThroughAllSegments)
{
    std::mt19937 random(11);
    std::uniform_real_distribution<double> coordinate(-1, 1);
    const auto point = [&](double size) {
        return ZORMathPoint(size * coordinate(random), size * coordinate(random), size * coordinate(random));
    };
    for (int round = 0; round < 100; ++round) {
        ZORMathSetOfPoints points;
        const int count = 1 + round * 3;
        for (int i = 0; i < count; ++i)
            points.append(i % 5 == 4 ? points.last() : round % 2 ? point(1) : ZORMathPoint(i, i % 7, 0));
        const ZORGeoPolyline polyline(nullptr, points, true);
        for (int query = 0; query < 100; ++query) {
            const ZORMathPoint from = query % 10 == 0 ? points[query % count] : point(query % 2 ? 1 : 100);
            double smallest = from.DistanceTo(points.first());
            for (int i = 0; i + 1 < count; ++i) {
                const ZORMathVector ab = points[i + 1] - points[i];
                const double squared = Dot(ab, ab);
                const double t = squared > 0 ? Dot(from - points[i], ab) / squared : 0;
                smallest = std::min(smallest, from.DistanceTo(points[i] + std::clamp(t, 0.0, 1.0) * ab));
            }
            ZORGeoLocationOnCurve location;
            ASSERT_TRUE(polyline.Project(from, location));
            EXPECT_NEAR(smallest, from.DistanceTo(location.point), 1e-12 * (1 + smallest));
            EXPECT_TRUE(IsNear(location.point, polyline.GetLocation(location.distance, nullptr).point));
        }
    }
}

TEST(ZORGeoPolylineTest, OfSeveralNearestPlacesTheFirstIsTaken)
{
    // Twenty times around a square: every place of it comes again and again.
    ZORMathSetOfPoints points;
    for (int i = 0; i < 20; ++i)
        points << ZORMathPoint(0, 0, 0) << ZORMathPoint(1, 0, 0) << ZORMathPoint(1, 1, 0)
               << ZORMathPoint(0, 1, 0);
    const ZORGeoPolyline polyline(nullptr, points, true);
    ZORGeoLocationOnCurve location;
    ASSERT_TRUE(polyline.Project({0.5, -3, 0}, location));
    EXPECT_EQ(0.5, location.distance);
    ASSERT_TRUE(polyline.Project({0.5, 0.5, 0}, location));
    EXPECT_EQ(0.5, location.distance);
    ASSERT_TRUE(polyline.Project({2, 2, 0}, location));
    EXPECT_EQ(2, location.distance);
}

} // namespace
