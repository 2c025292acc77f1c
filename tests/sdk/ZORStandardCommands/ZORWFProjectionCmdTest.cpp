#include "StandardCommandsTest.h"

#include <ZORComposites/ZORCompRoot.h>
#include <ZORGeometry/ZORGeoCartesianPoint.h>
#include <ZORGeometry/ZORGeoCurveOnSurface.h>
#include <ZORGeometry/ZORGeoPointOnSurface.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORTopology/ZORTopBody.h>
#include <ZORWireframe/ZORWFProjection.h>

namespace {

constexpr const char* kId = "ZORWFProjectionCmd.Create";

using ZORWFProjectionCmdTest = StandardCommandsTest;

TEST_F(ZORWFProjectionCmdTest, CreatesAProjectionThatFollowsItsInputs)
{
    auto* const line = AddLine("Line", {10, 20, 5}, {90, 20, 5});
    auto* const skin = AddSurface("Skin");
    Open(kId);
    EXPECT_EQ(GetEntries("_SourceCombo"), QStringList{"Line"});
    EXPECT_EQ(GetEntries("_SupportCombo"), QStringList{"Skin"});
    EXPECT_EQ(GetProblem(), QString());
    EXPECT_EQ(Accept(), QString());
    const auto* const projection = GetOnly<ZORWFProjection>();
    ASSERT_NE(projection, nullptr);
    EXPECT_EQ(projection->GetSource(), line);
    EXPECT_EQ(projection->GetSupport(), skin);
    EXPECT_EQ(projection->GetLabel(), QString("Projection 1"));
    EXPECT_EQ(projection->GetParentFeature(), GetOnly<ZORCompRoot>());
    const auto* const curve = qobject_cast<const ZORGeoCurveOnSurface*>(projection->GetBody()->GetGeometry());
    ASSERT_NE(curve, nullptr);
    EXPECT_NEAR(curve->GetLength(), 80, 1e-9);
}

TEST_F(ZORWFProjectionCmdTest, TakesPointsTheChosenLabelAndTheChosenFolder)
{
    AddLine("Line", {10, 20, 5}, {90, 20, 5});
    AddPoint("Hole", {30, 40, 7});
    AddSurface("Skin");
    auto* const folder = new ZORFeatFolder(container->GetFeatureRoot("ZORFeatRoot"));
    folder->SetLabel("Details");
    folder->Initialize();
    Open(kId);
    Choose("_SourceCombo", "Hole");
    Choose("_FolderCombo", "Details");
    Enter("_LabelEdit", "  Hole on skin ");
    EXPECT_EQ(Accept(), QString());
    const auto* const projection = GetOnly<ZORWFProjection>();
    ASSERT_NE(projection, nullptr);
    EXPECT_EQ(projection->GetLabel(), QString("Hole on skin"));
    EXPECT_EQ(projection->GetParentFeature(), folder);
    EXPECT_NE(qobject_cast<const ZORGeoPointOnSurface*>(projection->GetBody()->GetGeometry()), nullptr);
    EXPECT_TRUE(GetAll<ZORCompRoot>().isEmpty()) << "not needed";
}

TEST_F(ZORWFProjectionCmdTest, GivesGeometryThatIsNoFeatureARawOne)
{
    ZORGeoSurface* const surface = AddSquare("Imported");
    auto* const point = new ZORGeoCartesianPoint(container, {1, 2, 3});
    point->Initialize();
    Open(kId);
    EXPECT_EQ(GetEntry("_SourceCombo"), point->objectName());
    EXPECT_EQ(GetEntry("_SupportCombo"), QString("Imported"));
    EXPECT_EQ(Accept(), QString());
    const auto* const projection = GetOnly<ZORWFProjection>();
    ASSERT_NE(projection, nullptr);
    EXPECT_EQ(projection->GetSource(), GetOnly<ZORWFRawPoint>());
    EXPECT_EQ(projection->GetSource()->GetLabel(), point->objectName());
    EXPECT_EQ(projection->GetSupport(), GetOnly<ZORWFRawSurface>());
    EXPECT_EQ(projection->GetSupport()->GetBody()->GetGeometry(), surface);
    Open(kId);
    EXPECT_EQ(GetEntries("_SupportCombo"), QStringList{"Imported"})
        << "the feature, not its geometry as well";
    Cancel();
}

TEST_F(ZORWFProjectionCmdTest, DoesNotTakeIncompleteInput)
{
    Open(kId);
    EXPECT_EQ(GetProblem(), QString("Choose a point or a curve to project."));
    EXPECT_EQ(Accept(), GetProblem());
    AddPoint("Hole", {30, 40, 7});
    ProcessEvents();
    EXPECT_EQ(GetProblem(), QString("Choose the surface to project onto."));
    AddSurface("Skin");
    ProcessEvents();
    EXPECT_EQ(GetProblem(), QString());
    Enter("_LabelEdit", "  ");
    EXPECT_EQ(GetProblem(), QString("Enter a label."));
    EXPECT_EQ(Accept(), GetProblem());
    EXPECT_TRUE(GetAll<ZORWFProjection>().isEmpty());
    Enter("_LabelEdit", "P");
    EXPECT_EQ(Accept(), QString());
    EXPECT_NE(GetOnly<ZORWFProjection>(), nullptr);
}

TEST_F(ZORWFProjectionCmdTest, LeavesNothingBehindWhenItIsCancelledOrFails)
{
    auto* const empty = new ZORGeoSurface(container, QList<ZORMathPoint>{}, QList<ZORGeoSurface::Corners>{});
    empty->Initialize();
    AddPoint("Hole", {30, 40, 7});
    const int numGeometry = container->GetNumGeometry();
    Open(kId);
    Cancel();
    EXPECT_EQ(container->GetNumGeometry(), numGeometry);
    Open(kId);
    EXPECT_EQ(Accept(), QString("nothing of the source can be projected onto the support"));
    EXPECT_EQ(container->GetNumGeometry(), numGeometry) << "no root, no raw surface, no projection";
    EXPECT_FALSE(frame.command.isNull()) << "the dialog stays open";
    Cancel();
}

} // namespace
