#include <ZORNesting/solver/base/ZORNestSolverRandom.h>
#include <ZORNesting/solver/model/ZORNestSolverArc.h>

#include <gtest/gtest.h>

#include <numbers>

namespace ZORNestSolver {
namespace {

constexpr double kPi = std::numbers::pi;

void ExpectPoint(Point expected, Point actual, double tolerance)
{
    EXPECT_NEAR(expected.x, actual.x, tolerance);
    EXPECT_NEAR(expected.y, actual.y, tolerance);
}

void ExpectChord(const Arc& arc)
{
    EXPECT_TRUE(arc.IsChord());
    EXPECT_EQ(arc.start, arc.reached);
    EXPECT_EQ(arc.hasTail, !(arc.start == arc.end));
    EXPECT_NEAR(Length(arc.end - arc.start), arc.GetLength(), 1e-12 * arc.GetLength());
    EXPECT_NEAR(Cross(arc.start, arc.end) / 2, arc.GetArea({}), 1e-12);
    const Box box = arc.GetBox();
    EXPECT_EQ(box.min.x, std::min(arc.start.x, arc.end.x));
    EXPECT_EQ(box.max.x, std::max(arc.start.x, arc.end.x));
    EXPECT_EQ(box.min.y, std::min(arc.start.y, arc.end.y));
    EXPECT_EQ(box.max.y, std::max(arc.start.y, arc.end.y));
    EXPECT_NEAR(0, arc.GetDistance((arc.start + arc.end) * 0.5), 1e-9);
}

/// Points on what is drawn, close to each other.
std::vector<Point> Sample(const Arc& arc)
{
    constexpr int kCount = 2000;
    std::vector<Point> points;
    for (int i = 0; i <= kCount && !arc.IsChord(); ++i)
        points.push_back(arc.Evaluate(double(i) / kCount));
    for (int i = 0; i <= kCount; ++i)
        points.push_back(arc.reached + (arc.end - arc.reached) * (double(i) / kCount));
    return points;
}

} // namespace

TEST(ZORNestSolverArcTest, RunsInItsDirectionToTheDirectionOfItsEnd)
{
    const Arc quarter({15, 7}, {10, 12}, {10, 7}, true);
    EXPECT_NEAR(kPi / 2, quarter.sweep, 1e-15);
    EXPECT_EQ(5, quarter.radius);
    EXPECT_EQ(0, quarter.startAngle);
    EXPECT_FALSE(quarter.hasTail);
    EXPECT_EQ(quarter.end, quarter.endOnCircle);
    ExpectPoint({10 + 5 * std::sqrt(0.5), 7 + 5 * std::sqrt(0.5)}, quarter.Evaluate(0.5), 1e-14);
    EXPECT_NEAR(2.5 * kPi, quarter.GetLength(), 1e-14);
    EXPECT_NEAR(25 * kPi / 4, quarter.GetArea({10, 7}), 1e-13);

    const Arc rest({15, 7}, {10, 12}, {10, 7}, false);
    EXPECT_NEAR(-3 * kPi / 2, rest.sweep, 1e-15);
    ExpectPoint({10 - 5 * std::sqrt(0.5), 7 - 5 * std::sqrt(0.5)}, rest.Evaluate(0.5), 1e-14);
    EXPECT_NEAR(-75 * kPi / 4, rest.GetArea({10, 7}), 1e-13);
}

TEST(ZORNestSolverArcTest, AnEndOffTheCircleIsReachedStraight)
{
    for (const double reach : {8.0, 2.0, 5.002, 4.998}) {
        const Arc arc({5, 0}, {0, reach}, {}, true);
        EXPECT_TRUE(arc.hasTail) << reach;
        ExpectPoint({0, 5}, arc.reached, 1e-14);
        EXPECT_EQ(arc.reached, arc.endOnCircle);
        EXPECT_NEAR(2.5 * kPi + std::abs(reach - 5), arc.GetLength(), 1e-13);
        EXPECT_NEAR(25 * kPi / 4, arc.GetArea({}), 1e-13);
        EXPECT_EQ(std::max(5.0, reach), arc.GetBox().max.y);
        EXPECT_NEAR(0, arc.GetDistance({0, (5 + reach) / 2}), 1e-13);
    }
    const Arc joined({5, 0}, {0, 5.0009}, {}, true);
    EXPECT_FALSE(joined.hasTail);
    EXPECT_EQ(joined.end, joined.endOnCircle);
    EXPECT_EQ(joined.end.y, joined.GetBox().max.y);
}

TEST(ZORNestSolverArcTest, CoincidingEndsMakeAFullCircle)
{
    for (const double slip : {0.0, 1e-13, -1e-13, 4e-9, -4e-9}) {
        for (const bool counterClockwise : {true, false}) {
            const Arc arc({15, 5}, {15, 5 + slip}, {10, 5}, counterClockwise);
            EXPECT_EQ(counterClockwise ? 2 * kPi : -2 * kPi, arc.sweep) << slip;
            EXPECT_FALSE(arc.hasTail);
            EXPECT_NEAR(10 * kPi, arc.GetLength(), 1e-8);
            EXPECT_NEAR(counterClockwise ? 25 * kPi : -25 * kPi, arc.GetArea({}), 1e-7);
            EXPECT_NEAR(5, arc.GetBox().min.x, 1e-8);
            EXPECT_NEAR(10, arc.GetBox().max.y, 1e-8);
            EXPECT_NEAR(5, arc.GetDistance({10, 5}), 1e-8);
        }
    }
}

TEST(ZORNestSolverArcTest, EndsThatAreApartMakeNoFullCircle)
{
    const Arc shortArc({5, 0}, {5, 1e-6}, {}, true);
    EXPECT_NEAR(2e-7, shortArc.sweep, 1e-15);
    const Arc longArc({5, 0}, {5, 1e-6}, {}, false);
    EXPECT_NEAR(2e-7 - 2 * kPi, longArc.sweep, 1e-14);
    const Arc flat({0, 0}, {0.5, 0}, {0.25, 1e9}, true); // half a thousandth of a millionth of the radius
    EXPECT_NEAR(0.5, flat.GetLength(), 1e-9);
}

TEST(ZORNestSolverArcTest, AnAngleBelowRoundingMakesTheChord)
{
    for (const bool counterClockwise : {true, false}) {
        ExpectChord(Arc({0, 0}, {100, 0}, {50, 1e16}, counterClockwise));
        ExpectChord(Arc({0, 0}, {100, 0}, {50, -1e300}, counterClockwise));
        ExpectChord(Arc({1e9, 0}, {1e9, 1e-4}, {}, counterClockwise));
        ExpectChord(Arc({5, 0}, {8, 0}, {}, counterClockwise)); // radially outwards, then inwards
        ExpectChord(Arc({5, 0}, {3, 1e-13}, {}, counterClockwise));
        ExpectChord(Arc({5, 0}, {3, -1e-13}, {}, counterClockwise));
        ExpectChord(Arc({4e5 + 5, 3e5}, {4e5 + 8, 3e5 + 1e-11}, {4e5, 3e5}, counterClockwise));
        ExpectChord(Arc({1, 2}, {4, 6}, {1, 2}, counterClockwise)); // starts at the center
        ExpectChord(Arc({4, 6}, {1, 2}, {1, 2}, counterClockwise)); // ends there
        ExpectChord(Arc({1, 2}, {1, 2}, {1, 2}, counterClockwise));
        EXPECT_TRUE(Arc({-1e308, 0}, {1, 2}, {1e308, 0}, counterClockwise).IsChord());
    }
}

TEST(ZORNestSolverArcTest, AHugeRadiusCostsNoDigits)
{
    const Arc arc({-50, 0}, {50, 0}, {0, 1e10}, true); // sagitta 1.25e-7
    EXPECT_NEAR(100, arc.GetLength(), 1e-9);
    EXPECT_NEAR(100.0 * 100 * 100 / 12e10, arc.GetArea({0, 0}), 1e-12);
    ExpectPoint({0, -1.25e-7}, arc.Evaluate(0.5), 1e-12);
    EXPECT_NEAR(-1.25e-7, arc.GetBox().min.y, 1e-12);
    EXPECT_NEAR(3, arc.GetDistance({0, 3 - 1.25e-7}), 1e-12);
    EXPECT_NEAR(5, arc.GetDistance({53, 4}), 1e-9);
}

TEST(ZORNestSolverArcTest, BoxDistanceLengthAndAreaAgreeWithSamples)
{
    Random random(4);
    for (int i = 0; i < 300; ++i) {
        const auto coordinate = [&random] { return random.Between(-10, 10); };
        const Arc arc({coordinate(), coordinate()}, {coordinate(), coordinate()},
                      {coordinate(), coordinate()}, i % 2 == 0);
        const std::vector<Point> points = Sample(arc);
        Box box;
        double length = 0;
        double twice = 0;
        const Point origin{coordinate(), coordinate()};
        const Point p{coordinate(), coordinate()};
        double distance = Length(points.front() - p);
        for (size_t k = 0; k < points.size(); ++k) {
            box.Add(points[k]);
            distance = std::min(distance, Length(points[k] - p));
            length += k > 0 ? Length(points[k] - points[k - 1]) : 0;
            twice += k > 0 ? Cross(points[k - 1] - origin, points[k] - origin) : 0;
        }
        const double scale = 1 + arc.radius;
        ExpectPoint(box.min, arc.GetBox().min, 3e-6 * scale);
        ExpectPoint(box.max, arc.GetBox().max, 3e-6 * scale);
        EXPECT_NEAR(length, arc.GetLength(), 1e-4 * scale);
        EXPECT_NEAR(twice / 2, arc.GetArea(origin), 1e-3 * scale * scale);
        EXPECT_LE(arc.GetDistance(p), distance + 1e-12) << i;
        EXPECT_NEAR(distance, arc.GetDistance(p), 0.01 * scale) << i;
        EXPECT_NEAR(0, arc.GetDistance(points[777 % points.size()]), 1e-12 * scale);
    }
}

} // namespace ZORNestSolver
