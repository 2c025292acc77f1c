// Tests of jobs in helper processes.

#include "TestKinds.h"
#include "support/Printers.h"

#include <ZORWorker/ZORWorkHelperRun_p.h>
#include <ZORWorker/ZORWorkHelpers.h>
#include <ZORWorker/ZORWorkProcessor.h>

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QMessageLogContext>
#include <QMutex>
#include <QProcess>
#include <QRegularExpression>
#include <QSet>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <memory>
#include <random>
#include <unistd.h>

namespace {

using namespace std::chrono_literals;
using Status = ZORWorkResponse::Status;

constexpr int Patience = 60000; // ms until a test gives up

QMutex s_mutex; // of the messages, which come from several threads
QStringList s_messages;

void CollectMessage(QtMsgType, const QMessageLogContext& context, const QString& message)
{
    const QMutexLocker lock(&s_mutex);
    s_messages.append(QString::fromLatin1(context.category) + ": " + message);
}

QStringList GetMessages(const QString& part)
{
    const QMutexLocker lock(&s_mutex);
    return s_messages.filter(part);
}

QString GetProgram(const QString& name)
{
    return QCoreApplication::applicationDirPath() + "/worker_test_" + name;
}

// Ids of the processes that \a parent has started, zombies included.
QSet<qint64> GetChildren(qint64 parent)
{
    QSet<qint64> children;
    const QDir tasks(QStringLiteral("/proc/%1/task").arg(parent));
    for (const QString& task : tasks.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        QFile file(tasks.filePath(task + "/children"));
        if (!file.open(QIODevice::ReadOnly))
            continue;
        for (const QByteArray& id : file.readAll().split(' ')) {
            if (!id.trimmed().isEmpty())
                children.insert(id.toLongLong());
        }
    }
    return children;
}

bool IsAlive(qint64 process)
{
    QFile file(QStringLiteral("/proc/%1/stat").arg(process));
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray stat = file.readAll();
    return stat.mid(stat.lastIndexOf(')') + 2, 1) != "Z";
}

int CountDescriptors()
{
    return int(QDir("/proc/self/fd").entryList(QDir::System | QDir::Files).size());
}

class ZORWorkHelpersTest : public testing::Test
{
protected:
    ZORWorkHelpersTest()
    {
        static const bool registered = (RegisterTestKinds(), true);
        EXPECT_TRUE(registered);
        ZORWorkHelpers::SetProgram(GetProgram("helper"));
        processor->SetBaseDirectory(base.path());
        s_messages.clear();
        m_previous = qInstallMessageHandler(CollectMessage);
    }
    ~ZORWorkHelpersTest() override
    {
        processor.reset();
        ZORWorkHelperRun::SetStopGrace(10s);
        qInstallMessageHandler(m_previous);
    }

