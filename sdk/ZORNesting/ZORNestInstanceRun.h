// Nests an instance in the thread of the caller.

#pragma once

#include <ZORNesting/ZORNestLayout.h>

#include <memory>

class ZORNestInstance;

/// One run of the solver, for command lines and benchmarks; applications use ZORNestNestingProcessor, which nests in
/// helper processes. Of more than 5000 copies in all, it nests 5000: those of high priority, then in the order of the items.
///
/// While Execute() runs, any thread may request a stop and read the progress.
///
/// Thread safety: reentrant; one thread at a time per object.
class ZORNESTING_EXPORT ZORNestInstanceRun
{
public:
    /// Specifies what the limit of a run counts.
    enum class Clock {
        Wall,      ///< seconds
        Processor, ///< seconds of processor time of the process
        Steps,     ///< moves of items; a run of one thread can be repeated exactly
    };

    /// Constructs a run of one thread without limit.
    explicit ZORNestInstanceRun(const ZORNestInstance& instance);
    ~ZORNestInstanceRun();
    Q_DISABLE_COPY_MOVE(ZORNestInstanceRun)

    /// Ends the run at the limit and not before.
    /// \param amount  in units of the clock; 0: when nothing is gained any more
    void SetLimit(Clock clock, double amount);
    /// \param number  at least 1
    void SetNumThreads(int number);

    /// Nests the instance until the limit or a stop. Every layout has passed ZORNestLayout::FindFaults().
    /// \throws std::bad_alloc
    ZORNestLayout Execute();

    /// Ends the run with the best layout so far. May be called from any thread and from signal handlers.
    void RequestStop() noexcept;
    bool IsStopRequested() const noexcept;
    /// Returns the progress from 0 to 1, which never falls. May be called from any thread.
    double GetProgress() const noexcept;

private:
    class Private;
    const std::unique_ptr<Private> d;
};
