#include "TranslateDlgTest.h"

#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMetaClassInfo>
#include <QPushButton>

namespace {

using ZORTestNestTranslateDlgTest = TranslateDlgTest;

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

} // namespace
