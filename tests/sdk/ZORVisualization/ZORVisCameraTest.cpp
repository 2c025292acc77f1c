#include <ZORVisualization/ZORVisCamera.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace {

constexpr QSizeF kViewSize(400, 300);

void ExpectNear(const ZORMathVector& a, const ZORMathVector& b, double tolerance = 1e-12)
{
    EXPECT_NEAR((a - b).GetLength(), 0, tolerance);
}

void ExpectNear(const QPointF& a, const QPointF& b, double tolerance)
{
    EXPECT_NEAR(a.x(), b.x(), tolerance);
    EXPECT_NEAR(a.y(), b.y(), tolerance);
}

} // namespace

TEST(ZORVisCameraTest, StandardViewsShowTheSideTheyAreNamedAfter)
{
    struct Case
    {
        ZORVisCamera::StandardView view;
        ZORMathVector right;
        ZORMathVector up;
    };
    const std::vector<Case> cases = {
        {ZORVisCamera::Front, {1, 0, 0}, {0, 0, 1}}, {ZORVisCamera::Back, {-1, 0, 0}, {0, 0, 1}},
        {ZORVisCamera::Left, {0, -1, 0}, {0, 0, 1}}, {ZORVisCamera::Right, {0, 1, 0}, {0, 0, 1}},
        {ZORVisCamera::Top, {1, 0, 0}, {0, 1, 0}},   {ZORVisCamera::Bottom, {1, 0, 0}, {0, -1, 0}},
    };
    for (const Case& each : cases) {
        ZORVisCamera camera;
        camera.SetStandardView(each.view);
        ExpectNear(camera.GetRightDirection(), each.right);
        ExpectNear(camera.GetUpDirection(), each.up);
        ExpectNear(Cross(camera.GetRightDirection(), camera.GetUpDirection()), -camera.GetViewDirection());
    }
}

TEST(ZORVisCameraTest, TheIsometricViewShortensAllAxesAlikeWithZUp)
{
    const ZORVisCamera camera;
    const double shortened = 1 / std::sqrt(3.0);
    EXPECT_NEAR(std::abs(Dot(camera.GetViewDirection(), {1, 0, 0})), shortened, 1e-12);
    EXPECT_NEAR(std::abs(Dot(camera.GetViewDirection(), {0, 1, 0})), shortened, 1e-12);
    EXPECT_NEAR(Dot(camera.GetViewDirection(), {0, 0, 1}), -shortened, 1e-12);
    EXPECT_NEAR(Dot(camera.GetRightDirection(), {0, 0, 1}), 0, 1e-12);
    EXPECT_GT(Dot(camera.GetUpDirection(), {0, 0, 1}), 0);
}

TEST(ZORVisCameraTest, PixelsAndPointsOfTheTargetPlaneCorrespond)
{
    ZORVisCamera camera;
    camera.SetView({10, 20, 30}, {1, 2, -3}, {0, 0, 1}, 60);
    ExpectNear(camera.WorldToPixel({10, 20, 30}, kViewSize), {200, 150}, 1e-9);
    EXPECT_NEAR(camera.GetPixelSize(kViewSize), 0.2, 1e-15);
    for (const QPointF pixel : {QPointF(0, 0), QPointF(399, 5), QPointF(123.25, 271.5)}) {
        const ZORMathPoint point = camera.PixelToWorld(pixel, kViewSize);
        ExpectNear(camera.WorldToPixel(point, kViewSize), pixel, 1e-9);
        EXPECT_NEAR(camera.GetDepth(point), 0, 1e-9);
    }
}

TEST(ZORVisCameraTest, PanningMovesTheSceneByPixels)
{
    ZORVisCamera camera;
    const ZORMathPoint point(3, 4, 5);
    const QPointF before = camera.WorldToPixel(point, kViewSize);
    camera.Pan(17, -8, kViewSize);
    ExpectNear(camera.WorldToPixel(point, kViewSize), before + QPointF(17, -8), 1e-9);
}

TEST(ZORVisCameraTest, ZoomingKeepsThePlaceUnderThePixel)
{
    ZORVisCamera camera;
    const QPointF pixel(40, 250);
    const ZORMathPoint place = camera.PixelToWorld(pixel, kViewSize);
    camera.Zoom(2.5, pixel, kViewSize);
    EXPECT_NEAR(camera.GetHeight(), 40, 1e-12);
    ExpectNear(camera.WorldToPixel(place, kViewSize), pixel, 1e-9);
    camera.Zoom(1e-30, pixel, kViewSize);
    EXPECT_EQ(camera.GetHeight(), 1e9);
    camera.Zoom(1e30, pixel, kViewSize);
    EXPECT_EQ(camera.GetHeight(), 1e-6);
}