    ZORWorkResponse* Add(const QByteArray& command, bool runsWhenStopped = false)
    {
        ZORWorkJob job;
        job.name = QStringLiteral("job");
        job.kind = "test";
        job.input = command;
        job.runsWhenStopped = runsWhenStopped;
        return processor->AddJob(job);
    }
    static bool WaitForEnd(const ZORWorkResponse* response)
    {
        return QTest::qWaitFor([=] { return response->IsAtEnd(); }, Patience);
    }
    static bool WaitFor(const ZORWorkResponse* response, Status status)
    {
        return QTest::qWaitFor([=] { return response->GetStatus() == status; }, Patience);
    }
    static bool WaitForProgress(const ZORWorkResponse* response)
    {
        return QTest::qWaitFor([=] { return response->GetProgress() > 0; }, Patience);
    }
    /// Runs one job to its end. Its data, or with "! " before it the reason of its failure.
    QString RunJob(const QByteArray& command)
    {
        const ZORWorkResponse* const response = Add(command);
        processor->Execute();
        if (!WaitForEnd(response))
            return QStringLiteral("hangs");
        return response->GetStatus() == Status::Finished ? QString::fromUtf8(response->GetResult().GetData())
                                                         : "! " + response->GetFailureReason();
    }
    /// Makes \a name the helper program, which then is a program that acts as its name says.
    void UseImpostor(const QString& name)
    {
        const QString link = m_programs.filePath(name);
        ASSERT_TRUE(QFile::link(GetProgram("impostor"), link));
        ZORWorkHelpers::SetProgram(link);
    }
    QStringList GetDirectories() const
    {
        return QDir(base.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
    }

    const QTemporaryDir base;
    std::unique_ptr<ZORWorkProcessor> processor = std::make_unique<ZORWorkProcessor>();

private:
    const QTemporaryDir m_programs;
    QtMessageHandler m_previous = nullptr;
};

TEST_F(ZORWorkHelpersTest, JobsOfAKindRunInAnotherProcessUnlessThreadsAreChosen)
{
    EXPECT_EQ(ZORWorkProcessor::HelperProcesses, processor->GetPlace());
    EXPECT_EQ("a text", RunJob("echo a text"));
    EXPECT_NE(QString::number(getpid()), RunJob("pid"));
    processor->SetPlace(ZORWorkProcessor::Threads);
    EXPECT_EQ(QString::number(getpid()), RunJob("pid"));
    EXPECT_EQ(QStringList(), s_messages);
}

TEST_F(ZORWorkHelpersTest, JobRunsThroughItsStatesOnce)
{
    ZORWorkResponse* const response = Add("file");
    const QSignalSpy spy(response, &ZORWorkResponse::StatusChanged);
    processor->Execute();
    ASSERT_TRUE(WaitFor(response, Status::Finished));
    QList<int> statuses;
    for (const QList<QVariant>& arguments : spy)
        statuses.append(arguments[0].value<Status>());
    EXPECT_EQ(QList<int>({1, 2, 4}), statuses);
    EXPECT_EQ("bytes", response->GetResult().GetData());
    ASSERT_EQ(1, response->GetResult().GetResources().size());
    EXPECT_TRUE(QFile::exists(response->GetResult().GetResources().constFirst().GetFilePath()));
    processor.reset();
    EXPECT_EQ(QStringList(), GetDirectories());
}

TEST_F(ZORWorkHelpersTest, HelpersStayForTheNextJobs)
{
    processor->SetMaximumThreads(1);
    const QString first = RunJob("pid");
    EXPECT_EQ(first, RunJob("pid"));
    EXPECT_EQ("! no luck", RunJob("throw"));
    processor = std::make_unique<ZORWorkProcessor>();
    processor->SetBaseDirectory(base.path());
    EXPECT_EQ(first, RunJob("pid")); // although the thread that wanted it has ended
}

TEST_F(ZORWorkHelpersTest, JobsThatEndTheirProcessFailWithTheReasonAndTheNextOneRuns)
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
        s_messages.clear();
    }
    processor.reset();
    EXPECT_EQ(QStringList(), GetDirectories());
}

TEST_F(ZORWorkHelpersTest, StackOfACrashIsLogged)
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

TEST_F(ZORWorkHelpersTest, MemoryIsLimitedForEachJob)
{
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "sanitizers reserve more addresses than any limit allows";
#endif
    processor->SetMemoryLimit(qint64(200) << 20);
    for (const QByteArray command : {"memory", "thread-memory"}) {
        EXPECT_EQ("! not enough memory (a job may use 200.0 MB)", RunJob(command));
        EXPECT_EQ("on", RunJob("echo on"));
    }
    processor->SetMemoryLimit(0);
    ZORWorkHelpers::SetMemoryLimit(qint64(100) << 20);
    EXPECT_EQ("! not enough memory (a job may use 100.0 MB)", RunJob("memory"));
    ZORWorkHelpers::SetMemoryLimit(0);
    const qint64 memory = sysconf(_SC_PHYS_PAGES) * sysconf(_SC_PAGESIZE);
    EXPECT_EQ(memory / 2, ZORWorkHelpers::GetMemoryLimit());
}

TEST_F(ZORWorkHelpersTest, HelperKilledFromOutsideFailsItsJobOnly)
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

TEST_F(ZORWorkHelpersTest, HelperKilledWhileItIsIdleIsReplaced)
{
    const qint64 process = RunJob("pid").toLongLong();
    kill(pid_t(process), SIGKILL);
    const QString next = RunJob("pid");
    EXPECT_GT(next.toLongLong(), 0) << qPrintable(next);
    EXPECT_NE(process, next.toLongLong());
}

TEST_F(ZORWorkHelpersTest, StopIsPassedOn)
{
    ZORWorkResponse* const response = Add("progress");
    processor->Execute();
    ASSERT_TRUE(QTest::qWaitFor([=] { return response->GetProgress() >= 0.5; }, Patience));
    processor->Stop();
    ASSERT_TRUE(WaitForEnd(response));
    EXPECT_EQ("stopped", response->GetResult().GetData());
}

TEST_F(ZORWorkHelpersTest, CancelThatIsAnsweredKeepsTheHelper)
{
    processor->SetMaximumThreads(1);
    const QString process = RunJob("pid");
    ZORWorkResponse* const response = Add("progress");
    processor->Execute();
    ASSERT_TRUE(WaitForProgress(response));
    processor->Cancel();
    ASSERT_TRUE(WaitForEnd(response));
    EXPECT_EQ("canceled", response->GetFailureReason());
    EXPECT_EQ(process, RunJob("pid"));
    EXPECT_EQ(QStringList(), s_messages.filter("failed"));
}

