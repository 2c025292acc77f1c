#include "VisTest.h"

#include <ZORVisualization/ZORVisPointPrimitive.h>
#include <ZORVisualization/ZORVisPolylinePrimitive.h>
#include <ZORVisualization/ZORVisRepGraphics.h>
#include <ZORVisualization/ZORVisSurfacePrimitive.h>
#include <ZORVisualization/ZORVisTrianglePrimitive.h>

#include <cmath>
#include <limits>
#include <random>

namespace {

constexpr QSize kViewSize(200, 100);

class ZORVisPickTest : public VisTest
{
protected:
    ZORVisPickTest() { camera.SetView({0, 0, 0}, {0, 0, -1}, {0, 1, 0}, 100); }

    ZORVisPickResult PickAt(double x, double y, double ratio = 1) const
    {
        return renderer.Pick(camera, kViewSize, {x, y}, ratio);
    }
};

// Parameter of the ray where it meets the triangle, infinite where it does not.
double MeetTriangle(const ZORMathPoint& origin, const ZORMathVector& direction, const ZORMathPoint& a,
                    const ZORMathPoint& b, const ZORMathPoint& c)
{
    const double none = std::numeric_limits<double>::infinity();
    const ZORMathVector p = Cross(direction, c - a);
    const double determinant = Dot(b - a, p);
    if (std::abs(determinant) < 1e-12)
        return none;
    const double u = Dot(origin - a, p) / determinant;
    const ZORMathVector q = Cross(origin - a, b - a);
    const double v = Dot(direction, q) / determinant;
    return u >= 0 && v >= 0 && u + v <= 1 ? Dot(c - a, q) / determinant : none;
}

} // namespace

TEST_F(ZORVisPickTest, FindsTheObjectItsOwnerAndThePlace)
{
    QObject owner;
    ZORVisVirtualObject* object =
        Show({new ZORVisSurfacePrimitive(CreateSquare({0, 0, 7}, 60))}, Options(Qt::red), &owner);
    const ZORVisPickResult hit = PickAt(110, 70);
    EXPECT_TRUE(hit.IsHit());
    EXPECT_EQ(hit.object, object);
    EXPECT_EQ(hit.owner, &owner);
    EXPECT_NEAR(hit.point.DistanceTo({10, -20, 7}), 0, 1e-9);
    EXPECT_EQ(hit.triangle, 1);
    EXPECT_EQ(PickAt(90, 30).triangle, 2);
    EXPECT_FALSE(PickAt(20, 50).IsHit());
    EXPECT_FALSE(PickAt(-1e300, 50).IsHit());
    EXPECT_FALSE(PickAt(std::nan(""), 50).IsHit());
    EXPECT_FALSE(renderer.Pick(camera, QSize(0, 0), {0, 0}).IsHit());
}

TEST_F(ZORVisPickTest, ASurfaceIsFoundAfterItsGeometryHasDied)
{
    auto* surface = new ZORGeoSurface(&container, {{-500, 0, 0}, {-40, -40, 0}, {40, -40, 0}, {0, 40, 0}},
                                      {{0, 0, 0}, {1, 2, 3}});
    ZORVisVirtualObject* object = Show({new ZORVisSurfacePrimitive(surface)}, Options(Qt::red), surface);
    EXPECT_EQ(PickAt(100, 50).owner, surface);
    delete surface;
    const ZORVisPickResult hit = PickAt(100, 50);
    EXPECT_EQ(hit.object, object);
    EXPECT_EQ(hit.owner, nullptr);
    EXPECT_EQ(hit.triangle, 2);
    EXPECT_NEAR(hit.point.DistanceTo({0, 0, 0}), 0, 1e-9);
}

