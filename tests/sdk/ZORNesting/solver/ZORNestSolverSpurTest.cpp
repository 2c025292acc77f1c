// Outlines with spurs, which are drawn forth and back: they enclose no area, but nothing may lie on them.

#include "SolverShapes.h"

using namespace SolverShapes;

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
