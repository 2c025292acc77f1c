// Reads files into the document while the window lives on.

#pragma once

#include <ZORExchange/ZORExcFileKind.h>

#include <QObject>
#include <QStringList>

#include <functional>
#include <memory>

class ZORCmdTask;
class ZORExcImport;

/// What came of a file.
struct ZORHostOpenedFile
{
    QString fileName;
    ZORExcFileKind::Kind kind = ZORExcFileKind::Kind::Empty;
    QStringList names;   ///< of the new objects, in their order
    QStringList losses;  ///< what was left out, a sentence each
    qint64 size = 0;     ///< bytes of the file
    double duration = 0; ///< seconds
};

/// A queue of files that are read one after the other: the file in a thread, with progress; what it holds is then added to the
/// container of the current environment at once. A file that fails or is canceled changes nothing.
///
/// Thread safety: main thread only.
class ZORHostOpening : public QObject
{
    Q_OBJECT

public:
    /// Open: the file replaces the document. Import: it is added.
    enum class Mode { Open, Import };

    /// Adds what a file holds to the container; throws ZORSysException when that fails.
    using Add = std::function<void()>;
    /// Calls \a add, and does what belongs to it before and after: empties a document that is replaced, marks it.
    using Committer =
        std::function<void(const QString& fileName, ZORExcFileKind::Kind kind, Mode mode, const Add& add)>;

    explicit ZORHostOpening(QObject* parent);
    /// Cancels what is being read and waits for its end.
    ~ZORHostOpening() override;

    /// Without one, the contents are added and nothing else happens.
    void SetCommitter(const Committer& committer);

    /// Appends a file to the queue and returns. The signals about it come from the event loop.
    void Enqueue(const QString& fileName, Mode mode);
    /// Runs the event loop until the queue is empty.
    /// \return whether every file was read that was in the queue meanwhile
    bool Wait();
    /// Whether a file is being read or waits for that.
    bool IsBusy() const;
    /// The file that is being read; empty when there is none.
    QString GetFile() const;
    /// The part of it that has been read, 0 to 1.
    double GetProgress() const;

public slots:
    /// Gives up the file that is being read.
    void CancelFile();
    /// Gives up that file and those behind it.
    void CancelAll();

signals:
    /// A file is being read from now on.
    void Started(const QString& fileName);
    void ProgressChanged(double progress);
    void Opened(const ZORHostOpenedFile& file);
    void Imported(const ZORHostOpenedFile& file);
    /// \param message  a sentence that names the file
    void Failed(const QString& fileName, const QString& message);
    void Canceled(const QString& fileName);
    /// The queue is empty again.
    void Idle();

private:
    struct Entry
    {
        QString fileName;
        Mode mode = Mode::Import;
    };

    void StartNext();
    void OnTaskFinished();
    void Commit();
    static void Log(const ZORHostOpenedFile& file, Mode mode);
    void Fail(const QString& message);

    Committer m_committer;
    QList<Entry> m_waiting;
    Entry m_current;
    std::shared_ptr<ZORExcImport> m_import; // of the current file, shared with the thread
    std::unique_ptr<ZORCmdTask> m_task;
    qint64 m_startTime = 0; // milliseconds
    int m_numUnread = 0;    // files that were not read since the queue was idle
};
