// Tests of ZORMathCircle.

#include "support/Printers.h"

#include <ZORMathematics/ZORMathCircle.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>
#include <random>

namespace {

using std::numbers::pi;

const ZORMathCircle kCircle({10, -5, 2}, 4);

TEST(ZORMathCircleTest, KeepsCentreAndRadius)
{
    EXPECT_EQ(ZORMathPoint(10, -5, 2), kCircle.GetCenter());
    EXPECT_EQ(4, kCircle.GetRadius());
    EXPECT_EQ(4, ZORMathCircle({}, -4).GetRadius());
    EXPECT_EQ(0, ZORMathCircle().GetRadius());
}

TEST(ZORMathCircleTest, AngleStartsAtTheDirectionOfXAndRunsCounterClockwise)
{
    const struct
    {
        ZORMathPoint point;
        double angle;
    } cases[] = {{{14, -5, 2}, 0}, {{10, -1, 2}, pi / 2}, {{6, -5, 2}, pi}, {{10, -9, 2}, 3 * pi / 2}};
    for (const auto& [point, angle] : cases) {
        double parameter = -1;
        EXPECT_EQ(0, kCircle.ProjectPoint(point, parameter));
        EXPECT_DOUBLE_EQ(angle, parameter);
        EXPECT_TRUE(IsNear(point, kCircle.Evaluate(angle)));
        EXPECT_DOUBLE_EQ(angle / (2 * pi), kCircle.GetParam(parameter));
    }
}

TEST(ZORMathCircleTest, PointsWithinAMicrometreLieOnTheCircle)
{
    double parameter = 0;
    EXPECT_EQ(ZORMathCircle::OnCircle, kCircle.ProjectPoint({14.0009, -5, 2}, parameter));
    EXPECT_EQ(ZORMathCircle::OnCircle, kCircle.ProjectPoint({14, -5, 2.0009}, parameter));
    EXPECT_EQ(ZORMathCircle::OffCircle, kCircle.ProjectPoint({13.99, -5, 2}, parameter));
    EXPECT_EQ(ZORMathCircle::OffCircle, kCircle.ProjectPoint({14, -5, 2.01}, parameter));
}

TEST(ZORMathCircleTest, APointOffTheCircleStillHasAnAngle)
{
    double parameter = 0;
    EXPECT_EQ(ZORMathCircle::OffCircle, kCircle.ProjectPoint({10, 95, 2}, parameter));
    EXPECT_DOUBLE_EQ(pi / 2, parameter);
}

TEST(ZORMathCircleTest, APointOverTheCentreHasNoAngle)
{
    double parameter = 77;
    EXPECT_EQ(ZORMathCircle::NoDirection, kCircle.ProjectPoint({10, -5, 2}, parameter));
    EXPECT_EQ(ZORMathCircle::NoDirection, kCircle.ProjectPoint({10, -5, 9}, parameter));
    EXPECT_EQ(ZORMathCircle::NoDirection, ZORMathCircle().ProjectPoint({}, parameter));
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(ZORMathCircle::NoDirection, kCircle.ProjectPoint({nan, 0, 0}, parameter));
    EXPECT_EQ(77, parameter);
}

TEST(ZORMathCircleTest, ParametersOfEveryAngleLieWithinOneTurn)
{
    EXPECT_DOUBLE_EQ(0.75, kCircle.GetParam(-pi / 2));
    EXPECT_DOUBLE_EQ(0.25, kCircle.GetParam(5 * pi / 2));
    EXPECT_EQ(0, kCircle.GetParam(-1e-300));
    EXPECT_EQ(0, kCircle.GetParam(std::numeric_limits<double>::infinity()));
    double parameter = 0;
    EXPECT_EQ(0, kCircle.ProjectPoint({14, std::nextafter(-5, -6), 2}, parameter));
    EXPECT_LT(parameter, 2 * pi);
    EXPECT_GE(parameter, 0);
}

TEST(ZORMathCircleTest, EveryPointOfACircleProjectsOnItself)
{
    std::mt19937 random(1);
    std::uniform_real_distribution<double> number(-1000, 1000);
    for (int i = 0; i < 1000; ++i) {
        const ZORMathCircle any({number(random), number(random), number(random)}, number(random));
        const double angle = std::abs(number(random)) / 1000 * 2 * pi;
        double parameter = 0;
        ASSERT_EQ(0, any.ProjectPoint(any.Evaluate(angle), parameter));
        EXPECT_LT(any.Evaluate(angle).DistanceTo(any.Evaluate(parameter)), 1e-9);
    }
}

TEST(ZORMathCircleTest, TraceShowsCentreAndRadius)
{
    QByteArray text;
    ZorTraceAppend(text, kCircle);
    EXPECT_EQ("((10, -5, 2), 4)", text.toStdString());
}

} // namespace
