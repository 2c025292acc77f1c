#include "visualization/ZORTestPointVisualizer.h"

#include "VisualizationTest.h"
#include "support/MessageOf.h"

#include <ZORGeometry/ZORGeoCurveOnSurface.h>
#include <ZORGeometry/ZORGeoPointOnCurve.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORVisualization/ZORVisPointPrimitive.h>

#include <QComboBox>

namespace {

constexpr char kDialogClass[] = "ZORTestPointVisOptionsDlg";

class ZORTestPointVisualizerTest : public VisualizationTest
{
};

TEST_F(ZORTestPointVisualizerTest, DrawsOneSymbolAtThePoint)
{
    auto* point = AddPoint("P", {1, -2, 3});
    SetSetting("Point/Color", QColor(50, 60, 70));
    AnswerOptions(kDialogClass,
                  [](QDialog* options) { options->findChild<QComboBox*>("_SymbolCmb")->setCurrentIndex(6); });
    const auto object = Visualize(point);
    ASSERT_NE(nullptr, object);
    EXPECT_EQ(nullptr, object->GetOwner()) << "points own nothing in the view";

    const auto* graphics = GetGraphics(object.get());
    ASSERT_EQ(1, graphics->GetPrimitives().size());
    const auto* mark = GetPrimitive<ZORVisPointPrimitive>(graphics, 0);
    ASSERT_NE(nullptr, mark);
    EXPECT_EQ(QList<ZORMathPoint>({{1, -2, 3}}), QList<ZORMathPoint>(mark->GetPoints()));
    EXPECT_EQ(QColor(50, 60, 70), graphics->GetOptions().GetColor());
    EXPECT_EQ(ZORVisOptions::Star, graphics->GetOptions().GetPointSymbol());
}

TEST_F(ZORTestPointVisualizerTest, SymbolFollowsAPointOnACurveThatChangesInPlace)
{
    const ZORGeoSurface* const surface = AddSurface("S");
    const auto locate = [&](const ZORMathPoint& point) { return surface->Project(point); };
    auto* curve = new ZORGeoCurveOnSurface({locate({0, 0, 0}), locate({1, 0, 0})}, false);
    curve->Initialize();
    auto* point = new ZORGeoPointOnCurve(curve->GetLocation(0.5, nullptr));
    point->Initialize();
    SetSetting("Point/Color", QColor(50, 60, 70));
    AnswerOptions(kDialogClass);
    const auto object = Visualize(point);
    curve->SetLocations({locate({1, 1, 0}), locate({1, 0, 0})});
    const auto* mark = GetPrimitive<ZORVisPointPrimitive>(GetGraphics(object.get()), 0);
    EXPECT_EQ(QList<ZORMathPoint>({{1, 0.5, 0}}), QList<ZORMathPoint>(mark->GetPoints()));
    EXPECT_EQ(QColor(50, 60, 70), GetGraphics(object.get())->GetOptions().GetColor());
}

TEST_F(ZORTestPointVisualizerTest, VisualObjectsAreMadeForTheFeatureEnvironment)
{
    EXPECT_EQ(QString("ZORVisVirtualObject::ZORVisVirtualObject(<Features>, null)"),
              TraceObject(AddPoint("P"), kDialogClass));
}

TEST_F(ZORTestPointVisualizerTest, CancelGivesNothing)
{
    auto* point = AddPoint("P");
    answers.Answer(kDialogClass, [](QDialog* options) { Press(options, "Cancel"); });
    EXPECT_EQ(nullptr, Visualize(point));
    EXPECT_TRUE(GetSettings()->allKeys().isEmpty());
}

TEST_F(ZORTestPointVisualizerTest, PointThatDiesBehindTheDialogGivesNothing)
{
    auto* point = AddPoint("P");
    AnswerOptions(kDialogClass, [point](QDialog*) { point->RemoveNoReferences(); });
    EXPECT_EQ(nullptr, Visualize(point));
}

TEST_F(ZORTestPointVisualizerTest, OtherClassesAreRejected)
{
    auto* surface = AddSurface("S");
    ZORTestPointVisualizer visualizer;
    EXPECT_EQ(QString("geometry is not a point"),
              MessageOf([&] { visualizer.Visualize(GetEnvironment(), surface); }));
}

} // namespace
