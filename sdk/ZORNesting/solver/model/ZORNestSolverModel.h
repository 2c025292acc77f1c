// A nesting job and its result, as the caller sees them.

#pragma once

#include "ZORNestSolverOutline.h"

#include <cstdint>

namespace ZORNestSolver {

/// Millimeters and radians throughout. A pose mirrors first, then rotates, then moves.
struct Item
{
    std::string name;
    std::vector<Contour> contours;
    int quantity = 1;
    int priority = 0;       // higher ones are served first where sheets are short
    double orientation = 0; // the rotation, after mirroring, that lies along the grain
    bool grain90 = false;   // the orientation plus a quarter turn is allowed as well
    bool grain180 = false;
    bool grain270 = false;
    double maxDeviation = 0;           // 0: the job's
    double deviationIncrement = 0;     // 0: any angle within the deviation
    bool mirrored = false;             // the wanted part is the mirror image of the outline
    bool flippable = false;            // the other hand serves as well, at the negative rotations
    std::vector<double> allowedAngles; // where not empty, instead of orientation and grain; of both hands
};

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

struct UnplacedItem
{
    size_t item = 0;
    int count = 0;
    std::string reason;
};

struct Solution
{
    std::vector<NestedSheet> sheets;
    std::vector<UnplacedItem> unplaced;
    std::vector<std::string> remarks; // what of the job could not be used as it is
    double cost = 0;                  // by the sheets' costs; their area where no kind has a cost
};

} // namespace ZORNestSolver
