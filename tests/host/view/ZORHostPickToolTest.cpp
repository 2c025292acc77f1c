#include "view/ZORHostPickTool.h"

#include "ViewTest.h"
#include "view/ZORHostSelectTool.h"
#include "view/ZORHostSelection.h"

#include <ZORCommand/ZORCmdController.h>
#include <ZORCommand/ZORCmdPickRequest.h>
#include <ZORFeature/ZORFeatContainer.h>
#include <ZORGeometry/ZORGeoCartesianPoint.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORVisualization/ZORVisOptions.h>
#include <ZORVisualization/ZORVisPointPrimitive.h>
#include <ZORVisualization/ZORVisRepGraphics.h>
#include <ZORVisualization/ZORVisVirtualObject.h>

#include <QDialog>
#include <QLabel>
#include <QSignalSpy>

namespace {

using Request = ZORCmdPickRequest;

constexpr QPoint kOnBox(150, 130);
constexpr QPoint kBeside(4, 200);

/// A view from above onto a box, with a point on its upper face.
class ZORHostPickToolTest : public ViewTest
{
protected:
    void SetUp() override
    {
        ViewTest::SetUp();
        selection.SetContainer(GetEnvironment()->GetContainer());
        ZORCmdController::GetController()->SetPickAnswerer(&tool);
        box = AddBox("Box");
        point = AddPoint({50, 30, 30});
        Look();
        view.SetStandardView(ZORVisCamera::Top);
        view.activateWindow();
        view.setFocus(); // whose frame is in all pictures
        ASSERT_TRUE(WaitFor([this] { return view.hasFocus(); }));
        Look();
    }

    ZORGeoGeometry* AddPoint(const ZORMathPoint& place)
    {
        auto* const added = new ZORGeoCartesianPoint(GetEnvironment()->GetContainer(), place);
        added->Initialize();
        ZORVisOptions options;
        options.SetColor(Qt::blue);
        auto* const object = new ZORVisVirtualObject(GetEnvironment(), added);
        object->SetRep(
            new ZORVisRepGraphics({new ZORVisPointPrimitive(QList<ZORMathPoint>{place})}, options));
        GetEnvironment()->AddVirtualObject(object);
        return added;
    }
    void Click(QPoint at) { QTest::mouseClick(&view, Qt::LeftButton, {}, at); }
    QLabel* GetPrompt() const { return view.findChild<QLabel*>("_PickPrompt"); }