TEST(ZORVisCameraTest, OrbitingKeepsTheTargetAndAnOrthonormalFrame)
{
    ZORVisCamera camera;
    camera.SetView({1, 2, 3}, {0, 1, 0}, {0, 0, 1}, 50);
    std::mt19937 random(1);
    std::uniform_real_distribution<double> pixels(-300, 300);
    for (int i = 0; i < 1000; ++i)
        camera.Orbit(pixels(random), pixels(random));
    EXPECT_EQ(camera.GetTarget(), ZORMathPoint(1, 2, 3));
    EXPECT_EQ(camera.GetHeight(), 50);
    EXPECT_NEAR(camera.GetViewDirection().GetLength(), 1, 1e-12);
    EXPECT_NEAR(camera.GetUpDirection().GetLength(), 1, 1e-12);
    EXPECT_NEAR(Dot(camera.GetViewDirection(), camera.GetUpDirection()), 0, 1e-12);
}

TEST(ZORVisCameraTest, DraggingRightTurnsTheFrontOfTheSceneToTheRight)
{
    ZORVisCamera camera;
    camera.SetStandardView(ZORVisCamera::Front);
    const ZORMathPoint inFront(0, -10, 0); // of the target, towards the viewer
    camera.Orbit(50, 0);
    EXPECT_GT(camera.WorldToPixel(inFront, kViewSize).x(), 200);
    camera.SetStandardView(ZORVisCamera::Front);
    camera.Orbit(0, 50);
    EXPECT_GT(camera.WorldToPixel(inFront, kViewSize).y(), 150);
    camera.SetStandardView(ZORVisCamera::Front);
    camera.Orbit(225, 0); // 90 degrees
    ExpectNear(camera.GetViewDirection(), {1, 0, 0}, 1e-9);
}

TEST(ZORVisCameraTest, FittingShowsTheWholeBoxWithAMargin)
{
    std::mt19937 random(2);
    std::uniform_real_distribution<double> coordinate(-1000, 1000);
    for (int i = 0; i < 200; ++i) {
        ZORMathBoundingBox box;
        box.Add(ZORMathPoint(coordinate(random), coordinate(random), coordinate(random)));
        box.Add(ZORMathPoint(coordinate(random), coordinate(random), coordinate(random)));
        ZORVisCamera camera;
        camera.Orbit(coordinate(random), coordinate(random));
        camera.FitAll(box, kViewSize);
        double fill = 0; // part of the view, in the direction that is filled best
        for (int corner = 0; corner < 8; ++corner) {
            const ZORMathPoint lower = box.GetLowerPoint();
            const ZORMathPoint upper = box.GetUpperPoint();
            const QPointF pixel = camera.WorldToPixel({(corner & 1) != 0 ? lower.GetX() : upper.GetX(),
                                                       (corner & 2) != 0 ? lower.GetY() : upper.GetY(),
                                                       (corner & 4) != 0 ? lower.GetZ() : upper.GetZ()},
                                                      kViewSize);
            fill = std::max({fill, std::abs(pixel.x() / 200 - 1), std::abs(pixel.y() / 150 - 1)});
        }
        EXPECT_NEAR(fill, 0.9, 1e-9);
    }
}

TEST(ZORVisCameraTest, FittingABoxWithoutExtentKeepsTheHeight)
{
    ZORVisCamera camera;
    const ZORVisCamera before = camera;
    camera.FitAll(ZORMathBoundingBox(), kViewSize);
    EXPECT_EQ(camera, before);
    camera.FitAll(ZORMathBoundingBox({5, 5, 5}, {5, 5, 5}), kViewSize);
    EXPECT_EQ(camera.GetTarget(), ZORMathPoint(5, 5, 5));
    EXPECT_EQ(camera.GetHeight(), before.GetHeight());
}

TEST(ZORVisCameraTest, UselessArgumentsChangeNothing)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double inf = std::numeric_limits<double>::infinity();
    ZORVisCamera camera;
    const ZORVisCamera before = camera;
    camera.Orbit(nan, 0);
    camera.Pan(0, inf, kViewSize);
    camera.Zoom(0, {0, 0}, kViewSize);
    camera.Zoom(-2, {0, 0}, kViewSize);
    camera.Zoom(nan, {0, 0}, kViewSize);
    camera.Zoom(2, {nan, 0}, kViewSize);
    camera.SetView({0, 0, 0}, {0, 0, 0}, {0, 0, 1}, 10);
    camera.SetView({0, 0, 0}, {0, 0, 1}, {0, 0, 2}, 10);
    camera.SetView({0, 0, 0}, {1, 0, 0}, {0, 0, 1}, nan);
    camera.SetView({nan, 0, 0}, {1, 0, 0}, {0, 0, 1}, 10);
    camera.SetStandardView(ZORVisCamera::StandardView(17));
    EXPECT_EQ(camera, before);
}

TEST(ZORVisCameraTest, AViewWithoutAreaCountsAsOnePixel)
{
    const ZORVisCamera camera;
    EXPECT_EQ(camera.GetPixelSize(QSizeF(0, 0)), 100);
    EXPECT_EQ(camera.GetPixelSize(QSizeF(-5, 10)), 100);
}
