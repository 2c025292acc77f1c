// What lines, symbols and texts look like.

#include "PictureTest.h"

#include <ZORVisualization/ZORVisSurfacePrimitive.h>
#include <ZORVisualization/ZORVisTrianglePrimitive.h>

#include <QFont>
#include <QFontMetricsF>
#include <QPainter>

#include <array>
#include <cmath>
#include <limits>
#include <set>

namespace {

using ZORVisPictureTest = PictureTest;

// The same word as the renderer's, drawn by QPainter alone, its lower left corner at the middle.
QImage DrawReference(const QString& text, int size, const QSize& picture)
{
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(size);
    font.setHintingPreference(QFont::PreferNoHinting);
    font.setStyleStrategy(QFont::NoSubpixelAntialias);
    QImage image(picture, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setFont(font);
    painter.drawText(QPointF(picture.width() / 2.0, picture.height() / 2.0 - QFontMetricsF(font).descent()),
                     text);
    return image;
}

// Pixels drawn in both over pixels drawn in either.
double Likeness(const QImage& a, const QImage& b)
{
    int both = 0;
    int either = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            both += IsDrawn(a.pixel(x, y)) && IsDrawn(b.pixel(x, y)) ? 1 : 0;
            either += IsDrawn(a.pixel(x, y)) || IsDrawn(b.pixel(x, y)) ? 1 : 0;
        }
    }
    return either > 0 ? double(both) / either : 1;
}

TEST_F(ZORVisPictureTest, LinesAreWhereTheirPointsAre)
{
    ShowLine({-50, 20, 0}, {50, 20, 0}, Options(Qt::red, 2));
    const QImage image = Render();
    EXPECT_NEAR(CenterOfDrawn(image).x(), 100, 0.6);
    EXPECT_NEAR(CenterOfDrawn(image).y(), 30, 0.6);
    EXPECT_EQ(CountDrawn(image), CountPixels(image, IsReddish));
    EXPECT_NEAR(CountDrawn(image), 200, 20);
}

TEST_F(ZORVisPictureTest, ThicknessGrowsWithTheOptionAndThePixelRatio)
{
    for (const double ratio : {1.0, 1.25, 2.0}) {
        for (const int thickness : {1, 2, 4, 8}) {
            Clear();
            ShowLine({-50, 0, 0}, {50, 0, 0}, Options(Qt::black, thickness));
            camera.SetView({0, 0, 0}, {0, 0, -1}, {0, 1, 0}, 100);
            const QImage image = renderer.Render(camera, QSize(200, 100), ratio);
            EXPECT_EQ(image.devicePixelRatio(), ratio);
            double drawn = 0; // of a column, by darkness
            for (int y = 0; y < image.height(); ++y)
                drawn += (255 - image.pixelColor(100, y).lightness()) / 255.0;
            EXPECT_NEAR(drawn, thickness * ratio, 0.6) << "thickness " << thickness << " ratio " << ratio;
        }
    }
}

TEST_F(ZORVisPictureTest, EveryLineStyleIsALegiblePatternOfItsOwn)
{
    for (const int thickness : {1, 2, 8}) {
        std::set<QList<int>> patterns;
        for (int style = 0; style < ZORVisOptions::lineStyleCount; ++style) {
            Clear();
            ZORVisOptions options = Options(Qt::black, thickness);
            options.SetLineStyle(ZORVisOptions::LineStyle(style));
            ShowLine({-300, 0.5, 0}, {300, 0.5, 0}, options);
            QList<int> runs = RunsOfRow(Render(QSize(600, 40)), 19);
            if (style == ZORVisOptions::Solid) {
                EXPECT_EQ(runs.size(), 1);
            } else {
                EXPECT_GE(runs.size(), 4) << "style " << style << " thickness " << thickness;
            }
            patterns.insert(runs.mid(0, 16));
        }
        EXPECT_EQ(patterns.size(), size_t(ZORVisOptions::lineStyleCount)) << "thickness " << thickness;
    }
}

TEST_F(ZORVisPictureTest, APatternGoesOnAcrossThePointsOfAChain)
{
    ZORMathSetOfPoints points;
    for (int i = 0; i <= 300; ++i) // steps much shorter than a dash
        points.append({-150.0 + i, 0.5, 0});
    ZORVisOptions options = Options(Qt::black, 2);
    options.SetLineStyle(ZORVisOptions::Dash);
    Show({new ZORVisPolylinePrimitive(points, ZORVisPolylinePrimitive::Chain)}, options);
    const QList<int> runs = RunsOfRow(Render(QSize(300, 40)), 19);
    ASSERT_GE(runs.size(), 10);
    for (int i = 1; i + 1 < runs.size(); ++i) // without the ends
        EXPECT_NEAR(runs[i], i % 2 == 0 ? 12 : 4, 2);
}

