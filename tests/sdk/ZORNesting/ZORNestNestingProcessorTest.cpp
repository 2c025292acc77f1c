// Tests of ZORNestNestingProcessor and ZORNestNestingResponse: the life of jobs.

#include "NestingTest.h"
#include "sdk/ZORWorker/WorkDirectories.h"

#include <ZORNesting/ZORNestDebugOptions.h>
#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORWorker/ZORWorkHelpers.h>

#include <QDir>
#include <QMetaType>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QThread>

using Response = ZORNestNestingResponse;

namespace {

class ZORNestNestingProcessorTest : public NestingTest
{
protected:
    /// A job that ends only when it is told to.
    static ZORNestNestingInput MakeEndlessJob()
    {
        ZORNestNestingInput input(
            QString(), 0, {MakeSquare(QStringLiteral("a"), 30, 12), MakeSquare(QStringLiteral("b"), 17, 9)},
            {MakeSheets(QStringLiteral("roll"), 100, kRoll)});
        input.SetMaxRunTime(1e25);
        input.SetMinRunTime(1e21);
        return input;
    }
    static bool WaitForProgress(const Response* response)
    {
        return QTest::qWaitFor([=] { return response->GetProgress() > 0; }, kPatience);
    }
    /// The statuses that a response signals, in order.
    static QList<int> GetStatuses(const QSignalSpy& spy)
    {
        QList<int> statuses;
        for (const QList<QVariant>& arguments : spy)
            statuses.append(arguments[0].value<Response::Status>());
        return statuses;
    }
};

} // namespace

TEST_F(ZORNestNestingProcessorTest, AJobGoesItsWayAndCompletesOnce)
{
    Response* const response =
        processor->AddInput(MakeJob({MakeSquare("a", 10, 4)}, {MakeSheets("sheet", 50, 50)}));
    EXPECT_EQ(processor.get(), response->parent());
    EXPECT_EQ(Response::Created, response->GetStatus());
    EXPECT_TRUE(response->GetSheetFiles().isEmpty());
    EXPECT_TRUE(response->GetReportFile().isEmpty());
    const QSignalSpy statuses(response, &Response::StatusChanged);
    processor->Execute(nullptr);
    EXPECT_EQ(Response::Queued, response->GetStatus());
    ASSERT_TRUE(WaitForEnd(response));
    EXPECT_EQ(QList<int>({Response::Queued, Response::Running, Response::Completed}), GetStatuses(statuses));
    EXPECT_EQ(3, int(response->GetStatus()));
    EXPECT_EQ(1, response->GetSheetFiles().size());
    EXPECT_TRUE(response->GetReportFile().startsWith("<html>"));
    EXPECT_TRUE(response->GetRemarks().isEmpty());
    EXPECT_EQ("", response->GetFailureReason());
    processor->Execute(nullptr); // nothing is left to start
    EXPECT_EQ(Response::Completed, response->GetStatus());
}

TEST_F(ZORNestNestingProcessorTest, TheStatusIsAMetaType)
{
    const std::unique_ptr<Response> none;
    processor->AddInput(MakeJob({}, {}));
    const QMetaType type = QMetaType::fromName("ZORNestNestingResponse::Status");
    ASSERT_TRUE(type.isValid());
    EXPECT_EQ(QMetaType::fromType<Response::Status>(), type);
}

TEST_F(ZORNestNestingProcessorTest, ProgressRisesToOneBeforeTheEnd)
{
    ZORNestNestingInput input = MakeEndlessJob();
    input.SetMaxRunTime(0.6);
    Response* const response = processor->AddInput(input);
    QList<double> ratios;
    QObject::connect(response, &Response::ProgressChanged, response, [&](double ratio) {
        ratios.append(ratio);
        EXPECT_FALSE(response->IsAtEnd());
    });
    processor->Execute(nullptr);
    ASSERT_TRUE(WaitForEnd(response));
    ASSERT_GE(ratios.size(), 3);
    EXPECT_TRUE(std::is_sorted(ratios.begin(), ratios.end()));
    EXPECT_EQ(ratios.end(), std::adjacent_find(ratios.begin(), ratios.end()));
    EXPECT_GT(ratios.front(), 0);
    EXPECT_EQ(1, ratios.back());
}

TEST_F(ZORNestNestingProcessorTest, AStoppedJobCompletesWithWhatItHas)
{
    Response* const response = processor->AddInput(MakeEndlessJob());
    const QSignalSpy statuses(response, &Response::StatusChanged);
    processor->Execute(nullptr);
    ASSERT_TRUE(WaitForProgress(response));
    processor->Stop(nullptr);
    EXPECT_EQ(Response::Stopping, response->GetStatus());
    ASSERT_TRUE(WaitForEnd(response));
    EXPECT_EQ(Response::Completed, response->GetStatus());
    EXPECT_EQ(1, GetStatuses(statuses).count(int(Response::Completed)));
    EXPECT_EQ(21, GetNames(response).size() + response->GetRemarks().size());
    EXPECT_EQ(QStringList(), FindFaults(ReadSheets(response).constFirst(), 0));
    EXPECT_TRUE(response->GetReportFile().contains("stopped"));
}

