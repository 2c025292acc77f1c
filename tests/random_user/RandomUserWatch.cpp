#include "RandomUserWatch.h"

#include <QRegularExpression>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <execinfo.h>
#include <unistd.h>

namespace {

constexpr int kDeepestStack = 64;
constexpr int kMostChecks =
    10; // turns of the event loop until a closed window is deleted and the program ends

struct Harmless
{
    const char* category; // empty: any
    const char* pattern;
    const char* reason;
};

/// Messages that do not mean a fault.
const Harmless kHarmless[] = {
    {"default", "^This plugin does not support ", "the platform without a screen lacks what real ones have"},
    {"zor.geometry", "", "reports on damaged files and on curves that end early"},
    {"zor.composites", "", "reports on damaged layups"},
    {"zor.feature", "", "reports features that cannot be computed from their inputs"},
    {"zor.worker", "", "reports jobs that fail because of their files, or that are canceled"},
    {"zor.nesting", "", "reports files that cannot be written"},
    {"zor.host", "^Plug-in '", "reports plug-ins that cannot be loaded"},
    {"zor.host", "^Cannot (read|open|write)( file)? '", "reports files that cannot be read or written"},
    {"zor.host", " was not opened, because the document has changed while the file was being read$",
     "reports that"},
};

/// Messages that mean a fault although their category is harmless.
const char* const kFaults[] = {"reference",
                               "unknown exception",
                               "bad_alloc",
                               "memory",
                               "in threads of this process",
                               "crashed",
                               "broke the protocol",
                               "its connection",
                               "ended its process",
                               "the process of the job has ended",
                               "the process of the job was killed",
                               "did not end within"};

bool IsHarmless(const QMessageLogContext& context, const QString& message)
{
    for (const char* fault : kFaults) {
        if (message.contains(QLatin1String(fault)))
            return false;
    }
    for (const Harmless& harmless : kHarmless) {
        if ((!*harmless.category || qstrcmp(harmless.category, context.category) == 0)
            && message.contains(QRegularExpression(QString::fromLatin1(harmless.pattern))))
            return true;
    }
    return false;
}

void HandleMessage(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    std::fprintf(stderr, "%s: %s\n", context.category, qPrintable(message));
    if (type != QtDebugMsg && type != QtInfoMsg && !IsHarmless(context, message))
        RandomUserWatch::Fail(QStringLiteral("message: %1").arg(message));
}

void PrintStack()
{
    void* frames[kDeepestStack];
    backtrace_symbols_fd(frames, backtrace(frames, kDeepestStack), STDERR_FILENO);
}

void HandleHang(int)
{
    PrintStack();
    const char text[] = "FAILURE: hang\n";
    [[maybe_unused]] const auto written = write(STDERR_FILENO, text, sizeof(text) - 1);
    std::_Exit(RandomUserWatch::kFailed);
}

void HandleCrash(int signal)
{
    PrintStack();
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

void WatchSignals()
{
    std::signal(SIGUSR2, &HandleHang);
#ifndef __SANITIZE_ADDRESS__ // prints better stacks itself
    for (const int signal : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT})
        std::signal(signal, &HandleCrash);
#else
    Q_UNUSED(&HandleCrash)
#endif
}

} // namespace

RandomUserWatch::RandomUserWatch()
    : m_former(qInstallMessageHandler(&HandleMessage))
    , m_mainThread(pthread_self())
{
    void* frame = nullptr;
    backtrace(&frame, 1); // loads what it needs now and not in a handler
    WatchSignals();
    m_thread = std::thread([this] { WatchBeats(); });
}

RandomUserWatch::~RandomUserWatch()
{
    {
        const std::lock_guard lock(m_mutex);
        m_isOver = true;
    }
    m_changed.notify_one();
    m_thread.join();
    qInstallMessageHandler(m_former);
}

void RandomUserWatch::Fail(const QString& what)
{
    PrintStack();
    std::fprintf(stderr, "FAILURE: %s\n", qPrintable(QString(what).replace(u'\n', u' ')));
    std::fflush(stderr);
    std::_Exit(kFailed);
}

void RandomUserWatch::ExpectGone(QWidget* window, bool isToDie)
{
    if (window->isVisible())
        Fail(QStringLiteral("window left after close: %1")
                 .arg(QLatin1String(window->metaObject()->className())));
    if (isToDie)
        m_closed.append({window, 0});
}

void RandomUserWatch::CheckGone()
{
    m_closed.removeIf([](const Closed& closed) { return !closed.window; });
    for (Closed& closed : m_closed) {
        if (++closed.numChecks > kMostChecks) {
            Fail(QStringLiteral("window not deleted after close: %1")
                     .arg(QLatin1String(closed.window->metaObject()->className())));
        }
    }
}

void RandomUserWatch::CheckReachable(bool isReachable)
{
    m_numUnreachable = isReachable ? 0 : m_numUnreachable + 1;
    if (m_numUnreachable > kMostChecks)
        Fail(QStringLiteral("the program goes on without a window"));
}

void RandomUserWatch::Beat()
{
    {
        const std::lock_guard lock(m_mutex);
        ++m_beats;
    }
    m_changed.notify_one();
}

void RandomUserWatch::WatchBeats()
{
    std::unique_lock lock(m_mutex);
    while (!m_isOver) {
        const auto goesOn = [this, beats = m_beats] { return m_isOver || m_beats != beats; };
        if (!m_changed.wait_for(lock, std::chrono::seconds(kLongestAction), goesOn))
            pthread_kill(m_mainThread, SIGUSR2);
    }
}
