#include "sdk/ZORNesting/solver/SolverShapes.h"

#include <ZORNesting/solver/layout/ZORNestSolverItemType.h>
#include <ZORNesting/solver/run/ZORNestSolverRun.h>

namespace ZORNestSolver::SolverShapes {
namespace {

Solution SolveFor(const Job& job, double seconds)
{
    return SolveWith(job, Budget::Clock::Processor, seconds);
}

} // namespace

TEST(ZORNestSolverRunTest, SquaresFillARollToTheEnd)
{
    Job job;
    job.items = {MakeItem(Rectangle(10, 10), 20)};
    job.kinds = {Roll(20.001)};
    const Solution solution = SolveFor(job, 2);
    ASSERT_EQ(solution.sheets.size(), 1U);
    EXPECT_EQ(CountPlaced(solution), 20);
    EXPECT_LT(solution.sheets[0].usedLength, 105);
}

TEST(ZORNestSolverRunTest, SeparationAndFrameAreKept)
{
    Job job;
    job.items = {MakeItem(Rectangle(10, 10), 4)};
    job.separation = 2;
    job.frameWidth = 3;
    job.kinds = {Sheet(28.05, 28.05)};
    EXPECT_EQ(CountPlaced(SolveFor(job, 2)), 4);
    job.kinds = {Sheet(27.9, 27.9)};
    EXPECT_LT(CountPlaced(SolveFor(job, 1)), 4);
}

TEST(ZORNestSolverRunTest, WhatDoesNotFitIsReportedWithItsReason)
{
    Job job;
    job.items = {MakeItem(Rectangle(10, 10), 3), MakeItem(Rectangle(100, 1)), MakeItem({{0, 0}, {1, 1}}),
                 MakeItem({{0, 0}, {NAN, 1}, {3, 4}}), MakeItem(Rectangle(1, 1), 0)};
    job.kinds = {Sheet(12, 12, 2), Sheet(0, 0)};
    const Solution solution = SolveFor(job, 2);
    EXPECT_EQ(CountPlaced(solution), 2);
    ASSERT_EQ(solution.unplaced.size(), 4U);
    EXPECT_EQ(solution.unplaced[0].reason, "larger than every sheet");
    EXPECT_EQ(solution.unplaced[1].reason, "outline encloses no area");
    EXPECT_EQ(solution.unplaced[2].reason, "outline has coordinates that are no numbers");
    EXPECT_EQ(solution.unplaced[3].reason, "no sheet left");
    EXPECT_EQ(solution.unplaced[3].count, 1);
    EXPECT_EQ(solution.remarks, std::vector<std::string>{"sheet \"sheet\" has no usable area"});
}

TEST(ZORNestSolverRunTest, ARollEndsWithItsOutline)
{
    Job job;
    job.items = {MakeItem(Rectangle(10, 10), 12)};
    job.frameWidth = 1;
    job.kinds = {Roll(22.001)};
    job.kinds[0].rightTrim = -5;
    job.kinds[0].outline = {Rectangle(32.001, 22.001)};
    const Solution solution = SolveFor(job, 1);
    EXPECT_EQ(FindFaults(job, solution), std::vector<std::string>());
    ASSERT_EQ(solution.sheets.size(), 1U);
    EXPECT_EQ(solution.sheets[0].usedLength, 32.001);
    EXPECT_EQ(CountPlaced(solution), 6);
    ASSERT_EQ(solution.unplaced.size(), 1U);
    EXPECT_EQ(solution.unplaced[0].reason, "no sheet left");
    EXPECT_DOUBLE_EQ(solution.cost, 32.001 * 22.001);
    job.kinds[0].cost = 2;
    EXPECT_DOUBLE_EQ(SolveFor(job, 1).cost, 2 * 32.001);
}

TEST(ZORNestSolverRunTest, NothingIsPlacedOnARollWhoseOutlineHasNoArea)
{
    Job job;
    job.items = {MakeItem(Rectangle(10, 10), 2)};
    for (const Polygon& outline : {Polygon{{}}, Polygon{{{2, 12}}}, Polygon{{{-9, 0}, {-1, 0}, {-1, 9}}}}) {
        job.kinds = {Roll(30)};
        job.kinds[0].outline = outline;
        const Solution solution = SolveFor(job, 1);
        EXPECT_EQ(CountPlaced(solution), 0);
        ASSERT_EQ(solution.unplaced.size(), 1U);
        EXPECT_EQ(solution.unplaced[0].reason, "larger than every sheet");
    }
}

TEST(ZORNestSolverRunTest, PartsWithAHoleOutsideDoNotStopTheOthersOnARoll)
{
    Job job;
    job.separation = 4;
    job.items = {MakeItem(Rectangle(12, 31), 2), MakeItem(Rectangle(10, 10), 3)};
    job.items[0].contours.push_back(RoundContour({15, 16}, 1));
    job.kinds = {Roll(66)};
    const Solution solution = SolveFor(job, 1);
    EXPECT_EQ(CountPlaced(solution), 3);
    ASSERT_EQ(solution.unplaced.size(), 1U);
    EXPECT_EQ(solution.unplaced[0].count, 2);
    EXPECT_EQ(solution.unplaced[0].reason, "a hole lies outside of the outline");
}

TEST(ZORNestSolverRunTest, ASheetOfAThousandKilometersHoldsAsMuch)
{
    Job job;
    job.items = {MakeItem(Rectangle(1e9, 1e9))};
    job.kinds = {Sheet(1e9, 1e9)};
    for (Item& item : job.items)
        item.grain90 = item.grain180 = item.grain270 = true;
    const Solution solution = SolveInSteps(job, 500);
    EXPECT_EQ(FindFaults(job, solution), std::vector<std::string>());
    EXPECT_EQ(CountPlaced(solution), 1);
}

TEST(ZORNestSolverRunTest, SheetsThatReachTooFarAreNotUsed)
{
    Job job;
    job.items = {MakeItem(Rectangle(10, 10), 2), MakeItem(Rectangle(1e60, 1e60), 2)};
    SheetKind torn = Sheet(100, 100);
    torn.defects = {{Rectangle(1e35, 1e35)}};
    SheetKind odd = Sheet(100, 100);
    odd.outline = {Rectangle(1e40, 1e40)};
    for (const SheetKind& kind : {Sheet(1e60, 1e60), Sheet(100, 1e300), torn, odd}) {
        job.kinds = {kind};
        const Solution solution = SolveInSteps(job, 500);
        EXPECT_EQ(FindFaults(job, solution), std::vector<std::string>());
        EXPECT_EQ(CountPlaced(solution), 0);
        EXPECT_EQ(solution.remarks, std::vector<std::string>{"sheet \"sheet\" reaches beyond 1000 km"});
        ASSERT_EQ(solution.unplaced.size(), 2U);
        EXPECT_EQ(solution.unplaced[1].reason, "outline reaches beyond 1000 km");
    }
}

TEST(ZORNestSolverRunTest, NegativeQuantitiesOrderNothing)
{
    Job job;
    job.items = {MakeItem(Rectangle(10, 10), std::numeric_limits<int>::min()),
                 MakeItem(Rectangle(10, 10), -1), MakeItem(Rectangle(10, 10), 2)};
    job.kinds = {Sheet(20, 10)};
    const Solution solution = SolveInSteps(job, 500);
    EXPECT_EQ(FindFaults(job, solution), std::vector<std::string>());
    EXPECT_EQ(CountPlaced(solution), 2);
    EXPECT_TRUE(solution.unplaced.empty());
}

TEST(ZORNestSolverRunTest, AJobWithoutItemsOrSheetsEnds)
{
    Job job;
    EXPECT_TRUE(SolveFor(job, 1).sheets.empty());
    job.items = {MakeItem(Rectangle(1, 1)), MakeItem({{0, 0}, {1, 1}})};
    const Solution solution = SolveFor(job, 1);
    ASSERT_EQ(solution.unplaced.size(), 2U);
    EXPECT_EQ(solution.unplaced[0].count, 1);
    EXPECT_EQ(solution.unplaced[1].count, 1);
}

TEST(ZORNestSolverRunTest, StacksNeverOverproduce)
{
    Job job;
    job.items = {MakeItem(Rectangle(10, 10), 7), MakeItem(Rectangle(5, 5), 3)};
    job.kinds = {Roll(30)};
    job.stackSize = 3;
    for (const int rolls : {-1, 1}) { // one is long enough for all layers
        job.kinds[0].quantity = rolls;
        const Solution solution = SolveFor(job, 3);
        EXPECT_EQ(CountPlaced(solution), 10);
        EXPECT_EQ(solution.sheets.front().stack, 3);
        EXPECT_EQ(solution.sheets.back().stack, 1);
    }
    job.kinds[0].quantity = 0;
    EXPECT_TRUE(SolveFor(job, 1).sheets.empty());
}

TEST(ZORNestSolverRunTest, ScarceSheetsGoToTheHighestPriority)
{
    Job job;
    job.items = {MakeItem(Rectangle(10, 10), 3), MakeItem(Rectangle(9, 9), 3)};
    job.items[1].priority = 5;
    job.kinds = {Sheet(12, 12, 3)};
    const Solution solution = SolveFor(job, 2);
    EXPECT_EQ(solution.sheets.size(), 3U);
    for (const NestedSheet& sheet : solution.sheets) {
        ASSERT_EQ(sheet.placements.size(), 1U);
        EXPECT_EQ(sheet.placements[0].item, 1U);
    }
    ASSERT_EQ(solution.unplaced.size(), 1U);
    EXPECT_EQ(solution.unplaced[0].item, 0U);
    EXPECT_EQ(solution.unplaced[0].count, 3);
}

TEST(ZORNestSolverRunTest, TheCheapestKindServesAll)
{
    Job job;
    job.items = {MakeItem(Rectangle(10, 10), 4)};
    job.kinds = {Sheet(50, 50, 10), Sheet(22, 22, 10)};
    job.kinds[0].cost = 10;
    job.kinds[1].cost = 1;
    job.usageRule = UsageRule::BestSize;
    const Solution solution = SolveFor(job, 2);
    EXPECT_EQ(CountPlaced(solution), 4);
    EXPECT_DOUBLE_EQ(solution.cost, 1);
    job.usageRule = UsageRule::AsListed;
    EXPECT_DOUBLE_EQ(SolveFor(job, 2).cost, 10);
}

TEST(ZORNestSolverRunTest, DefectsAreLeftFree)
{
    Job job;
    job.items = {MakeItem(Rectangle(10, 10), 3)};
    job.kinds = {Sheet(21, 21)};
    job.kinds[0].defects = {{Rectangle(8, 8, {12, 12})}};
    EXPECT_EQ(CountPlaced(SolveFor(job, 3)), 3);
}

TEST(ZORNestSolverRunTest, PartsLieInHoles)
{
    Job job;
    Item frame = MakeItem(Rectangle(20, 20));
    frame.contours.push_back(MakeContour(Rectangle(16, 16, {2, 2})));
    job.items = {frame, MakeItem(Rectangle(12, 12))};
    job.kinds = {Sheet(20.5, 20.5)};
    EXPECT_EQ(CountPlaced(SolveFor(job, 3)), 2);
}

TEST(ZORNestSolverRunTest, HandsAndGrainAreKept)
{
    Item item = MakeItem(Rectangle(10, 4));
    item.mirrored = true;
    item.grain180 = true;
    Job job;
    EXPECT_EQ(GetPoseClasses(item, job).size(), 2U);
    item.flippable = true;
    EXPECT_EQ(GetPoseClasses(item, job).size(), 4U);
    job.singleSided = true;
    EXPECT_EQ(GetPoseClasses(item, job).size(), 2U);
    item.maxDeviation = 0.3;
    item.deviationIncrement = 0.1;
    EXPECT_EQ(GetPoseClasses(item, job).size(), 14U);
    item.deviationIncrement = 0;
    EXPECT_TRUE(GetPoseClasses(item, job).front().IsContinuous());
}

TEST(ZORNestSolverRunTest, ACancelledRunHasNoResultAndAStoppedOneHas)
{
    Job job;
    job.items = {MakeItem(Rectangle(10, 10), 20)};
    job.kinds = {Roll(35)};
    Control control;
    control.cancel = true;
    EXPECT_FALSE(Solve(job, {}, control).has_value());
    Control stopped;
    stopped.stop = true;
    EXPECT_EQ(CountPlaced(*Solve(job, {}, stopped)), 20);
}

} // namespace ZORNestSolver::SolverShapes
