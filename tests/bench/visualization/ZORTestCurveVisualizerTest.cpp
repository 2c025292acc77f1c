#include "visualization/ZORTestCurveVisualizer.h"

#include "VisualizationTest.h"
#include "core/ZORTestCommandRegistry.h"
#include "support/MessageOf.h"

#include <ZORGeometry/ZORGeoCurveOnSurface.h>
#include <ZORGeometry/ZORGeoLine.h>
#include <ZORGeometry/ZORGeoPoint.h>
#include <ZORGeometry/ZORGeoPolyline.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORVisualization/ZORVisPointPrimitive.h>
#include <ZORVisualization/ZORVisPolylinePrimitive.h>
#include <ZORVisualization/ZORVisTextPrimitive.h>

#include <QCheckBox>
#include <QComboBox>
#include <QPushButton>
#include <QRadioButton>

namespace {

constexpr char kDialogClass[] = "ZORTestCurveVisOptionsDlg";

void CheckPoints(QDialog* options)
{
    options->findChild<QRadioButton*>("_PointsRadio")->click();
}

void CheckPointsAndIndexes(QDialog* options)
{
    CheckPoints(options);
    options->findChild<QCheckBox*>("_PointIdxChk")->click();
}

class ZORTestCurveVisualizerTest : public VisualizationTest
{
protected:
    const QList<ZORMathPoint> points = {{0, 0, 0}, {3, 0, 0}, {3, 4, 1}};
};

TEST_F(ZORTestCurveVisualizerTest, DrawsTheWholeCurveAsLines)
{
    auto* curve = AddPolyline("C", points);
    AnswerOptions(kDialogClass);
    const auto object = Visualize(curve);
    ASSERT_NE(nullptr, object);
    EXPECT_EQ(curve, object->GetOwner());
    EXPECT_EQ(nullptr, object->GetEnvironment()) << "the caller adds it";

    const auto* graphics = GetGraphics(object.get());
    ASSERT_EQ(1, graphics->GetPrimitives().size());
    const auto* lines = GetPrimitive<ZORVisPolylinePrimitive>(graphics, 0);
    ASSERT_NE(nullptr, lines);
    EXPECT_EQ(points, QList<ZORMathPoint>(lines->GetPoints()));
    EXPECT_EQ(ZORVisPolylinePrimitive::Chain, lines->GetStructure());
}

TEST_F(ZORTestCurveVisualizerTest, VisualObjectsAreMadeForTheFeatureEnvironment)
{
    EXPECT_EQ(QString("ZORVisVirtualObject::ZORVisVirtualObject(<Features>, <C>)"),
              TraceObject(AddPolyline("C", points), kDialogClass));
}

TEST_F(ZORTestCurveVisualizerTest, OptionsOfTheDialogReachTheDrawing)
{
    auto* curve = AddPolyline("C", points);
    SetSetting("Curve/Color", QColor(10, 20, 30));
    AnswerOptions(kDialogClass, [](QDialog* options) {
        auto* style = options->findChild<QComboBox*>("_StyleCmb");
        style->setCurrentIndex(style->findText("chain"));
        options->findChild<QComboBox*>("_WidthCmb")->setCurrentIndex(7);
    });
    const auto object = Visualize(curve);
    const ZORVisOptions& options = GetGraphics(object.get())->GetOptions();
    EXPECT_EQ(QColor(10, 20, 30), options.GetColor());
    EXPECT_EQ(4, int(options.GetLineStyle()));
    EXPECT_EQ(8.0, options.GetLineThickness());
}

TEST_F(ZORTestCurveVisualizerTest, DrawsPointsWithTheirIndexes)
{
    auto* curve = AddPolyline("C", points);
    AnswerOptions(kDialogClass, CheckPointsAndIndexes);
    const auto object = Visualize(curve);
    const auto* graphics = GetGraphics(object.get());
    ASSERT_EQ(4, graphics->GetPrimitives().size());
    const auto* marks = GetPrimitive<ZORVisPointPrimitive>(graphics, 0);
    ASSERT_NE(nullptr, marks);
    EXPECT_EQ(points, QList<ZORMathPoint>(marks->GetPoints()));
    for (int i = 0; i < 3; ++i) {
        const auto* text = GetPrimitive<ZORVisTextPrimitive>(graphics, i + 1);
        ASSERT_NE(nullptr, text) << i;
        EXPECT_EQ(QString(" %1").arg(i), text->GetText());
        EXPECT_EQ(points[i], text->GetPosition());
        EXPECT_EQ(0, int(text->GetAnchorLocation()));
        EXPECT_EQ(1, int(text->GetScalability()));
    }
}

TEST_F(ZORTestCurveVisualizerTest, IndexesStandBesideLinesToo)
{
    auto* curve = AddPolyline("C", points);
    AnswerOptions(kDialogClass,
                  [](QDialog* options) { options->findChild<QCheckBox*>("_PointIdxChk")->click(); });
    const auto object = Visualize(curve);
    const auto* graphics = GetGraphics(object.get());
    ASSERT_EQ(4, graphics->GetPrimitives().size());
    EXPECT_NE(nullptr, GetPrimitive<ZORVisPolylinePrimitive>(graphics, 0));
    EXPECT_EQ(QString(" 2"), GetPrimitive<ZORVisTextPrimitive>(graphics, 3)->GetText());
}

TEST_F(ZORTestCurveVisualizerTest, CurveWithoutPointsGivesEmptyPrimitives)
{
    auto* curve = AddPolyline("Empty", {});
    AnswerOptions(kDialogClass, CheckPointsAndIndexes);
    const auto asPoints = Visualize(curve);
    ASSERT_NE(nullptr, asPoints);
    ASSERT_EQ(1, GetGraphics(asPoints.get())->GetPrimitives().size());
    const auto* marks = GetPrimitive<ZORVisPointPrimitive>(GetGraphics(asPoints.get()), 0);
    ASSERT_NE(nullptr, marks);
    EXPECT_TRUE(marks->GetPoints().isEmpty());

    AnswerOptions(kDialogClass,
                  [](QDialog* options) { options->findChild<QRadioButton*>("_LinesRadio")->click(); });
    const auto asLines = Visualize(curve);
    ASSERT_NE(nullptr, asLines);
    EXPECT_TRUE(GetPrimitive<ZORVisPolylinePrimitive>(GetGraphics(asLines.get()), 0)->GetPoints().isEmpty());
}

TEST_F(ZORTestCurveVisualizerTest, DrawingFollowsACurveThatChangesInPlace)
{
    const ZORGeoSurface* const surface = AddSurface("S");
    const auto locate = [&](const ZORMathPoint& point) { return surface->Project(point); };
    auto* curve = new ZORGeoCurveOnSurface({locate({0, 0, 0}), locate({1, 1, 0})}, false);
    curve->Initialize();
    SetSetting("Curve/Color", QColor(10, 20, 30));
    AnswerOptions(kDialogClass);
    const auto lines = Visualize(curve);
    AnswerOptions(kDialogClass, CheckPointsAndIndexes);
    const auto marks = Visualize(curve);

    curve->SetLocations({locate({1, 0, 0}), locate({1, 1, 0}), locate({0, 1, 0})});
    const ZORMathSetOfPoints changed{{1, 0, 0}, {1, 1, 0}, {0, 1, 0}};
    ASSERT_EQ(1, GetGraphics(lines.get())->GetPrimitives().size());
    EXPECT_EQ(changed, GetPrimitive<ZORVisPolylinePrimitive>(GetGraphics(lines.get()), 0)->GetPoints());
    EXPECT_EQ(QColor(10, 20, 30), GetGraphics(lines.get())->GetOptions().GetColor());
    ASSERT_EQ(4, GetGraphics(marks.get())->GetPrimitives().size());
    EXPECT_EQ(changed, GetPrimitive<ZORVisPointPrimitive>(GetGraphics(marks.get()), 0)->GetPoints());
    EXPECT_EQ(changed[2], GetPrimitive<ZORVisTextPrimitive>(GetGraphics(marks.get()), 3)->GetPosition());
}

TEST_F(ZORTestCurveVisualizerTest, SubclassesAreDrawnByTheSameInstance)
{
    auto& registry = ZORTestCommandRegistry::Instance();
    auto* line = new ZORGeoLine(GetContainer(), {0, 0, 0}, {1, 2, 3});
    line->Initialize();
    auto* visualizer = registry.CreateVisualizer(line->metaObject());
    EXPECT_NE(nullptr, qobject_cast<ZORTestCurveVisualizer*>(visualizer));
    EXPECT_EQ(visualizer, registry.CreateVisualizer(&ZORGeoPolyline::staticMetaObject));

    AnswerOptions(kDialogClass);
    const auto object = Visualize(line);
    ASSERT_NE(nullptr, object);
    EXPECT_EQ(2, GetPrimitive<ZORVisPolylinePrimitive>(GetGraphics(object.get()), 0)->GetPoints().size());
}

TEST_F(ZORTestCurveVisualizerTest, CancelGivesNothing)
{
    auto* curve = AddPolyline("C", points);
    answers.Answer(kDialogClass, [](QDialog* options) { Press(options, "Cancel"); });
    EXPECT_EQ(nullptr, Visualize(curve));
    EXPECT_TRUE(GetSettings()->allKeys().isEmpty());
}

TEST_F(ZORTestCurveVisualizerTest, CurveThatDiesBehindTheDialogGivesNothing)
{
    auto* curve = AddPolyline("C", points);
    AnswerOptions(kDialogClass, [curve](QDialog*) { curve->RemoveNoReferences(); });
    EXPECT_EQ(nullptr, Visualize(curve));
}

TEST_F(ZORTestCurveVisualizerTest, OtherClassesAreRejected)
{
    auto* point = AddPoint("P");
    ZORTestCurveVisualizer visualizer;
    EXPECT_EQ(QString("geometry is not a curve"),
              MessageOf([&] { visualizer.Visualize(GetEnvironment(), point); }));
}

TEST_F(ZORTestCurveVisualizerTest, CancelledColorReachesTheDrawing)
{
    auto* curve = AddPolyline("C", points);
    AnswerOptions(kDialogClass, [this](QDialog* options) {
        answers.CancelColor();
        options->findChild<QPushButton*>("_ColorBtn")->click();
    });
    const auto object = Visualize(curve);
    EXPECT_FALSE(GetGraphics(object.get())->GetOptions().GetColor().isValid());
}

} // namespace