TEST_F(ZORVisPickTest, LooseTrianglesAreNumberedAsGiven)
{
    const double nan = std::nan("");
    Show({new ZORVisTrianglePrimitive(
             {{nan, 0, 0}, {1, 0, 0}, {0, 1, 0}, {-40, -40, 0}, {40, -40, 0}, {0, 40, 0}})},
         Options(Qt::red));
    EXPECT_EQ(PickAt(100, 50).triangle, 2);
}

TEST_F(ZORVisPickTest, TheNearestSurfaceIsFoundAsByTestingEveryTriangle)
{
    std::mt19937 random(4);
    std::uniform_real_distribution<double> coordinate(-60, 60);
    const auto point = [&] {
        return ZORMathPoint(coordinate(random), coordinate(random), coordinate(random));
    };
    QList<ZORMathSetOfPoints> soups;
    QList<ZORVisVirtualObject*> objects;
    for (int i = 0; i < 5; ++i) {
        QList<ZORMathPoint> vertices;
        QList<ZORGeoSurface::Corners> corners;
        for (int t = 0; t < 20; ++t) {
            corners.append({3 * t, 3 * t + 1, 3 * t + 2});
            vertices << point() << point() << point();
        }
        soups.append(vertices);
        const ZORVisPrimitive* primitive = nullptr;
        if (i % 2 == 0)
            primitive = new ZORVisSurfacePrimitive(CreateSurface(vertices, corners));
        else
            primitive = new ZORVisTrianglePrimitive(vertices);
        objects.append(Show({primitive}, Options(Qt::red)));
    }
    int hits = 0;
    for (int i = 0; i < 300; ++i) {
        camera.Orbit(coordinate(random), coordinate(random));
        const QPointF pixel(coordinate(random) + 100, coordinate(random) * 0.8 + 50);
        const ZORMathPoint origin = camera.PixelToWorld(pixel, kViewSize) - 1000 * camera.GetViewDirection();
        double nearest = std::numeric_limits<double>::infinity();
        ZORVisPickResult expected;
        for (int s = 0; s < 5; ++s) {
            for (int t = 0; t < 20; ++t) {
                const double parameter = MeetTriangle(origin, camera.GetViewDirection(), soups[s][3 * t],
                                                      soups[s][3 * t + 1], soups[s][3 * t + 2]);
                if (parameter < nearest) {
                    nearest = parameter;
                    expected = {objects[s], nullptr, origin + parameter * camera.GetViewDirection(), t + 1};
                }
            }
        }
        const ZORVisPickResult found = PickAt(pixel.x(), pixel.y());
        ASSERT_EQ(found.object, expected.object);
        ASSERT_EQ(found.triangle, expected.triangle);
        if (expected.IsHit()) {
            ASSERT_NEAR(found.point.DistanceTo(expected.point), 0, 1e-6);
            ++hits;
        }
    }
    EXPECT_GT(hits, 150);
}

TEST_F(ZORVisPickTest, LinesAndPointsAreFoundWithinFivePixels)
{
    const ZORVisVirtualObject* line =
        Show({new ZORVisPolylinePrimitive({{-50, 0, 0}, {50, 0, 0}}, ZORVisPolylinePrimitive::Chain)},
             Options(Qt::red));
    EXPECT_EQ(PickAt(100, 54.9).object, line);
    EXPECT_FALSE(PickAt(100, 55.1).IsHit());
    EXPECT_EQ(PickAt(100, 59.9, 2).object, line);
    EXPECT_NEAR(PickAt(120.25, 53).point.DistanceTo({20.25, 0, 0}), 0, 1e-9);
    EXPECT_EQ(PickAt(120, 53).triangle, 0);
    EXPECT_EQ(PickAt(154, 50).object, line); // beyond its end
    EXPECT_FALSE(PickAt(156, 50).IsHit());

    const ZORVisVirtualObject* point = Show({new ZORVisPointPrimitive({{50, 3, -20}})}, Options(Qt::blue));
    EXPECT_EQ(PickAt(150, 44).object, point);
}

