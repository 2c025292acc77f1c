// Tests of RemoveFaults(): what it takes away from invalid solutions, and what it keeps.

#include "sdk/ZORNesting/solver/SolverShapes.h"

#include <ZORNesting/solver/run/ZORNestSolverRepair.h>

#include <numeric>
#include <tuple>

namespace ZORNestSolver::SolverShapes {
namespace {

const char* const kReason = "its place did not pass the check";

using Entry = std::tuple<size_t, int, std::string>;

std::vector<Entry> GetUnplaced(const Solution& solution)
{
    std::vector<Entry> entries;
    for (const UnplacedItem& entry : solution.unplaced)
        entries.emplace_back(entry.item, entry.count, entry.reason);
    return entries;
}

/// The items of a sheet, in their order.
std::vector<size_t> GetItems(const NestedSheet& sheet)
{
    std::vector<size_t> items;
    for (const Placement& placement : sheet.placements)
        items.push_back(placement.item);
    return items;
}

/// Repairs and expects a solution that passes.
Solution Repaired(const Job& job, Solution solution)
{
    EXPECT_FALSE(FindFaults(job, solution).empty());
    const PreparedJob prepared(job);
    RemoveFaults(prepared, solution);
    EXPECT_EQ(FindFaults(job, solution), std::vector<std::string>());
    return solution;
}

/// Squares of 10, 20 and 5, five of each, and boards of 100 x 50 at 7.
Job MakeSquares()
{
    Job job;
    for (const double side : {10.0, 20.0, 5.0})
        job.items.push_back(MakeItem(Rectangle(side, side), 5));
    job.kinds = {Sheet(100, 50, 4), Roll(50)};
    job.kinds[0].cost = 7;
    job.kinds[1].cost = 0.5;
    return job;
}

NestedSheet On(size_t kind, std::vector<Placement> placements, double length = 100)
{
    NestedSheet sheet;
    sheet.kind = kind;
    sheet.usedLength = length;
    sheet.placements = std::move(placements);
    return sheet;
}

} // namespace

TEST(ZORNestSolverRepairTest, OfTwoItemsTooNearTheLaterOneGoes)
{
    const Job job = MakeSquares();
    Solution solution;
    solution.sheets = {On(0, {At(0, {0, 0}), At(1, {5, 0}), At(2, {24.9, 0}), At(0, {50, 0})})};
    solution.sheets[0].remnantLength = 40;
    solution.unplaced = {{0, 3, "no sheet left"}, {1, 4, "no sheet left"}, {2, 4, "no sheet left"}};
    const Solution repaired = Repaired(job, solution);
    ASSERT_EQ(repaired.sheets.size(), 1U);
    EXPECT_EQ(GetItems(repaired.sheets[0]), (std::vector<size_t>{0, 2, 0}))
        << "nothing is near to 2 any more";
    EXPECT_EQ(repaired.sheets[0].placements[2].pose.position, (Point{50, 0}));
    EXPECT_DOUBLE_EQ(repaired.sheets[0].remnantLength, 40);
    EXPECT_EQ(
        GetUnplaced(repaired),
        (std::vector<Entry>{
            {0, 3, "no sheet left"}, {1, 4, "no sheet left"}, {2, 4, "no sheet left"}, {1, 1, kReason}}));
    EXPECT_DOUBLE_EQ(repaired.cost, 7);
}

TEST(ZORNestSolverRepairTest, RemovedCopiesOfAnItemAreOneEntry)
{
    const Job job = MakeSquares();
    Solution solution;
    solution.sheets = {
        On(0, {At(0, {0, 0}), At(0, {1, 0}), At(0, {2, 0})}),
        On(0, {At(0, {0, 0}), At(0, {200, 0})}),
    };
    solution.unplaced = {{1, 5, kReason}, {2, 4, "no sheet left"}, {2, 1, kReason}};
    const Solution repaired = Repaired(job, solution);
    EXPECT_EQ(
        GetUnplaced(repaired),
        (std::vector<Entry>{{1, 5, kReason}, {2, 4, "no sheet left"}, {2, 1, kReason}, {0, 3, kReason}}));
    EXPECT_DOUBLE_EQ(repaired.sheets.at(0).remnantLength, 90);
    EXPECT_DOUBLE_EQ(repaired.sheets.at(1).remnantLength, 90);
}

TEST(ZORNestSolverRepairTest, ARollBecomesAsShortAsItsItems)
{
    const Job job = MakeSquares();
    Solution solution;
    solution.sheets = {On(1, {At(0, {0, 0}), At(1, {10, 0}), At(1, {25, 0}), At(2, {0, 48})}, 45)};
    const Solution repaired = Repaired(job, solution);
    ASSERT_EQ(repaired.sheets.size(), 1U);
    EXPECT_EQ(GetItems(repaired.sheets[0]), (std::vector<size_t>{0, 1}));
    EXPECT_DOUBLE_EQ(repaired.sheets[0].usedLength, 30);
    EXPECT_DOUBLE_EQ(repaired.sheets[0].remnantLength, 0);
    EXPECT_DOUBLE_EQ(repaired.cost, 15);
}

TEST(ZORNestSolverRepairTest, SheetsThatBecomeEmptyGoAndCostNothing)
{
    const Job job = MakeSquares();
    Solution solution;
    solution.sheets = {On(0, {At(1, {0, 0})}), On(0, {At(1, {-1, 0}), At(0, {95, 0})}),
                       On(0, {At(2, {0, 0})})};
    solution.cost = 21;
    const Solution repaired = Repaired(job, solution);
    ASSERT_EQ(repaired.sheets.size(), 2U);
    EXPECT_EQ(GetItems(repaired.sheets[0]), std::vector<size_t>{1});
    EXPECT_EQ(GetItems(repaired.sheets[1]), std::vector<size_t>{2});
    EXPECT_DOUBLE_EQ(repaired.cost, 14);
}

TEST(ZORNestSolverRepairTest, WhatTheJobDoesNotAllowGoes)
{
    Job job = MakeSquares();
    job.stackSize = 2;
    NestedSheet high = On(0, {At(0, {0, 0})});
    high.stack = 3;
    NestedSheet none = high;
    none.stack = 0;
    Solution solution;
    solution.sheets = {high, none, On(9, {At(0, {0, 0})}), On(0, {At(17, {0, 0}), At(2, {50, 0})}),
                       On(0, {At(0, {30, 0}, 0.3), At(1, {30, 0}, 0, true), At(0, {60, 0})})};
    solution.unplaced = {{12, 3, "of nothing"}, {0, -4, "less"}, {1, 0, "none"}};
    const Solution repaired = Repaired(job, solution);
    ASSERT_EQ(repaired.sheets.size(), 2U);
    EXPECT_EQ(GetItems(repaired.sheets[0]), std::vector<size_t>{2});
    EXPECT_EQ(GetItems(repaired.sheets[1]), std::vector<size_t>{0});
    EXPECT_EQ(GetUnplaced(repaired), (std::vector<Entry>{{0, 4, kReason}, {1, 5, kReason}, {2, 4, kReason}}));
}

TEST(ZORNestSolverRepairTest, CopiesAndSheetsBeyondTheirNumbersGo)
{
    Job job = MakeSquares();
    job.stackSize = 2;
    job.items[0].quantity = 3;
    NestedSheet stack = On(0, {At(0, {0, 0}), At(1, {20, 0})});
    stack.stack = 2;
    Solution solution;
    solution.sheets = {stack, stack, On(0, {At(0, {0, 0})}), On(1, {At(0, {0, 0}), At(2, {10, 0})}, 15)};
    solution.unplaced = {{2, 9, "no sheet left"}, {1, 3, "no sheet left"}};
    const Solution repaired = Repaired(job, solution);
    ASSERT_EQ(repaired.sheets.size(), 3U);
    EXPECT_EQ(GetItems(repaired.sheets[1]), std::vector<size_t>{1}) << "two copies more would be too many";
    EXPECT_EQ(repaired.sheets[1].stack, 2);
    EXPECT_EQ(GetItems(repaired.sheets[2]), (std::vector<size_t>{0, 2})) << "four boards are used up";
    EXPECT_EQ(GetUnplaced(repaired), (std::vector<Entry>{{2, 4, "no sheet left"}, {1, 1, "no sheet left"}}));
    EXPECT_DOUBLE_EQ(repaired.cost, 4 * 7 + 15 * 0.5);
}

TEST(ZORNestSolverRepairTest, RandomHeapsBecomeValid)
{
    Random random(5);
    for (int run = 0; run < 60; ++run) {
        Job job = MakeSquares();
        job.stackSize = 1 + run % 3;
        job.separation = run % 2 == 0 ? 0 : 3;
        job.kinds[0].defects = {{Rectangle(10, 10, {40, 20})}};
        Solution solution;
        for (size_t s = 0; s < 1 + random.Index(5); ++s) {
            NestedSheet sheet = On(random.Index(2), {});
            sheet.stack = 1 + static_cast<int>(random.Index(3));
            for (size_t i = random.Index(9); i > 0; --i)
                sheet.placements.push_back(
                    At(random.Index(3), {random.Between(-10, 100), random.Between(-10, 50)}));
            solution.sheets.push_back(sheet);
        }
        const PreparedJob prepared(job);
        Solution repaired = solution;
        RemoveFaults(prepared, repaired);
        EXPECT_EQ(FindFaults(job, repaired), std::vector<std::string>()) << run;
        const Solution again = repaired;
        RemoveFaults(prepared, repaired);
        ASSERT_EQ(repaired.sheets.size(), again.sheets.size()) << "what is valid stays";
        EXPECT_EQ(CountPlaced(repaired), CountPlaced(again));
        EXPECT_EQ(GetUnplaced(repaired), GetUnplaced(again));
    }
}

} // namespace ZORNestSolver::SolverShapes
