// Tests of jobs in helper processes.

#include "HelpersTest.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QSignalSpy>

#include <unistd.h>

namespace {

class ZORWorkHelpersTest : public HelpersTest
{
};

int CountDescriptors()
{
    return int(QDir("/proc/self/fd").entryList(QDir::System | QDir::Files).size());
}

TEST_F(ZORWorkHelpersTest, JobsOfAKindRunInAnotherProcessUnlessThreadsAreChosen)
{
    EXPECT_EQ(ZORWorkProcessor::HelperProcesses, processor->GetPlace());
    EXPECT_EQ("a text", RunJob("echo a text"));
    EXPECT_NE(QString::number(getpid()), RunJob("pid"));
    processor->SetPlace(ZORWorkProcessor::Threads);
    EXPECT_EQ(QString::number(getpid()), RunJob("pid"));
    EXPECT_EQ(QStringList(), GetMessages());
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

TEST_F(ZORWorkHelpersTest, StopIsPassedOn)
{
    ZORWorkResponse* const response = Add("progress");
    processor->Execute();
    ASSERT_TRUE(QTest::qWaitFor([=] { return response->GetProgress() >= 0.5; }, kPatience));
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
    EXPECT_EQ(QStringList(), GetMessages("failed"));
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
    EXPECT_FALSE(processes.contains(QByteArray::number(getpid())));
    EXPECT_EQ(QStringList(), GetMessages());
    EXPECT_FALSE(processes.contains(QByteArray()));
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
                                    kPatience));
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

TEST_F(ZORWorkHelpersTest, MachineWithoutMemoryEndsHelpersFirst)
{
    QFile score(QStringLiteral("/proc/%1/oom_score_adj").arg(RunJob("pid")));
    ASSERT_TRUE(score.open(QIODevice::ReadOnly));
    EXPECT_EQ("500", score.readAll().trimmed());
}

TEST_F(ZORWorkHelpersTest, LinesOfAJobReachTheLog)
{
    RunJob("log");
    EXPECT_EQ(QStringList{"test.kind: from a job"}, GetMessages());
    RunJob("print");
    RunJob("crash");
    const QStringList crash = GetMessages("its process wrote");
    ASSERT_EQ(1, crash.size());
    EXPECT_FALSE(crash.constFirst().contains("on standard output"));
}

TEST_F(ZORWorkHelpersTest, HelpersEndWithTheirCallerAlsoWhenThatIsKilled)
{
    const QTemporaryDir programs;
    const QString host = programs.filePath("host");
    ASSERT_TRUE(QFile::link(GetProgram("impostor"), host));
    QProcess process;
    process.start(host, {GetProgram("helper"), "interim better"});
    ASSERT_TRUE(QTest::qWaitFor([&] { return process.bytesAvailable() > 0; }, kPatience));
    const QSet<qint64> helpers = GetChildren(process.processId());
    ASSERT_EQ(1, helpers.size());
    EXPECT_TRUE(IsAlive(*helpers.begin()));
    process.kill();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !IsAlive(*helpers.begin()); }, kPatience));
}

TEST_F(ZORWorkHelpersTest, WorkDirectoryOfAKilledJobIsRemovedAlthoughItsCallerEnds)
{
    const QTemporaryDir programs;
    const QString host = programs.filePath("leaving-host");
    ASSERT_TRUE(QFile::link(GetProgram("impostor"), host));
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("TMPDIR", base.path());
    process.setProcessEnvironment(environment);
    process.start(host, {GetProgram("helper"), "hold"});
    ASSERT_TRUE(process.waitForFinished(kPatience));
    EXPECT_EQ(0, process.exitCode());
    EXPECT_EQ("running\n", process.readAllStandardOutput());
    EXPECT_EQ(QStringList(), GetDirectories());
}

TEST_F(ZORWorkHelpersTest, ProgramStartedByHandExplainsItself)
{
    QProcess process;
    process.start(GetProgram("helper"), {});
    ASSERT_TRUE(process.waitForFinished(kPatience));
    EXPECT_EQ(2, process.exitCode());
    EXPECT_TRUE(process.readAllStandardError().endsWith("which start it themselves\n"));
}

} // namespace
