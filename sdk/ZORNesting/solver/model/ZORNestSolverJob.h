// A nesting job, as the caller sees it.

#pragma once

#include "ZORNestSolverItem.h"

#include <cstdint>

namespace ZORNestSolver {

struct SheetKind
{
    std::string name;
    int quantity = 1;  // negative: any number; a single roll never ends
    double width = 0;  // along y
    double length = 0; // along x; not a number: a roll, open to the right
    double leftTrim = 0, rightTrim = 0, topTrim = 0, bottomTrim = 0;
    double cost = 0;              // of a sheet, or of a unit of length of a roll
    Polygon outline;              // where not empty, what the rectangle really holds; the end of a roll
    std::vector<Polygon> defects; // no part may lie on one

    bool IsRoll() const { return std::isnan(length); }
};

enum class UsageRule { AsListed, BestMix, BestSize };

struct Job
{
    std::vector<Item> items;
    std::vector<SheetKind> kinds;
    double separation = 0;       // between items
    double frameWidth = 0;       // between items and the edge of the sheet
    double defectSeparation = 0; // between items and defects
    double maxDeviation = 0;     // for items without their own
    double deviationIncrement = 0;
    bool grain90 = false, grain180 = false, grain270 = false; // allowed for every item
    bool singleSided = false;                                 // no item may be flipped
    int stackSize = 1;
    UsageRule usageRule = UsageRule::AsListed;
    uint64_t seed = 1;
};

} // namespace ZORNestSolver
