// Tests of the dialogs that were opened for an object: they show its values and change it.

#include "StandardCommandsTest.h"
#include "support/MessageOf.h"

#include <ZORCommonUI/ZORCmnUnitSpinBox.h>
#include <ZORComposites/ZORCompDrapingLayer.h>
#include <ZORComposites/ZORCompLayup.h>
#include <ZORComposites/ZORCompMaterial.h>
#include <ZORComposites/ZORCompMaterialLibrary.h>
#include <ZORComposites/ZORCompPly.h>
#include <ZORComposites/ZORCompRoot.h>
#include <ZORComposites/ZORCompRosette.h>
#include <ZORComposites/ZORCompStrategy.h>
#include <ZORGeometry/ZORGeoCurveOnSurface.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORMathematics/ZORMathVector.h>
#include <ZORSystem/ZORSysException.h>
#include <ZORToolPath/ZORTPCourse.h>
#include <ZORTopology/ZORTopBody.h>
#include <ZORWireframe/ZORWFProjection.h>

#include <QAction>
#include <QComboBox>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTableView>

#include <numbers>

namespace {

class ZORStdEditObjectsTest : public StandardCommandsTest
{
protected:
    template<class T, class... Args>
    T* Add(const QString& label, Args&&... args)
    {
        auto* const feature = new T(container->GetFeatureRoot("ZORCompRoot"), std::forward<Args>(args)...);
        feature->SetLabel(label);
        feature->Initialize();
        return feature;
    }
    ZORTPCourse* AddCourse(const ZORWFRawSurface* skin)
    {
        const auto* const surface = qobject_cast<const ZORGeoSurface*>(skin->GetBody()->GetGeometry());
        return Add<ZORTPCourse>(
            "Tow",
            QList<ZORGeoLocationOnSurface>{surface->Project({10, 20, 0}), surface->Project({10, 60, 0})},
            8.0);
    }
    /// A projection of "Line" onto "Skin", from (10, 20, 0) to (90, 20, 0).
    ZORWFProjection* AddProjection()
    {
        ZORWFRawCurve* const line = AddLine("Line", {10, 20, 5}, {90, 20, 5});
        ZORWFRawSurface* const skin = AddSurface("Skin");
        auto* const projection = Add<ZORWFProjection>("Trace");
        projection->SetSource(line);
        projection->SetSupport(skin);
        return projection;
    }
    double GetNumber(const char* spin) const { return Find<ZORCmnUnitSpinBox>(spin)->GetInternalValue(); }
};

TEST_F(ZORStdEditObjectsTest, EachKindHasItsDialogAndItsTitle)
{
    ZORWFRawSurface* const skin = AddSurface("Skin");
    const QList<std::pair<QObject*, QString>> kinds{
        {Add<ZORCompLayup>("A"), "Edit Layup"},
        {Add<ZORCompRosette>("B"), "Edit Rosette"},
        {Add<ZORCompStrategy>("C"), "Edit Draping Strategy"},
        {AddMaterial("D", 1), "Material Library"},
        {GetLibrary(), "Material Library"},
        {AddCourse(skin), "Edit Course"},
        {AddProjection(), "Edit Projection"},
    };
    const QSignalSpy changes(container, &ZORGeoContainer::ContentChanged);
    for (const auto& [object, title] : kinds) {
        Edit(object);
        EXPECT_EQ(frame.command->GetTitle(), title);
        EXPECT_EQ(frame.content->property("helpTopic").toString(),
                  ZORCmdController::GetController()->GetEditor(object)->text());
        EXPECT_EQ(GetProblem(), QString()) << title.toStdString();
        EXPECT_EQ(frame.content->findChild<QWidget*>("_FolderCombo"), nullptr) << title.toStdString();
        Cancel();
        Edit(object);
        EXPECT_EQ(Accept(), QString());
        EXPECT_EQ(changes.size(), 0) << title.toStdString()
                                     << ": OK without an edit, and Cancel, change nothing";
    }
    EXPECT_FALSE(ZORCmdController::GetController()->Edit(skin));
}

TEST_F(ZORStdEditObjectsTest, ShowsTheOpenDialogOfAnObject)
{
    auto* const rosette = Add<ZORCompRosette>("Axes");
    Edit(rosette);
    const QPointer<ZORCmdDialogCommand> first = frame.command;
    const QPointer<QWidget> content = frame.content;
    Edit(rosette);
    EXPECT_EQ(frame.command, first);
    EXPECT_EQ(frame.content, content);
    Cancel();
    Edit(rosette);
    EXPECT_NE(frame.command, nullptr) << "a new one after the first has ended";
    Cancel();
}

TEST_F(ZORStdEditObjectsTest, ReportsAnObjectThatIsDeletedMeanwhile)
{
    auto* const rosette = Add<ZORCompRosette>("Axes");
    Edit(rosette);
    EXPECT_EQ(GetProblem(), QString());
    rosette->SetLabel("Main axes");
    rosette->Remove();
    EXPECT_EQ(GetProblem(), QString("'Main axes' has been deleted."));
    EXPECT_EQ(Accept(), GetProblem());
    EXPECT_TRUE(GetAll<ZORCompRosette>().isEmpty());
    Cancel();
}

TEST_F(ZORStdEditObjectsTest, LabelFollowsUntilItIsEdited)
{
    auto* const rosette = Add<ZORCompRosette>("Axes");
    Edit(rosette);
    EXPECT_EQ(Find<QLineEdit>("_LabelEdit")->text(), QString("Axes"));
    rosette->SetLabel("Main axes");
    EXPECT_EQ(Find<QLineEdit>("_LabelEdit")->text(), QString("Main axes"));
    Enter("_LabelEdit", "Mine");
    rosette->SetLabel("Others");
    EXPECT_EQ(Find<QLineEdit>("_LabelEdit")->text(), QString("Mine"));
    EXPECT_EQ(Accept(), QString());
    EXPECT_EQ(rosette->GetLabel(), QString("Mine"));
}

TEST_F(ZORStdEditObjectsTest, RefusesAnObjectOfAnotherDocument)
{
    ZORFeatContainer other;
    auto* const rosette = new ZORCompRosette(other.GetFeatureRoot("ZORCompRoot"));
    rosette->Initialize();
    EXPECT_EQ(MessageOf([&] { ZORCmdController::GetController()->Edit(rosette); }),
              QString("the object is not in the current document"));
    ProcessEvents();
}

TEST_F(ZORStdEditObjectsTest, RosetteTakesAxesAndSurfaceInOneStep)
{
    auto* const rosette = Add<ZORCompRosette>("Axes", ZORMathPoint(1, 2, 1.0 / 3), ZORMathVector(0, 1, 0),
                                              ZORMathVector(1, 0, 0));
    auto* const skin = AddSurface("Skin");
    Edit(rosette);
    EXPECT_EQ(GetNumber("_OriginXSpin"), 1);
    EXPECT_EQ(GetNumber("_OriginZSpin"), 1.0 / 3);
    EXPECT_EQ(GetNumber("_XAxisYSpin"), 1);
    EXPECT_EQ(GetNumber("_NormalXSpin"), 1);
    EXPECT_EQ(GetEntry("_SurfaceCombo"), QString("None"));
    SetNumber("_OriginYSpin", 5);
    Choose("_SurfaceCombo", "Skin");
    QSignalSpy bodies(rosette, &ZORFeatGeometry::BodyChanged);
    EXPECT_EQ(Accept(), QString());
    EXPECT_EQ(bodies.size(), 1) << "what follows it is computed once";
    EXPECT_EQ(rosette->GetGivenOrigin(), ZORMathPoint(1, 5, 1.0 / 3)) << "exact where nothing was entered";
    EXPECT_EQ(rosette->GetSurface(), skin->GetBody()->GetGeometry());
    Edit(rosette);
    EXPECT_EQ(GetEntry("_SurfaceCombo"), QString("Skin"));
    Cancel();
}

TEST_F(ZORStdEditObjectsTest, LayersFollowAnEditedStrategy)
{
    auto* const strategy = Add<ZORCompStrategy>("Weave");
    ZORCompStrategyParameters parameters;
    parameters.step = 10;
    parameters.warpExtent = 40;
    strategy->SetParameters(parameters);
    auto* const layer = Add<ZORCompDrapingLayer>("Layer");
    layer->SetStrategy(strategy);
    layer->SetSurface(AddSurface("Skin"));
    layer->SetSeed(AddPoint("Middle", {50, 50, 0}));
    const auto numCells = layer->GetNet().GetCells().size();
    ASSERT_GT(numCells, 0);
    Edit(strategy);
    EXPECT_EQ(GetNumber("_StepSpin"), 10);
    EXPECT_EQ(GetNumber("_WarpExtentSpin"), 40);
    EXPECT_EQ(Find<QComboBox>("_GeneratorsCombo")->currentIndex(), int(parameters.generators));
    SetNumber("_StepSpin", 5);
    EXPECT_EQ(layer->GetNet().GetCells().size(), numCells) << "not before OK";
    EXPECT_EQ(Accept(), QString());
    EXPECT_EQ(strategy->GetParameters().step, 5);
    EXPECT_GT(layer->GetNet().GetCells().size(), numCells);
    EXPECT_EQ(GetAll<ZORCompStrategy>().size(), 1);
}

TEST_F(ZORStdEditObjectsTest, MaterialIsSelectedAndItsLayupsFollow)
{
    AddMaterial("First", 1);
    ZORCompMaterial* const glass = AddMaterial("Glass", 0.5);
    Open("ZORCompLayupCmd.Create");
    Click("_AddPlyBtn");
    EXPECT_EQ(Accept(), QString());
    GetOnly<ZORCompLayup>()->GetPlies().constFirst()->SetMaterial(glass);
    Edit(glass);
    EXPECT_EQ(Find<QTableView>("_MaterialTable")->currentIndex().row(), 1);
    SetCell("_MaterialTable", 1, 2, "0.75");
    EXPECT_EQ(Accept(), QString());
    EXPECT_EQ(GetOnly<ZORCompLayup>()->GetThickness(), 0.75);
}

TEST_F(ZORStdEditObjectsTest, MaterialsThatWereNotEditedKeepWhatAnotherDialogHasChanged)
{
    ZORCompMaterial* const first = AddMaterial("First", 1);
    ZORCompMaterial* const glass = AddMaterial("Glass", 0.5);
    Edit(glass);
    SetCell("_MaterialTable", 1, 2, "0.75");
    ZORCompMaterialProperties properties = first->GetProperties();
    properties.thickness = 2;
    first->SetProperties(properties);
    EXPECT_EQ(Accept(), QString());
    EXPECT_EQ(first->GetProperties().thickness, 2);
    EXPECT_EQ(glass->GetProperties().thickness, 0.75);
}

TEST_F(ZORStdEditObjectsTest, ProjectionTakesOtherInputsAndIsComputedOnce)
{
    ZORWFProjection* const projection = AddProjection();
    auto* const other = AddLine("Other", {10, 30, 5}, {40, 30, 5});
    auto* const hull = AddSurface("Hull");
    Edit(projection);
    EXPECT_EQ(GetEntry("_SourceCombo"), QString("Line"));
    EXPECT_EQ(GetEntry("_SupportCombo"), QString("Skin"));
    EXPECT_FALSE(GetEntries("_SourceCombo").contains("Trace")) << "not itself";
    Choose("_SourceCombo", "Other");
    Choose("_SupportCombo", "Hull");
    QSignalSpy bodies(projection, &ZORFeatGeometry::BodyChanged);
    EXPECT_EQ(Accept(), QString());
    EXPECT_EQ(bodies.size(), 1);
    EXPECT_EQ(projection->GetSource(), other);
    EXPECT_EQ(projection->GetSupport(), hull);
    EXPECT_NEAR(qobject_cast<const ZORGeoCurve*>(projection->GetBody()->GetGeometry())->GetLength(), 30,
                1e-9);
}

TEST_F(ZORStdEditObjectsTest, ProjectionThatFailsKeepsItsInputs)
{
    ZORWFProjection* const projection = AddProjection();
    ZORFeatGeometry* const source = projection->GetSource();
    ZORFeatGeometry* const support = projection->GetSupport();
    auto* const empty = new ZORGeoSurface(container, QList<ZORMathPoint>(), QList<ZORGeoSurface::Corners>());
    empty->setObjectName("Empty");
    empty->Initialize();
    Edit(projection);
    Choose("_SupportCombo", "Empty");
    EXPECT_EQ(Accept(), QString("nothing of the source can be projected onto the support"));
    EXPECT_EQ(projection->GetSource(), source);
    EXPECT_EQ(projection->GetSupport(), support);
    EXPECT_EQ(projection->GetFailure(), QString());
    EXPECT_EQ(GetAll<ZORWFRawSurface>().size(), 1) << "no feature around the empty surface stays";
    Cancel();
}

TEST_F(ZORStdEditObjectsTest, CourseTakesAnotherWidthAndAnotherCenterLine)
{
    ZORWFRawSurface* const skin = AddSurface("Skin");
    AddSurface("Hull");
    AddLineOn(skin, "Guide", {10, 30, 0}, {90, 30, 0});
    ZORTPCourse* const course = AddCourse(skin);
    const ZORGeoCurveOnSurface* const line = course->GetCenterLine();
    Edit(course);
    EXPECT_EQ(GetEntries("_SurfaceCombo"), QStringList("Skin")) << "a course stays on its surface";
    EXPECT_EQ(GetEntry("_MethodCombo"), QString("As it is"));
    EXPECT_FALSE(Find<QWidget>("_CurveCombo")->isVisible());
    EXPECT_EQ(GetNumber("_WidthSpin"), 8);
    SetNumber("_WidthSpin", 12);
    EXPECT_EQ(Accept(), QString());
    EXPECT_EQ(course->GetWidth(), 12);
    EXPECT_NEAR(line->GetLength(), 40, 1e-9);

    Edit(course);
    Choose("_MethodCombo", "Along a curve");
    EXPECT_EQ(GetEntries("_CurveCombo"), QStringList("Guide")) << "not the course itself";
    EXPECT_EQ(Accept(), QString());
    EXPECT_EQ(course->GetCenterLine(), line);
    EXPECT_NEAR(line->GetLength(), 80, 1e-9);
    EXPECT_EQ(GetAll<ZORTPCourse>().size(), 1);
}

TEST_F(ZORStdEditObjectsTest, CourseWithoutItsSurfaceCanStillBeRenamed)
{
    ZORWFRawSurface* const skin = AddSurface("Skin");
    ZORTPCourse* const course = AddCourse(skin);
    delete const_cast<ZORGeoGeometry*>(skin->GetBody()->GetGeometry());
    Edit(course);
    EXPECT_EQ(GetProblem(), QString());
    Enter("_LabelEdit", "Kept");
    EXPECT_EQ(Accept(), QString());
    EXPECT_EQ(course->GetLabel(), QString("Kept"));
}

} // namespace
