#include "ZORNestInstanceRun.h"

#include "job/ZORNestLayout_p.h"
#include "job/ZORNestNestingJob_p.h"
#include "solver/run/ZORNestSolverRun.h"

#include <ZORSystem/ZORSysApiTrace.h>

class ZORNestInstanceRun::Private
{
public:
    ZORNestInstance instance;
    ZORNestSolver::RunOptions options;
    ZORNestSolver::Control control;
};

ZORNestInstanceRun::ZORNestInstanceRun(const ZORNestInstance& instance)
    : d(std::make_unique<Private>())
{
    ZOR_TRACE_CALL(instance);
    d->instance = instance;
    d->options.mostCopies = ZORNestNestingJob::kMostCopies;
}

ZORNestInstanceRun::~ZORNestInstanceRun() = default;

void ZORNestInstanceRun::SetLimit(Clock clock, double amount)
{
    ZOR_TRACE_CALL(clock, amount);
    using SolverClock = ZORNestSolver::Budget::Clock;
    d->options.clock = clock == Clock::Wall        ? SolverClock::Wall
                       : clock == Clock::Processor ? SolverClock::Processor
                                                   : SolverClock::Steps;
    d->options.maximumTime = amount;
    d->options.minimumTime = amount;
}

void ZORNestInstanceRun::SetNumThreads(int number)
{
    ZOR_TRACE_CALL(number);
    d->options.threads = number;
}

ZORNestLayout ZORNestInstanceRun::Execute()
{
    ZOR_TRACE_CALL();
    auto data = std::make_unique<ZORNestLayoutData>();
    data->instance = d->instance;
    // Only a canceled run has no solution.
    data->solution = *Solve(d->instance.GetData().job, d->options, d->control);
    return ZORNestLayout(data.release());
}

void ZORNestInstanceRun::RequestStop() noexcept
{
    d->control.stop = true;
}

bool ZORNestInstanceRun::IsStopRequested() const noexcept
{
    return d->control.stop;
}

double ZORNestInstanceRun::GetProgress() const noexcept
{
    return d->control.progress;
}
