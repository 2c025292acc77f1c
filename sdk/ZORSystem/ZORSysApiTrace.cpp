#include "ZORSysApiTrace.h"

#include "ZORSysApiTracePause.h"
#include "trace/ZORSysCalledName_p.h"
#include "trace/ZORSysException_p.h"

#include <ZORSystem/ZORSysFile.h>
#include <ZORSystem/ZORSysFileException.h>

#include <QMutex>

#include <chrono>
#include <exception>
#include <memory>

class ZORSysApiTrace::Private
{
public:
    mutable QMutex mutex; // of all that follows
    std::unique_ptr<ZORSysFile> file;
    bool wanted = false;
};

struct ZORSysApiTraceCall::Call
{
    QByteArray line;
    qint64 start = 0;
    int uncaughtExceptions = 0;
    quint64 exceptionMark = 0;
};

std::atomic<bool> ZORSysApiTrace::s_enabled = false;

namespace {

// Traced calls that this thread is in. Of trivial type: static destructors run after the others are gone.
thread_local int depth = 0;

qint64 Now()
{
    return std::chrono::duration_cast<std::chrono::nanoseconds>(
               std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

// Reads ZOR_API_TRACE before the first call of the process.
[[gnu::used]] const bool kIsInitialized = [] {
    const QString file = qEnvironmentVariable("ZOR_API_TRACE");
    if (file.isEmpty())
        return true;
    try {
        ZORSysApiTrace::GetInstance()->SetFile(file);
    } catch (const ZORSysException& exception) {
        qWarning("ZOR_API_TRACE: %s", exception.what());
    }
    return true;
}();

} // namespace

ZORSysApiTrace* ZORSysApiTrace::GetInstance()
{
    static auto* const trace = new ZORSysApiTrace;
    return trace;
}

ZORSysApiTrace::ZORSysApiTrace()
    : d(std::make_unique<Private>())
{
    setObjectName(QStringLiteral("ZORSysApiTrace"));
}

ZORSysApiTrace::~ZORSysApiTrace() = default;

void ZORSysApiTrace::SetEnabled(bool enabled)
{
    const QMutexLocker lock(&d->mutex);
    d->wanted = enabled;
    UpdateEnabled();
}

void ZORSysApiTrace::SetFile(const QString& fileName)
{
    const QMutexLocker lock(&d->mutex);
    if (fileName.isEmpty()) {
        d->file.reset();
    } else {
        auto file = std::make_unique<ZORSysFile>(fileName);
        if (!file->open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered))
            throw ZORSysFileOpenException(fileName, file->errorString());
        d->file = std::move(file);
    }
    UpdateEnabled();
}

QString ZORSysApiTrace::GetFile() const
{
    const QMutexLocker lock(&d->mutex);
    return d->file ? d->file->fileName() : QString();
}

void ZORSysApiTrace::UpdateEnabled()
{
    s_enabled = d->wanted || d->file;
}

void ZORSysApiTrace::Record(const QByteArray& line, qint64 nanoseconds)
{
    QString failure;
    {
        const QMutexLocker lock(&d->mutex);
        const QByteArray text = line + '\n';
        if (d->file && d->file->write(text) != text.size()) {
            failure = tr("cannot write API trace '%1': %2").arg(d->file->fileName(), d->file->errorString());
            d->file.reset();
            UpdateEnabled();
        }
    }
    // Without the lock: receivers and message handlers may call anything.
    if (!failure.isEmpty())
        qWarning("%s", qUtf8Printable(failure));
    emit CallTraced(line, nanoseconds);
}

ZORSysApiTraceCall::Call* ZORSysApiTraceCall::Enter(const char* function)
{
    static Call nested; // stands for all of them: they have nothing of their own
    if (depth++ > 0)
        return &nested;
    return new Call{ZorSysCalledName(function) + '('};
}

QByteArray* ZORSysApiTraceCall::GetLine(Call* call)
{
    return depth > 1 ? nullptr : &call->line;
}

void ZORSysApiTraceCall::Start(Call* call)
{
    call->uncaughtExceptions = std::uncaught_exceptions();
    call->exceptionMark = ZORSysExceptionWatch::GetMark();
    call->start = Now();
}

void ZORSysApiTraceCall::End(Call* ended)
{
    if (depth > 1) {
        --depth;
        return;
    }
    const std::unique_ptr<Call> call(ended);
    const qint64 elapsed = Now() - call->start;
    try {
        if (std::uncaught_exceptions() > call->uncaughtExceptions) {
            const auto message = ZORSysExceptionWatch::GetMessageSince(call->exceptionMark);
            call->line += " ! ";
            ZorTraceAppendEscaped(call->line, message ? message->toUtf8() : "unknown exception");
        }
        // Still inside the call: what a receiver calls is nested and does not come back here.
        if (ZORSysApiTrace::IsEnabled())
            ZORSysApiTrace::GetInstance()->Record(call->line, elapsed);
    } catch (const std::exception& exception) {
        qWarning("receiver of the API trace failed: %s", exception.what());
    } catch (...) {
        qWarning("receiver of the API trace failed");
    }
    --depth;
}

ZORSysApiTracePause::ZORSysApiTracePause()
{
    ++depth;
}

ZORSysApiTracePause::~ZORSysApiTracePause()
{
    --depth;
}
