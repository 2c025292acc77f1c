// Tests that closing the main window loses no work without a question.

#include "HostTest.h"
#include "docks/ZORHostLineQueue.h"
#include "document/ZORHostRescue.h"
#include "plugins/ZORHostPluginManager.h"
#include "support/DialogAnswerer.h"
#include "support/HostileDisk.h"
#include "support/MessageBoxCatcher.h"
#include "support/WarningCatcher.h"
#include "window/ZORHostMainWindow.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatRoot.h>
#include <ZORFeature/ZORFeatStyles.h>
#include <ZORGeometry/ZORGeoSurface.h>

#include <QAction>
#include <QApplication>
#include <QDialogButtonBox>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QPushButton>
#include <QStandardPaths>
#include <QTimer>

namespace {

class ZORHostUnsavedWorkTest : public HostTest
{
protected:
    ZORHostUnsavedWorkTest() { window.show(); }

    void Trigger(const char* action) { window.findChild<QAction*>(QLatin1String(action))->trigger(); }
    void SaveAs(const QString& file)
    {
        answers.AnswerFile(file);
        Trigger("_SaveDocumentAction");
    }
    /// Closes the window and presses a button of the question; fails unless the question comes.
    /// \return whether the window is closed
    bool CloseAndPress(QMessageBox::StandardButton button)
    {
        PressInNextBox(button);
        const bool isClosed = window.close();
        const QList<MessageBoxCatcher::Box> shown = boxes.Take();
        EXPECT_EQ(1, shown.size());
        if (!shown.isEmpty()) {
            EXPECT_EQ(QString("Unsaved Changes"), shown[0].title);
            EXPECT_EQ(&window, shown[0].parent);
            EXPECT_EQ(QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, shown[0].buttons);
        }
        EXPECT_EQ(isClosed, !window.isVisible());
        return isClosed;
    }
    /// Whether closing asks; the window stays open either way.
    bool Asks()
    {
        QTimer::singleShot(0, &window, [] {
            if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget()))
                box->button(QMessageBox::Cancel)->click();
        });
        window.close();
        QCoreApplication::processEvents(); // the press is still waiting where no box has come
        window.show();
        return !boxes.Take().isEmpty();
    }

    MessageBoxCatcher boxes;
    DialogAnswerer answers;
    ZORHostLineQueue log{100};
    ZORHostPluginManager plugins;
    ZORHostMainWindow window{&plugins, &log};
};

TEST_F(ZORHostUnsavedWorkTest, AnUnchangedDocumentClosesAtOnce)
{
    EXPECT_TRUE(window.close());
    window.show();
    EXPECT_TRUE(window.OpenFile(WriteTetrahedron("part.stl")));
    EXPECT_TRUE(window.close()) << "all of it is in the file";
    window.show();
    AddBox("Box");
    SaveAs(GetPath("document.ZORCont"));
    EXPECT_TRUE(window.close());
    window.show();
    AddBox("Other");
    PressInNextBox(QMessageBox::Discard);
    Trigger("_NewAction");
    EXPECT_EQ(1, boxes.Take().size());
    EXPECT_TRUE(window.close());
    EXPECT_TRUE(boxes.Take().isEmpty());
}

TEST_F(ZORHostUnsavedWorkTest, CancelKeepsTheWindowAndDiscardClosesIt)
{
    AddBox("Box");
    EXPECT_FALSE(CloseAndPress(QMessageBox::Cancel));
    EXPECT_FALSE(CloseAndPress(QMessageBox::Cancel)) << "asks every time";
    EXPECT_TRUE(CloseAndPress(QMessageBox::Discard));
    EXPECT_EQ(1, GetEnvironment()->GetContainer()->GetNumGeometry());
}

TEST_F(ZORHostUnsavedWorkTest, QuitAsksAsTheCloseButtonDoes)
{
    AddBox("Box");
    PressInNextBox(QMessageBox::Cancel);
    Trigger("_QuitAction");
    EXPECT_EQ(1, boxes.Take().size());
    EXPECT_TRUE(window.isVisible());
}

