// Tests of ZORNestResultShape: measures by closed forms, compared with fine sampling.

#include "support/Printers.h"

#include <ZORNesting/ZORNestResultShape.h>

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <random>

namespace {

using Segment = ZORNestResultSegment;
using Shape = ZORNestResultShape;
using std::numbers::pi;

Segment Line(const ZORMathPoint& start, const ZORMathPoint& end, Segment::Layer layer = Segment::Automatic)
{
    Segment segment = Segment::CreateLine(start, end);
    segment.SetLayer(layer);
    return segment;
}

QList<Segment> Polygon(const QList<ZORMathPoint>& corners)
{
    QList<Segment> segments;
    for (qsizetype i = 0; i < corners.size(); ++i)
        segments.append(Line(corners[i], corners[(i + 1) % corners.size()]));
    return segments;
}

void ExpectBox(const ZORMathPoint& lower, const ZORMathPoint& upper, const ZORMathBoundingBox& box)
{
    EXPECT_LT(lower.DistanceTo(box.GetLowerPoint()), 1e-9);
    EXPECT_LT(upper.DistanceTo(box.GetUpperPoint()), 1e-9);
}

void ExpectCenter(const ZORMathPoint& expected, const Shape& shape)
{
    EXPECT_LT(expected.DistanceTo(shape.GetCenterOfMass()), 1e-9)
        << testing::PrintToString(shape.GetCenterOfMass());
}

TEST(ZORNestResultShapeTest, WithoutSegmentsEverythingIsZero)
{
    const Shape shape;
    EXPECT_EQ(0, shape.GetArea());
    EXPECT_EQ(0, shape.GetPerimeter());
    EXPECT_TRUE(shape.GetBoundingBox().IsEmpty());
    EXPECT_EQ(ZORMathPoint(), shape.GetCenterOfMass());
    EXPECT_EQ(-1, shape.GetRawShapeFather());
    EXPECT_EQ(0, shape.GetShapeHole());
    EXPECT_EQ(0, shape.GetShapeStatus());
}

TEST(ZORNestResultShapeTest, RectangleInBothDirections)
{
    for (const bool reversed : {false, true}) {
        QList<ZORMathPoint> corners = {{10, 20, 0}, {14, 20, 0}, {14, 22, 0}, {10, 22, 0}};
        if (reversed)
            std::reverse(corners.begin(), corners.end());
        const Shape shape(Polygon(corners));
        EXPECT_DOUBLE_EQ(8, shape.GetArea());
        EXPECT_DOUBLE_EQ(12, shape.GetPerimeter());
        ExpectCenter({12, 21, 0}, shape);
        ExpectBox({10, 20, 0}, {14, 22, 0}, shape.GetBoundingBox());
    }
}

TEST(ZORNestResultShapeTest, FullCircle)
{
    for (const auto type : {Segment::ArcClockwise, Segment::ArcCounterClockwise}) {
        const Shape shape({Segment::CreateCircle(type, {1000.6, 2000.8, 0}, {1000, 2000, 0})});
        EXPECT_NEAR(pi, shape.GetArea(), 1e-12);
        EXPECT_NEAR(2 * pi, shape.GetPerimeter(), 1e-12);
        ExpectCenter({1000, 2000, 0}, shape);
        ExpectBox({999, 1999, 0}, {1001, 2001, 0}, shape.GetBoundingBox());
    }
}

TEST(ZORNestResultShapeTest, HalfDisc)
{
    const Shape shape({Segment::CreateArc(Segment::ArcCounterClockwise, {3, 0, 0}, {-3, 0, 0}, {}),
                       Line({-3, 0, 0}, {3, 0, 0})});
    EXPECT_NEAR(4.5 * pi, shape.GetArea(), 1e-12);
    EXPECT_NEAR(3 * pi + 6, shape.GetPerimeter(), 1e-12);
    ExpectCenter({0, 4 / pi, 0}, shape);
    ExpectBox({-3, 0, 0}, {3, 3, 0}, shape.GetBoundingBox());
}

TEST(ZORNestResultShapeTest, LensOfFlatArcsKeepsItsDigits)
{
    // Two arcs of radius 1e6 over a chord of 2 mm: the height of each is h = 5e-7 mm, the area 4/3 h a piece.
    const double drop = std::sqrt(1e12 - 1);
    const Shape shape(
        {Segment::CreateArc(Segment::ArcCounterClockwise, {1, 0, 0}, {-1, 0, 0}, {0, -drop, 0}),
         Segment::CreateArc(Segment::ArcCounterClockwise, {-1, 0, 0}, {1, 0, 0}, {0, drop, 0})});
    EXPECT_NEAR(4.0 / 3 * 1e-6, shape.GetArea(), 1e-12);
    EXPECT_NEAR(4, shape.GetPerimeter(), 1e-9);
    ExpectCenter({0, 0, 0}, shape);
}

TEST(ZORNestResultShapeTest, SplineMeasuresAsItsParts)
{
    const QList<Segment> parts = {Segment::CreateArc(Segment::ArcCounterClockwise, {3, 0, 0}, {-3, 0, 0}, {}),
                                  Line({-3, 0, 0}, {3, 0, 0})};
    const Shape apart(parts);
    const Shape shape({Segment::CreateSpline(parts)});
    EXPECT_EQ(apart.GetArea(), shape.GetArea());
    EXPECT_EQ(apart.GetPerimeter(), shape.GetPerimeter());
    EXPECT_EQ(apart.GetCenterOfMass(), shape.GetCenterOfMass());
    EXPECT_EQ(apart.GetBoundingBox(), shape.GetBoundingBox());
}

TEST(ZORNestResultShapeTest, OpenChainHasLengthButNoArea)
{
    const Shape shape({Line({0, 0, 0}, {10, 0, 0}), Line({10, 0, 0}, {10, 10, 0})});
    EXPECT_EQ(0, shape.GetArea());
    EXPECT_DOUBLE_EQ(20, shape.GetPerimeter());
    ExpectCenter({7.5, 2.5, 0}, shape);
    const Shape arc({Segment::CreateArc(Segment::ArcClockwise, {-3, 0, 0}, {3, 0, 0}, {})});
    EXPECT_EQ(0, arc.GetArea());
    ExpectCenter({0, 6 / pi, 0}, arc);
}

TEST(ZORNestResultShapeTest, ChainThatRunsBackOnItselfHasNoArea)
{
    const Shape shape({Line({1000, 1000, 0}, {1010, 1003, 0}), Line({1010, 1003, 0}, {1000, 1000, 0})});
    EXPECT_NEAR(0, shape.GetArea(), 1e-9);
    ExpectCenter({1005, 1001.5, 0}, shape);
}

TEST(ZORNestResultShapeTest, GapsWithinTheToleranceAreClosed)
{
    QList<Segment> segments = Polygon({{0, 0, 0}, {10, 0, 0}, {10, 10, 0}, {0, 10, 0}});
    segments[3] = Line({0, 10.0009, 0}, {0, 0.0009, 0});
    EXPECT_NEAR(100, Shape(segments).GetArea(), 0.01);
    segments[3] = Line({0, 10, 0}, {0, 0.002, 0});
    EXPECT_EQ(0, Shape(segments).GetArea());
}

TEST(ZORNestResultShapeTest, SeveralChainsAddUpWhateverTheirDirections)
{
    const Shape shape(Polygon({{0, 0, 0}, {2, 0, 0}, {2, 2, 0}, {0, 2, 0}})
                      + Polygon({{10, 0, 0}, {10, 2, 0}, {12, 2, 0}, {12, 0, 0}})
                      + QList<Segment>{Line({50, 50, 0}, {51, 50, 0})});
    EXPECT_DOUBLE_EQ(8, shape.GetArea());
    EXPECT_DOUBLE_EQ(17, shape.GetPerimeter());
    ExpectCenter({6, 1, 0}, shape);
    ExpectBox({0, 0, 0}, {51, 50, 0}, shape.GetBoundingBox());
}

TEST(ZORNestResultShapeTest, LeadsAndTextsAreNoOutline)
{
    QList<Segment> segments = {Line({-5, -5, 0}, {0, 0, 0}, Segment::LeadIn)};
    segments += Polygon({{0, 0, 0}, {2, 0, 0}, {2, 2, 0}, {0, 2, 0}});
    segments += Line({0, 0, 0}, {-4, 7, 0}, Segment::LeadOut);
    segments += Segment::CreateText({1, 1, 0}, {9, 1, 0}, QStringLiteral("P1"));
    const Shape shape(segments);
    EXPECT_DOUBLE_EQ(4, shape.GetArea());
    EXPECT_DOUBLE_EQ(8, shape.GetPerimeter());
    ExpectCenter({1, 1, 0}, shape);
    ExpectBox({-5, -5, 0}, {9, 7, 0}, shape.GetBoundingBox());
}

TEST(ZORNestResultShapeTest, TextAloneIsCentredInItsBox)
{
    const Shape shape(
        {Segment::CreateText({10, 4, 0}, {20, 4, 0}, QStringLiteral("P1")), Segment::CreateSpline({})});
    EXPECT_EQ(0, shape.GetPerimeter());
    ExpectCenter({15, 4, 0}, shape);
    ExpectBox({10, 4, 0}, {20, 4, 0}, shape.GetBoundingBox());
}

TEST(ZORNestResultShapeTest, BoxOfAnArcHoldsOnlyWhatTheArcReaches)
{
    const double c = 5 * std::sqrt(0.5);
    const auto box = [](Segment::SegmentType type, const ZORMathPoint& start, const ZORMathPoint& end) {
        return Shape({Segment::CreateArc(type, start, end, {})}).GetBoundingBox();
    };
    ExpectBox({-c, c, 0}, {c, 5, 0}, box(Segment::ArcCounterClockwise, {c, c, 0}, {-c, c, 0}));
    ExpectBox({-5, -5, 0}, {5, c, 0}, box(Segment::ArcClockwise, {c, c, 0}, {-c, c, 0}));
    ExpectBox({0, 0, 0}, {5, 5, 0}, box(Segment::ArcCounterClockwise, {5, 0, 0}, {0, 5, 0}));
    // The end lies off the circle.
    ExpectBox({0, 0, 0}, {5, 9, 0}, box(Segment::ArcCounterClockwise, {5, 0, 0}, {0, 9, 0}));
    ExpectBox({0, 0, 0}, {5, 5, 0}, box(Segment::ArcCounterClockwise, {5, 0, 0}, {0, 2, 0}));
}

/// A closed chain of lines and arcs; some of the arcs end off their circles.
QList<Segment> RandomOutline(std::mt19937& random)
{
    std::uniform_real_distribution<double> number(-100, 100);
    QList<Segment> segments;
    const ZORMathPoint first{number(random) + 300, number(random), 0};
    ZORMathPoint last = first;
    for (int i = 0; i < 6; ++i) {
        ZORMathPoint next = i == 5 ? first : ZORMathPoint(number(random) + 300, number(random), 0);
        const bool isArc = random() % 3 != 0;
        const auto type = random() % 2 ? Segment::ArcClockwise : Segment::ArcCounterClockwise;
        if (!isArc) {
            segments.append(Segment::CreateLine(last, next));
        } else if (random() % 4 == 0) {
            segments.append(Segment::CreateArc(type, last, next, {number(random), number(random), 0}));
        } else {
            const ZORMathVector chord = next - last;
            const double aside = number(random) / 50;
            const ZORMathPoint middle = last + 0.5 * chord;
            segments.append(Segment::CreateArc(
                type, last, next, middle + aside * ZORMathVector(-chord.GetY(), chord.GetX(), 0)));
        }
        last = next;
    }
    return segments;
}

TEST(ZORNestResultShapeTest, RandomOutlinesMeasureAsTheirFineSampling)
{
    std::mt19937 random(7);
    for (int round = 0; round < 300; ++round) {
        const QList<Segment> segments = RandomOutline(random);
        double area = 0;
        double momentX = 0;
        double momentY = 0;
        double length = 0;
        ZORMathBoundingBox box;
        for (const Segment& segment : segments) {
            const ZORMathSetOfPoints points = segment.GetPoints(1e-5);
            for (qsizetype i = 0; i < points.size(); ++i) {
                box.Add(points[i]);
                if (i == 0)
                    continue;
                const ZORMathPoint& a = points[i - 1];
                const ZORMathPoint& b = points[i];
                const double cross = (a.GetX() * b.GetY() - a.GetY() * b.GetX()) / 2;
                area += cross;
                momentX += cross * (a.GetX() + b.GetX()) / 3;
                momentY += cross * (a.GetY() + b.GetY()) / 3;
                length += a.DistanceTo(b);
            }
        }
        const Shape shape(segments);
        const double size = box.GetDiagonal();
        EXPECT_NEAR(std::abs(area), shape.GetArea(), 1e-4 * length);
        EXPECT_NEAR(length, shape.GetPerimeter(), 1e-5 * length);
        EXPECT_LT(box.GetLowerPoint().DistanceTo(shape.GetBoundingBox().GetLowerPoint()), 1e-3);
        EXPECT_LT(box.GetUpperPoint().DistanceTo(shape.GetBoundingBox().GetUpperPoint()), 1e-3);
        // The quotient of a small area is no measure of accuracy; its moments are.
        const ZORMathPoint center = shape.GetCenterOfMass();
        EXPECT_NEAR(momentX, center.GetX() * area, 1e-4 * length * size);
        EXPECT_NEAR(momentY, center.GetY() * area, 1e-4 * length * size);
    }
}

TEST(ZORNestResultShapeTest, MeasuresMoveAndTurnWithTheOutline)
{
    std::mt19937 random(8);
    for (int round = 0; round < 100; ++round) {
        const QList<Segment> segments = RandomOutline(random);
        const auto move = [](const ZORMathPoint& p) {
            return ZORMathPoint(0.6 * p.GetX() - 0.8 * p.GetY() + 10, 0.8 * p.GetX() + 0.6 * p.GetY() - 20,
                                0);
        };
        QList<Segment> moved;
        for (const Segment& segment : segments) {
            const ZORMathPoint start = move(segment.GetStartPoint());
            const ZORMathPoint end = move(segment.GetEndPoint());
            moved.append(
                segment.GetType() == Segment::Line
                    ? Segment::CreateLine(start, end)
                    : Segment::CreateArc(segment.GetType(), start, end, move(segment.GetArcCenter())));
        }
        const Shape before(segments);
        const Shape after(moved);
        EXPECT_NEAR(before.GetArea(), after.GetArea(), 1e-9 * before.GetPerimeter() * before.GetPerimeter());
        EXPECT_NEAR(before.GetPerimeter(), after.GetPerimeter(), 1e-9 * before.GetPerimeter());
        const double size = before.GetPerimeter() * before.GetPerimeter() / before.GetArea();
        EXPECT_LT(move(before.GetCenterOfMass()).DistanceTo(after.GetCenterOfMass()), 1e-10 * size * size);
    }
}

TEST(ZORNestResultShapeTest, FatherHoleAndStatusAreKeptForEveryNumber)
{
    Shape shape(Polygon({{0, 0, 0}, {2, 0, 0}, {2, 2, 0}}));
    const Shape copy = shape;
    shape.SetRawShapeFather(-32768);
    shape.SetShapeHole(1);
    shape.SetShapeStatus(32767);
    EXPECT_EQ(-32768, shape.GetRawShapeFather());
    EXPECT_EQ(1, shape.GetShapeHole());
    EXPECT_EQ(32767, shape.GetShapeStatus());
    EXPECT_EQ(-1, copy.GetRawShapeFather());
    EXPECT_FALSE(copy == shape);
    EXPECT_EQ(3, copy.GetSegments().size());
}

} // namespace
