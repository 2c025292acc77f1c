// Tests of work directories that processes leave which are killed.

#include "HelpersTest.h"

#include <QDir>
#include <QFile>
#include <QProcess>

#include <memory>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

class ZORWorkDirectoryTest : public HelpersTest
{
protected:
    ZORWorkDirectoryTest() { EXPECT_TRUE(QFile::link(GetProgram("impostor"), m_programs.filePath("host"))); }

    /// Starts a process that runs a job in the same base directory, and waits until it does.
    std::unique_ptr<QProcess> StartHost() const
    {
        auto process = std::make_unique<QProcess>();
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("TMPDIR", base.path());
        process->setProcessEnvironment(environment);
        process->start(m_programs.filePath("host"), {GetProgram("helper"), "interim better"});
        EXPECT_TRUE(QTest::qWaitFor([&] { return process->bytesAvailable() > 0; }, kPatience));
        return process;
    }
    /// A folder that looks as if a process had left it, with a file in a folder in it.
    QString MakeRoom(const QString& name, int mode = 0700) const
    {
        const QString path = base.filePath(name);
        EXPECT_TRUE(QDir().mkpath(path + "/job-abc/inner"));
        QFile file(path + "/job-abc/inner/part.msi");
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        EXPECT_EQ(0, chmod(QFile::encodeName(path).constData(), mode_t(mode)));
        return path;
    }
    /// Runs a job in the base directory, and waits until the last one of the folders by its name has been removed.
    void RunUntilRemoved(const QString& room)
    {
        EXPECT_EQ("on", RunJob("echo on"));
        EXPECT_TRUE(QTest::qWaitFor([&] { return !QFile::exists(room); }, kPatience)) << room.toStdString();
    }

private:
    const QTemporaryDir m_programs;
};

TEST_F(ZORWorkDirectoryTest, WhatAKilledProcessLeavesIsRemovedByTheNextOne)
{
    const std::unique_ptr<QProcess> host = StartHost();
    const QStringList rooms = GetRooms();
    ASSERT_EQ(1, rooms.size());
    EXPECT_TRUE(rooms.constFirst().startsWith(QStringLiteral("zorjobs-%1-").arg(host->processId())));
    ASSERT_EQ(1, GetDirectories().filter("job-").size());
    host->kill();
    ASSERT_TRUE(host->waitForFinished(kPatience));
    EXPECT_EQ(rooms, GetRooms());
    RunUntilRemoved(base.filePath(rooms.constFirst()));
}

TEST_F(ZORWorkDirectoryTest, WhatALivingProcessUsesStays)
{
    const std::unique_ptr<QProcess> host = StartHost();
    const QStringList rooms = GetRooms();
    ASSERT_EQ(1, rooms.size());
    const QString abandoned = MakeRoom("zorjobs-zzz");
    RunUntilRemoved(abandoned);
    EXPECT_TRUE(GetRooms().contains(rooms.constFirst()));
    EXPECT_TRUE(QFile::exists(base.filePath(rooms.constFirst()) + "/lock"));
    host->kill();
    ASSERT_TRUE(host->waitForFinished(kPatience));
    EXPECT_TRUE(QDir(base.filePath(rooms.constFirst())).removeRecursively());
}

TEST_F(ZORWorkDirectoryTest, WhatIsNotOursStays)
{
    const QString shared = MakeRoom("zorjobs-1-shared", 0755), plain = MakeRoom("other-1"),
                  target = MakeRoom("target");
    ASSERT_TRUE(QFile::link(target, base.filePath("zorjobs-1-link")));
    QFile file(base.filePath("zorjobs-1-file"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    const QString foreign = MakeRoom("zorjobs-1-foreign");
    const bool isForeign = chown(QFile::encodeName(foreign).constData(), 1, 1) == 0; // as root only
    RunUntilRemoved(MakeRoom("zorjobs-1-zzz"));
    for (const QString& kept : {shared, plain, target})
        EXPECT_TRUE(QFile::exists(kept + "/job-abc/inner/part.msi")) << kept.toStdString();
    EXPECT_EQ(isForeign, QFile::exists(foreign));
    EXPECT_TRUE(file.exists());
    EXPECT_TRUE(QFileInfo(base.filePath("zorjobs-1-link")).isSymLink());
    for (const QString& name : {shared, foreign})
        QDir(name).removeRecursively();
    QFile::remove(base.filePath("zorjobs-1-link"));
    file.remove();
}

TEST_F(ZORWorkDirectoryTest, LinksInALeftFolderAreNotFollowed)
{
    const QString outside = MakeRoom("outside"), room = MakeRoom("zorjobs-1-abc");
    ASSERT_TRUE(QFile::link(outside, room + "/job-abc/link"));
    ASSERT_TRUE(QFile::link(outside, room + "/link"));
    RunUntilRemoved(room);
    EXPECT_TRUE(QFile::exists(outside + "/job-abc/inner/part.msi"));
}

TEST_F(ZORWorkDirectoryTest, FolderOfAProcessIsRemovedWithItsLastJob)
{
    ZORWorkResponse* const first = Add("wait");
    ZORWorkResponse* const second = Add("wait");
    processor->SetMaximumThreads(2);
    processor->SetPlace(ZORWorkProcessor::Threads);
    processor->Execute();
    ASSERT_TRUE(WaitFor(first, Status::Running));
    ASSERT_TRUE(WaitFor(second, Status::Running));
    EXPECT_EQ(1, GetRooms().size());
    struct stat status = {};
    EXPECT_EQ(0, stat(QFile::encodeName(base.filePath(GetRooms().value(0))).constData(), &status));
    EXPECT_EQ(mode_t(0700), status.st_mode & 0777);
    EXPECT_EQ(2, GetDirectories().size());
    processor->Cancel(first);
    ASSERT_TRUE(WaitForEnd(first));
    EXPECT_EQ(1, GetRooms().size());
    processor->Cancel(second);
    ASSERT_TRUE(WaitForEnd(second));
    EXPECT_TRUE(QTest::qWaitFor([this] { return GetRooms().isEmpty(); }, kPatience));
}

TEST_F(ZORWorkDirectoryTest, FolderThatSomebodyRemovesIsMadeAgain)
{
    ZORWorkResponse* const response = Add("wait");
    processor->SetMaximumThreads(2);
    processor->Execute();
    ASSERT_TRUE(WaitFor(response, Status::Running));
    ASSERT_EQ(1, GetRooms().size());
    ASSERT_TRUE(QDir(base.filePath(GetRooms().constFirst())).removeRecursively());
    EXPECT_EQ("on", RunJob("echo on"));
    processor->Stop();
    EXPECT_TRUE(WaitForEnd(response));
}

TEST_F(ZORWorkDirectoryTest, DirectoryThatIsKeptLiesInTheBaseDirectoryItself)
{
    ZORWorkJob job;
    job.name = QStringLiteral("kept");
    job.kind = "test";
    job.input = "file";
    job.isDirectoryKept = true;
    const ZORWorkResponse* const response = processor->AddJob(job);
    processor->Execute();
    ASSERT_TRUE(WaitForEnd(response));
    const QString path = response->GetWorkDirectory();
    EXPECT_EQ(base.path(), QFileInfo(path).path());
    EXPECT_EQ(QStringList(), GetRooms());
    processor.reset();
    EXPECT_TRUE(QFile::exists(path + "/made.txt"));
}

} // namespace
