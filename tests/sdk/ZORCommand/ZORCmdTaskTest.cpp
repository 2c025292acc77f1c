// Tests of work in a thread beside the event loop.

#include <ZORCommand/ZORCmdTask.h>
#include <ZORSystem/ZORSysException.h>

#include <QCoreApplication>
#include <QTest>
#include <QThread>

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <memory>
#include <stdexcept>

namespace {

class ZORCmdTaskTest : public testing::Test
{
protected:
    /// Work that goes on until it is canceled.
    static void Endless(const ZORCmdTask::Report& report)
    {
        while (report(0.5))
            QThread::yieldCurrentThread();
    }
};

TEST_F(ZORCmdTaskTest, RunsInAnotherThreadAndSucceeds)
{
    QThread* thread = nullptr;
    ZORCmdTask task([&](const ZORCmdTask::Report& report) {
        thread = QThread::currentThread();
        EXPECT_TRUE(report(0.25));
    });
    int numFinished = 0;
    QObject::connect(&task, &ZORCmdTask::Finished, [&] {
        ++numFinished;
        EXPECT_EQ(QThread::currentThread(), qApp->thread());
    });
    EXPECT_EQ(ZORCmdTask::Pending, task.GetOutcome());
    EXPECT_FALSE(task.IsRunning());
    task.Wait(); // for nothing
    task.Start();
    EXPECT_TRUE(task.IsRunning());
    task.Wait();
    EXPECT_EQ(1, numFinished);
    EXPECT_NE(thread, QThread::currentThread());
    EXPECT_EQ(ZORCmdTask::Succeeded, task.GetOutcome());
    EXPECT_EQ(0.25, task.GetProgress());
    EXPECT_NO_THROW(task.ThrowFailure());
}

TEST_F(ZORCmdTaskTest, ProgressNeverGoesBackNorBeyondTheEnd)
{
    QList<double> shown;
    ZORCmdTask task([](const ZORCmdTask::Report& report) {
        for (const double part : {0.1, 0.5, 0.3, 7.0})
            report(part);
    });
    QObject::connect(&task, &ZORCmdTask::ProgressChanged, [&](double progress) { shown.append(progress); });
    task.Start();
    task.Wait();
    EXPECT_EQ(1, task.GetProgress());
    ASSERT_FALSE(shown.isEmpty());
    EXPECT_TRUE(std::is_sorted(shown.begin(), shown.end()));
    EXPECT_EQ(1, shown.constLast());
}

TEST_F(ZORCmdTaskTest, CanceledWorkHasNoResult)
{
    ZORCmdTask task(&Endless);
    QObject::connect(&task, &ZORCmdTask::ProgressChanged, &task, &ZORCmdTask::Cancel);
    task.Start();
    task.Wait();
    EXPECT_EQ(ZORCmdTask::Canceled, task.GetOutcome());
    EXPECT_TRUE(task.IsCanceled());
}

TEST_F(ZORCmdTaskTest, CanceledWorkThatThrowsIsCanceledAllTheSame)
{
    ZORCmdTask task([](const ZORCmdTask::Report& report) {
        Endless(report);
        throw std::runtime_error("given up");
    });
    task.Start();
    task.Cancel();
    task.Wait();
    EXPECT_EQ(ZORCmdTask::Canceled, task.GetOutcome());
    EXPECT_NO_THROW(task.ThrowFailure());
}

TEST_F(ZORCmdTaskTest, ExceptionsReachWhoAsksForThem)
{
    ZORCmdTask task([](const ZORCmdTask::Report&) { throw ZORSysException("too thin"); });
    task.Start();
    task.Wait();
    EXPECT_EQ(ZORCmdTask::Failed, task.GetOutcome());
    EXPECT_THROW(task.ThrowFailure(), ZORSysException);
    EXPECT_THROW(task.ThrowFailure(), ZORSysException);
}

TEST_F(ZORCmdTaskTest, DestroyedWhileRunningItWaitsForTheWork)
{
    std::atomic<bool> isOver = false;
    {
        ZORCmdTask task([&](const ZORCmdTask::Report& report) {
            Endless(report);
            isOver = true;
        });
        task.Start();
    }
    EXPECT_TRUE(isOver);
}

TEST_F(ZORCmdTaskTest, WaitingForTheThreadNeedsNoEventLoop)
{
    int numFinished = 0;
    ZORCmdTask task([](const ZORCmdTask::Report&) {});
    QObject::connect(&task, &ZORCmdTask::Finished, [&] { ++numFinished; });
    task.Start();
    task.WaitForThread();
    EXPECT_EQ(ZORCmdTask::Succeeded, task.GetOutcome());
    QCoreApplication::processEvents();
    EXPECT_EQ(1, numFinished);
}

TEST_F(ZORCmdTaskTest, WhatTheWorkHoldsGoesWithItsEnd)
{
    auto held = std::make_shared<int>(1);
    const std::weak_ptr<int> watched = held;
    ZORCmdTask task([held](const ZORCmdTask::Report&) {});
    held.reset();
    task.Start();
    task.Wait();
    EXPECT_TRUE(watched.expired());
}

} // namespace
