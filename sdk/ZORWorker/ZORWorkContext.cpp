#include "ZORWorkContext.h"

#include "job/ZORWorkControl_p.h"

ZORWorkContext::ZORWorkContext(ZORWorkControl& control, const ZORWorkEvents& events)
    : m_control(control)
    , m_events(events)
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
    // Values that are not numbers end here too.
    const double bounded = progress > 1 ? 1 : progress;
    double last = m_control.progress.load();
    while (bounded > last) {
        if (m_control.progress.compare_exchange_weak(last, bounded)) {
            m_events.progressed();
            return;
        }
    }
}

void ZORWorkContext::SetInterimResult(const QByteArray& result) const
{
    if (m_events.interim && result.size() <= kMaximumInterimSize)
        m_events.interim(result);
}
