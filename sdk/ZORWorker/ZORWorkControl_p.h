// What the caller's side and the running side of a job share.

#pragma once

#include <QByteArray>
#include <QString>

#include <atomic>
#include <functional>

/// Every field is safe to use from both sides. The directory is written once, before the job starts.
class ZORWorkControl
{
public:
    QString directory;
    std::atomic<bool> isCanceled = false;
    std::atomic<bool> isStopped = false;
    std::atomic<double> progress = 0;
    std::atomic<bool> isProgressPending = false; // a notice of progress waits to be taken
};

/// What a job reports while it runs; both functions are called from any thread of the job.
class ZORWorkEvents
{
public:
    std::function<void()> progressed;               // the control holds a higher progress
    std::function<void(const QByteArray&)> interim; // empty where interim results are not wanted
};
