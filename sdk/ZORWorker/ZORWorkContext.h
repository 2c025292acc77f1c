// What a running job learns from its caller, and what it reports.

#pragma once

#include <ZORWorker/ZORWorkResult.h>
#include <ZORWorker/ZORWorkerGlobal.h>

#include <QByteArray>
#include <QString>

#include <functional>

class ZORWorkControl;
class ZORWorkEvents;

/// Thrown by ZORWorkContext::ThrowIfCanceled() and caught by the machinery. Deliberately of no family: a job
/// that catches std::exception for its own purposes does not swallow it.
///
/// Thread safety: reentrant; objects may be shared read-only.
struct ZORWORKER_EXPORT ZORWorkCanceled
{
};

/// Passed to a job for the time of its run.
/// Thread safety: thread-safe.
class ZORWORKER_EXPORT ZORWorkContext
{
public:
    /// Directory of this job alone, made for it and empty at its start.
    QString GetWorkDirectory() const;

    /// Whether somebody wants the job to give up. Check it at least every 50 ms. Costs a load.
    bool IsCanceled() const;
    /// Whether somebody wants the job to end soon with the best that it has; true as well when canceled.
    bool IsStopped() const;
    /// \throws ZORWorkCanceled when IsCanceled()
    void ThrowIfCanceled() const;

    /// \param progress  0 to 1; values that are not above the last one are ignored
    void SetProgress(double progress) const;

    /// Keeps what the job could end with now; each one replaces the last. A job in a helper process that does
    /// not answer a Stop is completed with it, by ZORWorkJobKind::Complete. In threads, which always answer,
    /// it has no effect. In a helper it costs one copy of the bytes to the other process, so send better
    /// results only.
    /// \param result  at most kMaximumInterimSize bytes; a longer one is ignored and the last one stays
    void SetInterimResult(const QByteArray& result) const;

    /// Bytes of an interim result.
    static constexpr qsizetype kMaximumInterimSize = qsizetype(256) << 20;

private:
    friend class ZORWorkServer;
    friend class ZORWorkTeam;
    ZORWorkContext(ZORWorkControl& control, const ZORWorkEvents& events);
    Q_DISABLE_COPY_MOVE(ZORWorkContext)

    ZORWorkControl& m_control;
    const ZORWorkEvents& m_events;
};

/// One piece of work: a function, or a kind with its input.
/// Thread safety: reentrant; objects may be shared read-only.
struct ZORWORKER_EXPORT ZORWorkJob
{
    /// For the log and for the name of the work directory.
    QString name;
    /// Always runs in a thread of the processor; empty for a job with a kind. Whatever it throws makes the
    /// job fail with the message of the exception. It returns only its own files, since their reader may
    /// delete them. What it captures is destroyed when the run is over, in that thread, or with the
    /// processor.
    std::function<ZORWorkResult(const ZORWorkContext& context)> run;
    /// Whether the work directory stays.
    bool isDirectoryKept = false;
    /// Whether a stop before the start makes the job run all the same, with IsStopped() true from the
    /// beginning. Otherwise it is canceled.
    bool runsWhenStopped = false;
    /// A registered ZORWorkJobKind, which runs in a helper process or in a thread; empty for a job with a
    /// function.
    QByteArray kind = {};
    /// What the kind works on.
    QByteArray input = {};
    /// Receives the result of a run that succeeded, in the thread of the processor, before any signal of the job's
    /// end, and returns what the response is to keep of it; empty where that is all. Whatever it throws makes
    /// the job fail with the message of the exception. Not called for a canceled job.
    std::function<ZORWorkResult(const ZORWorkResult& result)> accept = {};
};
