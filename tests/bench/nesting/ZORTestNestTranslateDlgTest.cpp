#include "nesting/ZORTestNestTranslateDlg.h"

#include "console/ZORTestMainDialog.h"
#include "support/BenchTest.h"
#include "support/ItemTexts.h"
#include "support/WarningCatcher.h"

#include <ZORNesting/ZORNestDebugOptions.h>
#include <ZORNesting/ZORNestResultReader.h>
#include <ZORNesting/ZORNestSourceProvider.h>
#include <ZORWorker/ZORWorkContext.h>

#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMetaClassInfo>
#include <QProgressBar>
#include <QPushButton>
#include <QSemaphore>
#include <QTest>

namespace {

constexpr int kPatience = 30000; // ms until a test gives up

/// Translates a file when it is let go, into one part with the file's name.
class GateProvider final : public ZORNestSourceProvider
{
public:
    GateProvider()
        : ZORNestSourceProvider("gate")
    {
        RegisterProvider(this);
    }

    QString GetDisplayName() const override { return "Gate"; }
    void LetGo(int count) { m_semaphore.release(count); }
    QList<ZORNestResult> Translate(const QString& path, const ZORNestTranslationInput& /*input*/,
                                   const ZORWorkContext& context, QStringList* /*report*/) const override
    {
        while (!m_semaphore.tryAcquire(1, 1))
            context.ThrowIfCanceled();
        ZORNestResult result(ZORNestResult::Translation);
        result.AddItem(ZORNestResultItem(QFileInfo(path).completeBaseName()));
        return {result};
    }

private:
    mutable QSemaphore m_semaphore;
};

/// Work directories lie in the folder "work" of the test.
class ZORTestNestTranslateDlgTest : public BenchTest
{
protected:
    ZORTestNestTranslateDlgTest()
        : m_formerTemporary(qgetenv("TMPDIR"))
    {
        QDir().mkpath(GetPath("out"));
        QDir().mkpath(GetPath("work"));
        qputenv("TMPDIR", GetPath("work").toUtf8());
    }
    ~ZORTestNestTranslateDlgTest() override
    {
        delete dialog;
        ZORNestDebugOptions::GetInstance()->SetKeepTranslationWorkDirectories(false);
        if (m_formerTemporary.isNull())
            qunsetenv("TMPDIR");
        else
            qputenv("TMPDIR", m_formerTemporary);
    }

    void OpenDialog() { ASSERT_NE(nullptr, Open("ZORTestNestTranslateDlg")); }
    QString Write(const QString& name, const QByteArray& content)
    {
        QFile file(GetPath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        return file.fileName();
    }
    static QByteArray Item(const QByteArray& name)
    {
        return "{\"name\": \"" + name
               + R"(", "shape": {"type": "simple_polygon", "data": [[0, 0], [4, 0], [4, 3]]}})";
    }
    /// A source of the provider "nesting-json" with parts of these names.
    QString WriteSource(const QString& name, const QList<QByteArray>& parts)
    {
        QByteArray items;
        for (const QByteArray& part : parts)
            items += (items.isEmpty() ? "" : ",") + Item(part);
        return Write(name, "{\"items\": [" + items + "]}");
    }
    QListWidget* List() const { return dialog->findChild<QListWidget*>("_FileList"); }
    QProgressBar* Bar() const { return dialog->findChild<QProgressBar*>("_ProgBar"); }
    QComboBox* Combo() const { return dialog->findChild<QComboBox*>("_ProviderCombo"); }
    QStringList Entries() const { return GetTexts(List()); }
    void Add(const QString& path)
    {
        answers.AnswerFile(path);
        Click("_AddBtn", dialog);
    }
    void Translate(const char* provider = "nesting-json")
    {
        Combo()->setCurrentIndex(Combo()->findData(QByteArray(provider)));
        answers.AnswerFile(GetPath("out"));
        Click("_TranslateBtn", dialog);
    }
    bool WaitForBox()
    {
        const bool isThere =
            QTest::qWaitFor([this] { return Bar()->value() == Bar()->maximum(); }, kPatience);
        const QList<MessageBoxCatcher::Box> shown = boxes.Take();
        EXPECT_EQ(1, shown.size());
        if (shown.isEmpty())
            return false;
        EXPECT_EQ(QMessageBox::Information, shown[0].icon);
        EXPECT_EQ("Finished", shown[0].title);
        EXPECT_EQ("Translation has finished", shown[0].text);
        EXPECT_EQ(QMessageBox::Ok, shown[0].buttons);
        EXPECT_EQ(dialog, shown[0].parent);
        return isThere;
    }
    QStringList GetOutput() const { return QDir(GetPath("out")).entryList(QDir::Files, QDir::Name); }
    /// The part files in the work directories, relative to the directory of their job.
    QStringList GetWorkParts() const
    {
        QStringList found;
        QDirIterator files(GetPath("work"), {"*.msi"}, QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            const QString file = QDir(GetPath("work")).relativeFilePath(files.next());
            const bool isInRoom = file.startsWith("zorjobs-"); // the folder of this process
            found.append(file.section('/', isInRoom ? 2 : 1));
        }
        return found;
    }
    /// The calls that pressing "Translate" makes until it returns.
    QStringList TraceTranslate(const char* provider = "nesting-json")
    {
        return TraceCalls([&] { Translate(provider); });
    }

