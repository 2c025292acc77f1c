// Tests of the inputs of dialogs that are picked in the view.

#include "StandardCommandsTest.h"
#include "support/PickAnswerer.h"

#include <ZORComposites/ZORCompRoot.h>
#include <ZORComposites/ZORCompRosette.h>
#include <ZORGeometry/ZORGeoCurve.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORTopology/ZORTopBody.h>
#include <ZORWireframe/ZORWFProjection.h>

#include <QAbstractButton>
#include <QDoubleSpinBox>

namespace {

using Request = ZORCmdPickRequest;

class ZORStdPickingTest : public StandardCommandsTest
{
protected:
    static ZORGeoGeometry* ShapeOf(const ZORFeatGeometry* feature)
    {
        return const_cast<ZORGeoGeometry*>(feature->GetBody()->GetGeometry());
    }

    PickAnswerer answerer;
};

TEST_F(ZORStdPickingTest, PicksWhatTheFieldOffersByTheShapeOrTheFeature)
{
    auto* const line = AddLine("Line", {10, 20, 5}, {90, 20, 5});
    auto* const other = AddLine("Other", {10, 30, 5}, {90, 30, 5});
    auto* const skin = AddSurface("Skin");
    auto* const hull = AddSurface("Hull");
    Open("ZORWFProjectionCmd.Create");
    Click("_SourcePickBtn");
    ASSERT_NE(answerer.request, nullptr);
    EXPECT_EQ(answerer.request->GetKinds(), Request::Points | Request::Curves);
    EXPECT_EQ(answerer.request->GetPrompt(), QString("Click a point or a curve in the view"));
    EXPECT_TRUE(answerer.request->Accepts(other));
    EXPECT_FALSE(answerer.request->Accepts(skin));
    EXPECT_FALSE(answerer.request->Answer({skin, {}, {}}));
    EXPECT_TRUE(answerer.request->Answer({ShapeOf(other), {10, 30, 5}, {}})) << "the geometry of a feature";
    EXPECT_EQ(GetEntry("_SourceCombo"), QString("Other"));
    Click("_SupportPickBtn");
    EXPECT_EQ(answerer.request->GetKinds(), Request::Kinds(Request::Surfaces));
    EXPECT_TRUE(answerer.request->Answer({hull->GetBody(), {}, {}})) << "its body";
    EXPECT_EQ(GetEntry("_SupportCombo"), QString("Hull"));
    Click("_SupportPickBtn");
    answerer.request->Cancel();
    EXPECT_EQ(GetEntry("_SupportCombo"), QString("Hull"));
    Click("_SourcePickBtn");
    EXPECT_TRUE(answerer.request->Answer({line, {}, {}}));
    EXPECT_EQ(Accept(), QString());
    EXPECT_EQ(GetOnly<ZORWFProjection>()->GetSource(), line);
    EXPECT_EQ(GetOnly<ZORWFProjection>()->GetSupport(), hull);
}

TEST_F(ZORStdPickingTest, PicksCoordinates)
{
    auto* const skin = AddSurface("Skin");
    auto* const hole = AddPoint("Hole", {7, 8, 9});
    Open("ZORCompRosetteCmd.Create");
    Click("_OriginPointBtn");
    EXPECT_TRUE(answerer.request->Answer({skin, {12.5, 25, 0}, {}}));
    EXPECT_EQ(Find<QDoubleSpinBox>("_OriginXSpin")->value(), 12.5);
    EXPECT_EQ(Find<QDoubleSpinBox>("_OriginYSpin")->value(), 25);
    Click("_OriginPointBtn");
    EXPECT_TRUE(answerer.request->Answer({hole, {7.1, 8.1, 9.1}, {}}));
    EXPECT_EQ(Find<QDoubleSpinBox>("_OriginXSpin")->value(), 7)
        << "of the point, not where the ray hit its symbol";
    Click("_OriginPickBtn");
    EXPECT_TRUE(answerer.request->Answer({hole, {}, {}}));
    EXPECT_FALSE(Find<QAbstractButton>("_OriginPointBtn")->isEnabled()) << "the point is the origin";
    Cancel();
}

TEST_F(ZORStdPickingTest, PicksARosetteByItsLine)
{
    auto* const rosette = new ZORCompRosette(container->GetFeatureRoot("ZORCompRoot"));
    rosette->SetLabel("Axes");
    rosette->Initialize();
    Open("ZORCompLayupCmd.Create");
    Click("_RosettePickBtn");
    EXPECT_TRUE(answerer.request->Answer({ShapeOf(rosette), {}, {}}));
    EXPECT_EQ(GetEntry("_RosetteCombo"), QString("Axes"));
    Cancel();
}

TEST_F(ZORStdPickingTest, EndOfTheDialogEndsThePick)
{
    AddSurface("Skin");
    Open("ZORCompLayupCmd.Create");
    Click("_SurfacePickBtn");
    EXPECT_NE(answerer.request, nullptr);
    Cancel();
    EXPECT_EQ(answerer.request, nullptr);
    Open("ZORCompLayupCmd.Create");
    Click("_SurfacePickBtn");
    EXPECT_TRUE(library.unload());
    EXPECT_EQ(answerer.request, nullptr);
    EXPECT_TRUE(library.load());
}

} // namespace
