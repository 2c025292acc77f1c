// Outlines and jobs for the tests of the nesting solver.

#pragma once

#include <ZORNesting/solver/base/ZORNestSolverRandom.h>
#include <ZORNesting/solver/proof/ZORNestSolverApart.h>
#include <ZORNesting/solver/proof/ZORNestSolverCheck.h>
#include <ZORNesting/solver/run/ZORNestSolverRun.h>

#include <gtest/gtest.h>

#include <array>
#include <numbers>

namespace ZORNestSolver::SolverShapes {

inline Ring Rectangle(double width, double height, Point corner = {})
{
    return {corner, corner + Point{width, 0}, corner + Point{width, height}, corner + Point{0, height}};
}

/// Star-shaped around the origin, counter-clockwise.
inline Ring RandomStar(Random& random, size_t corners, double radius)
{
    Ring ring;
    for (size_t i = 0; i < corners; ++i) {
        const double angle = 2 * std::numbers::pi * static_cast<double>(i) / static_cast<double>(corners);
        const double r = radius * random.Between(0.3, 1);
        ring.push_back({r * std::cos(angle), r * std::sin(angle)});
    }
    return ring;
}

inline Ring Reversed(Ring ring)
{
    std::reverse(ring.begin(), ring.end());
    return ring;
}

inline Contour RoundContour(Point centre, double radius)
{
    Contour contour;
    contour.start = centre + Point{radius, 0};
    contour.segments = {{centre - Point{radius, 0}, true, true, centre}, {contour.start, true, true, centre}};
    return contour;
}

inline Item MakeItem(const Ring& ring, int quantity = 1)
{
    Item item;
    item.contours = {MakeContour(ring)};
    item.quantity = quantity;
    return item;
}

inline SheetKind Sheet(double length, double width, int quantity = 1)
{
    SheetKind kind;
    kind.name = "sheet";
    kind.length = length;
    kind.width = width;
    kind.quantity = quantity;
    return kind;
}

inline SheetKind Roll(double width)
{
    return Sheet(std::numeric_limits<double>::quiet_NaN(), width);
}

inline constexpr std::array kRules{UsageRule::AsListed, UsageRule::BestMix, UsageRule::BestSize};

/// Counts the placed copies of an item, all layers of stacks included.
inline int CountCopies(const Solution& solution, size_t item)
{
    int count = 0;
    for (const NestedSheet& sheet : solution.sheets)
        for (const Placement& placement : sheet.placements)
            count += placement.item == item ? sheet.stack : 0;
    return count;
}

inline int CountPlaced(const Solution& solution)
{
    int count = 0;
    for (const NestedSheet& sheet : solution.sheets)
        count += sheet.stack * static_cast<int>(sheet.placements.size());
    return count;
}

inline Placement At(size_t item, Point position, double angle = 0, bool mirrored = false)
{
    return {item, {mirrored, angle, position}};
}

/// Runs the job with a budget of the clock; every solution is checked.
inline Solution SolveWith(const Job& job, Budget::Clock clock, double budget, double least = 0)
{
    Control control;
    RunOptions options;
    options.clock = clock;
    options.maximumTime = budget;
    options.minimumTime = least;
    Solution solution = *Solve(job, options, control);
    EXPECT_EQ(control.progress, 1);
    EXPECT_EQ(FindFaults(job, solution), std::vector<std::string>());
    return solution;
}

/// The same result on every machine.
inline Solution SolveInSteps(const Job& job, double steps)
{
    return SolveWith(job, Budget::Clock::Steps, steps);
}

} // namespace ZORNestSolver::SolverShapes