TEST_F(ZORVisPictureTest, PairsAreSeparateAndChainsAreNot)
{
    const ZORMathSetOfPoints points = {{-60, 0, 0}, {-20, 0, 0}, {20, 0, 0}, {60, 0, 0}, {80, 0, 0}};
    Show({new ZORVisPolylinePrimitive(points, ZORVisPolylinePrimitive::Pairs)}, Options(Qt::black, 4));
    EXPECT_EQ(RunsOfRow(Render(), 50).size(), 4); // white up to the edge counts
    Clear();
    Show({new ZORVisPolylinePrimitive(points, ZORVisPolylinePrimitive::Chain)}, Options(Qt::black, 4));
    EXPECT_EQ(RunsOfRow(Render(), 50).size(), 2);
}

TEST_F(ZORVisPictureTest, EverySymbolIsAPictureOfItsOwnAroundItsPoint)
{
    for (const double ratio : {1.0, 1.25, 2.0}) {
        QList<QImage> images;
        for (int symbol = 0; symbol < ZORVisOptions::pointSymbolCount; ++symbol) {
            Clear();
            ShowSymbol({0.5, -0.5, 0}, ZORVisOptions::PointSymbol(symbol), Qt::black);
            camera.SetView({0, 0, 0}, {0, 0, -1}, {0, 1, 0}, 40);
            const QImage image = renderer.Render(camera, QSize(40, 40), ratio);
            EXPECT_GT(CountDrawn(image), 3) << "symbol " << symbol;
            EXPECT_NEAR(CenterOfDrawn(image).x(), 20.5, 0.6) << "symbol " << symbol << " ratio " << ratio;
            EXPECT_NEAR(CenterOfDrawn(image).y(), 20.5, 0.6) << "symbol " << symbol << " ratio " << ratio;
            EXPECT_FALSE(images.contains(image)) << "symbol " << symbol;
            images.append(image);
        }
    }
}

TEST_F(ZORVisPictureTest, CodesOutOfRangeAreDrawnAsTheDefaults)
{
    ShowSymbol({0, 0, 0}, ZORVisOptions::Cross, Qt::black);
    const QImage cross = Render();
    Clear();
    ShowSymbol({0, 0, 0}, ZORVisOptions::PointSymbol(-1), Qt::black);
    EXPECT_EQ(Render(), cross);

    Clear();
    ZORVisOptions options = Options(Qt::black);
    ShowLine({-50, 0, 0}, {50, 0, 0}, options);
    const QImage solid = Render();
    Clear();
    options.SetLineStyle(ZORVisOptions::LineStyle(99));
    ShowLine({-50, 0, 0}, {50, 0, 0}, options);
    EXPECT_EQ(Render(), solid);

    Clear();
    options.SetColor(QColor());
    ShowLine({-50, 0.5, 0}, {50, 0.5, 0}, options);
    EXPECT_EQ(Render().pixelColor(100, 49), QColor(160, 160, 164));
}

TEST_F(ZORVisPictureTest, AnOmegaIsAnOmega)
{
    const QString omega = QString(QChar(0x03a9));
    ShowText(omega, ZORVisTextPrimitive::LowerLeft, 40);
    const QImage image = Render(QSize(160, 120));
    EXPECT_GT(Likeness(image, DrawReference(omega, 40, image.size())), 0.85);
    for (const char16_t other : {u'O', u'\u00a9', u'Q', u'\u03c9'})
        EXPECT_LT(Likeness(image, DrawReference(QString(QChar(other)), 40, image.size())), 0.7);
}

TEST_F(ZORVisPictureTest, AnchorsSayWhichPartOfTheTextLiesAtThePoint)
{
    for (int anchor = 0; anchor < 9; ++anchor) {
        Clear();
        ShowText(QStringLiteral("HHHHHH"), ZORVisTextPrimitive::AnchorLocation(anchor), 20);
        const QPointF center = CenterOfDrawn(Render()) - QPointF(100, 50);
        const int column = anchor % 3;
        const int row = anchor / 3;
        EXPECT_NEAR(center.x(), column == 0 ? 45 : column == 1 ? 0 : -45, 4) << anchor;
        EXPECT_NEAR(center.y(), row == 0 ? -12 : row == 1 ? 0 : 12, 4) << anchor;
    }
}

