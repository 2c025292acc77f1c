// A plan of the whole job, over all stack sizes, and how plans compare.

#pragma once

#include "ZORNestSolverFill.h"

namespace ZORNestSolver {

/// Sheets of all stack sizes, and the copies that found no place on them.
struct JobPlan
{
    std::vector<NestedSheet> sheets; // the highest stacks first
    std::vector<int> left;           // copies of each item without a place
    std::vector<double> restAreas;   // of these copies, by priority, the highest first
    double cost = 0;
    double remnant = 0;      // the area of the largest remnant
    bool isCutShort = false; // some of the copies were hardly tried, since the run was over

    /// Less left over at the highest priority at which plans differ; then the lower cost; then the larger remnant.
    bool IsBetterThan(const JobPlan& other) const;
    bool IsComplete() const;
};

/// Gives the places of items to equal ones of higher priority that are left over, where these may lie so.
void ServeEqualItems(JobPlan& plan, const PreparedJob& prepared);

/// Sets what follows from the sheets and from the copies that are left.
void Measure(JobPlan& plan, const PreparedJob& prepared);

/// The right end of the outlines.
double GetRightEnd(const PreparedJob& prepared, const std::vector<Placement>& placements);
/// Sets the used length and the remnant of a sheet.
void MeasureSheet(NestedSheet& sheet, const PreparedJob& prepared);
double GetSheetCost(const NestedSheet& sheet, const PreparedJob& prepared);

/// Negative where \a a is less at the first entry that differs by more than rounding, positive where it is more.
int CompareInOrder(const std::vector<double>& a, const std::vector<double>& b);

} // namespace ZORNestSolver
