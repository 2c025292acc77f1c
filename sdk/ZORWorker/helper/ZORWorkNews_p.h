// What a helper says about a job that runs.

#pragma once

#include <QByteArray>
#include <QString>

namespace ZORWorkProtocol {

/// Helper: the job has come so far. The first message about a job is a progress of 0, which says that it
/// begins.
struct Progress
{
    double value = 0;
};

/// Helper: the job could end with this.
struct Interim
{
    QByteArray result;
};

/// Helper: a line for the log.
struct Log
{
    quint8 severity = 0; // QtMsgType
    QByteArray category;
    QString text;
};

} // namespace ZORWorkProtocol
