#include "OperationTest.h"

#include <ZORCommonUI/ZORCmnUnitSpinBox.h>
#include <ZORFeature/ZORFeatFolder.h>
#include <ZORGeometry/ZORGeoCurveOnSurface.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORToolPath/ZORTPCourse.h>

namespace {

class ZORTestTPCourseSmoothingDlgTest : public OperationTest
{
protected:
    void OpenDialog() { ASSERT_NE(nullptr, Open("ZORTestTPCourseSmoothingDlg")); }
    void SetRadius(double radius) { Field<ZORCmnUnitSpinBox>("_RadiusSpin")->setValue(radius); }
    /// A course with a right angle between legs of 50 mm.
    ZORTPCourse* AddCourse()
    {
        const ZORGeoSurface* const surface = AddSquare("S", 100);
        auto* course = new ZORTPCourse(
            AddFolder("F"),
            {surface->Project({10, 20, 0}), surface->Project({60, 20, 0}), surface->Project({60, 70, 0})}, 5);
        course->setObjectName("C");
        course->Initialize();
        TakeNew();
        return course;
    }
};

TEST_F(ZORTestTPCourseSmoothingDlgTest, FormAsksForACourseAndARadius)
{
    AddPolyline("P", {{0, 0, 0}, {10, 0, 0}});
    AddCourse();
    OpenDialog();
    EXPECT_EQ(QString("Course Smoothing"), dialog->windowTitle());
    EXPECT_EQ(QString("Smooth Course"), GetClassInfo("label"));
    EXPECT_EQ(QString(), GetClassInfo("createdTypes"));
    EXPECT_EQ(QStringList({"Course", "Radius: "}), GetCaptions()) << "the first one without a colon";
    EXPECT_EQ(QStringList({"ZORTPCourse"}), GetGeoTypes());
    EXPECT_EQ(QStringList({"C (C)"}), GetCandidates("_CourseSel"));
    EXPECT_EQ(QString("Length"), Field<ZORCmnUnitSpinBox>("_RadiusSpin")->property("magnitude").toString());
}

TEST_F(ZORTestTPCourseSmoothingDlgTest, OkSmoothsTheCourseInPlace)
{
    ZORTPCourse* const course = AddCourse();
    const int numBefore = GetContainer()->GetNumGeometry();
    OpenDialog();
    SetRadius(20);
    EXPECT_EQ(QStringList({"ZORTPCourse::Smooth(20)"}), TraceOk());
    EXPECT_EQ(QStringList(), boxes.TakeErrors());
    EXPECT_NEAR(100 - 40 + 10 * M_PI, course->GetCenterLine()->GetLength(), 1e-4);
    EXPECT_EQ(numBefore, GetContainer()->GetNumGeometry());
}

TEST_F(ZORTestTPCourseSmoothingDlgTest, RadiusZeroIsPassedOnUnchanged)
{
    const ZORTPCourse* const course = AddCourse();
    const ZORGeoCurveOnSurface* const line = course->GetCenterLine();
    OpenDialog();
    SetRadius(0);
    EXPECT_EQ(QStringList({"ZORTPCourse::Smooth(0)"}), TraceOk());
    EXPECT_EQ(QStringList(), boxes.TakeErrors());
    EXPECT_EQ(line, course->GetCenterLine());
}

TEST_F(ZORTestTPCourseSmoothingDlgTest, NegativeRadiusGivesTheMessageOfTheSdk)
{
    AddCourse();
    OpenDialog();
    SetRadius(-3);
    EXPECT_EQ(QStringList({"ZORTPCourse::Smooth(-3) ! radius is negative"}), TraceOk());
    EXPECT_EQ(QStringList({"radius is negative"}), boxes.TakeErrors());
}

TEST_F(ZORTestTPCourseSmoothingDlgTest, MissingCourseIsReported)
{
    OpenDialog();
    EXPECT_EQ(QStringList(), TraceOk());
    EXPECT_EQ(QStringList({"Selection of course was invalid"}), boxes.TakeErrors());
    EXPECT_EQ(QList<bool>({true}), finished);
}

TEST_F(ZORTestTPCourseSmoothingDlgTest, ConsoleOpensItFromItsMenu)
{
    OpenConsole();
    ASSERT_NE(nullptr, TriggerMenu("actionSmooth_Course"));
    EXPECT_STREQ("ZORTestTPCourseSmoothingDlg", dialog->metaObject()->className());
}

} // namespace
