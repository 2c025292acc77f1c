#include "view/ZORHostView3D.h"

#include "HostTest.h"

#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORVisualization/ZORVisGraphicsContext.h>
#include <ZORVisualization/ZORVisVirtualObject.h>

#include <QApplication>
#include <QSignalSpy>
#include <QWheelEvent>

namespace {

class ZORHostView3DTest : public HostTest
{
public:
    ZORHostView3DTest()
    {
        view.resize(320, 240);
        view.SetEnvironment(GetEnvironment());
        view.show();
    }
    ~ZORHostView3DTest() override { view.SetEnvironment(nullptr); }

    void SetUp() override
    {
        if (!ZORVisGraphicsContext::GetInstance()->IsAvailable())
            GTEST_SKIP() << "no graphics context";
    }

    /// Lets the scene report its changes and returns what is on the screen.
    QImage Look()
    {
        QCoreApplication::processEvents();
        return view.grab().toImage();
    }
    static int CountRed(const QImage& image)
    {
        int count = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                const QColor color = image.pixelColor(x, y);
                count += color.red() > 2 * color.green() + 20 && color.red() > 2 * color.blue() + 20;
            }
        }
        return count;
    }
    void Drag(Qt::MouseButton button, Qt::KeyboardModifiers modifiers, QPoint from, QPoint to)
    {
        QTest::mousePress(&view, button, modifiers, from);
        for (int step = 1; step <= 10; ++step) {
            // QTest::mouseMove() carries no buttons on this platform.
            const QPointF at = from + (to - from) * (step / 10.0);
            QMouseEvent move(QEvent::MouseMove, at, view.mapToGlobal(at), Qt::NoButton, button, modifiers);
            QCoreApplication::sendEvent(&view, &move);
        }
        QTest::mouseRelease(&view, button, modifiers, to);
    }
    void Wheel(int delta, QPointF at)
    {
        QWheelEvent event(at, view.mapToGlobal(at), {}, {0, delta}, Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&view, &event);
    }

    ZORHostView3D view;
};

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

TEST_F(ZORHostView3DTest, LeftAndMiddleDragTurnAboutTheTarget)
{
    AddBox("Box");
    const QImage before = Look();
    for (const Qt::MouseButton button : {Qt::LeftButton, Qt::MiddleButton}) {
        const ZORVisCamera camera = view.GetCamera();
        Drag(button, Qt::NoModifier, {160, 120}, {220, 140});
        EXPECT_EQ(camera.GetTarget(), view.GetCamera().GetTarget());
        EXPECT_NE(camera.GetViewDirection(), view.GetCamera().GetViewDirection());
    }
    EXPECT_NE(before, Look());
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

TEST_F(ZORHostView3DTest, AClickPicksAndSaysTheName)
{
    ZORGeoSurface* box = AddBox("Box");
    const QImage before = Look();
    QSignalSpy picked(&view, &ZORHostView3D::Picked);
    QSignalSpy cleared(&view, &ZORHostView3D::PickCleared);
    QTest::mouseClick(&view, Qt::LeftButton, {}, {160, 120});
    ASSERT_EQ(1, picked.size());
    EXPECT_EQ(box, picked[0][0].value<QObject*>());
    EXPECT_EQ(QString("Box"), picked[0][1].toString());
    EXPECT_NE(before, Look()); // the mark with the name
    QTest::mouseClick(&view, Qt::LeftButton, {}, {2, 2});
    EXPECT_EQ(1, picked.size());
    EXPECT_EQ(1, cleared.size());
    EXPECT_EQ(before, Look());
}

TEST_F(ZORHostView3DTest, APickInTheFocusedViewMarksTheObjectOnly)
{
    AddBox("Box");
    view.activateWindow();
    view.setFocus();
    ASSERT_TRUE(WaitFor([this] { return view.hasFocus(); }));
    const QImage before = Look();
    QTest::mouseClick(&view, Qt::LeftButton, {}, {160, 120});
    const QImage after = Look();
    // The mark with its name covers some hundred pixels about the click; everything else stays.
    const QRect mark(QPoint(140, 80), QPoint(320, 140));
    int inside = 0;
    int outside = 0;
    for (int y = 0; y < before.height(); ++y) {
        for (int x = 0; x < before.width(); ++x) {
            if (before.pixel(x, y) != after.pixel(x, y))
                ++(mark.contains(x, y) ? inside : outside);
        }
    }
    EXPECT_GT(inside, 100);
    EXPECT_EQ(0, outside);
    QTest::keyClick(&view, Qt::Key_Escape);
    EXPECT_EQ(before, Look());
}

TEST_F(ZORHostView3DTest, TheMarkGoesWithThePickedObjectOnly)
{
    AddBox("Box");
    AddBox("Twin");
    Look();
    QSignalSpy picked(&view, &ZORHostView3D::Picked);
    const QSignalSpy cleared(&view, &ZORHostView3D::PickCleared);
    QTest::mouseClick(&view, Qt::LeftButton, {}, {160, 120});
    ASSERT_EQ(1, picked.size());
    QList<ZORVisVirtualObject*> objects = GetEnvironment()->GetVirtualObjects();
    if (objects[0]->GetOwner() == picked[0][0].value<QObject*>())
        std::swap(objects[0], objects[1]);
    const QImage marked = Look();
    delete objects[0];
    EXPECT_TRUE(cleared.isEmpty());
    EXPECT_EQ(marked, Look());
    AddBox("Third"); // the view does not become empty
    delete objects[1];
    EXPECT_EQ(1, cleared.size());
    EXPECT_NE(marked, Look());
}

TEST_F(ZORHostView3DTest, ADragIsNoClick)
{
    AddBox("Box");
    Look();
    const QSignalSpy picked(&view, &ZORHostView3D::Picked);
    Drag(Qt::LeftButton, Qt::NoModifier, {160, 120}, {160 + QApplication::startDragDistance() + 2, 120});
    EXPECT_TRUE(picked.isEmpty());
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