TEST_F(ZORNestNestingProcessorTest, ACancelledJobHasNoResult)
{
    Response* const response = processor->AddInput(MakeEndlessJob());
    const QSignalSpy statuses(response, &Response::StatusChanged);
    processor->Execute(nullptr);
    ASSERT_TRUE(WaitForProgress(response));
    processor->Cancel(nullptr);
    EXPECT_EQ(Response::Canceling, response->GetStatus());
    ASSERT_TRUE(WaitForEnd(response));
    EXPECT_EQ(Response::Canceled, response->GetStatus());
    EXPECT_EQ(0, GetStatuses(statuses).count(int(Response::Completed)));
    EXPECT_EQ("canceled", response->GetFailureReason());
    EXPECT_TRUE(response->GetSheetFiles().isEmpty());
    EXPECT_TRUE(response->GetReportFile().isEmpty());
    EXPECT_TRUE(response->GetRemarks().isEmpty());
}

TEST_F(ZORNestNestingProcessorTest, JobsThatWaitAreCancelledAndNeverStart)
{
    Response* const response = processor->AddInput(MakeEndlessJob());
    processor->Cancel(response);
    ASSERT_TRUE(WaitForEnd(response));
    EXPECT_EQ(Response::Canceled, response->GetStatus());
    processor->Execute(nullptr);
    EXPECT_EQ(Response::Canceled, response->GetStatus());
}

TEST_F(ZORNestNestingProcessorTest, AStoppedJobThatWaitsCompletesAtOnceThoughAllThreadsAreBusy)
{
    QList<Response*> busy;
    for (int i = 0; i < QThread::idealThreadCount(); ++i)
        busy.append(processor->AddInput(MakeEndlessJob()));
    processor->Execute(nullptr);
    for (const Response* response : busy)
        ASSERT_TRUE(WaitForProgress(response));
    for (const bool isExecuted : {true, false}) {
        Response* const response = processor->AddInput(MakeEndlessJob());
        const QSignalSpy statuses(response, &Response::StatusChanged);
        if (isExecuted)
            processor->Execute(response);
        processor->Stop(response);
        EXPECT_EQ(Response::Stopping, response->GetStatus());
        processor->Execute(response);
        ASSERT_TRUE(WaitForEnd(response));
        EXPECT_EQ(QList<int>({Response::Stopping, Response::Completed}),
                  GetStatuses(statuses).mid(isExecuted ? 1 : 0));
        EXPECT_EQ(21, GetNames(response).size());
        EXPECT_EQ(QStringList(), FindFaults(ReadSheets(response).constFirst(), 0));
        EXPECT_EQ(1, response->GetProgress());
        EXPECT_TRUE(response->GetReportFile().contains("stopped"));
    }
    for (const Response* response : busy)
        EXPECT_FALSE(response->IsAtEnd());
}

TEST_F(ZORNestNestingProcessorTest, EveryJobThatWaitsCompletesOnceWhenAllAreStopped)
{
    QList<Response*> responses;
    QList<std::shared_ptr<QSignalSpy>> spies;
    for (int i = 0; i < 12; ++i) {
        responses.append(processor->AddInput(MakeEndlessJob()));
        spies.append(std::make_shared<QSignalSpy>(responses.last(), &Response::StatusChanged));
        if (i % 3 != 0)
            processor->Execute(responses.last());
    }
    processor->Stop(nullptr);
    processor->Stop(nullptr);
    for (int i = 0; i < responses.size(); ++i) {
        ASSERT_TRUE(WaitForEnd(responses[i]));
        EXPECT_EQ(Response::Completed, responses[i]->GetStatus());
        EXPECT_EQ(21, GetNames(responses[i]).size());
        EXPECT_EQ(1, GetStatuses(*spies[i]).count(int(Response::Completed)));
    }
}

