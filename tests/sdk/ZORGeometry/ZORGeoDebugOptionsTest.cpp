// Tests of ZORGeoDebugOptions.

#include "support/Printers.h"
#include "support/Threads.h"

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

TEST_F(ZORGeoDebugOptionsTest, OneThreadSwitchesWhileOthersConstruct)
{
    const auto changeAll = [this](int step) {
        options.SetConstructorStackTraces(step % 2 == 0);
        options.SetReferenceStackTraces(step % 2 == 1);
        options.SetConstructorStackTraceLength(step % 5);
        options.SetReferenceStackTraceLength(step % 5);
        options.SetContainerLoadDumpFile(QString::number(step));
    };
    RunInThreads(3, [&](int thread) {
        for (int step = 0; step <= 100; ++step) {
            if (thread == 0)
                changeAll(step);
            UseAPoint();
            EXPECT_FALSE(options.IsContainerLoadDumpEnabled());
            EXPECT_LE(options.GetContainerLoadDumpFile().toInt(), 100);
        }
    });
    EXPECT_TRUE(options.IsConstructorStackTraces());
    EXPECT_EQ(QString("100"), options.GetContainerLoadDumpFile());
    options.SetContainerLoadDumpFile({});
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
