// Tests of ZORGeoDebugOptions.

#include "support/Printers.h"

#include <ZORGeometry/ZORGeoCartesianPoint.h>
#include <ZORGeometry/ZORGeoDebugOptions.h>
#include <ZORSystem/ZORSysStackMonitor.h>

#include <gtest/gtest.h>

namespace {

class ZORGeoDebugOptionsTest : public testing::Test
{
protected:
    ZORGeoDebugOptionsTest() { ZORSysStackMonitor::GetStackMonitor()->ClearAllTraces(); }
    ~ZORGeoDebugOptionsTest() override
    {
        options.SetConstructorStackTraces(false);
        options.SetConstructorStackTraceLength(16);
        options.SetReferenceStackTraces(false);
        options.SetReferenceStackTraceLength(16);
        ZORSysStackMonitor::GetStackMonitor()->ClearAllTraces();
    }

    static QList<ZORSysStackTrace> Traces(const char* label)
    {
        return ZORSysStackMonitor::GetStackMonitor()->GetStackTraces(QLatin1String(label));
    }
    static void UseAPoint()
    {
        const ZORGeoCartesianPoint point(nullptr, ZORMathPoint());
        point.AddReference(nullptr);
        point.RemoveReference(nullptr);
    }

    ZORGeoDebugOptions& options = *ZORGeoDebugOptions::GetInstance();
};

TEST_F(ZORGeoDebugOptionsTest, RecordNothingAtFirst)
{
    EXPECT_FALSE(options.IsConstructorStackTraces());
    EXPECT_FALSE(options.IsReferenceStackTraces());
    EXPECT_EQ(16, options.GetConstructorStackTraceLength());
    EXPECT_EQ(16, options.GetReferenceStackTraceLength());
    EXPECT_FALSE(options.IsContainerLoadDumpEnabled());
    EXPECT_EQ(QString(), options.GetContainerLoadDumpFile());
    UseAPoint();
    EXPECT_TRUE(ZORSysStackMonitor::GetStackMonitor()->GetLabels().isEmpty());
}

TEST_F(ZORGeoDebugOptionsTest, RecordsConstructionsWithTheirLength)
{
    options.SetConstructorStackTraces(true);
    options.SetConstructorStackTraceLength(3);
    UseAPoint();
    UseAPoint();
    ASSERT_EQ(2, Traces("Geometry construction").size());
    EXPECT_EQ(3, Traces("Geometry construction").constFirst().GetNumFrames());
    EXPECT_TRUE(Traces("Geometry references").isEmpty());
}

TEST_F(ZORGeoDebugOptionsTest, RecordsChangesOfReferenceCounts)
{
    options.SetReferenceStackTraces(true);
    options.SetReferenceStackTraceLength(5);
    UseAPoint();
    ASSERT_EQ(2, Traces("Geometry references").size());
    EXPECT_EQ(5, Traces("Geometry references").constLast().GetNumFrames());
    EXPECT_TRUE(Traces("Geometry construction").isEmpty());
}

TEST_F(ZORGeoDebugOptionsTest, TakesAnyLength)
{
    options.SetConstructorStackTraces(true);
    for (const int length : {-5, 0, 1000000}) {
        options.SetConstructorStackTraceLength(length);
        EXPECT_EQ(length, options.GetConstructorStackTraceLength());
        UseAPoint();
    }
}

TEST_F(ZORGeoDebugOptionsTest, KeepsTheDumpOptions)
{
    options.SetContainerLoadDumpEnabled(true);
    options.SetContainerLoadDumpFile("dump.txt");
    EXPECT_TRUE(options.IsContainerLoadDumpEnabled());
    EXPECT_EQ(QString("dump.txt"), options.GetContainerLoadDumpFile());
    options.SetContainerLoadDumpEnabled(false);
    options.SetContainerLoadDumpFile({});
}

} // namespace
