// How a job is doing, and what came of it.

#pragma once

#include <ZORWorker/ZORWorkResult.h>
#include <ZORWorker/ZORWorkerGlobal.h>

#include <QObject>
#include <QString>

#include <memory>

/// The caller's side of one job of a ZORWorkProcessor, which makes and owns it. To be used in the thread of
/// the processor; its signals come from the event loop of that thread, but for the one of Queued, which comes
/// from within ZORWorkProcessor::Execute().
///
/// Thread safety: reentrant; an object belongs to its thread.
class ZORWORKER_EXPORT ZORWorkResponse : public QObject
{
    Q_OBJECT

public:
    /// The numbers are established. Finished and Failed are the end states: a job enters exactly one of them,
    /// once, and leaves it never. A cancelled job has failed.
    enum Status {
        Created = 0, ///< not executed yet
        Queued = 1,  ///< waits for a thread
        Running = 2,
        Stopping = 3,  ///< asked to end with what it has
        Finished = 4,  ///< GetResult() is there
        Canceling = 5, ///< asked to give up
        Failed = 7     ///< GetFailureReason() tells why
    };
    Q_ENUM(Status)

    ~ZORWorkResponse() override;

    Status GetStatus() const;
    bool IsAtEnd() const { return GetStatus() == Finished || GetStatus() == Failed; }
    /// 0 to 1, never falling, as far as the job tells; 1 once it is finished.
    double GetProgress() const;
    /// Empty unless the job is finished. Its files last as long as this object, unless the job's work
    /// directory is kept.
    ZORWorkResult GetResult() const;
    /// Lower-case sentence without full stop; "canceled" for a cancelled job, empty unless the job has
    /// failed.
    QString GetFailureReason() const;
    /// Name of the job as it was added.
    QString GetJobName() const;
    /// The job's own directory; empty until it runs. Gone when the job has failed or this object is
    /// destroyed, unless it is kept.
    QString GetWorkDirectory() const;

signals:
    void StatusChanged(ZORWorkResponse::Status status);
    /// Values in quick succession are drawn together.
    void ProgressChanged(double progress);

private:
    friend class ZORWorkProcessor;
    class Private;
    ZORWorkResponse(std::unique_ptr<Private> data, QObject* parent);

    void SetStatus(Status status);
    void SetProgress(double progress);

    const std::unique_ptr<Private> d;
};
