#include "VisTest.h"

#include <ZORVisualization/ZORVisPointPrimitive.h>
#include <ZORVisualization/ZORVisPolylinePrimitive.h>
#include <ZORVisualization/ZORVisRepGraphics.h>
#include <ZORVisualization/ZORVisSurfacePrimitive.h>
#include <ZORVisualization/ZORVisTextPrimitive.h>

#include <limits>
#include <random>
#include <thread>

namespace {

class ZORVisRendererTest : public VisTest
{
protected:
    // Something of everything.
    void ShowMixture()
    {
        std::mt19937 random(3);
        std::uniform_real_distribution<double> coordinate(-45, 45);
        const auto point = [&] {
            return ZORMathPoint(coordinate(random), coordinate(random), coordinate(random));
        };
        for (int i = 0; i < 20; ++i) {
            ZORVisOptions options =
                Options(QColor::fromHsv(i * 18, 255, 200, i % 3 == 0 ? 120 : 255), 1 + i % 4);
            options.SetLineStyle(ZORVisOptions::LineStyle(i % 13));
            options.SetPointSymbol(ZORVisOptions::PointSymbol(i % 11));
            Show({new ZORVisSurfacePrimitive(CreateSurface({point(), point(), point()}, {{0, 1, 2}})),
                  new ZORVisPolylinePrimitive({point(), point(), point()}, ZORVisPolylinePrimitive::Chain),
                  new ZORVisPointPrimitive({point(), point()}),
                  new ZORVisTextPrimitive(QString::number(i), point(), ZORVisTextPrimitive::Center,
                                          ZORVisTextPrimitive::FixedSize)},
                 options);
        }
    }
};

} // namespace

TEST_F(ZORVisRendererTest, TheSamePictureTwiceIsTheSameBytes)
{
    ShowMixture();
    camera.SetStandardView(ZORVisCamera::Isometric);
    renderer.SetBackground(Qt::gray, Qt::white);
    renderer.SetAxisTriadVisible(true);
    const QImage first = Render(QSize(300, 200));
    EXPECT_EQ(Render(QSize(300, 200)), first);
    camera.Orbit(30, 10);
    EXPECT_NE(Render(QSize(300, 200)), first);

    camera.SetStandardView(ZORVisCamera::Isometric);
    ZORVisScene otherScene(&environment);
    ZORVisRenderer other;
    other.SetScene(&otherScene);
    other.SetBackground(Qt::gray, Qt::white);
    other.SetAxisTriadVisible(true);
    EXPECT_EQ(other.Render(camera, QSize(300, 200)), first);
}

TEST_F(ZORVisRendererTest, RenderersOfOneSceneDoNotDisturbEachOther)
{
    ShowMixture();
    const QImage shaded = Render();
    ZORVisRenderer wireframe;
    wireframe.SetScene(&scene);
    wireframe.SetDisplayMode(ZORVisRenderer::Wireframe);
    const QImage edges = wireframe.Render(camera, QSize(400, 200), 2);
    EXPECT_EQ(Render(), shaded);
    EXPECT_EQ(wireframe.Render(camera, QSize(400, 200), 2), edges);
}

TEST_F(ZORVisRendererTest, TheBackgroundIsExact)
{
    renderer.SetBackground(QColor(12, 34, 56), QColor(12, 34, 56));
    const QImage plain = Render();
    EXPECT_EQ(CountPixels(plain, [](const QColor& color) { return color == QColor(12, 34, 56); }), 200 * 100);

    renderer.SetBackground(QColor(10, 20, 30), QColor(210, 120, 30));
    const QImage gradient = Render();
    EXPECT_NEAR(gradient.pixelColor(0, 0).red(), 11, 1);
    EXPECT_NEAR(gradient.pixelColor(199, 99).red(), 209, 1);
    EXPECT_EQ(gradient.pixelColor(3, 50).blue(), 30);
    for (int y = 0; y < 100; ++y)
        EXPECT_EQ(gradient.pixel(0, y), gradient.pixel(199, y));

    renderer.SetBackground(QColor(), QColor());
    EXPECT_EQ(CountDrawn(Render()), 0);
}

