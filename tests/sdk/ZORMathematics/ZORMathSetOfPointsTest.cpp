// Tests of ZORMathSetOfPoints.

#include "support/Printers.h"

#include <ZORMathematics/ZORMathSetOfPoints.h>
#include <ZORSystem/ZORSysTraceArguments.h>

#include <gtest/gtest.h>

namespace {

TEST(ZORMathSetOfPointsTest, IsAListOfPoints)
{
    ZORMathSetOfPoints points = {ZORMathPoint(1, 0, 0)};
    points.append(ZORMathPoint(2, 0, 0));
    EXPECT_EQ(2, points.size());
    EXPECT_EQ(ZORMathPoint(2, 0, 0), points.at(1));
    const QList<ZORMathPoint> list = points;
    EXPECT_EQ(list, ZORMathSetOfPoints(list));
    EXPECT_TRUE(ZORMathSetOfPoints().isEmpty());
}

TEST(ZORMathSetOfPointsTest, TraceShowsTheNumberOfPoints)
{
    QByteArray text;
    ZorTraceAppend(text, ZORMathSetOfPoints({ZORMathPoint(), ZORMathPoint()}));
    EXPECT_EQ("[2]", text.toStdString());
}

TEST(ZORMathSetOfPointsTest, AListOfPointsBecomesASet)
{
    const QList<ZORMathPoint> list = {{1, 2, 3}};
    const ZORMathSetOfPoints points = list;
    EXPECT_EQ(list, points);
    EXPECT_EQ(list.constData(), points.constData()) << "the points are shared, not copied";
    const QList<ZORMathPoint>& back = points;
    EXPECT_EQ(list, back);
}

} // namespace
