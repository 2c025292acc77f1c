// Tests of helper processes that misbehave.

#include "HelpersTest.h"

#include <QFile>
#include <QRegularExpression>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using namespace std::chrono_literals;

class ZORWorkHelperFaultsTest : public HelpersTest
{
};

TEST_F(ZORWorkHelperFaultsTest, JobsThatEndTheirProcessFailWithTheReasonAndTheNextOneRuns)
{
    const QList<std::pair<QByteArray, QString>> ends{
        {"crash", "the job crashed (segmentation fault)"},
        {"overflow", "the job crashed (segmentation fault)"},
        {"abort", "the job crashed (aborted)"},
        {"thread-throw", "the job crashed (aborted)"},
        {"exit", "the job ended its process with exit code 3"},
        {"throw", "no luck"},
    };
    for (const auto& [command, reason] : ends) {
        EXPECT_EQ("! " + reason, RunJob(command)) << command.constData();
        EXPECT_EQ(1, GetMessages("zor.worker: job 'job' failed: " + reason).size()) << command.constData();
        EXPECT_EQ("on", RunJob("echo on"));
        ClearMessages();
    }
    processor.reset();
    EXPECT_EQ(QStringList(), GetDirectories());
}

TEST_F(ZORWorkHelperFaultsTest, StackOfACrashIsLogged)
{
    RunJob("crash");
    const QStringList crash = GetMessages("segmentation fault); its process wrote:");
    ASSERT_EQ(1, crash.size());
    EXPECT_TRUE(crash.constFirst().startsWith("zor.worker: job 'job': the job crashed"));
    EXPECT_TRUE(crash.constFirst().contains(QRegularExpression("Crash .*TestKinds\\.cpp:\\d+")))
        << qPrintable(crash.constFirst());
    RunJob("thread-throw");
    const QStringList abort = GetMessages("(aborted); its process wrote:");
    ASSERT_EQ(1, abort.size());
    EXPECT_TRUE(abort.constFirst().contains("in a thread")) << qPrintable(abort.constFirst());
}

TEST_F(ZORWorkHelperFaultsTest, MemoryIsLimitedForEachJob)
{
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "sanitizers reserve more addresses than any limit allows";
#endif
    processor->SetMemoryLimit(qint64(200) << 20);
    for (const QByteArray command : {"memory", "thread-memory"}) {
        EXPECT_EQ("! not enough memory (a job may use 200.0 MB)", RunJob(command));
        const QStringList stack = GetMessages("(a job may use 200.0 MB); its process wrote:");
        ASSERT_EQ(1, stack.size()) << command.constData();
        EXPECT_TRUE(stack.constFirst().contains(
            QRegularExpression("\nworker_test_helper\\(.*\\+0x|/worker_test_helper\\(.*\\+0x")))
            << qPrintable(stack.constFirst());
        EXPECT_EQ("on", RunJob("echo on"));
        ClearMessages();
    }
    processor->SetMemoryLimit(0);
    ZORWorkHelpers::SetMemoryLimit(qint64(100) << 20);
    EXPECT_EQ("! not enough memory (a job may use 100.0 MB)", RunJob("memory"));
    ZORWorkHelpers::SetMemoryLimit(0);
    const qint64 memory = sysconf(_SC_PHYS_PAGES) * sysconf(_SC_PAGESIZE);
    EXPECT_EQ(memory / 2, ZORWorkHelpers::GetMemoryLimit());
}

TEST_F(ZORWorkHelperFaultsTest, HelperKilledFromOutsideFailsItsJobOnly)
{
    const qint64 process = RunJob("pid").toLongLong();
    ZORWorkResponse* const response = Add("interim better");
    processor->SetMaximumThreads(1);
    processor->Execute();
    ASSERT_TRUE(WaitForProgress(response));
    ASSERT_TRUE(GetChildren(getpid()).contains(process));
    kill(pid_t(process), SIGKILL);
    ASSERT_TRUE(WaitForEnd(response));
    EXPECT_EQ("the process of the job was killed", response->GetFailureReason());
    EXPECT_EQ(QStringList(),
              GetDirectories().filter("job-").mid(1)); // that of the first job is kept by its response
    EXPECT_EQ("on", RunJob("echo on"));
}

