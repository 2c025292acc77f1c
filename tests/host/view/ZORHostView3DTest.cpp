#include "view/ZORHostView3D.h"

#include "ViewTest.h"

#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORMathematics/ZORMathBoundingBox.h>
#include <ZORVisualization/ZORVisVirtualObject.h>

#include <QLineF>

namespace {

using ZORHostView3DTest = ViewTest;

TEST_F(ZORHostView3DTest, TheFirstObjectIsFittedIntoTheView)
{
    const QImage empty = Look();
    AddBox("Box");
    const QImage box = Look();
    EXPECT_LT(CountRed(empty), 200); // the x axis of the triad
    EXPECT_GT(CountRed(box), 320 * 240 / 6);
}

TEST_F(ZORHostView3DTest, NothingIsRenderedAgainWithoutAChange)
{
    AddBox("Box");
    const QImage first = Look();
    const int frames = view.GetNumFrames();
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(first, Look());
    view.SetDisplayMode(view.GetDisplayMode());
    Look();
    EXPECT_EQ(frames, view.GetNumFrames());
}

TEST_F(ZORHostView3DTest, LeftAndMiddleDragTurnAboutThePointUnderThePointer)
{
    AddBox("Box");
    const QImage before = Look();
    for (const Qt::MouseButton button : {Qt::LeftButton, Qt::MiddleButton}) {
        const QPoint from(130, 110);
        const ZORVisPickResult hit = view.PickAt(from);
        ASSERT_TRUE(hit.IsHit());
        const ZORVisCamera camera = view.GetCamera();
        Drag(button, Qt::NoModifier, from, {190, 130});
        EXPECT_NE(camera.GetViewDirection(), view.GetCamera().GetViewDirection());
        const QPointF now = view.ToPosition(hit.point);
        EXPECT_NEAR(from.x(), now.x(), 1e-6);
        EXPECT_NEAR(from.y(), now.y(), 1e-6);
        EXPECT_NEAR(camera.GetDepth(hit.point), view.GetCamera().GetDepth(hit.point), 1e-6);
        view.SetStandardView(ZORVisCamera::Isometric);
    }
    Drag(Qt::LeftButton, Qt::NoModifier, {160, 120}, {190, 130});
    EXPECT_NE(before, Look());
}

TEST_F(ZORHostView3DTest, BesideAllObjectsTheCenterOfWhatIsVisibleStays)
{
    AddBox("Box");
    Look();
    Drag(Qt::RightButton, Qt::NoModifier, {100, 100}, {140, 120}); // the box is not in the middle
    const QPoint beside(3, 236);
    ASSERT_FALSE(view.PickAt(beside).IsHit());
    const QPointF center = view.ToPosition({50, 30, 15});
    Drag(Qt::LeftButton, Qt::NoModifier, beside, beside + QPoint(60, -20));
    EXPECT_NEAR(0, QLineF(center, view.ToPosition({50, 30, 15})).length(), 1e-6);
    QTest::keyClick(&view, Qt::Key_Left);
    EXPECT_NEAR(0, QLineF(center, view.ToPosition({50, 30, 15})).length(), 1e-6);
}

TEST_F(ZORHostView3DTest, WhoHasZoomedInTurnsAboutWhatIsInTheMiddle)
{
    AddBox("Box");
    view.SetStandardView(ZORVisCamera::Top);
    Look();
    view.FitBox(ZORMathBoundingBox(ZORMathPoint(2, 2, 0), ZORMathPoint(12, 12, 30)));
    const ZORVisPickResult middle = view.PickAt({160, 120});
    ASSERT_TRUE(middle.IsHit());
    EXPECT_NEAR(30, middle.point.GetZ(), 1e-9);
    QTest::keyClick(&view, Qt::Key_Up);
    EXPECT_NEAR(0, QLineF(QPointF(160, 120), view.ToPosition(middle.point)).length(), 1e-6);
}

TEST_F(ZORHostView3DTest, OnlyTheFirstButtonCountsUntilItIsUp)
{
    AddBox("Box");
    Look();
    QTest::mousePress(&view, Qt::RightButton, {}, {100, 100});
    QMouseEvent second(QEvent::MouseButtonPress, QPointF(100, 100), view.mapToGlobal(QPointF(100, 100)),
                       Qt::LeftButton, Qt::LeftButton | Qt::RightButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&view, &second);
    const ZORVisCamera before = view.GetCamera();
    QMouseEvent move(QEvent::MouseMove, QPointF(140, 100), view.mapToGlobal(QPointF(140, 100)), Qt::NoButton,
                     Qt::LeftButton | Qt::RightButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&view, &move);
    EXPECT_EQ(before.GetViewDirection(), view.GetCamera().GetViewDirection());
    EXPECT_NE(before.GetTarget(), view.GetCamera().GetTarget());
    QTest::mouseRelease(&view, Qt::RightButton, {}, {140, 100});
}

TEST_F(ZORHostView3DTest, AReleaseThatWasLostEndsTheDrag)
{
    AddBox("Box");
    Look();
    QTest::mousePress(&view, Qt::LeftButton, {}, {160, 120});
    Hover({200, 120}); // the button went up in another window
    const ZORVisCamera before = view.GetCamera();
    Hover({240, 120});
    EXPECT_EQ(before, view.GetCamera());
}

TEST_F(ZORHostView3DTest, ShiftAndRightDragMoveTheSceneWithTheMouse)
{
    AddBox("Box");
    Look();
    const std::pair<Qt::MouseButton, Qt::KeyboardModifiers> drags[] = {{Qt::LeftButton, Qt::ShiftModifier},
                                                                       {Qt::MiddleButton, Qt::ShiftModifier},
                                                                       {Qt::RightButton, Qt::NoModifier}};
    for (const auto& [button, modifiers] : drags) {
        const ZORVisCamera before = view.GetCamera();
        const QPointF corner = before.WorldToPixel({100, 60, 30}, view.size());
        Drag(button, modifiers, {100, 100}, {130, 90});
        const QPointF moved = view.GetCamera().WorldToPixel({100, 60, 30}, view.size()) - corner;
        EXPECT_NEAR(30, moved.x(), 1e-6);
        EXPECT_NEAR(-10, moved.y(), 1e-6);
        EXPECT_EQ(before.GetViewDirection(), view.GetCamera().GetViewDirection());
    }
}

TEST_F(ZORHostView3DTest, TheWheelZoomsAtTheCursor)
{
    AddBox("Box");
    Look();
    const QPointF cursor(80, 60);
    const ZORMathPoint under = view.GetCamera().PixelToWorld(cursor, view.size());
    const double height = view.GetCamera().GetHeight();
    Wheel(120, cursor);
    EXPECT_NEAR(height / 1.2, view.GetCamera().GetHeight(), 1e-9);
    EXPECT_NEAR(0, (view.GetCamera().PixelToWorld(cursor, view.size()) - under).GetLength(), 1e-9);
    Wheel(-240, cursor);
    EXPECT_NEAR(height * 1.2, view.GetCamera().GetHeight(), 1e-9);
}

TEST_F(ZORHostView3DTest, FitAllBringsEverythingBack)
{
    AddBox("Box");
    const QImage fitted = Look();
    Drag(Qt::RightButton, Qt::NoModifier, {100, 100}, {310, 230});
    Wheel(-600, {10, 10});
    EXPECT_NE(fitted, Look());
    view.FitAll();
    EXPECT_TRUE(WaitFor([&] { return fitted == Look(); }))
        << "where frames are slow, it is coarse until it rests";
}

TEST_F(ZORHostView3DTest, KeysTurnMoveAndZoom)
{
    AddBox("Box");
    Look();
    view.setFocus();
    ZORVisCamera before = view.GetCamera();
    QTest::keyClick(&view, Qt::Key_Left);
    EXPECT_NE(before.GetViewDirection(), view.GetCamera().GetViewDirection());
    before = view.GetCamera();
    QTest::keyClick(&view, Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_EQ(before.GetViewDirection(), view.GetCamera().GetViewDirection());
    EXPECT_NE(before.GetTarget(), view.GetCamera().GetTarget());
    before = view.GetCamera();
    QTest::keyClick(&view, Qt::Key_Plus);
    EXPECT_LT(view.GetCamera().GetHeight(), before.GetHeight());
    QTest::keyClick(&view, Qt::Key_Minus);
    EXPECT_NEAR(before.GetHeight(), view.GetCamera().GetHeight(), 1e-9);
}

TEST_F(ZORHostView3DTest, StandardViewsLookFromTheirSide)
{
    AddBox("Box");
    view.SetStandardView(ZORVisCamera::Front);
    EXPECT_NEAR(1, Dot(view.GetCamera().GetViewDirection(), {0, 1, 0}), 1e-12);
    const int front = CountRed(Look());
    view.SetStandardView(ZORVisCamera::Top);
    EXPECT_NEAR(-1, Dot(view.GetCamera().GetViewDirection(), {0, 0, 1}), 1e-12);
    EXPECT_GT(CountRed(Look()), front); // 100 x 60 against 100 x 30, both fitted
}

TEST_F(ZORHostView3DTest, WireframeShowsEdgesOnly)
{
    AddBox("Box");
    const int shaded = CountRed(Look());
    view.SetDisplayMode(ZORVisRenderer::Wireframe);
    const int wireframe = CountRed(Look());
    EXPECT_LT(wireframe, shaded / 4);
    EXPECT_GT(wireframe, 200);
}

TEST_F(ZORHostView3DTest, TheBackgroundFollowsThePalette)
{
    QPalette dark = view.palette();
    dark.setColor(QPalette::Window, Qt::black);
    dark.setColor(QPalette::WindowText, Qt::white);
    QPalette light = view.palette();
    light.setColor(QPalette::Window, Qt::white);
    light.setColor(QPalette::WindowText, Qt::black);
    view.setPalette(dark);
    EXPECT_LT(Look().pixelColor(300, 20).lightness(), 60);
    view.setPalette(light);
    EXPECT_GT(Look().pixelColor(300, 20).lightness(), 200);
}

TEST_F(ZORHostView3DTest, AnObjectThatGoesLeavesThePicture)
{
    ZORGeoSurface* box = AddBox("Box");
    EXPECT_GT(CountRed(Look()), 1000);
    delete GetEnvironment()->GetVirtualObjects().constFirst();
    EXPECT_LT(CountRed(Look()), 200);
    EXPECT_EQ(0, box->GetReferenceCount());
}

TEST_F(ZORHostView3DTest, APictureHasTheAskedSizeAndIsTheSameTwice)
{
    AddBox("Box");
    Look();
    const QImage picture = view.RenderPicture({640, 480}, 2);
    EXPECT_EQ(QSize(640, 480), picture.size());
    EXPECT_EQ(picture, view.RenderPicture({640, 480}, 2));
    EXPECT_GT(CountRed(picture), 640 * 480 / 6);
}

TEST_F(ZORHostView3DTest, TheEnvironmentMayDieFirst)
{
    auto environment = std::make_unique<ZORVisEnvironment>();
    view.SetEnvironment(environment.get());
    Look();
    environment.reset();
    view.FitAll();
    EXPECT_FALSE(Look().isNull());
}

} // namespace
