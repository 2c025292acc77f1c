#include "sdk/ZORNesting/solver/SolverShapes.h"

namespace ZORNestSolver::SolverShapes {
namespace {

Item WithPriority(Item item, int priority)
{
    item.priority = priority;
    return item;
}

} // namespace

TEST(ZORNestSolverPriorityTest, AStackOfLowPriorityTakesNoSheetsFromAPartOfHighPriority)
{
    for (const UsageRule rule : kRules) {
        Job job; // each sheet holds one of them
        job.items = {MakeItem(Rectangle(10, 10), 2), WithPriority(MakeItem(Rectangle(10, 9), 1), 1)};
        job.kinds = {Sheet(11, 11, 2), Sheet(1, 1, 5)};
        job.stackSize = 2;
        job.usageRule = rule;
        const Solution solution = SolveInSteps(job, 3000);
        EXPECT_EQ(CountCopies(solution, 1), 1) << static_cast<int>(rule);
        EXPECT_EQ(CountCopies(solution, 0), 1) << "the sheet that is left takes a single one";
    }
}

TEST(ZORNestSolverPriorityTest, BestSizeAndBestMixTakeTheSheetOfTheHighestPriority)
{
    for (const UsageRule rule : {UsageRule::BestMix, UsageRule::BestSize}) {
        Job job; // the bar fits the second kind only, which holds less
        job.items = {MakeItem(Rectangle(10, 10), 30), WithPriority(MakeItem(Rectangle(60, 5)), 1)};
        job.kinds = {Sheet(50, 62, 1), Sheet(61, 6, 1)};
        job.usageRule = rule;
        const Solution solution = SolveInSteps(job, 20000);
        EXPECT_EQ(CountCopies(solution, 1), 1) << static_cast<int>(rule);
        EXPECT_EQ(CountCopies(solution, 0) > 0, rule == UsageRule::BestMix);
    }
}

TEST(ZORNestSolverPriorityTest, APartThatFitsNowhereCountsForNothing)
{
    for (const UsageRule rule : kRules) {
        Job job;
        job.items = {WithPriority(MakeItem(Rectangle(500, 500), 7), 9), MakeItem(Rectangle(10, 10), 4)};
        job.kinds = {Sheet(11, 11, 9), Sheet(21, 21, 3), Sheet(600, 600, 0)};
        job.usageRule = rule;
        const Solution solution = SolveInSteps(job, 5000);
        EXPECT_EQ(CountCopies(solution, 1), 4) << static_cast<int>(rule);
        ASSERT_EQ(solution.unplaced.size(), 1U);
        EXPECT_EQ(solution.unplaced[0].count, 7);
        EXPECT_EQ(solution.unplaced[0].reason, "no sheet left") << "there is none of the third kind";
    }
}

TEST(ZORNestSolverPriorityTest, LowerStacksServeWhereHighOnesWasteSheets)
{
    Job job; // all three fit on one sheet, but a stack of two takes both
    job.items = {MakeItem(Rectangle(10, 10), 3)};
    job.kinds = {Sheet(31, 11, 2)};
    job.stackSize = 2;
    const Solution solution = SolveInSteps(job, 3000);
    EXPECT_EQ(CountPlaced(solution), 3);
    EXPECT_TRUE(solution.unplaced.empty());
}

TEST(ZORNestSolverPriorityTest, TheMostCopiesGoByPriorityAndFit)
{
    Job job;
    job.items = {MakeItem(Rectangle(500, 500), 50), MakeItem(Rectangle(2, 2), 8),
                 WithPriority(MakeItem(Rectangle(3, 3), 7), 1)};
    job.kinds = {Sheet(50, 50, -1)};
    RunOptions options;
    options.clock = Budget::Clock::Steps;
    options.maximumTime = 2000;
    options.mostCopies = 10;
    Control control;
    const Solution solution = *Solve(job, options, control);
    EXPECT_EQ(FindFaults(job, solution), std::vector<std::string>());
    EXPECT_EQ(CountCopies(solution, 2), 7);
    EXPECT_EQ(CountCopies(solution, 1), 3);
    ASSERT_EQ(solution.unplaced.size(), 2U);
    EXPECT_EQ(solution.unplaced[0].reason, "larger than every sheet");
    EXPECT_EQ(solution.unplaced[1].count, 5);
    EXPECT_EQ(solution.unplaced[1].reason, "one job nests at most 10 parts");
}

TEST(ZORNestSolverPriorityTest, CopiesBeyondTheAreaOfAllSheetsAreNotTried)
{
    Job job;
    job.items = {MakeItem(Rectangle(10, 10), 2000000000)};
    job.kinds = {Sheet(21, 21, 2)};
    RunOptions options;
    options.clock = Budget::Clock::Steps;
    options.maximumTime = 2000;
    options.mostCopies = 5000;
    Control control;
    const Solution solution = *Solve(job, options, control);
    EXPECT_EQ(CountPlaced(solution), 8);
    ASSERT_EQ(solution.unplaced.size(), 1U);
    EXPECT_EQ(solution.unplaced[0].count, 2000000000 - 8);
    EXPECT_EQ(solution.unplaced[0].reason, "no sheet left");
}

} // namespace ZORNestSolver::SolverShapes
