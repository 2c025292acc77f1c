// How the console shows the debug visualization.

#include "console/ZORTestMainDialog.h"
#include "support/BenchTest.h"

#include <ZORDebug/ZORDebugVizContainer.h>
#include <ZORMathematics/ZORMathSetOfPoints.h>
#include <ZORVisualization/ZORVisRepSet.h>
#include <ZORVisualization/ZORVisVirtualObject.h>

#include <QCheckBox>
#include <QListWidget>
#include <QPointer>

namespace {

class ZORTestDebugVisualizationTest : public BenchTest
{
protected:
    ZORTestDebugVisualizationTest() { OpenConsole(); }
    ~ZORTestDebugVisualizationTest() override { ZORDebugVizContainer::GetContainer()->RemoveAllObjects(); }

    QList<ZORVisVirtualObject*> GetShown() const { return GetFeatEnvironment()->GetVirtualObjects(); }
};

TEST_F(ZORTestDebugVisualizationTest, ShowsTheDebugVisualizationAsOneObject)
{
    ZORDebugVizContainer::AddPoint({1, 2, 3}, 255, 0, 0, 0, QString(), 0);
    ZORDebugVizContainer::AddLine({0, 0, 0}, {1, 0, 0}, 0, 255, 0, 0, QString(), 0, 0);
    auto* check = InConsole<QCheckBox>("_ShowDebugChk");
    check->setChecked(true);
    ASSERT_EQ(1, GetShown().size());
    EXPECT_NE(nullptr, GetShown().constFirst()->GetRep());
    EXPECT_EQ(nullptr, GetShown().constFirst()->GetOwner());
    EXPECT_EQ(nullptr, GetShown().constFirst()->parent());
    EXPECT_EQ(0, InConsole<QListWidget>("_VisList")->count()) << "the debug visualization is not listed";
    check->setChecked(false);
    EXPECT_TRUE(GetShown().isEmpty());
}

TEST_F(ZORTestDebugVisualizationTest, ShowsAllDebugDrawingsThatHaveARepresentation)
{
    ZORDebugVizContainer::AddPolyline(ZORMathSetOfPoints(), 255, 0, 0, 0, QString(), 0); // nothing to draw
    ZORDebugVizContainer::AddPoint({-1, 2, 3}, 255, 0, 0, 0, QString(), 0);
    ZORDebugVizContainer::AddPolyline(ZORMathSetOfPoints(), 255, 0, 0, 0, QString(), 0);
    ZORDebugVizContainer::AddLine({0, 0, 0}, {10, 0, 0}, 0, 255, 0, 0, QString(), 0, 0);
    ZORDebugVizContainer::AddPoint({0, 20, 30}, 0, 0, 255, 0, QString(), 0);
    ZORDebugVizContainer::AddPolyline(ZORMathSetOfPoints(), 255, 0, 0, 0, QString(), 0);
    InConsole<QCheckBox>("_ShowDebugChk")->setChecked(true);
    ASSERT_EQ(1, GetShown().size());
    const ZORVisRep* const rep = GetShown().constFirst()->GetRep();
    ASSERT_NE(nullptr, dynamic_cast<const ZORVisRepSet*>(rep));
    EXPECT_EQ(3u, rep->GetItems().size());
    EXPECT_EQ(ZORMathPoint(-1, 0, 0), rep->GetBoundingBox().GetLowerPoint());
    EXPECT_EQ(ZORMathPoint(10, 20, 30), rep->GetBoundingBox().GetUpperPoint());
}

TEST_F(ZORTestDebugVisualizationTest, ShowsNothingOfAnEmptyDebugVisualization)
{
    ZORDebugVizContainer::AddPolyline(ZORMathSetOfPoints(), 255, 0, 0, 0, QString(), 0); // nothing to draw
    auto* check = InConsole<QCheckBox>("_ShowDebugChk");
    check->setChecked(true);
    EXPECT_TRUE(GetShown().isEmpty());
    check->setChecked(false);
    EXPECT_TRUE(GetShown().isEmpty());
}

TEST_F(ZORTestDebugVisualizationTest, ReplacesTheDebugObjectByWhatIsThereNow)
{
    ZORDebugVizContainer::AddPoint({1, 2, 3}, 255, 0, 0, 0, QString(), 0);
    InConsole<QCheckBox>("_ShowDebugChk")->setChecked(true);
    ASSERT_EQ(1, GetShown().size());
    const QPointer<ZORVisVirtualObject> former(GetShown().constFirst());
    console->UpdateDebugVis();
    EXPECT_EQ(nullptr, former.data());
    EXPECT_EQ(1, GetShown().size());
    ZORDebugVizContainer::GetContainer()->RemoveAllObjects();
    console->UpdateDebugVis();
    EXPECT_TRUE(GetShown().isEmpty());
}

TEST_F(ZORTestDebugVisualizationTest, ClearEmptiesTheDebugContainerButKeepsWhatIsShown)
{
    ZORDebugVizContainer::AddPoint({1, 2, 3}, 255, 0, 0, 0, QString(), 0);
    InConsole<QCheckBox>("_ShowDebugChk")->setChecked(true);
    Click("_ClearDebugBtn");
    EXPECT_EQ(0, ZORDebugVizContainer::GetContainer()->GetNumObjects());
    EXPECT_EQ(1, GetShown().size());
    InConsole<QCheckBox>("_ShowDebugChk")->setChecked(false);
    InConsole<QCheckBox>("_ShowDebugChk")->setChecked(true);
    EXPECT_TRUE(GetShown().isEmpty());
}

} // namespace
