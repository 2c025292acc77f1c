// Runs as a separate program with ZOR_NO_GRAPHICS=1: the context is made once a process.

#include "HostTest.h"
#include "view/ZORHostHighlights.h"
#include "view/ZORHostSelectTool.h"
#include "view/ZORHostSelection.h"
#include "view/ZORHostView3D.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORVisualization/ZORVisGraphicsContext.h>

#include <QCoreApplication>
#include <QSet>

namespace {

class ZORHostViewWithoutContextTest : public HostTest
{
public:
    void SetUp() override { ASSERT_FALSE(ZORVisGraphicsContext::GetInstance()->IsAvailable()); }
};

int CountColors(const QImage& image)
{
    QSet<QRgb> colors;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            colors.insert(image.pixel(x, y));
    }
    return int(colors.size());
}

TEST_F(ZORHostViewWithoutContextTest, TheViewIsAGreyPanelWithTheReason)
{
    EXPECT_FALSE(ZORVisGraphicsContext::GetInstance()->GetFailureReason().isEmpty());
    ZORHostView3D view;
    view.resize(500, 300);
    view.SetEnvironment(GetEnvironment());
    AddBox("Box");
    view.show();
    QCoreApplication::processEvents();
    const QImage image = view.grab().toImage();
    const QColor corner = image.pixelColor(10, 10);
    EXPECT_EQ(corner.hslSaturation() < 20, true);
    EXPECT_GT(CountColors(image), 5) << "no text on the panel";
    EXPECT_EQ(0, view.GetNumFrames());
    QTest::mouseClick(&view, Qt::LeftButton, {}, {250, 150});
}

TEST_F(ZORHostViewWithoutContextTest, PicturesComeOutAllTheSame)
{
    ZORHostView3D view;
    view.resize(300, 200);
    view.SetEnvironment(GetEnvironment());
    AddBox("Box");
    QCoreApplication::processEvents();
    const QImage picture = view.RenderPicture({300, 200}, 1);
    ASSERT_EQ(QSize(300, 200), picture.size());
    int red = 0;
    for (int y = 0; y < 200; ++y) {
        for (int x = 0; x < 300; ++x)
            red += picture.pixelColor(x, y).red() > 2 * picture.pixelColor(x, y).green() + 20;
    }
    EXPECT_GT(red, 300 * 200 / 8);
}

TEST_F(ZORHostViewWithoutContextTest, SelectedObjectsAreHighlightedInPicturesAndKeepTheirShading)
{
    ZORHostView3D view;
    view.resize(300, 200);
    view.SetEnvironment(GetEnvironment());
    ZORHostSelection selection;
    selection.SetContainer(GetEnvironment()->GetContainer());
    ZORHostSelectTool tool(&view, &selection, nullptr);
    const auto same = [](const QList<ZORGeoGeometry*>& objects) { return objects; };
    ZORHostHighlights highlights(&view, &selection, same, nullptr);
    ZORGeoSurface* const box = AddBox("Box");
    QCoreApplication::processEvents();
    const QImage before = view.RenderPicture({300, 200}, 1);
    QTest::mouseClick(&view, Qt::LeftButton, {}, {150, 100});
    EXPECT_EQ(QList<ZORGeoGeometry*>{box}, selection.GetObjects());
    const QImage after = view.RenderPicture({300, 200}, 1);
    QSet<QRgb> faces;
    for (const ZORMathPoint& face :
         {ZORMathPoint(30, 20, 30), ZORMathPoint(50, 0, 15), ZORMathPoint(100, 30, 15)}) {
        const QPoint pixel = view.ToPosition(face).toPoint();
        EXPECT_NE(before.pixel(pixel), after.pixel(pixel));
        faces.insert(after.pixel(pixel));
    }
    EXPECT_EQ(3, faces.size());
    EXPECT_EQ(before.pixel(2, 2), after.pixel(2, 2));
    QTest::keyClick(&view, Qt::Key_Escape);
    EXPECT_EQ(before, view.RenderPicture({300, 200}, 1));
}

} // namespace
