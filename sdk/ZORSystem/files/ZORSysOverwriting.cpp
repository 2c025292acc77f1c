#include "ZORSysOverwriting_p.h"

#include <ZORSystem/ZORSysDescriptor.h>
#include <ZORSystem/ZORSysReplacedFile.h>

#include <cerrno>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <vector>

namespace {

constexpr size_t kPieceSize = size_t(1) << 18; // bytes

bool WritePiece(int file, const char* bytes, size_t size, off_t offset)
{
    while (size > 0) {
        const ssize_t written = pwrite(file, bytes, size, offset);
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            return false;
        bytes += written;
        size -= size_t(written);
        offset += written;
    }
    return true;
}

/// Makes all of \a source the content of \a target; false with errno set when that fails.
bool CopyAll(int source, int target)
{
    std::vector<char> piece(kPieceSize);
    off_t offset = 0;
    for (;;) {
        const ssize_t count = pread(source, piece.data(), piece.size(), offset);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return false;
        if (count == 0)
            return ftruncate(target, offset) == 0;
        if (!WritePiece(target, piece.data(), size_t(count), offset))
            return false;
        offset += count;
    }
}

/// Takes the space for a file before anything is overwritten; false with errno set when there is not enough.
bool Reserve(int file, off_t size)
{
    if (size == 0)
        return true;
    const int error = posix_fallocate(file, 0, size);
    errno = error;
    return error == 0 || error == EOPNOTSUPP || error == EINVAL;
}

off_t GetSize(int file)
{
    struct stat status = {};
    return fstat(file, &status) == 0 ? status.st_size : 0;
}

} // namespace

int zor::sys::MakeMemoryFile()
{
    return memfd_create("zor", MFD_CLOEXEC);
}

bool zor::sys::Sync(int file)
{
    return fsync(file) == 0 || errno == EINVAL || errno == EROFS || errno == ENOTSUP;
}

QString zor::sys::Overwrite(const QByteArray& path, int content)
{
    const ZORSysDescriptor file(
        open(path.constData(), O_RDWR | O_NONBLOCK | O_NOCTTY | O_NOFOLLOW | O_CLOEXEC));
    const ZORSysDescriptor kept(MakeMemoryFile());
    if (!file.IsOpen() || !kept.IsOpen() || !CopyAll(file.Get(), kept.Get()))
        return qt_error_string(errno);
    if (Reserve(file.Get(), GetSize(content)) && CopyAll(content, file.Get()) && Sync(file.Get()))
        return {};
    const QString reason = qt_error_string(errno);
    if (CopyAll(kept.Get(), file.Get()) && Sync(file.Get()))
        return reason;
    return ZORSysReplacedFile::tr("%1; the old content cannot be restored: %2")
        .arg(reason, qt_error_string(errno));
}
