// The result of a nesting job, as the caller sees it.

#pragma once

#include "ZORNestSolverUnplaced.h"
#include "solver/geometry/ZORNestSolverPose.h"

namespace ZORNestSolver {

struct Placement
{
    size_t item = 0; // index in the job
    Pose pose;       // origin: lower left corner of the sheet
};

struct NestedSheet
{
    size_t kind = 0;
    double usedLength = 0; // of a roll; the length of any other sheet
    int stack = 1;         // so many equal sheets are cut at once
    std::vector<Placement> placements;
    double remnantLength = 0; // of what a cut right of all parts leaves of the sheet; 0 of a roll
};

struct Solution
{
    std::vector<NestedSheet> sheets;
    std::vector<UnplacedItem> unplaced;
    std::vector<std::string> remarks; // what of the job could not be used as it is
    double cost = 0;                  // by the sheets' costs; their area where no kind has a cost
};

} // namespace ZORNestSolver
