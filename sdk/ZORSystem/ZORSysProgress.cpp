#include "ZORSysProgress.h"

#include <algorithm>
#include <chrono>
#include <utility>

ZORSysCanceledException::ZORSysCanceledException()
    : ZORSysException(tr("canceled"))
{
}

ZORSysCanceledException::~ZORSysCanceledException() = default;

namespace {

using Clock = std::chrono::steady_clock;

constexpr auto kInterval = std::chrono::milliseconds(20);

} // namespace

class ZORSysProgress::Private
{
public:
    void Check(double part);

    std::function<bool(double)> report;
    Private* former = nullptr; // not owned
    double progress = 0;
    Clock::time_point next = Clock::now() + kInterval;

    static thread_local Private* s_current; // not owned
};

thread_local ZORSysProgress::Private* ZORSysProgress::Private::s_current = nullptr;

void ZORSysProgress::Private::Check(double part)
{
    progress = std::max(progress, std::min(part, 1.0));
    if (Clock::now() < next)
        return;
    Private* const self = std::exchange(s_current, nullptr); // the function may compute something itself
    bool goesOn = false;
    try {
        goesOn = report(progress);
    } catch (...) {
        s_current = self;
        throw;
    }
    s_current = self;
    if (!goesOn)
        throw ZORSysCanceledException();
    next = Clock::now() + kInterval;
}

ZORSysProgress::ZORSysProgress(std::function<bool(double)> report)
    : d(std::make_unique<Private>())
{
    d->report = std::move(report);
    d->former = std::exchange(Private::s_current, d.get());
}

ZORSysProgress::~ZORSysProgress()
{
    Private::s_current = d->former;
}

void ZORSysProgress::Check(double part)
{
    if (Private::s_current)
        Private::s_current->Check(part);
}