TEST_F(ZORHostUnsavedWorkTest, SaveIsTheDefaultAndClosesOnceTheFileIsWritten)
{
    AddBox("Box");
    answers.AnswerFile(GetPath("document.ZORCont"));
    EXPECT_TRUE(window.close()); // the default button is pressed
    EXPECT_EQ(1, boxes.Take().size());
    EXPECT_TRUE(QFile::exists(GetPath("document.ZORCont")));
    window.show();
    EXPECT_FALSE(Asks());
}

TEST_F(ZORHostUnsavedWorkTest, ASaveThatIsCanceledOrFailsKeepsTheWindow)
{
    AddBox("Box");
    answers.CancelFile();
    EXPECT_FALSE(CloseAndPress(QMessageBox::Save));
    QDir().mkpath(GetPath("missing"));
    answers.AnswerFile(GetPath("missing/document.ZORCont"),
                       [this] { QDir(GetPath("missing")).removeRecursively(); });
    EXPECT_FALSE(window.close());
    EXPECT_TRUE(window.isVisible());
    const QList<MessageBoxCatcher::Box> shown = boxes.Take();
    ASSERT_EQ(2, shown.size());
    EXPECT_EQ(QString("Error"), shown[1].title);
    EXPECT_TRUE(Asks()) << "nothing was saved";
}

TEST_F(ZORHostUnsavedWorkTest, AFullDiskKeepsTheFileAndTheQuestion)
{
    AddBox("Box");
    const QString file = GetPath("document.ZORCont");
    SaveAs(file);
    const auto read = [&file] {
        QFile saved(file);
        return saved.open(QIODevice::ReadOnly) ? saved.readAll() : QByteArray();
    };
    const QByteArray before = read();
    AddBox("Other box");
    {
        const FileSizeLimit limit(100);
        SaveAs(file);
    }
    EXPECT_EQ(QStringList("Cannot write '" + file + "': File too large"), boxes.TakeErrors());
    EXPECT_EQ(before, read());
    EXPECT_TRUE(Asks()) << "the second box is in no file";
    SaveAs(file);
    EXPECT_FALSE(Asks());
}

TEST_F(ZORHostUnsavedWorkTest, EveryChangeAfterASaveCounts)
{
    ZORGeoSurface* box = AddBox("Box");
    ZORFeatContainer* container = GetEnvironment()->GetContainer();
    const auto expectQuestion = [&](const char* what, const std::function<void()>& change) {
        SaveAs(GetPath("document.ZORCont"));
        EXPECT_FALSE(Asks()) << what << ", before";
        change();
        EXPECT_TRUE(Asks()) << what;
    };
    expectQuestion("renamed", [&] { box->setObjectName("Cover"); });
    expectQuestion("style", [&] { container->GetStyles()->SetVisible({box}, true); });
    expectQuestion("feature", [&] { container->GetFeatureRoot("ZORFeatRoot"); });
    expectQuestion("label", [&] { container->GetFeatureRoot("ZORFeatRoot")->SetLabel("Wing"); });
    expectQuestion("removed", [&] { delete box; });
    expectQuestion("emptied", [&] { container->Clear(); });
}

TEST_F(ZORHostUnsavedWorkTest, OpeningIsNoChangeAndImportingIs)
{
    const QString part = WriteTetrahedron("part.stl");
    EXPECT_TRUE(window.OpenFile(part));
    EXPECT_FALSE(Asks()) << "all of it is in the file";
    EXPECT_TRUE(window.OpenFile(part));
    EXPECT_EQ(2, GetEnvironment()->GetContainer()->GetNumGeometry());
    EXPECT_TRUE(Asks()) << "no file holds both";
    SaveAs(GetPath("document.ZORCont"));
    EXPECT_FALSE(Asks());
    EXPECT_TRUE(window.OpenFile(part));
    EXPECT_TRUE(Asks()) << "the file of the document lacks the last part";
    SaveAs(GetPath("document.ZORCont"));
    Trigger("_NewAction");
    EXPECT_TRUE(boxes.Take().isEmpty());
    EXPECT_TRUE(window.OpenFile(GetPath("document.ZORCont")));
    EXPECT_EQ(3, GetEnvironment()->GetContainer()->GetNumGeometry());
    EXPECT_FALSE(Asks());
}