TEST_F(ZORWorkHelperFaultsTest, HelperKilledWhileItIsIdleIsReplaced)
{
    const qint64 process = RunJob("pid").toLongLong();
    kill(pid_t(process), SIGKILL);
    const QString next = RunJob("pid");
    EXPECT_GT(next.toLongLong(), 0) << qPrintable(next);
    EXPECT_NE(process, next.toLongLong());
}

TEST_F(ZORWorkHelperFaultsTest, HelperKilledWhileItIsIdleLeavesNoZombie)
{
    const qint64 process = RunJob("pid").toLongLong();
    ASSERT_TRUE(GetChildren(getpid()).contains(process));
    kill(pid_t(process), SIGKILL);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !GetChildren(getpid()).contains(process); }, kPatience));
}

TEST_F(ZORWorkHelperFaultsTest, CancelThatIsNotAnsweredKillsTheHelper)
{
    ZORWorkResponse* const response = Add("interim better");
    processor->Execute();
    ASSERT_TRUE(WaitForProgress(response));
    const QSet<qint64> processes = GetChildren(getpid());
    processor->Cancel();
    EXPECT_EQ(Status::Canceling, response->GetStatus());
    ASSERT_TRUE(WaitForEnd(response));
    EXPECT_EQ("canceled", response->GetFailureReason());
#ifndef __SANITIZE_THREAD__ // it is too slow to write the stack in the time between the request and the end
    EXPECT_EQ(1, GetMessages("did not answer a cancel and was killed; its process wrote:").size());
#endif
    EXPECT_TRUE(QTest::qWaitFor([&] { return !GetChildren(getpid()).intersects(processes); }, kPatience));
    EXPECT_TRUE(QTest::qWaitFor([this] { return GetDirectories().isEmpty(); }, kPatience));
}

TEST_F(ZORWorkHelperFaultsTest, StandardErrorThatNeverRunsDryIsReadInPieces)
{
    ZORWorkSpawned process;
    process.pid = fork();
    if (process.pid == 0) {
        for (;;)
            pause();
    }
    const pid_t pid = process.pid;
    process.errors = ZORSysDescriptor(open("/dev/zero", O_RDONLY | O_NONBLOCK));
    {
        ZORWorkHelper helper(std::move(process), "program");
        std::atomic<bool> isCanceled = false;
        helper.Exchange({}); // each of these calls returns
        EXPECT_FALSE(helper.AwaitEnd(ZORWorkHelper::Clock::now(), &isCanceled));
        EXPECT_FALSE(helper.AwaitEnd(ZORWorkHelper::Clock::now() + 10ms, &isCanceled));
        EXPECT_EQ(qsizetype(1) << 16, helper.TakeErrors().size());
        isCanceled = true;
        EXPECT_FALSE(helper.AwaitEnd(ZORWorkHelper::Clock::now() + 24h, &isCanceled));
    }
    EXPECT_EQ(pid, waitpid(pid, nullptr, 0)); // it was killed
}

TEST_F(ZORWorkHelperFaultsTest, JobThatNeverStopsWritingErrorsDoesNotHoldACancel)
{
    ZORWorkResponse* const response = Add("flood");
    processor->Execute();
    ASSERT_TRUE(WaitForProgress(response));
    processor->Cancel();
    ASSERT_TRUE(WaitForEnd(response));
    EXPECT_EQ("canceled", response->GetFailureReason());
}

TEST_F(ZORWorkHelperFaultsTest, StopThatIsNotAnsweredCompletesTheLastInterimResult)
{
    EXPECT_EQ(10s, ZORWorkHelperRun::GetStopGrace());
    ZORWorkHelperRun::SetStopGrace(200ms);
    const QList<std::pair<QByteArray, QString>> ends{
        {"interim better", "completed better"},
        {"interim-crash better", "completed better"},
        {"interim crash", "! the job crashed (segmentation fault)"},
        {"interim throw", "! cannot be completed"},
    };
    for (const auto& [command, outcome] : ends) {
        ZORWorkResponse* const response = Add(command);
        processor->Execute();
        ASSERT_TRUE(WaitForProgress(response));
        processor->Stop();
        EXPECT_EQ(Status::Stopping, response->GetStatus());
        ASSERT_TRUE(WaitForEnd(response));
        const bool hasFailed = response->GetStatus() == Status::Failed;
        EXPECT_EQ(outcome, hasFailed ? "! " + response->GetFailureReason()
                                     : QString::fromUtf8(response->GetResult().GetData()));
        EXPECT_EQ(1, GetMessages("job 'job' is completed with its last interim result").size());
        ClearMessages();
    }
}

