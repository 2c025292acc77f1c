#include "OperationTest.h"

#include <ZORCommonUI/ZORCmnUnitSpinBox.h>
#include <ZORFeature/ZORFeatFolder.h>
#include <ZORGeometry/ZORGeoCurveOnSurface.h>
#include <ZORGeometry/ZORGeoPointOnCurve.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORMathematics/ZORMathSetOfPoints.h>
#include <ZORToolPath/ZORTPCourse.h>
#include <ZORVisualization/ZORVisPointPrimitive.h>
#include <ZORVisualization/ZORVisPolylinePrimitive.h>
#include <ZORVisualization/ZORVisRepGraphics.h>
#include <ZORVisualization/ZORVisVirtualObject.h>
#include <ZORWireframe/ZORWFRawCurve.h>

#include <QListWidget>
#include <QTableView>

#include <numbers>

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
    /// Name and reference count of every row of the console's container table.
    QStringList GetContainerRows()
    {
        const QAbstractItemModel* const model = InConsole<QTableView>("_ContTable")->model();
        QStringList rows;
        for (int row = 0; row < model->rowCount(); ++row)
            rows.append(model->index(row, 0).data().toString() + ' '
                        + model->index(row, 1).data().toString());
        return rows;
    }
    /// Presses "Visualize" on the row \a name of the console and OK in the dialog of options.
    void Visualize(const QString& name, const QByteArray& optionsClass)
    {
        auto* table = InConsole<QTableView>("_ContTable");
        const QModelIndexList found =
            table->model()->match(table->model()->index(0, 0), Qt::DisplayRole, name, 1, Qt::MatchExactly);
        ASSERT_EQ(1, found.size());
        table->setCurrentIndex(found.first());
        answers.Answer(optionsClass, [](QDialog* options) { options->accept(); });
        Click("_ContVisuBtn");
    }
    template<class Primitive>
    static const Primitive* PrimitiveOf(const ZORVisVirtualObject* object)
    {
        const auto* graphics = dynamic_cast<const ZORVisRepGraphics*>(object->GetRep());
        return graphics ? dynamic_cast<const Primitive*>(graphics->GetPrimitives().value(0)) : nullptr;
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
    EXPECT_NEAR(100 - 40 + 10 * std::numbers::pi, course->GetCenterLine()->GetLength(), 1e-4);
    EXPECT_EQ(numBefore, GetContainer()->GetNumGeometry());
}

TEST_F(ZORTestTPCourseSmoothingDlgTest, ConsoleKeepsItsRowsAndShowsTheNewLine)
{
    ZORTPCourse* const course = AddCourse();
    (new ZORWFRawCurve(AddFolder("G"), course->GetCenterLine()))->Initialize();
    (new ZORGeoPointOnCurve(course->GetCenterLine()->GetLocation(50, nullptr)))->Initialize();
    OpenConsole();
    const QStringList rows = GetContainerRows();
    ASSERT_TRUE(rows.contains("CurveOnSurface.1 3")) << rows.join('\n').toStdString();
    Visualize("CurveOnSurface.1", "ZORTestCurveVisOptionsDlg");
    Visualize("PointOnCurve.1", "ZORTestPointVisOptionsDlg");
    const QList<ZORVisVirtualObject*> shown = GetFeatEnvironment()->GetVirtualObjects();
    ASSERT_EQ(2, shown.size());

    ASSERT_NE(nullptr, TriggerMenu("actionSmooth_Course"));
    SetRadius(20);
    PressOk();
    EXPECT_EQ(QStringList(), boxes.TakeErrors());
    EXPECT_EQ(rows, GetContainerRows());
    EXPECT_EQ(shown, GetFeatEnvironment()->GetVirtualObjects());
    EXPECT_EQ(2, InConsole<QListWidget>("_VisList")->count());
    const ZORMathSetOfPoints points = course->GetCenterLine()->GetPoints();
    EXPECT_GT(points.size(), 100);
    EXPECT_EQ(points, PrimitiveOf<ZORVisPolylinePrimitive>(shown[0])->GetPoints());
    // 20 mm behind the start of the arc around (40, 40), which has the radius 20.
    const ZORMathPoint expected(40 + 20 * std::sin(1.0), 40 - 20 * std::cos(1.0), 0);
    const auto* mark = PrimitiveOf<ZORVisPointPrimitive>(shown[1]);
    EXPECT_NEAR(0, mark->GetPoints().constFirst().DistanceTo(expected), 1e-3);
}

TEST_F(ZORTestTPCourseSmoothingDlgTest, FailureLeavesTheCourseAsItIs)
{
    ZORTPCourse* const course = AddCourse();
    const ZORMathSetOfPoints before = course->GetCenterLine()->GetPoints();
    delete course->GetSurface();
    OpenDialog();
    SetRadius(20);
    PressOk();
    EXPECT_EQ(QStringList({"the surface of the course does not exist any more"}), boxes.TakeErrors());
    EXPECT_EQ(before, course->GetCenterLine()->GetPoints());
    EXPECT_EQ(before, course->GetBody()->GetEdge(0).GetPoints());
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
    ExpectMenuOpens("actionSmooth_Course", "ZORTestTPCourseSmoothingDlg");
}

} // namespace
