#include "StandardCommandsTest.h"

#include <ZORComposites/ZORCompRoot.h>
#include <ZORGeometry/ZORGeoCurveOnSurface.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORToolPath/ZORTPCourse.h>
#include <ZORTopology/ZORTopBody.h>

#include <QAbstractButton>

namespace {

constexpr const char* kId = "ZORTPCourseCmd.Create";

class ZORTPCourseCmdTest : public StandardCommandsTest
{
protected:
    /// The only course runs between two points.
    void ExpectCourse(const ZORMathPoint& from, const ZORMathPoint& to, double width)
    {
        const auto* const course = GetOnly<ZORTPCourse>();
        ASSERT_NE(course, nullptr);
        EXPECT_EQ(course->GetWidth(), width);
        const ZORGeoCurveOnSurface* const line = course->GetCenterLine();
        ASSERT_NE(line, nullptr);
        EXPECT_TRUE(IsNear(line->GetPoint(0), from));
        EXPECT_TRUE(IsNear(line->GetPoint(line->GetNumPoints() - 1), to));
    }
};

TEST_F(ZORTPCourseCmdTest, CreatesACourseAlongACurveOnTheSurface)
{
    auto* const skin = AddSurface("Skin");
    auto* const other = AddSurface("Other");
    AddLineOn(skin, "On skin", {10, 20, 0}, {90, 20, 0});
    AddLineOn(other, "On other", {10, 30, 0}, {90, 30, 0});
    AddLine("In space", {10, 20, 5}, {90, 20, 5});
    Open(kId);
    EXPECT_EQ(GetEntries("_CurveCombo"), QStringList{"On skin"}) << "those on the surface alone";
    Choose("_SurfaceCombo", "Other");
    EXPECT_EQ(GetEntries("_CurveCombo"), QStringList{"On other"});
    EXPECT_EQ(GetProblem(), QString("Choose a curve on the surface.")) << "another one was chosen before";
    Choose("_SurfaceCombo", "Skin");
    Choose("_CurveCombo", "On skin");
    SetNumber("_WidthSpin", 6.35);
    EXPECT_EQ(Accept(), QString());
    ExpectCourse({10, 20, 0}, {90, 20, 0}, 6.35);
    const auto* const course = GetOnly<ZORTPCourse>();
    EXPECT_EQ(course->GetLabel(), QString("Course 1"));
    EXPECT_EQ(course->GetParentFeature(), GetOnly<ZORCompRoot>());
    EXPECT_EQ(course->GetSurface(), skin->GetBody()->GetGeometry());
}

TEST_F(ZORTPCourseCmdTest, CreatesAGeodesicCourseToTheBorder)
{
    AddSurface("Skin");
    AddPoint("Start", {20, 50, 3});
    Open(kId);
    EXPECT_EQ(GetProblem(), QString("Choose a curve on the surface."));
    Choose("_MethodCombo", "From a point in a direction");
    EXPECT_EQ(GetProblem(), QString());
    SetTriple("_Direction", 5, 0, 1);
    EXPECT_EQ(Accept(), QString());
    ExpectCourse({20, 50, 0}, {100, 50, 0}, 10);
}

TEST_F(ZORTPCourseCmdTest, CreatesAGeodesicCourseOfALengthBothWays)
{
    AddSurface("Skin");
    AddPoint("Start", {50, 50, 3});
    Open(kId);
    Choose("_MethodCombo", "From a point in a direction");
    SetTriple("_Direction", 0, 1, 0);
    SetNumber("_LengthSpin", 30);
    Click("_BothWaysChk");
    EXPECT_EQ(Accept(), QString());
    ExpectCourse({50, 20, 0}, {50, 80, 0}, 10);
}

TEST_F(ZORTPCourseCmdTest, ShowsTheRowsOfItsMethod)
{
    Open(kId);
    const auto isShown = [this](const char* name) { return Find<QWidget>(name)->isVisible(); };
    EXPECT_TRUE(isShown("_CurveCombo"));
    EXPECT_FALSE(isShown("_PointCombo"));
    EXPECT_FALSE(isShown("_LengthSpin"));
    Choose("_MethodCombo", "From a point in a direction");
    EXPECT_FALSE(isShown("_CurveCombo"));
    EXPECT_TRUE(isShown("_PointCombo"));
    EXPECT_TRUE(isShown("_LengthSpin"));
    Cancel();
}

TEST_F(ZORTPCourseCmdTest, DoesNotTakeIncompleteInput)
{
    Open(kId);
    EXPECT_EQ(GetProblem(), QString("Choose the surface that the course is laid on."));
    AddSurface("Skin");
    ProcessEvents();
    Choose("_MethodCombo", "From a point in a direction");
    EXPECT_EQ(GetProblem(), QString("Choose the start point."));
    AddPoint("Start", {100, 50, 0});
    ProcessEvents();
    SetTriple("_Direction", 0, 0, 0);
    EXPECT_EQ(GetProblem(), QString("The direction has no length."));
    SetTriple("_Direction", 1, 0, 0);
    SetNumber("_WidthSpin", 0);
    EXPECT_EQ(GetProblem(), QString("The width must be more than 0."));
    SetNumber("_WidthSpin", 1);
    EXPECT_EQ(GetProblem(), QString());
    const int numGeometry = container->GetNumGeometry();
    EXPECT_EQ(Accept(), QString("the surface ends at the start point in this direction"));
    EXPECT_EQ(container->GetNumGeometry(), numGeometry);
    SetTriple("_Direction", -1, 0, 0);
    EXPECT_EQ(Accept(), QString());
    ExpectCourse({100, 50, 0}, {0, 50, 0}, 1);
}

} // namespace
