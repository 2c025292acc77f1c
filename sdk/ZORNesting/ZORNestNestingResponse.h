// The answer to one nesting job.

#pragma once

#include <ZORNesting/ZORNestingGlobal.h>

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QStringList>

#include <memory>

class ZORNestNestingOutcome;
class ZORWorkResponse;

/// One job on its way through a ZORNestNestingProcessor, which makes and owns it. To be used in the thread of
/// the processor; its signals come from the event loop of that thread, but for those of Queued, Stopping and Canceling,
/// which come from within the processor's functions.
///
/// Thread safety: reentrant; an object belongs to its thread.
class ZORNESTING_EXPORT ZORNestNestingResponse : public QObject
{
    Q_OBJECT

public:
    /// The numbers are established; registered as meta-type "ZORNestNestingResponse::Status". A job enters
    /// exactly one of Completed, Canceled and Failed, once, and leaves it never.
    enum Status {
        Created = 0, ///< not executed yet
        Queued = 1,  ///< waits for a thread
        Running = 2,
        Completed = 3, ///< sheet files and report are there, even if some parts or all found no place
        Stopping = 4,  ///< asked to end with the best so far
        Canceling = 5, ///< asked to give up
        Canceled = 6,
        Failed = 7 ///< GetFailureReason() returns the reason
    };
    Q_ENUM(Status)

    ~ZORNestNestingResponse() override;

    Status GetStatus() const;
    bool IsAtEnd() const;
    /// 0 to 1, never falling; 1 once the job is completed.
    double GetProgress() const;

    /// A complete result file (*.msi) of type nesting for each layout that is cut at once: a sheet, or a stack of
    /// equal ones (ZORNestResult::GetStackSize()). Empty unless the job is completed.
    QList<QByteArray> GetSheetFiles() const;
    /// A text in HTML that QTextDocument shows, pictures included. Empty unless the job is completed.
    QByteArray GetReportFile() const;
    /// What could not be done as it was asked for, a line each: parts without a place, files that cannot be
    /// read, numbers that cannot be used. Empty unless the job is completed.
    QStringList GetRemarks() const;
    /// Lower-case sentence without full stop; "canceled" for a cancelled job, empty unless the job is cancelled or has
    /// failed.
    QString GetFailureReason() const;

signals:
    void StatusChanged(ZORNestNestingResponse::Status status);
    /// \param ratio  0 to 1, rising; at least twice a second while the job runs, and 1 before Completed
    void ProgressChanged(double ratio);

private:
    friend class ZORNestNestingProcessor;
    ZORNestNestingResponse(ZORWorkResponse* workResponse,
                           std::shared_ptr<const ZORNestNestingOutcome> outcome, QObject* parent);
    ZORWorkResponse* GetWorkResponse() const;

    class Private;
    const std::unique_ptr<Private> d;
};
