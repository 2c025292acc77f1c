// An item to nest, as the caller sees it.

#pragma once

#include "ZORNestSolverOutline.h"

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

} // namespace ZORNestSolver
