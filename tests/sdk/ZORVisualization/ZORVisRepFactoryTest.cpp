#include "VisTest.h"

#include <ZORVisualization/ZORVisPolylinePrimitive.h>
#include <ZORVisualization/ZORVisRepFactory.h>
#include <ZORVisualization/ZORVisRepGraphics.h>
#include <ZORVisualization/ZORVisSurfacePrimitive.h>

#include <limits>
#include <memory>

namespace {

std::unique_ptr<ZORVisRep> CreateFrame(double left, double bottom, double right, double top)
{
    ZORVisOptions options;
    options.SetColor(Qt::white);
    return std::make_unique<ZORVisRepGraphics>(
        QList<const ZORVisPrimitive*>{new ZORVisPolylinePrimitive(
            {{left, bottom, 0}, {right, bottom, 0}, {right, top, 0}, {left, top, 0}, {left, bottom, 0}},
            ZORVisPolylinePrimitive::Chain)},
        options);
}

QRect ExtentOf(const QImage& image, const QColor& background)
{
    QRect extent;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y) != background)
                extent |= QRect(x, y, 1, 1);
        }
    }
    return extent;
}

} // namespace

TEST(ZORVisRepFactoryTest, ShowsEverythingFromTheTop)
{
    const std::unique_ptr<ZORVisRep> wide = CreateFrame(0, 0, 1000, 100);
    const QRect extent =
        ExtentOf(ZORVisRepFactory::CreateImage(QSize(400, 200), {wide.get()}, Qt::black), Qt::black);
    EXPECT_NEAR(extent.width(), 360, 3);
    EXPECT_NEAR(extent.height(), 36, 3);
    EXPECT_NEAR(extent.center().x(), 200, 2);
    EXPECT_NEAR(extent.center().y(), 100, 2);

    const std::unique_ptr<ZORVisRep> above = CreateFrame(0, 900, 1000, 1000);
    const QRect both = ExtentOf(
        ZORVisRepFactory::CreateImage(QSize(400, 200), {wide.get(), nullptr, above.get()}, Qt::black),
        Qt::black);
    EXPECT_NEAR(both.width(), 180, 3);
    EXPECT_NEAR(both.height(), 180, 3);
}

TEST(ZORVisRepFactoryTest, NothingGivesTheBackground)
{
    const QImage image = ZORVisRepFactory::CreateImage(QSize(30, 20), {}, QColor(1, 2, 3));
    EXPECT_EQ(image.size(), QSize(30, 20));
    EXPECT_EQ(CountPixels(image, [](const QColor& color) { return color == QColor(1, 2, 3); }), 600);
    EXPECT_EQ(ZORVisRepFactory::CreateImage(QSize(5, 5), {nullptr}, QColor()).pixelColor(2, 2),
              QColor(Qt::white));
}

TEST(ZORVisRepFactoryTest, SizesThatCannotBeDrawnGiveNull)
{
    const std::unique_ptr<ZORVisRep> rep = CreateFrame(0, 0, 10, 10);
    const int most = std::numeric_limits<int>::max();
    for (const QSize size :
         {QSize(0, 0), QSize(0, 100), QSize(100, 0), QSize(-1, 5), QSize(-most, 5), QSize(most, most)})
        EXPECT_TRUE(ZORVisRepFactory::CreateImage(size, {rep.get()}, Qt::black).isNull());
}

TEST(ZORVisRepFactoryTest, TheSamePictureTwiceIsTheSameBytes)
{
    const std::unique_ptr<ZORVisRep> rep = CreateFrame(3, 5, 100, 77);
    const QImage first = ZORVisRepFactory::CreateImage(QSize(333, 222), {rep.get()}, Qt::black);
    EXPECT_EQ(ZORVisRepFactory::CreateImage(QSize(333, 222), {rep.get()}, Qt::black), first);
}

TEST(ZORVisRepFactoryTest, WidePicturesAreDrawnToTheirEnd)
{
    // QPainter alone ends at 32767 pixels.
    const std::unique_ptr<ZORVisRep> wide = CreateFrame(0, 0, 70000, 20);
    const QImage image = ZORVisRepFactory::CreateImage(QSize(70000, 40), {wide.get()}, Qt::black);
    const std::unique_ptr<ZORVisRep> high = CreateFrame(0, 0, 20, 70000);
    const QImage turned = ZORVisRepFactory::CreateImage(QSize(40, 70000), {high.get()}, Qt::black);
    for (int from = 10000; from < 60000; from += 1000) {
        EXPECT_GT(
            CountPixels(image.copy(from, 0, 5, 40), [](const QColor& color) { return color != Qt::black; }),
            9)
            << from;
        EXPECT_GT(
            CountPixels(turned.copy(0, from, 40, 5), [](const QColor& color) { return color != Qt::black; }),
            9)
            << from;
    }
}

TEST(ZORVisRepFactoryTest, PicturesComeInManySizes)
{
    const std::unique_ptr<ZORVisRep> rep = CreateFrame(0, 0, 100, 100);
    for (const QSize size : {QSize(1, 1), QSize(1, 500), QSize(700, 1), QSize(3000, 3200)}) {
        const QImage image = ZORVisRepFactory::CreateImage(size, {rep.get()}, Qt::black);
        EXPECT_EQ(image.size(), size);
    }
}
