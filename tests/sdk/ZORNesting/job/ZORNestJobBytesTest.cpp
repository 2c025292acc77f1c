// Tests of the bytes that jobs and their callers exchange, and of jobs that are completed from them.

#include "sdk/ZORNesting/Damage.h"
#include "sdk/ZORNesting/NestingTest.h"
#include "support/Printers.h"
#include "support/WarningCatcher.h"

#include <ZORNesting/job/ZORNestJobBytes_p.h>
#include <ZORNesting/job/ZORNestJobKinds_p.h>
#include <ZORNesting/job/ZORNestNestingRun_p.h>
#include <ZORSystem/ZORSysException.h>
#include <ZORWorker/ZORWorkJobKind.h>
#include <ZORWorker/ZORWorkProcessor.h>

#include <QSignalSpy>

#include <cmath>
#include <limits>

namespace ZORNestJobBytes {
namespace {

const QList<QByteArray> kWords = {QByteArray("\x80"),
                                  QByteArray("\x9f"),
                                  QByteArray("\xff"),
                                  QByteArray("\x1b\xff\xff\xff\xff\xff\xff\xff\xff"),
                                  QByteArray("\x9a\x7f\xff\xff\xff"),
                                  QByteArray("\x5a\x7f\xff\xff\xff"),
                                  QByteArray("\xd8\x56"),
                                  QByteArray("\x3a\xff\xff\xff\xff")};

ZORNestNestingTask MakeTask()
{
    ZORNestNestingInputItem item = MakeSquare(QStringLiteral("a\u4e2d"), 10, 3);
    item.SetPriority(-4);
    item.SetMirrored(true);
    item.SetOrientation(std::numeric_limits<double>::quiet_NaN());
    item.SetMaxDeviation(-0.0);
    item.SetGrain270(true);
    ZORNestNestingInputItem other =
        MakeItem(QString(), QByteArray("\0x", 2), std::numeric_limits<int>::min());
    other.SetFlippable(true);
    other.SetGrain90(true);
    other.SetGrain180(true);
    ZORNestNestingInputPackaging sheet = MakeSheets(QStringLiteral("s"), 1e-310, HUGE_VAL, -7);
    sheet.SetLeftTrim(1);
    sheet.SetRightTrim(2);
    sheet.SetTopTrim(3);
    sheet.SetBottomTrim(4);
    sheet.SetCost(5);
    ZORNestNestingInput input(QStringLiteral("m"), 0.25, {item, other}, {sheet, MakeSheets("r", 5, kRoll)});
    input.SetMaxDeviation(1);
    input.SetDeviationIncrement(2);
    input.SetItemSeparation(3);
    input.SetFrameWidth(4);
    input.SetMaxRunTime(1e300);
    input.SetMinRunTime(6);
    input.SetSingleSidedMaterial(true);
    input.SetGrain90(true);
    input.SetGrain270(true);
    input.SetStackSize(-3);
    input.SetPackagingUsageRule(ZORNestBaseFeature::PackagingUsageRule(17));
    input.SetSeed(std::numeric_limits<quint64>::max());
    input.SetMaxSteps(std::numeric_limits<qint64>::min());
    return {input, true};
}

/// Two squares on a sheet of their size.
ZORNestNestingTask MakeSimpleTask()
{
    return {MakeJob({MakeSquare("a", 10, 3)}, {MakeSheets("s", 10, 20.5)}), false};
}

ZORNestInterimLayout MakeLayout()
{
    ZORNestSolver::NestedSheet sheet;
    sheet.usedLength = 20.5;
    sheet.placements = {{0, {false, 0, {0, 0}}}, {0, {false, 0, {10, 0}}}};
    ZORNestInterimLayout layout;
    layout.seconds = 3;
    layout.solution.sheets = {sheet};
    layout.solution.unplaced = {{0, 1, "no sheet left"}};
    layout.solution.remarks = {"remark"};
    layout.solution.cost = 205;
    return layout;
}

QList<QByteArray> GetDocuments()
{
    ZORNestTranslationTask translation;
    translation.path = QStringLiteral("/a/\u4e2d");
    translation.isKept = true;
    translation.input.SetPreTranslateProvider("dxf");
    translation.input.SetJoinTolerance(2);
    translation.input.SetCurveTolerance(3);
    return {Write(MakeTask()),
            Write(ZORNestNestingOutcome{{"one", "", QByteArray("\0", 1)}, "report", {"a", "", "b"}}),
            Write(MakeLayout()),
            Write(translation),
            Write(ZORNestTranslationOutcome{{"line", ""}, "why"}),
            Write(ZORNestTranslationOutcome{{}, {}})};
}

/// Reads bytes as each of the documents, and writes what could be read again.
QList<QByteArray> ReadAsAll(const QByteArray& bytes)
{
    QList<QByteArray> again;
    const auto tryOne = [&again](const auto& function) {
        try {
            again.append(function());
        } catch (const ZORSysException&) {
        }
    };
    tryOne([&] { return Write(ReadNestingTask(bytes)); });
    tryOne([&] { return Write(ReadNestingOutcome(bytes)); });
    tryOne([&] { return Write(ReadInterimLayout(bytes)); });
    tryOne([&] { return Write(ReadTranslationTask(bytes)); });
    tryOne([&] { return Write(ReadTranslationOutcome(bytes)); });
    return again;
}

class ZORNestJobBytesTest : public NestingTest
{
protected:
    /// The outcome of a job that ended with an interim result; the reason of the failure where there is none.
    static std::pair<QString, ZORNestNestingOutcome> Complete(const QByteArray& task,
                                                              const QByteArray& interim)
    {
        ZORWorkProcessor worker;
        ZORWorkJob job;
        job.name = QStringLiteral("completion");
        job.run = [&](const ZORWorkContext& context) {
            return ZORWorkJobKind::CompleteJob(ZORNestJobKinds::kNesting, context, task, interim);
        };
        const ZORWorkResponse* const response = worker.AddJob(job);
        worker.Execute();
        EXPECT_TRUE(QTest::qWaitFor([=] { return response->IsAtEnd(); }, kPatience));
        if (response->GetStatus() != ZORWorkResponse::Finished)
            return {response->GetFailureReason(), {}};
        return {QString(), ReadNestingOutcome(response->GetResult().GetData())};
    }
    static QString GetFailure(const ZORNestInterimLayout& layout)
    {
        return Complete(Write(MakeSimpleTask()), Write(layout)).first;
    }
};

} // namespace

TEST_F(ZORNestJobBytesTest, EveryDocumentIsReadAsItWasWritten)
{
    const QList<QByteArray> documents = GetDocuments();
    for (qsizetype i = 0; i < documents.size(); ++i)
        EXPECT_EQ(QList<QByteArray>({documents[i]}), ReadAsAll(documents[i])) << i;
}

TEST_F(ZORNestJobBytesTest, ATaskKeepsEveryValue)
{
    const ZORNestNestingTask task = ReadNestingTask(Write(MakeTask()));
    const ZORNestNestingInput& input = task.input;
    EXPECT_TRUE(task.isKept);
    EXPECT_EQ(0.25, input.GetMaterialThickness());
    const ZORNestNestingInputItem item = input.GetItems().at(0);
    EXPECT_EQ(QStringLiteral("a\u4e2d"), item.GetName());
    EXPECT_EQ(-4, item.GetPriority());
    EXPECT_TRUE(item.IsMirrored() && item.IsGrain270Set() && !item.IsFlippable() && !item.IsGrain90Set());
    EXPECT_TRUE(std::isnan(item.GetOrientation()) && std::signbit(item.GetMaxDeviation()));
    EXPECT_EQ(QByteArray("\0x", 2), input.GetItems().at(1).GetContents());
    EXPECT_EQ(std::numeric_limits<int>::min(), input.GetItems().at(1).GetQuantity());
    EXPECT_EQ(1e-310, input.GetPackagings().at(0).GetWidth());
    EXPECT_EQ(3, input.GetPackagings().at(0).GetTopTrim());
    EXPECT_TRUE(std::isnan(input.GetPackagings().at(1).GetLength()));
    EXPECT_EQ(17, int(input.GetPackagingUsageRule()));
    EXPECT_EQ(std::numeric_limits<quint64>::max(), input.GetSeed());
    EXPECT_EQ(std::numeric_limits<qint64>::min(), input.GetMaxSteps());
    EXPECT_TRUE(input.IsGrain90Set() && !input.IsGrain180Set() && input.IsGrain270Set());
}

TEST_F(ZORNestJobBytesTest, BytesThatAreCutOrLongerAreRefused)
{
    for (const QByteArray& document : GetDocuments()) {
        for (qsizetype size = 0; size < document.size(); ++size)
            EXPECT_TRUE(ReadAsAll(document.left(size)).isEmpty()) << size;
        EXPECT_TRUE(ReadAsAll(document + '\0').isEmpty());
    }
}

TEST_F(ZORNestJobBytesTest, DamagedBytesAreRefusedOrRead)
{
    std::mt19937 random(7);
    for (int i = 0; i < GetFuzzRuns(5000); ++i) {
        const QList<QByteArray> documents = GetDocuments();
        const QByteArray damaged =
            Damage(documents[qsizetype(random() % size_t(documents.size()))], kWords, random);
        for (const QByteArray& again : ReadAsAll(damaged))
            EXPECT_EQ(QList<QByteArray>({again}), ReadAsAll(again)) << i;
    }
}

TEST_F(ZORNestJobBytesTest, AnOutcomeThatCannotBeReadFailsItsJob)
{
    ZORWorkJobKind::Unregister(ZORNestJobKinds::kNesting);
    ZORWorkJobKind::Register(ZORNestJobKinds::kNesting, [](const ZORWorkContext&, const QByteArray&) {
        return ZORWorkResult(QByteArray("nothing"));
    });
    const WarningCatcher warnings;
    processor->SetPlace(ZORWorkProcessor::Threads);
    ZORNestNestingResponse* const response = processor->AddInput(MakeSimpleTask().input);
    const QSignalSpy spy(response, &ZORNestNestingResponse::StatusChanged);
    processor->Execute(nullptr);
    EXPECT_TRUE(WaitForEnd(response));
    ZORWorkJobKind::Unregister(ZORNestJobKinds::kNesting);
    ZORWorkJobKind::Register(ZORNestJobKinds::kNesting, ZORNestRunNesting, ZORNestCompleteNesting);
    EXPECT_EQ(ZORNestNestingResponse::Failed, response->GetStatus());
    const QString reason =
        QStringLiteral("nesting outcome is damaged: unexpected content at byte 0 of the document");
    EXPECT_EQ(reason, response->GetFailureReason());
    EXPECT_EQ(QStringList({"zor.worker: job 'nesting' failed: " + reason}), warnings.GetLines());
    EXPECT_EQ(3, spy.size()); // queued, running, failed
    EXPECT_TRUE(response->GetReportFile().isEmpty());
}

TEST_F(ZORNestJobBytesTest, AnInterimLayoutBecomesAnOutcome)
{
    const auto [failure, outcome] = Complete(Write(MakeSimpleTask()), Write(MakeLayout()));
    EXPECT_EQ("", failure);
    ASSERT_EQ(1, outcome.sheetFiles.size());
    const ZORNestResult sheet = ReadResult(outcome.sheetFiles[0]);
    EXPECT_EQ(2, sheet.GetItems().size());
    EXPECT_EQ(QStringList(), FindFaults(sheet, 0));
    EXPECT_EQ(QStringList({"not placed: 1 of part 'a': no sheet left", "remark"}), outcome.remarks);
    EXPECT_TRUE(outcome.report.startsWith("<html>"));
}

TEST_F(ZORNestJobBytesTest, LayoutsThatDoNotPassTheCheckAreRefused)
{
    const QString refused = QStringLiteral("the last layout does not pass the check: ");
    ZORNestInterimLayout layout = MakeLayout();
    layout.solution.sheets[0].placements[1].pose.position.x = 9.9;
    EXPECT_EQ(refused + "sheet 0: item 0 is too near to item 0", GetFailure(layout));
    layout = MakeLayout();
    layout.solution.sheets[0].placements.pop_back();
    EXPECT_EQ(refused + "item 0: 2 of 3 are placed or reported", GetFailure(layout));
    layout = MakeLayout();
    layout.solution.sheets[0].placements[0].item = 1;
    EXPECT_EQ(refused + "sheet 0: is of no kind or holds no item of the job", GetFailure(layout));
    layout = MakeLayout();
    layout.solution.unplaced[0].item = size_t(-1);
    EXPECT_TRUE(GetFailure(layout).startsWith(refused));
    layout = MakeLayout();
    layout.solution.sheets.push_back(layout.solution.sheets[0]);
    EXPECT_TRUE(GetFailure(layout).startsWith(refused));
    EXPECT_EQ("nesting layout is damaged: unexpected content at byte 0 of the document",
              Complete(Write(MakeSimpleTask()), {}).first);
    EXPECT_EQ("nesting task is damaged: unexpected content at byte 0 of the document",
              Complete("task", Write(MakeLayout())).first);
}

TEST_F(ZORNestJobBytesTest, LayoutsWithOtherLengthsThanTheirSheetsAreRefused)
{
    const QString refused = QStringLiteral(
        "the last layout does not pass the check: sheet 0: its length is not that of the sheet");
    ZORNestInterimLayout layout = MakeLayout();
    layout.solution.sheets[0].usedLength = -1e300;
    EXPECT_EQ(refused, GetFailure(layout));
    const QByteArray roll =
        Write(ZORNestNestingTask{MakeJob({MakeSquare("a", 10, 3)}, {MakeSheets("r", 10, kRoll)}), false});
    layout.solution.sheets[0].usedLength = std::numeric_limits<double>::infinity();
    EXPECT_EQ(refused, Complete(roll, Write(layout)).first);
}

TEST_F(ZORNestJobBytesTest, DamagedLayoutsAreRefusedOrValid)
{
    const QByteArray task = Write(MakeSimpleTask());
    const QByteArray interim = Write(MakeLayout());
    std::mt19937 random(3);
    for (int i = 0; i < GetFuzzRuns(40); ++i) {
        const auto [failure, outcome] = Complete(task, Damage(interim, kWords, random));
        for (const QByteArray& file : outcome.sheetFiles)
            EXPECT_EQ(QStringList(), FindFaults(ReadResult(file), 0)) << i;
    }
}

} // namespace ZORNestJobBytes
