#include "docks/ZORHostLog.h"

#include <QReadWriteLock>
#include <QTime>

#include <cstdio>

namespace {

// The handler may run in any thread while the log comes or goes.
QReadWriteLock s_lock;
ZORHostLog* s_log = nullptr;
QtMessageHandler s_former = nullptr;

ZORHostLog::Level ToLevel(QtMsgType type)
{
    switch (type) {
    case QtDebugMsg:
        return ZORHostLog::Debug;
    case QtInfoMsg:
        return ZORHostLog::Info;
    case QtWarningMsg:
        return ZORHostLog::Warning;
    case QtCriticalMsg:
        return ZORHostLog::Critical;
    case QtFatalMsg:
        break;
    }
    return ZORHostLog::Fatal;
}

QString LevelName(ZORHostLog::Level level)
{
    switch (level) {
    case ZORHostLog::Debug:
        return ZORHostLog::tr("Debug");
    case ZORHostLog::Info:
        return ZORHostLog::tr("Info");
    case ZORHostLog::Warning:
        return ZORHostLog::tr("Warning");
    case ZORHostLog::Critical:
        return ZORHostLog::tr("Error");
    case ZORHostLog::Fatal:
        break;
    }
    return ZORHostLog::tr("Fatal");
}

} // namespace

ZORHostLog::ZORHostLog()
    : m_queue(kCapacity)
{
    const QWriteLocker lock(&s_lock);
    Q_ASSERT(!s_log);
    s_log = this;
    s_former = qInstallMessageHandler(&ZORHostLog::Handle);
}

ZORHostLog::~ZORHostLog()
{
    const QWriteLocker lock(&s_lock);
    qInstallMessageHandler(s_former);
    s_log = nullptr;
    s_former = nullptr;
}

void ZORHostLog::Handle(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    static thread_local bool inside = false;
    if (inside) {
        std::fprintf(stderr, "%s\n", qPrintable(message));
        return;
    }
    inside = true;
    {
        const QReadLocker lock(&s_lock);
        if (s_former)
            s_former(type, context, message);
        if (s_log) {
            const Level level = ToLevel(type);
            s_log->m_queue.Add({level,
                                {QTime::currentTime().toString("hh:mm:ss.zzz"), LevelName(level),
                                 QString::fromLatin1(context.category), message}});
        }
    }
    inside = false;
}