TEST_F(ZORWorkHelpersTest, CancelThatIsNotAnsweredKillsTheHelper)
{
    ZORWorkResponse* const response = Add("interim better");
    processor->Execute();
    ASSERT_TRUE(WaitForProgress(response));
    const QSet<qint64> processes = GetChildren(getpid());
    processor->Cancel();
    EXPECT_EQ(Status::Canceling, response->GetStatus());
    ASSERT_TRUE(WaitForEnd(response));
    EXPECT_EQ("canceled", response->GetFailureReason());
    EXPECT_FALSE(GetChildren(getpid()).contains(processes));
    EXPECT_EQ(QStringList(), GetDirectories());
}

TEST_F(ZORWorkHelpersTest, StopThatIsNotAnsweredCompletesTheLastInterimResult)
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
        s_messages.clear();
    }
}

TEST_F(ZORWorkHelpersTest, StopThatIsNotAnsweredWithoutAnInterimResultFails)
{
    ZORWorkHelperRun::SetStopGrace(1s);
    ZORWorkResponse* const response = Add("spin");
    processor->Execute();
    ASSERT_TRUE(WaitFor(response, Status::Running));
    processor->Stop();
    ASSERT_TRUE(WaitForEnd(response));
    EXPECT_EQ("the job did not end within 1 s of a stop and was killed", response->GetFailureReason());
}

TEST_F(ZORWorkHelpersTest, StoppedJobsRunAtOnceAlthoughAllHelpersAreBusy)
{
    const int count = int(sysconf(_SC_NPROCESSORS_ONLN));
    processor->SetMaximumThreads(count + 2);
    for (int i = 0; i < count; ++i)
        ASSERT_TRUE(Add("interim better"));
    ZORWorkResponse* const urgent = Add("wait", true);
    ZORWorkResponse* const canceled = Add("wait");
    processor->Execute();
    for (int i = 0; i < count; ++i)
        ASSERT_TRUE(WaitForProgress(processor->GetResponses()[i]));
    EXPECT_EQ(Status::Queued, urgent->GetStatus());
    processor->Stop(urgent);
    processor->Stop(canceled);
    EXPECT_EQ(Status::Canceling, canceled->GetStatus());
    ASSERT_TRUE(WaitForEnd(urgent));
    ASSERT_TRUE(WaitForEnd(canceled));
    EXPECT_EQ("stopped", urgent->GetResult().GetData());
    EXPECT_EQ("canceled", canceled->GetFailureReason());
    for (int i = 0; i < count; ++i)
        EXPECT_EQ(Status::Running, processor->GetResponses()[i]->GetStatus());
}

TEST_F(ZORWorkHelpersTest, NoMoreHelpersThanProcessorsRunManyJobs)
{
    const int count = int(sysconf(_SC_NPROCESSORS_ONLN));
    processor->SetMaximumThreads(count + 3);
    QSet<QByteArray> processes;
    for (int i = 0; i < 20; ++i)
        Add("pid");
    processor->Execute();
    for (const ZORWorkResponse* response : processor->GetResponses()) {
        ASSERT_TRUE(WaitForEnd(response));
        processes.insert(response->GetResult().GetData());
    }
    EXPECT_LE(processes.size(), count);
    EXPECT_FALSE(processes.contains(QByteArray()));
}

TEST_F(ZORWorkHelpersTest, DestroyingTheProcessorEndsWhateverItsJobsDo)
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
                    QTest::qWaitFor([=] { return response->GetStatus() > Status::Queued; }, Patience));
            }
            if (status == Status::Stopping)
                processor->Stop();
            processor.reset(); // returns: nothing waits for the job itself
            EXPECT_TRUE(QTest::qWaitFor([this] { return GetDirectories().isEmpty(); }, Patience));
        }
    }
}

TEST_F(ZORWorkHelpersTest, NothingIsLeftBehindByManyJobs)
{
    EXPECT_EQ("on", RunJob("echo on"));
    const int before = CountDescriptors();
    processor->SetMaximumThreads(1);
    for (int i = 0; i < 200; ++i)
        RunJob(i % 20 == 7 ? "exit" : "pid");
    EXPECT_EQ("on", RunJob("echo on"));
    EXPECT_LE(CountDescriptors(), before + 1);
    for (const qint64 child : GetChildren(getpid()))
        EXPECT_TRUE(QTest::qWaitFor([=] { return IsAlive(child) || !GetChildren(getpid()).contains(child); },
                                    Patience));
}