    GateProvider gate; // outlives the dialog

private:
    const QByteArray m_formerTemporary;
};

TEST_F(ZORTestNestTranslateDlgTest, FormShowsFilesProvidersAndProgress)
{
    OpenDialog();
    const QMetaObject* metaObject = dialog->metaObject();
    EXPECT_STREQ("Translate for Nesting",
                 metaObject->classInfo(metaObject->indexOfClassInfo("label")).value());
    EXPECT_EQ("Dialog", dialog->windowTitle());
    EXPECT_EQ("Add", dialog->findChild<QPushButton*>("_AddBtn")->text());
    EXPECT_EQ("Remove", dialog->findChild<QPushButton*>("_RemoveBtn")->text());
    EXPECT_EQ("Translate", dialog->findChild<QPushButton*>("_TranslateBtn")->text());
    QStringList labels;
    for (const QLabel* label : dialog->findChildren<QLabel*>())
        labels.append(label->text());
    EXPECT_EQ(QStringList({"Files To translate:", "Provider: "}), labels);
    EXPECT_EQ("%v/%m %p%", Bar()->format());
    EXPECT_EQ(0, Bar()->value());
    EXPECT_EQ(0, List()->count());
    const auto* buttonBox = dialog->findChild<QDialogButtonBox*>("_ButtonBox");
    ASSERT_NE(nullptr, buttonBox);
    EXPECT_EQ(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, buttonBox->standardButtons());
    const QList<ZORNestSourceProvider*> providers = ZORNestSourceProvider::GetProviders();
    ASSERT_EQ(providers.size(), Combo()->count());
    for (int i = 0; i < providers.size(); ++i) {
        EXPECT_EQ(providers[i]->GetDisplayName(), Combo()->itemText(i));
        EXPECT_EQ(QVariant(providers[i]->GetProviderId()), Combo()->itemData(i, Qt::UserRole));
    }
    for (const char* slot :
         {"OnAddClicked()", "OnRemoveClicked()", "OnTranslateClicked()", "OnStatusUpdated()"})
        EXPECT_GE(metaObject->indexOfSlot(slot), 0) << slot;
}

TEST_F(ZORTestNestTranslateDlgTest, MenuOpensIt)
{
    OpenConsole();
    EXPECT_NE(nullptr, qobject_cast<ZORTestNestTranslateDlg*>(TriggerMenu("actionTranslate")));
}

TEST_F(ZORTestNestTranslateDlgTest, AddAsksForFilesAndAppendsThem)
{
    const QStringList paths{Write("b.dxf", ""), Write("a.dxf", "")};
    OpenDialog();
    answers.Answer("QFileDialog", [&](QDialog* shown) {
        EXPECT_EQ("Select Input File", shown->windowTitle());
        EXPECT_EQ(QFileDialog::ExistingFiles, qobject_cast<QFileDialog*>(shown)->fileMode());
        auto* edit = shown->findChild<QLineEdit*>();
        edit->setText('"' + paths[0] + "\" \"" + paths[1] + '"');
        qobject_cast<QFileDialog*>(shown)
            ->findChild<QDialogButtonBox*>()
            ->button(QDialogButtonBox::Open)
            ->click();
    });
    Click("_AddBtn", dialog);
    EXPECT_EQ(paths, Entries());
    Add(paths[0]);
    EXPECT_EQ(paths + QStringList(paths[0]), Entries());
    answers.CancelFile();
    Click("_AddBtn", dialog);
    EXPECT_EQ(3, List()->count());
    for (const DialogAnswerer::Shown& shown : answers.Take()) {
        EXPECT_EQ("Select Input File", shown.title);
        EXPECT_EQ(dialog, shown.parent);
        EXPECT_EQ(QStringList("All Files (*)"), shown.filters);
        EXPECT_FALSE(shown.isSaving);
    }
}

