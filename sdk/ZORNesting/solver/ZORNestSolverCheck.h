// The proof that a solution is valid, apart from everything that made it.

#pragma once

#include "ZORNestSolverModel.h"

namespace ZORNestSolver {

/// Depth to which items may overlap each other, defects or the edge of the sheet, and by which distances may
/// fall short.
constexpr double CheckTolerance = 1e-6;

/// What is wrong with the solution, a sentence each; none if it is valid. Outlines are compared by true
/// distances of the polygons around them, sheet by sheet; rotations and hands with what the job allows;
/// quantities with what was ordered.
std::vector<std::string> FindFaults(const Job& job, const Solution& solution);

/// The faults of a single sheet.
std::vector<std::string> FindSheetFaults(const Job& job, const NestedSheet& sheet);

/// The polygons keep the distance, or with a distance of 0 overlap nowhere deeper than the tolerance.
bool AreApart(const Polygon& a, const Polygon& b, double distance, double tolerance = CheckTolerance);

/// Every two of the polygons are apart.
bool AreAllApart(const std::vector<Polygon>& polygons, double distance);

} // namespace ZORNestSolver
