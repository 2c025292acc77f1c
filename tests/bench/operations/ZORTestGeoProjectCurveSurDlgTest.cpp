#include "OperationTest.h"

#include <ZORGeometry/ZORGeoCurveOnSurface.h>
#include <ZORGeometry/ZORGeoPolyline.h>
#include <ZORGeometry/ZORGeoSurface.h>

namespace {

class ZORTestGeoProjectCurveSurDlgTest : public OperationTest
{
protected:
    void OpenDialog() { ASSERT_NE(nullptr, Open("ZORTestGeoProjectCurveSurDlg")); }
};

TEST_F(ZORTestGeoProjectCurveSurDlgTest, FormAsksForACurveAndASurface)
{
    AddSquare("S");
    AddPolyline("C", {{0, 0, 1}, {10, 0, 1}});
    OpenDialog();
    ExpectClass("Project Curve to Surface", "ZORGeoCurveOnSurface");
    EXPECT_EQ(QStringList({"Curve: ", "Surface: "}), GetCaptions());
    EXPECT_EQ(QStringList({"ZORGeoCurve", "ZORGeoSurface"}), GetGeoTypes());
    EXPECT_EQ(QStringList({"C"}), GetCandidates("_CurveSel"));
    EXPECT_EQ(QStringList({"S"}), GetCandidates("_SurfaceSel"));
}

TEST_F(ZORTestGeoProjectCurveSurDlgTest, OkAddsTheProjectedCurve)
{
    AddSquare("S");
    AddPolyline("C", {{1, 1, 3}, {4, 5, 3}});
    TakeNew();
    OpenDialog();
    EXPECT_EQ(QStringList({"ZORGeoProjectCrvSurOper::ZORGeoProjectCrvSurOper(<S>, <C>)",
                           "ZORGeoProjectCrvSurOper::Run()"}),
              TraceOk())
        << "the operator registers the curve";
    const auto* curve = TakeOnly<ZORGeoCurveOnSurface>();
    EXPECT_TRUE(curve->IsInitialized());
    EXPECT_EQ(QString("S"), curve->GetSurface()->objectName());
    EXPECT_NEAR(5, curve->GetLength(), 1e-9);
    EXPECT_TRUE(IsNear({1, 1, 0}, curve->GetPoint(0)));
    EXPECT_TRUE(IsNear({4, 5, 0}, curve->GetPoint(curve->GetNumPoints() - 1)));
    EXPECT_EQ(QList<bool>({true, true}), finished);
}

TEST_F(ZORTestGeoProjectCurveSurDlgTest, FirstInvalidSelectionIsReported)
{
    OpenDialog();
    PressOk();
    EXPECT_EQ(QStringList({"Curve selection invalid"}), boxes.TakeErrors());
    AddPolyline("C", {{1, 1, 3}, {4, 5, 3}});
    TakeNew();
    OpenDialog();
    ExpectRefused("Surface selection invalid", SdkCalls::None);
}

TEST_F(ZORTestGeoProjectCurveSurDlgTest, CurveThatCannotBeProjectedIsReportedAndCreatesNothing)
{
    AddSquare("S");
    AddPolyline("Empty", {});
    TakeNew();
    OpenDialog();
    ExpectRefused("Projection failed");
    EXPECT_EQ(QList<bool>({true}), finished);
}

TEST_F(ZORTestGeoProjectCurveSurDlgTest, SurfaceWithoutTrianglesFailsTheProjection)
{
    (new ZORGeoSurface(GetContainer(), {}, {}))->Initialize();
    AddPolyline("C", {{1, 1, 3}, {4, 5, 3}});
    TakeNew();
    OpenDialog();
    ExpectRefused("Projection failed");
}

TEST_F(ZORTestGeoProjectCurveSurDlgTest, ConsoleOpensItFromItsMenu)
{
    ExpectMenuOpens("_ProjectCurveSurAction", "ZORTestGeoProjectCurveSurDlg");
}

} // namespace
