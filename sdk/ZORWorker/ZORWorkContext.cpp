#include "ZORWorkContext.h"

#include "ZORWorkControl_p.h"

ZORWorkContext::ZORWorkContext(ZORWorkControl& control, const std::function<void()>& progressed)
    : m_control(control)
    , m_progressed(progressed)
{
}

QString ZORWorkContext::GetWorkDirectory() const
{
    return m_control.directory;
}

bool ZORWorkContext::IsCanceled() const
{
    return m_control.isCanceled.load(std::memory_order_relaxed);
}

bool ZORWorkContext::IsStopped() const
{
    return m_control.isStopped.load(std::memory_order_relaxed) || IsCanceled();
}

void ZORWorkContext::ThrowIfCanceled() const
{
    if (IsCanceled())
        throw ZORWorkCanceled();
}

void ZORWorkContext::SetProgress(double progress) const
{
    // Also what is not a number goes no further.
    const double bounded = progress > 1 ? 1 : progress;
    double last = m_control.progress.load();
    while (bounded > last) {
        if (m_control.progress.compare_exchange_weak(last, bounded)) {
            m_progressed();
            return;
        }
    }
}
