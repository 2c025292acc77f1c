// What the caller of a helper says about a job.

#pragma once

#include <QByteArray>
#include <QString>

namespace ZORWorkProtocol {

/// Caller: run this one.
struct Job
{
    QByteArray kind;
    QByteArray input;
    QString directory;
    qint64 memoryLimit = 0;  // bytes beyond what the helper has; 0: unlimited
    bool isStopped = false;  // from the beginning
    bool hasInterim = false; // which is to be completed instead of running the job
    QByteArray interim = {};
};

/// Caller: end with what there is.
struct Stop
{
};

/// Caller: give up.
struct Cancel
{
};

} // namespace ZORWorkProtocol
