// Long work in a separate thread.

#pragma once

#include <ZORCommand/ZORCommandGlobal.h>

#include <QObject>

#include <functional>
#include <memory>

/// Runs a function in a thread while the event loop goes on, with progress and cancellation.
///
///     auto* task = new ZORCmdTask([input](const ZORCmdTask::Report& report) { Compute(input, report); }, this);
///     connect(task, &ZORCmdTask::Finished, this, [this, task] { if (task->GetOutcome() == ZORCmdTask::Succeeded) ... });
///     task->Start();
///
/// The function works on what it has captured. What that refers to must stay unchanged until the task has finished, so take
/// copies of values that share their data and counted references to geometry.
///
/// Thread safety: reentrant; an object belongs to its thread.
class ZORCOMMAND_EXPORT ZORCmdTask : public QObject
{
    Q_OBJECT

public:
    /// Takes the part of the work that is done, 0 to 1, and returns false once the work is to be given up. May be called as
    /// often as it suits, in the thread of the work.
    using Report = std::function<bool(double)>;
    using Work = std::function<void(const Report& report)>;

    enum Outcome : int {
        Pending,   ///< not started, or still running
        Succeeded, ///< the function has returned and the task was not canceled
        Canceled,  ///< canceled, whatever the function did after that
        Failed,    ///< the function has thrown an exception
    };

    explicit ZORCmdTask(Work work, QObject* parent = nullptr);
    /// Cancels the work and waits for its end.
    ~ZORCmdTask() override;

    /// Starts the thread; once.
    void Start();
    /// Makes the reports return false. The task ends when the function does.
    void Cancel();
    /// Runs the event loop until the task has finished; returns at once if it is not running.
    void Wait();
    /// Waits for the end of the task without running the event loop. Finished() is emitted by this call if it comes first.
    void WaitForThread();

    bool IsRunning() const;
    bool IsCanceled() const;
    Outcome GetOutcome() const;
    /// Returns the greatest part that was reported, 0 to 1.
    double GetProgress() const;
    /// Throws again what the function has thrown; does nothing for another outcome.
    void ThrowFailure() const;

signals:
    /// The progress is another one. Emitted at most some twenty times a second.
    void ProgressChanged(double progress);
    /// The task is at its end and has an outcome.
    void Finished();

private:
    void Finish();
    void UpdateProgress();

    class Private;
    const std::unique_ptr<Private> d;
};
