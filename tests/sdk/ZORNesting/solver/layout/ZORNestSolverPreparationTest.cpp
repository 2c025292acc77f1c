#include "sdk/ZORNesting/solver/SolverShapes.h"

#include <ZORNesting/solver/geometry/ZORNestSolverOffset.h>
#include <ZORNesting/solver/geometry/ZORNestSolverSimplify.h>
#include <ZORNesting/solver/plan/ZORNestSolverFill.h>

#include <algorithm>
#include <thread>

namespace ZORNestSolver::SolverShapes {
namespace {

/// A star of many corners, which no simplification shortens much.
Ring Bur(size_t corners, uint64_t seed = 1)
{
    Random random(seed);
    return RandomStar(random, corners, 100);
}

Job MakeHeavyJob(int items, size_t corners)
{
    Job job;
    for (int i = 0; i < items; ++i)
        job.items.push_back(MakeItem(Bur(corners, static_cast<uint64_t>(i))));
    job.kinds = {Sheet(3000, 3000, 10)};
    job.separation = 2;
    return job;
}

/// Returns whether parts were prepared hastily or not at all, since the run was over.
bool WasHurried(const Solution& solution)
{
    const auto isHurried = [](const std::string& text) {
        return text.find("no time left") != std::string::npos;
    };
    return std::any_of(solution.remarks.begin(), solution.remarks.end(), isHurried)
           || std::any_of(solution.unplaced.begin(), solution.unplaced.end(),
                          [&](const UnplacedItem& item) { return isHurried(item.reason); });
}

} // namespace

TEST(ZORNestSolverPreparationTest, AStoppedJobIsPreparedQuicklyOrReported)
{
    Control control;
    control.stop = true;
    const Job job = MakeHeavyJob(60, 5000);
    const PreparedJob prepared(job, Budget(control, Budget::Clock::Wall, 10));
    size_t ready = 0;
    for (size_t i = 0; i < prepared.types.size(); ++i) {
        EXPECT_EQ(prepared.types[i]->outer.empty(), !prepared.reasons[i].empty());
        EXPECT_EQ(prepared.FitsOn(i, 0), prepared.reasons[i].empty());
        if (prepared.reasons[i].empty())
            ++ready;
        else
            EXPECT_EQ(prepared.reasons[i], "no time left");
    }
    EXPECT_GT(ready, 0U);
}

TEST(ZORNestSolverPreparationTest, AStopDuringPreparationEndsIt)
{
    Control control;
    const Job job = MakeHeavyJob(100, 20000);
    std::jthread stopper([&control] {
        std::this_thread::yield();
        control.stop = true;
    });
    const auto solution = Solve(job, {}, control); // unstopped, the preparation takes minutes
    ASSERT_TRUE(solution);
    EXPECT_TRUE(WasHurried(*solution));
    EXPECT_EQ(FindFaults(job, *solution), std::vector<std::string>());
}

TEST(ZORNestSolverPreparationTest, ACancelDuringPreparationGivesNothing)
{
    Control control;
    control.cancel = true;
    EXPECT_FALSE(Solve(MakeHeavyJob(100, 20000), {}, control));
}

TEST(ZORNestSolverPreparationTest, SmallPartsOfAStoppedJobKeepTheirOutlines)
{
    Control control;
    control.stop = true;
    Job job;
    job.items = {MakeItem({{0, 0}, {50, 0}, {50, 50}, {40, 50}, {40, 10}, {0, 10}}, 3)};
    job.kinds = {Sheet(200, 200)};
    const Budget budget(control, Budget::Clock::Wall, 10);
    const PreparedJob prepared(job, budget);
    EXPECT_EQ(prepared.reasons[0], "");
    EXPECT_NEAR(prepared.types[0]->area, 50 * 10 + 40 * 10, 1e-9);
}

TEST(ZORNestSolverPreparationTest, TheHullOfAPartHoldsIt)
{
    Job job = MakeHeavyJob(1, 400);
    std::string reason;
    const ItemType hull = PrepareHull(job.items[0], job, reason);
    EXPECT_EQ(reason, "");
    EXPECT_EQ(hull.outer.size(), 1U);
    for (const Point p : Bur(400, 0))
        EXPECT_TRUE(IsInside(p * 0.999, hull.outer));
    job.items[0].contours[0].segments[3].end.x = NAN;
    EXPECT_TRUE(PrepareHull(job.items[0], job, reason).outer.empty());
    EXPECT_EQ(reason, "outline has coordinates that are no numbers");
}

TEST(ZORNestSolverPreparationTest, ManyCornersAreSimplifiedInALogarithmicNumberOfLooks)
{
    constexpr int kCorners =
        1000000; // to check every edge for every corner would exceed the time limit of the test
    Ring ring;
    for (int i = 0; i < kCorners; ++i) {
        const double angle = 2 * std::numbers::pi * i / kCorners;
        ring.push_back(Point{std::cos(angle), std::sin(angle)} * (100 + (i % 2) * 1e-3));
    }
    EXPECT_TRUE(IsSimple({ring}));
    const Polygon simple = SimplifyOutwards({ring}, 0.001);
    EXPECT_LT(simple[0].size(), 1000U);
    EXPECT_GE(GetArea(simple), GetSignedArea(ring));
}

TEST(ZORNestSolverPreparationTest, ShapesOfVeryManyCornersAreSimplifiedFurther)
{
    Job job = MakeHeavyJob(1, 20000);
    std::string reason;
    const ItemType type = PrepareItem(job.items[0], job, reason);
    EXPECT_EQ(reason, "");
    EXPECT_EQ(type.outer[0].size(), 20000U);
    EXPECT_LE(type.base.edgeCount, 2000U);
    Random random(2);
    for (int i = 0; i < 300; ++i) {
        const Point p{random.Between(-100, 100), random.Between(-100, 100)};
        if (IsInside(p, type.outer)) {
            EXPECT_TRUE(IsInside(p - type.reference, type.body));
        }
    }
}

TEST(ZORNestSolverPreparationTest, PartsWithChangedOutlinesAreRemarkedOn)
{
    Job job = MakeHeavyJob(1, 20000); // more corners than the search can use
    job.items[0].name = "bur";
    job.items.push_back(MakeItem(Bur(500)));
    job.items.push_back(MakeItem(Rectangle(10, 10)));
    job.items.push_back(MakeItem({{0, 0}, {1, 0}, {2, 0}})); // cannot be nested at all
    Ring star;
    for (int i = 0; i < 2001; ++i) {
        const double angle = 2 * std::numbers::pi * (i * 1000.0 / 2001);
        star.push_back(Point{std::cos(angle), std::sin(angle)} * 100);
    }
    job.items.push_back(MakeItem(star));
    job.items.back().name = "star";
    const std::string hull = "part \"star\" crosses itself too often and is nested within its hull";
    const std::string coarse = "part \"bur\" has too many corners and is nested with a coarser outline";
    EXPECT_EQ(PreparedJob(job).remarks, (std::vector<std::string>{coarse, hull}));
    job.separation = 0;
    EXPECT_EQ(PreparedJob(job).remarks, (std::vector<std::string>{coarse, hull}));
}

TEST(ZORNestSolverPreparationTest, PartsThatWereInAHurryAreRemarkedOn)
{
    Control control;
    control.stop = true;
    Job job = MakeHeavyJob(1, 5000); // after a stop so many corners take too long
    job.items[0].name = "bur";
    job.items.push_back(MakeItem(Rectangle(10, 10)));
    const PreparedJob prepared(job, Budget(control, Budget::Clock::Wall, 10));
    EXPECT_EQ(prepared.remarks,
              std::vector<std::string>{"part \"bur\" is nested within its hull: no time left"});
}

TEST(ZORNestSolverPreparationTest, SimplificationSwallowsNoOtherPiece)
{
    // A notch as small as a sheet of paper is thick, with a crumb in it.
    Ring notched{{0, 0}, {100, 0}, {100, 49.99}, {99.98, 50}, {100, 50.01}, {100, 100}, {0, 100}};
    const Polygon polygon{notched, Rectangle(0.002, 0.002, {99.996, 49.999})};
    const Polygon simple = SimplifyOutwards(polygon, 0.001);
    EXPECT_TRUE(IsInside({99.997, 50}, simple));
}

TEST(ZORNestSolverPreparationTest, OverlappingDefectsCountOnce)
{
    Job job;
    SheetKind kind = Sheet(100, 100);
    kind.defects = {
        {Rectangle(30, 30, {10, 10})}, {Rectangle(30, 30, {20, 10})}, {Rectangle(500, 500, {90, 90})}};
    job.kinds = {kind};
    job.defectSeparation = 5;
    job.separation = 3;
    EXPECT_NEAR(PrepareSheet(kind, job).area, 10000 - 40 * 30 - 10 * 10, 1e-3);
}

TEST(ZORNestSolverPreparationTest, ARollWithDefectsIsNestedAroundThem)
{
    for (const double steps : {1.0, 300.0}) {
        for (const double separation : {0.0, 4.0}) {
            Job job;
            job.items = {MakeItem(Rectangle(60, 50), 12)};
            SheetKind roll = Roll(100);
            for (int i = 0; i < 20; ++i)
                roll.defects.push_back({Rectangle(5, 5, {40.0 + 45 * i, 30.0 + (i % 3) * 20})});
            job.kinds = {roll};
            job.separation = separation;
            job.defectSeparation = 1;
            const Solution solution = SolveInSteps(job, steps);
            EXPECT_EQ(CountPlaced(solution), 12) << steps << ' ' << separation;
        }
    }
}

TEST(ZORNestSolverPreparationTest, AStoppedRollKeepsOffItsDefects)
{
    Control control;
    control.stop = true;
    Job job;
    job.items = {MakeItem(Rectangle(60, 50), 12)};
    SheetKind roll = Roll(100);
    roll.defects = {{Rectangle(30, 80, {40, 10})}, {Rectangle(5, 5, {300, 40})}};
    job.kinds = {roll};
    const auto solution = Solve(job, {}, control);
    ASSERT_TRUE(solution);
    EXPECT_EQ(FindFaults(job, *solution), std::vector<std::string>());
    EXPECT_EQ(CountPlaced(*solution), 12);
}

} // namespace ZORNestSolver::SolverShapes
