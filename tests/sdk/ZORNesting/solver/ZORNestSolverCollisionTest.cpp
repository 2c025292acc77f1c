#include "SolverShapes.h"
#include "ZORNestSolverCheck.h"
#include "ZORNestSolverPairTable.h"

#include <gtest/gtest.h>

using namespace SolverShapes;

namespace {

Shape ShapeOf(const Polygon& polygon)
{
    return MakeShape(polygon, FindPoles(polygon));
}

bool DoCollide(const Shape& a, const Shape& b, Point offset)
{
    OutlineTest test;
    return MeasurePoles(a, b, offset).certain || test.DoCollide(a, b, offset);
}

} // namespace

TEST(ZORNestSolverCollisionTest, RandomStarsCollideAsTrueDistancesSay)
{
    Random random(11);
    int collisions = 0;
    for (int i = 0; i < 30; ++i) {
        const Polygon a{RandomStar(random, 9, 10)};
        const Polygon b{RandomStar(random, 12, 6)};
        const Shape shapeA = ShapeOf(a);
        const Shape shapeB = ShapeOf(b);
        for (int k = 0; k < 50; ++k) {
            const Point offset{random.Between(-15, 15), random.Between(-15, 15)};
            const bool collide = DoCollide(shapeA, shapeB, offset);
            EXPECT_EQ(collide, !AreApart(a, Transform({false, 0, offset}).Apply(b), 0, 1e-12));
            EXPECT_EQ(collide, DoCollide(shapeB, shapeA, Point{} - offset));
            collisions += collide ? 1 : 0;
        }
    }
    EXPECT_GT(collisions, 150);
    EXPECT_LT(collisions, 1350);
}

TEST(ZORNestSolverCollisionTest, PairTablesAgreeWithTheOutlines)
{
    Random random(13);
    for (int i = 0; i < 5; ++i) {
        const Shape a = ShapeOf({RandomStar(random, 9, 10)});
        const Shape b = ShapeOf({RandomStar(random, 12, 6)});
        PairTables tables(2);
        int settled = 0;
        for (int k = 0; k < 60000; ++k) {
            const Point offset{random.Between(a.box.min.x - b.box.max.x, a.box.max.x - b.box.min.x),
                               random.Between(a.box.min.y - b.box.max.y, a.box.max.y - b.box.min.y)};
            const bool swapped = k % 2 == 0;
            const auto verdict =
                swapped ? tables.Look(1, b, 0, a, Point{} - offset) : tables.Look(0, a, 1, b, offset);
            if (verdict.answer == PairTables::Answer::Apart) {
                EXPECT_FALSE(DoCollide(a, b, offset));
            } else if (verdict.answer == PairTables::Answer::Colliding) {
                EXPECT_TRUE(DoCollide(a, b, offset));
            }
            settled += verdict.answer == PairTables::Answer::Unknown ? 0 : 1;
        }
        EXPECT_GT(settled, 40000);
    }
}

TEST(ZORNestSolverCollisionTest, APartInAHoleDoesNotCollide)
{
    const Shape frame = ShapeOf({Rectangle(10, 10, {-5, -5}), Reversed(Rectangle(8, 8, {-4, -4}))});
    const Shape part = ShapeOf({Rectangle(2, 2, {-1, -1})});
    EXPECT_FALSE(DoCollide(frame, part, {1, 1}));
    EXPECT_FALSE(DoCollide(part, frame, {-1, -1}));
    EXPECT_TRUE(DoCollide(frame, part, {4, 0}));
}

TEST(ZORNestSolverCollisionTest, APartInsideOfAnotherCollides)
{
    const Shape large = ShapeOf({Rectangle(10, 1, {-5, -0.5})});
    const Shape small = ShapeOf({Rectangle(0.01, 0.01, {-0.005, -0.005})});
    EXPECT_TRUE(DoCollide(large, small, {4.98, 0.48}));
    EXPECT_TRUE(DoCollide(small, large, {-4.98, -0.48}));
}

TEST(ZORNestSolverCollisionTest, WholeEdgesMayTouch)
{
    const Shape square = ShapeOf({Rectangle(2, 2, {-1, -1})});
    EXPECT_FALSE(DoCollide(square, square, {2, 0}));
    EXPECT_FALSE(DoCollide(square, square, {2, 2}));
    EXPECT_TRUE(DoCollide(square, square, {1.999, 0}));
    EXPECT_TRUE(DoCollide(square, square, {0, 0}));
}

TEST(ZORNestSolverCollisionTest, DeeperOverlapLosesMore)
{
    const Shape square = ShapeOf({Rectangle(2, 2, {-1, -1})});
    float last = 0;
    for (const double x : {1.9, 1.5, 1.0, 0.5, 0.0}) {
        const float loss = MeasurePoles(square, square, {x, 0}).loss;
        EXPECT_GT(loss, last);
        last = loss;
    }
}

TEST(ZORNestSolverCheckTest, OverlapsAreMeasuredByTheirDepth)
{
    const Polygon square{Rectangle(100, 100)};
    const auto at = [&](double x, double y) { return Transform({false, 0, {x, y}}).Apply(square); };
    EXPECT_TRUE(AreApart(square, at(100, 0), 0));
    EXPECT_TRUE(AreApart(square, at(100 - 0.9e-6, 0), 0));
    EXPECT_FALSE(AreApart(square, at(100 - 1.5e-6, 0), 0));
    EXPECT_FALSE(AreApart(square, square, 0));
    EXPECT_FALSE(AreApart(square, at(50, 0), 0));
    EXPECT_TRUE(AreApart(square, at(102, 0), 2));
    EXPECT_FALSE(AreApart(square, at(101.9, 0), 2));
}

TEST(ZORNestSolverCheckTest, AThinOverlapOfACornerIsFound)
{
    const Polygon square{Rectangle(10, 10)};
    const Polygon needle{{{9.9, 5}, {20, 4.99}, {20, 5.01}}};
    EXPECT_FALSE(AreApart(square, needle, 0));
    EXPECT_FALSE(AreApart(needle, square, 0));
}

TEST(ZORNestSolverCheckTest, APartMayLieInAHoleWithItsSeparation)
{
    const Polygon frame{Rectangle(10, 10), Reversed(Rectangle(8, 8, {1, 1}))};
    EXPECT_TRUE(AreApart(frame, {Rectangle(6, 6, {2, 2})}, 1));
    EXPECT_FALSE(AreApart(frame, {Rectangle(6, 6, {2, 2})}, 1.1));
}
