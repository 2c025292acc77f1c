#include "nesting/ZORTestNestTranslateDlg.h"

#include "console/ZORTestMainDialog.h"
#include "support/BenchTest.h"

#include <ZORNesting/ZORNestResultReader.h>
#include <ZORNesting/ZORNestSourceProvider.h>
#include <ZORSystem/ZORSysApiTrace.h>

#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMetaClassInfo>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>

namespace {

constexpr int Patience = 30000; // ms until a test gives up

class ZORTestNestTranslateDlgTest : public BenchTest
{
protected:
    ZORTestNestTranslateDlgTest() { QDir().mkpath(GetPath("out")); }

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
    QStringList Entries() const
    {
        QStringList texts;
        for (int i = 0; i < List()->count(); ++i)
            texts.append(List()->item(i)->text());
        return texts;
    }
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
        const bool isThere = QTest::qWaitFor([this] { return Bar()->value() == Bar()->maximum(); }, Patience);
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
    ASSERT_NE(nullptr, dialog->findChild<QDialogButtonBox*>());
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

TEST_F(ZORTestNestTranslateDlgTest, WithoutOutputDirectoryNothingStarts)
{
    OpenDialog();
    Add(WriteSource("kit.json", {"rib"}));
    Bar()->setValue(17);
    answers.CancelFile();
    Click("_TranslateBtn", dialog);
    EXPECT_EQ(17, Bar()->value());
    EXPECT_EQ(100, Bar()->maximum());
    EXPECT_EQ(QStringList(), GetOutput());
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

TEST_F(ZORTestNestTranslateDlgTest, EmptyListSetsTheBarToZeroOfZeroWithoutMessage)
{
    OpenDialog();
    Translate();
    EXPECT_EQ(0, Bar()->maximum());
    EXPECT_LE(Bar()->value(), 0);
    QCoreApplication::processEvents();
    EXPECT_TRUE(boxes.Take().isEmpty());
    EXPECT_EQ(QStringList(), GetOutput());
}

TEST_F(ZORTestNestTranslateDlgTest, SecondBatchResetsTheBar)
{
    OpenDialog();
    Add(WriteSource("kit.json", {"rib"}));
    Add(WriteSource("more.json", {"cap"}));
    Translate();
    ASSERT_TRUE(WaitForBox());
    List()->item(0)->setSelected(true);
    Click("_RemoveBtn", dialog);
    Translate();
    EXPECT_EQ(1, Bar()->maximum());
    EXPECT_EQ(0, Bar()->value());
    ASSERT_TRUE(WaitForBox());
    EXPECT_EQ(1, Bar()->value());
    EXPECT_EQ(QStringList({"cap-2.msi", "cap.msi", "rib.msi"}), GetOutput());
}

TEST_F(ZORTestNestTranslateDlgTest, CallsTheSdkInOrderWithTheChosenProvider)
{
    OpenDialog();
    Add(WriteSource("kit.json", {"rib"}));
    QStringList calls;
    QObject receiver;
    QObject::connect(ZORSysApiTrace::GetInstance(), &ZORSysApiTrace::CallTraced, &receiver,
                     [&calls](const QByteArray& line) { calls.append(QString::fromUtf8(line)); });
    ZORSysApiTrace::GetInstance()->SetEnabled(true);
    Translate();
    ZORSysApiTrace::GetInstance()->SetEnabled(false);
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

TEST_F(ZORTestNestTranslateDlgTest, ClosingEndsWhatIsBeingTranslated)
{
    QList<QByteArray> names;
    for (int i = 0; i < 500; ++i)
        names.append("p" + QByteArray::number(i));
    OpenDialog();
    for (int i = 0; i < 8; ++i)
        List()->addItem(WriteSource("kit" + QString::number(i) + ".json", names));
    Translate();
    PressOk();
    EXPECT_EQ(QStringList(), GetOutput());
    EXPECT_TRUE(boxes.Take().isEmpty());
}

} // namespace
