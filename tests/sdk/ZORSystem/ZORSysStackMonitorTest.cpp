// Tests of ZORSysStackMonitor.

#include "support/Printers.h"

#include <ZORSystem/ZORSysStackMonitor.h>

#include <QStringList>

#include <gtest/gtest.h>

#include <thread>
#include <vector>

[[gnu::noinline]] void RecordHere(const QString& label, int maximumLength = 4)
{
    ZORSysStackMonitor::GetStackMonitor()->Record(label, maximumLength);
    asm volatile(""); // no tail call: the frame must stay
}

namespace {

class ZORSysStackMonitorTest : public testing::Test
{
protected:
    ~ZORSysStackMonitorTest() override { monitor->ClearAllTraces(); }

    ZORSysStackMonitor* const monitor = ZORSysStackMonitor::GetStackMonitor();
};

TEST_F(ZORSysStackMonitorTest, StartsEmpty)
{
    EXPECT_TRUE(monitor->GetLabels().isEmpty());
    EXPECT_TRUE(monitor->GetStackTraces("none").isEmpty());
    EXPECT_EQ(0, monitor->GetDroppedCount("none"));
}

TEST_F(ZORSysStackMonitorTest, FirstFrameIsTheCallerOfRecord)
{
    RecordHere("a");
    EXPECT_TRUE(monitor->GetStackTraces("a").constFirst().ToSTring("", 0).startsWith("#0  RecordHere("));
}

TEST_F(ZORSysStackMonitorTest, LabelsStandInTheOrderOfTheirFirstTrace)
{
    for (const QString& label : QStringList({"b", "a", "b", "c", ""}))
        RecordHere(label);
    EXPECT_EQ(QList<QString>({"b", "a", "c", ""}), monitor->GetLabels());
    EXPECT_EQ(2, monitor->GetStackTraces("b").size());
    EXPECT_EQ(1, monitor->GetStackTraces("").size());
}

TEST_F(ZORSysStackMonitorTest, ClearingALabelLeavesTheOthers)
{
    RecordHere("a");
    RecordHere("b");
    monitor->ClearTraces("a");
    monitor->ClearTraces("unknown");
    EXPECT_EQ(QList<QString>({"b"}), monitor->GetLabels());
    EXPECT_TRUE(monitor->GetStackTraces("a").isEmpty());
    RecordHere("a");
    EXPECT_EQ(QList<QString>({"b", "a"}), monitor->GetLabels());
    monitor->ClearAllTraces();
    EXPECT_TRUE(monitor->GetLabels().isEmpty());
}

TEST_F(ZORSysStackMonitorTest, TraceWithoutFramesCountsAsOne)
{
    RecordHere("a", 0);
    ASSERT_EQ(1, monitor->GetStackTraces("a").size());
    EXPECT_EQ(0, monitor->GetStackTraces("a").constFirst().GetNumFrames());
}

TEST_F(ZORSysStackMonitorTest, KeepsTheNewestTracesOfALabelAndSaysHowManyWent)
{
    constexpr int kSurplus = 3;
    for (int i = 0; i < ZORSysStackMonitor::MaximumTraces; ++i)
        RecordHere("many", i < kSurplus ? 1 : 2);
    EXPECT_EQ(0, monitor->GetDroppedCount("many"));
    EXPECT_EQ(1, monitor->GetStackTraces("many").constFirst().GetNumFrames());
    for (int i = 0; i < kSurplus; ++i)
        RecordHere("many", 2);

    const QList<ZORSysStackTrace> traces = monitor->GetStackTraces("many");
    EXPECT_EQ(ZORSysStackMonitor::MaximumTraces, traces.size());
    EXPECT_EQ(kSurplus, monitor->GetDroppedCount("many"));
    EXPECT_EQ(2, traces.constFirst().GetNumFrames());
    EXPECT_TRUE(traces[0].ToSTring("> ", 0).startsWith("> (3 older traces were dropped)\n> #0  "));
    EXPECT_TRUE(traces[1].ToSTring("> ", 0).startsWith("> #0  "));
    monitor->ClearTraces("many");
    EXPECT_EQ(0, monitor->GetDroppedCount("many"));
}

TEST_F(ZORSysStackMonitorTest, ThreadsRecordAndShowAtTheSameTime)
{
    constexpr int kRounds = 200;
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([this, t] {
            const QString own = QString::number(t);
            for (int i = 0; i < kRounds; ++i) {
                RecordHere("shared");
                RecordHere(own);
                if (i % 20 != 0)
                    continue;
                EXPECT_FALSE(monitor->GetStackTraces(own).constLast().ToSTring("", 0).isEmpty());
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(4 * kRounds, monitor->GetStackTraces("shared").size());
    EXPECT_EQ(5, monitor->GetLabels().size());
}

} // namespace
