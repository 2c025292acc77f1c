#include "OperationTest.h"

#include <ZORGeometry/ZORGeoPointOnCurve.h>
#include <ZORGeometry/ZORGeoPolyline.h>

namespace {

class ZORTestGeoProjectPointCurveDlgTest : public OperationTest
{
protected:
    void OpenDialog() { ASSERT_NE(nullptr, Open("ZORTestGeoProjectPointCurveDlg")); }
};

TEST_F(ZORTestGeoProjectPointCurveDlgTest, FormAsksForAPointAndACurve)
{
    AddPolyline("C", {{0, 0, 0}, {10, 0, 0}});
    AddPoint("P");
    OpenDialog();
    ExpectClass("Project Point to Curve", "ZORGeoPointOnCurve");
    EXPECT_EQ(QStringList({"Point: ", "Curve: "}), GetCaptions());
    EXPECT_EQ(QStringList({"ZORGeoPoint", "ZORGeoCurve"}), GetGeoTypes());
    EXPECT_EQ(QStringList({"P"}), GetCandidates("_PointSel"));
    EXPECT_EQ(QStringList({"C"}), GetCandidates("_CurveSel"));
}

TEST_F(ZORTestGeoProjectPointCurveDlgTest, OkAddsTheNearestPlaceOfTheCurve)
{
    AddPoint("Other");
    AddPoint("P", {3, 4, 5});
    AddPolyline("C", {{0, 0, 0}, {10, 0, 0}});
    TakeNew();
    OpenDialog();
    Select("_PointSel", "P");
    const QStringList calls = TraceOk();
    ASSERT_EQ(3, calls.size()) << calls.join('\n').toStdString();
    EXPECT_TRUE(calls[0].startsWith("ZORGeoCurve::Project((3, 4, 5)")) << calls[0].toStdString();
    EXPECT_TRUE(calls[1].startsWith("ZORGeoPointOnCurve::ZORGeoPointOnCurve(")) << calls[1].toStdString();
    EXPECT_EQ(QString("ZORGeoGeometry::Initialize()"), calls[2]);
    const auto* point = TakeOnly<ZORGeoPointOnCurve>();
    EXPECT_TRUE(IsNear({3, 0, 0}, point->GetMathPoint()));
    EXPECT_EQ(QString("C"), point->GetCurve()->objectName());
}

TEST_F(ZORTestGeoProjectPointCurveDlgTest, FirstInvalidSelectionIsReported)
{
    OpenDialog();
    PressOk();
    EXPECT_EQ(QStringList({"Point selection invalid"}), boxes.TakeErrors());

    AddPolyline("C", {{0, 0, 0}, {10, 0, 0}});
    OpenDialog();
    PressOk();
    EXPECT_EQ(QStringList({"Point selection invalid"}), boxes.TakeErrors());
    EXPECT_EQ(1, GetContainer()->GetNumGeometry());
}

TEST_F(ZORTestGeoProjectPointCurveDlgTest, MissingCurveIsReportedAsASurface)
{
    AddPoint("P");
    TakeNew();
    OpenDialog();
    ExpectRefused("Surface selection invalid", SdkCalls::None);
}

TEST_F(ZORTestGeoProjectPointCurveDlgTest, CurveWithoutPointsFailsTheProjection)
{
    AddPoint("P");
    AddPolyline("Empty", {});
    TakeNew();
    OpenDialog();
    ExpectRefused("Projection failed");
    EXPECT_EQ(QList<bool>({true}), finished);
}

TEST_F(ZORTestGeoProjectPointCurveDlgTest, SelectionThatDiedMeanwhileCountsAsNone)
{
    auto* point = AddPoint("P");
    AddPolyline("C", {{0, 0, 0}, {10, 0, 0}});
    OpenDialog();
    point->RemoveNoReferences();
    PressOk();
    EXPECT_EQ(QStringList({"Point selection invalid"}), boxes.TakeErrors());
}

TEST_F(ZORTestGeoProjectPointCurveDlgTest, ConsoleOpensItFromItsMenu)
{
    ExpectMenuOpens("_ProjectPtCurveAction", "ZORTestGeoProjectPointCurveDlg");
}

} // namespace
