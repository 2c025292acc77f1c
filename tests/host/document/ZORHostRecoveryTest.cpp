// Tests of automatic saving and of recovery after a crash.

#include "DocumentTest.h"
#include "base/ZORHostPreferences.h"
#include "document/ZORHostAutosave.h"
#include "document/ZORHostDocumentFile.h"
#include "document/ZORHostRecoveryDialog.h"
#include "document/ZORHostRescue.h"
#include "support/HostileDisk.h"
#include "support/WarningCatcher.h"
#include "window/ZORHostNoticeBar.h"
#include "window/ZORHostPreferencesDialog.h"

#include <ZORGeometry/ZORGeoContainerFile.h>
#include <ZORSystem/ZORSysApiTrace.h>

#include <QDir>
#include <QPushButton>
#include <QSpinBox>
#include <QTableWidget>

#include <csignal>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

class ZORHostRecoveryTest : public DocumentTest
{
protected:
    ~ZORHostRecoveryTest() override
    {
        for (const QString& folder : ZORHostRescue::GetFolders())
            QDir(folder).removeRecursively();
    }
    ZORHostAutosave& GetAutosave() { return *GetCommands().GetAutosave(); }
    void SaveAutomatically()
    {
        GetAutosave().SaveNow();
        EXPECT_TRUE(WaitFor([this] { return !GetAutosave().IsBusy(); }));
    }
    /// Leaves a file as a process does that is killed after it has written it.
    void Crash(const QString& document, const QByteArray& contents)
    {
        const pid_t child = fork();
        if (child == 0) {
            ZORHostRescueFile file;
            file.Write(
                [&contents](const QString& path) {
                    QFile out(path);
                    return out.open(QIODevice::WriteOnly) && out.write(contents) == contents.size()
                               ? QString()
                               : out.errorString();
                },
                document);
            kill(getpid(), SIGKILL);
        }
        int status = 0;
        ASSERT_EQ(child, waitpid(child, &status, 0));
        ASSERT_TRUE(WIFSIGNALED(status));
    }
    QByteArray MakeContainerFile()
    {
        AddBox("Recovered box");
        const QString path = GetPath("made.ZORCont");
        EXPECT_TRUE(
            ZORHostDocumentFile::Write(ZORGeoContainerFile::Take(*GetEnvironment()->GetContainer()), path));
        GetEnvironment()->GetContainer()->Clear();
        GetDocument().MarkNew();
        return ReadFile(path);
    }
    /// Shows what can be recovered, not as a modal dialog.
    std::unique_ptr<ZORHostRecoveryDialog> OpenDialog()
    {
        auto dialog =
            std::make_unique<ZORHostRecoveryDialog>(ZORHostRescue::FindAbandoned(), &GetCommands(), &window);
        dialog->show();
        return dialog;
    }
};

TEST_F(ZORHostRecoveryTest, ACopyOfUnsavedWorkIsKeptApartFromTheFileUntilItIsSaved)
{
    AddBox("Box");
    const QString file = SaveAs("part.ZORCont");
    const QByteArray before = ReadFile(file);
    SaveAutomatically();
    EXPECT_TRUE(GetAutosave().GetPath().isEmpty()) << "nothing is unsaved";
    AddBox("Other");
    SaveAutomatically();
    const QString copy = GetAutosave().GetPath();
    ASSERT_TRUE(QFile::exists(copy));
    EXPECT_EQ(before, ReadFile(file));
    EXPECT_NE(before, ReadFile(copy));
    EXPECT_TRUE(GetDocument().IsModified());
    EXPECT_TRUE(ZORHostRescue::FindAbandoned().isEmpty()) << "this process still works on it";
    EXPECT_TRUE(GetCommands().Save());
    EXPECT_FALSE(QFile::exists(copy));
    EXPECT_TRUE(QDir(QFileInfo(copy).path()).isEmpty());
}

TEST_F(ZORHostRecoveryTest, ACopyIsWrittenAgainOnlyAfterFurtherChanges)
{
    AddBox("Box");
    SaveAutomatically();
    const QString copy = GetAutosave().GetPath();
    ASSERT_TRUE(QFile::remove(copy));
    SaveAutomatically();
    EXPECT_FALSE(QFile::exists(copy));
    AddBox("Other");
    SaveAutomatically();
    EXPECT_TRUE(QFile::exists(GetAutosave().GetPath()));
}

TEST_F(ZORHostRecoveryTest, DiscardedWorkLeavesNoCopy)
{
    AddBox("Box");
    SaveAutomatically();
    const QString copy = GetAutosave().GetPath();
    PressInNextBox(QMessageBox::Discard);
    EXPECT_TRUE(GetCommands().New());
    boxes.Take();
    EXPECT_FALSE(QFile::exists(copy));
}