TEST_F(ZORVisPickTest, PointsWinOverLinesAndLinesOverSurfacesAtTheSameDepth)
{
    const ZORVisVirtualObject* surface =
        Show({new ZORVisSurfacePrimitive(CreateSquare({0, 0, 0}, 80))}, Options(Qt::gray));
    const ZORVisVirtualObject* line =
        Show({new ZORVisPolylinePrimitive({{-30, 0, 0}, {30, 0, 0}}, ZORVisPolylinePrimitive::Chain)},
             Options(Qt::red));
    const ZORVisVirtualObject* point = Show({new ZORVisPointPrimitive({{0, 0, 0}})}, Options(Qt::blue));
    EXPECT_EQ(PickAt(100, 20).object, surface);
    EXPECT_EQ(PickAt(120, 52).object, line);
    EXPECT_EQ(PickAt(103, 50).object, point);
}

TEST_F(ZORVisPickTest, WhatLiesFarBehindASurfaceIsNotFoundUnlessOnlyEdgesAreDrawn)
{
    const ZORVisVirtualObject* surface =
        Show({new ZORVisSurfacePrimitive(CreateSquare({0, 0, 50}, 80))}, Options(Qt::gray));
    const ZORVisVirtualObject* line =
        Show({new ZORVisPolylinePrimitive({{-90, 0, 0}, {90, 0, 0}}, ZORVisPolylinePrimitive::Chain)},
             Options(Qt::red));
    EXPECT_EQ(PickAt(100, 50).object, surface);
    EXPECT_EQ(PickAt(20, 50).object, line);
    renderer.SetDisplayMode(ZORVisRenderer::Wireframe);
    EXPECT_EQ(PickAt(100, 50).object, line);
    EXPECT_EQ(PickAt(100, 20).object, surface);
}

TEST_F(ZORVisPickTest, LongChainsArePickedLikeEverySegmentOfTheirs)
{
    std::mt19937 random(5);
    std::uniform_real_distribution<double> coordinate(-45, 45);
    ZORMathSetOfPoints points;
    for (int i = 0; i < 1000; ++i) {
        const bool lost = i % 97 == 0;
        points.append({coordinate(random), coordinate(random), lost ? std::nan("") : 0.0});
    }
    for (const auto structure : {ZORVisPolylinePrimitive::Chain, ZORVisPolylinePrimitive::Pairs}) {
        qDeleteAll(environment.GetVirtualObjects());
        Show({new ZORVisPolylinePrimitive(points, structure)}, Options(Qt::red));
        const int step = structure == ZORVisPolylinePrimitive::Pairs ? 2 : 1;
        for (int i = 0; i < 200; ++i) {
            const QPointF pixel(coordinate(random) * 2 + 100, coordinate(random) * 1.1 + 50);
            double nearest = std::numeric_limits<double>::infinity();
            for (int s = 0; s + 1 < points.size(); s += step) {
                const QPointF from = camera.WorldToPixel(points[s], kViewSize);
                const QPointF along = camera.WorldToPixel(points[s + 1], kViewSize) - from;
                if (std::isnan(points[s].GetZ()) || std::isnan(points[s + 1].GetZ()))
                    continue;
                const double t = std::clamp(
                    QPointF::dotProduct(pixel - from, along) / QPointF::dotProduct(along, along), 0.0, 1.0);
                const QPointF offset = from + t * along - pixel;
                nearest = std::min(nearest, std::hypot(offset.x(), offset.y()));
            }
            const ZORVisPickResult hit = PickAt(pixel.x(), pixel.y());
            ASSERT_EQ(hit.IsHit(), nearest <= 5) << nearest;
            if (hit.IsHit()) {
                const QPointF offset = camera.WorldToPixel(hit.point, kViewSize) - pixel;
                ASSERT_NEAR(std::hypot(offset.x(), offset.y()), nearest, 1e-6);
            }
        }
    }
}
