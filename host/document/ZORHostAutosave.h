// Copies of unsaved work for the case that the program does not reach its end.

#pragma once

#include "document/ZORHostRescue.h"

#include <QObject>
#include <QTimer>

#include <chrono>
#include <memory>
#include <optional>

class ZORCmdTask;
class ZORHostDocument;

/// Writes a modified document from time to time into a separate file (ZORHostRescueFile), never into that of the document,
/// and removes the copy when the document is saved, emptied or closed. Saves that are not due cost nothing; the others write
/// in a thread.
///
/// Thread safety: main thread only.
class ZORHostAutosave : public QObject
{
    Q_OBJECT

public:
    /// \param document  not owned, must outlive this object
    ZORHostAutosave(ZORHostDocument* document, QObject* parent);
    /// Cancels what is being written, and waits for its end.
    ~ZORHostAutosave() override;

    /// Whether documents are saved automatically, in the interval of ZORHostPreferences; true by default.
    void SetEnabled(bool isEnabled);

    /// Starts to write a copy of a modified document unless there is an up-to-date one.
    void SaveNow();
    /// Returns whether a copy is being written.
    bool IsBusy() const { return m_task != nullptr; }
    /// Writes a copy of a modified document that the next start names, and reports it in the log.
    void Rescue();
    /// Keeps a recovered file until its document is saved or closed, or a newer copy has taken its place.
    void Adopt(const ZORHostRescue::Entry& entry);

    /// Returns the time between two automatic saves; 0 while there are none.
    std::chrono::milliseconds GetInterval() const;
    /// Returns the path of the copy; empty where there is none, and while one is being written.
    QString GetPath() const;

signals:
    /// A copy could not be written. Emitted once until that has succeeded again.
    void Failed(const QString& reason);

private:
    /// What a thread writes, and what comes of it.
    struct Copy;

    std::shared_ptr<Copy> MakeCopy();
    void UpdateInterval();
    void OnTaskFinished();
    /// Gives up what is being written.
    void CancelTask();
    void RemoveCopies();
    void DiscardAdopted();

    ZORHostDocument* m_document;               // not owned
    std::shared_ptr<ZORHostRescueFile> m_file; // shared with the thread
    std::shared_ptr<Copy> m_copy;              // of the task
    std::unique_ptr<ZORCmdTask> m_task;
    std::optional<ZORHostRescue::Entry> m_adopted;
    QTimer m_timer;
    bool m_isEnabled = true;
    qint64 m_numSavedChanges = -1; // of the copy; -1 without one
    bool m_hasFailed = false;      // the last time
};
