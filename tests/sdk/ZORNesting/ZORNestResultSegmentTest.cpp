// Tests of ZORNestResultSegment.

#include "support/Printers.h"

#include <ZORNesting/ZORNestResultSegment.h>
#include <ZORSystem/ZORSysException.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>

namespace {

using Segment = ZORNestResultSegment;
using std::numbers::pi;

template<class Function>
std::string MessageOf(Function function)
{
    try {
        function();
    } catch (const ZORSysException& exception) {
        return exception.GetMessage().toStdString();
    }
    return "no exception";
}

Segment Spline()
{
    return Segment::CreateSpline(
        {Segment::CreateLine({0, 0, 0}, {10, 0, 0}),
         Segment::CreateArc(Segment::ArcCounterClockwise, {10, 0, 0}, {15, 5, 0}, {10, 5, 0}),
         Segment::CreateArc(Segment::ArcClockwise, {15, 5, 0}, {20, 10, 0}, {20, 5, 0})});
}

double LengthOf(const ZORMathSetOfPoints& points)
{
    double length = 0;
    for (qsizetype i = 1; i < points.size(); ++i)
        length += points[i - 1].DistanceTo(points[i]);
    return length;
}

TEST(ZORNestResultSegmentTest, StartsAsALineWithoutLook)
{
    const Segment segment;
    EXPECT_EQ(Segment::Line, segment.GetType());
    EXPECT_EQ(ZORMathPoint(), segment.GetStartPoint());
    EXPECT_EQ(Segment::Automatic, segment.GetLayer());
    EXPECT_EQ(0, segment.GetLineStyle());
    EXPECT_FALSE(segment.GetColor().isValid());
}

TEST(ZORNestResultSegmentTest, LineHasItsEndsAndNoArc)
{
    const Segment line = Segment::CreateLine({1, 2, 3}, {4, 5, 6});
    EXPECT_EQ(ZORMathPoint(1, 2, 3), line.GetStartPoint(-1));
    EXPECT_EQ(ZORMathPoint(4, 5, 6), line.GetEndPoint(-1));
    EXPECT_EQ(ZORMathPoint(), line.GetArcCenter(-1));
    EXPECT_EQ(ZORMathCircle(), line.GetArcCircle(-1));
    EXPECT_EQ(ZORMathSetOfPoints({{1, 2, 3}, {4, 5, 6}}), line.GetPoints(0.001));
}

TEST(ZORNestResultSegmentTest, TypesHaveTheNumbersOfFiles)
{
    EXPECT_EQ(0, Segment::Line);
    EXPECT_EQ(1, Segment::ArcClockwise);
    EXPECT_EQ(-1, Segment::ArcCounterClockwise);
    EXPECT_EQ(5, Segment::Spline);
    EXPECT_EQ(30, Segment::Text);
    EXPECT_EQ(12, Segment::AutoBridge);
    EXPECT_EQ(14, Segment::Grain);
}

TEST(ZORNestResultSegmentTest, ArcRunsInItsDirection)
{
    const ZORMathPoint right{5, 0, 0};
    const ZORMathPoint top{0, 5, 0};
    const double quarter = 5 * pi / 2;
    const auto length = [&](Segment::SegmentType type) {
        return LengthOf(Segment::CreateArc(type, right, top, {}).GetPoints(1e-6));
    };
    EXPECT_NEAR(quarter, length(Segment::ArcCounterClockwise), 1e-4);
    EXPECT_NEAR(3 * quarter, length(Segment::ArcClockwise), 1e-4);
    const Segment arc = Segment::CreateArc(Segment::ArcClockwise, right, top, {});
    EXPECT_EQ(5, arc.GetArcCircle(-1).GetRadius());
    EXPECT_EQ(ZORMathPoint(), arc.GetArcCircle(-1).GetCenter());
    EXPECT_EQ(right, arc.GetPoints(0.1).constFirst());
    EXPECT_EQ(top, arc.GetPoints(0.1).constLast());
}

TEST(ZORNestResultSegmentTest, ArcWithEqualEndsIsAFullCircle)
{
    for (const auto type : {Segment::ArcClockwise, Segment::ArcCounterClockwise}) {
        const Segment circle = Segment::CreateCircle(type, {15, 5, 0}, {10, 5, 0});
        EXPECT_NEAR(10 * pi, LengthOf(circle.GetPoints(1e-6)), 1e-4);
        // Ends that differ by rounding only.
        const Segment rounded = Segment::CreateArc(type, {15, 5, 0}, {15, 5 + 1e-13, 0}, {10, 5, 0});
        EXPECT_NEAR(10 * pi, LengthOf(rounded.GetPoints(1e-6)), 1e-4);
    }
}

TEST(ZORNestResultSegmentTest, SampledArcsKeepTheTolerance)
{
    for (const double radius : {0.01, 1.0, 250.0, 5000.0}) {
        const Segment arc =
            Segment::CreateArc(Segment::ArcCounterClockwise, {radius, 0, 0}, {0, -radius, 0}, {});
        for (const double tolerance : {1.0, 0.1, 0.001}) {
            const ZORMathSetOfPoints points = arc.GetPoints(tolerance);
            for (qsizetype i = 1; i < points.size(); ++i) {
                const ZORMathPoint middle = points[i - 1] + 0.5 * (points[i] - points[i - 1]);
                EXPECT_NEAR(radius, PositionVector(points[i]).GetLength(), 1e-9 * radius);
                EXPECT_LE(radius - PositionVector(middle).GetLength(), tolerance * 1.000001);
            }
        }
    }
}

TEST(ZORNestResultSegmentTest, SamplingIsBoundedForEveryToleranceAndRadius)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    for (const double tolerance : {0.0, -1.0, nan, 1e-300, std::numeric_limits<double>::infinity()}) {
        for (const double radius : {0.0, 1e-300, 1.0, 1e9, 1.7e308}) {
            const Segment circle =
                Segment::CreateCircle(Segment::ArcClockwise, {radius, 0, 0}, {-radius, 0, 0});
            const ZORMathSetOfPoints points = circle.GetPoints(tolerance);
            EXPECT_LE(points.size(), 16385);
            EXPECT_EQ(points.first(), points.last());
            for (const ZORMathPoint& point : points)
                ASSERT_TRUE(point.IsFinite());
        }
    }
}

