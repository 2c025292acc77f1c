// Parts of very many holes, and which rings lie in which.

#include "sdk/ZORNesting/solver/SolverShapes.h"

#include <ZORNesting/solver/geometry/ZORNestSolverDepths.h>
#include <ZORNesting/solver/plan/ZORNestSolverFill.h>

namespace ZORNestSolver::SolverShapes {
namespace {

using Depths = std::vector<size_t>;

/// A plate with so many square holes, in rows, in an order that says nothing about where they lie.
Item MakeSieve(int rows, int columns)
{
    Item item = MakeItem(Rectangle(2 * columns + 1, 2 * rows + 1));
    for (int i = 0; i < rows * columns; ++i) {
        const int k = static_cast<int>(i * int64_t{7919} % (rows * columns));
        const int row = k / columns;
        item.contours.push_back(MakeContour(Rectangle(1, 1, {1 + 2.0 * (k % columns), 1 + 2.0 * row})));
    }
    return item;
}

/// Compares every two rings.
Depths CountDepths(const Polygon& polygon)
{
    Depths depths(polygon.size(), 0);
    for (size_t i = 0; i < polygon.size(); ++i)
        for (size_t k = 0; k < polygon.size(); ++k)
            depths[i] += i != k && IsInside(polygon[i][0], {polygon[k]}) ? 1 : 0;
    return depths;
}

} // namespace

TEST(ZORNestSolverHolesTest, DepthsAreThoseOfEveryPair)
{
    EXPECT_EQ(GetDepths({}), Depths());
    EXPECT_EQ(GetDepths({Rectangle(1, 1)}), Depths({0}));
    EXPECT_EQ(GetDepths({Rectangle(1, 1, {1, 1}), Rectangle(3, 3)}), Depths({1, 0}));
    EXPECT_EQ(GetDepths({Rectangle(9, 9), Rectangle(1, 1, {1, 1}), Rectangle(1, 1, {1, 3}),
                         Rectangle(1, 1, {3, 1})}),
              Depths({0, 1, 1, 1}))
        << "sides in line with each other";
    const Ring corner{{0, 0}, {10, 0}, {10, 1}, {1, 1}, {1, 10}, {0, 10}};
    EXPECT_EQ(GetDepths({corner, Rectangle(3, 3, {2, 2}), Reversed(Rectangle(0.5, 0.5, {0.2, 5}))}),
              Depths({0, 0, 1}));
}

TEST(ZORNestSolverHolesTest, DepthsOfRandomRingsAreThoseOfEveryPair)
{
    Random random(5);
    for (int round = 0; round < 40; ++round) {
        Polygon polygon; // stars in cells, with stars in them, in both directions
        for (int cell = 0; cell < 9; ++cell) {
            const int row = cell / 3;
            const Point center{30.0 * (cell % 3), 30.0 * row};
            for (double radius = 14; radius > 0.1; radius *= random.Between(0.1, 0.25)) {
                Ring ring = RandomStar(random, 8 + random.Index(9), radius);
                for (Point& p : ring)
                    p = p + center;
                polygon.insert(polygon.begin()
                                   + static_cast<std::ptrdiff_t>(random.Index(polygon.size() + 1)),
                               random.Index(2) == 0 ? ring : Reversed(ring));
            }
        }
        ASSERT_TRUE(IsSimple(polygon));
        EXPECT_EQ(GetDepths(polygon), CountDepths(polygon));
    }
}

TEST(ZORNestSolverHolesTest, DepthsAreLeftOffWhenInterrupted)
{
    EXPECT_EQ(GetDepths({Rectangle(1, 1)}, [] { return true; }), Depths());
}

TEST(ZORNestSolverHolesTest, IslandsInHolesAreMaterial)
{
    Item item = MakeItem(Rectangle(100, 100));
    for (const Ring& ring : {Rectangle(80, 80, {10, 10}), Rectangle(60, 60, {20, 20}),
                             Rectangle(40, 40, {30, 30}), Rectangle(20, 20, {40, 40})})
        item.contours.push_back(MakeContour(ring));
    std::string reason;
    const Polygon polygon = MakeOuterPolygon(item.contours, reason);
    EXPECT_NEAR(GetArea(polygon), 10000 - 6400 + 3600 - 1600 + 400, 1e-6);
}

TEST(ZORNestSolverHolesTest, EqualHolesAreMaterialAgain)
{
    Item item = MakeItem(Rectangle(100, 100));
    for (int i = 0; i < 2; ++i)
        item.contours.push_back(MakeContour(Rectangle(50, 50, {20, 20})));
    std::string reason;
    EXPECT_NEAR(GetArea(MakeOuterPolygon(item.contours, reason)), 10000, 1e-3);
}

TEST(ZORNestSolverHolesTest, NoPartLiesAcrossTheCommonEdgeOfHoles)
{
    // Two holes of 10 x 20 beside each other would hold a square of 19; the edge between them is drawn.
    Job job;
    job.items = {MakeItem(Rectangle(30, 30)), MakeItem(Rectangle(19, 19))};
    for (const double x : {5.0, 15.0})
        job.items[0].contours.push_back(MakeContour(Rectangle(10, 20, {x, 5})));
    job.kinds = {Sheet(30, 30, 1)};
    const Solution solution = SolveInSteps(job, 2000);
    EXPECT_EQ(CountPlaced(solution), 1);
    EXPECT_NE(solution.unplaced.at(0).reason, "its place did not pass the check");
    std::string reason;
    EXPECT_TRUE(IsInside({15, 10}, MakeOuterPolygon(job.items[0].contours, reason)));
}

TEST(ZORNestSolverHolesTest, TheCommonEdgeOfAHoleAndTheOutlineIsHeld)
{
    Job job;
    job.items = {MakeItem({{0, -128}, {2.0317382812499996, 0}, {0, 0}}, 6)};
    job.items[0].contours.push_back(MakeContour({{0, 0}, {1, 0}, {1, -64}, {0, -64}}));
    job.kinds = {Sheet(373, 373, 5)};
    EXPECT_EQ(CountPlaced(SolveInSteps(job, 1)), 6);
    std::string reason;
    EXPECT_TRUE(IsInside({1e-5, -32}, MakeOuterPolygon(job.items[0].contours, reason)));
}

TEST(ZORNestSolverHolesTest, LinesBesideAPartAreHeld)
{
    Job job;
    job.items = {MakeItem(Rectangle(10, 10), 6)};
    job.items[0].contours.push_back(MakeContour({{12, 5}, {18, 5}})); // encloses nothing
    job.kinds = {Sheet(40, 22, 3)};
    EXPECT_EQ(CountPlaced(SolveInSteps(job, 500)), 6);
    std::string reason;
    EXPECT_TRUE(IsInside({15, 5}, MakeOuterPolygon(job.items[0].contours, reason)));
}

// To compare every pair would take longer than a test may.
TEST(ZORNestSolverHolesTest, VeryManyHolesArePreparedSoon)
{
    Job job;
    job.items = {MakeSieve(400, 400)};
    job.kinds = {Sheet(2000, 2000)};
    std::string reason;
    const ItemType type = PrepareItem(job.items[0], job, reason);
    EXPECT_EQ(reason, "");
    EXPECT_LE(type.base.edgeCount, 2000U) << "the smallest holes are filled";
    EXPECT_EQ(type.loss, OutlineLoss::Coarse);
    EXPECT_NEAR(type.leastArea, 801 * 801 - 160000, 1e-3);
}

TEST(ZORNestSolverHolesTest, ManyHolesAreNestedAndProvedInAnyArrangement)
{
    Job job;
    Item nested = MakeItem(Rectangle(6001, 6001));
    for (int i = 1; i < 3000; ++i)
        nested.contours.push_back(MakeContour(Rectangle(6001 - 2 * i, 6001 - 2 * i, Point{1.0, 1.0} * i)));
    job.items = {MakeSieve(60, 60), MakeSieve(1, 6000), nested};
    job.kinds = {Sheet(14000, 7000)};
    EXPECT_EQ(CountPlaced(SolveInSteps(job, 5)), 3);
}

TEST(ZORNestSolverHolesTest, TheLargestHolesStayOpen)
{
    Job job;
    job.items = {MakeSieve(20, 20), MakeItem(Rectangle(19, 19))};
    job.items[0].contours[0] = MakeContour(Rectangle(41, 61));
    job.items[0].contours.push_back(MakeContour(Rectangle(39, 18, {1, 42})));
    std::string reason;
    const ItemType type = PrepareItem(job.items[0], job, reason);
    EXPECT_LE(type.outer.size(), 256U);
    EXPECT_FALSE(IsInside({20, 50}, type.outer));
    EXPECT_TRUE(IsInside({0.5, 0.5}, type.outer));
}

TEST(ZORNestSolverHolesTest, ACancelDuringThePreparationOfHolesEndsIt)
{
    const std::vector<Contour> contours = MakeSieve(50, 50).contours;
    int looks = 0; // of an uninterrupted preparation
    std::string reason;
    EXPECT_FALSE(MakeOuterPolygon(contours, reason, [&looks] { return ++looks < 0; }).empty());
    EXPECT_GT(looks, 2500);
    for (const int most : {0, 1, 2400, 2600, looks - 1}) {
        int left = most;
        EXPECT_TRUE(MakeOuterPolygon(contours, reason, [&left] { return left-- <= 0; }).empty()) << most;
        EXPECT_EQ(reason, "");
    }
}

TEST(ZORNestSolverHolesTest, ALineInAJaggedPartTakesNoHull)
{
    Random random(1);
    const std::vector<Contour> contours{MakeContour(RandomStar(random, 30000, 100)),
                                        MakeContour({{1, 1}, {5, 5}})};
    std::string reason;
    OutlineLoss loss = OutlineLoss::Hull;
    EXPECT_EQ(MakeOuterPolygon(contours, reason, NeverInterrupted, &loss).at(0).size(), 30000U);
    EXPECT_EQ(loss, OutlineLoss::None);
}

} // namespace ZORNestSolver::SolverShapes
