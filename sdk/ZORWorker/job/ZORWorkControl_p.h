// What the caller's side and the running side of a job share.

#pragma once

#include <QByteArray>
#include <QString>

#include <atomic>
#include <functional>
#include <mutex>

/// Every field is safe to use from both sides. The directory is written once, before the job starts.
class ZORWorkControl
{
public:
    QString directory;
    std::atomic<bool> isCanceled = false;
    std::atomic<bool> isStopped = false;
    std::atomic<bool> hasBegun = false; // it no longer waits for a thread or a helper process
    std::atomic<double> progress = 0;
    std::atomic<bool> isProgressPending = false; // a notice of progress waits to be taken

    void Cancel() { Raise(isCanceled); }
    void Stop() { Raise(isStopped); }
    /// \param wake  called, with a lock of this object held, whenever a request was raised; empty for none
    void SetWake(std::function<void()> wake)
    {
        const std::lock_guard lock(m_mutex);
        m_wake = std::move(wake);
    }

private:
    void Raise(std::atomic<bool>& request)
    {
        request = true;
        const std::lock_guard lock(m_mutex);
        if (m_wake)
            m_wake();
    }

    std::mutex m_mutex; // of the function
    std::function<void()> m_wake;
};

/// Sets the function to wake who waits on behalf of a job, for its own life time.
class ZORWorkWake
{
public:
    ZORWorkWake(ZORWorkControl& control, std::function<void()> wake)
        : m_control(control)
    {
        m_control.SetWake(std::move(wake));
    }
    ~ZORWorkWake() { m_control.SetWake({}); }
    Q_DISABLE_COPY_MOVE(ZORWorkWake)

private:
    ZORWorkControl& m_control;
};

/// What a job reports while it runs; both functions are called from any thread of the job.
class ZORWorkEvents
{
public:
    std::function<void()> progressed;               // the control holds a higher progress
    std::function<void(const QByteArray&)> interim; // empty where interim results are not wanted
};
