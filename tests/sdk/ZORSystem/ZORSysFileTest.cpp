#include "SystemCallFaults.h"
#include "support/FileContent.h"
#include "support/HostileFiles.h"
#include "support/Printers.h"

#include <ZORSystem/ZORSysFile.h>

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <unistd.h>

namespace {

const QString kIrregular = "it is not a regular file";

class ZORSysFileTest : public testing::Test
{
protected:
    QString PutFile(const QString& name, const QByteArray& content) const
    {
        QFile file(folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        EXPECT_EQ(content.size(), file.write(content));
        return file.fileName();
    }
    QString MakeLink(const QString& name, const QString& target) const
    {
        EXPECT_TRUE(QFile::link(target, folder.filePath(name)));
        return folder.filePath(name);
    }
    const QTemporaryDir folder;
};

TEST_F(ZORSysFileTest, OpensRegularFilesAndLinksToThemForReading)
{
    const QString path = PutFile("a", "content");
    for (const QString& name : {path, MakeLink("link", path)}) {
        EXPECT_EQ(QString(), ZORSysFile::FindObstacle(name, QIODevice::ReadOnly));
        ZORSysFile file(name);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << file.errorString().toStdString();
        EXPECT_EQ(name, file.fileName());
        EXPECT_EQ(7, file.size());
        EXPECT_FALSE(file.isSequential());
        EXPECT_EQ(QByteArray("content"), file.readAll());
        EXPECT_TRUE(file.atEnd());
        EXPECT_TRUE(file.seek(3));
        EXPECT_EQ(QByteArray("tent"), file.readAll());
        file.close();
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        EXPECT_EQ(QByteArray("content"), file.readAll());
    }
}

// A pipe without another end would keep a plain QFile waiting for ever.
TEST_F(ZORSysFileTest, RefusesWhatMayHaveToBeWaitedFor)
{
    const QStringList irregular = HostileFiles::MakeIrregular(folder.path());
    for (const QString& path : irregular) {
        for (const auto mode :
             {QIODevice::ReadOnly, QIODevice::WriteOnly, QIODevice::ReadWrite, QIODevice::Append}) {
            EXPECT_EQ(kIrregular, ZORSysFile::FindObstacle(path, mode)) << path.toStdString();
            ZORSysFile file(path);
            EXPECT_FALSE(file.open(mode));
            EXPECT_FALSE(file.isOpen());
            EXPECT_EQ(kIrregular, file.errorString()) << path.toStdString();
        }
    }
    EXPECT_EQ("it is a folder", ZORSysFile::FindObstacle(folder.path(), QIODevice::ReadOnly));
    ZORSysFile file(folder.path());
    EXPECT_FALSE(file.open(QIODevice::WriteOnly));
    EXPECT_EQ("it is a folder", file.errorString());
}

TEST_F(ZORSysFileTest, WritesToTheNullAndFullDevicesButDoesNotReadThem)
{
    for (const QString& path : QStringList({"/dev/null", "/dev/full"})) {
        if (!QFileInfo::exists(path))
            GTEST_SKIP() << path.toStdString() << " is missing";
        EXPECT_EQ(kIrregular, ZORSysFile::FindObstacle(path, QIODevice::ReadOnly));
        EXPECT_EQ(kIrregular, ZORSysFile::FindObstacle(path, QIODevice::ReadWrite));
        EXPECT_EQ(QString(), ZORSysFile::FindObstacle(path, QIODevice::WriteOnly));
        ZORSysFile file(path);
        EXPECT_FALSE(file.open(QIODevice::ReadOnly));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
            << file.errorString().toStdString();
        EXPECT_EQ(path == "/dev/full" ? -1 : 3, file.write("abc"));
    }
}

TEST_F(ZORSysFileTest, GivesTheReasonOfTheSystem)
{
    const QString missing = folder.filePath("missing");
    EXPECT_EQ(QString(), ZORSysFile::FindObstacle(missing, QIODevice::ReadOnly));
    for (const QString& path :
         {missing, QString(), folder.filePath("missing/file"), MakeLink("dangling", missing)}) {
        ZORSysFile file(path);
        EXPECT_FALSE(file.open(QIODevice::ReadOnly));
        EXPECT_EQ("No such file or directory", file.errorString());
    }
    EXPECT_FALSE(QFileInfo::exists(missing)) << "reading creates nothing";
    PutFile("present", "content");
    ZORSysFile present(folder.filePath("present"));
    EXPECT_FALSE(present.open(QIODevice::WriteOnly | QIODevice::NewOnly));
    EXPECT_EQ("File exists", present.errorString());
    ZORSysFile absent(missing);
    EXPECT_FALSE(absent.open(QIODevice::WriteOnly | QIODevice::ExistingOnly));
    EXPECT_EQ("No such file or directory", absent.errorString());
    ZORSysFile zero(folder.filePath("present") + QChar::Null);
    EXPECT_FALSE(zero.open(QIODevice::ReadOnly));
    EXPECT_EQ("Invalid argument", zero.errorString());
}

TEST_F(ZORSysFileTest, WritesAsAnyFileDoes)
{
    const QString path = folder.filePath("new");
    const auto write = [&path](QIODevice::OpenMode mode, const QByteArray& content) {
        ZORSysFile file(path);
        return file.open(mode) && file.write(content) == content.size() && file.flush();
    };
    EXPECT_TRUE(write(QIODevice::WriteOnly, "first content"));
    EXPECT_EQ(QByteArray("first content"), ReadFile(path));
    EXPECT_TRUE(write(QIODevice::ReadWrite, "FIRST"));
    EXPECT_EQ(QByteArray("FIRST content"), ReadFile(path));
    EXPECT_TRUE(write(QIODevice::Append, "!"));
    EXPECT_EQ(QByteArray("FIRST content!"), ReadFile(path));
    EXPECT_TRUE(write(QIODevice::WriteOnly, "x"));
    EXPECT_EQ(QByteArray("x"), ReadFile(path));
    EXPECT_TRUE(write(QIODevice::WriteOnly | QIODevice::Text, "y\n"));
    EXPECT_EQ(QByteArray("y\n"), ReadFile(path));
    const QString target = PutFile("target", "old");
    const QString link = MakeLink("link", target);
    ZORSysFile file(link);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("new");
    file.close();
    EXPECT_EQ(QByteArray("new"), ReadFile(target));
    EXPECT_TRUE(QFileInfo(link).isSymLink());
}

// A reader that follows a file which another program keeps appending to would never reach an end.
TEST_F(ZORSysFileTest, AFileThatGrowsEndsWhereItEndedWhenItWasOpened)
{
    const QByteArray content(100000, 'a');
    const QString path = PutFile("growing", content);
    for (const auto mode :
         {QIODevice::OpenMode(QIODevice::ReadOnly), QIODevice::ReadOnly | QIODevice::Unbuffered}) {
        ZORSysFile file(path);
        ASSERT_TRUE(file.open(mode));
        const qint64 size = file.size();
        QByteArray read = file.read(10);
        QFile other(path);
        ASSERT_TRUE(other.open(QIODevice::Append));
        other.write(QByteArray(50000, 'b'));
        other.close();
        EXPECT_EQ(size, file.size());
        while (!file.atEnd())
            read += file.read(4096);
        EXPECT_EQ(size, read.size());
        EXPECT_EQ(QByteArray(), file.read(1));
        EXPECT_TRUE(file.seek(0));
        EXPECT_EQ(size, file.readAll().size());
    }
    ZORSysFile file(PutFile("empty", ""));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    PutFile("empty", "more");
    EXPECT_EQ(QByteArray(), file.readAll());
}

TEST_F(ZORSysFileTest, AFileThatIsShortenedEndsEarlier)
{
    const QString path = PutFile("shrinking", QByteArray(100000, 'a'));
    ZORSysFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    ASSERT_EQ(0, truncate(qPrintable(path), 50000));
    QByteArray read;
    while (!file.atEnd())
        read += file.read(4096);
    EXPECT_EQ(50000, read.size());
    ASSERT_EQ(0, truncate(qPrintable(path), 10));
    EXPECT_TRUE(file.seek(0));
    EXPECT_EQ(10, file.readAll().size());
    EXPECT_EQ(QFile::NoError, file.error());
}

// Such files of the system claim to be regular; reading the log of the kernel waits for its next line.
TEST_F(ZORSysFileTest, FilesOfTheSystemWithoutASizeAreEmpty)
{
    for (const QString& path : QStringList({"/proc/kmsg", "/proc/self/status"})) {
        ZORSysFile file(path);
        if (file.open(QIODevice::ReadOnly)) {
            EXPECT_EQ(QByteArray(), file.readAll()) << path.toStdString();
            EXPECT_TRUE(file.atEnd());
        }
    }
}

// The memory of a process is a regular file whose beginning can never be read.
TEST_F(ZORSysFileTest, EmptyFilesThatCannotBeReadAreRefused)
{
    ZORSysFile file("/proc/self/mem");
    EXPECT_FALSE(file.open(QIODevice::ReadOnly));
    EXPECT_FALSE(file.isOpen());
    EXPECT_EQ("read error: Input/output error", file.errorString());
    EXPECT_FALSE(file.open(QIODevice::ReadOnly | QIODevice::Unbuffered));
}

TEST_F(ZORSysFileTest, ErrorsOfReadingHaveAReason)
{
    const SystemCallFaults faults;
    ZORSysFile file(PutFile("a", "content"));
    EXPECT_EQ(QString(), file.GetReadError());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly | QIODevice::Unbuffered));
    EXPECT_EQ(QByteArray("con"), file.read(3));
    EXPECT_EQ(QString(), file.GetReadError());
    SystemCallFaults::cannotRead = true;
    EXPECT_EQ(QByteArray(), file.readAll());
    EXPECT_EQ("read error: Input/output error", file.GetReadError());
    file.close();
    SystemCallFaults::cannotRead = false;
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(QByteArray("content"), file.readAll());
    EXPECT_EQ(QString(), file.GetReadError());
}

TEST_F(ZORSysFileTest, ProgramsThatAreStartedInheritNothing)
{
    ZORSysFile file(PutFile("a", "content"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_NE(0, fcntl(file.handle(), F_GETFD) & FD_CLOEXEC);
}

} // namespace
