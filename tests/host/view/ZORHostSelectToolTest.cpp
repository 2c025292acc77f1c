#include "view/ZORHostSelectTool.h"

#include "ViewTest.h"
#include "view/ZORHostHighlights.h"
#include "view/ZORHostSelection.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORGeometry/ZORGeoLine.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORVisualization/ZORVisOptions.h>
#include <ZORVisualization/ZORVisPolylinePrimitive.h>
#include <ZORVisualization/ZORVisRepGraphics.h>
#include <ZORVisualization/ZORVisScene.h>
#include <ZORVisualization/ZORVisVirtualObject.h>

#include <QApplication>
#include <QSet>
#include <QSignalSpy>

namespace {

using Objects = QList<ZORGeoGeometry*>;
using Highlight = ZORVisScene::Highlight;

constexpr QPoint kOnBox(160, 120);
constexpr QPoint kBeside(4, 4);

/// A view from above onto a box; a line runs below the box and reaches out on both sides.
class ZORHostSelectToolTest : public ViewTest
{
protected:
    void SetUp() override
    {
        ViewTest::SetUp();
        selection.SetContainer(GetEnvironment()->GetContainer());
        box = AddBox("Box");
        line = AddLine({-20, 30, -10}, {120, 30, -10});
        Look();
        view.SetStandardView(ZORVisCamera::Top);
        Look();
        onLine = view.ToPosition({-10, 30, -10}).toPoint();
    }

    ZORGeoGeometry* AddLine(const ZORMathPoint& from, const ZORMathPoint& to)
    {
        auto* const added = new ZORGeoLine(GetEnvironment()->GetContainer(), from, to);
        added->setObjectName("Line");
        added->Initialize();
        ZORVisOptions options;
        options.SetColor(Qt::blue);
        auto* const object = new ZORVisVirtualObject(GetEnvironment(), added);
        object->SetRep(new ZORVisRepGraphics(
            {new ZORVisPolylinePrimitive({from, to}, ZORVisPolylinePrimitive::Chain)}, options));
        GetEnvironment()->AddVirtualObject(object);
        return added;
    }
    void Click(QPoint at, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::mouseClick(&view, Qt::LeftButton, modifiers, at);
    }
    static int CountColors(const QImage& image, const QRect& part)
    {
        QSet<QRgb> colors;
        for (int y = part.top(); y <= part.bottom(); ++y) {
            for (int x = part.left(); x <= part.right(); ++x)
                colors.insert(image.pixel(x, y));
        }
        return int(colors.size());
    }

