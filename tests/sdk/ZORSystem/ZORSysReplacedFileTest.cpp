#include "support/FileContent.h"
#include "support/Printers.h"

#include <ZORSystem/ZORSysFileException.h>
#include <ZORSystem/ZORSysReplacedFile.h>

#include <QDir>
#include <QFile>
#include <QFileDevice>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

class ZORSysReplacedFileTest : public testing::Test
{
protected:
    void PutContent(const QByteArray& content) const
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    const QTemporaryDir folder;
    const QString path = folder.filePath("file");
};

TEST_F(ZORSysReplacedFileTest, TheNewContentIsThereOnceItIsCommitted)
{
    PutContent("old content");
    ZORSysReplacedFile file(path);
    file.Open();
    ASSERT_EQ(3, file.GetDevice().write("new"));
    EXPECT_EQ(QByteArray("old content"), ReadFile(path));
    EXPECT_TRUE(file.Commit());
    EXPECT_EQ(QByteArray("new"), ReadFile(path));
    EXPECT_EQ(QStringList("file"), QDir(folder.path()).entryList(QDir::Files | QDir::Hidden));
}

TEST_F(ZORSysReplacedFileTest, WithoutCommitTheOldContentStays)
{
    PutContent("old content");
    {
        ZORSysReplacedFile file(path);
        file.Open();
        file.GetDevice().write("new");
    }
    EXPECT_EQ(QByteArray("old content"), ReadFile(path));
    EXPECT_EQ(QStringList("file"), QDir(folder.path()).entryList(QDir::Files | QDir::Hidden));
}

TEST_F(ZORSysReplacedFileTest, APipeIsNeitherOpenedNorReplaced)
{
    ASSERT_EQ(0, mkfifo(qPrintable(path), 0600));
    const int reader = open(qPrintable(path), O_RDONLY | O_NONBLOCK);
    ASSERT_GE(reader, 0);
    try {
        ZORSysReplacedFile(path).Open();
        ADD_FAILURE() << "no exception";
    } catch (const ZORSysFileOpenException& exception) {
        EXPECT_EQ("cannot open file '" + path + "': it is not a regular file", exception.GetMessage());
    }
    close(reader);
    struct stat status = {};
    ASSERT_EQ(0, stat(qPrintable(path), &status));
    EXPECT_TRUE(S_ISFIFO(status.st_mode));
}

TEST_F(ZORSysReplacedFileTest, TheNullDeviceIsWrittenToAndStaysADevice)
{
    ZORSysReplacedFile file("/dev/null");
    file.Open();
    EXPECT_EQ(3, file.GetDevice().write("new"));
    EXPECT_TRUE(file.Commit());
    struct stat status = {};
    ASSERT_EQ(0, stat("/dev/null", &status));
    EXPECT_TRUE(S_ISCHR(status.st_mode));
}

TEST_F(ZORSysReplacedFileTest, WhatCannotBeOpenedThrowsWithThePath)
{
    for (const QString& place : {folder.path(), folder.filePath("missing/file")}) {
        try {
            ZORSysReplacedFile(place).Open();
            ADD_FAILURE() << "no exception for " << place.toStdString();
        } catch (const ZORSysFileOpenException& exception) {
            EXPECT_TRUE(exception.GetMessage().contains(place)) << exception.GetMessage().toStdString();
        }
    }
}

TEST_F(ZORSysReplacedFileTest, NobodyElseReadsAnUnfinishedFile)
{
    const auto getRights = [this](const QString& name) {
        struct stat status = {};
        EXPECT_EQ(0, stat(QFile::encodeName(folder.filePath(name)).constData(), &status));
        return status.st_mode & mode_t(0777);
    };
    PutContent("secret");
    ASSERT_EQ(0, chmod(QFile::encodeName(path).constData(), 0600));
    const mode_t former = umask(0);
    ZORSysReplacedFile file(path);
    file.Open();
    EXPECT_TRUE(file.Write("new secret"));
    for (const QString& name : QDir(folder.path()).entryList(QDir::Files | QDir::Hidden | QDir::System))
        EXPECT_EQ(mode_t(0600), getRights(name)) << qPrintable(name);
    EXPECT_TRUE(file.Commit());
    umask(former);
    EXPECT_EQ(mode_t(0600), getRights("file"));
}

} // namespace
