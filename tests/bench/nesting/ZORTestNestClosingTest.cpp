// Closing windows while a heavy nesting job runs that would exceed the time limit of a test.

#include "NestingDlgTest.h"
#include "nesting/ZORTestNestNestingResultDlg.h"

#include <QDoubleSpinBox>
#include <QTest>

#include <cmath>
#include <numbers>

namespace {

using Status = ZORNestNestingResponse::Status;

constexpr double kShortestRun = 36'000;     // seconds; far more than a test may take
constexpr int kLongestPreparation = 60'000; // milliseconds until the job runs

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
    /// Starts a run that goes on for kShortestRun and whose single steps take long.
    void StartHeavyRun()
    {
        AddItem(WriteWheel(1000), 300);
        AddRoll(1000);
        Find<QDoubleSpinBox>("_MaxRunTimeSpn")->setValue(2 * kShortestRun);
        Find<QDoubleSpinBox>("_MinRunTimeSpn")->setValue(kShortestRun);
        Click("_ComputeBtn", dialog);
        ASSERT_TRUE(
            QTest::qWaitFor([this] { return Processor()->GetResponses()[0]->GetStatus() == Status::Running; },
                            kLongestPreparation));
    }
    /// Runs \a close and expects that the dialog is gone, while the job would still run, and shows no results.
    void ExpectEnd(const std::function<void()>& close)
    {
        close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_EQ(nullptr, dialog.data());
        QCoreApplication::processEvents();
        EXPECT_TRUE(GetResults().isEmpty());
    }
};

TEST_F(ZORTestNestClosingTest, TheDialogClosesWhileAHeavyJobRuns)
{
    OpenDialog();
    StartHeavyRun();
    ExpectEnd([this] { dialog->close(); });
}

TEST_F(ZORTestNestClosingTest, TheConsoleClosesWhileAHeavyJobRuns)
{
    OpenConsole();
    ASSERT_NE(nullptr, TriggerMenu("actionNest"));
    StartHeavyRun();
    ExpectEnd([this] { CloseConsole(); });
}

TEST_F(ZORTestNestClosingTest, WaitingJobsEndWithTheRunningOne)
{
    OpenDialog();
    StartHeavyRun();
    for (int i = 0; i < 3; ++i)
        Click("_ComputeBtn", dialog);
    EXPECT_EQ(4, Processor()->GetResponses().size());
    ExpectEnd([this] { dialog->close(); });
}

} // namespace