TEST_F(ZORTestNestTranslateDlgTest, RemoveTakesEverySelectedEntry)
{
    OpenDialog();
    List()->addItems({"1", "2", "3", "4"});
    Click("_RemoveBtn", dialog);
    EXPECT_EQ(4, List()->count());
    List()->item(0)->setSelected(true);
    List()->item(2)->setSelected(true);
    Click("_RemoveBtn", dialog);
    EXPECT_EQ(QStringList({"2", "4"}), Entries());
}

TEST_F(ZORTestNestTranslateDlgTest, TranslateAsksForADirectory)
{
    OpenDialog();
    answers.Answer("QFileDialog", [this](QDialog* shown) {
        const auto* files = qobject_cast<QFileDialog*>(shown);
        EXPECT_EQ(QFileDialog::Directory, files->fileMode());
        EXPECT_TRUE(files->testOption(QFileDialog::ShowDirsOnly));
        EXPECT_EQ(dialog, shown->parentWidget());
        shown->reject();
    });
    Click("_TranslateBtn", dialog);
}

TEST_F(ZORTestNestTranslateDlgTest, WithoutOutputDirectoryNothingStarts)
{
    OpenDialog();
    Add(WriteSource("kit.json", {"rib"}));
    Bar()->setValue(17);
    answers.CancelFile();
    EXPECT_EQ(QStringList(), TraceCalls([this] { Click("_TranslateBtn", dialog); }));
    EXPECT_EQ(17, Bar()->value());
    EXPECT_EQ(100, Bar()->maximum());
    EXPECT_EQ(QStringList(), GetOutput());
}

TEST_F(ZORTestNestTranslateDlgTest, CancellingTheDirectoryLeavesARunningBatchAlone)
{
    OpenDialog();
    List()->addItem(GetPath("rib.gate"));
    Translate("gate");
    answers.CancelFile();
    Click("_TranslateBtn", dialog);
    EXPECT_EQ(1, Bar()->maximum());
    EXPECT_EQ(0, Bar()->value());
    gate.LetGo(1);
    ASSERT_TRUE(WaitForBox());
    EXPECT_EQ(QStringList("rib.msi"), GetOutput());
}

TEST_F(ZORTestNestTranslateDlgTest, EveryEndIsOneStepAndTheMessageComesWithTheLast)
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

TEST_F(ZORTestNestTranslateDlgTest, PartFilesArriveInTheDirectory)
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

TEST_F(ZORTestNestTranslateDlgTest, FailedFilesCountAndShowNothing)
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

TEST_F(ZORTestNestTranslateDlgTest, FilesThatAreThereStay)
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

TEST_F(ZORTestNestTranslateDlgTest, PartsLeaveTheWorkDirectoryAndKeptOnesAreCopies)
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

TEST_F(ZORTestNestTranslateDlgTest, WorkDirectoriesGoWithTheDialog)
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

TEST_F(ZORTestNestTranslateDlgTest, PartsThatCannotBeCopiedCountAndAreGoneFromTheWorkDirectory)
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

TEST_F(ZORTestNestTranslateDlgTest, EmptyListSetsTheBarToZeroOfZeroWithoutMessage)
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

TEST_F(ZORTestNestTranslateDlgTest, SecondBatchResetsTheBarAndGoesToTheSameProcessor)
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

TEST_F(ZORTestNestTranslateDlgTest, SecondBatchWhileTheFirstRunsStartsAtZero)
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

TEST_F(ZORTestNestTranslateDlgTest, CallsTheSdkInOrderWithTheChosenProvider)
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

TEST_F(ZORTestNestTranslateDlgTest, BothButtonsEndWhatIsBeingTranslated)
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
