// What a running job knows of the world.

#pragma once

#include <ZORWorker/ZORWorkResult.h>
#include <ZORWorker/ZORWorkerGlobal.h>

#include <QString>

#include <functional>

class ZORWorkControl;

/// Thrown by ZORWorkContext::ThrowIfCanceled() and caught by the machinery. Deliberately of no family: a job that
/// catches std::exception for its own purposes does not swallow it.
struct ZORWORKER_EXPORT ZORWorkCanceled
{
};

/// Handed to a job for the time of its run; every function may be called from any thread of the job.
class ZORWORKER_EXPORT ZORWorkContext
{
public:
    /// Directory of this job alone, made for it and empty at its start.
    QString GetWorkDirectory() const;

    /// Whether somebody wants the job to give up. It should look at least every 50 ms. Costs a load.
    bool IsCanceled() const;
    /// Whether somebody wants the job to end soon with the best that it has; true as well when cancelled.
    bool IsStopped() const;
    /// \throws ZORWorkCanceled when IsCanceled()
    void ThrowIfCanceled() const;

    /// \param progress  0 to 1; values that are not above the last one are ignored
    void SetProgress(double progress) const;

private:
    friend class ZORWorkTeam;
    ZORWorkContext(ZORWorkControl& control, const std::function<void()>& progressed);
    Q_DISABLE_COPY_MOVE(ZORWorkContext)

    ZORWorkControl& m_control;
    const std::function<void()>& m_progressed;
};

/// One piece of work.
struct ZORWORKER_EXPORT ZORWorkJob
{
    /// For the log and for the name of the work directory.
    QString name;
    /// Runs in a thread of the processor. Whatever it throws makes the job fail with the message of the exception.
    /// It returns only its own files, since their reader may delete them. What it captures is
    /// destroyed when the run is over, in that thread, or with the processor.
    std::function<ZORWorkResult(const ZORWorkContext& context)> run;
    /// Whether the work directory stays.
    bool isDirectoryKept = false;
    /// Whether a stop before the start makes the job run all the same, with IsStopped() true from the beginning.
    /// Otherwise it is cancelled.
    bool runsWhenStopped = false;
};