TEST_F(ZORNestNestingProcessorTest, AJobThatIsStoppedBeforeItsStartPlacesAllPartsByEveryRule)
{
    ZORNestNestingInputItem urgent = MakeSquare(QStringLiteral("urgent"), 17, 9);
    urgent.SetPriority(5);
    for (const auto rule :
         {ZORNestBaseFeature::AsListed, ZORNestBaseFeature::BestMix, ZORNestBaseFeature::BestSize}) {
        for (const int stackSize : {0, 4}) {
            for (const bool isExecuted : {false, true}) {
                ZORNestNestingInput input(QString(), 0, {MakeSquare(QStringLiteral("a"), 30, 12), urgent},
                                          {MakeSheets(QStringLiteral("s"), 70, 100, 30),
                                           MakeSheets(QStringLiteral("t"), 80, 150, 30)});
                input.SetItemSeparation(2);
                input.SetPackagingUsageRule(rule);
                input.SetStackSize(stackSize);
                Response* const response = processor->AddInput(input);
                if (isExecuted)
                    processor->Execute(response);
                processor->Stop(response);
                ASSERT_TRUE(WaitForEnd(response));
                EXPECT_EQ(Response::Completed, response->GetStatus());
                EXPECT_EQ(QStringList(), response->GetRemarks()) << rule << ", stack " << stackSize;
                int placed = 0;
                for (const ZORNestResult& sheet : ReadSheets(response)) {
                    placed += int(sheet.GetItems().size()) * sheet.GetStackSize();
                    EXPECT_EQ(QStringList(), FindFaults(sheet, 2));
                }
                EXPECT_EQ(21, placed) << rule << ", stack " << stackSize;
            }
        }
    }
}

TEST_F(ZORNestNestingProcessorTest, CancelOverrulesAStop)
{
    QList<Response*> responses;
    for (int i = 0; i < 6; ++i)
        responses.append(processor->AddInput(MakeEndlessJob()));
    processor->Execute(responses[0]);
    processor->Execute(responses[1]);
    processor->Stop(nullptr);
    const QSignalSpy statuses(responses.constLast(), &Response::StatusChanged);
    processor->Cancel(nullptr);
    processor->Stop(nullptr);
    for (const Response* response : responses) {
        ASSERT_TRUE(WaitForEnd(response));
        EXPECT_EQ(Response::Canceled, response->GetStatus());
        EXPECT_TRUE(response->GetSheetFiles().isEmpty());
        EXPECT_EQ("canceled", response->GetFailureReason());
    }
    EXPECT_EQ(QList<int>({Response::Canceling, Response::Canceled}), GetStatuses(statuses));
}

TEST_F(ZORNestNestingProcessorTest, TheProcessorMayGoRightAfterAStop)
{
    for (int i = 0; i < 8; ++i)
        processor->AddInput(MakeEndlessJob());
    processor->Execute(processor->GetResponses().constFirst());
    processor->Stop(nullptr);
    processor.reset();
    QCoreApplication::processEvents();
}

TEST_F(ZORNestNestingProcessorTest, JobsAreToldApart)
{
    Response* const first = processor->AddInput(MakeEndlessJob());
    Response* const second = processor->AddInput(MakeJob({MakeSquare("s", 1)}, {MakeSheets("t", 2, 2)}));
    EXPECT_EQ(QList<Response*>({first, second}), processor->GetResponses());
    processor->Execute(second);
    ASSERT_TRUE(WaitForEnd(second));
    EXPECT_EQ(Response::Created, first->GetStatus());
    processor->Execute(first);
    ASSERT_TRUE(WaitForProgress(first));
    processor->Stop(first);
    ASSERT_TRUE(WaitForEnd(first));
    EXPECT_EQ(Response::Completed, first->GetStatus());

    ZORNestNestingProcessor other;
    Response* const stranger = other.AddInput(MakeEndlessJob());
    processor->Execute(stranger);
    EXPECT_EQ(Response::Created, stranger->GetStatus());
}

TEST_F(ZORNestNestingProcessorTest, TwoInputsRunAtOnce)
{
    Response* const first = processor->AddInput(MakeJob({MakeSquare("a", 10, 3)}, {MakeSheets("s", 40, 40)}));
    Response* const second =
        processor->AddInput(MakeJob({MakeSquare("b", 10, 5)}, {MakeSheets("s", 40, 40)}));
    processor->Execute(nullptr);
    ASSERT_TRUE(WaitForEnd(first) && WaitForEnd(second));
    EXPECT_EQ(QStringList({"a", "a", "a"}), GetNames(first));
    EXPECT_EQ(QStringList({"b", "b", "b", "b", "b"}), GetNames(second));
}

TEST_F(ZORNestNestingProcessorTest, TheProcessorMayGoWhileJobsRun)
{
    for (int i = 0; i < 3; ++i)
        processor->AddInput(MakeEndlessJob());
    QList<QSignalSpy*> spies;
    QObject owner;
    for (Response* response : processor->GetResponses()) {
        spies.append(new QSignalSpy(response, &Response::StatusChanged));
        spies.last()->setParent(&owner);
    }
    processor->Execute(nullptr);
    ASSERT_TRUE(WaitForProgress(processor->GetResponses().constFirst()));
    processor.reset();
    for (const QSignalSpy* spy : spies)
        EXPECT_EQ(0, GetStatuses(*spy).count(int(Response::Completed)));
}

