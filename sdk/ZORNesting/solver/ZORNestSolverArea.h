// Sheet kinds prepared for the search.

#pragma once

#include "ZORNestSolverLayout.h"

namespace ZORNestSolver {

/// A sheet kind as the search sees it, with the sheet's lower left corner at the origin.
struct SheetArea
{
    Box window;                  // for shapes that are grown by half the separation; endless for a roll
    std::vector<Hazard> hazards; // defects, and what an irregular sheet lacks of its rectangle
    double area = 0;             // of the window less the hazards
};

/// What remains between trims and frame.
Box GetUsableBox(const SheetKind& kind, const Job& job);

/// Empty window where nothing can be used.
SheetArea PrepareSheet(const SheetKind& kind, const Job& job);

} // namespace ZORNestSolver
