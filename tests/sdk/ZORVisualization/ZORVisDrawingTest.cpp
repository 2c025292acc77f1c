// Drawings of a scene, highlights and what is hidden.

#include "VisTest.h"

#include <ZORVisualization/ZORVisPointPrimitive.h>
#include <ZORVisualization/ZORVisPolylinePrimitive.h>
#include <ZORVisualization/ZORVisRepGraphics.h>
#include <ZORVisualization/ZORVisSurfacePrimitive.h>

#include <QCoreApplication>
#include <QSignalSpy>

namespace {

using Highlight = ZORVisScene::Highlight;

class ZORVisDrawingTest : public VisTest
{
protected:
    std::unique_ptr<ZORVisRep> Square(double edge, const ZORVisOptions& options)
    {
        return std::make_unique<ZORVisRepGraphics>(
            QList<const ZORVisPrimitive*>{new ZORVisSurfacePrimitive(CreateSquare({0, 0, 0}, edge))},
            options);
    }
    QColor MiddleColor() { return Render().pixelColor(100, 50); }

    QObject owner;
};

TEST_F(ZORVisDrawingTest, IsDrawnAndPickedWithoutTheEnvironment)
{
    QSignalSpy changed(&scene, &ZORVisScene::Changed);
    scene.SetDrawing(&owner, Square(40, Options(Qt::red)));
    EXPECT_TRUE(scene.HasDrawing(&owner));
    EXPECT_EQ(1, scene.GetNumDrawings());
    EXPECT_EQ(0, environment.GetNumVirtualObjects());
    QCoreApplication::processEvents();
    EXPECT_EQ(1, changed.count());
    EXPECT_NEAR(CountDrawn(Render()), 1600, 90);
    const ZORVisPickResult hit = renderer.Pick(camera, QSize(200, 100), QPointF(100, 50));
    EXPECT_TRUE(hit.IsHit());
    EXPECT_EQ(&owner, hit.owner);
    EXPECT_EQ(nullptr, hit.object);
    EXPECT_GT(hit.triangle, 0);
    EXPECT_EQ(scene.GetBoundingBoxOf(&owner), scene.GetBoundingBox());

    scene.SetDrawing(&owner, Square(20, Options(Qt::red))); // in place of the other
    EXPECT_NEAR(CountDrawn(Render()), 400, 45);
    scene.RemoveDrawing(&owner);
    scene.RemoveDrawing(&owner);
    EXPECT_EQ(0, CountDrawn(Render()));
    EXPECT_FALSE(renderer.Pick(camera, QSize(200, 100), QPointF(100, 50)).IsHit());
    EXPECT_TRUE(scene.GetBoundingBox().IsEmpty());
}

TEST_F(ZORVisDrawingTest, GoesWithItsOwnerAndStaysWithoutTheEnvironment)
{
    auto dying = std::make_unique<QObject>();
    scene.SetDrawing(dying.get(), Square(40, Options(Qt::red)));
    scene.SetHighlight(dying.get(), Highlight::Selected);
    dying.reset();
    EXPECT_EQ(0, scene.GetNumDrawings());
    EXPECT_EQ(0, CountDrawn(Render()));

    auto other = std::make_unique<ZORVisEnvironment>();
    ZORVisScene otherScene(other.get());
    otherScene.SetDrawing(&owner, Square(40, Options(Qt::red)));
    other.reset();
    EXPECT_TRUE(otherScene.HasDrawing(&owner));
    renderer.SetScene(&otherScene);
    EXPECT_NEAR(CountDrawn(Render()), 1600, 90);
    otherScene.SetDrawing(&owner, nullptr);
    EXPECT_FALSE(otherScene.HasDrawing(&owner));
    otherScene.SetDrawing(nullptr, Square(40, Options(Qt::red)));
    EXPECT_EQ(0, otherScene.GetNumDrawings());
}

TEST_F(ZORVisDrawingTest, AHighlightKeepsTheShading)
{
    // A roof: its sides have different shades, whatever its color.
    ZORGeoSurface* const roof =
        CreateSurface({{-40, -40, 0}, {0, -40, 40}, {40, -40, 0}, {-40, 40, 0}, {0, 40, 40}, {40, 40, 0}},
                      {{0, 1, 4}, {0, 4, 3}, {1, 2, 5}, {1, 5, 4}});
    const auto shades = [this] {
        const QImage picture = Render();
        return std::pair(picture.pixelColor(85, 50), picture.pixelColor(115, 50));
    };
    scene.SetDrawing(&owner, std::make_unique<ZORVisRepGraphics>(
                                 QList<const ZORVisPrimitive*>{new ZORVisSurfacePrimitive(roof)},
                                 Options(QColor(100, 120, 200))));
    const auto usual = shades();
    ASSERT_GT(std::abs(usual.first.blue() - usual.second.blue()), 20);
    for (const Highlight highlight : {Highlight::Selected, Highlight::Hovered}) {
        scene.SetHighlight(&owner, highlight);
        EXPECT_EQ(highlight, scene.GetHighlight(&owner));
        const auto seen = shades();
        EXPECT_GT(seen.first.red() - usual.first.red(), 20);
        EXPECT_GT(std::abs(seen.first.red() - seen.second.red()), 20) << "still shaded";
    }
    scene.SetHighlightColors(Qt::green, QColor());
    scene.SetHighlight(&owner, Highlight::Selected);
    EXPECT_GT(shades().first.green(), usual.first.green());
    scene.SetHighlight(&owner, Highlight::None);
    EXPECT_EQ(usual, shades());
    scene.SetHighlight(nullptr, Highlight::Selected);
}

TEST_F(ZORVisDrawingTest, HighlightsLinesSymbolsAndWhatTheEnvironmentShows)
{
    scene.SetHighlightColors(Qt::red, QColor());
    scene.SetHighlight(&owner, Highlight::Selected); // before there is anything to see
    Show({new ZORVisPolylinePrimitive({{-50, 20, 0}, {50, 20, 0}}, ZORVisPolylinePrimitive::Chain)},
         Options(Qt::blue), &owner);
    scene.SetDrawing(
        &owner, std::make_unique<ZORVisRepGraphics>(
                    QList<const ZORVisPrimitive*>{new ZORVisPointPrimitive(ZORMathSetOfPoints{{0, -20, 0}})},
                    Options(Qt::blue)));
    const auto isBlue = [](const QColor& color) { return color.blue() > color.red() + 60; };
    const auto isRed = [](const QColor& color) { return color.red() > color.blue() + 60; };
    const QImage selected = Render();
    EXPECT_EQ(0, CountPixels(selected, isBlue));
    EXPECT_GT(CountPixels(selected.copy(0, 0, 200, 50), isRed), 250) << "wider than usual";
    EXPECT_GT(CountPixels(selected.copy(0, 50, 200, 50), isRed), 5);
    scene.SetHighlight(&owner, Highlight::None);
    const QImage usual = Render();
    EXPECT_EQ(0, CountPixels(usual, isRed));
    EXPECT_LT(CountPixels(usual.copy(0, 0, 200, 50), isBlue), 250);
}

TEST_F(ZORVisDrawingTest, HidesWhatTheEnvironmentShowsForAnOwner)
{
    Show({new ZORVisSurfacePrimitive(CreateSquare({0, 0, 0}, 40))}, Options(Qt::red), &owner);
    QObject other;
    scene.SetHidden(&other, true);
    EXPECT_GT(CountDrawn(Render()), 1000);
    scene.SetHidden(&owner, true);
    EXPECT_TRUE(scene.IsHidden(&owner));
    EXPECT_EQ(0, CountDrawn(Render()));
    EXPECT_FALSE(renderer.Pick(camera, QSize(200, 100), QPointF(100, 50)).IsHit());
    EXPECT_TRUE(scene.GetBoundingBox().IsEmpty());
    EXPECT_EQ(1, environment.GetNumVirtualObjects());
    scene.SetDrawing(&owner, Square(20, Options(Qt::blue)));
    EXPECT_NEAR(CountDrawn(Render()), 400, 45) << "drawings are not hidden";
    scene.SetHidden(&owner, false);
    EXPECT_GT(CountDrawn(Render()), 1000);
}

TEST_F(ZORVisDrawingTest, OtherOptionsShareThePrimitives)
{
    const ZORVisRepGraphics red({new ZORVisSurfacePrimitive(CreateSquare({0, 0, 0}, 40))}, Options(Qt::red));
    red.Prepare(); // whatever draws it
    scene.SetDrawing(&owner, red.WithOptions(Options(Qt::blue)));
    EXPECT_GT(MiddleColor().blue(), MiddleColor().red());
    const std::unique_ptr<ZORVisRepGraphics> green = red.WithOptions(Options(Qt::green));
    EXPECT_EQ(red.GetPrimitives(), green->GetPrimitives());
    scene.SetDrawing(&owner, red.WithOptions(green->GetOptions()));
    EXPECT_GT(MiddleColor().green(), MiddleColor().blue());
}

TEST_F(ZORVisDrawingTest, DisplaysOfOneDrawing)
{
    ZORVisOptions options = Options(QColor(120, 120, 120));
    options.SetDisplay(ZORVisOptions::Wireframe);
    scene.SetDrawing(&owner, Square(61, options));
    const int edges = CountDrawn(Render());
    EXPECT_GT(edges, 200);
    EXPECT_LT(edges, 700);
    options.SetDisplay(ZORVisOptions::WithEdges);
    scene.SetDrawing(&owner, Square(61, options));
    const QImage both = Render();
    EXPECT_NEAR(CountDrawn(both), 61 * 61, 150);
    const auto isDark = [](const QColor& color) { return color.red() < 80; };
    EXPECT_GT(CountPixels(both, isDark), 150);
    options.SetDisplay(ZORVisOptions::Shaded);
    scene.SetDrawing(&owner, Square(61, options));
    EXPECT_EQ(0, CountPixels(Render(), isDark));
}

} // namespace
