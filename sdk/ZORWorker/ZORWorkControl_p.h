// What the caller's side and the running side of a job share.

#pragma once

#include <QString>

#include <atomic>

/// Every field is safe to use from both sides. The directory is written once, before the job is told to run.
class ZORWorkControl
{
public:
    QString directory;
    std::atomic<bool> isCanceled = false;
    std::atomic<bool> isStopped = false;
    std::atomic<double> progress = 0;
    std::atomic<bool> isProgressPending = false; // a notice of progress waits to be taken
};
