// What the nesting dialog asks of the SDK and shows of its runs.

#include "NestingDlgRunTest.h"
#include "nesting/ZORTestNestNestingResultDlg.h"
#include "support/HostileFiles.h"
#include "support/MessageOf.h"

#include <ZORVisualization/ZORVisRep.h>
#include <ZORVisualization/ZORVisVirtualObject.h>

#include <QComboBox>
#include <QFile>
#include <QFileInfo>
#include <QLineEdit>
#include <QSpinBox>
#include <QTextEdit>

namespace {

using ZORTestNestNestingDlgRunTest = NestingDlgRunTest;

constexpr double kDegree = 0.017453292519943295;

QString Number(double value)
{
    return QString::number(value, 'g', 17);
}

TEST_F(ZORTestNestNestingDlgRunTest, BuildsTheJobCallByCallInTheEstablishedOrder)
{
    const QString path = WritePart("rib.msi");
    const qint64 size = QFile(path).size();
    OpenDialog();
    AppendRow(Items(), {"left rib", 3, true, 30.0, true, true, false, true, 3.0, 1.0, 7, path});
    AppendRow(Sheets(), {"sheet", 4, 1500.0, 3000.0, false, 1.0, 2.0, 3.0, 4.0, 55.5});
    Find<QLineEdit>("_IDEdit")->setText("T-800");
    Set("_ThicknessSpn", 0.25);
    Set("_MaxDevSpn", 5);
    Set("_DevIncSpn", 2.5);
    Check("_SingleSidedChk");
    Check("_Grain180Chk");
    Set("_ItemSeparationSpn", 4);
    Set("_FrameWidthSpn", 6);
    Find<QComboBox>("_PackagingRuleCombo")->setCurrentIndex(2);
    Set("_MaxRunTimeSpn", 0.5);
    Set("_MinRunTimeSpn", 0.25);
    Find<QSpinBox>("_StackSizeSpn")->setValue(2);
    const QString item = "ZORNestNestingInputItem::";
    const QString sheet = "ZORNestNestingInputPackaging::";
    const QString input = "ZORNestNestingInput::";
    const QString group = "ZORSysSettingGroupContext::ZORSysSettingGroupContext";
    const QStringList expected{
        item + "ZORNestNestingInputItem(\"left rib\", " + QString::number(size) + ')',
        item + "SetQuantity(3)",
        item + "SetMirrored(true)",
        item + "SetOrientation(" + Number(30 * kDegree) + ')',
        item + "SetFlippable(true)",
        item + "SetGrain90(true)",
        item + "SetGrain180(false)",
        item + "SetGrain270(true)",
        item + "SetMaxDeviation(" + Number(3 * kDegree) + ')',
        item + "SetMaxDeviation(" + Number(kDegree) + ')',
        item + "SetPriority(7)",
        sheet + "ZORNestNestingInputPackaging(\"sheet\", 1500, 3000)",
        sheet + "SetQuantity(4)",
        sheet + "SetLeftTrim(1)",
        sheet + "SetRightTrim(2)",
        sheet + "SetTopTrim(3)",
        sheet + "SetBottomTrim(4)",
        sheet + "SetCost(55.5)",
        group + "(<>, \"Debug\")",
        group + "(<>, \"ZORTestNestNestingDlg\")",
        input + "ZORNestNestingInput(\"T-800\", 0.25, [1], [1])",
        input + "SetMaxDeviation(" + Number(5 * kDegree) + ')',
        input + "SetDeviationIncrement(" + Number(2.5 * kDegree) + ')',
        input + "SetSingleSidedMaterial(true)",
        input + "SetGrain90(false)",
        input + "SetGrain180(true)",
        input + "SetGrain270(false)",
        input + "SetItemSeparation(4)",
        input + "SetFrameWidth(6)",
        input + "SetPackagingUsageRule(2)",
        input + "SetMaxRunTime(0.5)",
        input + "SetMinRunTime(0.25)",
        input + "SetStackSize(2)",
        "ZORNestNestingProcessor::AddInput((\"T-800\", 1, 1))",
        "ZORNestNestingProcessor::Execute(null)",
    };
    const QStringList calls = TraceCalls([this] { Compute(); });
    for (qsizetype i = 0; i < expected.size(); ++i)
        EXPECT_EQ(expected[i], calls.value(i)) << i;
    EXPECT_EQ(expected.size(), calls.size());
}

TEST_F(ZORTestNestNestingDlgRunTest, IncrementOfAPartTakesThePlaceOfItsDeviation)
{
    OpenDialog();
    AppendRow(Items(), {"rib", 1, false, 0.0, false, false, false, false, 3.0, 1.0, 0, WritePart("rib.msi")});
    QStringList calls = TraceCalls([this] { Compute(); }).filter("ZORNestNestingInputItem::SetMaxDeviation");
    ASSERT_EQ(2, calls.size());
    EXPECT_EQ("ZORNestNestingInputItem::SetMaxDeviation(0.017453292519943295)", calls[1]);
}

TEST_F(ZORTestNestNestingDlgRunTest, InfiniteSheetsHaveNoLengthWhateverTheirCellHolds)
{
    OpenDialog();
    AppendRow(Sheets(), {"a", 1, 100.0, 2500.0, true, 0.0, 0.0, 0.0, 0.0, 0.0});
    AppendRow(Sheets(), {"b", 1, 100.0, "inf", true, 0.0, 0.0, 0.0, 0.0, 0.0});
    AppendRow(Sheets(), {"c", 1, 100.0, "2500", false, 0.0, 0.0, 0.0, 0.0, 0.0}); // typed over "inf"
    const QString made = "ZORNestNestingInputPackaging::ZORNestNestingInputPackaging";
    EXPECT_EQ(
        QStringList({made + "(\"a\", 100, nan)", made + "(\"b\", 100, nan)", made + "(\"c\", 100, 2500)"}),
        TraceCalls([this] { Compute(); }).filter(made));
}

TEST_F(ZORTestNestNestingDlgRunTest, TakesNamesAndOrderFromTheRows)
{
    const QStringList paths{WritePart("a.msi"), WritePart("b.msi")};
    OpenDialog();
    for (const QString& path : paths)
        AddItem(path);
    Items()->item(1, 0)->setText("renamed");
    AddSheet(100, 200);
    AddRoll(300);
    const QStringList calls = TraceCalls([this] { Compute(); });
    const QStringList made = calls.filter("ZORNestNestingInputItem::ZORNestNestingInputItem(");
    ASSERT_EQ(2, made.size());
    EXPECT_TRUE(made[0].contains("\"a\""));
    EXPECT_TRUE(made[1].contains("\"renamed\""));
    EXPECT_TRUE(calls.contains("ZORNestNestingProcessor::AddInput((\"\", 2, 2))"));
}

TEST_F(ZORTestNestNestingDlgRunTest, VanishedPartFileStartsNothing)
{
    const QStringList paths{WritePart("a.msi"), WritePart("b.msi")};
    OpenDialog();
    for (const QString& path : paths)
        AddItem(path);
    AddRoll(1000);
    ASSERT_TRUE(QFile::remove(paths[1]));
    Compute();
    EXPECT_EQ(QStringList("can't open file"), boxes.TakeErrors());
    EXPECT_EQ("can't open file", MessageOf([this] { Slots()->OnComputeClicked(); }));
    EXPECT_EQ(0, Processor()->GetResponses().size());
    EXPECT_TRUE(GetSettings()->allKeys().isEmpty());
    EXPECT_EQ(2, Items()->rowCount());
    EXPECT_EQ(0, Bar()->value());
}

TEST_F(ZORTestNestNestingDlgRunTest, FoldersPipesAndEnormousFilesAreNotPartFiles)
{
    const QString folder = QFileInfo(GetPath("a")).absolutePath();
    const QString pipe = HostileFiles::MakePipe(folder, "pipe.msi");
    const QString zeros = HostileFiles::MakeZeros(folder, qint64(4) << 30, "zeros.msi");
    OpenDialog();
    for (const QString& path : {pipe, folder, QString("/dev/zero"), QString(), zeros}) {
        Items()->setRowCount(0);
        AddItem(path);
        EXPECT_EQ("can't open file", MessageOf([this] { Slots()->OnComputeClicked(); }))
            << path.toStdString();
    }
}

TEST_F(ZORTestNestNestingDlgRunTest, CompletedRunOpensItsResultsAndStaysOpen)
{
    OpenDialog();
    AddItem(WritePart("rib.msi"), 3);
    AddRoll(1000);
    Set("_MaxRunTimeSpn", 0.5);
    Compute();
    ASSERT_TRUE(WaitFor(Status::Completed));
    const QList<ZORTestNestNestingResultDlg*> results = GetResults();
    ASSERT_EQ(1, results.size());
    EXPECT_TRUE(results[0]->isVisible());
    EXPECT_FALSE(results[0]->isModal());
    EXPECT_EQ(nullptr, results[0]->parent());
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_EQ(std::pair(100, 100), std::pair(Bar()->value(), Bar()->maximum()));
    EXPECT_EQ(1, results[0]->findChild<QComboBox*>("_SheetCombo")->count());
    EXPECT_FALSE(results[0]->findChild<QTextEdit*>("_ReportEdit")->toPlainText().isEmpty());
    ASSERT_EQ(1, GetFeatEnvironment()->GetNumVirtualObjects());
    EXPECT_FALSE(GetFeatEnvironment()->GetVirtualObjects()[0]->GetRep()->GetBoundingBox().IsEmpty());
}

TEST_F(ZORTestNestNestingDlgRunTest, EveryRunOpensResultsOfItsOwn)
{
    OpenDialog();
    AddItem(WritePart("rib.msi"), 3);
    AddSheet(1000, 2000);
    Set("_MaxRunTimeSpn", 0.3);
    Compute();
    Compute();
    ASSERT_TRUE(WaitFor(Status::Completed, 0));
    ASSERT_TRUE(WaitFor(Status::Completed, 1));
    EXPECT_EQ(2, GetResults().size());
    Compute();
    ASSERT_TRUE(WaitFor(Status::Completed, 2));
    EXPECT_EQ(3, GetResults().size());
    EXPECT_EQ(3, Processor()->GetResponses().size());
}

TEST_F(ZORTestNestNestingDlgRunTest, EmptyTablesAreAnsweredByTheSdk)
{
    OpenDialog();
    Compute();
    ASSERT_EQ(1, Processor()->GetResponses().size());
    ASSERT_TRUE(WaitFor(Status::Completed));
    ASSERT_EQ(1, GetResults().size());
    EXPECT_EQ(0, GetResults()[0]->findChild<QComboBox*>("_SheetCombo")->count());
    EXPECT_EQ(nullptr, GetFeatEnvironment()->GetVirtualObjects()[0]->GetRep());
}

TEST_F(ZORTestNestNestingDlgRunTest, NonsenseInTheTablesIsAnsweredByTheReport)
{
    QFile file(GetPath("text.msi"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("no part");
    file.close();
    OpenDialog();
    AddItem(file.fileName());
    AddItem(WritePart("rib.msi"), -3);
    AddItem(WritePart("skin.msi", 5000, 4000));
    AddSheet(0, 100);
    AddSheet(-10, 100);
    AddSheet(100, -100);
    AddSheet(100, 100, -1);
    AppendRow(Sheets(), {"still infinite", 1, 100.0, "inf", false, 0.0, 0.0, 0.0, 0.0, 0.0});
    AppendRow(Sheets(), {"all trim", 1, 100.0, 100.0, false, 90.0, 90.0, 0.0, 0.0, -1.0});
    Set("_MaxRunTimeSpn", 0.5);
    Compute();
    ASSERT_TRUE(WaitFor(Status::Completed));
    ASSERT_EQ(1, GetResults().size());
    EXPECT_TRUE(GetResults()[0]->findChild<QTextEdit*>("_ReportEdit")->toPlainText().contains("skin"));
    EXPECT_EQ(0, GetResults()[0]->findChild<QComboBox*>("_SheetCombo")->count());
}

TEST_F(ZORTestNestNestingDlgRunTest, StoppedRunShowsWhatItHas)
{
    OpenDialog();
    StartLongRun();
    Click("_StopBtn", dialog);
    ASSERT_TRUE(WaitFor(Status::Completed));
    EXPECT_EQ(1, GetResults().size());
}

TEST_F(ZORTestNestNestingDlgRunTest, CancelledRunShowsNothingAndLeavesTheBar)
{
    OpenDialog();
    StartLongRun();
    EXPECT_TRUE(QMetaObject::invokeMethod(dialog, "OnCancelClicked"));
    ASSERT_TRUE(WaitFor(Status::Canceled));
    EXPECT_TRUE(GetResults().isEmpty());
    const double last = Processor()->GetResponses()[0]->GetProgress();
    const int shown = last == 0      ? 0 // none was told before the end
                      : last < 0.001 ? 100
                                     : int(last * 100);
    EXPECT_EQ(shown, Bar()->value());
    EXPECT_TRUE(boxes.Take().isEmpty());
}

TEST_F(ZORTestNestNestingDlgRunTest, ClosingEndsWhatRunsAtOnce)
{
    OpenDialog();
    StartLongRun();
    dialog->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(nullptr, dialog.data());
    QCoreApplication::processEvents();
    EXPECT_TRUE(GetResults().isEmpty());
}

TEST_F(ZORTestNestNestingDlgRunTest, ResultsOutliveTheDialogAndTheConsole)
{
    OpenConsole();
    ASSERT_NE(nullptr, TriggerMenu("actionNest"));
    AddItem(WritePart("rib.msi"), 3);
    AddSheet(1000, 2000);
    AddRoll(1000);
    Set("_MaxRunTimeSpn", 0.3);
    Compute();
    ASSERT_TRUE(WaitFor(Status::Completed));
    ASSERT_EQ(1, GetResults().size());
    PressCancel();
    EXPECT_EQ(nullptr, dialog.data());
    CloseConsole();
    ASSERT_EQ(1, GetResults().size());
    ZORTestNestNestingResultDlg* results = GetResults()[0];
    EXPECT_TRUE(results->isVisible());
    EXPECT_EQ(1, GetFeatEnvironment()->GetNumVirtualObjects());
    EXPECT_TRUE(QMetaObject::invokeMethod(results, "OnSheetSelected"));
    results->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(0, GetFeatEnvironment()->GetNumVirtualObjects());
}

} // namespace
