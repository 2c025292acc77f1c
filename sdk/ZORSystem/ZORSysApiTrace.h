// Trace of the calls into the SDK: which public functions were called, with which values.

#pragma once

#include <ZORSystem/ZORSysTraceArguments.h>
#include <ZORSystem/ZORSystemGlobal.h>

#include <QByteArray>
#include <QObject>
#include <QString>

#include <atomic>
#include <memory>
#include <type_traits>

/// Collects one line per outermost SDK call while it is enabled.
///
/// Line format: Class::Method(arg, arg), a constructor as Class::Class(arg, ...). See ZorTraceAppend()
/// for the form of the arguments. A call that leaves by an exception adds " ! " and its message, or
/// " ! unknown exception" when it is none of the SDK's family. Control characters in messages and names
/// are shown as C escapes: a line never breaks. Nested SDK calls (an SDK function that calls another one)
/// write nothing of their own.
///
/// The environment variable ZOR_API_TRACE=<file> enables the trace from the first call on and writes
/// every line to that file; a file that cannot be written is reported as a warning. Calls of
/// other threads are traced with their own nesting. It is never destroyed, so that calls from static
/// destructors are traced too.
///
/// Thread safety: thread-safe.
class ZORSYSTEM_EXPORT ZORSysApiTrace : public QObject
{
    Q_OBJECT

public:
    static ZORSysApiTrace* GetInstance();

    /// Whether calls are recorded: true while there is a file or SetEnabled(true) was called.
    static bool IsEnabled() { return s_enabled.load(std::memory_order_relaxed); }
    /// Records calls for the receivers of CallTraced(). Does not touch the file.
    void SetEnabled(bool enabled);

    /// Writes every line to \a fileName from now on; the file is created or emptied. Each line is written
    /// when its call ends, so that a crash loses none. An empty name ends the writing. When a line cannot
    /// be written (a full disk) a warning says so and the writing ends.
    /// \throws ZORSysFileOpenException when the file cannot be written; the file before it then stays
    void SetFile(const QString& fileName);
    /// Name of the file that is written; empty without one.
    QString GetFile() const;

signals:
    /// One outermost call has ended. Emitted in the thread of the call, which may hold locks of its own:
    /// receivers of another thread get it queued. Exceptions of receivers are reported as warnings.
    /// \param line         without line break, UTF-8
    /// \param nanoseconds  wall time of the call
    void CallTraced(const QByteArray& line, qint64 nanoseconds);

private:
    friend class ZORSysApiTraceCall;
    ZORSysApiTrace();
    ~ZORSysApiTrace() override;

    void Record(const QByteArray& line, qint64 nanoseconds);
    void UpdateEnabled();

    class Private;
    const std::unique_ptr<Private> d;
    static std::atomic<bool> s_enabled;
};

/// One traced call; lives for the body of the function. Use it through ZOR_TRACE_CALL.
/// Thread safety: reentrant; an object belongs to its thread.
class ZORSYSTEM_EXPORT ZORSysApiTraceCall
{
public:
    template<class... Args>
    explicit ZORSysApiTraceCall(const char* function, const Args&... args)
    {
        if (ZORSysApiTrace::IsEnabled()) [[unlikely]]
            m_call = Begin<Args...>(function, args...);
    }
    ~ZORSysApiTraceCall()
    {
        if (m_call) [[unlikely]]
            End(m_call);
    }
    Q_DISABLE_COPY_MOVE(ZORSysApiTraceCall)

private:
    struct Call;

    // Numbers and pointers by value: parameters of the traced function can then stay in registers.
    template<class T>
    using Pass = std::conditional_t<std::is_scalar_v<T>, T, const T&>;

    // Kept out of the traced function, which holds nothing but the tests. Static: so can m_call.
    template<class... Args>
    [[gnu::cold, gnu::noinline]] Q_DECL_HIDDEN static Call* Begin(const char* function,
                                                                  Pass<Args>... args) noexcept
    {
        Call* const call = Enter(function);
        QByteArray* const line = GetLine(call);
        if (!line)
            return call;
        [[maybe_unused]] const qsizetype begin = line->size();
        ((line->size() > begin ? void(*line += ", ") : void(), ZorTraceAppend(*line, args)), ...);
        *line += ')';
        Start(call);
        return call;
    }

    static Call* Enter(const char* function);
    /// \return the line to complete; null when the call is nested in another one
    static QByteArray* GetLine(Call* call);
    static void Start(Call* call);
    [[gnu::cold]] static void End(Call* call);

    Call* m_call = nullptr; // owned unless nested; null while the trace is off
};

/// First line of every public SDK function that changes something or takes values chosen by the
/// caller; its arguments are those of the function. Off, it costs one branch on a flag (and in bodies that
/// the optimiser does not split by it, a test of a register at the end).
#define ZOR_TRACE_CALL(...)                                                                                  \
    const ZORSysApiTraceCall zorTraceCall(__PRETTY_FUNCTION__ __VA_OPT__(, ) __VA_ARGS__)
