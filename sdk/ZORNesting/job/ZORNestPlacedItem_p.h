// Items where a solver has placed them.

#pragma once

#include "solver/geometry/ZORNestSolverPose.h"

#include <ZORNesting/ZORNestResultItem.h>

/// The item turned over, turned and moved as a solver's pose tells, in this order: arcs stay arcs, and texts stay
/// readable. Its own position, orientation and mirroring lead on from those that it had.
/// \param name  of the result
ZORNestResultItem ZORNestPlaceItem(const ZORNestResultItem& item, const QString& name,
                                   const ZORNestSolver::Pose& pose);
