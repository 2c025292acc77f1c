// Tests of ZORWorkProcessor.

#include "WorkDirectories.h"
#include "support/Printers.h"

#include <ZORSystem/ZORSysException.h>
#include <ZORWorker/ZORWorkProcessor.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMessageLogContext>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

#include <gtest/gtest.h>

#include <atomic>
#include <barrier>
#include <future>
#include <latch>
#include <memory>
#include <new>
#include <random>
#include <stdexcept>
#include <sys/stat.h>

namespace {

using Status = ZORWorkResponse::Status;

constexpr int Patience = 30000; // ms until a test gives up

QStringList s_messages;

void CollectMessage(QtMsgType, const QMessageLogContext& context, const QString& message)
{
    s_messages.append(QString::fromLatin1(context.category) + ": " + message);
}

class ZORWorkProcessorTest : public testing::Test
{
protected:
    ZORWorkProcessorTest()
    {
        processor->SetBaseDirectory(base.path());
        s_messages.clear();
        m_previous = qInstallMessageHandler(CollectMessage);
    }
    ~ZORWorkProcessorTest() override
    {
        processor.reset();
        EXPECT_TRUE(QTest::qWaitFor([this] { return ListRooms(base.path()).isEmpty(); }, Patience));
        qInstallMessageHandler(m_previous);
    }

    ZORWorkResponse* Add(std::function<ZORWorkResult(const ZORWorkContext&)> run, bool isKept = false)
    {
        return processor->AddJob({"cut out", std::move(run), isKept});
    }
    /// Runs even if it is stopped before its start.
    ZORWorkResponse* AddStoppable(std::function<ZORWorkResult(const ZORWorkContext&)> run)
    {
        ZORWorkJob job{"cut out", std::move(run)};
        job.runsWhenStopped = true;
        return processor->AddJob(job);
    }
    ZORWorkResponse* AddThrowing(std::function<void()> thrower)
    {
        return Add([thrower](const ZORWorkContext&) {
            thrower();
            return ZORWorkResult();
        });
    }
    /// Runs until it is cancelled.
    ZORWorkResponse* AddEndless()
    {
        return Add([](const ZORWorkContext& context) -> ZORWorkResult {
            for (;;) {
                context.ThrowIfCanceled();
                QThread::yieldCurrentThread();
            }
        });
    }
    static bool WaitFor(const ZORWorkResponse* response, Status status)
    {
        return QTest::qWaitFor([=] { return response->GetStatus() == status; }, Patience);
    }
    QStringList GetDirectories() const { return ListWorkDirectories(base.path()); }

    static QList<int> GetStatuses(const QSignalSpy& spy)
    {
        QList<int> statuses;
        for (const QList<QVariant>& arguments : spy)
            statuses.append(arguments[0].value<Status>());
        return statuses;
    }