TEST_F(ZORWorkHelperFaultsTest, StopThatIsNotAnsweredWithoutAnInterimResultFails)
{
    ZORWorkHelperRun::SetStopGrace(1s);
    ZORWorkResponse* const response = Add("spin");
    processor->Execute();
    ASSERT_TRUE(WaitFor(response, Status::Running));
    processor->Stop();
    ASSERT_TRUE(WaitForEnd(response));
    EXPECT_EQ("the job did not end within 1 s of a stop and was killed", response->GetFailureReason());
    const QStringList stack = GetMessages("and was killed; its process wrote:");
    ASSERT_EQ(1, stack.size());
    EXPECT_TRUE(stack.constFirst().contains(QRegularExpression("Spin .*TestKinds\\.cpp:\\d+")))
        << qPrintable(stack.constFirst());
}

TEST_F(ZORWorkHelperFaultsTest, DestroyingTheProcessorEndsWhateverItsJobsDo)
{
    for (const QByteArray command : {"echo a", "spin", "interim a", "crash", "wait", "memory"}) {
        for (const Status status : {Status::Created, Status::Queued, Status::Running, Status::Stopping}) {
            processor = std::make_unique<ZORWorkProcessor>();
            processor->SetBaseDirectory(base.path());
            processor->SetMemoryLimit(qint64(100) << 20);
            ZORWorkResponse* const response = Add(command);
            if (status != Status::Created)
                processor->Execute();
            if (status >= Status::Running) {
                ASSERT_TRUE(
                    QTest::qWaitFor([=] { return response->GetStatus() > Status::Queued; }, kPatience));
            }
            if (status == Status::Stopping)
                processor->Stop();
            processor.reset(); // returns: nothing waits for the job itself
            EXPECT_TRUE(QTest::qWaitFor([this] { return GetDirectories().isEmpty(); }, kPatience));
        }
    }
}

TEST_F(ZORWorkHelperFaultsTest, FilesBeyondTheLimitOfTheUserAreErrorsOfTheirWriter)
{
    EXPECT_EQ("refused", RunJob("long-file"));
}

TEST_F(ZORWorkHelperFaultsTest, FilesOutsideOfTheWorkDirectoryAreRefused)
{
    EXPECT_TRUE(RunJob("outside").contains(
        QRegularExpression("^! the job returned '.*other.txt', which is not in its work directory$")));
}

TEST_F(ZORWorkHelperFaultsTest, ThreadsServeWhereTheProgramCannotStart)
{
    QFile text(base.filePath("not executable"));
    ASSERT_TRUE(text.open(QIODevice::WriteOnly));
    const QList<std::pair<QString, QString>> programs{
        {base.filePath("missing"), "No such file or directory"},
        {text.fileName(), "Permission denied"},
    };
    for (const auto& [program, reason] : programs) {
        ZORWorkHelpers::SetProgram(program);
        EXPECT_EQ(QString::number(getpid()), RunJob("pid"));
        EXPECT_EQ(QString::number(getpid()), RunJob("pid"));
        const QStringList expected{
            "zor.worker: jobs run in threads of this process: cannot use helper program '" + program
            + "': " + reason};
        EXPECT_EQ(expected, GetMessages());
        ClearMessages();
    }
    ZORWorkHelpers::SetProgram({});
    EXPECT_EQ(QString::number(getpid()), RunJob("pid"));
    EXPECT_EQ(QStringList(), GetMessages());
}

TEST_F(ZORWorkHelperFaultsTest, ThreadsServeWhereTheProgramIsNoHelper)
{
    const QList<std::pair<QString, QString>> impostors{
        {"dies", "something is missing"},
        {"rubbish", "message of unknown type 255"},
        {"other-protocol", "it belongs to another version of the SDK"},
        {"other-sdk", "it belongs to another version of the SDK"},
        {"no-kinds", "does not know them"},
    };
    for (const auto& [name, reason] : impostors) {
        UseImpostor(name);
        EXPECT_EQ(QString::number(getpid()), RunJob("pid")) << qPrintable(name);
        ASSERT_EQ(1, GetMessages().size()) << qPrintable(name);
        EXPECT_TRUE(GetMessages().constFirst().endsWith(reason)) << qPrintable(GetMessages().constFirst());
        ClearMessages();
    }
}

