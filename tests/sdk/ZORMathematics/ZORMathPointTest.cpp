// Tests of ZORMathPoint.

#include "support/Printers.h"

#include <ZORMathematics/ZORMathPoint.h>

#include <gtest/gtest.h>

namespace {

TEST(ZORMathPointTest, TextHasEveryCoordinateInTheGivenForm)
{
    EXPECT_EQ(QString("(1.500, -2.000, 0.000)"), ZORMathPoint(1.5, -2, 0).ToString('f', 3));
}

TEST(ZORMathPointTest, ScalingIsAboutTheOrigin)
{
    ZORMathPoint point(1, -2, 3);
    point *= 25.4;
    EXPECT_TRUE(IsNear({25.4, -50.8, 76.2}, point));
}

TEST(ZORMathPointTest, DifferenceAndSumGoThroughVectors)
{
    const ZORMathPoint a(1, 2, 3);
    const ZORMathPoint b(4, 6, 3);
    EXPECT_EQ(5, a.DistanceTo(b));
    EXPECT_EQ(b, a + (b - a));
}

} // namespace
