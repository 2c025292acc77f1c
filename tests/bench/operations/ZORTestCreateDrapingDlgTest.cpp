#include "OperationTest.h"

#include <ZORComposites/ZORCompStrategy.h>
#include <ZORFeature/ZORFeatRoot.h>
#include <ZORGeometry/ZORGeoPointOnSurface.h>
#include <ZORGeometry/ZORGeoSurface.h>

#include <QSettings>

namespace {

class ZORTestCreateDrapingDlgTest : public OperationTest
{
protected:
    void OpenDialog() { ASSERT_NE(nullptr, Open("ZORTestCreateDrapingDlg")); }
    void AddStrategy()
    {
        auto* strategy = new ZORCompStrategy(GetContainer()->GetFeatureRoot("ZORCompRoot"));
        strategy->setObjectName("St");
        strategy->Initialize();
    }
};

TEST_F(ZORTestCreateDrapingDlgTest, FormAsksForAStrategyAPointAndASurface)
{
    AddStrategy();
    AddPointOn(AddSquare("S"), "P", {5, 5, 0});
    AddPolyline("C", {{0, 0, 0}, {10, 0, 0}});
    OpenDialog();
    ExpectClass("Create Draping", "ZORCompStrategy");
    EXPECT_EQ(QStringList({"Strategy: ", "Point: ", "Surface: "}), GetCaptions());
    EXPECT_EQ(QStringList({"ZORCompStrategy", "ZORGeoPointOnSurface", "ZORGeoSurface"}), GetGeoTypes());
    EXPECT_EQ(QStringList({"St (St)"}), GetCandidates("_StrategySel"));
    EXPECT_EQ(QStringList({"P"}), GetCandidates("_PointOnSurSel"));
    EXPECT_EQ(QStringList({"S"}), GetCandidates("_SurfaceSel"));
}

TEST_F(ZORTestCreateDrapingDlgTest, ValidInputClosesAndLeavesEverythingAsItIs)
{
    AddStrategy();
    AddPointOn(AddSquare("S"), "P", {5, 5, 0});
    TakeNew();
    OpenDialog();
    const QString group = "ZORSysSettingGroupContext::ZORSysSettingGroupContext(<>, \"%1\")";
    EXPECT_EQ(QStringList({group.arg("Debug"), group.arg("CreateDraping")}), TraceOk());
    EXPECT_EQ(QStringList(), boxes.TakeErrors());
    EXPECT_EQ(QList<bool>({true, true}), finished);
    EXPECT_TRUE(TakeNew().isEmpty());
    EXPECT_EQ(QStringList(), GetSettings()->allKeys());
    EXPECT_EQ(QString(), GetSettings()->group()) << "the groups are left again";
}

TEST_F(ZORTestCreateDrapingDlgTest, ReportsOnlyTheFirstThatIsMissing)
{
    const auto press = [this] {
        OpenDialog();
        PressOk();
        return boxes.TakeErrors();
    };
    EXPECT_EQ(QStringList({"Strategy selection invalid"}), press());
    AddStrategy();
    EXPECT_EQ(QStringList({"Surface selection invalid"}), press())
        << "before the point, which is missing too";
    ZORGeoSurface* const surface = AddSquare("S");
    EXPECT_EQ(QStringList({"Point selection invalid"}), press());
    AddPointOn(surface, "P", {5, 5, 0});
    EXPECT_EQ(QStringList(), press());
    EXPECT_EQ(QStringList(), GetSettings()->allKeys());
}

TEST_F(ZORTestCreateDrapingDlgTest, ConsoleOpensItFromItsMenu)
{
    ExpectMenuOpens("_DrapingLayerAction", "ZORTestCreateDrapingDlg");
}

} // namespace
