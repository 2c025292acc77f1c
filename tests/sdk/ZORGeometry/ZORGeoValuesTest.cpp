// Tests of the values and services of the module: what their objects hold, and what copies share.

#include "support/SharedValue.h"

#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoCurveOnSurfaceLimits.h>
#include <ZORGeometry/ZORGeoCurveOnSurfaceProcessor.h>
#include <ZORGeometry/ZORGeoCurveOnSurfaceResult.h>
#include <ZORGeometry/ZORGeoCurveOnSurfaceSmoother.h>
#include <ZORGeometry/ZORGeoDebugOptions.h>
#include <ZORGeometry/ZORGeoStlLoader.h>
#include <ZORGeometry/ZORGeoStlReport.h>
#include <ZORGeometry/ZORGeoStlWriter.h>

#include <QBuffer>

#include <gtest/gtest.h>

namespace {

using Result = ZORGeoCurveOnSurfaceResult;

ZORGeoStlReport LoadReport(QByteArray content)
{
    QBuffer buffer(&content);
    buffer.open(QIODevice::ReadOnly);
    ZORGeoContainer container;
    ZORGeoStlLoader loader(&buffer);
    loader.Load(&container, ZORSysValue::Millimeter);
    return loader.GetReport();
}

} // namespace

TEST(ZORGeoValuesTest, CopiesOfLimitsAreIndependent)
{
    ZORGeoCurveOnSurfaceLimits limits;
    EXPECT_TRUE(limits.GetGeometry().isEmpty());
    ExpectSharedValue(
        limits,
        [](ZORGeoCurveOnSurfaceLimits& changed) {
            changed.SetGeometry({nullptr, nullptr});
        },
        [](const ZORGeoCurveOnSurfaceLimits& value) { return value.GetGeometry().size(); });
}

TEST(ZORGeoValuesTest, CopiesOfResultsAreIndependent)
{
    const Result result({{}, {}, {}}, 1, {2.5, Result::Border}, {4, Result::Closed});
    const Result copy = result;
    EXPECT_EQ(3, copy.GetLocations().size());
    EXPECT_EQ(1, copy.GetStartIndex());
    EXPECT_EQ(2.5, copy.GetStartLength());
    EXPECT_EQ(4, copy.GetEndLength());
    EXPECT_EQ(Result::Border, copy.GetStartReason());
    EXPECT_EQ(Result::Closed, copy.GetEndReason());
    EXPECT_EQ(0, Result().GetLocations().size());
    EXPECT_EQ(Result::Length, Result().GetEndReason());
    ExpectSharedValue(
        Result(), [&result](Result& changed) { changed = result; },
        [](const Result& value) { return value.GetStartIndex(); });
}

TEST(ZORGeoValuesTest, AReportStaysAsItIsWhenItsLoaderReadsAgain)
{
    const QByteArray one = "solid\nfacet normal 0 0 1\nouter loop\nvertex 0 0 0\nvertex 1 0 0\nvertex 0 1 0\n"
                           "endloop\nendfacet\nendsolid\n";
    QByteArray content = one + "solid empty\nendsolid\n";
    QBuffer buffer(&content);
    buffer.open(QIODevice::ReadOnly);
    ZORGeoContainer container;
    ZORGeoStlLoader loader(&buffer);
    loader.Load(&container, ZORSysValue::Millimeter);
    const ZORGeoStlReport first = loader.GetReport();
    EXPECT_EQ(1, first.GetNumFacets());
    EXPECT_EQ(1, first.GetNumEmptySolids());
    loader.Load(&container, ZORSysValue::Millimeter); // from the end of the buffer: nothing is left
    EXPECT_EQ(0, loader.GetReport().GetNumFacets());
    EXPECT_EQ(1, first.GetNumFacets());
    EXPECT_EQ(1, first.GetNumEmptySolids());

    const ZORGeoStlReport report = LoadReport(one);
    ExpectSharedValue(
        ZORGeoStlReport(), [&report](ZORGeoStlReport& changed) { changed = report; },
        [](const ZORGeoStlReport& value) { return value.GetNumUsed(); });
}

TEST(ZORGeoValuesTest, ServicesHoldNothingButTheirPrivateData)
{
    EXPECT_EQ(sizeof(void*), sizeof(ZORGeoCurveOnSurfaceProcessor));
    EXPECT_EQ(sizeof(void*), sizeof(ZORGeoCurveOnSurfaceSmoother));
    EXPECT_EQ(sizeof(void*), sizeof(ZORGeoDebugOptions));
    EXPECT_EQ(sizeof(void*), sizeof(ZORGeoStlLoader));
    EXPECT_EQ(sizeof(void*), sizeof(ZORGeoStlWriter));
}