TEST(ZORNestResultSegmentTest, EndOffTheCircleIsReachedStraight)
{
    const Segment arc = Segment::CreateArc(Segment::ArcCounterClockwise, {5, 0, 0}, {0, 8, 0}, {});
    EXPECT_NEAR(5 * pi / 2 + 3, LengthOf(arc.GetPoints(1e-6)), 1e-4);
    EXPECT_EQ(ZORMathPoint(0, 8, 0), arc.GetPoints(0.1).constLast());
    double parameter = 0;
    EXPECT_EQ(0, arc.GetArcCircle(-1).ProjectPoint(arc.GetStartPoint(-1), parameter));
    EXPECT_NE(0, arc.GetArcCircle(-1).ProjectPoint(arc.GetEndPoint(-1), parameter));
}

TEST(ZORNestResultSegmentTest, CircleOfAnArcLiesAtTheHeightOfItsStart)
{
    const Segment arc = Segment::CreateArc(Segment::ArcClockwise, {5, 0, 3}, {0, 5, 3}, {});
    double parameter = 0;
    EXPECT_EQ(0, arc.GetArcCircle().ProjectPoint(arc.GetStartPoint(), parameter));
}

TEST(ZORNestResultSegmentTest, SplineTellsOfItsParts)
{
    const Segment spline = Spline();
    EXPECT_EQ(Segment::Spline, spline.GetType(-1));
    EXPECT_EQ(3, spline.GetNumSplineGeometry());
    EXPECT_EQ(ZORMathSetOfPoints({{0, 0, 0}, {10, 0, 0}, {15, 5, 0}, {20, 10, 0}}), spline.GetSplinePoints());
    EXPECT_EQ(
        (QList<Segment::SegmentType>{Segment::Line, Segment::ArcCounterClockwise, Segment::ArcClockwise}),
        spline.GetSplineLineTypes());
    EXPECT_EQ(Segment::ArcClockwise, spline.GetType(2));
    EXPECT_EQ(ZORMathPoint(10, 0, 0), spline.GetStartPoint(1));
    EXPECT_EQ(ZORMathPoint(15, 5, 0), spline.GetEndPoint(1));
    EXPECT_EQ(ZORMathPoint(10, 5, 0), spline.GetArcCenter(1));
    EXPECT_EQ(ZORMathPoint(), spline.GetArcCenter(0));
    EXPECT_EQ(5, spline.GetArcCircle(2).GetRadius());
    EXPECT_EQ(ZORMathPoint(0, 0, 0), spline.GetStartPoint(-1));
    EXPECT_EQ(ZORMathPoint(20, 10, 0), spline.GetEndPoint(-1));
    EXPECT_NEAR(10 + 5 * pi, LengthOf(spline.GetPoints(1e-6)), 1e-4);
}

TEST(ZORNestResultSegmentTest, EmptySplineHasNoPoints)
{
    const Segment spline = Segment::CreateSpline({});
    EXPECT_EQ(0, spline.GetNumSplineGeometry());
    EXPECT_TRUE(spline.GetPoints(0.001).isEmpty());
    EXPECT_TRUE(spline.GetSplinePoints().isEmpty());
    EXPECT_TRUE(spline.GetSplineLineTypes().isEmpty());
}

