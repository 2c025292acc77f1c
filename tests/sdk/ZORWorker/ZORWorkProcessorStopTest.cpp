// Tests of ZORWorkProcessor: canceling and stopping jobs.

#include "ProcessorTest.h"

#include <ZORSystem/ZORSysException.h>

#include <QDir>

#include <atomic>
#include <barrier>
#include <future>
#include <latch>
#include <random>

namespace {

class ZORWorkProcessorStopTest : public ProcessorTest
{
};

TEST_F(ZORWorkProcessorStopTest, CancelledJobFailsAndLogsNoWarning)
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

TEST_F(ZORWorkProcessorStopTest, WaitingJobsAreCancelledWithoutRunning)
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

TEST_F(ZORWorkProcessorStopTest, ResultMadeInSpiteOfACancelIsDropped)
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

TEST_F(ZORWorkProcessorStopTest, CancelAfterTheEndButBeforeItsNewsIsACancel)
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

TEST_F(ZORWorkProcessorStopTest, CancelLeavesAnEndAsItIs)
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

TEST_F(ZORWorkProcessorStopTest, StoppedJobFinishesWithWhatItHas)
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

TEST_F(ZORWorkProcessorStopTest, StopCancelsWhatHasNotBegun)
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

TEST_F(ZORWorkProcessorStopTest, StopRunsWaitingJobsThatAreToRunAtOnce)
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

TEST_F(ZORWorkProcessorStopTest, StoppedJobsRunInTheirOrderBeforeTheOthers)
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

TEST_F(ZORWorkProcessorStopTest, StoppedJobsTakeAsManyThreadsMoreAtMost)
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

TEST_F(ZORWorkProcessorStopTest, EveryJobEndsOnceWhateverIsAskedOfIt)
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
            ASSERT_TRUE(QTest::qWaitFor([&] { return responses[i]->IsAtEnd(); }, kPatience)) << seed;
            const QList<int> statuses = GetStatuses(*spies[i]);
            EXPECT_EQ(1, statuses.count(4) + statuses.count(7)) << seed;
            EXPECT_TRUE(!isCanceled[i] || responses[i]->GetStatus() == Status::Failed) << seed;
            const bool hasFailed = responses[i]->GetStatus() == Status::Failed;
            EXPECT_EQ(hasFailed ? "canceled" : QString(), responses[i]->GetFailureReason());
        }
    }
}

TEST_F(ZORWorkProcessorStopTest, TheProcessorMayGoAmidStops)
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

} // namespace