TEST_F(ZORVisPictureTest, FixedTextsKeepTheirSizeAndScalableOnesGrow)
{
    const auto drawnAt = [&](double height) {
        camera.SetView({0, 0, 0}, {0, 0, -1}, {0, 1, 0}, height);
        return CountDrawn(renderer.Render(camera, QSize(300, 200)));
    };
    ShowText(QStringLiteral("ABC"), ZORVisTextPrimitive::Center, 20);
    EXPECT_NEAR(drawnAt(200), drawnAt(50), 0.1 * drawnAt(200));
    Clear();
    ShowText(QStringLiteral("ABC"), ZORVisTextPrimitive::Center, 20, ZORVisTextPrimitive::Scalable);
    EXPECT_NEAR(drawnAt(100), 4 * drawnAt(200), drawnAt(200));
    EXPECT_EQ(drawnAt(1e6), 0);  // too small to be read
    EXPECT_GE(drawnAt(0.01), 0); // larger than the picture
}

TEST_F(ZORVisPictureTest, LineFeedsStartNewLines)
{
    ShowText(QStringLiteral("HHHH"), ZORVisTextPrimitive::UpperLeft, 20);
    const QImage one = Render();
    Clear();
    ShowText(QStringLiteral("HHHH\nHHHH"), ZORVisTextPrimitive::UpperLeft, 20);
    const QImage two = Render();
    EXPECT_EQ(CountDrawn(two), 2 * CountDrawn(one));
    EXPECT_NEAR(CenterOfDrawn(two).x(), CenterOfDrawn(one).x(), 0.5);
    EXPECT_GT(CenterOfDrawn(two).y(), CenterOfDrawn(one).y() + 8);
}

TEST_F(ZORVisPictureTest, FarFromTheOriginPicturesStaySharp)
{
    const auto render = [&](const ZORMathPoint& place) {
        Clear();
        const ZORMathVector offset = PositionVector(place);
        ZORMathSetOfPoints wave;
        for (int i = 0; i <= 100; ++i)
            wave.append(ZORMathPoint(-0.08 + 0.0016 * i, 0.03 * std::sin(0.2 * i), 0) + offset);
        Show({new ZORVisPolylinePrimitive(wave, ZORVisPolylinePrimitive::Chain)}, Options(Qt::red, 2));
        Show({new ZORVisSurfacePrimitive(CreateSquare(place + ZORMathVector(0, 0, -0.05), 0.05))},
             Options(Qt::blue));
        camera.SetView(place, {0, 0, -1}, {0, 1, 0}, 0.1);
        return renderer.Render(camera, QSize(200, 100));
    };
    const QImage atOrigin = render({0, 0, 0});
    const QImage farAway = render({1e6, -2e6, 5e5});
    EXPECT_GT(CountPixels(atOrigin, IsReddish), 300);
    EXPECT_GT(CountPixels(atOrigin, IsBluish), 1500);
    EXPECT_GT(Likeness(atOrigin, farAway), 0.97);
}

TEST_F(ZORVisPictureTest, PointsThatAreNotFiniteAreLeftOut)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double inf = std::numeric_limits<double>::infinity();
    Show({new ZORVisPolylinePrimitive({{-80, 0, 0}, {-30, 0, 0}, {nan, 0, 0}, {30, 0, 0}, {80, 0, 0}},
                                      ZORVisPolylinePrimitive::Chain)},
         Options(Qt::red, 4));
    Show({new ZORVisPolylinePrimitive({{0, inf, 0}, {0, 0, 0}, {-80, -20, 0}, {80, -20, 0}},
                                      ZORVisPolylinePrimitive::Pairs),
          new ZORVisPointPrimitive({{nan, nan, nan}}),
          new ZORVisTextPrimitive(QStringLiteral("lost"), {0, -inf, 0}, ZORVisTextPrimitive::LowerLeft,
                                  ZORVisTextPrimitive::FixedSize),
          new ZORVisTrianglePrimitive({{0, 0, 0}, {50, 0, 0}, {0, nan, 0}})},
         Options(Qt::blue, 4));
    const QImage image = Render();
    EXPECT_EQ(RunsOfRow(image, 50).size(), 4);
    EXPECT_NEAR(CountPixels(image, IsBluish), 640, 40);
}

TEST_F(ZORVisPictureTest, EmptyPrimitivesDrawNothing)
{
    Show({new ZORVisPolylinePrimitive(ZORMathSetOfPoints(), ZORVisPolylinePrimitive::Chain),
          new ZORVisPolylinePrimitive({{1, 1, 1}}, ZORVisPolylinePrimitive::Chain),
          new ZORVisPolylinePrimitive({{1, 1, 1}}, ZORVisPolylinePrimitive::Pairs),
          new ZORVisPointPrimitive({}), new ZORVisSurfacePrimitive(nullptr), new ZORVisTrianglePrimitive({}),
          new ZORVisTextPrimitive(QString(), {0, 0, 0}, ZORVisTextPrimitive::LowerLeft,
                                  ZORVisTextPrimitive::FixedSize)},
         Options(Qt::black));
    Show({}, Options(Qt::black));
    EXPECT_EQ(CountDrawn(Render()), 0);
}

} // namespace
