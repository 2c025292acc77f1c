// Documents with unsaved changes of programs that had to end without a question.

#pragma once

#include <QDateTime>
#include <QList>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

class ZORSysDescriptor;

/// Files with unsaved work, in the folder "rescued" of the user's data folder, or in one of the user below the folder for
/// temporary files where that cannot be used. They stay until somebody removes them.
///
/// A note beside each file names the document. The process that writes the file holds a lock on the note until it ends, in
/// whatever way, so that others see whether the file is abandoned.
namespace ZORHostRescue {

/// A file with unsaved work of a process that has ended.
struct Entry
{
    QString path;     // container file
    QString document; // file that the work belongs to; empty if it was untitled
    QDateTime time;   // when it was written
    /// Keeps other processes from taking the same file.
    std::shared_ptr<ZORSysDescriptor> lock;
};

/// Returns the folders for such files, the preferred one first. They need not exist.
QStringList GetFolders();
/// Returns the abandoned files with unsaved work, newest first. No other process finds them while an entry lives.
QList<Entry> FindAbandoned();
/// Removes the file of an entry and all that is noted about it.
void Discard(const Entry& entry);

/// Notes beside the document that it was saved, for the next start, whatever its settings are.
void Remember(const QString& path);
/// Returns what the user has to know about documents that were rescued since the last call, one line each, and forgets them.
QStringList TakeNotices();

} // namespace ZORHostRescue

/// The file with the unsaved work of this process; none at first.
///
/// Thread safety: reentrant; one thread at a time per object.
class ZORHostRescueFile
{
public:
    ZORHostRescueFile();
    /// Removes the file unless it was left.
    ~ZORHostRescueFile();
    Q_DISABLE_COPY_MOVE(ZORHostRescueFile)

    /// Writes the file, in the first folder that takes it.
    /// \param write     called with the path of the file to write or to replace; returns the error, empty when it went well
    /// \param document  file that the work belongs to; empty while it is untitled
    /// \return the error of the last folder; empty when one has taken the file
    QString Write(const std::function<QString(const QString& path)>& write, const QString& document);
    /// Returns the path of the file; empty before the first call of Write() that succeeded.
    const QString& GetPath() const { return m_path; }
    void Remove();
    /// Leaves the file to the next start.
    void Leave();

private:
    bool Reserve(const QString& folder, const QString& document);

    QString m_path;
    std::unique_ptr<ZORSysDescriptor> m_lock;
};
