// Tests of ZORSysReplacedFile where files cannot be replaced, and of its faults.

#include "sdk/ZORSystem/SystemCallFaults.h"
#include "support/HostileDisk.h"
#include "support/MessageOf.h"
#include "support/Printers.h"

#include <ZORSystem/ZORSysFileException.h>
#include <ZORSystem/ZORSysReplacedFile.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

namespace {

class ZORSysOverwritingTest : public testing::Test
{
protected:
    ZORSysOverwritingTest() { Put(path, oldContent); }

    static QByteArray Get(const QString& name)
    {
        QFile file(name);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
    }
    static void Put(const QString& name, const QByteArray& content)
    {
        QFile file(name);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }
    static struct stat StatusOf(const QString& name)
    {
        struct stat status = {};
        EXPECT_EQ(0, stat(QFile::encodeName(name).constData(), &status)) << name.toStdString();
        return status;
    }
    QStringList GetFiles() const { return QDir(folder.path()).entryList(QDir::Files | QDir::Hidden); }
    /// The error of replacing the content of the file; empty when there is none.
    QString Replace(const QByteArray& content) const { return ZORSysReplacedFile::Replace(path, content); }

    const QTemporaryDir folder;
    const QString path = folder.filePath("file");
    const QByteArray oldContent = QByteArray("old content ").repeated(100'000);
    const SystemCallFaults faults;
};

TEST_F(ZORSysOverwritingTest, AFileInAReadOnlyFolderIsOverwritten)
{
    const ino_t before = StatusOf(path).st_ino;
    const ReadOnlyFolder readOnly(folder.path());
    for (const QByteArray& content :
         {QByteArray("shorter"), oldContent + "longer", QByteArray(), oldContent}) {
        EXPECT_EQ(QString(), Replace(content));
        EXPECT_TRUE(content == Get(path));
    }
    EXPECT_EQ(before, StatusOf(path).st_ino);
    EXPECT_EQ(QStringList("file"), GetFiles());
}

TEST_F(ZORSysOverwritingTest, NothingIsTouchedBeforeTheCommit)
{
    const ReadOnlyFolder readOnly(folder.path());
    ZORSysReplacedFile file(path);
    file.Open();
    EXPECT_TRUE(file.Write("new"));
    EXPECT_TRUE(oldContent == Get(path));
    EXPECT_TRUE(file.Commit());
    EXPECT_EQ("new", Get(path));
    EXPECT_FALSE(file.Commit()) << "it is closed";
}

TEST_F(ZORSysOverwritingTest, AFullDiskIsNoticedBeforeAnythingIsOverwritten)
{
    const ReadOnlyFolder readOnly(folder.path());
    ZORSysReplacedFile file(path);
    file.Open();
    {
        const FileSizeLimit limit(rlim_t(oldContent.size()) + 100);
        EXPECT_FALSE(file.Write(oldContent + QByteArray(200, 'x')));
        EXPECT_EQ("File too large", file.GetErrorString());
    }
    EXPECT_TRUE(file.Write("more"));
    EXPECT_FALSE(file.Commit()) << "a piece is missing";
    EXPECT_EQ("File too large", file.GetErrorString());
    EXPECT_TRUE(oldContent == Get(path));
}

TEST_F(ZORSysOverwritingTest, ADiskWithoutSpaceForAllOfItKeepsTheOldContent)
{
    SmallDisk disk(256 * 1024);
    if (!disk.IsMounted())
        GTEST_SKIP() << "this user must not mount a disk";
    const QString file = disk.GetPath("file");
    const QByteArray content(200 * 1024, 'o');
    Put(file, content);
    const ReadOnlyFolder readOnly(disk.GetFolder());
    EXPECT_EQ("No space left on device", ZORSysReplacedFile::Replace(file, QByteArray(300 * 1024, 'n')));
    EXPECT_TRUE(content == Get(file));
    EXPECT_EQ(QString(), ZORSysReplacedFile::Replace(file, QByteArray(250 * 1024, 'n')));
    EXPECT_EQ(250 * 1024, QFileInfo(file).size());
}

TEST_F(ZORSysOverwritingTest, AnErrorWhileOverwritingRestoresTheOldContent)
{
    const ReadOnlyFolder readOnly(folder.path());
    const QByteArray content = QByteArray("new content").repeated(200'000);
    int pieces = 0;
    for (; pieces < 100; ++pieces) {
        const SystemCallFaults fault;
        SystemCallFaults::firstFailure = pieces;
        SystemCallFaults::failures = 1;
        const QString message = Replace(content);
        if (message.isEmpty())
            break;
        EXPECT_EQ("No space left on device", message);
        EXPECT_TRUE(oldContent == Get(path)) << pieces;
    }
    EXPECT_GT(pieces, 5);
    EXPECT_TRUE(content == Get(path));
}

TEST_F(ZORSysOverwritingTest, AnOldContentThatCannotBeRestoredIsReported)
{
    const ReadOnlyFolder readOnly(folder.path());
    SystemCallFaults::firstFailure = 5; // pieces that are copied to memory
    EXPECT_EQ("No space left on device; the old content cannot be restored: No space left on device",
              Replace("new content"));
}

TEST_F(ZORSysOverwritingTest, AFileThatCannotBeReplacedInTheEndIsOverwritten)
{
    const ino_t before = StatusOf(path).st_ino;
    for (const bool isNamed : {false, true}) {
        SystemCallFaults::hasNoUnnamedFiles = isNamed;
        ZORSysReplacedFile file(path);
        file.Open();
        EXPECT_TRUE(file.Write("new"));
        {
            const ReadOnlyFolder readOnly(folder.path());
            EXPECT_TRUE(file.Commit()) << file.GetErrorString().toStdString();
        }
        EXPECT_EQ("new", Get(path));
        EXPECT_EQ(before, StatusOf(path).st_ino);
        // Nobody can remove a name from a read-only folder.
        EXPECT_EQ(isNamed ? 2 : 1, GetFiles().size());
    }
}

TEST_F(ZORSysOverwritingTest, AReadOnlyFolderTakesNoNewFile)
{
    const QString other = folder.filePath("other");
    const ReadOnlyFolder readOnly(folder.path());
    EXPECT_EQ("cannot open file '" + other + "': Permission denied",
              MessageOf([&] { ZORSysReplacedFile(other).Open(); }));
    EXPECT_EQ(QStringList("file"), GetFiles());
}

TEST_F(ZORSysOverwritingTest, AFileIsOnlyOverwrittenWhereItCanBeRead)
{
    const QByteArray folderName = QFile::encodeName(folder.path());
    for (const mode_t mode : {0444, 0222}) {
        ASSERT_EQ(0, chmod(QFile::encodeName(path).constData(), mode));
        ASSERT_EQ(0, chmod(folderName.constData(), 0555));
        {
            const WithoutRoot user;
            EXPECT_EQ("Permission denied", Replace("new"));
        }
        ASSERT_EQ(0, chmod(folderName.constData(), 0755));
    }
    ASSERT_EQ(0, chmod(QFile::encodeName(path).constData(), 0644));
    EXPECT_TRUE(oldContent == Get(path));
}

TEST_F(ZORSysOverwritingTest, FoldersThatVanishLoseNothingElse)
{
    ZORSysReplacedFile file(path);
    file.Open();
    EXPECT_TRUE(file.Write("new"));
    ASSERT_TRUE(QDir(folder.path()).removeRecursively());
    EXPECT_FALSE(file.Commit());
    EXPECT_EQ("No such file or directory", file.GetErrorString());
    EXPECT_FALSE(QFileInfo::exists(folder.path()));
    EXPECT_EQ("No such file or directory", Replace("new"));
}

TEST_F(ZORSysOverwritingTest, FilesWithoutUnnamedOnesAreReplacedInOneStepToo)
{
    SystemCallFaults::hasNoUnnamedFiles = true;
    const ino_t before = StatusOf(path).st_ino;
    {
        ZORSysReplacedFile file(path);
        file.Open();
        EXPECT_TRUE(file.Write("forgotten"));
        EXPECT_EQ(2, GetFiles().size());
    }
    EXPECT_EQ(QStringList("file"), GetFiles());
    EXPECT_EQ(QString(), Replace("new"));
    EXPECT_EQ("new", Get(path));
    EXPECT_NE(before, StatusOf(path).st_ino);
    ZORSysReplacedFile file(folder.filePath("other"));
    file.Open();
    EXPECT_TRUE(file.Write("other"));
    EXPECT_TRUE(file.CommitNew());
    EXPECT_EQ("other", Get(folder.filePath("other")));
    EXPECT_EQ(QStringList({"file", "other"}), GetFiles());
}

TEST_F(ZORSysOverwritingTest, ANewFileNeverReplacesOneThatCameMeanwhile)
{
    for (const bool isNamed : {false, true}) {
        SystemCallFaults::hasNoUnnamedFiles = isNamed;
        const QString name = folder.filePath(QLatin1String(isNamed ? "named" : "unnamed"));
        ZORSysReplacedFile file(name);
        file.Open();
        EXPECT_TRUE(file.Write("mine"));
        Put(name, "other");
        EXPECT_FALSE(file.CommitNew());
        EXPECT_EQ("File exists", file.GetErrorString());
        EXPECT_EQ("other", Get(name));
    }
    ZORSysReplacedFile file(folder.filePath("third"));
    file.Open();
    EXPECT_TRUE(file.Write("mine"));
    Put(folder.filePath("third"), "other");
    EXPECT_TRUE(file.Commit());
    EXPECT_EQ("mine", Get(folder.filePath("third")));
    EXPECT_EQ(QStringList({"file", "named", "third", "unnamed"}), GetFiles());
}

TEST_F(ZORSysOverwritingTest, RightsStayAndLinksAreFollowed)
{
    const QString link = folder.filePath("link");
    const QString hardLink = folder.filePath("hard link");
    ASSERT_EQ(0, chmod(QFile::encodeName(path).constData(), 0640));
    ASSERT_TRUE(QFile::link("file", link));
    ASSERT_EQ(0, ::link(QFile::encodeName(path).constData(), QFile::encodeName(hardLink).constData()));
    for (const bool isNamed : {false, true}) {
        SystemCallFaults::hasNoUnnamedFiles = isNamed;
        ZORSysReplacedFile::Replace(link, isNamed ? "named" : "unnamed");
        EXPECT_EQ(isNamed ? "named" : "unnamed", Get(path));
        EXPECT_EQ(mode_t(S_IFREG | 0640), StatusOf(path).st_mode);
    }
    EXPECT_TRUE(QFileInfo(link).isSymLink());
    EXPECT_TRUE(oldContent == Get(hardLink));
    const QString nowhere = folder.filePath("nowhere");
    ASSERT_TRUE(QFile::link("made", nowhere));
    ZORSysReplacedFile::Replace(nowhere, "new");
    EXPECT_TRUE(QFileInfo(nowhere).isSymLink());
    EXPECT_EQ("new", Get(folder.filePath("made")));
    const mode_t mask = umask(0);
    umask(mask);
    EXPECT_EQ(S_IFREG | (0666 & ~mask), StatusOf(folder.filePath("made")).st_mode);
}

TEST_F(ZORSysOverwritingTest, AGroupThatCannotBeKeptLosesItsRights)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "only root can make files of another owner";
    ASSERT_EQ(0, chmod(QFile::encodeName(folder.path()).constData(), 0777));
    ASSERT_EQ(0, chmod(QFile::encodeName(path).constData(), 0666));
    ASSERT_EQ(0, chown(QFile::encodeName(path).constData(), 1, 12345));
    ASSERT_EQ(0, chmod(QFile::encodeName(path).constData(), 02676));
    EXPECT_EQ(QString(), Replace("new"));
    EXPECT_EQ(uid_t(1), StatusOf(path).st_uid);
    EXPECT_EQ(gid_t(12345), StatusOf(path).st_gid);
    EXPECT_EQ(mode_t(S_IFREG | 02676), StatusOf(path).st_mode) << "root keeps all";
    {
        const WithoutRoot user;
        EXPECT_EQ(QString(), Replace("newer"));
    }
    EXPECT_NE(uid_t(1), StatusOf(path).st_uid);
    EXPECT_EQ(mode_t(S_IFREG | 0666), StatusOf(path).st_mode);
}

TEST_F(ZORSysOverwritingTest, OddPathsAreRefused)
{
    ASSERT_TRUE(QFile::link("loop", folder.filePath("loop")));
    EXPECT_NE(QString(), MessageOf([this] { ZORSysReplacedFile(folder.filePath("loop")).Open(); }));
    EXPECT_NE(QString(), MessageOf([] { ZORSysReplacedFile(QString()).Open(); }));
    const QString cut = path + QChar(QChar::Null) + "tail";
    EXPECT_NE(QString(), MessageOf([&] { ZORSysReplacedFile(cut).Open(); }));
    EXPECT_TRUE(oldContent == Get(path));
}

TEST_F(ZORSysOverwritingTest, DevicesThatTakeOnlyAPartGiveTheReason)
{
    const FileSizeLimit limit(20'000);
    for (const QIODevice::OpenMode mode : {QIODevice::NotOpen, QIODevice::Unbuffered}) {
        for (const int size : {19'000, 20'000, 20'001, 25'000, 100'000}) {
            QFile file(folder.filePath("limited"));
            ASSERT_TRUE(file.open(QIODevice::WriteOnly | mode));
            const bool fits = size <= 20'000;
            EXPECT_EQ(fits, ZORSysReplacedFile::WriteAll(file, QByteArray(size, 'x'))) << size;
            EXPECT_TRUE(fits || file.errorString() == "File too large") << size;
        }
    }
}

} // namespace
