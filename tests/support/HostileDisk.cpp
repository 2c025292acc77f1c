#include "support/HostileDisk.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

#include <sched.h>
#include <sys/mount.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr uid_t kNobody = 65534;
constexpr mode_t kReadable = 0755;
constexpr mode_t kReadOnly = 0555;
constexpr mode_t kWritableByAll = 0666;

/// Allows again what a change of the user forbids, and what the check for leaks needs when the program ends.
void AllowDebugging()
{
    prctl(PR_SET_DUMPABLE, 1);
}

/// Makes a folder read-only, but its files writable for everybody, who may enter the folders above it.
void OpenUp(const QString& folder)
{
    chmod(QFile::encodeName(folder).constData(), kReadOnly);
    for (const QFileInfo& file : QDir(folder).entryInfoList(QDir::Files | QDir::Hidden))
        chmod(QFile::encodeName(file.filePath()).constData(), kWritableByAll);
    for (QDir above(folder); above.cdUp() && above != QDir::temp() && !above.isRoot();)
        chmod(QFile::encodeName(above.path()).constData(), kReadable);
}

} // namespace

FileSizeLimit::FileSizeLimit(rlim_t bytes)
    : m_handler(std::signal(SIGXFSZ, SIG_IGN))
{
    getrlimit(RLIMIT_FSIZE, &m_former);
    const rlimit limit = {bytes, m_former.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limit);
}

FileSizeLimit::~FileSizeLimit()
{
    setrlimit(RLIMIT_FSIZE, &m_former);
    std::signal(SIGXFSZ, m_handler);
}

void LimitFiles(rlim_t bytes)
{
    const rlimit limit = {bytes, bytes};
    setrlimit(RLIMIT_FSIZE, &limit);
    std::signal(SIGXFSZ, SIG_DFL);
}

WithoutRoot::WithoutRoot()
    : m_isRoot(geteuid() == 0)
{
    // The saved user is the way back.
    if (m_isRoot && setresuid(kNobody, kNobody, 0) != 0)
        ADD_FAILURE() << "cannot become another user";
    AllowDebugging();
}

WithoutRoot::~WithoutRoot()
{
    if (m_isRoot && setresuid(0, 0, 0) != 0)
        ADD_FAILURE() << "cannot become root again";
    AllowDebugging();
}

ReadOnlyFolder::ReadOnlyFolder(const QString& path)
    : m_path(QFile::encodeName(path))
{
    OpenUp(path);
    m_user.emplace();
}

ReadOnlyFolder::~ReadOnlyFolder()
{
    m_user.reset();
    chmod(m_path.constData(), kReadable);
}

SmallDisk::SmallDisk(int bytes)
{
    if (unshare(CLONE_NEWNS) != 0 || mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0)
        return;
    const QByteArray options = "mode=0755,size=" + QByteArray::number(bytes);
    m_isMounted =
        mount("tmpfs", QFile::encodeName(m_folder.path()).constData(), "tmpfs", 0, options.constData()) == 0;
}

SmallDisk::~SmallDisk()
{
    if (m_isMounted)
        umount2(QFile::encodeName(m_folder.path()).constData(), MNT_DETACH);
}
