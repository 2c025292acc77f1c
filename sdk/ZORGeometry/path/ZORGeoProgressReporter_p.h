// Progress of a long computation, and its cancellation.

#pragma once

#include <chrono>
#include <functional>

namespace zor::geo {

/// Thrown by ProgressReporter where the computation was canceled. Of no family: only the computation catches it.
struct Canceled
{
};

/// Passes the progress of a computation on to a function of the caller, not more often than every 10 ms and never
/// less than before. Costs a clock reading a call, and nothing without a function.
class ProgressReporter
{
public:
    /// \param report  takes the part that is done, 0 to 1, and returns false to cancel; may be empty
    explicit ProgressReporter(std::function<bool(double)> report = {});

    /// Whether there is a function.
    bool IsWatched() const { return m_report != nullptr; }
    /// Sets the part of the whole that the next updates are about. Both are 0 to 1.
    void SetRange(double begin, double end);
    /// \param part  of the range that is done, 0 to 1
    /// \throws Canceled
    void Update(double part);
    /// Reports the same progress again, for work that cannot be foreseen.
    /// \throws Canceled
    void Check();
    /// Reports a part of the whole without delay.
    /// \throws Canceled
    void Report(double progress);

private:
    using Clock = std::chrono::steady_clock;

    const std::function<bool(double)> m_report;
    double m_begin = 0;
    double m_end = 1;
    double m_progress = 0;
    Clock::time_point m_next;
};

} // namespace zor::geo
