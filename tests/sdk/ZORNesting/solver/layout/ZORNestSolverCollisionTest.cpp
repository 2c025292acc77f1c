#include "sdk/ZORNesting/solver/SolverShapes.h"

#include <ZORNesting/solver/layout/ZORNestSolverCollision.h>
#include <ZORNesting/solver/proof/ZORNestSolverCheck.h>

#include <gtest/gtest.h>

namespace ZORNestSolver::SolverShapes {
namespace {

Shape ShapeOf(const Polygon& polygon)
{
    return MakeShape(polygon, FindPoles(polygon));
}

bool DoCollide(const Shape& a, const Shape& b, Point offset)
{
    OutlineTest test;
    return DoPolesOverlap(a, b, offset) || test.DoCollide(a, b, offset);
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
            EXPECT_EQ(collide, !AreApart(a, Transform({false, 0, offset}).Apply(b), 0));
            EXPECT_EQ(collide, DoCollide(shapeB, shapeA, Point{} - offset));
            collisions += collide ? 1 : 0;
        }
    }
    EXPECT_GT(collisions, 150);
    EXPECT_LT(collisions, 1350);
}

TEST(ZORNestSolverCollisionTest, PolesOverlapOnlyWhereOutlinesDo)
{
    Random random(13);
    int overlaps = 0;
    for (int i = 0; i < 40; ++i) {
        const Polygon a{RandomStar(random, 9, 10)};
        const Polygon b{RandomStar(random, 12, 6)};
        const Shape shapeA = ShapeOf(a);
        const Shape shapeB = ShapeOf(b);
        for (int k = 0; k < 100; ++k) {
            const Point offset{random.Between(-15, 15), random.Between(-15, 15)};
            if (!DoPolesOverlap(shapeA, shapeB, offset))
                continue;
            ++overlaps;
            EXPECT_FALSE(AreApart(a, Transform({false, 0, offset}).Apply(b), 0));
        }
    }
    EXPECT_GT(overlaps, 400);
}

/// The definition of the loss, in double precision and one pair of poles after the other.
TEST(ZORNestSolverCollisionTest, LossesAreThoseOfAllPairsOfPoles)
{
    Random random(17);
    for (int i = 0; i < 100; ++i) {
        const Shape a = ShapeOf({RandomStar(random, 9, 10)});
        const Shape b = ShapeOf({RandomStar(random, 12, 6)});
        const Point offset{random.Between(-15, 15), random.Between(-15, 15)};
        const double epsilon = 0.01 * std::max(a.diameter, b.diameter);
        double area = 0;
        for (size_t j = 0; j < a.poleCount; ++j) {
            for (size_t k = 0; k < b.poleCount; ++k) {
                const double distance =
                    std::hypot(a.poleX[j] - b.poleX[k] - offset.x, a.poleY[j] - b.poleY[k] - offset.y);
                const double depth = a.poleR[j] + b.poleR[k] - distance;
                const double decayed = depth < epsilon ? epsilon * epsilon / (2 * epsilon - depth) : depth;
                area += std::numbers::pi * decayed * std::min(a.poleR[j], b.poleR[k]);
            }
        }
        const double loss = std::sqrt(area + epsilon * epsilon) * std::sqrt(a.weight * b.weight);
        EXPECT_NEAR(MeasureLoss(a, b, offset), loss, 1e-4 * loss);
    }
}

TEST(ZORNestSolverCollisionTest, ALossIsLeftAtItsBound)
{
    Random random(19);
    for (int i = 0; i < 300; ++i) {
        const Shape a = ShapeOf({RandomStar(random, 9, 10)});
        const Shape b = ShapeOf({RandomStar(random, 12, 6)});
        const Point offset{random.Between(-15, 15), random.Between(-15, 15)};
        const float loss = MeasureLoss(a, b, offset);
        const float bound = loss * static_cast<float>(random.Between(0.1, 1.9));
        const float bounded = MeasureLoss(a, b, offset, bound);
        if (bounded < bound)
            EXPECT_EQ(bounded, loss);
        else
            EXPECT_LE(bounded, loss * 1.0001F);
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
        const float loss = MeasureLoss(square, square, {x, 0});
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

} // namespace ZORNestSolver::SolverShapes
