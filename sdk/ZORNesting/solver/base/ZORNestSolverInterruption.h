// How a lengthy computation learns that it has to end.

#pragma once

#include <functional>

namespace ZORNestSolver {

/// Returns whether to end now; asked often, it has to be quick.
using Interruption = std::function<bool()>;

inline bool NeverInterrupted()
{
    return false;
}

} // namespace ZORNestSolver