TEST_F(ZORHostRecoveryTest, ACopyThatIsBeingWrittenGivesWayToTheFileAndToTheEnd)
{
    AddBox("Box");
    GetAutosave().SaveNow();
    EXPECT_TRUE(GetAutosave().IsBusy());
    SaveAs("part.ZORCont");
    EXPECT_TRUE(QDir(ZORHostRescue::GetFolders().constFirst()).isEmpty());
    AddBox("Other");
    GetAutosave().SaveNow();
    window.RescueDocument();
    EXPECT_FALSE(GetAutosave().IsBusy());
    const QList<ZORHostRescue::Entry> entries = ZORHostRescue::FindAbandoned();
    ASSERT_EQ(1, entries.size());
    EXPECT_EQ(GetPath("part.ZORCont"), entries[0].document);
    AddBox("Third");
    GetAutosave().SaveNow(); // and the window goes
}

TEST_F(ZORHostRecoveryTest, NobodyHasCalledForACopySoTheTraceHasNone)
{
    AddBox("Box");
    const QString trace = GetPath("trace.txt");
    ZORSysApiTrace::GetInstance()->SetFile(trace);
    SaveAutomatically();
    ZORSysApiTrace::GetInstance()->SetFile(QString());
    EXPECT_FALSE(ReadFile(trace).contains("Save")) << ReadFile(trace).toStdString();
}

TEST_F(ZORHostRecoveryTest, ThePreferencesChangeTheInterval)
{
    ZORHostPreferencesDialog dialog(&window);
    auto* spin = dialog.findChild<QSpinBox*>("_AutosaveSpin");
    EXPECT_EQ(5, spin->value());
    EXPECT_EQ(std::chrono::minutes(5), GetAutosave().GetInterval());
    spin->setValue(0);
    EXPECT_EQ(QString("Off"), spin->text());
    EXPECT_EQ(std::chrono::minutes(5), GetAutosave().GetInterval()) << "not before OK";
    dialog.accept();
    EXPECT_EQ(std::chrono::minutes(0), GetAutosave().GetInterval());
    ZORHostPreferences::Get()->SetAutosaveMinutes(1000);
    EXPECT_EQ(std::chrono::minutes(ZORHostPreferences::kMostAutosaveMinutes), GetAutosave().GetInterval());
    GetSettings()->setValue("Host/AutosaveMinutes", "soon");
    EXPECT_EQ(5, ZORHostPreferences::Get()->GetAutosaveMinutes());
    window.SetAsksToSave(false);
    EXPECT_EQ(std::chrono::minutes(0), GetAutosave().GetInterval()) << "scripts discard their work";
}

TEST_F(ZORHostRecoveryTest, AFailureIsReportedOnceAndDoesNotTouchTheFile)
{
    AddBox("Box");
    const QString file = SaveAs("part.ZORCont");
    const QByteArray before = ReadFile(file);
    AddBox("Other");
    const WarningCatcher warnings;
    {
        const FileSizeLimit full(100);
        SaveAutomatically();
        SaveAutomatically();
    }
    EXPECT_EQ(1, warnings.GetLines().filter("could not be saved automatically").size());
    EXPECT_EQ(1, window.GetNoticeBar()->GetMessages().size());
    EXPECT_TRUE(GetAutosave().GetPath().isEmpty());
    EXPECT_EQ(before, ReadFile(file));
    EXPECT_TRUE(ZORHostRescue::FindAbandoned().isEmpty()) << "nothing of it stays";
    SaveAutomatically();
    EXPECT_TRUE(QFile::exists(GetAutosave().GetPath())) << "tried again";
}

TEST_F(ZORHostRecoveryTest, AKilledProcessLeavesItsWorkToTheNext)
{
    const QByteArray contents = MakeContainerFile();
    const QString original = WriteFile("part.ZORCont", "the user's own");
    Crash(original, contents);
    auto dialog = OpenDialog();
    auto* table = dialog->findChild<QTableWidget*>("_RecoveryTable");
    ASSERT_EQ(1, table->rowCount());
    EXPECT_EQ(QString("part.ZORCont"), table->item(0, 0)->text());
    EXPECT_TRUE(ZORHostRescue::FindAbandoned().isEmpty()) << "the dialog holds it";
    dialog->findChild<QPushButton*>("_RecoverBtn")->click();
    EXPECT_FALSE(dialog->isVisible());
    dialog.reset();
    EXPECT_EQ(1, CountGeometries());
    EXPECT_TRUE(GetDocument().GetFile().isEmpty());
    EXPECT_EQ(original, GetDocument().GetProposedFile());
    EXPECT_TRUE(GetDocument().IsModified());
    EXPECT_EQ(QByteArray("the user's own"), ReadFile(original));
    EXPECT_TRUE(ZORHostRescue::FindAbandoned().isEmpty()) << "it is being worked on";
    answers.AnswerFile(GetPath("saved.ZORCont"));
    EXPECT_TRUE(GetCommands().Save());
    EXPECT_TRUE(QDir(ZORHostRescue::GetFolders().constFirst()).isEmpty());
}

