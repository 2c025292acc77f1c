// Plans of one stack size and of the whole job, and how they compare.

#pragma once

#include "solver/layout/ZORNestSolverPreparedJob.h"
#include "solver/model/ZORNestSolverSolution.h"

namespace ZORNestSolver {

/// Relative difference of areas, lengths and costs of plans that is due to rounding.
constexpr double kPlanNoise = 1e-9;

/// Sheets filled with items, and the items that found no sheet.
struct Plan
{
    std::vector<NestedSheet> sheets;
    std::vector<size_t> rest; // items of the job, one entry for each copy
    double cost = 0;
    std::vector<double> restAreas; // by priority, the highest first

    /// Less left over at the highest priority at which the plans differ; then the lower cost.
    bool IsBetterThan(const Plan& other) const;
};

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