TEST_F(ZORHostUnsavedWorkTest, OpeningDoesNotHideEarlierChanges)
{
    AddBox("Box");
    EXPECT_TRUE(window.OpenFile(WriteTetrahedron("part.stl")));
    EXPECT_TRUE(Asks());
    EXPECT_FALSE(window.OpenFile(GetPath("missing.stl")));
    EXPECT_EQ(1, boxes.TakeErrors().size());
    EXPECT_TRUE(Asks());
}

TEST_F(ZORHostUnsavedWorkTest, AnEmptiedDocumentWithoutFileHasNothingToSave)
{
    delete AddBox("Box");
    EXPECT_FALSE(Asks());
}

TEST_F(ZORHostUnsavedWorkTest, ANameWithoutSuffixIsCompletedBeforeTheQuestionWhetherToReplaceTheFile)
{
    AddBox("Box");
    const QString file = WriteFile("document.ZORCont", "precious");
    // A person presses Save in the file dialog; the answer to the question is its default, No.
    answers.Answer("QFileDialog", [](QDialog* dialog) {
        dialog->findChild<QLineEdit*>("fileNameEdit")->setText("document");
        dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Save)->click();
        EXPECT_TRUE(dialog->isVisible());
        dialog->reject();
    });
    GetSettings()->setValue("Host/DocumentFile", GetPath("other.ZORCont"));
    Trigger("_SaveDocumentAction");
    const QList<MessageBoxCatcher::Box> shown = boxes.Take();
    ASSERT_EQ(1, shown.size());
    EXPECT_TRUE(shown[0].text.contains("document.ZORCont")) << shown[0].text.toStdString();
    QFile kept(file);
    ASSERT_TRUE(kept.open(QIODevice::ReadOnly));
    EXPECT_EQ(QByteArray("precious"), kept.readAll());
}

TEST_F(ZORHostUnsavedWorkTest, NothingIsAskedWhereNobodyAnswers)
{
    AddBox("Box");
    window.SetAsksToSave(false);
    EXPECT_TRUE(window.close());
    EXPECT_TRUE(boxes.Take().isEmpty());
}

TEST_F(ZORHostUnsavedWorkTest, CodeThatQuitsTheProgramIsNotAsked)
{
    AddBox("Box");
    QEvent quit(QEvent::Quit); // as QCoreApplication::quit() sends it from a running event loop
    QCoreApplication::sendEvent(qApp, &quit);
    EXPECT_FALSE(window.isVisible());
    EXPECT_TRUE(boxes.Take().isEmpty());
    // The event has marked the program as one that ends, in which no dialog runs, until an event loop has run.
    QTimer::singleShot(0, qApp, [] { QCoreApplication::exit(); });
    QCoreApplication::exec();
    window.show();
    EXPECT_TRUE(Asks()) << "only while the program quits";
}

TEST_F(ZORHostUnsavedWorkTest, FollowsTheCurrentEnvironment)
{
    AddBox("Box");
    auto* const manager = ZORFeatEnvironmentManager::GetManager();
    {
        ZORFeatEnvironment other;
        manager->SetCurrentEnvironment(&other);
        EXPECT_FALSE(Asks()) << "the box is in the former document";
        other.GetContainer()->GetFeatureRoot("ZORFeatRoot");
        EXPECT_TRUE(Asks());
    }
    EXPECT_FALSE(Asks()) << "no document";
}

