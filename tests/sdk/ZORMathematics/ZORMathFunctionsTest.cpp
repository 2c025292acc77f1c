// Tests of the functions of points and vectors.

#include <ZORMathematics/ZORMathFunctions.h>

#include <gtest/gtest.h>

#include <limits>
#include <numbers>

namespace {

using std::numbers::pi;

TEST(ZORMathFunctionsTest, OnlyTheZeroVectorIsZero)
{
    EXPECT_TRUE(IsZero({}));
    EXPECT_TRUE(IsZero({0, -0.0, 0}));
    EXPECT_FALSE(IsZero({0, 0, std::numeric_limits<double>::denorm_min()}));
    EXPECT_FALSE(IsZero({std::numeric_limits<double>::quiet_NaN(), 0, 0}));
}

TEST(ZORMathFunctionsTest, AnglesAreAccurateNearZeroAndPi)
{
    EXPECT_DOUBLE_EQ(pi / 2, AngleBetween({2, 0, 0}, {0, 0, 3}));
    EXPECT_DOUBLE_EQ(1e-12, AngleBetween({1, 0, 0}, {1, 1e-12, 0}));
    EXPECT_DOUBLE_EQ(pi, AngleBetween({1, 2, 3}, {-1, -2, -3}));
    EXPECT_DOUBLE_EQ(pi - 1e-9, AngleBetween({1, 0, 0}, {-1, 1e-9, 0}));
    EXPECT_EQ(0, AngleBetween({}, {1, 0, 0}));
}

TEST(ZORMathFunctionsTest, PartsOfADistanceStartAtTheFirstPoint)
{
    const ZORMathPoint a(1, 2, 3);
    const ZORMathPoint b(3, 2, -1);
    EXPECT_EQ(a, PointBetween(a, b, 0));
    EXPECT_EQ(ZORMathPoint(2, 2, 1), PointBetween(a, b, 0.5));
    EXPECT_EQ(b, PointBetween(a, b, 1));
    EXPECT_EQ(ZORMathPoint(-1, 2, 7), PointBetween(a, b, -1));
}

TEST(ZORMathFunctionsTest, TheLargestCoordinateHasNoSign)
{
    EXPECT_EQ(0, LargestCoordinate({}));
    EXPECT_EQ(7, LargestCoordinate({1, -7, 3}));
    EXPECT_EQ(9, LargestCoordinate({1, -7, 9}));
}

} // namespace
