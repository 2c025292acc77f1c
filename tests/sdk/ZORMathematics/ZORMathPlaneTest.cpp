// Tests of ZORMathPlane.

#include "support/Printers.h"

#include <ZORMathematics/ZORMathPlane.h>

#include <gtest/gtest.h>

namespace {

TEST(ZORMathPlaneTest, StartsAsTheXYPlane)
{
    EXPECT_EQ(ZORMathPoint(3, -4, 0), ZORMathPlane().Evaluate(3, -4));
}

TEST(ZORMathPlaneTest, EvaluatesInItsOwnFrame)
{
    ZORMathPlane plane;
    plane.SetOrigin({1, 2, 3});
    plane.SetDirections({0, 2, 0}, {0, 0, -1});
    EXPECT_EQ(ZORMathPoint(1, 2, 3), plane.Evaluate(0, 0));
    EXPECT_EQ(ZORMathPoint(1, 12, -1), plane.Evaluate(5, 4));
    EXPECT_EQ(ZORMathVector(0, 2, 0), plane.GetFirstDirection());
    EXPECT_EQ(ZORMathVector(0, 0, -1), plane.GetSecondDirection());
    EXPECT_EQ(ZORMathPoint(1, 2, 3), plane.GetOrigin());
}

TEST(ZORMathPlaneTest, DirectionsStayAsTheyAre)
{
    ZORMathPlane plane;
    plane.SetDirections({1, 1, 0}, {0, 0, 0});
    EXPECT_EQ(ZORMathPoint(2, 2, 0), plane.Evaluate(2, 99));
}

TEST(ZORMathPlaneTest, TraceShowsOriginAndDirections)
{
    QByteArray text;
    ZorTraceAppend(text, ZORMathPlane());
    EXPECT_EQ("[(0, 0, 0), (1, 0, 0), (0, 1, 0)]", text.toStdString());
}

} // namespace
