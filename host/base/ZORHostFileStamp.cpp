#include "base/ZORHostFileStamp.h"

#include <QFile>

#include <sys/stat.h>

ZORHostFileStamp ZORHostFileStamp::Of(const QString& path)
{
    ZORHostFileStamp stamp;
    struct stat status = {};
    if (path.isEmpty() || stat(QFile::encodeName(path).constData(), &status) != 0)
        return stamp;
    stamp.m_isValid = true;
    stamp.m_device = quint64(status.st_dev);
    stamp.m_number = quint64(status.st_ino);
    stamp.m_size = qint64(status.st_size);
    stamp.m_seconds = qint64(status.st_mtim.tv_sec);
    stamp.m_nanoseconds = qint64(status.st_mtim.tv_nsec);
    return stamp;
}
