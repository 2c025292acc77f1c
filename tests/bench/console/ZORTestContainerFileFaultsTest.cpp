// Container files that cannot be read or written.

#include "ContainerCommandTest.h"
#include "console/ZORTestLoadContainerCmd.h"
#include "console/ZORTestMainDialog.h"
#include "console/ZORTestSaveContainerCmd.h"
#include "support/HostileDisk.h"
#include "support/HostileFiles.h"
#include "support/MessageOf.h"

#include <ZORSystem/ZORSysException.h>

#include <QDir>
#include <QFileInfo>

#include <cmath>

namespace {

using ContainerFileFaultsTest = ContainerCommandTest;

TEST_F(ContainerFileFaultsTest, ReportsFilesThatCannotBeOpened)
{
    answers.AnswerFile(GetPath("part.ZORCont"), [this] { QDir().mkpath(path); });
    Open("ZORTestSaveContainerCmd");
    EXPECT_EQ(QList{ErrorBox("Cannot open the file for writing.")}, boxes.Take());
    QDir().rmdir(path);
    QFile(path).open(QIODevice::WriteOnly);
    answers.AnswerFile(path, [this] { QFile::remove(path); });
    Open("ZORTestLoadContainerCmd");
    EXPECT_EQ(QList{ErrorBox("Cannot open the file for reading.")}, boxes.Take());
    EXPECT_EQ(QList<bool>({false, false}), finished);
    EXPECT_TRUE(GetSettings()->allKeys().isEmpty());
}

TEST_F(ContainerFileFaultsTest, ReportsFoldersInsteadOfFiles)
{
    const QString folder = GetPath("folder.ZORCont");
    ASSERT_TRUE(QDir().mkpath(folder));
    for (const char* name : {"ZORTestSaveContainerCmd", "ZORTestLoadContainerCmd"}) {
        QFile::remove(path);
        QFile(path).open(QIODevice::WriteOnly);
        answers.AnswerFile(path, [this, folder] {
            QFile::remove(path);
            QFile::link(folder, path);
        });
        Open(name);
    }
    EXPECT_EQ(
        (QList{ErrorBox("Cannot open the file for writing."), ErrorBox("Cannot open the file for reading.")}),
        boxes.Take());
    EXPECT_EQ(QList<bool>({false, false}), finished);
}

TEST_F(ContainerFileFaultsTest, APipeIsReportedAsAFileThatCannotBeOpened)
{
    AddPoint("P");
    answers.AnswerFile(HostileFiles::MakePipe(QFileInfo(path).absolutePath(), "pipe.ZORCont"));
    Open("ZORTestLoadContainerCmd");
    EXPECT_EQ(QList{ErrorBox("Cannot open the file for reading.")}, boxes.Take());
    EXPECT_EQ(QList<bool>({false}), finished);
}

TEST_F(ContainerFileFaultsTest, KeepsAFileThatMustNotBeWritten)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("kept");
    file.close();
    file.setPermissions(QFileDevice::ReadOwner);
    answers.AnswerFile(path);
    {
        const WithoutRoot user;
        Open("ZORTestSaveContainerCmd");
    }
    EXPECT_EQ(QList{ErrorBox("Cannot open the file for writing.")}, boxes.Take());
    EXPECT_EQ(QByteArray("kept"), ReadFile(path));
}

TEST_F(ContainerFileFaultsTest, ATruncatedFileAddsNothing)
{
    OpenConsole();
    AddPoint("P", {1, 2, 3});
    Save();
    QFile file(path);
    ASSERT_TRUE(file.resize(file.size() - 1));
    answers.AnswerFile(path);
    TriggerMenu("_FileMenuLoadAction");
    const QList<MessageBoxCatcher::Box> shown = boxes.Take();
    ASSERT_EQ(1, shown.size());
    EXPECT_TRUE(shown[0].text.startsWith("container file is damaged: ")) << shown[0].text.toStdString();
    EXPECT_EQ(1, GetContainer()->GetNumGeometry());
}

TEST_F(ContainerFileFaultsTest, ReportsAFullDiskAndKeepsThePath)
{
    if (!QFile::exists("/dev/full"))
        GTEST_SKIP() << "no device that is always full";
    OpenConsole();
    AddPoint("P");
    answers.AnswerFile("/dev/full");
    TriggerMenu("_FileMenuSaveAction");
    const QList<MessageBoxCatcher::Box> shown = boxes.Take();
    ASSERT_EQ(1, shown.size());
    EXPECT_EQ(QString("cannot write the container file: No space left on device"), shown[0].text);
    EXPECT_FALSE(GetSettings()->contains("Debug/SaveContainer/Dir"));
}

TEST_F(ContainerFileFaultsTest, AFullDiskKeepsAFileThatCanOnlyBeOverwritten)
{
    const QString folder = GetPath("fixed");
    const QString file = folder + "/part.ZORCont";
    ASSERT_TRUE(QDir().mkpath(folder));
    AddPoint("P");
    answers.AnswerFile(file);
    Open("ZORTestSaveContainerCmd");
    const QByteArray before = ReadFile(file);
    for (int i = 0; i < 500; ++i)
        AddPoint(QStringLiteral("Q%1").arg(i * i), ZORMathPoint(1.0 / (i + 3), i, std::sqrt(i)));
    finished.clear();
    {
        const ReadOnlyFolder readOnly(folder);
        const FileSizeLimit limit(rlim_t(before.size() + 1000));
        answers.AnswerFile(file);
        EXPECT_EQ("cannot write the container file: File too large",
                  MessageOf([this] { Open("ZORTestSaveContainerCmd"); }));
    }
    EXPECT_EQ(before, ReadFile(file));
    const ReadOnlyFolder readOnly(folder);
    answers.AnswerFile(file);
    Open("ZORTestSaveContainerCmd");
    EXPECT_LT(before.size(), ReadFile(file).size());
    EXPECT_EQ(QList<bool>({true}), finished);
    EXPECT_EQ(QStringList("part.ZORCont"), QDir(folder).entryList(QDir::Files | QDir::Hidden));
}

TEST_F(ContainerFileFaultsTest, KeepsThePresentFileWhenSavingFails)
{
    AddPoint("P");
    Save();
    const QByteArray before = ReadFile(path);
    class Unsaved : public ZORGeoGeometry
    {
    public:
        explicit Unsaved(ZORGeoContainer* container)
            : ZORGeoGeometry(container)
        {
        }
    };
    (new Unsaved(GetContainer()))->Initialize();
    answers.AnswerFile(path);
    EXPECT_THROW(Open("ZORTestSaveContainerCmd"), ZORSysException);
    EXPECT_EQ(before, ReadFile(path));
}

TEST_F(ContainerFileFaultsTest, ShowsWhatIsWrongWithALoadedFile)
{
    OpenConsole();
    AddPoint("P");
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("solid part");
    file.close();
    answers.AnswerFile(path);
    TriggerMenu("_FileMenuLoadAction");
    EXPECT_EQ(
        (QList{MessageBoxCatcher::Box{QMessageBox::Critical, "Error", "the file is not a container file",
                                      QMessageBox::Ok, console.data()}}),
        boxes.Take());
    EXPECT_EQ(1, GetContainer()->GetNumGeometry());
    EXPECT_FALSE(GetSettings()->contains("Debug/LoadContainer/Dir"));
}

} // namespace
