#include "ZORSysFile.h"

#include <ZORSystem/ZORSysDescriptor.h>

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <system_error>
#include <unistd.h>

namespace {

QString GetReason(int error)
{
    return QString::fromStdString(std::generic_category().message(error));
}

QString MakeReadError(const QString& reason)
{
    return ZORSysFile::tr("read error: %1").arg(reason);
}

/// Returns whether the beginning of a file can be read, be there something or nothing. Reading itself would not find that
/// out where the file has no length.
bool IsReadable(const ZORSysDescriptor& descriptor)
{
    char byte = 0;
    return pread(descriptor.Get(), &byte, sizeof byte, 0) >= 0;
}

/// The null and full devices of Linux: they swallow or refuse everything at once.
bool IsEndlessSink(const struct stat& status)
{
    constexpr unsigned kMemoryDevices = 1, kNull = 3, kFull = 7;
    return S_ISCHR(status.st_mode) && major(status.st_rdev) == kMemoryDevices
           && (minor(status.st_rdev) == kNull || minor(status.st_rdev) == kFull);
}

QString FindObstacle(const struct stat& status, QIODevice::OpenMode mode)
{
    if (S_ISREG(status.st_mode))
        return {};
    if (S_ISDIR(status.st_mode))
        return ZORSysFile::tr("it is a folder");
    if (!(mode & QIODevice::ReadOnly) && IsEndlessSink(status))
        return {};
    return ZORSysFile::tr("it is not a regular file");
}

/// Resources of the program are not files of the system.
bool IsResource(const QString& path)
{
    return path.startsWith(u':');
}

bool IsTruncating(QIODevice::OpenMode mode)
{
    const QIODevice::OpenMode keeping = QIODevice::ReadOnly | QIODevice::Append | QIODevice::NewOnly;
    return (mode & QIODevice::Truncate) || ((mode & QIODevice::WriteOnly) && !(mode & keeping));
}

int GetFlags(QIODevice::OpenMode mode)
{
    // Without O_NONBLOCK, opening a pipe would wait before its kind is known. Regular files ignore the flag.
    int flags = O_NONBLOCK | O_CLOEXEC | O_NOCTTY;
    if (!(mode & QIODevice::WriteOnly))
        return flags | O_RDONLY;
    flags |= mode & QIODevice::ReadOnly ? O_RDWR : O_WRONLY;
    flags |= mode & QIODevice::ExistingOnly ? 0 : O_CREAT;
    flags |= mode & QIODevice::NewOnly ? O_EXCL : 0;
    return flags | (mode & QIODevice::Append ? O_APPEND : 0);
}

} // namespace

class ZORSysFile::Private
{
public:
    QString path;
    qint64 end = 0; // size at the time of opening
};

ZORSysFile::ZORSysFile(const QString& path)
    : QFile(path)
    , d(new Private{path})
{
}

ZORSysFile::~ZORSysFile() = default;

QString ZORSysFile::FindObstacle(const QString& path, OpenMode mode)
{
    struct stat status = {};
    if (IsResource(path) || stat(QFile::encodeName(path).constData(), &status) != 0)
        return {};
    return ::FindObstacle(status, mode);
}

bool ZORSysFile::open(OpenMode mode)
{
    if (mode & (Append | NewOnly))
        mode |= WriteOnly;
    if (isOpen() || IsResource(d->path)) {
        d->end = QFile::size();
        return QFile::open(mode);
    }
    const auto fail = [this](const QString& reason) {
        setErrorString(reason);
        return false;
    };
    // Examined before it is opened, since opening alone moves the tape of some devices, and again afterwards, since
    // the path may lead to another file by then.
    if (const QString obstacle = FindObstacle(d->path, mode); !obstacle.isEmpty())
        return fail(obstacle);
    if (d->path.contains(QChar::Null))
        return fail(GetReason(EINVAL));
    ZORSysDescriptor descriptor(::open(QFile::encodeName(d->path).constData(), GetFlags(mode), 0666));
    struct stat status = {};
    if (!descriptor.IsOpen() || fstat(descriptor.Get(), &status) != 0)
        return fail(GetReason(errno));
    if (const QString obstacle = ::FindObstacle(status, mode); !obstacle.isEmpty())
        return fail(obstacle);
    if (!(mode & WriteOnly) && status.st_size == 0 && !IsReadable(descriptor))
        return fail(MakeReadError(GetReason(errno)));
    if (IsTruncating(mode) && S_ISREG(status.st_mode) && ftruncate(descriptor.Get(), 0) != 0)
        return fail(GetReason(errno));
    if (!QFile::open(descriptor.Get(), mode, AutoCloseHandle))
        return false;
    descriptor.Release();
    d->end = status.st_size;
    return true;
}

QString ZORSysFile::GetReadError() const
{
    return error() == ReadError ? MakeReadError(errorString()) : QString();
}

QString ZORSysFile::fileName() const
{
    return d->path;
}

qint64 ZORSysFile::size() const
{
    const qint64 present = QFile::size();
    return IsBounded() ? std::min(present, d->end) : present;
}

bool ZORSysFile::atEnd() const
{
    return IsBounded() ? pos() >= size() : QFile::atEnd();
}

qint64 ZORSysFile::readData(char* data, qint64 maximumSize)
{
    if (!IsBounded() || handle() < 0)
        return QFile::readData(data, maximumSize);
    const qint64 position = lseek(handle(), 0, SEEK_CUR);
    return QFile::readData(data, std::clamp<qint64>(d->end - position, 0, maximumSize));
}