TEST_F(ZORWorkHelperFaultsTest, ProgramThatComesBackIsUsedByTheNextJob)
{
    const QString own = QString::number(getpid()), program = base.filePath("program");
    ZORWorkHelpers::SetProgram(program);
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(own, RunJob("pid"));
        EXPECT_EQ(own, RunJob("pid"));
        EXPECT_EQ(QStringList("zor.worker: jobs run in threads of this process: cannot use helper program '"
                              + program + "': No such file or directory"),
                  GetMessages());
        ClearMessages();
        ASSERT_TRUE(QFile::link(GetProgram("helper"), program));
        const QString process = RunJob("pid");
        EXPECT_NE(own, process);
        EXPECT_EQ(process, RunJob("pid"));
        EXPECT_EQ(QStringList("zor.worker: jobs run in helper processes again: helper program '" + program
                              + "' can be used"),
                  GetMessages());
        ClearMessages();
        ASSERT_TRUE(QFile::remove(program));
        EXPECT_EQ(process, RunJob("pid")) << "it still runs";
        kill(pid_t(process.toLongLong()), SIGKILL);
    }
}

TEST_F(ZORWorkHelperFaultsTest, ProgramThatFailedIsTriedAgainAlthoughItsFileStays)
{
    const QString own = QString::number(getpid()), missing = base.filePath("missing");
    QFile program(base.filePath("program"));
    ASSERT_TRUE(program.open(QIODevice::WriteOnly));
    program.write("#!/bin/sh\n[ -e '" + QFile::encodeName(missing) + "' ] && exec '"
                  + QFile::encodeName(GetProgram("helper")) + "' \"$@\"\necho incomplete >&2\n");
    program.close();
    ASSERT_TRUE(program.setPermissions(QFile::ReadOwner | QFile::ExeOwner));
    ZORWorkHelpers::SetProgram(program.fileName());
    EXPECT_EQ(own, RunJob("pid"));
    ASSERT_TRUE(QFile::link(program.fileName(), missing)); // what it needs has come
    EXPECT_TRUE(QTest::qWaitFor([&] { return RunJob("pid") != own; }, kPatience));
    EXPECT_EQ(1, GetMessages("cannot use helper program '" + program.fileName() + "': incomplete").size());
}

TEST_F(ZORWorkHelperFaultsTest, ProgramThatLearnsAKindIsUsedByTheNextJob)
{
    const QString own = QString::number(getpid()), program = base.filePath("no-kinds");
    ASSERT_TRUE(QFile::link(GetProgram("impostor"), program));
    ZORWorkHelpers::SetProgram(program);
    EXPECT_EQ(own, RunJob("pid"));
    EXPECT_EQ(own, RunJob("pid"));
    EXPECT_EQ(1, GetMessages("does not know them").size());
    ASSERT_TRUE(QFile::remove(program));
    ASSERT_TRUE(QFile::link(GetProgram("helper"), program));
    EXPECT_NE(own, RunJob("pid"));
    EXPECT_EQ(1, GetMessages().size());
}

TEST_F(ZORWorkHelperFaultsTest, ProgramThatSaysNothingDoesNotHoldACancel)
{
    UseImpostor("silent");
    const QSet<qint64> before = GetChildren(getpid());
    ZORWorkResponse* const response = Add("echo a");
    processor->Execute();
    ASSERT_TRUE(QTest::qWaitFor([&] { return GetChildren(getpid()) != before; }, kPatience));
    processor->Cancel();
    ASSERT_TRUE(WaitForEnd(response));
    EXPECT_EQ("canceled", response->GetFailureReason());
}

TEST_F(ZORWorkHelperFaultsTest, WhateverAHelperSendsTheJobEnds)
{
    UseImpostor("babbles");
    int finished = 0;
    for (int seed = 0; seed < 100; ++seed) {
        const QString outcome = RunJob("echo " + QByteArray::number(seed));
        EXPECT_NE("hangs", outcome) << seed;
        finished += outcome == "data";
    }
    EXPECT_GT(finished, 0);
    EXPECT_LT(finished, 100);
}

} // namespace
