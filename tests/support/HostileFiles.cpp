#include "HostileFiles.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

namespace HostileFiles {

QString MakePipe(const QString& folder, const QString& name)
{
    const QString path = QDir(folder).filePath(name);
    EXPECT_EQ(0, mkfifo(QFile::encodeName(path).constData(), 0600));
    return path;
}

QString MakeSocket(const QString& folder, const QString& name)
{
    const QString path = QDir(folder).filePath(name);
    const QByteArray bytes = QFile::encodeName(path);
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    EXPECT_LT(size_t(bytes.size()), sizeof address.sun_path);
    std::memcpy(address.sun_path, bytes.constData(), size_t(bytes.size()));
    const int descriptor = socket(AF_UNIX, SOCK_STREAM, 0);
    EXPECT_EQ(0, bind(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address));
    close(descriptor);
    return path;
}

QString MakeZeros(const QString& folder, qint64 size, const QString& name)
{
    QFile file(QDir(folder).filePath(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.resize(size));
    return file.fileName();
}

QStringList MakeIrregular(const QString& folder)
{
    QStringList paths = {MakePipe(folder), QDir(folder).filePath("link"), MakeSocket(folder)};
    EXPECT_TRUE(QFile::link(paths[0], paths[1]));
    for (const QString& device : QStringList({"/dev/zero", "/dev/tty", "/dev/ptmx", "/dev/random"})) {
        if (QFile::exists(device))
            paths.append(device);
    }
    return paths;
}

GrowingFile::GrowingFile(const QString& folder, const QByteArray& piece)
    : m_path(MakeZeros(folder, 0, QStringLiteral("growing")))
    , m_writer(fork())
{
    if (m_writer != 0)
        return;
    constexpr unsigned kLongestLife = 600; // seconds
    constexpr off_t kLong = 8 << 20;       // bytes
    alarm(kLongestLife);
    static_cast<void>(nice(19)); // the reader has to get its time
    const int file = open(QFile::encodeName(m_path).constData(), O_WRONLY | O_CLOEXEC);
    for (;;) {
        if (lseek(file, 0, SEEK_END) >= kLong)
            lseek(file, 0, SEEK_SET);
        if (write(file, piece.constData(), size_t(piece.size())) < 0)
            _exit(1);
    }
}

GrowingFile::~GrowingFile()
{
    kill(m_writer, SIGKILL);
    EXPECT_EQ(m_writer, waitpid(m_writer, nullptr, 0));
}

} // namespace HostileFiles
