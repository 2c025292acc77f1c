#include "sdk/ZORNesting/solver/SolverShapes.h"

#include <ZORNesting/solver/geometry/ZORNestSolverOffset.h>
#include <ZORNesting/solver/geometry/ZORNestSolverPoles.h>
#include <ZORNesting/solver/geometry/ZORNestSolverSimplify.h>

#include <gtest/gtest.h>

#include <numbers>

namespace ZORNestSolver::SolverShapes {
namespace {

bool ContainsAll(const Polygon& outer, const Polygon& inner, double tolerance)
{
    for (const Ring& ring : inner)
        for (const Point& p : ring)
            if (!IsInside(p, outer) && GetDistanceToBoundary(p, outer) > tolerance)
                return false;
    return true;
}

} // namespace

TEST(ZORNestSolverGeometryTest, QuarterTurnsAreExact)
{
    const Transform transform({false, NormalizeAngle(3 * std::numbers::pi / 2), {1, 2}});
    EXPECT_EQ(transform.Apply(Point{3, 5}), (Point{6, -1}));
}

TEST(ZORNestSolverGeometryTest, APoseMirrorsThenTurnsThenMoves)
{
    const Transform transform({true, std::numbers::pi / 2, {10, 20}});
    EXPECT_EQ(transform.Apply(Point{3, 5}), (Point{5, 17}));
}

TEST(ZORNestSolverGeometryTest, AMirroredPolygonKeepsItsOrientation)
{
    const Polygon polygon{Rectangle(4, 3), Reversed(Rectangle(1, 1, {1, 1}))};
    EXPECT_NEAR(GetArea(Transform({true, 0.3, {}}).Apply(polygon)), 11, 1e-12);
}

TEST(ZORNestSolverGeometryTest, APointInAHoleIsOutside)
{
    const Polygon polygon{Rectangle(4, 3), Reversed(Rectangle(1, 1, {1, 1}))};
    EXPECT_TRUE(IsInside({0.5, 0.5}, polygon));
    EXPECT_FALSE(IsInside({1.5, 1.5}, polygon));
}

TEST(ZORNestSolverGeometryTest, ABowTieIsNotSimple)
{
    EXPECT_FALSE(IsSimple({{{0, 0}, {2, 2}, {2, 0}, {0, 2}}}));
    EXPECT_TRUE(IsSimple({Rectangle(2, 2)}));
}

TEST(ZORNestSolverGeometryTest, TheHullOfAStarHoldsEveryPoint)
{
    Random random(3);
    for (int i = 0; i < 100; ++i) {
        const Polygon star{RandomStar(random, 30, 10)};
        EXPECT_TRUE(ContainsAll({GetConvexHull(star)}, star, 1e-12));
    }
}

TEST(ZORNestSolverOffsetTest, AGrownSquareHasRoundCorners)
{
    const double exact = 100 + 40 + std::numbers::pi;
    const double area = GetArea(GrowPolygon({Rectangle(10, 10)}, 1));
    EXPECT_GT(area, exact);
    EXPECT_LT(area, exact + 0.03);
}

TEST(ZORNestSolverOffsetTest, AGrownPolygonKeepsItsDistanceEverywhere)
{
    Random random(5);
    for (int i = 0; i < 50; ++i) {
        const Polygon star{RandomStar(random, 20, 10)};
        const Polygon grown = GrowPolygon(star, 0.7);
        for (const Ring& ring : grown)
            for (size_t k = 0; k < ring.size(); ++k) {
                const Point middle = (ring[k] + ring[(k + 1) % ring.size()]) * 0.5;
                EXPECT_GE(GetDistanceToBoundary(middle, star), 0.7 - 1e-9);
            }
        EXPECT_TRUE(ContainsAll(grown, star, 0));
    }
}

TEST(ZORNestSolverOffsetTest, AHoleSmallerThanTheGrowthVanishes)
{
    const Polygon polygon{Rectangle(10, 10), Reversed(Rectangle(1, 1, {4, 4}))};
    EXPECT_EQ(GrowPolygon(polygon, 0.6).size(), 1U);
    EXPECT_EQ(GrowPolygon(polygon, 0.4).size(), 2U);
}

TEST(ZORNestSolverSimplifyTest, AreaIsOnlyAdded)
{
    Random random(7);
    for (int i = 0; i < 50; ++i) {
        const Polygon star{RandomStar(random, 60, 10)};
        const Polygon simple = SimplifyOutwards(star, 0.01);
        EXPECT_LE(simple[0].size(), star[0].size());
        EXPECT_TRUE(IsSimple(simple));
        EXPECT_TRUE(ContainsAll(simple, star, 1e-9));
        EXPECT_LE(GetArea(simple), GetArea(star) * 1.01 * (1 + 1e-12));
    }
}

TEST(ZORNestSolverPolesTest, TheFirstPoleOfARectangleSpansItsHeight)
{
    const auto poles = FindPoles({Rectangle(10, 4)});
    EXPECT_NEAR(poles.front().radius, 2, 0.02);
}

TEST(ZORNestSolverPolesTest, PolesLieInsideAndApart)
{
    Random random(9);
    for (int i = 0; i < 30; ++i) {
        const Polygon star{RandomStar(random, 15, 10)};
        const auto poles = FindPoles(star);
        for (size_t a = 0; a < poles.size(); ++a) {
            EXPECT_TRUE(IsInside(poles[a].centre, star));
            EXPECT_LE(poles[a].radius, GetDistanceToBoundary(poles[a].centre, star) + 1e-9);
            for (size_t b = 0; b < a; ++b)
                EXPECT_GE(Length(poles[a].centre - poles[b].centre),
                          poles[a].radius + poles[b].radius - 1e-9);
        }
    }
}

TEST(ZORNestSolverOutlineTest, AnArcThatBulgesOutwardsIsSurroundedAndAHoleIsNotFilled)
{
    std::string reason;
    const Polygon ring = MakeOuterPolygon({RoundContour({0, 0}, 100), RoundContour({0, 0}, 40)}, reason);
    ASSERT_EQ(ring.size(), 2U);
    EXPECT_EQ(reason, "");
    for (const Point& p : ring[0])
        EXPECT_GE(Length(p), 100 - 1e-9);
    for (const Point& p : ring[1])
        EXPECT_LE(Length(p), 40 + 1e-9);
    const double exact = std::numbers::pi * (100 * 100 - 40 * 40);
    EXPECT_GT(GetArea(ring), exact);
    EXPECT_LT(GetArea(ring), exact * 1.002);
}

TEST(ZORNestSolverOutlineTest, OutlinesThatCannotBeNestedHaveAReason)
{
    std::string reason;
    EXPECT_TRUE(MakeOuterPolygon({}, reason).empty());
    EXPECT_EQ(reason, "outline encloses no area");
    EXPECT_TRUE(MakeOuterPolygon({MakeContour({{0, 0}, {1, 0}, {2, 0}})}, reason).empty());
    EXPECT_EQ(reason, "outline encloses no area");
    EXPECT_TRUE(MakeOuterPolygon({MakeContour({{0, 0}, {NAN, 0}, {2, 3}})}, reason).empty());
    EXPECT_EQ(reason, "outline has coordinates that are no numbers");
    const Contour square = MakeContour(Rectangle(10, 10));
    EXPECT_TRUE(MakeOuterPolygon({square, square}, reason).empty()); // the hole takes all of it
    EXPECT_EQ(reason, "outline encloses no area");
}

TEST(ZORNestSolverOutlineTest, OutlinesReachAsFarAsTheLargestCoordinate)
{
    std::string reason;
    EXPECT_FALSE(MakeOuterPolygon({MakeContour(Rectangle(1e9, 1e9))}, reason).empty());
    EXPECT_EQ(reason, "");
    for (const Ring& ring : {Rectangle(1.001e9, 1), Rectangle(1, 1, {0, -1.1e9}), Rectangle(1e60, 1e60),
                             Rectangle(1e300, 1e300, {-1e300, 0})}) {
        EXPECT_TRUE(MakeOuterPolygon({MakeContour(ring)}, reason).empty());
        EXPECT_EQ(reason, "outline reaches beyond 1000 km");
        EXPECT_TRUE(MakeOuterHull({MakeContour(ring)}, reason).empty());
        EXPECT_EQ(reason, "outline reaches beyond 1000 km");
    }
}

TEST(ZORNestSolverOutlineTest, AnOutlineOfVeryManyCrossingsBecomesItsHull)
{
    constexpr int kCorners = 10001;
    Ring star;
    for (int i = 0; i < kCorners; ++i) {
        const double angle = 2 * std::numbers::pi * (i * 5000.0 / kCorners);
        star.push_back(Point{std::cos(angle), std::sin(angle)} * 100);
    }
    std::string reason;
    OutlineLoss loss = OutlineLoss::None;
    const Polygon polygon = MakeOuterPolygon({MakeContour(star)}, reason, NeverInterrupted, &loss);
    EXPECT_EQ(loss, OutlineLoss::Hull);
    EXPECT_NEAR(GetEnclosedArea(MakeContour(star)), std::numbers::pi * 10000, 1);
    EXPECT_EQ(reason, "");
    ASSERT_EQ(polygon.size(), 1U);
    EXPECT_NEAR(GetArea(polygon), std::numbers::pi * 10000, 1);
}

TEST(ZORNestSolverOutlineTest, AnInterruptedOutlineHasNoReason)
{
    std::string reason;
    EXPECT_TRUE(MakeOuterPolygon({MakeContour(Rectangle(10, 10))}, reason, [] { return true; }).empty());
    EXPECT_EQ(reason, "");
}

TEST(ZORNestSolverOutlineTest, AHoleOutsideOfTheOutlineIsRefused)
{
    std::string reason;
    const Contour outline = MakeContour(Rectangle(10, 10));
    EXPECT_TRUE(MakeOuterPolygon({outline, MakeContour(Rectangle(2, 2, {20, 0}))}, reason).empty());
    EXPECT_EQ(reason, "a hole lies outside of the outline");
    EXPECT_TRUE(
        MakeOuterPolygon({outline, MakeContour(Rectangle(2, 2, {10, 0}))}, reason).empty()); // touches
    EXPECT_EQ(reason, "a hole lies outside of the outline");
}

TEST(ZORNestSolverOutlineTest, AHoleThatCrossesTheOutlineBelongsToThePart)
{
    std::string reason;
    const Polygon polygon =
        MakeOuterPolygon({MakeContour(Rectangle(10, 10)), MakeContour(Rectangle(4, 2, {8, 4})),
                          MakeContour(Reversed(Rectangle(3, 3, {1, 1})))},
                         reason);
    EXPECT_EQ(reason, "");
    ASSERT_EQ(polygon.size(), 2U);
    EXPECT_NEAR(GetArea(polygon), 100 + 4 - 9, 1e-4);
    EXPECT_TRUE(IsInside({9, 5}, polygon));
    EXPECT_TRUE(IsInside({11.9, 5}, polygon));
    EXPECT_FALSE(IsInside({2, 2}, polygon));
}

TEST(ZORNestSolverOutlineTest, WhereHolesCrossOrHoldEachOtherIsMaterial)
{
    std::string reason;
    const Polygon polygon =
        MakeOuterPolygon({MakeContour(Rectangle(20, 20)), MakeContour(Rectangle(6, 6, {2, 2})),
                          MakeContour(Rectangle(2, 2, {3, 3})), MakeContour(Rectangle(6, 6, {5, 5}))},
                         reason);
    EXPECT_EQ(reason, "");
    EXPECT_NEAR(GetArea(polygon), 400 - 36 - 36 + 2 * 9 + 4, 1e-4);
    EXPECT_TRUE(IsInside({4, 4}, polygon));
    EXPECT_TRUE(IsInside({7, 7}, polygon));
    EXPECT_FALSE(IsInside({2.5, 7}, polygon));
    EXPECT_FALSE(IsInside({10, 10}, polygon));
}

TEST(ZORNestSolverOutlineTest, AHoleThatCutsThePartInTwoLeavesBothPieces)
{
    std::string reason;
    const Polygon polygon =
        MakeOuterPolygon({MakeContour(Rectangle(20, 10)), MakeContour(Rectangle(2, 10, {9, 0}))}, reason);
    EXPECT_EQ(reason, "");
    EXPECT_NEAR(GetArea(polygon), 180, 1e-3); // the outline is drawn across the gap, where spurs hold it
    EXPECT_TRUE(IsInside({4, 5}, polygon));
    EXPECT_TRUE(IsInside({16, 5}, polygon));
    EXPECT_FALSE(IsInside({10, 5}, polygon));
}

TEST(ZORNestSolverOutlineTest, AnOutlineThatCrossesItselfIsCleaned)
{
    Ring pentagram;
    for (int i = 0; i < 5; ++i)
        pentagram.push_back(
            {10 * std::cos(0.8 * std::numbers::pi * i), 10 * std::sin(0.8 * std::numbers::pi * i)});
    std::string reason;
    const Polygon polygon = MakeOuterPolygon({MakeContour(pentagram)}, reason);
    EXPECT_EQ(reason, "");
    ASSERT_EQ(polygon.size(), 1U);
    EXPECT_EQ(polygon[0].size(), 10U);
    EXPECT_TRUE(IsSimple(polygon));
    EXPECT_TRUE(IsInside({0, 0}, polygon));
}

} // namespace ZORNestSolver::SolverShapes
