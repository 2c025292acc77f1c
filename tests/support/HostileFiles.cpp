#include "HostileFiles.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include <cstring>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
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

} // namespace HostileFiles
