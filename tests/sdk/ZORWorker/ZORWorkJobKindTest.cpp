// Tests of ZORWorkJobKind and of jobs with a kind in threads.

#include "support/MessageOf.h"
#include "support/Printers.h"
#include "support/WarningCatcher.h"

#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysException.h>
#include <ZORWorker/ZORWorkJobKind.h>
#include <ZORWorker/ZORWorkProcessor.h>

#include <QFile>
#include <QTest>

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <new>
#include <vector>

namespace {

constexpr int kPatience = 30000; // ms until a test gives up

ZORWorkResult Reverse(const ZORWorkContext& context, const QByteArray& input)
{
    context.SetInterimResult(input);
    QByteArray reversed = input;
    std::reverse(reversed.begin(), reversed.end());
    return ZORWorkResult(reversed);
}

TEST(ZORWorkJobKindTest, RegisteredKindsAreFoundByName)
{
    EXPECT_FALSE(ZORWorkJobKind::IsRegistered("kind.found"));
    ZORWorkJobKind::Register("kind.found", Reverse);
    EXPECT_TRUE(ZORWorkJobKind::IsRegistered("kind.found"));
    EXPECT_TRUE(ZORWorkJobKind::GetNames().contains("kind.found"));
    EXPECT_FALSE(ZORWorkJobKind::CanComplete("kind.found"));
}

TEST(ZORWorkJobKindTest, DuplicatesAndIncompleteKindsAreRefused)
{
    ZORWorkJobKind::Register("kind.twice", Reverse);
    EXPECT_EQ("job kind 'kind.twice' exists already",
              MessageOf([] { ZORWorkJobKind::Register("kind.twice", Reverse); }));
    EXPECT_EQ("job kind 'kind.empty' has no function",
              MessageOf([] { ZORWorkJobKind::Register("kind.empty", {}); }));
    EXPECT_EQ("a job kind needs a name of 1 to 100 bytes",
              MessageOf([] { ZORWorkJobKind::Register("", Reverse); }));
    EXPECT_EQ("a job kind needs a name of 1 to 100 bytes",
              MessageOf([] { ZORWorkJobKind::Register(QByteArray(101, 'a'), Reverse); }));
    EXPECT_FALSE(ZORWorkJobKind::IsRegistered("kind.empty"));
}

class JobOfAKindTest : public testing::Test
{
protected:
    JobOfAKindTest() { processor.SetPlace(ZORWorkProcessor::Threads); }

    static ZORWorkJob MakeJob(const QByteArray& kind, const QByteArray& input)
    {
        ZORWorkJob job;
        job.name = QStringLiteral("job");
        job.kind = kind;
        job.input = input;
        return job;
    }
    static bool WaitForEnd(const ZORWorkResponse* response)
    {
        return QTest::qWaitFor([=] { return response->IsAtEnd(); }, kPatience);
    }

