// Trace of the calls into the SDK: which public functions were called, with which values.

#pragma once

#include <ZORSystem/ZORSystemGlobal.h>

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QString>

#include <type_traits>

/// Collects one line per outermost SDK call while it is enabled.
///
/// Line format: Class::Method(arg, arg), a constructor as Class::Class(arg, ...). See ZorTraceAppend()
/// for the form of the arguments. A call that leaves by an exception adds " ! " and its message.
/// Nested SDK calls (an SDK function that calls another one) write nothing of their own.
///
/// The environment variable ZOR_API_TRACE=<file> enables the trace from the first call on and writes
/// every line to that file. Thread-safe: calls of other threads are traced with their own nesting.
class ZORSYSTEM_EXPORT ZORSysApiTrace : public QObject
{
    Q_OBJECT

public:
    static ZORSysApiTrace* GetInstance();

    /// Whether calls are recorded: true while there is a file or SetEnabled(true) was called.
    static bool IsEnabled() { return s_enabled; }
    /// Records calls for the receivers of CallTraced(). Does not touch the file.
    void SetEnabled(bool enabled);

    /// Appends every line to \a fileName, which is created or emptied; an empty name closes the file.
    /// \throws ZORSysFileOpenException when the file cannot be written
    void SetFile(const QString& fileName);

signals:
    /// One outermost call has ended. Emitted in the thread of the call.
    /// \param line         without line break
    /// \param nanoseconds  wall time of the call
    void CallTraced(const QByteArray& line, qint64 nanoseconds);

private:
    friend class ZORSysApiTraceCall;
    ZORSysApiTrace();
    ~ZORSysApiTrace() override;

    void Record(const QByteArray& line, qint64 nanoseconds);
    void UpdateEnabled();

    class Private;
    Private* const d; // owned
    static bool s_enabled;
};

/// Appends an argument to a traced line. Every type that is passed to ZOR_TRACE_CALL needs an overload
/// that is found by its namespace or class (a friend function of a value class):
/// doubles with 17 significant digits (nan, inf), booleans as true and false, strings in double quotes
/// with C escapes, enumerators as their number, pointers to QObjects as their object name in angle
/// brackets or null, points and the like as (x, y, z), lists as [n], byte arrays as bytes[n].
ZORSYSTEM_EXPORT void ZorTraceAppend(QByteArray& out, double value);
ZORSYSTEM_EXPORT void ZorTraceAppend(QByteArray& out, const QString& value);
ZORSYSTEM_EXPORT void ZorTraceAppend(QByteArray& out, const char* value);
ZORSYSTEM_EXPORT void ZorTraceAppend(QByteArray& out, const QByteArray& value);
ZORSYSTEM_EXPORT void ZorTraceAppend(QByteArray& out, const QObject* value);
ZORSYSTEM_EXPORT void ZorTraceAppend(QByteArray& out, const QMetaObject* value);
ZORSYSTEM_EXPORT void ZorTraceAppendInteger(QByteArray& out, qint64 value);
ZORSYSTEM_EXPORT void ZorTraceAppendBool(QByteArray& out, bool value);
/// Objects that are no QObject have no name: "<object>", or null.
ZORSYSTEM_EXPORT void ZorTraceAppendPointer(QByteArray& out, const void* value);

template<class T>
requires(std::is_integral_v<T> || std::is_enum_v<T>) void ZorTraceAppend(QByteArray& out, T value)
{
    if constexpr (std::is_same_v<T, bool>)
        ZorTraceAppendBool(out, value);
    else
        ZorTraceAppendInteger(out, static_cast<qint64>(value));
}

template<class T>
void ZorTraceAppend(QByteArray& out, const QList<T>& value)
{
    out += '[' + QByteArray::number(value.size()) + ']';
}

template<class Enum>
void ZorTraceAppend(QByteArray& out, QFlags<Enum> value)
{
    ZorTraceAppendInteger(out, value.toInt());
}

template<class T>
requires(
    !std::is_base_of_v<
        QObject,
        T> && !std::is_same_v<std::remove_cv_t<T>, char> && !std::is_same_v<std::remove_cv_t<T>, QMetaObject>) void ZorTraceAppend(QByteArray&
                                                                                                                                       out,
                                                                                                                                   T* value)
{
    ZorTraceAppendPointer(out, value);
}

/// One traced call; lives for the body of the function. Use it through ZOR_TRACE_CALL.
class ZORSYSTEM_EXPORT ZORSysApiTraceCall
{
public:
    template<class... Args>
    explicit ZORSysApiTraceCall(const char* function, const Args&... args)
    {
        if (!ZORSysApiTrace::IsEnabled()) [[likely]]
            return;
        if (!Enter(function))
            return;
        [[maybe_unused]] bool first = true;
        (
            [&] {
                if (!first)
                    m_line += ", ";
                first = false;
                ZorTraceAppend(m_line, args);
            }(),
            ...);
        m_line += ')';
    }
    ~ZORSysApiTraceCall()
    {
        if (m_entered) [[unlikely]]
            Leave();
    }
    Q_DISABLE_COPY_MOVE(ZORSysApiTraceCall)

private:
    /// \return whether this is the outermost call, whose line is wanted
    bool Enter(const char* function);
    void Leave();

    bool m_entered = false;
    bool m_outermost = false;
    int m_exceptions = 0;
    qint64 m_start = 0;
    QByteArray m_line;
};

/// First line of every public SDK function that changes something or takes values chosen by the
/// caller; its arguments are those of the function. Off, it costs one branch.
#define ZOR_TRACE_CALL(...)                                                                                  \
    const ZORSysApiTraceCall zorTraceCall(__PRETTY_FUNCTION__ __VA_OPT__(, ) __VA_ARGS__)