TEST_F(ZORHostUnsavedWorkTest, AnEndWithoutAQuestionRescuesTheDocument)
{
    window.RescueDocument();
    EXPECT_TRUE(ZORHostRescue::TakeNotices().isEmpty()) << "nothing to lose";
    AddBox("Box");
    window.SetAsksToSave(false);
    window.RescueDocument();
    EXPECT_TRUE(ZORHostRescue::TakeNotices().isEmpty()) << "whoever does not ask discards";
    window.SetAsksToSave(true);
    window.RescueDocument();
    window.RescueDocument(); // once more in the same second
    EXPECT_TRUE(boxes.Take().isEmpty());
    const QDir folder(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + "/rescued");
    const QFileInfoList files = folder.entryInfoList({"*.ZORCont"}, QDir::Files);
    ASSERT_EQ(2, files.size());
    for (const QFileInfo& file : files) // another host may end in the same second
        EXPECT_TRUE(file.fileName().contains(QStringLiteral("-%1").arg(QCoreApplication::applicationPid())));
    EXPECT_EQ(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner,
              QFile::permissions(folder.path()) & ~QFile::Permissions(0x0700));
    const QStringList notices = ZORHostRescue::TakeNotices();
    ASSERT_EQ(2, notices.size());
    for (const QFileInfo& file : files) {
        EXPECT_TRUE(notices.contains(
            QStringLiteral("A session was ended with unsaved changes. Its document is in '%1'.")
                .arg(file.filePath())));
    }
    EXPECT_TRUE(ZORHostRescue::TakeNotices().isEmpty());
    const int before = GetEnvironment()->GetContainer()->GetNumGeometry();
    EXPECT_TRUE(window.OpenFile(files[1].filePath()));
    EXPECT_EQ(2 * before, GetEnvironment()->GetContainer()->GetNumGeometry());
    EXPECT_TRUE(Asks()) << "the changes are in no file of the user's choice";
    QDir(folder).removeRecursively();
}

/// Takes the place of the preferred folder for rescued documents.
class BlockedRescueFolder
{
public:
    BlockedRescueFolder()
        : m_file(ZORHostRescue::GetFolders().constFirst())
    {
        EXPECT_TRUE(QDir().mkpath(QFileInfo(m_file).path()));
        EXPECT_TRUE(m_file.open(QIODevice::WriteOnly));
    }
    ~BlockedRescueFolder() { EXPECT_TRUE(m_file.remove()); }
    Q_DISABLE_COPY_MOVE(BlockedRescueFolder)

    QFile::Permissions GetPermissions() const { return QFile::permissions(m_file.fileName()); }

private:
    QFile m_file;
};

TEST_F(ZORHostUnsavedWorkTest, ASecondFolderTakesTheDocumentWhereTheFirstCannot)
{
    qputenv("TMPDIR", QFile::encodeName(GetPath(".")));
    const BlockedRescueFolder blocked;
    AddBox("Box");
    window.RescueDocument();
    const QStringList notices = ZORHostRescue::TakeNotices();
    ASSERT_EQ(1, notices.size());
    EXPECT_TRUE(notices[0].contains(ZORHostRescue::GetFolders().constLast() + '/'));
    const QList<ZORHostRescue::Entry> entries = ZORHostRescue::FindAbandoned();
    ASSERT_EQ(1, entries.size());
    EXPECT_TRUE(notices[0].contains(entries[0].path));
    qunsetenv("TMPDIR");
}

TEST_F(ZORHostUnsavedWorkTest, ADocumentThatCannotBeRescuedIsNamedInTheLog)
{
    qputenv("TMPDIR", QFile::encodeName(WriteFile("file", "takes the place of the second folder")));
    const BlockedRescueFolder blocked;
    const QFile::Permissions before = blocked.GetPermissions();
    AddBox("Box");
    const WarningCatcher warnings;
    window.RescueDocument();
    EXPECT_EQ(before, blocked.GetPermissions());
    EXPECT_EQ(1, warnings.GetLines()
                     .filter("The unsaved changes of the document are lost: Cannot write into the folder '")
                     .size());
    EXPECT_TRUE(ZORHostRescue::TakeNotices().isEmpty());
    EXPECT_TRUE(boxes.Take().isEmpty());
    qunsetenv("TMPDIR");
}

} // namespace
