// Tests of ZORMathBoundingBox.

#include "support/Printers.h"

#include <ZORMathematics/ZORMathBoundingBox.h>

#include <gtest/gtest.h>

#include <limits>

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kLargest = std::numeric_limits<double>::max();

TEST(ZORMathBoundingBoxTest, StartsEmptyAtTheOrigin)
{
    const ZORMathBoundingBox box;
    EXPECT_TRUE(box.IsEmpty());
    EXPECT_EQ(ZORMathPoint(), box.GetLowerPoint());
    EXPECT_EQ(ZORMathPoint(), box.GetUpperPoint());
    EXPECT_EQ(ZORMathPoint(), box.GetCenter());
    EXPECT_EQ(0, box.GetDiagonal());
}

TEST(ZORMathBoundingBoxTest, FirstPointIsTheBoxWithoutTheOrigin)
{
    ZORMathBoundingBox box;
    box.Add(ZORMathPoint(5, 6, 7));
    EXPECT_FALSE(box.IsEmpty());
    EXPECT_EQ(ZORMathPoint(5, 6, 7), box.GetLowerPoint());
    EXPECT_EQ(ZORMathPoint(5, 6, 7), box.GetUpperPoint());
}

TEST(ZORMathBoundingBoxTest, GrowsInEveryDirection)
{
    ZORMathBoundingBox box;
    for (const ZORMathPoint& point : {ZORMathPoint(1, 1, 1), ZORMathPoint(-2, 0, 3), ZORMathPoint(0, 4, -5)})
        box.Add(point);
    EXPECT_EQ(ZORMathPoint(-2, 0, -5), box.GetLowerPoint());
    EXPECT_EQ(ZORMathPoint(1, 4, 3), box.GetUpperPoint());
    EXPECT_EQ(ZORMathPoint(-0.5, 2, -1), box.GetCenter());
    EXPECT_NEAR(std::sqrt(9 + 16 + 64), box.GetDiagonal(), 1e-14);
}

TEST(ZORMathBoundingBoxTest, CornersMayComeInAnyOrder)
{
    const ZORMathBoundingBox box({1, -1, 2}, {-1, 1, -2});
    EXPECT_EQ(ZORMathBoundingBox({-1, -1, -2}, {1, 1, 2}), box);
}

TEST(ZORMathBoundingBoxTest, PointsThatAreNotFiniteAreIgnored)
{
    ZORMathBoundingBox box;
    box.Add(ZORMathPoint(std::numeric_limits<double>::quiet_NaN(), 0, 0));
    box.Add(ZORMathPoint(0, kInfinity, 0));
    EXPECT_TRUE(box.IsEmpty());
    box.Add(ZORMathPoint(1, 1, 1));
    box.Add(ZORMathPoint(0, 0, -kInfinity));
    EXPECT_EQ(ZORMathBoundingBox({1, 1, 1}, {1, 1, 1}), box);
}

TEST(ZORMathBoundingBoxTest, BoxesJoinAndAnEmptyOneAddsNothing)
{
    ZORMathBoundingBox box({0, 0, 0}, {1, 1, 1});
    box.Add(ZORMathBoundingBox());
    EXPECT_EQ(ZORMathBoundingBox({0, 0, 0}, {1, 1, 1}), box);
    box.Add(ZORMathBoundingBox({-1, 0.5, 0.5}, {0, 2, 0.6}));
    EXPECT_EQ(ZORMathBoundingBox({-1, 0, 0}, {1, 2, 1}), box);
}

TEST(ZORMathBoundingBoxTest, TraceShowsBothCorners)
{
    QByteArray text;
    ZorTraceAppend(text, ZORMathBoundingBox({0, 0, 0}, {1, 2.5, 3}));
    EXPECT_EQ("[(0, 0, 0), (1, 2.5, 3)]", text.toStdString());
}

TEST(ZORMathBoundingBoxTest, ExtremeCoordinatesDoNotOverflow)
{
    const ZORMathBoundingBox box({-kLargest, -kLargest, 1e-320}, {kLargest, kLargest, 1e-320});
    EXPECT_TRUE(box.GetCenter().IsFinite());
    EXPECT_EQ(ZORMathPoint(0, 0, 1e-320), box.GetCenter());
    EXPECT_EQ(kInfinity, box.GetDiagonal());
    EXPECT_DOUBLE_EQ(3e300, ZORMathBoundingBox({0, 0, 0}, {1e300, 2e300, 2e300}).GetDiagonal());
}

} // namespace