TEST_F(ZORNestNestingProcessorTest, AReceiverMayDestroyTheProcessor)
{
    Response* const response = processor->AddInput(MakeJob({MakeSquare("a", 1)}, {MakeSheets("s", 2, 2)}));
    QObject::connect(response, &Response::StatusChanged, qApp, [this](Response::Status status) {
        if (status == Response::Completed)
            processor.reset();
    });
    processor->Execute(nullptr);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !processor; }, kPatience));
}

TEST_F(ZORNestNestingProcessorTest, EqualJobsOfEqualStepsHaveEqualSheets)
{
    QList<QByteArray> files;
    for (int i = 0; i < 2; ++i) {
        ZORNestNestingInput input =
            MakeJob({MakeSquare("a", 13, 9), MakeSquare("b", 7, 9)}, {MakeSheets("r", 40, kRoll)});
        input.SetMaxSteps(1000);
        input.SetMaxDeviation(0.4);
        files += Nest(input)->GetSheetFiles();
    }
    ASSERT_EQ(2, files.size());
    EXPECT_EQ(files[0], files[1]);
}

TEST_F(ZORNestNestingProcessorTest, JobsLeaveNoTraceOfTheirOwnCalls)
{
    Response* const response = processor->AddInput(MakeJob({MakeSquare("a", 1)}, {MakeSheets("s", 2, 2)}));
    QStringList lines;
    const QMetaObject::Connection connection =
        QObject::connect(ZORSysApiTrace::GetInstance(), &ZORSysApiTrace::CallTraced, qApp,
                         [&lines](const QByteArray& line) { lines.append(QString::fromUtf8(line)); });
    ZORSysApiTrace::GetInstance()->SetEnabled(true);
    processor->Execute(nullptr);
    EXPECT_TRUE(WaitForEnd(response));
    ZORSysApiTrace::GetInstance()->SetEnabled(false);
    QCoreApplication::processEvents();
    QObject::disconnect(connection);
    EXPECT_EQ(QStringList({"ZORNestNestingProcessor::Execute(null)"}), lines);
}

TEST_F(ZORNestNestingProcessorTest, AZeroRunTimeEndsWhenNothingIsGained)
{
    ZORNestNestingInput input(QString(), 0, {MakeSquare("a", 10)}, {MakeSheets("s", 10.5, 10.5)});
    Response* const response = Nest(input);
    EXPECT_EQ(QStringList({"a"}), GetNames(response));
    EXPECT_TRUE(response->GetReportFile().contains("no further gain"));
}

TEST_F(ZORNestNestingProcessorTest, HelperProgramLeavesNothingInTheFolderForTemporaryFiles)
{
    const QTemporaryDir base;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove("XDG_RUNTIME_DIR");
    environment.insert("TMPDIR", base.path());
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(ZORWorkHelpers::GetProgram(), {});
    ASSERT_TRUE(process.waitForFinished());
    EXPECT_EQ(2, process.exitCode());
    const QByteArray errors = process.readAllStandardError();
    EXPECT_EQ(1, errors.count('\n')) << errors.constData(); // how it is to be started
    EXPECT_EQ(QStringList(), QDir(base.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot));
}

TEST_F(ZORNestNestingProcessorTest, KeptDirectoriesHoldPartsSheetsAndReport)
{
    ZORNestDebugOptions::GetInstance()->SetKeepNestingWorkDirectories(true);
    const QTemporaryDir base;
    const QByteArray before = qgetenv("TMPDIR");
    qputenv("TMPDIR", base.path().toLocal8Bit());
    processor = std::make_unique<ZORNestNestingProcessor>(nullptr);
    Response* const kept = Nest(MakeJob({MakeSquare("a", 1)}, {MakeSheets("s", 2, 2)}));
    ZORNestDebugOptions::GetInstance()->SetKeepNestingWorkDirectories(false);
    Nest(MakeJob({MakeSquare("a", 1)}, {MakeSheets("s", 2, 2)}));
    const QByteArray sheet = kept->GetSheetFiles().constFirst();
    processor.reset();
    before.isEmpty() ? qunsetenv("TMPDIR") : qputenv("TMPDIR", before);

    // The folder of the process lasts until a thread has emptied it.
    const QStringList names = ListWorkDirectories(base.path());
    ASSERT_EQ(1, names.size());
    const QDir work(base.filePath(names[0]));
    EXPECT_EQ(QStringList({"part-0.msi", "report.html", "sheet-0.msi"}),
              work.entryList(QDir::Files, QDir::Name));
    QFile file(work.filePath("sheet-0.msi"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(sheet, file.readAll());
}