TEST_F(ZORWorkHelpersTest, HelpersGetNothingButTheirStreams)
{
    qputenv("ZOR_API_TRACE", "trace.txt");
    ZORWorkHelpers::SetProgram(GetProgram("helper") + '/' + ".."); // cannot be started: ends the idle ones
    RunJob("echo on");
    ZORWorkHelpers::SetProgram(GetProgram("helper"));
    QFile open(base.filePath("open"));
    ASSERT_TRUE(open.open(QIODevice::WriteOnly));
    const QStringList descriptors = RunJob("descriptors").split(u'\n');
    qunsetenv("ZOR_API_TRACE");
    EXPECT_EQ("0 /dev/null", descriptors.value(0));
    EXPECT_EQ("1 /dev/null", descriptors.value(1));
    EXPECT_TRUE(descriptors.value(2).startsWith("2 pipe:")) << qPrintable(descriptors.join(u'\n'));
    EXPECT_TRUE(descriptors.value(3).startsWith("3 socket:")) << qPrintable(descriptors.join(u'\n'));
    EXPECT_EQ(QStringList(), descriptors.filter(open.fileName()));
    EXPECT_EQ("unset", RunJob("variable ZOR_API_TRACE"));
    EXPECT_EQ("set offscreen", RunJob("variable QT_QPA_PLATFORM"));
    EXPECT_EQ("set " + qEnvironmentVariable("PATH"), RunJob("variable PATH"));
}

TEST_F(ZORWorkHelpersTest, LinesOfAJobReachTheLog)
{
    RunJob("log");
    EXPECT_EQ(QStringList{"test.kind: from a job"}, s_messages);
    RunJob("print");
    RunJob("crash");
    const QStringList crash = GetMessages("its process wrote");
    ASSERT_EQ(1, crash.size());
    EXPECT_FALSE(crash.constFirst().contains("on standard output"));
}

TEST_F(ZORWorkHelpersTest, FilesOutsideOfTheWorkDirectoryAreRefused)
{
    EXPECT_TRUE(RunJob("outside").contains(
        QRegularExpression("^! the job returned '.*other.txt', which is not in its work directory$")));
}

TEST_F(ZORWorkHelpersTest, ThreadsServeWhereTheProgramCannotStart)
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
        EXPECT_EQ(expected, s_messages);
        s_messages.clear();
    }
    ZORWorkHelpers::SetProgram({});
    EXPECT_EQ(QString::number(getpid()), RunJob("pid"));
    EXPECT_EQ(QStringList(), s_messages);
}

TEST_F(ZORWorkHelpersTest, ThreadsServeWhereTheProgramIsNoHelper)
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
        ASSERT_EQ(1, s_messages.size()) << qPrintable(name);
        EXPECT_TRUE(s_messages.constFirst().endsWith(reason)) << qPrintable(s_messages.constFirst());
        s_messages.clear();
    }
}

TEST_F(ZORWorkHelpersTest, ProgramThatSaysNothingDoesNotHoldACancel)
{
    UseImpostor("silent");
    const QSet<qint64> before = GetChildren(getpid());
    ZORWorkResponse* const response = Add("echo a");
    processor->Execute();
    ASSERT_TRUE(QTest::qWaitFor([&] { return GetChildren(getpid()) != before; }, Patience));
    processor->Cancel();
    ASSERT_TRUE(WaitForEnd(response));
    EXPECT_EQ("canceled", response->GetFailureReason());
}

TEST_F(ZORWorkHelpersTest, WhateverAHelperSendsTheJobEnds)
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

TEST_F(ZORWorkHelpersTest, HelpersEndWithTheirCallerAlsoWhenThatIsKilled)
{
    const QTemporaryDir programs;
    const QString host = programs.filePath("host");
    ASSERT_TRUE(QFile::link(GetProgram("impostor"), host));
    QProcess process;
    process.start(host, {GetProgram("helper"), "interim better"});
    ASSERT_TRUE(QTest::qWaitFor([&] { return process.bytesAvailable() > 0; }, Patience));
    const QSet<qint64> helpers = GetChildren(process.processId());
    ASSERT_EQ(1, helpers.size());
    EXPECT_TRUE(IsAlive(*helpers.begin()));
    process.kill();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !IsAlive(*helpers.begin()); }, Patience));
}

TEST_F(ZORWorkHelpersTest, ProgramStartedByHandExplainsItself)
{
    QProcess process;
    process.start(GetProgram("helper"), {});
    ASSERT_TRUE(process.waitForFinished(Patience));
    EXPECT_EQ(2, process.exitCode());
    EXPECT_TRUE(process.readAllStandardError().endsWith("which start it themselves\n"));
}

} // namespace
