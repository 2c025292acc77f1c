// Tests of ZORWorkJobKind and of jobs with a kind in threads.

#include "support/MessageOf.h"
#include "support/Printers.h"

#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORWorker/ZORWorkJobKind.h>
#include <ZORWorker/ZORWorkProcessor.h>

#include <QTest>

#include <gtest/gtest.h>

#include <algorithm>

namespace {

constexpr int Patience = 30000; // ms until a test gives up

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
        return QTest::qWaitFor([=] { return response->IsAtEnd(); }, Patience);
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