    ZORHostSelection selection;
    ZORHostSelectTool tool{&view, &selection, nullptr};
    ZORHostHighlights highlights{&view, &selection, [](const Objects& objects) { return objects; }, nullptr};
    ZORGeoSurface* box = nullptr;
    ZORGeoGeometry* line = nullptr;
    QPoint onLine;
};

TEST_F(ZORHostSelectToolTest, AClickSelectsAndAClickBesideSelectsNothing)
{
    const QImage before = Look();
    const QSignalSpy picked(&tool, &ZORHostSelectTool::Picked);
    const QSignalSpy cleared(&tool, &ZORHostSelectTool::PickCleared);
    Click(kOnBox);
    EXPECT_EQ(Objects{box}, selection.GetObjects());
    ASSERT_EQ(1, picked.size());
    EXPECT_EQ(box, picked[0][0].value<QObject*>());
    EXPECT_EQ(QString("Box"), picked[0][1].toString());
    EXPECT_NE(before, Look());
    Click(onLine);
    EXPECT_EQ(Objects{line}, selection.GetObjects());
    Click(kBeside);
    EXPECT_TRUE(selection.IsEmpty());
    EXPECT_EQ(2, picked.size());
    EXPECT_EQ(1, cleared.size());
    EXPECT_EQ(before, Look());
}

TEST_F(ZORHostSelectToolTest, CtrlAddsAndTakesAwayAndShiftAdds)
{
    Click(kOnBox);
    Click(onLine, Qt::ControlModifier);
    EXPECT_EQ((Objects{box, line}), selection.GetObjects());
    Click(kBeside, Qt::ControlModifier);
    EXPECT_EQ(2, selection.GetCount()) << "who misses with Ctrl loses nothing";
    Click(kOnBox, Qt::ControlModifier);
    EXPECT_EQ(Objects{line}, selection.GetObjects());
    Click(kOnBox, Qt::ShiftModifier);
    Click(kOnBox, Qt::ShiftModifier);
    EXPECT_EQ((Objects{line, box}), selection.GetObjects());
}

TEST_F(ZORHostSelectToolTest, EscapeSelectsNothingAndTakesTheMarkAway)
{
    view.activateWindow();
    view.setFocus();
    ASSERT_TRUE(WaitFor([this] { return view.hasFocus(); }));
    const QImage before = Look();
    Click(kOnBox);
    EXPECT_NE(before, Look());
    QTest::keyClick(&view, Qt::Key_Escape);
    EXPECT_TRUE(selection.IsEmpty());
    EXPECT_EQ(before, Look());
}

TEST_F(ZORHostSelectToolTest, TheFocusedViewStillShowsTheShadedPartAfterAClick)
{
    view.SetStandardView(ZORVisCamera::Isometric);
    view.activateWindow();
    view.setFocus();
    ASSERT_TRUE(WaitFor([this] { return view.hasFocus(); }));
    const QImage before = Look();
    const QRect background(2, 2, 60, 40);
    const int shades = CountColors(before, view.rect());
    Click(view.ToPosition({97, 57, 30}).toPoint()); // the mark with the name covers nothing else
    const QImage after = Look();
    EXPECT_EQ(before.copy(background), after.copy(background));
    EXPECT_GT(CountColors(after, view.rect()), shades / 2);
    // Three faces of the box keep three shades.
    const QPointF faces[] = {view.ToPosition({30, 20, 30}), view.ToPosition({50, 0, 15}),
                             view.ToPosition({100, 30, 15})};
    QSet<QRgb> colors;
    for (const QPointF& face : faces) {
        EXPECT_NE(before.pixel(face.toPoint()), after.pixel(face.toPoint()));
        colors.insert(after.pixel(face.toPoint()));
    }
    EXPECT_EQ(3, colors.size());
}

TEST_F(ZORHostSelectToolTest, HoveringHighlightsWithOneFrameForEachObject)
{
    Hover(kBeside);
    const QImage before = Look();
    int frames = view.GetNumFrames();
    for (int x = 0; x < 20; ++x)
        Hover(kOnBox + QPoint(x, 8));
    EXPECT_EQ(box, selection.GetHovered());
    ASSERT_TRUE(WaitFor([this] { return view.GetScene()->GetHighlight(box) == Highlight::Hovered; }));
    const QImage hovered = Look();
    EXPECT_NE(before, hovered);
    EXPECT_EQ(frames + 1, view.GetNumFrames());
    frames = view.GetNumFrames();
    for (int x = 0; x < 20; ++x) {
        Hover(kOnBox + QPoint(x, 12));
        Look();
    }
    EXPECT_EQ(frames, view.GetNumFrames()) << "the same object";
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(&view, &leave);
    EXPECT_EQ(nullptr, selection.GetHovered());
    ASSERT_TRUE(WaitFor([this] { return view.GetScene()->GetHighlight(box) == Highlight::None; }));
    EXPECT_EQ(before, Look());
}

TEST_F(ZORHostSelectToolTest, HoveringTheSelectedObjectRendersNothing)
{
    Click(kOnBox);
    Look();
    const int frames = view.GetNumFrames();
    Hover(kOnBox);
    QCoreApplication::processEvents();
    Look();
    EXPECT_EQ(Highlight::Selected, view.GetScene()->GetHighlight(box));
    EXPECT_EQ(frames, view.GetNumFrames());
}

TEST_F(ZORHostSelectToolTest, NothingIsHoveredDuringADrag)
{
    Hover(kOnBox);
    ASSERT_EQ(box, selection.GetHovered());
    QTest::mousePress(&view, Qt::RightButton, {}, kOnBox);
    QMouseEvent move(QEvent::MouseMove, QPointF(190, 120), view.mapToGlobal(QPointF(190, 120)), Qt::NoButton,
                     Qt::RightButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&view, &move);
    EXPECT_EQ(nullptr, selection.GetHovered());
    QTest::mouseRelease(&view, Qt::RightButton, {}, {190, 120});
    EXPECT_EQ(box, selection.GetHovered());
}

TEST_F(ZORHostSelectToolTest, ABandToTheRightTakesWholeObjectsToTheLeftAllThatItTouches)
{
    const QPoint low = view.ToPosition({-8, 65, 0}).toPoint();
    const QPoint high = view.ToPosition({108, -5, 0}).toPoint();
    Drag(Qt::LeftButton, Qt::ControlModifier, low, high);
    EXPECT_EQ(Objects{box}, selection.GetObjects());
    Drag(Qt::LeftButton, Qt::ControlModifier, high, low);
    EXPECT_EQ((Objects{box, line}), selection.GetObjects()) << "it adds";
    Drag(Qt::LeftButton, Qt::ControlModifier | Qt::ShiftModifier, low, high);
    EXPECT_EQ(Objects{line}, selection.GetObjects());
}

TEST_F(ZORHostSelectToolTest, ABandIsSeenWhileItIsDrawnAndEscapeDropsIt)
{
    const QImage before = Look();
    const int frames = view.GetNumFrames();
    QTest::mousePress(&view, Qt::LeftButton, Qt::ControlModifier, {10, 10});
    QMouseEvent move(QEvent::MouseMove, QPointF(300, 220), view.mapToGlobal(QPointF(300, 220)), Qt::NoButton,
                     Qt::LeftButton, Qt::ControlModifier);
    QCoreApplication::sendEvent(&view, &move);
    const QImage banded = Look();
    EXPECT_NE(before.pixel(200, 10), banded.pixel(200, 10));
    EXPECT_GT(CountRed(banded), 320 * 240 / 8) << "the part must stay visible through the band";
    EXPECT_EQ(frames, view.GetNumFrames()) << "the scene has not changed";
    QTest::keyClick(&view, Qt::Key_Escape);
    QTest::mouseRelease(&view, Qt::LeftButton, Qt::ControlModifier, {300, 220});
    EXPECT_TRUE(selection.IsEmpty());
    Hover(kBeside);
    EXPECT_EQ(before, Look());
}

TEST_F(ZORHostSelectToolTest, WhatTheFilterLeavesOutIsLookedThrough)
{
    selection.SetFilter(ZORHostObjectKind::Curve);
    Click(kOnBox);
    EXPECT_EQ(Objects{line}, selection.GetObjects()) << "the line runs behind the box";
    Hover(kOnBox);
    EXPECT_EQ(line, selection.GetHovered());
    Drag(Qt::LeftButton, Qt::ControlModifier, {1, 1}, {318, 238});
    EXPECT_EQ(Objects{line}, selection.GetObjects());
    selection.SetFilter(ZORHostObjectKind::Point);
    Click(kOnBox);
    EXPECT_TRUE(selection.IsEmpty());
}

TEST_F(ZORHostSelectToolTest, ASelectionFromElsewhereIsHighlighted)
{
    selection.Set({line, box});
    EXPECT_EQ(Highlight::Selected, view.GetScene()->GetHighlight(box));
    EXPECT_EQ(Highlight::Selected, view.GetScene()->GetHighlight(line));
    selection.Remove({box});
    EXPECT_EQ(Highlight::None, view.GetScene()->GetHighlight(box));
    view.SetEnvironment(GetEnvironment()); // gives the view a new scene
    EXPECT_EQ(Highlight::Selected, view.GetScene()->GetHighlight(line));
}

TEST_F(ZORHostSelectToolTest, TheMarkGoesWithWhatIsSeenOfThePickedObjectOnly)
{
    const QSignalSpy cleared(&tool, &ZORHostSelectTool::PickCleared);
    Click(kOnBox);
    const QList<ZORVisVirtualObject*> objects = GetEnvironment()->GetVirtualObjects();
    ASSERT_EQ(2, objects.size());
    delete objects[1]; // the line
    Look();
    EXPECT_TRUE(cleared.isEmpty());
    delete objects[0];
    Look();
    EXPECT_EQ(1, cleared.size());
}

TEST_F(ZORHostSelectToolTest, ASelectedObjectMayDie)
{
    Click(kOnBox);
    Hover(kOnBox);
    delete GetEnvironment()->GetVirtualObjects().constFirst();
    delete box;
    Look();
    EXPECT_TRUE(selection.IsEmpty());
    EXPECT_EQ(nullptr, selection.GetHovered());
    Click(kOnBox);
    EXPECT_EQ(Objects{line}, selection.GetObjects());
}

TEST_F(ZORHostSelectToolTest, ADragIsNoClick)
{
    const QSignalSpy picked(&tool, &ZORHostSelectTool::Picked);
    Drag(Qt::LeftButton, Qt::NoModifier, {160, 120}, {160 + QApplication::startDragDistance() + 2, 120});
    EXPECT_TRUE(picked.isEmpty());
    EXPECT_TRUE(selection.IsEmpty());
}

TEST_F(ZORHostSelectToolTest, ADoubleClickActivatesWhatItHits)
{
    const QSignalSpy activated(&tool, &ZORHostSelectTool::Activated);
    QTest::mouseDClick(&view, Qt::LeftButton, {}, kBeside);
    EXPECT_TRUE(activated.isEmpty());
    QTest::mouseDClick(&view, Qt::LeftButton, {}, kOnBox);
    ASSERT_EQ(1, activated.size());
    EXPECT_EQ(box, activated[0][0].value<ZORGeoGeometry*>());
}

} // namespace
