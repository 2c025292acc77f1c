// Tests of ZORMathPoint.

#include "support/Printers.h"

#include <ZORMathematics/ZORMathPoint.h>

#include <QLocale>

#include <gtest/gtest.h>

#include <limits>

namespace {

TEST(ZORMathPointTest, TextHasEveryCoordinateInTheGivenForm)
{
    EXPECT_EQ(QString("(1.500, -2.000, 0.000)"), ZORMathPoint(1.5, -2, 0).ToString('f', 3));
}

TEST(ZORMathPointTest, TextTakesEveryFormOfNumber)
{
    const ZORMathPoint point(1.0 / 3, -1e20, std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(QString("(0.33, -100000000000000000000.00, nan)"), point.ToString('f', 2));
    EXPECT_EQ(QString("(0.333, -1e+20, nan)"), point.ToString('g', 3));
    EXPECT_EQ(QString("(3.3e-01, -1.0e+20, nan)"), point.ToString('e', 1));
    EXPECT_EQ(QString("(0, 0, 0)"), ZORMathPoint().ToString('f', 0));
}

TEST(ZORMathPointTest, CoordinatesCanBeSetOneByOne)
{
    ZORMathPoint point;
    EXPECT_EQ(ZORMathPoint(0, 0, 0), point);
    point.SetX(1);
    point.SetY(2);
    point.SetZ(3);
    EXPECT_EQ(ZORMathPoint(1, 2, 3), point);
    EXPECT_EQ(ZORMathVector(1, 2, 3), PositionVector(point));
}

TEST(ZORMathPointTest, FiniteMeansEveryCoordinate)
{
    EXPECT_TRUE(ZORMathPoint(1e308, 0, -1e308).IsFinite());
    EXPECT_FALSE(ZORMathPoint(0, std::numeric_limits<double>::infinity(), 0).IsFinite());
    EXPECT_FALSE(ZORMathPoint(0, 0, std::numeric_limits<double>::quiet_NaN()).IsFinite());
}

TEST(ZORMathPointTest, TraceShowsTheCoordinatesInFull)
{
    QByteArray text;
    ZorTraceAppend(text, ZORMathPoint(0.1, -2, 1e300));
    EXPECT_EQ("(0.10000000000000001, -2, 1.0000000000000001e+300)", text.toStdString());
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

TEST(ZORMathPointTest, TextDoesNotDependOnTheLocale)
{
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    EXPECT_EQ(QString("(1234.5, 0.0, 0.0)"), ZORMathPoint(1234.5, 0, 0).ToString('f', 1));
    QLocale::setDefault(before);
}

TEST(ZORMathPointTest, DistanceHoldsForLargeAndSmallCoordinates)
{
    EXPECT_DOUBLE_EQ(5e200, ZORMathPoint(3e200, 0, 0).DistanceTo({0, 4e200, 0}));
    EXPECT_DOUBLE_EQ(5e-200, ZORMathPoint(3e-200, 0, 0).DistanceTo({0, 4e-200, 0}));
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(kInfinity, ZORMathPoint(kInfinity, 0, 0).DistanceTo({}));
}

} // namespace
