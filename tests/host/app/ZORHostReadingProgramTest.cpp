// Tests of the program while it reads a file.

#include "HostTest.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QtEndian>

#include <algorithm>
#include <csignal>

namespace {

class ZORHostReadingProgramTest : public HostTest
{
protected:
    /// A binary file of so many facets that are all zero and take no place on the disk.
    QString WriteSparseStl(quint32 numFacets) const
    {
        QByteArray header(84, ' ');
        qToLittleEndian(numFacets, header.data() + 80);
        const QString path = WriteFile("large.stl", header);
        EXPECT_TRUE(QFile::resize(path, 84 + 50 * qint64(numFacets)));
        return path;
    }
    /// Whether a process has opened a file.
    static bool HasOpen(qint64 process, const QString& path)
    {
        const QString folder = QStringLiteral("/proc/%1/fd/").arg(process);
        const QString target = QFileInfo(path).canonicalFilePath();
        const QStringList descriptors =
            QDir(folder).entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot);
        return std::any_of(descriptors.begin(), descriptors.end(), [&](const QString& descriptor) {
            return QFileInfo(folder + descriptor).symLinkTarget() == target;
        });
    }
};

TEST_F(ZORHostReadingProgramTest, ASignalEndsItAtOnce)
{
    const QString file = WriteSparseStl(40'000'000);
    QProcess process;
    process.setChildProcessModifier([] { std::signal(SIGTERM, SIG_DFL); }); // shells may ignore it
    process.start(ZOR_TEST_HOST,
                  {"--no-default-plugins", "--settings", GetPath("signal.ini"), "--open", file});
    ASSERT_TRUE(WaitFor([&] { return HasOpen(process.processId(), file); })); // after the signals are its own
    kill(pid_t(process.processId()), SIGTERM);
    ASSERT_TRUE(process.waitForFinished(10'000)) << "the program waits for its file";
    EXPECT_EQ(QProcess::NormalExit, process.exitStatus());
    EXPECT_EQ(128 + SIGTERM, process.exitCode());
}

} // namespace
