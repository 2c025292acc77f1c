// The combo boxes of objects, in the dialog that creates projections.

#include "StandardCommandsTest.h"

#include <ZORComposites/ZORCompRosette.h>
#include <ZORWireframe/ZORWFProjection.h>

namespace {

class ZORStdObjectComboTest : public StandardCommandsTest
{
protected:
    void OpenProjection() { Open("ZORWFProjectionCmd.Create"); }
};

TEST_F(ZORStdObjectComboTest, ListsObjectsByTheirShape)
{
    AddLine("Line", {10, 20, 5}, {90, 20, 5});
    AddSurface("Skin");
    AddPoint("Hole", {30, 40, 7});
    AddSquare("Imported");
    (new ZORCompRosette(container->GetFeatureRoot("ZORFeatRoot")))->Initialize(); // a line that only shows it
    OpenProjection();
    EXPECT_EQ(GetEntries("_SourceCombo"), QStringList({"Line", "Hole"}));
    EXPECT_EQ(GetEntries("_SupportCombo"), QStringList({"Skin", "Imported"})) << "features first";
    EXPECT_EQ(GetEntries("_FolderCombo").constFirst(), QString("Composites"));
}

TEST_F(ZORStdObjectComboTest, FollowsWhatComesGoesAndIsRenamed)
{
    auto* const first = AddPoint("First", {1, 1, 1});
    AddSurface("Skin");
    OpenProjection();
    auto* const second = AddPoint("Second", {2, 2, 2});
    auto* const third = AddPoint("Third", {3, 3, 3});
    ProcessEvents();
    EXPECT_EQ(GetEntries("_SourceCombo"), QStringList({"First", "Second", "Third"}));
    EXPECT_EQ(GetEntry("_SourceCombo"), QString("First"));
    Choose("_SourceCombo", "Third");
    second->SetLabel("Renamed");
    first->Remove();
    ProcessEvents();
    EXPECT_EQ(GetEntries("_SourceCombo"), QStringList({"Renamed", "Third"}));
    EXPECT_EQ(GetEntry("_SourceCombo"), QString("Third")) << "the selection stays";

    third->Remove();
    EXPECT_EQ(Accept(), QString("Choose a point or a curve to project."))
        << "before the list has followed, too";
    ProcessEvents();
    EXPECT_EQ(GetEntry("_SourceCombo"), QString()) << "no other one slips in";
    EXPECT_EQ(GetProblem(), QString("Choose a point or a curve to project."));
    Choose("_SourceCombo", "Renamed");
    EXPECT_EQ(Accept(), QString());
    EXPECT_EQ(GetOnly<ZORWFProjection>()->GetSource(), second);
}

TEST_F(ZORStdObjectComboTest, SelectsTheFirstObjectThatComes)
{
    OpenProjection();
    EXPECT_EQ(GetEntry("_SupportCombo"), QString());
    AddSurface("Skin");
    AddSurface("Other");
    ProcessEvents();
    EXPECT_EQ(GetEntry("_SupportCombo"), QString("Skin"));
}

TEST_F(ZORStdObjectComboTest, ListsFeaturesOnceTheyHaveAShape)
{
    auto* const point = AddPoint("Hole", {1, 1, 1});
    auto* const skin = AddSurface("Skin");
    auto* const projection = new ZORWFProjection(container->GetFeatureRoot("ZORFeatRoot"));
    projection->SetLabel("Later");
    projection->Initialize();
    OpenProjection();
    EXPECT_EQ(GetEntries("_SourceCombo"), QStringList{"Hole"});
    projection->SetSource(point);
    projection->SetSupport(skin);
    ProcessEvents();
    EXPECT_EQ(GetEntries("_SourceCombo"), QStringList({"Hole", "Later"}));
}

TEST_F(ZORStdObjectComboTest, IsEmptyAfterTheContainerWasCleared)
{
    AddPoint("Hole", {1, 1, 1});
    AddSurface("Skin");
    OpenProjection();
    container->Clear();
    ProcessEvents();
    EXPECT_EQ(GetEntries("_SourceCombo"), QStringList());
    EXPECT_EQ(GetProblem(), QString("Choose a point or a curve to project."));
}

TEST_F(ZORStdObjectComboTest, DialogEndsWithItsEnvironment)
{
    OpenProjection();
    environment.reset();
    EXPECT_TRUE(frame.content.isNull());
    ProcessEvents();
    EXPECT_TRUE(frame.command.isNull());
}

} // namespace
