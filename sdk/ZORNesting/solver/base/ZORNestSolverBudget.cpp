#include "ZORNestSolverBudget.h"

#include <algorithm>
#include <cmath>
#include <ctime>
#include <limits>

namespace ZORNestSolver {

namespace {

constexpr double kHalfWay = 30;     // seconds to half the progress of a run without end
constexpr double kLongTime = 86400; // seconds; runs end for lack of progress before
constexpr double kMovesPerSecond = 10000;

void Raise(std::atomic<double>& progress, double value)
{
    double known = progress;
    while (known < value && !progress.compare_exchange_weak(known, value)) {
    }
}

double GetSeconds(clockid_t clock)
{
    timespec now{};
    clock_gettime(clock, &now);
    return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

} // namespace

double GetThreadTime()
{
    return GetSeconds(CLOCK_THREAD_CPUTIME_ID);
}

Budget::Budget(Control& control, Clock clock, double seconds)
    : m_control(&control)
    , m_clock(clock)
    , m_runStart(Read())
    , m_runEnd(seconds > 0 ? m_runStart + seconds : std::numeric_limits<double>::infinity())
    , m_start(m_runStart)
    , m_end(m_runEnd)
{
}

Budget Budget::Part(double fraction) const
{
    Budget part = *this;
    part.m_start = Read();
    part.m_end = part.m_start + (m_end - part.m_start) * fraction;
    return part;
}

Budget Budget::LimitedTo(double units) const
{
    Budget part = *this;
    part.m_start = Read();
    part.m_end = std::min(m_end, part.m_start + units);
    return part;
}

Budget Budget::Limited(double seconds) const
{
    return LimitedTo(seconds * (m_clock == Clock::Steps ? kMovesPerSecond : 1));
}

bool Budget::HasEnd() const
{
    return std::isfinite(m_end);
}

bool Budget::IsOver() const
{
    return IsStopped() || Count() >= m_end;
}

bool Budget::IsRunOver() const
{
    return IsStopped() || Count() >= m_runEnd;
}

/// Counts a step, reports the progress and returns the time.
double Budget::Count() const
{
    ++m_control->steps;
    const double now = Read();
    const double elapsed = now - m_runStart;
    const double length = m_runEnd - m_runStart;
    const bool isCounted = m_clock == Clock::Steps;
    const double share = isCounted && std::isfinite(length)
                             ? elapsed / length
                             : GetShare(elapsed / (isCounted ? kMovesPerSecond : 1), length);
    Raise(m_control->progress, std::clamp(share, 0.0, 0.999));
    return now;
}

double Budget::GetShare(double elapsed, double seconds)
{
    return seconds > 0 && seconds < kLongTime ? elapsed / seconds : elapsed / (elapsed + kHalfWay);
}

double Budget::Read() const
{
    if (m_clock == Clock::Steps)
        return static_cast<double>(m_control->steps);
    return GetSeconds(m_clock == Clock::Wall ? CLOCK_MONOTONIC : CLOCK_PROCESS_CPUTIME_ID);
}

} // namespace ZORNestSolver