TEST_F(ZORVisRendererTest, PicturesAreOpaque)
{
    ShowMixture();
    renderer.SetBackground(QColor(0, 0, 0, 0), QColor(0, 0, 0, 0));
    const QImage image = Render();
    EXPECT_EQ(image.format(), QImage::Format_RGB32);
    EXPECT_EQ(image.pixelColor(0, 0), QColor(Qt::black));
    for (int x = 0; x < image.width(); ++x)
        EXPECT_EQ(qAlpha(reinterpret_cast<const QRgb*>(image.constScanLine(50))[x]), 255);
}

TEST_F(ZORVisRendererTest, SizesThatCannotBeDrawnGiveNull)
{
    const int most = std::numeric_limits<int>::max();
    for (const QSize size : {QSize(0, 0), QSize(0, 10), QSize(10, 0), QSize(-5, 5), QSize(most, most),
                             QSize(), QSize(100000, 100000), QSize(-most, -most)})
        EXPECT_TRUE(renderer.Render(camera, size).isNull()) << size.width() << " x " << size.height();
    EXPECT_EQ(renderer.Render(camera, QSize(1, 1)).size(), QSize(1, 1));
}

TEST_F(ZORVisRendererTest, AUselessPixelRatioCountsAsOne)
{
    ShowMixture();
    const QImage expected = renderer.Render(camera, QSize(100, 100), 1);
    for (const double ratio :
         {0.0, -1.0, std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()})
        EXPECT_EQ(renderer.Render(camera, QSize(100, 100), ratio), expected);
}

TEST_F(ZORVisRendererTest, WithoutSceneThereIsTheBackground)
{
    ShowMixture();
    renderer.SetScene(nullptr);
    EXPECT_EQ(CountDrawn(Render()), 0);
    {
        ZORVisScene shortLived(&environment);
        renderer.SetScene(&shortLived);
        EXPECT_GT(CountDrawn(Render()), 0);
    }
    EXPECT_EQ(renderer.GetScene(), nullptr);
    EXPECT_EQ(CountDrawn(Render()), 0);
    EXPECT_FALSE(renderer.Pick(camera, QSize(100, 100), {50, 50}).IsHit());
}

TEST_F(ZORVisRendererTest, ChangesOfTheEnvironmentShowInTheNextPicture)
{
    const auto showLine = [&](double y) {
        return Show({new ZORVisPolylinePrimitive({{-50, y, 0}, {50, y, 0}}, ZORVisPolylinePrimitive::Chain)},
                    Options(Qt::black, 2));
    };
    EXPECT_EQ(CountDrawn(Render()), 0);
    ZORVisVirtualObject* first = showLine(20);
    const int one = CountDrawn(Render());
    EXPECT_GT(one, 100);
    const ZORVisVirtualObject* second = showLine(-20);
    EXPECT_EQ(CountDrawn(Render()), 2 * one);
    first->SetRep(nullptr);
    EXPECT_EQ(CountDrawn(Render()), one);
    EXPECT_NEAR(CenterOfDrawn(Render()).y(), 70, 1);
    first->SetRep(new ZORVisRepGraphics(
        {new ZORVisPolylinePrimitive({{-50, 0, 0}, {50, 0, 0}}, ZORVisPolylinePrimitive::Chain)},
        Options(Qt::black, 2)));
    EXPECT_EQ(CountDrawn(Render()), 2 * one);
    delete second;
    EXPECT_NEAR(CenterOfDrawn(Render()).y(), 50, 1);
    delete first;
    EXPECT_EQ(CountDrawn(Render()), 0);
}

TEST_F(ZORVisRendererTest, APictureOutlivesGeometryAndEnvironment)
{
    auto* surface = new ZORGeoSurface(&container, {{-40, -40, 0}, {40, -40, 0}, {0, 40, 0}}, {{0, 1, 2}});
    ZORVisVirtualObject* object = Show({new ZORVisSurfacePrimitive(surface)}, Options(Qt::red), surface);
    delete surface;
    EXPECT_NEAR(CountDrawn(Render()), 3200, 150);
    EXPECT_EQ(object->GetOwner(), nullptr);
}

