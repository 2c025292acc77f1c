// Closing windows while a heavy nesting job runs. The bounds are against hanging; typical times are far below.

#include "NestingDlgTest.h"
#include "nesting/ZORTestNestNestingResultDlg.h"

#include <QDoubleSpinBox>
#include <QElapsedTimer>
#include <QTest>

#include <cmath>
#include <numbers>

namespace {

using Status = ZORNestNestingResponse::Status;

constexpr int LongestClosing = 10'000; // milliseconds
constexpr double ShortestRun = 30;     // seconds, so that waiting for the end of the job exceeds the bound
constexpr int LongestPreparation = 60'000; // milliseconds until the job runs

class ZORTestNestClosingTest : public NestingDlgTest
{
protected:
    /// A toothed wheel with three corners per tooth: outlines of scanned parts are that fine.
    QString WriteWheel(int teeth)
    {
        QList<ZORMathPoint> corners;
        for (int i = 0; i < 3 * teeth; ++i) {
            const double angle = 2 * std::numbers::pi * i / (3 * teeth);
            const double radius = i % 3 == 0 ? 60 : 57;
            corners.append({radius * std::cos(angle), radius * std::sin(angle), 0});
        }
        return WritePart("wheel.msi", corners);
    }
    /// Starts a run that goes on for ShortestRun and whose single steps take long.
    void StartHeavyRun()
    {
        AddItem(WriteWheel(1000), 300);
        AddRoll(1000);
        Find<QDoubleSpinBox>("_MaxRunTimeSpn")->setValue(2 * ShortestRun);
        Find<QDoubleSpinBox>("_MinRunTimeSpn")->setValue(ShortestRun);
        Click("_ComputeBtn", dialog);
        ASSERT_TRUE(
            QTest::qWaitFor([this] { return Processor()->GetResponses()[0]->GetStatus() == Status::Running; },
                            LongestPreparation));
    }
    /// Runs \a close and expects that the dialog is gone in time and shows no results afterwards.
    void ExpectQuickEnd(const std::function<void()>& close)
    {
        QElapsedTimer time;
        time.start();
        close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_EQ(nullptr, dialog.data());
        const qint64 elapsed = time.elapsed();
        RecordProperty("closingMilliseconds", int(elapsed));
        EXPECT_LT(elapsed, LongestClosing);
        QCoreApplication::processEvents();
        EXPECT_TRUE(GetResults().isEmpty());
    }
};

TEST_F(ZORTestNestClosingTest, TheDialogClosesWhileAHeavyJobRuns)
{
    OpenDialog();
    StartHeavyRun();
    ExpectQuickEnd([this] { dialog->close(); });
}

TEST_F(ZORTestNestClosingTest, TheConsoleClosesWhileAHeavyJobRuns)
{
    OpenConsole();
    ASSERT_NE(nullptr, TriggerMenu("actionNest"));
    StartHeavyRun();
    ExpectQuickEnd([this] { CloseConsole(); });
}

TEST_F(ZORTestNestClosingTest, WaitingJobsEndWithTheRunningOne)
{
    OpenDialog();
    StartHeavyRun();
    for (int i = 0; i < 3; ++i)
        Click("_ComputeBtn", dialog);
    EXPECT_EQ(4, Processor()->GetResponses().size());
    ExpectQuickEnd([this] { dialog->close(); });
}

} // namespace
