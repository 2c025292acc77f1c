#include "sdk/ZORNesting/solver/SolverShapes.h"

namespace ZORNestSolver::SolverShapes {
namespace {

std::vector<size_t> CountKinds(const Solution& solution, size_t kinds)
{
    std::vector<size_t> counts(kinds, 0);
    for (const NestedSheet& sheet : solution.sheets)
        ++counts[sheet.kind];
    return counts;
}

/// The same with a bump on its right side that fits the notch on the left side of a part turned over.
Ring MakeInterlock()
{
    return {{0, -5}, {8, -5}, {8, 0.05}, {12, 0.05}, {12, 2.95}, {8, 2.95},
            {8, 5},  {0, 5},  {0, 0},    {4.1, 0},   {4.1, -3},  {0, -3}};
}

} // namespace

TEST(ZORNestSolverPlanTest, AsListedUsesUpTheKindsInTheirOrder)
{
    Job job;
    job.items = {MakeItem(Rectangle(10, 10), 5)};
    job.kinds = {Sheet(11, 11, 2), Sheet(100, 100, 0), Sheet(11, 11, 1), Sheet(60, 60, 5)};
    job.kinds[3].cost = 1;
    const Solution solution = SolveInSteps(job, 5000);
    EXPECT_EQ(CountPlaced(solution), 5);
    EXPECT_EQ(CountKinds(solution, 4), (std::vector<size_t>{2, 0, 1, 1}));
}

TEST(ZORNestSolverPlanTest, BestSizeTakesOneKindAndBestMixTheCheapestOfSeveral)
{
    Job job;
    job.items = {MakeItem(Rectangle(10, 10), 5)};
    job.kinds = {Sheet(21, 21, 10), Sheet(11, 11, 10)}; // four for 5, one for 2
    job.kinds[0].cost = 5;
    job.kinds[1].cost = 2;
    job.usageRule = UsageRule::BestSize;
    const Solution single = SolveInSteps(job, 20000);
    EXPECT_DOUBLE_EQ(single.cost, 10);
    EXPECT_EQ(CountPlaced(single), 5);
    job.usageRule = UsageRule::BestMix;
    const Solution mix = SolveInSteps(job, 20000);
    EXPECT_DOUBLE_EQ(mix.cost, 7);
    EXPECT_EQ(CountKinds(mix, 2), (std::vector<size_t>{1, 1}));
}

TEST(ZORNestSolverPlanTest, WithoutCostsTheAreaIsTheCost)
{
    Job job;
    job.items = {MakeItem(Rectangle(10, 10), 4)};
    job.kinds = {Sheet(50, 50, 10), Sheet(21, 21, 10), Sheet(11, 11, 3)};
    job.usageRule = UsageRule::BestMix;
    const Solution solution = SolveInSteps(job, 20000);
    EXPECT_EQ(CountPlaced(solution), 4);
    EXPECT_DOUBLE_EQ(solution.cost, 21 * 21);
}

TEST(ZORNestSolverPlanTest, TheTailMovesToARoll)
{
    Job job;
    job.items = {MakeItem(Rectangle(10, 10), 5)};
    job.kinds = {Sheet(21, 21, 3), Roll(10.5)};
    job.kinds[0].cost = 8;
    job.kinds[1].cost = 0.3; // a part for 3
    job.usageRule = UsageRule::BestMix;
    const Solution solution = SolveInSteps(job, 40000);
    EXPECT_EQ(CountPlaced(solution), 5);
    EXPECT_EQ(CountKinds(solution, 2), (std::vector<size_t>{1, 1}));
    EXPECT_NEAR(solution.cost, 11, 0.3);
}

TEST(ZORNestSolverPlanTest, AMixGoesBeyondTheStockOfOneKind)
{
    Job job;
    job.items = {MakeItem(Rectangle(10, 10), 4)};
    job.kinds = {Sheet(11, 11, 2), Sheet(12, 12, 1), Sheet(13, 13, 9)};
    job.kinds[0].cost = 1;
    job.kinds[1].cost = 2;
    job.kinds[2].cost = 4;
    job.usageRule = UsageRule::BestMix;
    const Solution solution = SolveInSteps(job, 30000);
    EXPECT_TRUE(solution.unplaced.empty());
    EXPECT_DOUBLE_EQ(solution.cost, 8);
}

TEST(ZORNestSolverPlanTest, StacksHaveTheirOwnSheetsAndNeverOverproduce)
{
    Job job;
    job.items = {MakeItem(Rectangle(10, 10), 7), MakeItem(Rectangle(5, 5), 3), MakeItem(Rectangle(4, 4), 1)};
    job.kinds = {Sheet(12, 30, 12)};
    for (const int stack : {0, 1, 2, 3, 8}) {
        job.stackSize = stack;
        const Solution solution = SolveInSteps(job, 8000);
        EXPECT_EQ(CountPlaced(solution), 11) << stack;
        for (const NestedSheet& sheet : solution.sheets)
            EXPECT_LE(sheet.stack, std::max(1, stack));
    }
}

TEST(ZORNestSolverPlanTest, LowPrioritiesTakeNothingFromHighOnes)
{
    Job job;
    job.items = {MakeItem(Rectangle(20, 20), 4), MakeItem(Rectangle(9, 9), 30), MakeItem(Rectangle(5, 5), 6)};
    job.items[1].priority = 1;
    job.items[2].priority = 2;
    job.kinds = {Sheet(41, 41, 1)};
    const Solution solution = SolveInSteps(job, 60000);
    std::vector<int> counts(3, 0);
    for (const Placement& placement : solution.sheets.at(0).placements)
        ++counts[placement.item];
    EXPECT_EQ(counts[2], 6);
    EXPECT_GE(counts[1], 12);
    EXPECT_EQ(counts[0], 0);
    ASSERT_FALSE(solution.unplaced.empty());
    for (const UnplacedItem& unplaced : solution.unplaced)
        EXPECT_EQ(unplaced.reason, "no sheet left");
}

TEST(ZORNestSolverPlanTest, TheLastSheetIsPackedToTheLeftAndItsRemnantReported)
{
    Job job;
    job.items = {MakeItem(Rectangle(10, 10), 4)};
    job.separation = 1;
    job.kinds = {Sheet(100, 21.5, 1)};
    const Solution solution = SolveInSteps(job, 20000);
    ASSERT_EQ(solution.sheets.size(), 1U);
    EXPECT_NEAR(solution.sheets[0].remnantLength, 100 - 21 - 1, 0.1);
    EXPECT_EQ(solution.sheets[0].usedLength, 100);
    job.kinds = {Roll(21.5)};
    EXPECT_EQ(SolveInSteps(job, 20000).sheets.at(0).remnantLength, 0);
}

TEST(ZORNestSolverPlanTest, TurningPartsOverSavesMaterial)
{
    Job job;
    job.items = {MakeItem(MakeInterlock(), 6)};
    job.items[0].grain180 = true;
    job.kinds = {Roll(10.02)};
    const double without = SolveInSteps(job, 20000).sheets.at(0).usedLength;
    job.items[0].flippable = true;
    EXPECT_LT(SolveInSteps(job, 20000).sheets.at(0).usedLength, 0.9 * without);
    job.singleSided = true;
    EXPECT_GT(SolveInSteps(job, 20000).sheets.at(0).usedLength, 0.98 * without);
}

TEST(ZORNestSolverPlanTest, PartsInHolesSaveMaterial)
{
    Job job;
    const auto frame = [](bool open) {
        Item item = MakeItem(Rectangle(20, 20), 4);
        if (open)
            item.contours.push_back(MakeContour(Rectangle(16, 16, {2, 2})));
        return item;
    };
    job.kinds = {Roll(20.5)};
    job.items = {frame(false), MakeItem(Rectangle(7, 7), 12)};
    const double without = SolveInSteps(job, 20000).sheets.at(0).usedLength;
    job.items[0] = frame(true);
    EXPECT_LT(SolveInSteps(job, 20000).sheets.at(0).usedLength, 0.85 * without);
}

TEST(ZORNestSolverPlanTest, GrainIsLockedForEachPartAndForTheJob)
{
    Job job;
    job.items = {MakeItem(Rectangle(30, 5), 3)};
    job.kinds = {Sheet(6, 31, 3)}; // stands upright only
    EXPECT_EQ(CountPlaced(SolveInSteps(job, 1000)), 0);
    for (bool Job::*flag : {&Job::grain90, &Job::grain270}) {
        Job turned = job;
        turned.*flag = true;
        EXPECT_EQ(CountPlaced(SolveInSteps(turned, 1000)), 3);
    }
    job.grain180 = true;
    EXPECT_EQ(CountPlaced(SolveInSteps(job, 1000)), 0);
    job.items[0].grain90 = true;
    EXPECT_EQ(CountPlaced(SolveInSteps(job, 1000)), 3);
    job.items[0].grain90 = false;
    job.items[0].orientation = std::numbers::pi / 2;
    EXPECT_EQ(CountPlaced(SolveInSteps(job, 1000)), 3);
}

TEST(ZORNestSolverPlanTest, DeviationsReachTheFitThatNeedsThem)
{
    Job job; // fits at about 10 degrees only
    const double angle = 10 * std::numbers::pi / 180;
    job.items = {MakeItem(Transform({false, -angle, {}}).Apply(Polygon{Rectangle(30, 5)}).front())};
    job.kinds = {Sheet(30.3, 5.3)};
    EXPECT_EQ(CountPlaced(SolveInSteps(job, 1000)), 0);
    job.maxDeviation = 1.2 * angle;
    EXPECT_EQ(CountPlaced(SolveInSteps(job, 1000)), 1);
    job.deviationIncrement = angle / 2;
    EXPECT_EQ(CountPlaced(SolveInSteps(job, 1000)), 1);
    job.deviationIncrement = 0.7 * angle;
    EXPECT_EQ(CountPlaced(SolveInSteps(job, 1000)), 0);
    job.items[0].maxDeviation = 0.5 * angle; // its own, not the job's
    job.deviationIncrement = 0;
    EXPECT_EQ(CountPlaced(SolveInSteps(job, 1000)), 0);
}

TEST(ZORNestSolverPlanTest, HidesAndDefectsAreCutAround)
{
    Job job;
    job.items = {MakeItem(Rectangle(10, 10), 5)};
    job.kinds = {Sheet(40, 40)};
    job.kinds[0].outline = {{{0, 0}, {40, 0}, {40, 15}, {15, 40}, {0, 40}}};
    job.kinds[0].defects = {{Rectangle(4, 4, {1, 1})}, {Rectangle(2, 2, {18, 18})}};
    job.frameWidth = 0.5;
    job.defectSeparation = 1;
    EXPECT_EQ(CountPlaced(SolveInSteps(job, 20000)), 5);
}

TEST(ZORNestSolverPlanTest, AnItemThatNeedsAHoleOrATurnedHandDoesNotStopTheOthers)
{
    Job job;
    job.items = {MakeItem(Rectangle(500, 500)), MakeItem({{0, 0}, {5, 0}, {5, 0}}), MakeItem({}),
                 MakeItem(Rectangle(10, 10), 3)};
    job.items[0].name = "door";
    job.kinds = {Sheet(0, 50), Sheet(50, 0), Sheet(-5, 10), Roll(0), Sheet(35, 12)};
    for (const UsageRule rule : {UsageRule::AsListed, UsageRule::BestSize, UsageRule::BestMix}) {
        job.usageRule = rule;
        const Solution solution = SolveInSteps(job, 5000);
        EXPECT_EQ(CountPlaced(solution), 3);
        ASSERT_EQ(solution.unplaced.size(), 3U);
        EXPECT_EQ(solution.unplaced[0].reason, "larger than every sheet");
        EXPECT_EQ(solution.unplaced[1].reason, "outline encloses no area");
        EXPECT_EQ(solution.remarks.size(), 4U);
    }
}

} // namespace ZORNestSolver::SolverShapes
