#include "sdk/ZORNesting/solver/SolverShapes.h"

#include <ZORNesting/solver/plan/ZORNestSolverOpenSheet.h>

#include <thread>

namespace ZORNestSolver::SolverShapes {
namespace {

/// A run that is stopped, or cancelled, once it has counted so many steps.
std::optional<Solution> SolveUntil(const Job& job, uint64_t steps, std::atomic<bool> Control::*request)
{
    Control control;
    if (steps == 0)
        control.*request = true;
    std::atomic<bool> isOver = false;
    const std::jthread watcher([&] {
        while (!isOver && control.steps < steps)
            std::this_thread::yield();
        control.*request = true;
    });
    std::optional<Solution> solution = Solve(job, {}, control);
    isOver = true;
    return solution;
}

Solution StopAt(const Job& job, uint64_t steps)
{
    std::optional<Solution> solution = SolveUntil(job, steps, &Control::stop);
    EXPECT_TRUE(solution.has_value());
    EXPECT_EQ(FindFaults(job, *solution), std::vector<std::string>());
    return *solution;
}

/// Stars on sheets of three kinds, one of them a roll.
Job MakeKindsJob(UsageRule rule, int stack)
{
    Job job;
    Random random(7);
    for (int i = 0; i < 12; ++i) {
        job.items.push_back(MakeItem(RandomStar(random, 9, 10), 5));
        job.items.back().grain180 = true;
        job.items.back().priority = i % 3;
    }
    job.kinds = {Sheet(60, 50, 4), Sheet(45, 45, -1), Roll(40)};
    job.usageRule = rule;
    job.stackSize = stack;
    job.separation = 0.5;
    return job;
}

/// Squares of which the one sheet or stack holds six; those of the second item go first.
Job MakeShortJob(UsageRule rule, int stack)
{
    Job job;
    job.items = {MakeItem(Rectangle(10, 10), 20), MakeItem(Rectangle(9.9, 9.9), 6 * stack)};
    job.items[1].priority = 1;
    job.kinds = {Sheet(31, 21, stack), Sheet(9, 90, 5)};
    job.usageRule = rule;
    job.stackSize = stack;
    return job;
}

/// Counts the parts that stand right above another one of their kind, not turned against it.
int CountInColumns(const Solution& solution)
{
    int count = 0;
    for (const NestedSheet& sheet : solution.sheets) {
        for (size_t i = 1; i < sheet.placements.size(); ++i) {
            const Placement& below = sheet.placements[i - 1];
            const Placement& above = sheet.placements[i];
            if (above.item == below.item && above.pose.angle == below.pose.angle
                && std::abs(above.pose.position.x - below.pose.position.x) < 1e-9
                && above.pose.position.y > below.pose.position.y)
                ++count;
        }
    }
    return count;
}

} // namespace

TEST(ZORNestSolverStopTest, AStoppedRunPlacesEverythingAtAnyMoment)
{
    for (const UsageRule rule : kRules) {
        for (const int stack : {1, 3}) {
            const Job job = MakeKindsJob(rule, stack);
            for (const uint64_t steps : {0, 1, 20, 300, 3000})
                EXPECT_EQ(CountPlaced(StopAt(job, steps)), 60)
                    << static_cast<int>(rule) << " " << stack << " " << steps;
        }
    }
}

TEST(ZORNestSolverStopTest, AStoppedRunServesHighPrioritiesFirst)
{
    for (const UsageRule rule : kRules) {
        for (const int stack : {1, 2, 3}) {
            const Job job = MakeShortJob(rule, stack);
            for (const uint64_t steps : {0, 1, 10, 100, 2000}) {
                const Solution solution = StopAt(job, steps);
                EXPECT_EQ(CountCopies(solution, 1), 6 * stack)
                    << static_cast<int>(rule) << " " << stack << " " << steps;
                EXPECT_EQ(CountCopies(solution, 0), 0);
            }
        }
    }
}

TEST(ZORNestSolverStopTest, ARunThatIsOverPlacesEverything)
{
    for (const UsageRule rule : kRules) {
        const Job job = MakeKindsJob(rule, 2);
        for (const double steps : {1, 3, 40, 700, 3000})
            EXPECT_EQ(CountPlaced(SolveInSteps(job, steps)), 60) << static_cast<int>(rule) << " " << steps;
    }
}

TEST(ZORNestSolverStopTest, ACancelledRunHasNoResultAtAnyMoment)
{
    for (const uint64_t steps : {0, 1, 300, 5000})
        EXPECT_FALSE(SolveUntil(MakeKindsJob(UsageRule::BestMix, 2), steps, &Control::cancel).has_value());
}

TEST(ZORNestSolverStopTest, AStopKeepsWhatALongerRunGained)
{
    Job job; // four squares fit only where their overlaps are removed or contacts are used
    job.items = {MakeItem(Rectangle(10, 10), 8)};
    job.kinds = {Sheet(20.4, 20.4, -1)};
    size_t fewest = StopAt(job, 0).sheets.size();
    for (const uint64_t steps : {200, 2000, 8000}) {
        const size_t sheets = StopAt(job, steps).sheets.size();
        EXPECT_LE(sheets, fewest);
        fewest = std::min(fewest, sheets);
    }
    EXPECT_EQ(fewest, 2U);
}

TEST(ZORNestSolverStopTest, AThousandPartsAreThereSoonAfterAStop)
{
    Job job;
    Random random(3);
    for (int i = 0; i < 100; ++i)
        job.items.push_back(MakeItem(RandomStar(random, 12, random.Between(4, 20)), 10));
    for (const SheetKind& kind : {Sheet(300, 200, -1), Roll(200)}) {
        job.kinds = {kind};
        EXPECT_EQ(CountPlaced(StopAt(job, 0)), 1000);
    }
}

TEST(ZORNestSolverStopTest, TheMinimumTimeIsUsedUpByEveryRule)
{
    for (const UsageRule rule : kRules) {
        for (const int stack : {1, 2}) {
            Job job = MakeKindsJob(rule, stack);
            job.items.resize(4);
            Control control;
            RunOptions options;
            options.clock = Budget::Clock::Steps;
            options.maximumTime = 25000;
            options.minimumTime = 15000;
            ASSERT_TRUE(Solve(job, options, control).has_value());
            EXPECT_GE(control.steps, 15000U) << static_cast<int>(rule) << " " << stack;
        }
    }
}

TEST(ZORNestSolverStopTest, AProvedOptimumEndsTheRunBeforeItsMinimumTime)
{
    for (const SheetKind& kind : {Sheet(20, 20, 5), Roll(20)}) {
        Job job;
        job.items = {MakeItem(Rectangle(10, 10), 4)};
        job.kinds = {kind};
        Control control;
        RunOptions options;
        options.clock = Budget::Clock::Steps;
        options.minimumTime = 1e7;
        EXPECT_EQ(CountPlaced(*Solve(job, options, control)), 4);
        EXPECT_LT(control.steps, 100000U);
    }
}

TEST(ZORNestSolverStopTest, AStopEndsTheConstructionOfManyPartsAtFreeAngles)
{
    Random random(3);
    for (const int types : {1, 100}) {
        Job job;
        for (int i = 0; i < types; ++i) {
            job.items.push_back(MakeItem(RandomStar(random, 12, random.Between(4, 20)), 5000 / types));
            job.items.back().maxDeviation = std::numbers::pi;
        }
        for (const SheetKind& kind : {Sheet(1000, 500, -1), Roll(1000)}) {
            job.kinds = {kind};
            const Solution solution = StopAt(job, 0);
            EXPECT_EQ(CountPlaced(solution), 5000) << types;
            EXPECT_GT(CountInColumns(solution), 1000) << types << ": contacts would take minutes";
        }
    }
}

TEST(ZORNestSolverStopTest, ColumnsKeepOffObstaclesAndLeaveNoPartOut)
{
    Job job;
    Random random(3);
    job.items = {MakeItem(Rectangle(10, 6), 200), MakeItem(Rectangle(3, 2), 1)};
    job.separation = 1;
    job.defectSeparation = 2;
    job.kinds = {Sheet(200, 100, -1)};
    for (int i = 0; i < 20; ++i)
        job.kinds[0].defects.push_back({Rectangle(3, 3, {random.Between(0, 190), random.Between(0, 95)})});
    const PreparedJob prepared(job);
    ContactPoses poses(prepared);
    OpenSheet sheet(prepared, poses, 0, 1, 1);
    NestedSheet nested{0, 200, 1, {}, 0};
    EXPECT_TRUE(sheet.TryPlace(0, 0, {}));
    while (sheet.TryPlaceInColumn(0))
        continue;
    nested.placements = sheet.GetPlacements();
    EXPECT_GT(nested.placements.size(), 50U);
    EXPECT_TRUE(FindPlacementFaults(job, nested).empty());
    EXPECT_TRUE(sheet.TryPlace(1, 0, {})) << "contacts find room beside columns";
    while (sheet.TryPlaceInColumn(1))
        continue;
    nested.placements = sheet.GetPlacements();
    EXPECT_TRUE(FindPlacementFaults(job, nested).empty());
}

} // namespace ZORNestSolver::SolverShapes
