// Functions of every kind that are traced, for the tests of the trace.

#pragma once

#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysException.h>

#include <functional>

class TracedCalls
{
public:
    enum Plain { Eight = 8 };
    enum class Unsigned : quint32 { Largest = 4294967295U };
    enum class Scoped : signed char { Minus = -1 };

    TracedCalls();
    ~TracedCalls() noexcept;
    Q_DISABLE_COPY_MOVE(TracedCalls)

    template<class T>
    void TakeAny(const T& value)
    {
        ZOR_TRACE_CALL(value);
    }

    void SetBoth(int number, const QString& text);
    static void Static(double value);
    static void StaticOuter(int thread, int call);
    int Get(int value) const;
    void (*GetCallback(int value))(double);
    std::function<void(int)> GetFunction(int value) const;
    void operator()(int value) const;
    TracedCalls& operator<<(int value);
    bool operator<(int value) const;
    TracedCalls* operator->();
    explicit operator bool() const;
    void Touch();
    void InLambda(int value);
    void Outer(int value);
    void Switch(bool on);

    void Throw(const QString& message);
    void ThrowNested(const QString& message);
    void ThrowFile(const QString& path, const QString& error);
    void ThrowOther();
    void CatchInside(const QString& message);
    void CatchAndThrowOther(const QString& message);
    void CatchAndRethrow(const QString& message);
};

template<class T>
class TracedTemplate
{
public:
    explicit TracedTemplate(int value) { ZOR_TRACE_CALL(value); }
    template<class U>
    T Take(const U& value)
    {
        ZOR_TRACE_CALL(value);
        return {};
    }
};

namespace TracedNamespace {
void Function(int value);
}

/// Calls a traced method of a class in an unnamed namespace.
void CallUnnamed(int value);
