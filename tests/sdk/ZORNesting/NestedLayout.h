// Layouts that no run has found.

#pragma once

#include <ZORNesting/ZORNestLayout.h>
#include <ZORNesting/job/ZORNestLayout_p.h>

#include <memory>

inline ZORNestLayout MakeLayout(const ZORNestSolver::Job& job, const ZORNestSolver::Solution& solution)
{
    auto instance = std::make_unique<ZORNestInstanceData>();
    instance->job = job;
    auto layout = std::make_unique<ZORNestLayoutData>();
    layout->instance = ZORNestInstance(instance.release());
    layout->solution = solution;
    return ZORNestLayout(layout.release());
}
