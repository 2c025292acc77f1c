#include "OperationTest.h"

#include <ZORCommonUI/ZORCmnUnitSpinBox.h>
#include <ZORGeometry/ZORGeoPointOnCurve.h>
#include <ZORGeometry/ZORGeoPolyline.h>

namespace {

class ZORTestGeoCreatePointOnCurveDlgTest : public OperationTest
{
protected:
    void OpenDialog() { ASSERT_NE(nullptr, Open("ZORTestGeoCreatePointOnCurveDlg")); }
    void AddCurve()
    {
        AddPolyline("C", {{0, 0, 0}, {10, 0, 0}, {10, 5, 0}});
        TakeNew();
    }
    void SetDistance(double distance) { Field<ZORCmnUnitSpinBox>("_DistanceSpin")->setValue(distance); }
};

TEST_F(ZORTestGeoCreatePointOnCurveDlgTest, FormAsksForACurveAndADistance)
{
    AddPoint("P");
    AddCurve();
    OpenDialog();
    ExpectClass("Create Point on Curve", "ZORGeoPointOnCurve");
    EXPECT_EQ(QStringList({"Curve: ", "Distance along curve: "}), GetCaptions());
    EXPECT_EQ(QStringList({"ZORGeoCurve"}), GetGeoTypes());
    EXPECT_EQ(QStringList({"C"}), GetCandidates("_CurveSel"));
    EXPECT_EQ(QString("Length"), Field<ZORCmnUnitSpinBox>("_DistanceSpin")->property("magnitude").toString());
}

TEST_F(ZORTestGeoCreatePointOnCurveDlgTest, OkAddsThePointAtTheDistance)
{
    AddCurve();
    OpenDialog();
    SetDistance(12);
    const QStringList calls = TraceOk();
    ASSERT_EQ(3, calls.size()) << calls.join('\n').toStdString();
    EXPECT_EQ(QString("ZORGeoCurve::GetLocation(12, null)"), calls[0]);
    EXPECT_TRUE(calls[1].startsWith("ZORGeoPointOnCurve::ZORGeoPointOnCurve(")) << calls[1].toStdString();
    EXPECT_EQ(QString("ZORGeoGeometry::Initialize()"), calls[2]);
    const auto* point = TakeOnly<ZORGeoPointOnCurve>();
    EXPECT_TRUE(IsNear({10, 2, 0}, point->GetMathPoint()));
    EXPECT_EQ(QString("C"), point->GetCurve()->objectName());
}

TEST_F(ZORTestGeoCreatePointOnCurveDlgTest, DistancesBeyondTheEndsArePassedOnUnchanged)
{
    AddCurve();
    for (const double distance : {1000.0, -3.0, 0.0}) {
        OpenDialog();
        SetDistance(distance);
        EXPECT_EQ(QString("ZORGeoCurve::GetLocation(%1, null)").arg(distance), TraceOk().value(0));
    }
    const QList<ZORGeoGeometry*> added = TakeNew();
    ASSERT_EQ(3, added.size());
    EXPECT_TRUE(IsNear({10, 990, 0}, qobject_cast<ZORGeoPoint*>(added[0])->GetMathPoint())) << "straight on";
    EXPECT_TRUE(IsNear({-3, 0, 0}, qobject_cast<ZORGeoPoint*>(added[1])->GetMathPoint()));
    EXPECT_TRUE(IsNear({0, 0, 0}, qobject_cast<ZORGeoPoint*>(added[2])->GetMathPoint()));
}

TEST_F(ZORTestGeoCreatePointOnCurveDlgTest, MissingCurveIsReported)
{
    OpenDialog();
    ExpectRefused("Selection of curve was invalid", SdkCalls::None);
    EXPECT_EQ(QList<bool>({true}), finished);
}

TEST_F(ZORTestGeoCreatePointOnCurveDlgTest, CurveWithoutPointsGivesTheMessageOfTheSdk)
{
    AddPolyline("Empty", {});
    TakeNew();
    OpenDialog();
    ExpectRefused("location is not on a curve");
}

TEST_F(ZORTestGeoCreatePointOnCurveDlgTest, ConsoleOpensItFromItsMenu)
{
    ExpectMenuOpens("_PointOnCurveAction", "ZORTestGeoCreatePointOnCurveDlg");
}

} // namespace