    ZORHostSelection selection;
    ZORHostSelectTool select{&view, &selection, nullptr};
    ZORHostPickTool tool{&view, &selection, nullptr};
    ZORGeoSurface* box = nullptr;
    ZORGeoGeometry* point = nullptr;
};

TEST_F(ZORHostPickToolTest, AClickAnswersWithTheLocationOnTheSurface)
{
    const QImage before = Look();
    Request request(Request::SurfaceLocations, "Click a location", nullptr);
    QList<ZORCmdPick> picks;
    QObject::connect(&request, &Request::Picked, [&picks](const ZORCmdPick& pick) { picks.append(pick); });
    request.Start();
    EXPECT_TRUE(GetPrompt()->isVisible());
    EXPECT_TRUE(GetPrompt()->text().contains("Click a location"));
    EXPECT_TRUE(view.rect().contains(GetPrompt()->geometry()));
    EXPECT_EQ(Qt::CrossCursor, view.cursor().shape());
    EXPECT_NE(before, Look());
    Click(kBeside);
    EXPECT_TRUE(request.IsActive()) << "nothing was hit";
    Click(kOnBox);
    ASSERT_EQ(1, picks.size());
    EXPECT_EQ(box, picks[0].object);
    EXPECT_EQ(box, picks[0].location.surface);
    EXPECT_NEAR(30, picks[0].point.GetZ(), 1e-9);
    EXPECT_NEAR(0, picks[0].point.DistanceTo(picks[0].location.point), 1e-9);
    EXPECT_NEAR(0, QLineF(kOnBox, view.ToPosition(picks[0].point)).length(), 1e-6);
    EXPECT_FALSE(request.IsActive());
    EXPECT_FALSE(GetPrompt()->isVisible());
    EXPECT_TRUE(selection.IsEmpty());
    EXPECT_EQ(&select, view.GetTool());
    selection.SetHovered(nullptr);
    EXPECT_EQ(before, Look());
}

TEST_F(ZORHostPickToolTest, OnlyTheWantedKindsAreHit)
{
    const QPoint onPoint = view.ToPosition({50, 30, 30}).toPoint();
    Request request(Request::Points, "Click a point", nullptr);
    const QSignalSpy picked(&request, &Request::Picked);
    request.Start();
    Click(kOnBox);
    EXPECT_TRUE(picked.isEmpty());
    Click(onPoint);
    ASSERT_EQ(1, picked.size());
    const auto pick = picked[0][0].value<ZORCmdPick>();
    EXPECT_EQ(point, pick.object);
    EXPECT_EQ(ZORMathPoint(50, 30, 30), pick.point) << "exactly the point, not where the pointer was";
    EXPECT_TRUE(pick.location.IsNull());
    Request surface(Request::Surfaces, "Click a surface", nullptr);
    const QSignalSpy second(&surface, &Request::Picked);
    surface.Start();
    Click(onPoint);
    ASSERT_EQ(1, second.size());
    EXPECT_EQ(box, second[0][0].value<ZORCmdPick>().object) << "points are looked through";
}

TEST_F(ZORHostPickToolTest, TheFilterOfTheRequestHolds)
{
    Request request(Request::Surfaces, "Click a surface", nullptr);
    request.SetFilter([](const ZORGeoGeometry&) { return false; });
    request.Start();
    Hover(kOnBox);
    EXPECT_EQ(nullptr, selection.GetHovered());
    Click(kOnBox);
    EXPECT_TRUE(request.IsActive());
}

TEST_F(ZORHostPickToolTest, TheMarkFollowsThePointerWithoutFrames)
{
    Request request(Request::SurfaceLocations, "Click a location", nullptr);
    request.Start();
    Hover(kBeside);
    const QImage before = Look();
    const int frames = view.GetNumFrames();
    Hover(kOnBox);
    EXPECT_EQ(box, selection.GetHovered());
    const QImage first = Look();
    EXPECT_NE(before.pixel(kOnBox + QPoint(8, 0)), first.pixel(kOnBox + QPoint(8, 0)));
    Hover(kOnBox + QPoint(30, 0));
    EXPECT_EQ(before.pixel(kOnBox + QPoint(-8, 0)), Look().pixel(kOnBox + QPoint(-8, 0)));
    EXPECT_EQ(frames, view.GetNumFrames());
}

TEST_F(ZORHostPickToolTest, EscapeCancels)
{
    Request request(Request::Surfaces, "Click a surface", nullptr);
    const QSignalSpy canceled(&request, &Request::Canceled);
    request.Start();
    ASSERT_TRUE(WaitFor([this] { return view.hasFocus(); }));
    QTest::keyClick(&view, Qt::Key_Escape);
    EXPECT_EQ(1, canceled.size());
    EXPECT_FALSE(GetPrompt()->isVisible());
    Click(kOnBox);
    EXPECT_EQ(1, selection.GetCount()) << "clicks select again";
}

TEST_F(ZORHostPickToolTest, ASequenceIsTakenBackAndCompletedByKeys)
{
    Request request(Request::SurfaceLocations, "Click locations", nullptr);
    request.SetExtent(Request::Extent::Sequence);
    const QSignalSpy picked(&request, &Request::Picked);
    const QSignalSpy takenBack(&request, &Request::TakenBack);
    const QSignalSpy completed(&request, &Request::Completed);
    request.Start();
    Click(kOnBox);
    Click(kOnBox + QPoint(30, 0));
    QTest::keyClick(&view, Qt::Key_Backspace);
    QTest::keyClick(&view, Qt::Key_Return);
    EXPECT_EQ(2, picked.size());
    EXPECT_EQ(1, takenBack.size());
    EXPECT_EQ(1, completed.size());
    EXPECT_EQ(&select, view.GetTool());
}

TEST_F(ZORHostPickToolTest, ThePreviewIsDrawn)
{
    Request request(Request::SurfaceLocations, "Click locations", nullptr);
    request.SetExtent(Request::Extent::Sequence);
    request.Start();
    const QImage before = Look();
    request.SetPreview({{{20, 10, 30}, {80, 10, 30}}, {{20, 30, 30}}, {}});
    const QImage after = Look();
    const QPoint onPath = view.ToPosition({50, 10, 30}).toPoint();
    const QPoint onMark = view.ToPosition({20, 30, 30}).toPoint();
    EXPECT_NE(before.pixel(onPath), after.pixel(onPath));
    EXPECT_NE(before.pixel(onMark), after.pixel(onMark));
    request.SetPreview({});
    EXPECT_EQ(before, Look());
}

TEST_F(ZORHostPickToolTest, TheViewCanBeMovedMeanwhile)
{
    Request request(Request::Surfaces, "Click a surface", nullptr);
    request.Start();
    const ZORVisCamera before = view.GetCamera();
    Drag(Qt::LeftButton, Qt::NoModifier, {160, 120}, {200, 140});
    EXPECT_NE(before, view.GetCamera());
    EXPECT_TRUE(request.IsActive());
    Drag(Qt::LeftButton, Qt::ControlModifier, {1, 1}, {310, 230});
    EXPECT_TRUE(selection.IsEmpty());
    EXPECT_TRUE(request.IsActive());
}

TEST_F(ZORHostPickToolTest, ALongPromptStaysInTheView)
{
    Request request(Request::Surfaces, QString("<b>%1 & ").repeated(400), nullptr);
    request.Start();
    EXPECT_GE(GetPrompt()->geometry().left(), 0);
    EXPECT_LE(GetPrompt()->geometry().right(), view.width());
    view.resize(170, 200);
    QCoreApplication::processEvents();
    EXPECT_LE(GetPrompt()->geometry().right(), 170);
}

TEST_F(ZORHostPickToolTest, ARequestBehindAModalDialogIsCanceled)
{
    QDialog dialog;
    dialog.setModal(true);
    dialog.show();
    ASSERT_TRUE(WaitFor([&] { return QApplication::activeModalWidget() == &dialog; }));
    Request request(Request::Surfaces, "Click a surface", nullptr);
    const QSignalSpy ended(&request, &Request::Ended);
    request.Start();
    EXPECT_TRUE(WaitFor([&] { return ended.size() == 1; }));
    EXPECT_EQ(&select, view.GetTool());
}

TEST_F(ZORHostPickToolTest, TheRequestMayDie)
{
    auto request = std::make_unique<Request>(Request::Surfaces, "Click a surface", nullptr);
    request->Start();
    EXPECT_EQ(&tool, view.GetTool());
    request.reset();
    EXPECT_EQ(&select, view.GetTool());
    EXPECT_FALSE(GetPrompt()->isVisible());
}

TEST_F(ZORHostPickToolTest, TheToolMayDieDuringARequest)
{
    auto other = std::make_unique<ZORHostPickTool>(&view, &selection, nullptr);
    ZORCmdController::GetController()->SetPickAnswerer(other.get());
    Request request(Request::Surfaces, "Click a surface", nullptr);
    const QSignalSpy ended(&request, &Request::Ended);
    request.Start();
    other.reset();
    EXPECT_EQ(1, ended.size());
    EXPECT_EQ(&select, view.GetTool());
    Look();
}

} // namespace
