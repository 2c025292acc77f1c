// Batches of files that the translation dialog translates.

#include "TranslateDlgTest.h"
#include "support/WarningCatcher.h"

#include <ZORNesting/ZORNestResultReader.h>

namespace {

using ZORTestNestTranslateDlgBatchTest = TranslateDlgTest;

TEST_F(ZORTestNestTranslateDlgBatchTest, EveryEndIsOneStepAndTheMessageComesWithTheLast)
{
    OpenDialog();
    List()->addItems({GetPath("a.gate"), GetPath("b.gate"), GetPath("c.gate")});
    Translate("gate");
    EXPECT_EQ(3, Bar()->maximum());
    EXPECT_EQ(0, Bar()->value());
    for (int value = 1; value < 3; ++value) {
        gate.LetGo(1);
        ASSERT_TRUE(QTest::qWaitFor([&] { return Bar()->value() == value; }, kPatience));
        EXPECT_TRUE(boxes.Take().isEmpty());
        EXPECT_EQ(value, GetOutput().size());
    }
    gate.LetGo(1);
    ASSERT_TRUE(WaitForBox());
    EXPECT_EQ(QStringList({"a.msi", "b.msi", "c.msi"}), GetOutput());
}

TEST_F(ZORTestNestTranslateDlgBatchTest, PartFilesArriveInTheDirectory)
{
    OpenDialog();
    Add(WriteSource("kit.json", {"rib", "skin"}));
    Add(WriteSource("more.json", {"cap"}));
    Translate();
    EXPECT_EQ(2, Bar()->maximum());
    ASSERT_TRUE(WaitForBox());
    EXPECT_EQ(QStringList({"cap.msi", "rib.msi", "skin.msi"}), GetOutput());
    const ZORNestResult rib = ZORNestResultReader(GetPath("out/rib.msi")).Read(nullptr);
    ASSERT_TRUE(rib.IsValid());
    EXPECT_EQ(ZORNestResult::Translation, rib.GetResultType());
    EXPECT_EQ(6, rib.GetItems().constFirst()->GetShapes().constFirst()->GetArea());
    EXPECT_TRUE(QFile::exists(GetPath("kit.json")));
    EXPECT_EQ(2, Bar()->value());
}

TEST_F(ZORTestNestTranslateDlgBatchTest, FailedFilesCountAndShowNothing)
{
    OpenDialog();
    Add(Write("bad.json", "{"));
    List()->addItem(GetPath("missing.json"));
    Add(WriteSource("kit.json", {"rib"}));
    Translate();
    ASSERT_TRUE(WaitForBox());
    EXPECT_EQ(3, Bar()->value());
    EXPECT_EQ(QStringList("rib.msi"), GetOutput());
}

TEST_F(ZORTestNestTranslateDlgBatchTest, FilesThatAreThereStay)
{
    Write("out/rib.msi", "mine");
    OpenDialog();
    Add(WriteSource("kit.json", {"rib"}));
    Translate();
    ASSERT_TRUE(WaitForBox());
    EXPECT_EQ(QStringList({"rib-2.msi", "rib.msi"}), GetOutput());
    QFile file(GetPath("out/rib.msi"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ("mine", file.readAll());
}

TEST_F(ZORTestNestTranslateDlgBatchTest, PartsLeaveTheWorkDirectoryAndKeptOnesAreCopies)
{
    ZORNestDebugOptions::GetInstance()->SetKeepTranslationWorkDirectories(true);
    OpenDialog();
    Add(WriteSource("kit.json", {"rib"}));
    Translate();
    ASSERT_TRUE(WaitForBox());
    EXPECT_EQ(QStringList("rib.msi"), GetOutput());
    EXPECT_EQ(QStringList("kept/rib.msi"), GetWorkParts());
    PressCancel();
    EXPECT_EQ(QStringList("kept/rib.msi"), GetWorkParts());
}

TEST_F(ZORTestNestTranslateDlgBatchTest, WorkDirectoriesGoWithTheDialog)
{
    OpenDialog();
    Add(WriteSource("kit.json", {"rib"}));
    Translate();
    ASSERT_TRUE(WaitForBox());
    EXPECT_FALSE(QDir(GetPath("work")).isEmpty());
    EXPECT_EQ(QStringList(), GetWorkParts());
    PressOk();
    // A thread removes them.
    EXPECT_TRUE(QTest::qWaitFor([this] { return QDir(GetPath("work")).isEmpty(); }, kPatience));
}

TEST_F(ZORTestNestTranslateDlgBatchTest, PartsThatCannotBeCopiedCountAndAreGoneFromTheWorkDirectory)
{
    OpenDialog();
    List()->addItem(GetPath("rib.gate"));
    Translate("gate");
    ASSERT_TRUE(QDir().rmdir(GetPath("out")));
    const WarningCatcher warnings;
    gate.LetGo(1);
    ASSERT_TRUE(WaitForBox());
    const QStringList lines = warnings.GetLines();
    ASSERT_EQ(1, lines.size());
    EXPECT_TRUE(lines[0].startsWith("zor.worker: cannot bring '")) << lines[0].toStdString();
    EXPECT_TRUE(lines[0].endsWith("' into '" + GetPath("out") + "': there is no such directory"));
    EXPECT_EQ(1, Bar()->value());
    EXPECT_EQ(QStringList(), GetWorkParts());
    EXPECT_FALSE(QFileInfo::exists(GetPath("out")));
}

TEST_F(ZORTestNestTranslateDlgBatchTest, EmptyListSetsTheBarToZeroOfZeroWithoutMessage)
{
    OpenDialog();
    Bar()->setValue(17);
    EXPECT_EQ(QStringList("ZORNestTranslationProcessor::Execute()"), TraceTranslate());
    EXPECT_EQ(0, Bar()->maximum());
    EXPECT_EQ(0, Bar()->value());
    QCoreApplication::processEvents();
    EXPECT_TRUE(boxes.Take().isEmpty());
    EXPECT_EQ(QStringList(), GetOutput());
}

TEST_F(ZORTestNestTranslateDlgBatchTest, SecondBatchResetsTheBarAndGoesToTheSameProcessor)
{
    OpenDialog();
    Add(WriteSource("kit.json", {"rib"}));
    Add(WriteSource("more.json", {"cap"}));
    Translate();
    ASSERT_TRUE(WaitForBox());
    List()->item(0)->setSelected(true);
    Click("_RemoveBtn", dialog);
    const QStringList calls = TraceTranslate();
    EXPECT_TRUE(calls.filter("::ZORNestTranslationProcessor(").isEmpty());
    EXPECT_EQ(1, calls.filter("ZORNestTranslationProcessor::AddInput(").size());
    EXPECT_EQ(1, Bar()->maximum());
    ASSERT_TRUE(WaitForBox());
    EXPECT_EQ(1, Bar()->value());
    EXPECT_EQ(QStringList({"cap-2.msi", "cap.msi", "rib.msi"}), GetOutput());
}

TEST_F(ZORTestNestTranslateDlgBatchTest, SecondBatchWhileTheFirstRunsStartsAtZero)
{
    OpenDialog();
    List()->addItems({GetPath("a.gate"), GetPath("b.gate"), GetPath("c.gate")});
    Translate("gate");
    gate.LetGo(1);
    ASSERT_TRUE(QTest::qWaitFor([&] { return Bar()->value() == 1; }, kPatience));
    List()->addItem(GetPath("d.gate"));
    Translate("gate");
    EXPECT_EQ(4, Bar()->maximum());
    EXPECT_EQ(0, Bar()->value());
    // Two of the first batch have not ended: their ends count as well.
    gate.LetGo(4);
    ASSERT_TRUE(WaitForBox());
    EXPECT_EQ(5, GetOutput().size());
}

TEST_F(ZORTestNestTranslateDlgBatchTest, CallsTheSdkInOrderWithTheChosenProvider)
{
    OpenDialog();
    Add(WriteSource("kit.json", {"rib"}));
    const QStringList calls = TraceTranslate();
    ASSERT_TRUE(WaitForBox());
    EXPECT_EQ(QStringList({"ZORNestTranslationInput::SetInputFileType(6)",
                           "ZORNestTranslationInput::SetOutputFileType(0)",
                           "ZORNestTranslationInput::SetPreTranslateProvider(bytes[12])",
                           "ZORWorkResource::ZORWorkResource(\"" + GetPath("kit.json") + "\")",
                           "ZORNestTranslationProcessor::AddInput((6, 0, \"nesting-json\"), \""
                               + GetPath("kit.json") + "\")",
                           "ZORNestTranslationProcessor::Execute()"}),
              calls.mid(0, 6));
}

TEST_F(ZORTestNestTranslateDlgBatchTest, BothButtonsEndWhatIsBeingTranslated)
{
    for (const bool isOk : {true, false}) {
        OpenDialog();
        List()->addItems({GetPath("a.gate"), GetPath("b.gate"), GetPath("c.gate")});
        Translate("gate");
        if (isOk)
            PressOk();
        else
            PressCancel();
        EXPECT_EQ(nullptr, dialog);
        EXPECT_TRUE(boxes.Take().isEmpty());
        EXPECT_EQ(QStringList(), GetOutput());
        EXPECT_TRUE(QTest::qWaitFor([this] { return QDir(GetPath("work")).isEmpty(); }, kPatience));
    }
}

} // namespace