TEST_F(ZORHostRecoveryTest, RecoveredWorkIsKeptUntilANewerCopyTakesItsPlace)
{
    Crash({}, MakeContainerFile());
    const QString former = ZORHostRescue::FindAbandoned().value(0).path;
    OpenDialog()->OnRecoverClicked();
    EXPECT_TRUE(QFile::exists(former));
    SaveAutomatically();
    EXPECT_FALSE(QFile::exists(former));
    EXPECT_TRUE(QFile::exists(GetAutosave().GetPath()));
}

TEST_F(ZORHostRecoveryTest, SeveralDocumentsAreRecoveredOneByOneAndDamagedOnesCanBeDiscarded)
{
    const QByteArray contents = MakeContainerFile();
    Crash(GetPath("first.ZORCont"), contents);
    Crash(GetPath("damaged.ZORCont"), contents.left(contents.size() / 2));
    Crash({}, contents);
    auto dialog = OpenDialog();
    auto* table = dialog->findChild<QTableWidget*>("_RecoveryTable");
    ASSERT_EQ(3, table->rowCount());
    const auto select = [table](const QString& name) {
        table->selectRow(table->findItems(name, Qt::MatchExactly).value(0)->row());
    };
    AddBox("Box");
    SaveAs("open.ZORCont");
    select("damaged.ZORCont");
    dialog->OnRecoverClicked();
    EXPECT_EQ(1, boxes.TakeErrors().size());
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_EQ(GetPath("open.ZORCont"), GetDocument().GetFile()) << "the document stays";
    PressInNextBox(QMessageBox::Discard);
    dialog->OnDiscardClicked();
    EXPECT_EQ(1, boxes.Take().size());
    EXPECT_EQ(2, table->rowCount());
    select("Untitled");
    dialog->OnRecoverClicked();
    EXPECT_FALSE(dialog->isVisible());
    dialog.reset();
    EXPECT_EQ(QString(), GetDocument().GetProposedFile());
    EXPECT_EQ(1, ZORHostRescue::FindAbandoned().size()) << "left for later";
}

TEST_F(ZORHostRecoveryTest, CancelAtTheQuestionsKeepsTheFiles)
{
    Crash({}, MakeContainerFile());
    AddBox("Box");
    auto dialog = OpenDialog();
    PressInNextBox(QMessageBox::Cancel);
    dialog->OnRecoverClicked();
    PressInNextBox(QMessageBox::Cancel);
    dialog->OnDiscardClicked();
    EXPECT_EQ(2, boxes.Take().size());
    EXPECT_TRUE(dialog->isVisible());
    dialog->findChild<QPushButton*>("_LaterBtn")->click();
    EXPECT_FALSE(dialog->isVisible());
    dialog.reset();
    EXPECT_EQ(1, ZORHostRescue::FindAbandoned().size());
    EXPECT_EQ(1, CountGeometries());
}

TEST_F(ZORHostRecoveryTest, NotesOfOthersAreReadWithCare)
{
    Crash(QStringLiteral("/somewhere/x.ZORCont"), MakeContainerFile());
    const QDir folder(ZORHostRescue::GetFolders().constFirst());
    const QString note = folder.filePath(folder.entryList({"*.session"}).value(0));
    for (const QByteArray& contents :
         {QByteArray(), QByteArray("garbage"), QByteArray("{\"document\": 5}")}) {
        QFile file(note);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(contents);
        file.close();
        const QList<ZORHostRescue::Entry> entries = ZORHostRescue::FindAbandoned();
        ASSERT_EQ(1, entries.size());
        EXPECT_EQ(QString(), entries[0].document);
    }
    ASSERT_TRUE(QFile::remove(note));
    ASSERT_EQ(0, mkfifo(QFile::encodeName(note).constData(), 0600));
    QFile::link("/dev/zero", folder.filePath("trap.ZORCont.session"));
    EXPECT_TRUE(ZORHostRescue::FindAbandoned().isEmpty());
}

TEST_F(ZORHostRecoveryTest, TheStartOffersRecoveryOnlyWhereThereIsSomething)
{
    window.OfferRecovery();
    Trigger("_RecoverAction");
    QCoreApplication::processEvents(); // a dialog would be unexpected
    Crash({}, MakeContainerFile());
    for (const auto& open : {std::function<void()>([this] { window.OfferRecovery(); }),
                             std::function<void()>([this] { Trigger("_RecoverAction"); })}) {
        bool isShown = false;
        answers.Answer("ZORHostRecoveryDialog", [&isShown](QDialog* dialog) {
            isShown = true;
            dialog->reject();
        });
        open();
        EXPECT_TRUE(WaitFor([&isShown] { return isShown; }));
        DeleteDeferred();
    }
}

} // namespace
