#include "StandardCommandsTest.h"

#include <ZORComposites/ZORCompRoot.h>
#include <ZORComposites/ZORCompRosette.h>

#include <QWidget>

namespace {

constexpr const char* kId = "ZORCompRosetteCmd.Create";

using ZORCompRosetteCmdTest = StandardCommandsTest;

TEST_F(ZORCompRosetteCmdTest, CreatesARosetteByCoordinates)
{
    Open(kId);
    EXPECT_EQ(GetProblem(), QString());
    SetTriple("_Origin", 1, 2, 3.5);
    SetTriple("_XAxis", 0, 2, 0);
    SetTriple("_Normal", 1, 0, 0);
    EXPECT_EQ(Accept(), QString());
    const auto* const rosette = GetOnly<ZORCompRosette>();
    ASSERT_NE(rosette, nullptr);
    EXPECT_EQ(rosette->GetOrigin(), ZORMathPoint(1, 2, 3.5));
    EXPECT_EQ(rosette->GetXAxis(), ZORMathVector(0, 1, 0));
    EXPECT_EQ(rosette->GetNormal(), ZORMathVector(1, 0, 0));
    EXPECT_EQ(rosette->GetSurface(), nullptr);
    EXPECT_EQ(rosette->GetLabel(), QString("Rosette 1"));
    EXPECT_EQ(rosette->GetParentFeature(), GetOnly<ZORCompRoot>());
}

TEST_F(ZORCompRosetteCmdTest, TakesAPointAndASurface)
{
    AddPoint("Corner", {10, 20, 8});
    AddSurface("Skin");
    Open(kId);
    EXPECT_EQ(GetEntries("_OriginCombo"), QStringList({"Coordinates", "Corner"}));
    EXPECT_EQ(GetEntries("_SurfaceCombo"), QStringList({"None", "Skin"}));
    EXPECT_TRUE(Find<QWidget>("_OriginXSpin")->isEnabled());
    EXPECT_TRUE(Find<QWidget>("_NormalXSpin")->isEnabled());
    Choose("_OriginCombo", "Corner");
    Choose("_SurfaceCombo", "Skin");
    EXPECT_FALSE(Find<QWidget>("_OriginXSpin")->isEnabled());
    EXPECT_FALSE(Find<QWidget>("_NormalXSpin")->isEnabled());
    SetTriple("_XAxis", 3, 0, 4);
    EXPECT_EQ(Accept(), QString());
    const auto* const rosette = GetOnly<ZORCompRosette>();
    ASSERT_NE(rosette, nullptr);
    EXPECT_TRUE(IsNear(rosette->GetOrigin(), {10, 20, 0})) << "the nearest place of the surface";
    EXPECT_EQ(rosette->GetXAxis(), ZORMathVector(1, 0, 0)) << "projected";
    EXPECT_EQ(rosette->GetNormal(), ZORMathVector(0, 0, 1));
    EXPECT_NE(rosette->GetSurface(), nullptr);
}

TEST_F(ZORCompRosetteCmdTest, DoesNotTakeAxesWithoutADirection)
{
    AddSurface("Skin");
    Open(kId);
    SetTriple("_XAxis", 0, 0, 0);
    EXPECT_EQ(GetProblem(), QString("The X direction has no length."));
    SetTriple("_XAxis", 0, 0, -2);
    EXPECT_EQ(GetProblem(), QString("The X direction is parallel to the normal."));
    SetTriple("_Normal", 0, 0, 0);
    EXPECT_EQ(GetProblem(), QString("The normal has no length."));
    EXPECT_EQ(Accept(), GetProblem());
    Choose("_SurfaceCombo", "Skin");
    EXPECT_EQ(GetProblem(), QString()) << "the surface has the normal";
    const int numGeometry = container->GetNumGeometry();
    EXPECT_EQ(Accept(), QString("the X axis of the rosette is perpendicular to the surface"));
    EXPECT_EQ(container->GetNumGeometry(), numGeometry);
    SetTriple("_XAxis", 1, 0, 0);
    Enter("_LabelEdit", "");
    EXPECT_EQ(GetProblem(), QString("Enter a label."));
    Cancel();
    EXPECT_EQ(container->GetNumGeometry(), numGeometry);
}

TEST_F(ZORCompRosetteCmdTest, LabelsAreDifferentByDefault)
{
    for (const char* label : {"Rosette 1", "Rosette 2", "Rosette 3"}) {
        Open(kId);
        EXPECT_EQ(Accept(), QString());
        EXPECT_EQ(GetAll<ZORCompRosette>().constLast()->GetLabel(), QLatin1String(label));
    }
    EXPECT_EQ(GetAll<ZORCompRoot>().size(), 1);
}

} // namespace
