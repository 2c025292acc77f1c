// Work directories of jobs.

#pragma once

#include <QCoreApplication>
#include <QString>
#include <QTemporaryDir>

#include <memory>

/// The work directory of one job, for this user alone. Unless it is to be kept, it vanishes with its object, and a thread
/// removes its files soon afterwards.
///
/// Directories that are not kept lie in a folder of this process in the base directory, which holds a locked file. A
/// process that was killed has lost its lock, so the next process of the same user that works in the base directory
/// removes what the first one left.
class ZORWorkDirectory
{
    Q_DECLARE_TR_FUNCTIONS(ZORWorkDirectory)

public:
    /// Makes a directory in \a baseDirectory, which itself is made where it does not exist.
    ///
    /// The first call for a base directory starts a thread that removes what processes left there that have ended.
    /// \throws ZORSysException "cannot make a work directory in '%1': %2"
    ZORWorkDirectory(const QString& baseDirectory, const QString& jobName, bool isKept);
    ~ZORWorkDirectory();
    Q_DISABLE_COPY_MOVE(ZORWorkDirectory)

    QString GetPath() const { return m_directory->path(); }

private:
    class Room;

    std::shared_ptr<const Room> m_room; // null where the directory is kept; outlives it otherwise
    std::unique_ptr<QTemporaryDir> m_directory;
};
