// What a helper says about the end of a job.

#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace ZORWorkProtocol {

/// Helper: the job is done.
struct Result
{
    QStringList files;
    QByteArray data;
};

/// Helper: the job has failed.
struct Failure
{
    QString reason;
    bool endsHelper = false; // it takes no further job
};

/// Helper: the job has given up.
struct Canceled
{
};

} // namespace ZORWorkProtocol
