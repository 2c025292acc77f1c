#include "ZORSysException.h"

#include "trace/ZORSysException_p.h"

#include <algorithm>
#include <atomic>
#include <vector>

namespace {

struct LiveException
{
    quint64 number = 0;
    QString message;
};

std::atomic<quint64> lastNumber = 0;

// Exceptions may be constructed by static destructors, after the thread's objects are gone.
thread_local bool listIsGone = false;

// Those of this thread, oldest first. One that is destroyed in another thread stays until it is pushed out.
struct LiveExceptions
{
    static constexpr size_t kMaximum = 16;
    std::vector<LiveException> list;

    ~LiveExceptions() { listIsGone = true; }
};
thread_local LiveExceptions liveExceptions;

quint64 Enlist(const QString& message)
{
    const quint64 number = ++lastNumber;
    if (listIsGone)
        return number;
    auto& list = liveExceptions.list;
    if (list.size() == LiveExceptions::kMaximum)
        list.erase(list.begin());
    list.push_back({number, message});
    return number;
}

void Delist(quint64 number)
{
    if (!listIsGone)
        std::erase_if(liveExceptions.list, [number](const LiveException& e) { return e.number == number; });
}

} // namespace

ZORSysException::ZORSysException(const QString& message)
    : m_message(message)
    , m_what(message.toUtf8())
    , m_number(Enlist(message))
{
}

ZORSysException::ZORSysException(const ZORSysException& other)
    : std::exception(other)
    , m_message(other.m_message)
    , m_what(other.m_what)
    , m_number(Enlist(other.m_message))
{
}

ZORSysException& ZORSysException::operator=(const ZORSysException& other)
{
    if (this == &other)
        return *this;
    m_message = other.m_message;
    m_what = other.m_what;
    Delist(m_number);
    m_number = Enlist(m_message);
    return *this;
}

ZORSysException::~ZORSysException()
{
    Delist(m_number);
}

quint64 ZORSysExceptionWatch::GetMark()
{
    return lastNumber;
}

std::optional<QString> ZORSysExceptionWatch::GetMessageSince(quint64 mark)
{
    if (listIsGone || liveExceptions.list.empty() || liveExceptions.list.back().number <= mark)
        return std::nullopt;
    return liveExceptions.list.back().message;
}
