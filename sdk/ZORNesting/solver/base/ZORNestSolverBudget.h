// Time limits and requests to stop.

#pragma once

#include <atomic>
#include <cstdint>

namespace ZORNestSolver {

/// Shared between the caller and a run; the caller may change it from any thread.
struct Control
{
    std::atomic<bool> stop = false;   // finish now with the best so far
    std::atomic<bool> cancel = false; // finish now without a result
    std::atomic<bool> failed = false; // set by the run, where one of its threads has thrown
    std::atomic<double> progress = 0; // 0 to 1, never falling
    std::atomic<uint64_t> steps = 0;  // moves of items so far
};

/// Returns the processor time of the calling thread in seconds, which a busy machine does not stretch.
double GetThreadTime();

/// When a step of a run has to end. Copies share the control. Asking whether it is over reports the progress
/// of the whole run.
class Budget
{
public:
    enum class Clock {
        Wall,
        Processor, // of the whole process
        Steps      // "seconds" are moves of items: a run on one thread can be repeated exactly
    };
    /// \param seconds  0: without end; the progress then approaches 1 ever more slowly
    Budget(Control& control, Clock clock, double seconds);

    /// The progress of a run that takes so many seconds; one without end, or of more than a day, comes ever more
    /// slowly towards 1.
    static double GetShare(double elapsed, double seconds);

    /// The same run; begins now and ends at a fraction of what remains.
    /// \param fraction  positive
    Budget Part(double fraction) const;
    /// The same run; ends after so many seconds, or when this one does. Where moves are counted, a second
    /// is ten thousand of them.
    Budget Limited(double seconds) const;
    /// The same in units of the clock.
    Budget LimitedTo(double units) const;

    bool IsStopped() const { return m_control->stop || m_control->cancel || m_control->failed; }
    /// Ends the run at once in all threads, since one of them has thrown.
    void Fail() const { m_control->failed = true; }
    /// No result is wanted any more.
    bool IsCanceled() const { return m_control->cancel || m_control->failed; }
    /// Asked before every move of an item, which it counts.
    bool IsOver() const;
    /// The same for the whole run instead of this step.
    bool IsRunOver() const;
    bool HasEnd() const;
    double GetElapsed() const { return Read() - m_start; }
    double GetRest() const { return m_end - Read(); }

private:
    double Read() const;
    double Count() const;

    Control* m_control; // not owned
    Clock m_clock;
    double m_runStart;
    double m_runEnd;
    double m_start;
    double m_end;
};

} // namespace ZORNestSolver
