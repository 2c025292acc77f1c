// Outlines with spurs, which are drawn forth and back: they enclose no area, but nothing may lie on them.

#include "sdk/ZORNesting/solver/SolverShapes.h"

#include <ZORNesting/solver/geometry/ZORNestSolverSpurs.h>
#include <ZORNesting/solver/layout/ZORNestSolverArea.h>

namespace ZORNestSolver::SolverShapes {
namespace {

/// A square of 10 x 10 with a detour from the middle of its right side, forth and back.
Ring SquareWithSpur(const Ring& spur)
{
    Ring ring{{0, 0}, {10, 0}, {10, 5}};
    ring.insert(ring.end(), spur.begin(), spur.end());
    ring.insert(ring.end(), spur.rbegin() + 1, spur.rend());
    ring.insert(ring.end(), {{10, 5}, {10, 10}, {0, 10}});
    return ring;
}

Polygon OuterOf(const Ring& ring)
{
    std::string reason;
    Polygon polygon = MakeOuterPolygon({MakeContour(ring)}, reason);
    EXPECT_EQ(reason, "");
    return polygon;
}

void ExpectHeld(const Ring& drawn, const Polygon& polygon)
{
    for (size_t i = 0; i < drawn.size(); ++i) {
        const Point from = drawn[i];
        const Point to = drawn[(i + 1) % drawn.size()];
        for (int k = 0; k <= 20; ++k) {
            const Point p = from + (to - from) * (k / 20.0);
            EXPECT_TRUE(IsInside(p, polygon) || GetDistanceToBoundary(p, polygon) < 1e-6)
                << p.x << " " << p.y;
        }
    }
}

/// Nests eight copies on a roll in which two of them lie side by side.
int CountPlaced(const Ring& ring)
{
    Job job;
    job.items = {MakeItem(ring, 8)};
    job.items[0].allowedAngles = {0, std::numbers::pi};
    job.kinds = {Roll(25)};
    RunOptions options;
    options.clock = Budget::Clock::Steps;
    options.maximumTime = 300;
    Control control;
    const std::optional<Solution> solution = Solve(job, options, control);
    EXPECT_EQ(FindFaults(job, *solution), std::vector<std::string>());
    return CountCopies(*solution, 0);
}

const std::vector<Ring> kSpurs{
    {{15, 5}}, {{15, 5}, {15, 8}}, {{12, 5}, {13, 7}, {17, 7.5}, {16, 3}}, {{15.3, 6.1}}};

} // namespace

TEST(ZORNestSolverSpurTest, ThePolygonHoldsThem)
{
    for (const Ring& spur : kSpurs) {
        const Ring ring = SquareWithSpur(spur);
        const Polygon polygon = OuterOf(ring);
        ExpectHeld(ring, polygon);
        EXPECT_NEAR(GetArea(polygon), 100, 0.01);
        const Box box = GetBox(polygon);
        EXPECT_NEAR(box.max.x, GetBox({ring}).max.x, 1e-6) << "it must not become longer";
        EXPECT_NEAR(box.min.x, 0, 1e-6);
        EXPECT_NEAR(box.GetHeight(), 10, 1e-6);
    }
}

TEST(ZORNestSolverSpurTest, TheLeastLengthsGiveNumbers)
{
    for (const double tiny : {5e-324, 5.9e-316, 1e-300, 1e-160, 1e-12}) {
        const Ring ring{{0, 0}, {tiny, 0}, {0, 0}, {10, 10}, {10, 0}, {0, 10}}; // crosses itself as well
        EXPECT_NEAR(GetArea(OuterOf(ring)), 50, 0.01) << tiny;
    }
}

TEST(ZORNestSolverSpurTest, SidesMayBeDividedDifferently)
{
    const Ring ring{{0, 0}, {10, 0}, {10, 5}, {17, 5}, {14, 5}, {12, 5}, {10, 5}, {10, 10}, {0, 10}};
    ExpectHeld(ring, OuterOf(ring));
    const Ring passing{{0, 0}, {15, 0}, {10, 0}, {10, 10}, {0, 10}}; // one side goes on along the square
    const Polygon polygon = OuterOf(passing);
    ExpectHeld(passing, polygon);
    EXPECT_NEAR(GetBox(polygon).GetHeight(), 10, 1e-6);
}

TEST(ZORNestSolverSpurTest, AllCopiesArePlaced)
{
    for (const Ring& spur : kSpurs)
        EXPECT_EQ(CountPlaced(SquareWithSpur(spur)), 8);
}

TEST(ZORNestSolverSpurTest, ARingThatRunsAlongItselfAgainAndAgainEnds)
{
    Ring ring{{0, 0}, {10, 0}, {10, 10}};
    for (int i = 0; i < 3000; ++i) {
        ring.push_back({5, 10});
        ring.push_back({5, 20});
    }
    const Polygon polygon = OuterOf(ring);
    EXPECT_FALSE(polygon.empty());
}

TEST(ZORNestSolverSpurTest, ALineThatIsDrawnVeryOftenTakesBoundedWork)
{
    Ring line;
    for (int i = 0; i < 60000; ++i)
        line.insert(line.end(), {{0, 0}, {10, 0}});
    std::string reason;
    EXPECT_TRUE(MakeOuterPolygon({MakeContour(line)}, reason).empty());
    EXPECT_EQ(reason, "outline encloses no area");
    EXPECT_EQ(GetSpurs({line}, {Rectangle(5, 5, {2, -2})}).size(), 2U) << "each stretch once";
    Ring ring{{0, 0}, {10, 0}, {10, 10}};
    ring.insert(ring.end(), {{5, 10}});
    for (int i = 0; i < 60000; ++i)
        ring.insert(ring.end(), {{5, 20}, {5, 10}});
    ring.push_back({0, 10});
    Job job;
    job.items = {MakeItem(ring, 2), MakeItem(line)};
    job.kinds = {Sheet(30, 30, 2)};
    const Solution solution = SolveInSteps(job, 10);
    EXPECT_EQ(CountCopies(solution, 0), 2);
    ASSERT_EQ(solution.unplaced.size(), 1U);
    EXPECT_EQ(solution.unplaced[0].reason, "outline encloses no area");
}

TEST(ZORNestSolverSpurTest, WhatTheMaterialHoldsIsNoSpur)
{
    const Polygon square{Rectangle(10, 10)};
    EXPECT_TRUE(GetSpurs(square, square).empty());
    EXPECT_TRUE(GetSpurs({{{1, 1}, {9, 9}}, {{0, 0}, {10, 10}}, {{0, 3}, {0, 5}}}, square).empty());
    EXPECT_EQ(GetSpurs({{{-5, 5}, {15, 5}}}, square).size(), 2U);
    EXPECT_EQ(GetSpurs({{{-5, 5}, {15, 5}}}, {}).size(), 1U);
    EXPECT_TRUE(GetSpurs({}, square).empty());
    EXPECT_TRUE(GetSpurs({{{50, 50}}}, square).empty()) << "a point draws nothing";
}

TEST(ZORNestSolverSpurTest, LinesOfSheetOutlinesAndDefectsAreKept)
{
    SheetKind kind = Sheet(40, 40);
    kind.outline = {{{0, 0}, {40, 0}, {40, 40}, {20, 40}, {20, 10}, {20, 40}, {0, 40}}};
    kind.defects = {{{{5, 5}, {6, 5}, {6, 6}, {15, 15}, {6, 6}, {5, 6}}}};
    Job job;
    job.kinds = {kind};
    const SheetArea area = PrepareSheet(kind, job);
    EXPECT_FALSE(area.IsClear({Rectangle(5, 5, {18, 20})}));
    EXPECT_FALSE(area.IsClear({Rectangle(5, 5, {9, 9})}));
    EXPECT_TRUE(area.IsClear({Rectangle(15, 15, {25, 20})}));
    job.items = {MakeItem(Rectangle(18, 18), 5)};
    const Solution solution = SolveInSteps(job, 1000);
    for (const UnplacedItem& unplaced : solution.unplaced)
        EXPECT_NE(unplaced.reason, "its place did not pass the check");
}

TEST(ZORNestSolverSpurTest, LoopsInOppositeDirectionsHoldAnArea)
{
    const Ring bowTie{{10, 10}, {30, 30}, {30, 10}, {10, 30}}; // its loops sum up to nothing
    Job job;
    job.items = {MakeItem(Rectangle(4, 2), 4)};
    job.kinds = {Sheet(40, 40)};
    job.kinds[0].outline = {bowTie};
    EXPECT_GT(CountPlaced(SolveInSteps(job, 2000)), 0);
    job.kinds[0].outline = {};
    job.kinds[0].defects = {{bowTie}};
    NestedSheet sheet{0, 40, 1, {At(0, {11, 19})}, 0};
    EXPECT_EQ(FindPlacementFaults(job, sheet).size(), 1U);
}

TEST(ZORNestSolverSpurTest, APartThinnerThanTheToleranceStaysOnItsSheet)
{
    Job job;
    job.items = {MakeItem(Rectangle(20, 1e-9), 7)};
    job.items[0].grain270 = true;
    job.kinds = {Sheet(49, 127, 6)};
    job.kinds[0].outline = {{{1e-6, 0}, {53, -120}, {40, 4}, {60, 0}}};
    for (const UnplacedItem& unplaced : SolveInSteps(job, 1).unplaced)
        EXPECT_NE(unplaced.reason, "its place did not pass the check");
}

} // namespace ZORNestSolver::SolverShapes