    ZORWorkProcessor processor;
};

TEST_F(JobOfAKindTest, RunsInAThreadWhereThatIsChosen)
{
    ZORWorkJobKind::Register("kind.reverse", Reverse);
    ZORWorkResponse* const response = processor.AddJob(MakeJob("kind.reverse", "abc"));
    processor.Execute();
    ASSERT_TRUE(WaitForEnd(response));
    EXPECT_EQ(ZORWorkResponse::Finished, response->GetStatus());
    EXPECT_EQ("cba", response->GetResult().GetData());
    EXPECT_TRUE(response->GetResult().GetResources().isEmpty());
}

TEST_F(JobOfAKindTest, WhatAcceptsAResultChangesIt)
{
    ZORWorkJobKind::Register("kind.accepted", Reverse);
    ZORWorkJob job = MakeJob("kind.accepted", "abc");
    QByteArray accepted;
    job.accept = [&accepted](const ZORWorkResult& result) {
        accepted = result.GetData();
        return ZORWorkResult(QByteArray("kept"));
    };
    const ZORWorkResponse* const response = processor.AddJob(job);
    processor.Execute();
    ASSERT_TRUE(WaitForEnd(response));
    EXPECT_EQ(ZORWorkResponse::Finished, response->GetStatus());
    EXPECT_EQ("cba", accepted);
    EXPECT_EQ("kept", response->GetResult().GetData());
}

TEST_F(JobOfAKindTest, AResultThatIsNotAcceptedFailsTheJob)
{
    const WarningCatcher warnings;
    ZORWorkJobKind::Register("kind.refused", Reverse);
    const std::vector<std::function<void()>> faults{
        [] { throw ZORSysException(QStringLiteral("not like that")); },
        [] { throw ZORSysException(QString()); }, [] { throw std::bad_alloc(); }};
    QStringList reasons;
    for (const std::function<void()>& fault : faults) {
        ZORWorkJob job = MakeJob("kind.refused", "abc");
        job.accept = [&fault](const ZORWorkResult& result) {
            fault();
            return result;
        };
        const ZORWorkResponse* const response = processor.AddJob(job);
        processor.Execute();
        ASSERT_TRUE(WaitForEnd(response));
        EXPECT_EQ(ZORWorkResponse::Failed, response->GetStatus());
        EXPECT_EQ(QByteArray(), response->GetResult().GetData());
        EXPECT_FALSE(QFile::exists(response->GetWorkDirectory()));
        EXPECT_LT(response->GetProgress(), 1);
        reasons.append(response->GetFailureReason());
    }
    EXPECT_EQ(
        QStringList({"not like that", "the result cannot be read", "not enough memory to read the result"}),
        reasons);
    EXPECT_EQ(QStringList({"zor.worker: job 'job' failed: not like that",
                           "zor.worker: job 'job' failed: the result cannot be read",
                           "zor.worker: job 'job' failed: not enough memory to read the result"}),
              warnings.GetLines());
}

TEST_F(JobOfAKindTest, ACanceledResultIsNotAccepted)
{
    ZORWorkJobKind::Register("kind.canceled", Reverse);
    ZORWorkJob job = MakeJob("kind.canceled", "abc");
    bool isAccepted = false;
    job.accept = [&isAccepted](const ZORWorkResult& result) {
        isAccepted = true;
        return result;
    };
    ZORWorkResponse* const response = processor.AddJob(job);
    processor.Execute();
    processor.Cancel();
    ASSERT_TRUE(WaitForEnd(response));
    EXPECT_EQ("canceled", response->GetFailureReason());
    EXPECT_FALSE(isAccepted);
}

TEST_F(JobOfAKindTest, UnknownKindsAreRefusedWhenTheyAreAdded)
{
    EXPECT_EQ("there is no job kind 'kind.none'",
              MessageOf([this] { processor.AddJob(MakeJob("kind.none", {})); }));
    ZORWorkJobKind::Register("kind.both", Reverse);
    ZORWorkJob job = MakeJob("kind.both", {});
    job.run = [](const ZORWorkContext&) { return ZORWorkResult(); };
    EXPECT_EQ("job has both a function and a kind", MessageOf([&] { processor.AddJob(job); }));
    EXPECT_TRUE(processor.GetResponses().isEmpty());
}

TEST_F(JobOfAKindTest, CallsMadeInAJobAreNotTraced)
{
    ZORWorkJobKind::Register("kind.traced", [](const ZORWorkContext&, const QByteArray&) {
        return ZORWorkResult({ZORWorkResource("file")}); // both constructors are traced calls
    });
    QList<QByteArray> lines;
    QObject receiver;
    QObject::connect(
        ZORSysApiTrace::GetInstance(), &ZORSysApiTrace::CallTraced, &receiver,
        [&lines](const QByteArray& line) { lines.append(line); }, Qt::QueuedConnection);
    ZORWorkResponse* const response = processor.AddJob(MakeJob("kind.traced", {}));
    ZORSysApiTrace::GetInstance()->SetEnabled(true);
    processor.Execute();
    ASSERT_TRUE(WaitForEnd(response));
    ZORSysApiTrace::GetInstance()->SetEnabled(false);
    QCoreApplication::processEvents();
    EXPECT_EQ(QList<QByteArray>{"ZORWorkProcessor::Execute(null)"}, lines);
}

} // namespace
