// Tests of nesting and translation jobs in helper processes that hang, crash or are killed.

#include "DxfText.h"
#include "NestingTest.h"

#include <ZORNesting/ZORNestSourceProvider.h>
#include <ZORNesting/ZORNestTranslationProcessor.h>
#include <ZORSystem/ZORSysException.h>
#include <ZORWorker/ZORWorkHelpers.h>
#include <ZORWorker/ZORWorkResource.h>
#include <ZORWorker/ZORWorkResponse.h>
#include <ZORWorker/helper/ZORWorkHelperRun_p.h>

#include <QDir>
#include <QFile>
#include <QSet>
#include <QTemporaryDir>

#include <csignal>
#include <unistd.h>

using Response = ZORNestNestingResponse;
using namespace std::chrono_literals;

namespace {

/// Fields of /proc/PID/stat behind the name of the program.
QList<QByteArray> GetStat(qint64 process)
{
    QFile file(QStringLiteral("/proc/%1/stat").arg(process));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QByteArray stat = file.readAll();
    return stat.mid(stat.lastIndexOf(')') + 2).split(' ');
}

/// The processes that this one has started and that have not ended.
QSet<qint64> GetHelpers()
{
    QSet<qint64> helpers;
    const QDir tasks(QStringLiteral("/proc/self/task"));
    for (const QString& task : tasks.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        QFile file(tasks.filePath(task + "/children"));
        if (!file.open(QIODevice::ReadOnly))
            continue;
        for (const QByteArray& id : file.readAll().simplified().split(' ')) {
            if (!id.isEmpty() && GetStat(id.toLongLong()).value(0, "Z") != "Z")
                helpers.insert(id.toLongLong());
        }
    }
    return helpers;
}

/// Processor time of all helpers in seconds.
double GetHelperTime()
{
    double ticks = 0;
    const QSet<qint64> helpers = GetHelpers();
    for (const qint64 helper : helpers) {
        const QList<QByteArray> stat = GetStat(helper);
        ticks += stat.value(11).toDouble() + stat.value(12).toDouble();
    }
    return ticks / double(sysconf(_SC_CLK_TCK));
}

void SignalHelpers(int signal)
{
    const QSet<qint64> helpers = GetHelpers();
    for (const qint64 helper : helpers)
        kill(pid_t(helper), signal);
}

/// Ends the helpers of earlier jobs.
void KillHelpers()
{
    SignalHelpers(SIGKILL);
    EXPECT_TRUE(QTest::qWaitFor([] { return GetHelpers().isEmpty(); }, 60000));
}

/// Why a job has failed whose process got a signal.
QString GetReason(int signal)
{
    if (signal == SIGKILL)
        return QStringLiteral("the process of the job was killed");
    return QStringLiteral("the job crashed (%1)")
        .arg(QLatin1String(signal == SIGSEGV ? "segmentation fault" : "aborted"));
}

class ZORNestHelperJobsTest : public NestingTest
{
protected:
    ZORNestHelperJobsTest()
    {
        if (!QFile::exists(ZORWorkHelpers::GetProgram()))
            ADD_FAILURE() << "there is no helper program";
        ZORWorkHelperRun::SetStopGrace(200ms);
    }
    ~ZORNestHelperJobsTest() override
    {
        processor.reset();
        SignalHelpers(SIGKILL); // the ones that a test has suspended
        ZORWorkHelperRun::SetStopGrace(10s);
    }
    static ZORNestNestingInput MakeEndlessJob(int copies = 12)
    {
        ZORNestNestingInput input(
            QString(), 0,
            {MakeSquare(QStringLiteral("a"), 30, copies), MakeSquare(QStringLiteral("b"), 17, 9)},
            {MakeSheets(QStringLiteral("roll"), 100, kRoll)});
        input.SetMinRunTime(1e21);
        return input;
    }
    /// Starts an endless job that has certainly proved a layout: it has worked for a hundred times as long as that takes.
    /// Its helper is the only one, so that signals meet no idle helper that would get the next job.
    Response* StartJob()
    {
        KillHelpers();
        ExpectNextJobWorks(); // starts the helper, whose start is not the work of the job
        Response* const response = processor->AddInput(MakeEndlessJob());
        const double before = GetHelperTime();
        processor->Execute(response);
        EXPECT_TRUE(QTest::qWaitFor([=] { return GetHelperTime() > before + 0.6; }, kPatience));
        EXPECT_EQ(Response::Running, response->GetStatus());
        EXPECT_EQ(1, GetHelpers().size());
        return response;
    }
    void ExpectLastLayout(const Response* response)
    {
        ASSERT_TRUE(WaitForEnd(response));
        ASSERT_EQ(Response::Completed, response->GetStatus()) << qPrintable(response->GetFailureReason());
        EXPECT_EQ(21, GetNames(response).size());
        EXPECT_EQ(QStringList(), FindFaults(ReadSheets(response).constFirst(), 0));
        EXPECT_TRUE(response->GetReportFile().contains("stopped"));
        EXPECT_EQ(1, response->GetProgress());
    }
    void ExpectNextJobWorks()
    {
        EXPECT_EQ(QStringList({"next"}),
                  GetNames(Nest(MakeJob({MakeSquare("next", 10)}, {MakeSheets("s", 20, 20)}))));
    }
};

class ZORNestHelperTranslationTest : public testing::Test
{
protected:
    ~ZORNestHelperTranslationTest() override
    {
        processor.reset();
        SignalHelpers(SIGKILL);
        ZORWorkHelperRun::SetStopGrace(10s);
    }
    /// Starts a translation that takes long, in the only helper.
    ZORWorkResponse* Start()
    {
        QByteArray entities;
        for (int i = 0; i < 100000; ++i)
            entities += Circle(10 * i, 0, 1);
        KillHelpers(); // an idle one that is suspended would get the next translation
        ZORWorkResponse* const response = Add("long.dxf", Dxf(entities), "dxf");
        const double before = GetHelperTime();
        processor->Execute();
        EXPECT_TRUE(QTest::qWaitFor([=] { return GetHelperTime() > before + 0.05; }, kPatience));
        EXPECT_EQ(ZORWorkResponse::Running, response->GetStatus());
        return response;
    }
    ZORWorkResponse* Add(const QString& name, const QByteArray& content, const QByteArray& provider)
    {
        QFile file(directory.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
        ZORNestTranslationInput input;
        input.SetPreTranslateProvider(provider);
        return processor->AddInput(input, ZORWorkResource(file.fileName()))->GetWorkResponse();
    }
    static bool WaitForEnd(const ZORWorkResponse* response)
    {
        return QTest::qWaitFor([=] { return response->IsAtEnd(); }, kPatience);
    }
    void ExpectNextTranslationWorks()
    {
        const ZORWorkResponse* const next = Add("next.dxf", Dxf(Circle(0, 0, 1)), "dxf");
        processor->Execute();
        ASSERT_TRUE(WaitForEnd(next));
        EXPECT_EQ(ZORWorkResponse::Finished, next->GetStatus()) << qPrintable(next->GetFailureReason());
    }

    static constexpr int kPatience = 60000; // ms
    const QTemporaryDir directory;
    std::unique_ptr<ZORNestTranslationProcessor> processor = std::make_unique<ZORNestTranslationProcessor>();
};

/// A provider that another library has registered: helpers do not know it.
class ForeignProvider final : public ZORNestSourceProvider
{
public:
    ForeignProvider()
        : ZORNestSourceProvider("foreign")
    {
    }
    QString GetDisplayName() const override { return QStringLiteral("foreign"); }
    bool isFailing = false;