TEST(ZORNestResultSegmentTest, TextKeepsItsForm)
{
    Segment text = Segment::CreateText({1, 2, 0}, {30, 2, 0}, QStringLiteral("A \"b\"\n\u00e4"));
    EXPECT_EQ(Segment::Text, text.GetType());
    EXPECT_EQ(10, text.GetTextHeight());
    EXPECT_EQ(1, text.GetTextWidth());
    text.SetTextJustification(Segment::TopRight);
    text.SetTextHeight(7);
    text.SetTextAngle(0.5);
    text.SetTextWidth(0.8);
    text.SetTextTiltAngle(0.2);
    text.SetFont("futural");
    EXPECT_EQ(QStringLiteral("A \"b\"\n\u00e4"), text.GetText());
    EXPECT_EQ(Segment::TopRight, text.GetTextJustification());
    EXPECT_EQ(7, text.GetTextHeight());
    EXPECT_EQ(0.5, text.GetTextAngle());
    EXPECT_EQ(0.8, text.GetTextWidth());
    EXPECT_EQ(0.2, text.GetTextTiltAngle());
    EXPECT_EQ("futural", text.GetFont());
    EXPECT_EQ(ZORMathSetOfPoints({{1, 2, 0}, {30, 2, 0}}), text.GetPoints(0.001));
}

TEST(ZORNestResultSegmentTest, CopiesAreIndependent)
{
    Segment text = Segment::CreateText({}, {}, QStringLiteral("one"));
    const Segment copy = text;
    EXPECT_TRUE(copy == text);
    text.SetTextHeight(3);
    EXPECT_EQ(10, copy.GetTextHeight());
    EXPECT_FALSE(copy == text);
}

TEST(ZORNestResultSegmentTest, UnknownTypesKeepTheirEnds)
{
    const Segment other = Segment::CreateOther(Segment::SegmentType(17), {1, 0, 0}, {2, 0, 0});
    EXPECT_EQ(17, other.GetType());
    EXPECT_EQ(ZORMathPoint(2, 0, 0), other.GetEndPoint());
    EXPECT_EQ(2, other.GetPoints(1).size());
}

TEST(ZORNestResultSegmentTest, ColourKeepsRedGreenBlueAndOpacity)
{
    Segment segment;
    segment.SetColor(QColor::fromHsv(120, 255, 255));
    EXPECT_EQ(QColor(0, 255, 0), segment.GetColor());
    segment.SetColor(QColor(1, 2, 3, 4));
    EXPECT_EQ(QColor(1, 2, 3, 4), segment.GetColor());
    segment.SetColor(QColor());
    EXPECT_FALSE(segment.GetColor().isValid());
}

TEST(ZORNestResultSegmentTest, LayersAndLineStylesAreKeptAsTheyAre)
{
    Segment segment;
    for (const int number : {-1, 0, 13, 15, 1000}) {
        segment.SetLayer(Segment::Layer(number));
        segment.SetLineStyle(number);
        EXPECT_EQ(number, segment.GetLayer());
        EXPECT_EQ(number, segment.GetLineStyle());
    }
}

TEST(ZORNestResultSegmentTest, RefusesWhatItCannotHold)
{
    const double infinite = std::numeric_limits<double>::infinity();
    EXPECT_EQ("a number of the segment is not finite", MessageOf([&] {
                  Segment::CreateLine({infinite, 0, 0}, {});
              }));
    EXPECT_EQ("a number of the segment is not finite", MessageOf([&] {
                  Segment::CreateCircle(Segment::ArcClockwise, {}, {0, infinite, 0});
              }));
    EXPECT_EQ("a number of the segment is not finite",
              MessageOf([&] { Segment::CreateText({}, {}, {}).SetTextAngle(infinite); }));
    EXPECT_EQ("5 is no type of an arc", MessageOf([] { Segment::CreateArc(Segment::Spline, {}, {}, {}); }));
    EXPECT_EQ("a segment of type 30 needs more than two points",
              MessageOf([] { Segment::CreateOther(Segment::Text, {}, {}); }));
    EXPECT_EQ("a spline consists of lines and arcs", MessageOf([] { Segment::CreateSpline({Spline()}); }));
    EXPECT_EQ(
        "part 2 of the spline does not start where the one before ends", MessageOf([] {
            Segment::CreateSpline({Segment::CreateLine({}, {1, 0, 0}), Segment::CreateLine({2, 0, 0}, {})});
        }));
    EXPECT_EQ("the segment is no text", MessageOf([] { Segment().SetFont("x"); }));
    EXPECT_EQ("the segment is no text", MessageOf([] { Spline().SetTextHeight(1); }));
}

TEST(ZORNestResultSegmentTest, RefusesPartsThatDoNotExist)
{
    EXPECT_EQ("the segment has no part 3", MessageOf([] { Spline().GetType(3); }));
    EXPECT_EQ("the segment has no part -2", MessageOf([] { Spline().GetStartPoint(-2); }));
    EXPECT_EQ("the segment has no part 0", MessageOf([] { Segment().GetEndPoint(0); }));
}

TEST(ZORNestResultSegmentTest, TraceShowsTypeAndEnds)
{
    QByteArray text;
    ZorTraceAppend(text, Segment::CreateLine({1, 2, 3}, {4, 5, 6}));
    EXPECT_EQ("(0, (1, 2, 3), (4, 5, 6))", text.toStdString());
}

} // namespace