TEST_F(ZORVisRendererTest, TheTriadShowsTheAxesInTheLowerLeftCorner)
{
    const QSize size(300, 200);
    EXPECT_EQ(CountDrawn(Render(size)), 0);
    renderer.SetAxisTriadVisible(true);
    camera.SetStandardView(ZORVisCamera::Isometric);
    const QImage image = Render(size);
    const QImage corner = image.copy(0, 90, 110, 110);
    EXPECT_EQ(CountDrawn(image), CountDrawn(corner));
    EXPECT_GT(CountPixels(corner, [](const QColor& c) { return c.red() > c.green() + 100; }), 40);
    EXPECT_GT(CountPixels(corner, [](const QColor& c) { return c.green() > c.red() + 80; }), 40);
    EXPECT_GT(CountPixels(corner, [](const QColor& c) { return c.blue() > c.red() + 100; }), 40);
    camera.SetStandardView(ZORVisCamera::Top);
    const QImage top = Render(size);
    EXPECT_GT(top.pixelColor(52 + 20, 200 - 52).red(), 180);   // x to the right
    EXPECT_GT(top.pixelColor(52, 200 - 52 - 20).green(), 120); // y up
    EXPECT_EQ(CountDrawn(Render(QSize(60, 60))), 0);           // too small a picture
}

TEST_F(ZORVisRendererTest, LargePicturesAreDrawnInTilesWithoutSeams)
{
    // Larger than one tile in both directions; symbols, texts and lines lie on the joints at 2048.
    const QSize size(4000, 2600);
    const auto show = [&](const ZORMathPoint& place) {
        qDeleteAll(environment.GetVirtualObjects());
        ZORVisOptions options = Options(Qt::black, 3);
        options.SetPointSymbol(ZORVisOptions::FullCircle2);
        Show({new ZORVisPointPrimitive({place}),
              new ZORVisTextPrimitive(QStringLiteral("joint"), place, ZORVisTextPrimitive::LowerLeft,
                                      ZORVisTextPrimitive::FixedSize),
              new ZORVisPolylinePrimitive(
                  {place + ZORMathVector(-50, 10, 0), place + ZORMathVector(50, 10, 0)},
                  ZORVisPolylinePrimitive::Chain)},
             options);
        return CountDrawn(Render(size));
    };
    const int onTheJoint = show({2048.0 - 2000, 1300 - 2048.0, 0});
    const int elsewhere = show({-1000, 500, 0});
    EXPECT_GT(elsewhere, 200);
    EXPECT_EQ(onTheJoint, elsewhere);
}

TEST_F(ZORVisRendererTest, PicturesMayBeWiderThanAnyWindow)
{
    ZORVisOptions options = Options(Qt::black, 2);
    options.SetPointSymbol(ZORVisOptions::FullSquare2);
    Show({new ZORVisPointPrimitive({{19950, 0, 0}}),
          new ZORVisPolylinePrimitive({{-19990, 0, 0}, {-19900, 0, 0}}, ZORVisPolylinePrimitive::Chain)},
         options);
    const QImage image = Render(QSize(40000, 20));
    ASSERT_FALSE(image.isNull());
    EXPECT_NEAR(CountDrawn(image.copy(39900, 0, 100, 20)), 121, 3);
    EXPECT_NEAR(CountDrawn(image.copy(0, 0, 200, 20)), 180, 20);
}

TEST_F(ZORVisRendererTest, AnotherThreadGetsItsPictureToo)
{
    Show({new ZORVisSurfacePrimitive(CreateSquare({0, 0, 0}, 60))}, Options(Qt::red));
    Render();
    QImage image;
    std::thread([&] {
        ZORVisRenderer other;
        other.SetScene(&scene);
        image = other.Render(camera, QSize(200, 100));
    }).join();
    EXPECT_NEAR(CountDrawn(image), 3600, 130);
}

TEST_F(ZORVisRendererTest, ManyObjectsAreDrawnAndRemoved)
{
    QList<ZORVisVirtualObject*> objects;
    for (int i = 0; i < 5000; ++i) {
        const double y = -45 + 90.0 * i / 5000;
        objects.append(
            Show({new ZORVisPolylinePrimitive({{-90, y, 0}, {90, y, 0}}, ZORVisPolylinePrimitive::Chain)},
                 Options(Qt::black)));
    }
    EXPECT_NEAR(CountDrawn(Render()), 180 * 90, 400);
    for (int i = 0; i < 2500; ++i)
        delete objects[i];
    EXPECT_NEAR(CountDrawn(Render()), 180 * 45, 400);
}
