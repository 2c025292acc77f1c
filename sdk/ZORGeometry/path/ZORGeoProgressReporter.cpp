#include "ZORGeoProgressReporter_p.h"

#include <algorithm>
#include <utility>

namespace zor::geo {

namespace {

constexpr auto kInterval = std::chrono::milliseconds(10);

} // namespace

ProgressReporter::ProgressReporter(std::function<bool(double)> report)
    : m_report(std::move(report))
{
}

void ProgressReporter::SetRange(double begin, double end)
{
    m_begin = begin;
    m_end = end;
}

void ProgressReporter::Update(double part)
{
    m_progress = std::max(m_progress, m_begin + part * (m_end - m_begin));
    Check();
}

void ProgressReporter::Check()
{
    if (m_report && Clock::now() >= m_next)
        Report(m_progress);
}

void ProgressReporter::Report(double progress)
{
    m_progress = std::max(m_progress, progress);
    if (m_report && !m_report(m_progress))
        throw Canceled();
    // The time that the function itself takes does not count.
    m_next = Clock::now() + kInterval;
}

} // namespace zor::geo
