// Keeps Qt's log messages for the log dock.

#pragma once

#include "docks/ZORHostLineQueue.h"

#include <QCoreApplication>
#include <QLoggingCategory>

/// Installs itself as Qt's message handler for its life time and passes every message on to the handler
/// that was there before. Messages of all threads arrive; a message written while one is being handled
/// in the same thread goes to the error stream only.
///
/// One object at a time.
class ZORHostLog
{
    Q_DECLARE_TR_FUNCTIONS(ZORHostLog)

public:
    /// Levels of the lines, in the order of their weight.
    enum Level { Debug, Info, Warning, Critical, Fatal };

    static constexpr int kCapacity = 10'000;

    ZORHostLog();
    ~ZORHostLog();
    Q_DISABLE_COPY_MOVE(ZORHostLog)

    /// Delivers lines with the cells time (hh:mm:ss.zzz), level, category and message.
    ZORHostLineQueue* GetQueue() { return &m_queue; }

private:
    static void Handle(QtMsgType type, const QMessageLogContext& context, const QString& message);

    ZORHostLineQueue m_queue;
};
