// Sheet kinds prepared for the search.

#pragma once

#include "ZORNestSolverProblem.h"
#include "solver/base/ZORNestSolverInterruption.h"

#include <string>

namespace ZORNestSolver {

/// What no item may overlap, and how far it has to stay away.
struct Obstacle
{
    Polygon polygon;
    double distance = 0;
    Polygon onSheet; // what of the polygon lies on the sheet
    Box box;         // of that
};

/// A sheet kind as the search sees it, with the sheet's lower left corner at the origin.
struct SheetArea
{
    Box window; // for shapes that are grown by half the separation; endless for a roll
    std::vector<Hazard>
        hazards; // defects, and what an irregular sheet lacks of its rectangle, grown by their distance
    std::vector<Obstacle> obstacles; // the same as they are, for exact distances
    double area = 0; // of what can be used, less the obstacles; with them where they cross too often
    std::vector<std::string> remarks; // what is done differently with the sheet: "has too many corners ..."

    /// Checks by exact distances whether a placed outline keeps away from all obstacles.
    bool IsClear(const Polygon& placed) const;
};

/// What remains between trims and frame.
Box GetUsableBox(const SheetKind& kind, const Job& job);

/// Checks whether no coordinate, size or distance of a sheet lies beyond kLargestCoordinate; of a roll, the length is
/// as large as it has to be.
bool IsWithinReach(const SheetKind& kind, const Job& job);

/// What preparing all sheets of a job may take.
struct SheetEffort
{
    Interruption isOver = NeverInterrupted; // from then on the hulls of defects are enough
    double squares =
        1e6; // that searches for circles in obstacles may try, which guide the search for places only
};

/// Empty window where nothing can be used, as of a sheet that is not within reach or whose outline crosses itself too
/// often. An obstacle has at most 2,000 corners and all defects of a sheet have 20,000 in common; those of more than
/// 1,000 defects that lie next to each other are one.
SheetArea PrepareSheet(const SheetKind& kind, const Job& job, SheetEffort& effort);
SheetArea PrepareSheet(const SheetKind& kind, const Job& job);

} // namespace ZORNestSolver