    QList<ZORNestResult> Translate(const QString&, const ZORNestTranslationInput&, const ZORWorkContext&,
                                   QStringList* report) const override
    {
        report->append(QString::number(getpid()));
        if (isFailing)
            throw ZORSysException(QStringLiteral("not to be read"));
        return {};
    }
};

} // namespace

TEST_F(ZORNestHelperJobsTest, HelpersAndThreadsMakeTheSameSheets)
{
    QList<QList<QByteArray>> files;
    QList<QStringList> remarks;
    for (const auto place : {ZORWorkProcessor::HelperProcesses, ZORWorkProcessor::Threads}) {
        processor->SetPlace(place);
        ZORNestNestingInput input = MakeJob(
            {MakeSquare("a", 13, 9), MakeSquare("b", 7, 9), MakeSquare("large", 99), MakeItem("bad", "x")},
            {MakeSheets("s", 30, 40, 2), MakeSheets("r", 40, kRoll)});
        input.SetMaxSteps(1000);
        input.SetMaxDeviation(0.4);
        input.SetSeed(5);
        KillHelpers();
        const Response* const response = Nest(input);
        EXPECT_NE(place == ZORWorkProcessor::HelperProcesses, GetHelpers().isEmpty());
        files.append(response->GetSheetFiles());
        remarks.append(response->GetRemarks());
    }
    EXPECT_GE(files[0].size(), 2);
    EXPECT_EQ(files[0], files[1]);
    EXPECT_EQ(remarks[0], remarks[1]);
    EXPECT_EQ(2, remarks[0].size());
}

TEST_F(ZORNestHelperJobsTest, AJobWhoseProcessIsKilledFails)
{
    for (const int signal : {SIGKILL, SIGSEGV, SIGABRT}) {
        const Response* const response = StartJob();
        SignalHelpers(signal);
        ASSERT_TRUE(WaitForEnd(response));
        EXPECT_EQ(Response::Failed, response->GetStatus());
        EXPECT_EQ(GetReason(signal), response->GetFailureReason());
        EXPECT_TRUE(response->GetSheetFiles().isEmpty());
        EXPECT_TRUE(response->GetReportFile().isEmpty());
        ExpectNextJobWorks();
    }
}

TEST_F(ZORNestHelperJobsTest, AStoppedJobThatHangsCompletesWithItsLastLayout)
{
    Response* const response = StartJob();
    SignalHelpers(SIGSTOP);
    processor->Stop(response);
    EXPECT_EQ(Response::Stopping, response->GetStatus());
    ExpectLastLayout(response);
    ExpectNextJobWorks();
}

TEST_F(ZORNestHelperJobsTest, AStoppedJobThatIsKilledCompletesWithItsLastLayout)
{
    ZORWorkHelperRun::SetStopGrace(10s);
    Response* const response = StartJob();
    SignalHelpers(SIGSTOP);
    processor->Stop(response);
    SignalHelpers(SIGKILL);
    ExpectLastLayout(response);
    ExpectNextJobWorks();
}

// In the tests below the grace that a stopped job gets is longer than a test may take: nobody waits for it.
TEST_F(ZORNestHelperJobsTest, ACanceledJobThatHangsEndsAtOnce)
{
    ZORWorkHelperRun::SetStopGrace(1h);
    Response* const response = StartJob();
    SignalHelpers(SIGSTOP);
    processor->Cancel(response);
    ASSERT_TRUE(WaitForEnd(response));
    EXPECT_EQ(Response::Canceled, response->GetStatus());
    ExpectNextJobWorks();
}

TEST_F(ZORNestHelperJobsTest, TheProcessorMayGoWhileAJobHangs)
{
    ZORWorkHelperRun::SetStopGrace(1h);
    StartJob();
    SignalHelpers(SIGSTOP);
    processor.reset();
    processor = std::make_unique<ZORNestNestingProcessor>();
    ExpectNextJobWorks();
}

TEST_F(ZORNestHelperJobsTest, AJobOfFiveThousandPartsIsCanceledAtOnce)
{
    QList<ZORNestNestingInputItem> items;
    const QByteArray part = MakePart({ZORNestResultShape(MakeRing({{0, 0, 0}, {30, 0, 0}, {20, 10, 0}}))});
    for (int i = 0; i < 5000; ++i)
        items.append(MakeItem(QStringLiteral("part %1").arg(i), part));
    ZORNestNestingInput input(QString(), 0, items, {MakeSheets("s", 500, 500, 1000)});
    input.SetMaxDeviation(3.1);
    for (const bool isRunning : {false, true}) {
        Response* const response = processor->AddInput(input);
        const double before = GetHelperTime();
        processor->Execute(response);
        ASSERT_TRUE(!isRunning || QTest::qWaitFor([=] { return GetHelperTime() > before + 0.3; }, kPatience));
        processor->Cancel(response);
        EXPECT_EQ(Response::Canceling, response->GetStatus());
        ASSERT_TRUE(WaitForEnd(response));
        EXPECT_EQ(Response::Canceled, response->GetStatus());
    }
    ExpectNextJobWorks();
}

TEST_F(ZORNestHelperTranslationTest, ATranslationWhoseProcessCrashesFails)
{
    for (const int signal : {SIGSEGV, SIGKILL}) {
        const ZORWorkResponse* const response = Start();
        SignalHelpers(signal);
        ASSERT_TRUE(WaitForEnd(response));
        EXPECT_EQ(ZORWorkResponse::Failed, response->GetStatus());
        EXPECT_EQ(GetReason(signal), response->GetFailureReason());
        EXPECT_TRUE(response->GetResult().GetResources().isEmpty());
        EXPECT_FALSE(QFile::exists(response->GetWorkDirectory()));
        ExpectNextTranslationWorks();
    }
}

TEST_F(ZORNestHelperTranslationTest, ATranslationThatHangsIsCanceledAtOnce)
{
    ZORWorkHelperRun::SetStopGrace(1h);
    const ZORWorkResponse* const response = Start();
    SignalHelpers(SIGSTOP);
    processor->Cancel();
    ASSERT_TRUE(WaitForEnd(response));
    EXPECT_EQ("canceled", response->GetFailureReason());
    ExpectNextTranslationWorks();
}

TEST_F(ZORNestHelperTranslationTest, ProvidersOfOtherLibrariesRunInThreads)
{
    ForeignProvider provider;
    ZORNestSourceProvider::RegisterProvider(&provider);
    Add("a.txt", "content", "foreign");
    const ZORNestTranslationResponse* const response = processor->GetResponses().constLast();
    EXPECT_EQ(QStringList(), response->GetReport());
    processor->Execute();
    ASSERT_TRUE(WaitForEnd(response->GetWorkResponse()));
    EXPECT_EQ(QStringList({QString::number(getpid())}), response->GetReport());
    provider.isFailing = true;
    Add("b.txt", "content", "foreign");
    const ZORNestTranslationResponse* const failed = processor->GetResponses().constLast();
    processor->Execute();
    ASSERT_TRUE(WaitForEnd(failed->GetWorkResponse()));
    EXPECT_EQ("not to be read", failed->GetWorkResponse()->GetFailureReason());
    EXPECT_EQ(QStringList({QString::number(getpid())}), failed->GetReport());
    processor.reset();
}

TEST_F(ZORNestHelperTranslationTest, RelativePathsAreThoseOfThisProcess)
{
    ExpectNextTranslationWorks(); // starts the helper
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(directory.path()));
    ZORNestTranslationInput input;
    input.SetPreTranslateProvider("dxf");
    const ZORWorkResponse* const response =
        processor->AddInput(input, ZORWorkResource(QStringLiteral("next.dxf")))->GetWorkResponse();
    ASSERT_TRUE(QDir::setCurrent(before));
    processor->Execute();
    ASSERT_TRUE(WaitForEnd(response));
    EXPECT_EQ(1, response->GetResult().GetResources().size()) << qPrintable(response->GetFailureReason());
}
