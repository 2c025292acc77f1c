// Lines on surfaces stay in front of them, from wherever they are seen.

#include "PictureTest.h"

#include <ZORVisualization/ZORVisSurfacePrimitive.h>

#include <cmath>
#include <numbers>

namespace {

class ZORVisLinesOnSurfacesTest : public PictureTest
{
protected:
    /// Sees the middle from an angle in degrees to the normal of the x-y plane.
    void LookFrom(double degrees, double turn = 0.3)
    {
        const double angle = degrees * std::numbers::pi / 180;
        const ZORMathVector from(std::sin(angle) * std::cos(turn), std::sin(angle) * std::sin(turn),
                                 std::cos(angle));
        camera.SetView({0, 0, 0}, -from, {-std::sin(turn), std::cos(turn), 0}, 100);
    }
    static int CountRed(const QImage& image) { return CountPixels(image, IsReddish); }
    void ShowCurve(double width, const ZORMathSetOfPoints& points)
    {
        Show({new ZORVisPolylinePrimitive(points, ZORVisPolylinePrimitive::Chain)}, Options(Qt::red, width));
    }
    /// Shows a curve alone with a surface, some millimeters nearer to the eye than it is: the same pixels, all of them.
    int CountNearer(double width, const ZORMathSetOfPoints& points, ZORGeoSurface* surface, double distance)
    {
        ZORMathSetOfPoints nearer;
        for (const ZORMathPoint& point : points)
            nearer.append(point - distance * camera.GetViewDirection());
        return CountWith(width, nearer, surface);
    }
    int CountWith(double width, const ZORMathSetOfPoints& points, ZORGeoSurface* surface)
    {
        Clear();
        ShowCurve(width, points);
        Show({new ZORVisSurfacePrimitive(surface)}, Options(QColor(180, 190, 200)));
        return CountRed(Render());
    }
};

TEST_F(ZORVisLinesOnSurfacesTest, LinesOnAPlaneAreWholeFromSteepAngles)
{
    ZORGeoSurface* const square = CreateSquare({0, 0, 0}, 90);
    const ZORMathSetOfPoints points{{-30, -5, 0}, {30, 15, 0}, {5, -30, 0}};
    for (const double width : {1.0, 2.0, 5.0}) {
        for (const double degrees : {0.0, 60.0, 80.0, 86.0, 89.0}) {
            for (const double turn : {0.0, 0.3, 0.785}) {
                LookFrom(degrees, turn);
                const int whole = CountNearer(width, points, square, 95);
                ASSERT_GT(whole, 30);
                EXPECT_GE(CountWith(width, points, square), 0.95 * whole)
                    << width << " " << degrees << " " << turn;
            }
        }
    }
}

TEST_F(ZORVisLinesOnSurfacesTest, LinesOnACylinderAreWholeInFrontAndHiddenBehind)
{
    // Half a cylinder along x, and rings along its triangles.
    constexpr int kSteps = 48;
    QList<ZORMathPoint> vertices;
    QList<ZORGeoSurface::Corners> triangles;
    ZORMathSetOfPoints ring;
    for (int i = 0; i <= kSteps; ++i) {
        const double angle = std::numbers::pi * i / kSteps;
        for (const double x : {-40.0, 40.0})
            vertices.append({x, 30 * std::cos(angle), 30 * std::sin(angle)});
        ring.append({0, 30 * std::cos(angle), 30 * std::sin(angle)});
        if (i > 0) {
            const int a = 2 * i - 2;
            triangles << ZORGeoSurface::Corners{a, a + 1, a + 3} << ZORGeoSurface::Corners{a, a + 3, a + 2};
        }
    }
    camera.SetStandardView(ZORVisCamera::Top);
    ZORGeoSurface* const cylinder = CreateSurface(vertices, triangles);
    EXPECT_GE(CountWith(2, ring, cylinder), 0.95 * CountNearer(2, ring, cylinder, 50)) << "to its very ends";
    // 5 mm below the ridge
    EXPECT_EQ(0, CountWith(2, {{-30, 0, 25}, {30, 0, 25}}, cylinder)) << "what is behind stays hidden";
}

TEST_F(ZORVisLinesOnSurfacesTest, TransparentSurfacesStillMixWithLinesBehindThem)
{
    Show({new ZORVisSurfacePrimitive(CreateSquare({0, 0, -30}, 90))}, Options(QColor(200, 200, 200)));
    ShowCurve(3, {{-40, 0, 0}, {40, 0, 0}});
    Show({new ZORVisSurfacePrimitive(CreateSquare({0, 0, 20}, 60))}, Options(QColor(0, 0, 255, 128)));
    const QImage picture = Render();
    const QColor behind = picture.pixelColor(100, 50);
    EXPECT_GT(behind.blue(), 80) << "the line is behind the glass";
    EXPECT_GT(behind.red(), 80);
    const QColor beside = picture.pixelColor(65, 50);
    EXPECT_GT(beside.red(), 200);
    EXPECT_LT(beside.blue(), 60);
}

} // namespace