    const QTemporaryDir base;
    std::unique_ptr<ZORWorkProcessor> processor = std::make_unique<ZORWorkProcessor>();

private:
    QtMessageHandler m_previous = nullptr;
};

ZORWorkResult WriteOne(const ZORWorkContext& context)
{
    const QString path = context.GetWorkDirectory() + "/made.txt";
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("made");
    return ZORWorkResult({ZORWorkResource(path)});
}

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
    EXPECT_TRUE(QTest::qWaitFor([this] { return ListRooms(base.filePath("a/b")).isEmpty(); }, Patience));
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

TEST_F(ZORWorkProcessorTest, CancelledJobFailsAndLogsNoWarning)
{
    ZORWorkResponse* const response = AddEndless();
    const QSignalSpy spy(response, &ZORWorkResponse::StatusChanged);
    processor->Execute();
    ASSERT_TRUE(WaitFor(response, Status::Running));
    processor->Cancel();
    processor->Cancel(response);
    EXPECT_EQ(Status::Canceling, response->GetStatus());
    ASSERT_TRUE(WaitFor(response, Status::Failed));
    QCoreApplication::processEvents();
    EXPECT_EQ(QList<int>({1, 2, 5, 7}), GetStatuses(spy));
    EXPECT_EQ("canceled", response->GetFailureReason());
    EXPECT_EQ(0, s_messages.filter("failed").size());
    EXPECT_EQ(QStringList(), GetDirectories());
}

TEST_F(ZORWorkProcessorTest, WaitingJobsAreCancelledWithoutRunning)
{
    processor->SetMaximumThreads(1);
    ZORWorkResponse* const running = AddEndless();
    bool hasRun = false;
    const auto run = [&hasRun](const ZORWorkContext&) {
        hasRun = true;
        return ZORWorkResult();
    };
    ZORWorkResponse* const queued = Add(run);
    processor->Execute();
    ZORWorkResponse* const created = Add(run);
    ASSERT_TRUE(WaitFor(running, Status::Running));
    const QSignalSpy queuedSpy(queued, &ZORWorkResponse::StatusChanged);
    const QSignalSpy createdSpy(created, &ZORWorkResponse::StatusChanged);
    processor->Cancel(queued);
    processor->Cancel(created);
    EXPECT_EQ(Status::Canceling, queued->GetStatus());
    ASSERT_TRUE(WaitFor(queued, Status::Failed));
    ASSERT_TRUE(WaitFor(created, Status::Failed));
    processor->Execute();
    processor->Cancel(running);
    ASSERT_TRUE(WaitFor(running, Status::Failed));
    EXPECT_EQ(QList<int>({5, 7}), GetStatuses(queuedSpy));
    EXPECT_EQ(QList<int>({5, 7}), GetStatuses(createdSpy));
    EXPECT_FALSE(hasRun);
}

TEST_F(ZORWorkProcessorTest, ResultMadeInSpiteOfACancelIsDropped)
{
    std::latch isRunning(1), isCanceled(1);
    ZORWorkResponse* const response = Add([&](const ZORWorkContext& context) {
        isRunning.count_down();
        isCanceled.wait();
        return WriteOne(context);
    });
    processor->Execute();
    isRunning.wait();
    processor->Cancel();
    isCanceled.count_down();
    ASSERT_TRUE(WaitFor(response, Status::Failed));
    EXPECT_EQ("canceled", response->GetFailureReason());
    EXPECT_TRUE(response->GetResult().GetResources().isEmpty());
    EXPECT_EQ(QStringList(), GetDirectories());
}

TEST_F(ZORWorkProcessorTest, CancelAfterTheEndButBeforeItsNewsIsACancel)
{
    std::promise<void> over;
    auto captured = std::shared_ptr<void>(nullptr, [&over](void*) { over.set_value(); });
    ZORWorkResponse* const response =
        Add([captured](const ZORWorkContext& context) { return WriteOne(context); });
    captured.reset();
    processor->Execute();
    over.get_future().wait(); // nothing has been delivered: no event loop has run
    processor->Cancel();
    const QSignalSpy spy(response, &ZORWorkResponse::StatusChanged);
    ASSERT_TRUE(WaitFor(response, Status::Failed));
    EXPECT_EQ(QList<int>({7}), GetStatuses(spy));
    EXPECT_EQ(QStringList(), GetDirectories());
}

TEST_F(ZORWorkProcessorTest, CancelLeavesAnEndAsItIs)
{
    ZORWorkResponse* const response = Add(WriteOne);
    processor->Execute();
    ASSERT_TRUE(WaitFor(response, Status::Finished));
    processor->Cancel();
    processor->Stop();
    QCoreApplication::processEvents();
    EXPECT_EQ(Status::Finished, response->GetStatus());
    EXPECT_TRUE(QFile::exists(response->GetResult().GetResources().constFirst().GetFilePath()));
}

TEST_F(ZORWorkProcessorTest, StoppedJobFinishesWithWhatItHas)
{
    ZORWorkResponse* const response = Add([](const ZORWorkContext& context) {
        while (!context.IsStopped())
            QThread::yieldCurrentThread();
        EXPECT_FALSE(context.IsCanceled());
        return WriteOne(context);
    });
    const QSignalSpy spy(response, &ZORWorkResponse::StatusChanged);
    processor->Execute();
    ASSERT_TRUE(WaitFor(response, Status::Running));
    processor->Stop();
    ASSERT_TRUE(WaitFor(response, Status::Finished));
    EXPECT_EQ(QList<int>({1, 2, 3, 4}), GetStatuses(spy));
    EXPECT_EQ(1, response->GetResult().GetResources().size());
}

TEST_F(ZORWorkProcessorTest, StopCancelsWhatHasNotBegun)
{
    processor->SetMaximumThreads(1);
    ZORWorkResponse* const running = AddEndless();
    ZORWorkResponse* const waiting = Add(WriteOne);
    processor->Execute();
    ASSERT_TRUE(WaitFor(running, Status::Running));
    processor->Stop(waiting);
    ASSERT_TRUE(WaitFor(waiting, Status::Failed));
    EXPECT_EQ("canceled", waiting->GetFailureReason());
}

TEST_F(ZORWorkProcessorTest, StopRunsWaitingJobsThatAreToRunAtOnce)
{
    processor->SetMaximumThreads(2);
    QList<ZORWorkResponse*> busy{AddEndless(), AddEndless()};
    const auto run = [](const ZORWorkContext& context) {
        EXPECT_TRUE(context.IsStopped());
        EXPECT_FALSE(context.IsCanceled());
        return WriteOne(context);
    };
    ZORWorkResponse* const queued = AddStoppable(run);
    processor->Execute();
    ZORWorkResponse* const created = AddStoppable(run);
    for (const ZORWorkResponse* response : busy)
        ASSERT_TRUE(WaitFor(response, Status::Running));
    const QSignalSpy queuedSpy(queued, &ZORWorkResponse::StatusChanged);
    const QSignalSpy createdSpy(created, &ZORWorkResponse::StatusChanged);
    processor->Stop(queued);
    processor->Stop(created);
    processor->Stop(created);
    EXPECT_EQ(Status::Stopping, created->GetStatus());
    processor->Execute(created); // runs already
    ASSERT_TRUE(WaitFor(queued, Status::Finished));
    ASSERT_TRUE(WaitFor(created, Status::Finished));
    QCoreApplication::processEvents();
    EXPECT_EQ(QList<int>({3, 4}), GetStatuses(queuedSpy));
    EXPECT_EQ(QList<int>({3, 4}), GetStatuses(createdSpy));
    EXPECT_EQ(1, created->GetResult().GetResources().size());
    for (const ZORWorkResponse* response : busy)
        EXPECT_EQ(Status::Running, response->GetStatus());
}

TEST_F(ZORWorkProcessorTest, StoppedJobsRunInTheirOrderBeforeTheOthers)
{
    processor->SetMaximumThreads(1);
    std::latch isRunning(1), isReleased(1);
    Add([&](const ZORWorkContext&) {
        isRunning.count_down();
        isReleased.wait();
        return ZORWorkResult();
    });
    // The first one that is stopped keeps the only further thread busy until all are.
    QList<int> order;
    std::latch areStopped(1);
    QList<ZORWorkResponse*> responses;
    for (int i = 0; i < 8; ++i) {
        responses.append(AddStoppable([&, i](const ZORWorkContext&) {
            if (i == 5)
                areStopped.wait();
            order.append(i);
            return ZORWorkResult();
        }));
    }
    processor->Execute();
    isRunning.wait();
    for (const int i : {5, 6, 3, 7})
        processor->Stop(responses[i]);
    areStopped.count_down();
    for (const int i : {3, 5, 6, 7})
        ASSERT_TRUE(WaitFor(responses[i], Status::Finished));
    EXPECT_EQ(QList<int>({5, 6, 3, 7}), order);
    EXPECT_EQ(Status::Queued, responses[0]->GetStatus());
    isReleased.count_down();
    for (const ZORWorkResponse* response : responses)
        ASSERT_TRUE(WaitFor(response, Status::Finished));
    EXPECT_EQ(QList<int>({5, 6, 3, 7, 0, 1, 2, 4}), order);
}

TEST_F(ZORWorkProcessorTest, StoppedJobsTakeAsManyThreadsMoreAtMost)
{
    processor->SetMaximumThreads(2);
    const QList<ZORWorkResponse*> busy{AddEndless(), AddEndless()};
    processor->Execute();
    for (const ZORWorkResponse* response : busy)
        ASSERT_TRUE(WaitFor(response, Status::Running));
    std::atomic<int> now = 0, most = 0;
    std::barrier together(2);
    QList<ZORWorkResponse*> responses;
    for (int i = 0; i < 20; ++i) {
        responses.append(AddStoppable([&](const ZORWorkContext&) {
            int seen = most;
            const int running = ++now;
            while (running > seen && !most.compare_exchange_weak(seen, running)) {
            }
            together.arrive_and_wait();
            --now;
            return ZORWorkResult();
        }));
    }
    for (ZORWorkResponse* response : responses)
        processor->Stop(response);
    for (const ZORWorkResponse* response : responses)
        ASSERT_TRUE(WaitFor(response, Status::Finished));
    EXPECT_EQ(2, most);
}

TEST_F(ZORWorkProcessorTest, EveryJobEndsOnceWhateverIsAskedOfIt)
{
    for (unsigned seed = 0; seed < 60; ++seed) {
        std::mt19937 random(seed);
        processor->SetMaximumThreads(1 + int(random() % 3));
        QList<ZORWorkResponse*> responses;
        QList<std::shared_ptr<QSignalSpy>> spies;
        for (int i = 0; i < 12; ++i) {
            const auto run = [](const ZORWorkContext& context) {
                while (!context.IsStopped())
                    QThread::yieldCurrentThread();
                return ZORWorkResult();
            };
            responses.append(random() % 2 ? AddStoppable(run) : Add(run));
            spies.append(std::make_shared<QSignalSpy>(responses.last(), &ZORWorkResponse::StatusChanged));
        }
        QList<bool> isCanceled(12, false);
        for (int k = 0; k < 40; ++k) {
            const int i = int(random() % 12);
            const bool wasAtEnd = responses[i]->IsAtEnd();
            switch (random() % 4) {
            case 0:
                processor->Execute(responses[i]);
                break;
            case 1:
                processor->Stop(responses[i]);
                break;
            case 2:
                processor->Cancel(responses[i]);
                isCanceled[i] = isCanceled[i] || !wasAtEnd;
                break;
            default:
                QCoreApplication::processEvents();
            }
        }
        processor->Execute();
        processor->Stop();
        for (int i = 0; i < 12; ++i) {
            ASSERT_TRUE(QTest::qWaitFor([&] { return responses[i]->IsAtEnd(); }, Patience)) << seed;
            const QList<int> statuses = GetStatuses(*spies[i]);
            EXPECT_EQ(1, statuses.count(4) + statuses.count(7)) << seed;
            EXPECT_TRUE(!isCanceled[i] || responses[i]->GetStatus() == Status::Failed) << seed;
            const bool hasFailed = responses[i]->GetStatus() == Status::Failed;
            EXPECT_EQ(hasFailed ? "canceled" : QString(), responses[i]->GetFailureReason());
        }
    }
}

TEST_F(ZORWorkProcessorTest, TheProcessorMayGoAmidStops)
{
    for (unsigned seed = 0; seed < 40; ++seed) {
        std::mt19937 random(seed);
        processor = std::make_unique<ZORWorkProcessor>();
        processor->SetBaseDirectory(base.path());
        processor->SetMaximumThreads(1 + int(random() % 2));
        for (int i = 0; i < 10; ++i)
            AddStoppable(WriteOne);
        if (random() % 2)
            processor->Execute();
        ZORWorkResponse* const last = processor->GetResponses().constLast();
        QObject::connect(last, &ZORWorkResponse::StatusChanged, [&](Status status) {
            if (status == (seed % 2 ? Status::Stopping : Status::Finished))
                processor.reset();
        });
        processor->Stop();
        for (int k = int(random() % 4); processor && k > 0; --k)
            QCoreApplication::processEvents();
        processor.reset();
        EXPECT_EQ(QStringList(), GetDirectories());
    }
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
        ASSERT_TRUE(QTest::qWaitFor([this] { return !processor; }, Patience));
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
