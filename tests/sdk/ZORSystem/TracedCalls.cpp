#include "TracedCalls.h"

#include <ZORSystem/ZORSysFileException.h>

#include <new>

TracedCalls::TracedCalls()
{
    ZOR_TRACE_CALL();
}

TracedCalls::~TracedCalls() noexcept
{
    ZOR_TRACE_CALL();
}

void TracedCalls::SetBoth(int number, const QString& text)
{
    ZOR_TRACE_CALL(number, text);
}

void TracedCalls::Static(double value)
{
    ZOR_TRACE_CALL(value);
}

void TracedCalls::StaticOuter(int thread, int call)
{
    ZOR_TRACE_CALL(thread, call);
    Static(call);
}

int TracedCalls::Get(int value) const
{
    ZOR_TRACE_CALL(value);
    return value;
}

void (*TracedCalls::GetCallback(int value))(double)
{
    ZOR_TRACE_CALL(value);
    return [](double) {};
}

std::function<void(int)> TracedCalls::GetFunction(int value) const
{
    ZOR_TRACE_CALL(value);
    return {};
}

void TracedCalls::operator()(int value) const
{
    ZOR_TRACE_CALL(value);
}

TracedCalls& TracedCalls::operator<<(int value)
{
    ZOR_TRACE_CALL(value);
    return *this;
}

bool TracedCalls::operator<(int value) const
{
    ZOR_TRACE_CALL(value);
    return value < 0;
}

TracedCalls* TracedCalls::operator->()
{
    ZOR_TRACE_CALL();
    return this;
}

TracedCalls::operator bool() const
{
    ZOR_TRACE_CALL();
    return true;
}

void TracedCalls::Touch()
{
    ZOR_TRACE_CALL();
}

void TracedCalls::InLambda(int value)
{
    const auto lambda = [](int inner) { ZOR_TRACE_CALL(inner); };
    lambda(value);
}

void TracedCalls::Outer(int value)
{
    ZOR_TRACE_CALL(value);
    Get(value);
    Static(value);
}

void TracedCalls::Switch(bool on)
{
    ZOR_TRACE_CALL(on);
    ZORSysApiTrace::GetInstance()->SetEnabled(on);
}

void TracedCalls::Throw(const QString& message)
{
    ZOR_TRACE_CALL(message);
    throw ZORSysException(message);
}

void TracedCalls::ThrowNested(const QString& message)
{
    ZOR_TRACE_CALL(message);
    Throw(message);
}

void TracedCalls::ThrowFile(const QString& path, const QString& error)
{
    ZOR_TRACE_CALL(path, error);
    throw ZORSysFileOpenException(path, error);
}

void TracedCalls::ThrowOther()
{
    ZOR_TRACE_CALL();
    throw std::bad_alloc();
}

void TracedCalls::CatchInside(const QString& message)
{
    ZOR_TRACE_CALL(message);
    try {
        Throw(message);
    } catch (const ZORSysException&) {
        Get(0);
    }
}

void TracedCalls::CatchAndThrowOther(const QString& message)
{
    ZOR_TRACE_CALL(message);
    CatchInside(message);
    throw std::bad_alloc();
}

void TracedCalls::CatchAndRethrow(const QString& message)
{
    ZOR_TRACE_CALL(message);
    try {
        Throw(message);
    } catch (const ZORSysException&) {
        CatchInside(QStringLiteral("second"));
        throw;
    }
}

void TracedNamespace::Function(int value)
{
    ZOR_TRACE_CALL(value);
}

namespace {

class Unnamed
{
public:
    void Method(int value) { ZOR_TRACE_CALL(value); }
};

} // namespace

void CallUnnamed(int value)
{
    Unnamed().Method(value);
}
