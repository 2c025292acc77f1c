// Limits of the geodesic dialog.

#include "GeodesicDlgTest.h"

namespace {

using ZORTestGeoGeodesicDlgLimitsTest = GeodesicDlgTest;

TEST_F(ZORTestGeoGeodesicDlgLimitsTest, LimitsAreSetOnceOrForEveryIterationInTheOrderOfTheirBehaviour)
{
    const QStringList once{"ZORGeoCurveOnSurfaceProcessor::ClearGeometricLimits()",
                           "ZORGeoCurveOnSurfaceLimits::SetGeometry([0])",
                           "ZORGeoCurveOnSurfaceProcessor::AddGeometricLimits([0], 1)",
                           "ZORGeoCurveOnSurfaceLimits::SetGeometry([0])",
                           "ZORGeoCurveOnSurfaceProcessor::AddGeometricLimits([0], 2)",
                           "ZORGeoCurveOnSurfaceLimits::SetGeometry([0])",
                           "ZORGeoCurveOnSurfaceProcessor::AddGeometricLimits([0], 9)",
                           "ZORGeoCurveOnSurfaceLimits::SetGeometry([0])",
                           "ZORGeoCurveOnSurfaceProcessor::AddGeometricLimits([0], 10)"};
    OpenDialog();
    SetBruteForce(3);
    EXPECT_EQ(once, TraceOk().filter("Limits"));
    OpenDialog();
    SetBruteForce(3);
    Check("_BruteForceLimitsCheck");
    EXPECT_EQ(once + once + once, TraceOk().filter("Limits"));
}

TEST_F(ZORTestGeoGeodesicDlgLimitsTest, SoftLimitsComeFromTheirSelectorsAndEndTheirSides)
{
    ZORGeoCurveOnSurface* const left = AddLimit("Left", 20);
    ZORGeoCurveOnSurface* const right = AddLimit("Right", 90);
    OpenDialog();
    SelectInList("_StartSoftSel", left);
    SelectInList("_EndSoftSel", right);
    SelectInList("_EndSoftSel", GetContainer()->GetGeometryByIndex(0)); // no curve: skipped
    const QStringList calls = TraceOk().filter("::AddGeometricLimits(");
    EXPECT_EQ(QStringList({"ZORGeoCurveOnSurfaceProcessor::AddGeometricLimits([1], 1)",
                           "ZORGeoCurveOnSurfaceProcessor::AddGeometricLimits([1], 2)",
                           "ZORGeoCurveOnSurfaceProcessor::AddGeometricLimits([0], 9)",
                           "ZORGeoCurveOnSurfaceProcessor::AddGeometricLimits([0], 10)"}),
              calls);
    const QList<const ZORGeoCurveOnSurface*> curves = TakeCurves();
    ASSERT_EQ(1, curves.size());
    EXPECT_TRUE(IsNear({20, 60, 0}, curves[0]->GetPoint(0)));
    EXPECT_TRUE(IsNear({90, 60, 0}, EndOf(curves[0])));
}

TEST_F(ZORTestGeoGeodesicDlgLimitsTest, HardLimitsAreReadFromThePointSelectorsAlone)
{
    ZORGeoCurveOnSurface* const left = AddLimit("Left", 20);
    ZORGeoCurveOnSurface* const right = AddLimit("Right", 90);
    OpenDialog();
    SelectInList("_StartLimSel", left); // nothing reads these two
    SelectInList("_EndLimSel", right);
    EXPECT_EQ(4, TraceOk().filter("::AddGeometricLimits([0]").size());
    QList<const ZORGeoCurveOnSurface*> curves = TakeCurves();
    ASSERT_EQ(1, curves.size());
    EXPECT_TRUE(IsNear({100, 60, 0}, EndOf(curves[0])));

    OpenDialog();
    SelectInList("_StartSel", left);
    SelectInList("_EndSel", right);
    EXPECT_EQ(QStringList({"ZORGeoCurveOnSurfaceProcessor::AddGeometricLimits([1], 9)",
                           "ZORGeoCurveOnSurfaceProcessor::AddGeometricLimits([1], 10)"}),
              TraceOk().filter("::AddGeometricLimits([1]"));
    curves = TakeCurves();
    ASSERT_EQ(1, curves.size());
    EXPECT_TRUE(IsNear({20, 60, 0}, curves[0]->GetPoint(0)));
    EXPECT_TRUE(IsNear({90, 60, 0}, EndOf(curves[0])));
}

} // namespace
