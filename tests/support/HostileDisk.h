// Disks that are full and folders that refuse files, for tests of what writes files.

#pragma once

#include <QString>
#include <QTemporaryDir>

#include <csignal>
#include <optional>
#include <sys/resource.h>

/// No file can grow beyond some bytes while this lives ("File too large").
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t bytes);
    ~FileSizeLimit();
    Q_DISABLE_COPY_MOVE(FileSizeLimit)

private:
    rlimit m_former = {};
    void (*m_handler)(int);
};

/// For a process that is about to start: no file can grow beyond some bytes, and one that tries ends by a signal
/// unless the program prevents that.
void LimitFiles(rlim_t bytes);

/// Makes permissions of files bind the process while this lives, also where it runs as root: as user nobody. Its
/// temporary files of before must be readable for everybody.
class WithoutRoot
{
public:
    WithoutRoot();
    ~WithoutRoot();
    Q_DISABLE_COPY_MOVE(WithoutRoot)

private:
    const bool m_isRoot;
};

/// Lets a folder neither take nor lose files while this lives; those in it can be written. The process runs as
/// WithoutRoot meanwhile.
class ReadOnlyFolder
{
public:
    explicit ReadOnlyFolder(const QString& path);
    ~ReadOnlyFolder();
    Q_DISABLE_COPY_MOVE(ReadOnlyFolder)

private:
    const QByteArray m_path;
    std::optional<WithoutRoot> m_user;
};

/// A file system of few bytes that only the calling thread and the threads and processes that it starts see.
class SmallDisk
{
public:
    /// \param bytes  a multiple of the size of a page
    explicit SmallDisk(int bytes);
    ~SmallDisk();
    Q_DISABLE_COPY_MOVE(SmallDisk)

    /// False where the process must not mount anything.
    bool IsMounted() const { return m_isMounted; }
    QString GetPath(const QString& fileName) const { return m_folder.filePath(fileName); }
    QString GetFolder() const { return m_folder.path(); }

private:
    const QTemporaryDir m_folder;
    bool m_isMounted = false;
};
