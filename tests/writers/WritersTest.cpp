// Tests that no writer loses a file or what it was to write.

#include "Writers.h"

#include "support/FileContent.h"
#include "support/HostileDisk.h"
#include "support/KillDuring.h"
#include "support/Printers.h"

#include <ZORWorker/ZORWorkResource.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

#include <random>

namespace {

constexpr int kKills = 12;

QStringList GetFiles(const QString& folder)
{
    return QDir(folder).entryList(QDir::Files | QDir::Hidden, QDir::Name);
}

class WritersTest : public testing::TestWithParam<Writer>
{
protected:
    WritersTest()
    {
        EXPECT_TRUE(QDir().mkpath(m_folder.filePath("writing")));
        small = Write(Writer::Small);
        large = Write(Writer::Large);
        EXPECT_LT(100, small.size());
        EXPECT_GT(4096, small.size());
        EXPECT_LT(10'000, large.size());
        EXPECT_GT(60'000, large.size());
        Write(Writer::Small);
    }

    /// The bytes of a content that is written where nothing is wrong.
    QByteArray Write(Writer::Content content) const
    {
        EXPECT_EQ(QString(), GetParam().write(path, content));
        return ReadFile(path);
    }
    void ExpectError(const QString& name, const char* reason) const
    {
        const QString error = GetParam().write(name, Writer::Large);
        EXPECT_TRUE(error.contains(QLatin1String(reason))) << error.toStdString();
    }
    QString GetFolder() const { return m_folder.filePath("writing"); }
    /// The old file and nothing else is there, and what was not written still can be.
    void ExpectNothingLost() const
    {
        EXPECT_TRUE(small == ReadFile(path));
        EXPECT_EQ(QStringList("file"), GetFiles(GetFolder()));
        EXPECT_TRUE(large == Write(Writer::Large));
    }

private:
    const QTemporaryDir m_folder;

protected:
    const QString path = m_folder.filePath("writing/file");
    QByteArray small;
    QByteArray large;
};

TEST_P(WritersTest, AFileThatGrowsTooLarge)
{
    for (const rlim_t bytes : {0, 1, 100, 4096, 8192}) {
        const FileSizeLimit limit(bytes);
        ExpectError(path, "File too large");
    }
    ExpectNothingLost();
}

TEST_P(WritersTest, AFullDisk)
{
    SmallDisk disk(64 * 1024);
    if (!disk.IsMounted())
        GTEST_SKIP() << "this user must not mount a disk";
    const QString file = disk.GetPath("file");
    EXPECT_EQ(QString(), GetParam().write(file, Writer::Small));
    QFile rest(disk.GetPath("rest"));
    ASSERT_TRUE(rest.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    while (rest.write(QByteArray(1024, 'x')) > 0)
        continue;
    ExpectError(file, "No space left on device");
    EXPECT_TRUE(small == ReadFile(file));
    {
        const ReadOnlyFolder readOnly(disk.GetFolder());
        ExpectError(file, "No space left on device");
    }
    EXPECT_TRUE(small == ReadFile(file));
    EXPECT_EQ(QStringList({"file", "rest"}), GetFiles(disk.GetFolder()));
    ExpectNothingLost();
}

TEST_P(WritersTest, AReadOnlyFolder)
{
    {
        const ReadOnlyFolder readOnly(GetFolder());
        ExpectError(GetFolder() + "/new", "Permission denied");
        const FileSizeLimit limit(4096);
        ExpectError(path, "File too large");
    }
    EXPECT_TRUE(small == ReadFile(path));
    EXPECT_EQ(QStringList("file"), GetFiles(GetFolder()));
    {
        const ReadOnlyFolder readOnly(GetFolder());
        EXPECT_EQ(QString(), GetParam().write(path, Writer::Large));
        EXPECT_TRUE(large == ReadFile(path));
        EXPECT_EQ(QString(), GetParam().write(path, Writer::Small));
    }
    ExpectNothingLost();
}

TEST_P(WritersTest, AReadOnlyFile)
{
    {
        const ReadOnlyFolder enterable(GetFolder());
    }
    QFile::setPermissions(path, QFile::ReadOwner | QFile::ReadOther);
    {
        const WithoutRoot user;
        ExpectError(path, "Permission denied");
    }
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner);
    ExpectNothingLost();
}

TEST_P(WritersTest, AFolderThatVanished)
{
    const QString folder = GetFolder() + "/vanished";
    ExpectError(folder + "/file", "No such file or directory");
    EXPECT_FALSE(QFileInfo::exists(folder));
    ExpectNothingLost();
}

TEST_P(WritersTest, AKill)
{
    std::mt19937 random(11);
    for (int kill = 0; kill < kKills; ++kill) {
        const bool isRunning = KillDuring(
            [this](int i) { GetParam().write(path, i % 2 == 0 ? Writer::Large : Writer::Small); }, random);
        ASSERT_TRUE(isRunning);
        const QByteArray present = ReadFile(path);
        EXPECT_TRUE(present == small || present == large) << kill << ": " << present.size() << " bytes";
        QStringList others = GetFiles(GetFolder());
        others.removeOne("file");
        // Only between its last two calls a file can be left, and that is complete.
        EXPECT_LE(others.size(), 1);
        for (const QString& other : std::as_const(others)) {
            const QByteArray left = ReadFile(GetFolder() + u'/' + other);
            EXPECT_TRUE(left == small || left == large) << other.toStdString();
            QFile::remove(GetFolder() + u'/' + other);
        }
    }
    Write(Writer::Small);
    ExpectNothingLost();
}

INSTANTIATE_TEST_SUITE_P(All, WritersTest, testing::ValuesIn(GetWriters()),
                         [](const auto& writer) { return writer.param.name; });

/// What translations copy into the folder of the user.
class CopiesTest : public testing::Test
{
protected:
    CopiesTest()
    {
        EXPECT_TRUE(QDir().mkpath(out));
        QFile file(source);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }
    bool Copy() const { return ZORWorkResource(source).ConvertToLocalStorage(out, ZORWorkResource::Copy); }

    const QTemporaryDir folder;
    const QString source = folder.filePath("part.msi");
    const QString out = folder.filePath("out");
    const QByteArray content = QByteArray("content").repeated(50'000);
};

TEST_F(CopiesTest, AreCompleteOrMissing)
{
    {
        const FileSizeLimit limit(rlim_t(content.size()) - 1);
        EXPECT_FALSE(Copy());
    }
    EXPECT_EQ(QStringList(), GetFiles(out));
    QFile::setPermissions(source, QFile::ReadOwner | QFile::ReadOther);
    {
        const ReadOnlyFolder readOnly(out);
        EXPECT_FALSE(Copy());
    }
    EXPECT_EQ(QStringList(), GetFiles(out));
    EXPECT_TRUE(Copy());
    EXPECT_TRUE(content == ReadFile(out + "/part.msi"));
    EXPECT_EQ(QFile::permissions(source), QFile::permissions(out + "/part.msi"));
    EXPECT_TRUE(content == ReadFile(source));
}

TEST_F(CopiesTest, SurviveAKill)
{
    std::mt19937 random(12);
    for (int kill = 0; kill < kKills; ++kill)
        ASSERT_TRUE(KillDuring([this](int) { Copy(); }, random));
    const QStringList files = GetFiles(out);
    EXPECT_LE(kKills, files.size());
    for (const QString& file : files) {
        EXPECT_TRUE(file.startsWith("part")) << file.toStdString();
        EXPECT_TRUE(content == ReadFile(out + u'/' + file)) << file.toStdString();
    }
}

} // namespace
