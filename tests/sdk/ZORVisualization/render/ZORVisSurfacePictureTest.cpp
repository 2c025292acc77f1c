// What surfaces look like, and what they hide.

#include "PictureTest.h"

#include <ZORVisualization/ZORVisSurfacePrimitive.h>
#include <ZORVisualization/ZORVisTrianglePrimitive.h>

#include <array>
#include <cmath>

namespace {

using ZORVisSurfacePictureTest = PictureTest;

TEST_F(ZORVisSurfacePictureTest, ASurfaceIsLitFromBothSides)
{
    Show({new ZORVisSurfacePrimitive(CreateSquare({0, 0, 0}, 60))}, Options(QColor(200, 40, 40)));
    const QImage front = Render();
    EXPECT_NEAR(CountPixels(front, IsReddish), 3600, 130);
    camera.SetStandardView(ZORVisCamera::Bottom);
    const QImage back = Render();
    EXPECT_NEAR(CountPixels(back, IsReddish), 3600, 130);
    EXPECT_NEAR(back.pixelColor(100, 50).red(), front.pixelColor(100, 50).red(), 3);
    EXPECT_GT(front.pixelColor(100, 50).red(), 180);
}

TEST_F(ZORVisSurfacePictureTest, SlantingSurfacesAreDarkerAndSoftEdgesSmooth)
{
    // Roofs of two squares each: a flat one of 10 degrees, a steep one of 45.
    const auto shades = [&](double degrees) {
        Clear();
        const double rise = 40 * std::tan(degrees * 0.017453292519943295);
        Show({new ZORVisSurfacePrimitive(CreateSurface(
                 {{-40, -40, 0}, {0, -40, rise}, {40, -40, 0}, {-40, 40, 0}, {0, 40, rise}, {40, 40, 0}},
                 {{0, 1, 4}, {0, 4, 3}, {1, 2, 5}, {1, 5, 4}}))},
             Options(QColor(200, 200, 200)));
        return Render();
    };
    const QImage soft = shades(10);
    EXPECT_LT(std::abs(soft.pixelColor(98, 50).red() - soft.pixelColor(102, 50).red()), 4);
    const QImage hard = shades(45);
    EXPECT_GT(std::abs(hard.pixelColor(98, 50).red() - hard.pixelColor(102, 50).red()), 10);
    EXPECT_LT(hard.pixelColor(120, 50).red(), soft.pixelColor(120, 50).red());
}

TEST_F(ZORVisSurfacePictureTest, NearSurfacesCoverFarOnesWhateverTheOrder)
{
    for (const bool nearFirst : {true, false}) {
        Clear();
        for (const bool isNear : {nearFirst, !nearFirst}) {
            Show({new ZORVisSurfacePrimitive(CreateSquare({0, 0, isNear ? 10.0 : -10.0}, 40))},
                 Options(isNear ? Qt::red : Qt::blue));
        }
        const QImage image = Render();
        EXPECT_EQ(CountPixels(image, IsBluish), 0);
        EXPECT_GT(CountPixels(image, IsReddish), 1500);
    }
}

TEST_F(ZORVisSurfacePictureTest, TransparentSurfacesLetOthersThrough)
{
    for (const bool transparentFirst : {true, false}) {
        Clear();
        const auto showTransparent = [&] {
            Show({new ZORVisSurfacePrimitive(CreateSquare({0, 0, 10}, 40))}, Options(QColor(255, 0, 0, 128)));
        };
        if (transparentFirst)
            showTransparent();
        Show({new ZORVisSurfacePrimitive(CreateSquare({0, 0, -10}, 40))}, Options(QColor(0, 0, 255)));
        if (!transparentFirst)
            showTransparent();
        const QColor mixed = Render().pixelColor(100, 50);
        EXPECT_NEAR(mixed.red(), 128, 20);
        EXPECT_NEAR(mixed.blue(), 128, 20);
    }
}

TEST_F(ZORVisSurfacePictureTest, WireframeShowsEdgesOnly)
{
    Show({new ZORVisSurfacePrimitive(CreateSquare({0, 0, 0}, 80))}, Options(Qt::red));
    renderer.SetDisplayMode(ZORVisRenderer::Wireframe);
    const QImage image = Render();
    EXPECT_FALSE(IsDrawn(image.pixel(90, 30))); // inside of both triangles
    EXPECT_FALSE(IsDrawn(image.pixel(110, 70)));
    EXPECT_TRUE(IsReddish(image.pixelColor(100, 50)) || IsReddish(image.pixelColor(100, 49))); // the diagonal
    EXPECT_GT(CountPixels(image, IsReddish), 300);
    EXPECT_LT(CountPixels(image, IsReddish), 900);
}

TEST_F(ZORVisSurfacePictureTest, LinesOnASlantingSurfaceAreNotBroken)
{
    Show({new ZORVisSurfacePrimitive(CreateSurface(
             {{-60, -40, -30}, {60, -40, 70}, {60, 40, 50}, {-60, 40, -50}}, {{0, 1, 2}, {0, 2, 3}}))},
         Options(QColor(90, 90, 200)));
    Show({new ZORVisPolylinePrimitive(ZORMathSetOfPoints{{-60, -40, -30}, {60, 40, 50}},
                                      ZORVisPolylinePrimitive::Chain)},
         Options(Qt::red, 2)); // the common edge of the triangles
    const QImage image = Render();
    int rowsWithLine = 0;
    for (int y = 10; y < 90; ++y)
        rowsWithLine += CountPixels(image.copy(0, y, image.width(), 1), IsReddish) > 0 ? 1 : 0;
    EXPECT_GE(rowsWithLine, 79);
}

TEST_F(ZORVisSurfacePictureTest, LinesBehindASurfaceAreHidden)
{
    Show({new ZORVisSurfacePrimitive(CreateSquare({0, 0, 0}, 60))}, Options(Qt::blue));
    ShowLine({-80, 0.5, -20}, {80, 0.5, -20}, Options(Qt::red, 2));
    const QImage image = Render();
    EXPECT_TRUE(IsReddish(image.pixelColor(30, 49)));
    EXPECT_TRUE(IsBluish(image.pixelColor(100, 49)));
    EXPECT_TRUE(IsReddish(image.pixelColor(170, 49)));
}

TEST_F(ZORVisSurfacePictureTest, SymbolsAndTextsAreHiddenAsAWholeOrNotAtAll)
{
    ShowSymbol({0, 0, 30}, ZORVisOptions::FullSquare2, Qt::red);
    const int whole = CountPixels(Render(), IsReddish);
    Clear();
    const auto redOver = [&](double height) {
        Clear();
        // 60 degrees steep: half of the symbol would be under the surface.
        Show({new ZORVisSurfacePrimitive(
                 CreateSurface({{-40, -40, -69.3}, {40, -40, 69.3}, {40, 40, 69.3}, {-40, 40, -69.3}},
                               {{0, 1, 2}, {0, 2, 3}}))},
             Options(Qt::blue));
        ShowSymbol({0, 0, height}, ZORVisOptions::FullSquare2, Qt::red);
        return CountPixels(Render(), IsReddish);
    };
    EXPECT_EQ(redOver(0), whole);
    EXPECT_EQ(redOver(30), whole);
    EXPECT_EQ(redOver(-30), 0);

    ShowText(QStringLiteral("W"), ZORVisTextPrimitive::Center, 20);
    const QImage on = Render();
    EXPECT_GT(CountPixels(on, [](const QColor& color) { return color.value() < 60; }), 20);
}

TEST_F(ZORVisSurfacePictureTest, TrianglesAreFlatShaded)
{
    Show({new ZORVisTrianglePrimitive(
             {{-40, -40, 0}, {0, -40, 30}, {0, 40, 30}, {0, -40, 30}, {40, -40, 0}, {0, 40, 30}})},
         Options(QColor(200, 60, 60)));
    const QImage image = Render();
    EXPECT_EQ(image.pixelColor(80, 60), image.pixelColor(95, 80));
    EXPECT_NE(image.pixelColor(95, 80), image.pixelColor(105, 80));
    EXPECT_NEAR(CountDrawn(image), 3200, 150);
}

} // namespace
