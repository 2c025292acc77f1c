// Tests of ZORWorkProcessor: jobs, their order, results and directories.

#include "ProcessorTest.h"

#include <ZORSystem/ZORSysException.h>

#include <QDir>
#include <QFileInfo>

#include <atomic>
#include <barrier>
#include <future>
#include <latch>
#include <new>
#include <stdexcept>
#include <sys/stat.h>

namespace {

class ZORWorkProcessorTest : public ProcessorTest
{
};

TEST_F(ZORWorkProcessorTest, EndStatesHaveTheirNumbers)
{
    EXPECT_EQ(4, int(ZORWorkResponse::Finished));
    EXPECT_EQ(7, int(ZORWorkResponse::Failed));
}

TEST_F(ZORWorkProcessorTest, JobRunsThroughItsStatesOnce)
{
    ZORWorkResponse* const response = Add(WriteOne);
    const QSignalSpy spy(response, &ZORWorkResponse::StatusChanged);
    EXPECT_EQ(Status::Created, response->GetStatus());
    processor->Execute();
    EXPECT_EQ(Status::Queued, response->GetStatus());
    ASSERT_TRUE(WaitFor(response, Status::Finished));
    QCoreApplication::processEvents();
    EXPECT_EQ(QList<int>({1, 2, 4}), GetStatuses(spy));
    EXPECT_EQ(1.0, response->GetProgress());
    EXPECT_EQ("", response->GetFailureReason());
    EXPECT_EQ("cut out", response->GetJobName());
    EXPECT_EQ(QStringList(), s_messages);
}

TEST_F(ZORWorkProcessorTest, ResultLastsAsLongAsItsResponse)
{
    ZORWorkResponse* const response = Add(WriteOne);
    processor->Execute();
    ASSERT_TRUE(WaitFor(response, Status::Finished));
    const QList<ZORWorkResource> resources = response->GetResult().GetResources();
    ASSERT_EQ(1, resources.size());
    EXPECT_EQ(response->GetWorkDirectory(), QFileInfo(resources[0].GetFilePath()).path());
    EXPECT_TRUE(QFile::exists(resources[0].GetFilePath()));
    EXPECT_EQ(1, GetDirectories().size());
    EXPECT_TRUE(QFileInfo(response->GetWorkDirectory()).fileName().startsWith("cut_out-"));
    processor.reset();
    EXPECT_EQ(QStringList(), GetDirectories());
}

TEST_F(ZORWorkProcessorTest, KeptDirectoriesStay)
{
    ZORWorkResponse* const finished = Add(WriteOne, true);
    ZORWorkResponse* const failed = Add(
        [](const ZORWorkContext& context) -> ZORWorkResult {
            WriteOne(context);
            throw ZORSysException("no luck");
        },
        true);
    processor->Execute();
    ASSERT_TRUE(WaitFor(finished, Status::Finished));
    ASSERT_TRUE(WaitFor(failed, Status::Failed));
    const QStringList files{finished->GetWorkDirectory() + "/made.txt",
                            failed->GetWorkDirectory() + "/made.txt"};
    processor.reset();
    EXPECT_EQ(2, GetDirectories().size());
    EXPECT_TRUE(QFile::exists(files[0]));
    EXPECT_TRUE(QFile::exists(files[1]));
}

TEST_F(ZORWorkProcessorTest, DirectoryOfAFailedJobIsRemovedAtOnce)
{
    ZORWorkResponse* const failed = Add([](const ZORWorkContext& context) -> ZORWorkResult {
        WriteOne(context);
        throw ZORSysException("no luck");
    });
    processor->Execute();
    ASSERT_TRUE(WaitFor(failed, Status::Failed));
    EXPECT_EQ(QStringList(), GetDirectories());
    EXPECT_TRUE(failed->GetResult().GetResources().isEmpty());
}

TEST_F(ZORWorkProcessorTest, WhateverIsThrownMakesAFailedJobWithItsMessage)
{
    const QList<ZORWorkResponse*> responses{
        AddThrowing([] { throw ZORSysException(QString::fromUtf8("größer als das Blech")); }),
        AddThrowing([] { throw std::runtime_error("plain"); }),
        AddThrowing([] { throw std::bad_alloc(); }),
        AddThrowing([] { throw 42; }),
    };
    processor->SetMaximumThreads(1);
    processor->Execute();
    const QStringList reasons{QString::fromUtf8("größer als das Blech"), "plain", "out of memory",
                              "unknown exception"};
    QStringList messages;
    for (int i = 0; i < responses.size(); ++i) {
        ASSERT_TRUE(WaitFor(responses[i], Status::Failed));
        EXPECT_EQ(reasons[i], responses[i]->GetFailureReason());
        messages.append("zor.worker: job 'cut out' failed: " + reasons[i]);
    }
    EXPECT_EQ(messages, s_messages);
}

TEST_F(ZORWorkProcessorTest, JobWithoutFunctionIsRefused)
{
    try {
        processor->AddJob({"empty", {}, false});
        FAIL();
    } catch (const ZORSysException& exception) {
        EXPECT_EQ("job has nothing to run", exception.GetMessage());
    }
    EXPECT_TRUE(processor->GetResponses().isEmpty());
}

TEST_F(ZORWorkProcessorTest, BaseDirectoryThatCannotBeMadeFailsTheJob)
{
    QFile file(base.filePath("file"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    processor->SetBaseDirectory(base.filePath("file/below"));
    ZORWorkResponse* const response = Add(WriteOne);
    processor->Execute();
    ASSERT_TRUE(WaitFor(response, Status::Failed));
    EXPECT_TRUE(response->GetFailureReason().startsWith("cannot make a work directory in '"
                                                        + base.filePath("file/below") + "': "));
}

TEST_F(ZORWorkProcessorTest, MissingBaseDirectoryIsMade)
{
    processor->SetBaseDirectory(base.filePath("a/b"));
    ZORWorkResponse* const response = Add(WriteOne);
    processor->Execute();
    ASSERT_TRUE(WaitFor(response, Status::Finished));
    EXPECT_TRUE(response->GetWorkDirectory().startsWith(base.filePath("a/b/")));
    processor.reset();
    EXPECT_TRUE(QTest::qWaitFor([this] { return ListRooms(base.filePath("a/b")).isEmpty(); }, kPatience));
}

TEST_F(ZORWorkProcessorTest, EveryJobRunsOnceWhateverIsExecutedTwice)
{
    std::atomic<int> runs = 0;
    const auto count = [&runs](const ZORWorkContext&) {
        ++runs;
        return ZORWorkResult();
    };
    ZORWorkResponse* const first = Add(count);
    processor->Execute();
    processor->Execute();
    ZORWorkResponse* const second = Add(count);
    processor->Execute(first);
    EXPECT_EQ(Status::Created, second->GetStatus());
    processor->Execute();
    ASSERT_TRUE(WaitFor(first, Status::Finished));
    ASSERT_TRUE(WaitFor(second, Status::Finished));
    EXPECT_EQ(2, runs);
    EXPECT_EQ(QList<ZORWorkResponse*>({first, second}), processor->GetResponses());
}

TEST_F(ZORWorkProcessorTest, NoMoreJobsRunAtATimeThanAllowed)
{
    processor->SetMaximumThreads(3);
    std::atomic<int> now = 0, most = 0;
    std::barrier together(3);
    QList<ZORWorkResponse*> responses;
    for (int i = 0; i < 30; ++i) {
        responses.append(Add([&](const ZORWorkContext&) {
            int seen = most;
            const int running = ++now;
            while (running > seen && !most.compare_exchange_weak(seen, running)) {
            }
            together.arrive_and_wait(); // three are there at the same time
            --now;
            return ZORWorkResult();
        }));
    }
    processor->Execute();
    for (const ZORWorkResponse* response : responses)
        ASSERT_TRUE(WaitFor(response, Status::Finished));
    EXPECT_EQ(3, most);
}

TEST_F(ZORWorkProcessorTest, OneThreadKeepsTheOrder)
{
    processor->SetMaximumThreads(0);
    QList<int> order;
    QList<ZORWorkResponse*> responses;
    for (int i = 0; i < 50; ++i) {
        responses.append(Add([&order, i](const ZORWorkContext&) {
            order.append(i);
            return ZORWorkResult();
        }));
    }
    processor->Execute();
    for (const ZORWorkResponse* response : responses)
        ASSERT_TRUE(WaitFor(response, Status::Finished));
    ASSERT_EQ(50, order.size());
    EXPECT_TRUE(std::is_sorted(order.cbegin(), order.cend()));
}

TEST_F(ZORWorkProcessorTest, SignalsComeInTheThreadOfTheProcessor)
{
    ZORWorkResponse* const response = Add([](const ZORWorkContext& context) {
        context.SetProgress(0.5);
        return ZORWorkResult();
    });
    QList<QThread*> threads;
    const auto note = [&threads] { threads.append(QThread::currentThread()); };
    QObject::connect(response, &ZORWorkResponse::StatusChanged, response, note, Qt::DirectConnection);
    QObject::connect(response, &ZORWorkResponse::ProgressChanged, response, note, Qt::DirectConnection);
    processor->Execute();
    ASSERT_TRUE(WaitFor(response, Status::Finished));
    ASSERT_GE(threads.size(), 4);
    EXPECT_EQ(threads.size(), threads.count(QThread::currentThread()));
}

TEST_F(ZORWorkProcessorTest, ProgressRisesFromZeroToOne)
{
    ZORWorkResponse* const response = Add([](const ZORWorkContext& context) {
        for (int i = 0; i <= 100000; ++i)
            context.SetProgress(i / 50000.0 - 0.5); // beyond both ends
        context.SetProgress(0.25);
        context.SetProgress(qQNaN());
        return ZORWorkResult();
    });
    QList<double> seen{0};
    QObject::connect(response, &ZORWorkResponse::ProgressChanged, response,
                     [&seen](double progress) { seen.append(progress); });
    processor->Execute();
    ASSERT_TRUE(WaitFor(response, Status::Finished));
    EXPECT_EQ(1.0, seen.constLast());
    for (int i = 1; i < seen.size(); ++i)
        ASSERT_LT(seen[i - 1], seen[i]);
}

TEST_F(ZORWorkProcessorTest, DestructionCancelsAndJoins)
{
    std::atomic<int> ended = 0;
    auto captured = std::shared_ptr<void>(nullptr, [&ended](void*) { ++ended; });
    processor->SetMaximumThreads(2);
    std::latch areRunning(2);
    for (int i = 0; i < 6; ++i) {
        Add([captured, &areRunning](const ZORWorkContext& context) -> ZORWorkResult {
            areRunning.count_down();
            for (;;) {
                context.ThrowIfCanceled();
                QThread::yieldCurrentThread();
            }
        });
    }
    captured.reset();
    processor->Execute();
    areRunning.wait();
    processor.reset();
    EXPECT_EQ(1, ended); // shared by all six: the last has let go
    EXPECT_EQ(QStringList(), GetDirectories());
}

TEST_F(ZORWorkProcessorTest, ReceiverMayDestroyTheProcessor)
{
    for (const Status end : {Status::Queued, Status::Running, Status::Finished}) {
        processor = std::make_unique<ZORWorkProcessor>();
        processor->SetBaseDirectory(base.path());
        for (int i = 0; i < 3; ++i) {
            QObject::connect(Add(WriteOne), &ZORWorkResponse::StatusChanged, [this, end](Status status) {
                if (status == end)
                    processor.reset();
            });
        }
        processor->Execute();
        ASSERT_TRUE(QTest::qWaitFor([this] { return !processor; }, kPatience));
        QCoreApplication::processEvents();
        EXPECT_EQ(QStringList(), GetDirectories());
    }
}

TEST_F(ZORWorkProcessorTest, NewsArriveWhileAReceiverRunsAnEventLoop)
{
    ZORWorkResponse* const first = Add(WriteOne);
    ZORWorkResponse* const second = Add(WriteOne);
    bool hasArrived = false;
    QObject::connect(first, &ZORWorkResponse::StatusChanged, first, [&](Status status) {
        if (status == Status::Finished)
            hasArrived = WaitFor(second, Status::Finished); // as a message box does
    });
    processor->SetMaximumThreads(1);
    processor->Execute();
    ASSERT_TRUE(WaitFor(first, Status::Finished));
    EXPECT_TRUE(hasArrived);
}

// Names of jobs are read from files.
TEST_F(ZORWorkProcessorTest, NoNameOfAJobLeavesTheBaseDirectory)
{
    for (const QString& name : QStringList({"../up", "/tmp/up", "..", "", "a/b", "a\nb", "../../../"})) {
        ZORWorkResponse* const response = processor->AddJob({name, WriteOne, false});
        processor->Execute();
        ASSERT_TRUE(WaitFor(response, Status::Finished)) << qPrintable(response->GetFailureReason());
        const QFileInfo room(QFileInfo(response->GetWorkDirectory()).path());
        EXPECT_EQ(base.path(), room.path()) << qPrintable(name);
        EXPECT_TRUE(room.fileName().startsWith("zorjobs-")) << qPrintable(room.fileName());
    }
}

TEST_F(ZORWorkProcessorTest, WorkDirectoriesArePrivate)
{
    const mode_t former = umask(0);
    ZORWorkResponse* const response = Add(WriteOne);
    processor->Execute();
    ASSERT_TRUE(WaitFor(response, Status::Finished));
    umask(former);
    struct stat status = {};
    ASSERT_EQ(0, stat(QFile::encodeName(response->GetWorkDirectory()).constData(), &status));
    EXPECT_EQ(mode_t(0700), status.st_mode & mode_t(0777));
}

} // namespace
