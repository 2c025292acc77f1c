// Tests of ZORWorkResource.

#include "support/Printers.h"
#include "support/SharedValue.h"
#include "support/WarningCatcher.h"

#include <ZORWorker/ZORWorkResource.h>
#include <ZORWorker/ZORWorkResult.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <dlfcn.h>
#include <sys/stat.h>

namespace {

int s_examinations = 0; // of files, so far

} // namespace

// Qt calls this one instead of that of the C library.
extern "C" __attribute__((visibility("default"))) int statx(int folder, const char* path, int flags,
                                                            unsigned mask, struct statx* status) noexcept
{
    static const auto original = reinterpret_cast<decltype(&statx)>(dlsym(RTLD_NEXT, "statx"));
    ++s_examinations;
    return original(folder, path, flags, mask, status);
}

namespace {

class ZORWorkResourceTest : public testing::Test
{
protected:
    QString Write(const QString& name, const QByteArray& content) const
    {
        const QString path = base.filePath(name);
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        return path;
    }
    QByteArray Read(const QString& name) const
    {
        QFile file(base.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
        return file.readAll();
    }
    QStringList GetFiles(const QString& directory) const
    {
        return QDir(base.filePath(directory))
            .entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::System, QDir::Name);
    }

    const QTemporaryDir base;
};

TEST_F(ZORWorkResourceTest, CopyKeepsNameAndSource)
{
    EXPECT_EQ(2, int(ZORWorkResource::Copy));
    Write("out/other", "");
    const ZORWorkResource resource(Write("part.msi", "content"));
    QStringList written;
    EXPECT_TRUE(resource.ConvertToLocalStorage(base.filePath("out"), ZORWorkResource::Copy, &written));
    EXPECT_EQ("content", Read("out/part.msi"));
    EXPECT_EQ("content", Read("part.msi"));
    EXPECT_EQ(base.filePath("part.msi"), resource.GetFilePath());
    EXPECT_EQ(QStringList(base.filePath("out/part.msi")), written);
}

TEST_F(ZORWorkResourceTest, TakenNamesGetANumber)
{
    Write("out/part.msi", "old");
    Write("out/part-2.msi", "older");
    Write("out/.hidden", "old");
    Write("out/plain", "old");
    for (const QString& name : QStringList{"part.msi", ".hidden", "plain"})
        EXPECT_TRUE(ZORWorkResource(Write(name, "new"))
                        .ConvertToLocalStorage(base.filePath("out"), ZORWorkResource::Copy));
    EXPECT_EQ("old", Read("out/part.msi"));
    EXPECT_EQ("older", Read("out/part-2.msi"));
    EXPECT_EQ("new", Read("out/part-3.msi"));
    EXPECT_EQ("old", Read("out/.hidden"));
    EXPECT_EQ("new", Read("out/.hidden-2"));
    EXPECT_EQ("new", Read("out/plain-2"));
}

TEST_F(ZORWorkResourceTest, NumbersFindRoomInNamesOfTheLongestKind)
{
    const QString name = QString(83, QChar(0x4E2D)) + "ab"; // 251 bytes
    const ZORWorkResource resource(Write(name + ".msi", "content"));
    for (int i = 0; i < 3; ++i)
        EXPECT_TRUE(resource.ConvertToLocalStorage(base.path(), ZORWorkResource::Copy));
    EXPECT_TRUE(resource.ConvertToLocalStorage(base.filePath("."), ZORWorkResource::Copy));
    const QString cut = name.left(83);
    QStringList expected;
    for (const char* end : {"ab", "-2", "-3", "-4", "-5"})
        expected.append(cut + QLatin1String(end) + ".msi");
    QStringList files = GetFiles(".");
    files.sort();
    expected.sort();
    EXPECT_EQ(expected, files);
}

TEST_F(ZORWorkResourceTest, DanglingLinkIsNotWrittenThrough)
{
    Write("out/x", "");
    ASSERT_TRUE(QFile::link(base.filePath("elsewhere"), base.filePath("out/part.msi")));
    EXPECT_TRUE(ZORWorkResource(Write("part.msi", "new"))
                    .ConvertToLocalStorage(base.filePath("out"), ZORWorkResource::Copy));
    EXPECT_FALSE(QFile::exists(base.filePath("elsewhere")));
    EXPECT_EQ("new", Read("out/part-2.msi"));
}

TEST_F(ZORWorkResourceTest, CopyIntoItsOwnDirectoryIsASecondFile)
{
    const ZORWorkResource resource(Write("out/part.msi", "content"));
    EXPECT_TRUE(resource.ConvertToLocalStorage(base.filePath("out"), ZORWorkResource::Copy));
    EXPECT_EQ(QStringList({"part-2.msi", "part.msi"}), GetFiles("out"));
    QStringList written;
    EXPECT_TRUE(
        resource.ConvertToLocalStorage(base.filePath("out"), ZORWorkResource::CopyIfElsewhere, &written));
    EXPECT_EQ(QStringList({"part-2.msi", "part.msi"}), GetFiles("out"));
    EXPECT_EQ(QStringList(base.filePath("out/part.msi")), written);
}

TEST_F(ZORWorkResourceTest, ManyFilesOfOneNameDoNotExamineEachOther)
{
    const ZORWorkResource resources[] = {ZORWorkResource(Write("part.msi", "a")),
                                         ZORWorkResource(Write("ply.msi", "b"))};
    Write("out/part-7.msi", "other");
    QStringList written;
    const auto copy = [&](int count) {
        const int before = s_examinations;
        for (int i = 0; i < count; ++i) {
            for (const ZORWorkResource& resource : resources)
                EXPECT_TRUE(
                    resource.ConvertToLocalStorage(base.filePath("out"), ZORWorkResource::Copy, &written));
        }
        return s_examinations - before;
    };
    copy(10);
    const int early = copy(10);
    EXPECT_LT(0, early);
    copy(200);
    EXPECT_EQ(early, copy(10));
    EXPECT_EQ(base.filePath("out/part-231.msi"), written.value(written.size() - 2));
    EXPECT_EQ(base.filePath("out/ply-230.msi"), written.value(written.size() - 1));
    EXPECT_EQ("other", Read("out/part-7.msi"));
    EXPECT_EQ(461, GetFiles("out").size());
}

TEST_F(ZORWorkResourceTest, NamesThatBecomeFreeAreUsedAgain)
{
    const ZORWorkResource resource(Write("part.msi", "new"));
    ASSERT_TRUE(QDir(base.path()).mkdir("out"));
    for (int i = 0; i < 2; ++i)
        EXPECT_TRUE(resource.ConvertToLocalStorage(base.filePath("out"), ZORWorkResource::Copy));
    const auto getTime = [this] {
        struct stat status = {};
        stat(QFile::encodeName(base.filePath("out")).constData(), &status);
        return std::pair(status.st_mtim.tv_sec, status.st_mtim.tv_nsec);
    };
    const auto before = getTime();
    ASSERT_TRUE(QFile::remove(base.filePath("out/part.msi")));
    while (getTime() == before) { // the clock of the file system has to tick
        Write("out/tick", "");
        QFile::remove(base.filePath("out/tick"));
    }
    EXPECT_TRUE(resource.ConvertToLocalStorage(base.filePath("out"), ZORWorkResource::Copy));
    EXPECT_EQ(QStringList({"part-2.msi", "part.msi"}), GetFiles("out"));
    EXPECT_TRUE(ZORWorkResource(base.filePath("out/part.msi"))
                    .ConvertToLocalStorage(base.filePath("out"), ZORWorkResource::Move));
    EXPECT_TRUE(resource.ConvertToLocalStorage(base.filePath("out"), ZORWorkResource::Copy));
    EXPECT_EQ(QStringList({"part-2.msi", "part-3.msi", "part.msi"}), GetFiles("out"));
}

TEST_F(ZORWorkResourceTest, MoveTakesTheFileAway)
{
    Write("out/part.msi", "old");
    EXPECT_TRUE(ZORWorkResource(Write("part.msi", "new"))
                    .ConvertToLocalStorage(base.filePath("out"), ZORWorkResource::Move));
    EXPECT_FALSE(QFile::exists(base.filePath("part.msi")));
    EXPECT_EQ("old", Read("out/part.msi"));
    EXPECT_EQ("new", Read("out/part-2.msi"));
}

TEST_F(ZORWorkResourceTest, FailuresLeaveEverythingAsItIs)
{
    Write("out/part.msi", "old");
    const ZORWorkResource resource(Write("part.msi", "new"));
    for (const auto behavior :
         {ZORWorkResource::CopyIfElsewhere, ZORWorkResource::Move, ZORWorkResource::Copy}) {
        EXPECT_FALSE(resource.ConvertToLocalStorage(base.filePath("missing"), behavior));
        EXPECT_FALSE(resource.ConvertToLocalStorage("", behavior));
        EXPECT_FALSE(resource.ConvertToLocalStorage(base.filePath("part.msi"), behavior));
        EXPECT_FALSE(
            ZORWorkResource(base.filePath("no.msi")).ConvertToLocalStorage(base.filePath("out"), behavior));
        EXPECT_FALSE(ZORWorkResource(base.path()).ConvertToLocalStorage(base.filePath("out"), behavior));
        EXPECT_FALSE(ZORWorkResource().ConvertToLocalStorage(base.filePath("out"), behavior));
    }
    EXPECT_EQ(QStringList("part.msi"), GetFiles("out"));
    EXPECT_EQ("new", Read("part.msi"));
    EXPECT_FALSE(QFile::exists(base.filePath("missing")));
}

TEST_F(ZORWorkResourceTest, ManyFailuresOfOneKindHaveFewWarnings)
{
    const WarningCatcher warnings;
    const ZORWorkResource resource(Write("part.msi", "new"));
    const QString directory = base.filePath("missing");
    for (int i = 0; i < 1000; ++i)
        EXPECT_FALSE(resource.ConvertToLocalStorage(directory, ZORWorkResource::Copy));
    const QStringList lines = warnings.GetLines();
    ASSERT_GT(lines.size(), 16);
    EXPECT_LT(lines.size(), 200);
    const QString line = QStringLiteral("zor.worker: cannot bring '%1' into '%2': there is no such directory")
                             .arg(resource.GetFilePath(), directory);
    for (int i = 0; i < 15; ++i)
        EXPECT_EQ(line, lines[i]);
    EXPECT_EQ(line + " (16 files so far; few of the next ones are logged)", lines[15]);
    EXPECT_EQ(line + " (32 files so far; few of the next ones are logged)", lines[16]);

    EXPECT_FALSE(resource.ConvertToLocalStorage(base.filePath("other"), ZORWorkResource::Copy));
    EXPECT_EQ(lines.size() + 1, warnings.GetLines().size()); // another directory
}

} // namespace

TEST_F(ZORWorkResourceTest, CopiesAreIndependent)
{
    ExpectSharedValue(
        ZORWorkResource(), [](ZORWorkResource& changed) { changed = ZORWorkResource(QStringLiteral("a")); },
        [](const ZORWorkResource& value) { return value.GetFilePath().toStdString(); });
    ExpectSharedValue(
        ZORWorkResult(), [](ZORWorkResult& changed) { changed = ZORWorkResult({ZORWorkResource()}, "data"); },
        [](const ZORWorkResult& value) { return value.GetResources().size(); });
    EXPECT_EQ("data", ZORWorkResult(QByteArray("data")).GetData());
    EXPECT_EQ(ZORWorkResource(QStringLiteral("a")), ZORWorkResource(QStringLiteral("a")));
    EXPECT_NE(ZORWorkResource(QStringLiteral("a")), ZORWorkResource());
}
