#include "sdk/ZORNesting/solver/SolverShapes.h"

#include <ZORNesting/solver/model/ZORNestSolverArc.h>
#include <ZORNesting/solver/proof/ZORNestSolverExactApart.h>
#include <ZORNesting/solver/proof/ZORNestSolverExactShape.h>

namespace ZORNestSolver::SolverShapes {

using Exact::Shape;

namespace {

constexpr double kPi = std::numbers::pi;

Shape MakeExact(const std::vector<Contour>& contours)
{
    Shape shape(contours);
    shape.FindProbes();
    return shape;
}

Shape MakeExact(const Ring& ring)
{
    return MakeExact(std::vector{MakeContour(ring)});
}

Shape Disc(Point center, double radius)
{
    return MakeExact({RoundContour(center, radius)});
}

/// A square frame with a square hole.
std::vector<Contour> FrameContours()
{
    return {MakeContour(Rectangle(20, 20)), MakeContour(Rectangle(10, 10, {5, 5}))};
}

bool AreApartBothWays(const Shape& a, const Shape& b, double distance)
{
    const bool areApart = Exact::AreApart(a, b, distance);
    EXPECT_EQ(areApart, Exact::AreApart(b, a, distance));
    return areApart;
}

/// Closed, around a center, of lines and arcs of both directions, with tails. It may cross itself.
Contour RandomContour(Random& random, Point center, double radius)
{
    const size_t corners = 3 + random.Index(5);
    std::vector<Point> ring;
    for (size_t i = 0; i < corners; ++i) {
        const double angle = 2 * kPi * static_cast<double>(i) / static_cast<double>(corners);
        ring.push_back(center + Point{std::cos(angle), std::sin(angle)} * (radius * random.Between(0.4, 1)));
    }
    Contour contour;
    contour.start = ring[0];
    for (size_t i = 0; i < corners; ++i) {
        const Point from = ring[i];
        const Point to = ring[(i + 1) % corners];
        const Point across{from.y - to.y, to.x - from.x};
        const Point middle = (from + to) * 0.5;
        Segment segment{to, random.Index(3) > 0, random.Index(2) == 0,
                        middle + across * random.Between(-1, 1)};
        if (random.Index(4) == 0) // the end lies off the circle
            segment.centre = segment.centre + Point{random.Between(-1, 1), random.Between(-1, 1)};
        contour.segments.push_back(segment);
    }
    return contour;
}

/// Points on a contour, each closer to the next one than a bound.
struct Samples
{
    std::vector<std::vector<Point>> contours;
    double gap = 0;
};

void AppendSamples(std::vector<Point>& points, Point from, const Segment& segment, int count)
{
    if (!segment.isArc) {
        for (int i = 0; i < count; ++i)
            points.push_back(from + (segment.end - from) * (double(i) / count));
        return;
    }
    const Arc arc(from, segment.end, segment.centre, segment.counterClockwise);
    for (int i = 0; i < count; ++i) {
        const double angle = arc.startAngle + arc.sweep * i / count;
        points.push_back(arc.IsChord() ? from
                                       : arc.center + Point{std::cos(angle), std::sin(angle)} * arc.radius);
    }
    for (int i = 0; i < count; ++i)
        points.push_back(arc.reached + (segment.end - arc.reached) * (double(i) / count));
}

Samples Sample(const std::vector<Contour>& contours, const Pose& pose, int count)
{
    Samples samples;
    const Transform transform(pose);
    for (const Contour& contour : contours) {
        std::vector<Point> points;
        Point from = contour.start;
        for (const Segment& segment : contour.segments) {
            AppendSamples(points, from, segment, count);
            from = segment.end;
        }
        for (Point& p : points)
            p = transform.Apply(p);
        for (size_t i = 0; i < points.size(); ++i)
            samples.gap = std::max(samples.gap, Length(points[(i + 1) % points.size()] - points[i]));
        samples.contours.push_back(points);
    }
    return samples;
}

double GetDistance(Point p, const Samples& samples)
{
    double distance = std::numeric_limits<double>::infinity();
    for (const std::vector<Point>& points : samples.contours)
        for (const Point other : points)
            distance = std::min(distance, Length(p - other));
    return distance;
}

/// By the sum of the angles under which the samples appear.
bool IsIn(Point p, const Samples& samples)
{
    bool isIn = false;
    for (const std::vector<Point>& points : samples.contours) {
        double angle = 0;
        for (size_t i = 0; i < points.size(); ++i) {
            const Point a = points[i] - p;
            const Point b = points[(i + 1) % points.size()] - p;
            angle += std::atan2(Cross(a, b), Dot(a, b));
        }
        isIn = isIn != (std::abs(angle) > kPi);
    }
    return isIn;
}

/// The least distance of the samples, and the largest depth of one in the other region, none as 0.
struct Measures
{
    double distance = std::numeric_limits<double>::infinity();
    double depth = 0;
};

Measures MeasureOneWay(const Samples& a, const Samples& b)
{
    Measures measures;
    for (const std::vector<Point>& points : a.contours) {
        for (const Point p : points) {
            const double distance = GetDistance(p, b);
            measures.distance = std::min(measures.distance, distance);
            if (distance > measures.depth + b.gap && IsIn(p, b))
                measures.depth = distance - b.gap;
        }
    }
    return measures;
}

} // namespace

TEST(ZORNestSolverExactTest, RandomPairsAreJudgedAsBySampling)
{
    Random random(31);
    int overlaps = 0;
    int apart = 0;
    for (int i = 0; i < 120; ++i) {
        std::vector<Contour> first{RandomContour(random, {}, 10)};
        std::vector<Contour> second{RandomContour(random, {1, 2}, 8)};
        if (i % 3 == 0) // a hole, and an island in it
            first = {RandomContour(random, {}, 30), RandomContour(random, {}, 12),
                     RandomContour(random, {}, 4)};
        const Pose pose{i % 2 == 1, random.Between(0, 6), {random.Between(-18, 18), random.Between(-18, 18)}};
        const Shape a = MakeExact(first);
        const Shape b = MakeExact(second).Placed(pose);
        const Samples samplesA = Sample(first, {}, 24);
        const Samples samplesB = Sample(second, pose, 24);
        const Measures oneWay = MeasureOneWay(samplesA, samplesB);
        const Measures otherWay = MeasureOneWay(samplesB, samplesA);
        const double bound = samplesA.gap + samplesB.gap;
        const double depth = std::max(oneWay.depth, otherWay.depth);
        if (depth > bound) {
            EXPECT_FALSE(AreApartBothWays(a, b, 0)) << i;
            EXPECT_FALSE(AreApartBothWays(a, b, 1)) << i;
            ++overlaps;
        } else if (oneWay.distance > bound) {
            EXPECT_TRUE(AreApartBothWays(a, b, 0)) << i;
            EXPECT_TRUE(AreApartBothWays(a, b, oneWay.distance - bound)) << i;
            EXPECT_FALSE(AreApartBothWays(a, b, oneWay.distance + 2e-6)) << i;
            ++apart;
        }
    }
    EXPECT_GT(overlaps, 20);
    EXPECT_GT(apart, 15);
}

TEST(ZORNestSolverExactTest, PointsAreInsideAsByTheSumOfAngles)
{
    Random random(5);
    for (int i = 0; i < 60; ++i) {
        const std::vector<Contour> contours{RandomContour(random, {}, 10), RandomContour(random, {1, 1}, 5),
                                            RandomContour(random, {-1, 1}, 3)};
        const Samples samples = Sample(contours, {}, 40);
        const Shape shape = MakeExact(contours);
        for (int k = 0; k < 30; ++k) {
            const Point p{random.Between(-12, 12), random.Between(-12, 12)};
            const double distance = GetDistance(p, samples);
            EXPECT_LE(shape.GetDistanceToPieces(p), distance + 1e-12);
            EXPECT_GE(shape.GetDistanceToPieces(p), distance - samples.gap);
            if (distance > samples.gap) {
                EXPECT_EQ(shape.IsInside(p), IsIn(p, samples)) << i << ": " << p.x << ", " << p.y;
            }
        }
    }
}

TEST(ZORNestSolverExactTest, ProbesLieDeepInsideOfEveryPart)
{
    // Two lobes that meet in a point, and an island in a hole.
    const Shape eight = MakeExact(Ring{{0, 0}, {10, 10}, {10, 0}, {0, 10}});
    bool isLeft = false;
    bool isRight = false;
    for (const Point probe : eight.GetProbes()) {
        EXPECT_TRUE(eight.IsInside(probe));
        EXPECT_GT(eight.GetDistanceToPieces(probe), Exact::kTolerance);
        isLeft = isLeft || probe.x < 5;
        isRight = isRight || probe.x > 5;
    }
    EXPECT_TRUE(isLeft && isRight);
    std::vector<Contour> contours = FrameContours();
    contours.push_back(RoundContour({10, 10}, 1));
    const Shape island = MakeExact(contours);
    EXPECT_TRUE(std::any_of(island.GetProbes().begin(), island.GetProbes().end(), [](Point probe) {
        return Length(probe - Point{10, 10}) < 1;
    }));
}

TEST(ZORNestSolverExactTest, RegionsMayTouchAlongEdgesAndArcs)
{
    const Shape square = MakeExact(Rectangle(10, 10));
    EXPECT_TRUE(AreApartBothWays(square, MakeExact(Rectangle(10, 10, {10, 0})), 0));
    EXPECT_TRUE(AreApartBothWays(square, MakeExact(Rectangle(3, 3, {10, 2})), 0));
    EXPECT_TRUE(AreApartBothWays(square, Disc({15, 5}, 5), 0));
    EXPECT_TRUE(AreApartBothWays(Disc({0, 0}, 5), Disc({6, 8}, 5), 0));
    // A disc in a round hole of its size, and a square with a round notch around a disc.
    const Shape ring = MakeExact({RoundContour({}, 9), RoundContour({}, 5)});
    EXPECT_TRUE(AreApartBothWays(ring, Disc({}, 5), 0));
    EXPECT_TRUE(AreApartBothWays(ring, Disc({}, 5 + 0.9e-6), 0));
    EXPECT_FALSE(AreApartBothWays(ring, Disc({}, 5 + 1.2e-6), 0));
    EXPECT_FALSE(AreApartBothWays(ring, Disc({1.2e-6, 0}, 5), 0));
    Contour notch;
    notch.start = {0, 0};
    notch.segments = {{{4, 0}, false, true, {}},
                      {{6, 0}, true, false, {5, 0}},
                      {{10, 0}, false, true, {}},
                      {{10, 9}, false, true, {}},
                      {{0, 9}, false, true, {}}};
    EXPECT_TRUE(AreApartBothWays(MakeExact({notch}), Disc({5, 0}, 1), 0));
    EXPECT_FALSE(AreApartBothWays(MakeExact({notch}), Disc({5, 1.2e-6}, 1), 0));
}

TEST(ZORNestSolverExactTest, TheToleranceIsExactForEveryKindOfContact)
{
    const Shape square = MakeExact(Rectangle(10, 10));
    for (const double turn : {0.0, 0.3, 1.0, kPi / 2, 2.5}) {
        for (const bool mirrored : {false, true}) {
            // In the direction in which it touches from the right, the top and across a corner.
            const auto isApart = [&](const Shape& other, Point shift, double distance) {
                const Shape a = square.Placed({mirrored, turn, {1000, -500}});
                const Transform move({mirrored, turn, {1000, -500}});
                const Pose pose{mirrored, turn, move.Apply(shift)};
                return AreApartBothWays(a, other.Placed(pose), distance);
            };
            for (const Shape& other : {MakeExact(Rectangle(4, 4, {10, 3})), Disc({13, 5}, 3),
                                       MakeExact(Ring{{10, 5}, {20, 0}, {20, 9}})}) {
                EXPECT_TRUE(isApart(other, {-0.98e-6, 0}, 0));
                EXPECT_FALSE(isApart(other, {-1.02e-6, 0}, 0));
                for (const double separation : {1e-5, 0.5, 30.0}) {
                    EXPECT_TRUE(isApart(other, {separation - 0.98e-6, 0}, separation));
                    EXPECT_FALSE(isApart(other, {separation - 1.02e-6, 0}, separation));
                }
            }
            const Shape corner = Disc({13, 14}, 5); // touches the corner (10, 10)
            EXPECT_TRUE(isApart(corner, {0.6 * 2, 0.8 * 2}, 2));
            EXPECT_FALSE(isApart(corner, {0.6 * (2 - 1.1e-6), 0.8 * (2 - 1.1e-6)}, 2));
        }
    }
}

TEST(ZORNestSolverExactTest, EqualRegionsInEqualPosesOverlap)
{
    Contour hook; // an L with a round end
    hook.start = {0, 0};
    hook.segments = {{{9, 0}, false, true, {}},
                     {{9, 2}, true, true, {9, 1}},
                     {{2, 2}, false, true, {}},
                     {{2, 9}, false, true, {}},
                     {{0, 9}, false, true, {}}};
    const std::vector<std::vector<Contour>> all{{hook},
                                                {RoundContour({3, 4}, 5)},
                                                {MakeContour(Rectangle(10, 1e-3))},
                                                {MakeContour({{0, 0}, {10, 10}, {10, 0}, {0, 10}})},
                                                FrameContours()};
    for (const std::vector<Contour>& contours : all) {
        for (const double slip : {0.0, 1e-7, 1e-6, 1e-5}) {
            const Shape a = MakeExact(contours);
            EXPECT_FALSE(AreApartBothWays(a, a.Placed({false, 0, {slip, 0}}), 0));
            EXPECT_FALSE(AreApartBothWays(a, a.Placed({false, 0, {slip, 0}}), 0.5));
        }
    }
    // One lobe in common.
    const Shape eight = MakeExact(Ring{{0, 0}, {10, 10}, {10, 0}, {0, 10}});
    const Shape other = MakeExact(Ring{{0, 0}, {5, 5}, {8, 10}, {2, 10}, {5, 5}, {0, 10}});
    EXPECT_FALSE(AreApartBothWays(eight, other, 0));
    EXPECT_FALSE(AreApartBothWays(eight, MakeExact(Ring{{0, 0}, {5, 5}, {0, 10}}), 0));
    EXPECT_TRUE(AreApartBothWays(eight, MakeExact(Ring{{0, 0}, {10, 0}, {5, 5}}), 0));
}

TEST(ZORNestSolverExactTest, NeedlesOverlapHoweverThin)
{
    const Shape square = MakeExact(Rectangle(10, 10));
    EXPECT_FALSE(AreApartBothWays(square, MakeExact(Ring{{9, 5}, {20, 5}, {20, 5 + 1e-7}}), 0));
    EXPECT_FALSE(AreApartBothWays(square, MakeExact(Ring{{10 - 2e-6, 5}, {20, 5}, {20, 6}}), 0));
    EXPECT_TRUE(AreApartBothWays(square, MakeExact(Ring{{10 - 0.9e-6, 5}, {20, 5}, {20, 6}}), 0));
    EXPECT_FALSE(AreApartBothWays(square, MakeExact(Ring{{-5, 5}, {20, 5}, {20, 5 + 1e-9}}), 0));
    EXPECT_FALSE(AreApartBothWays(Disc({5, 5}, 5), MakeExact(Ring{{9, 5}, {20, 5}, {20, 5 + 1e-7}}), 0));
}

TEST(ZORNestSolverExactTest, HolesHoldPartsAndIslandsDoNot)
{
    std::vector<Contour> contours = FrameContours();
    const Shape frame = MakeExact(contours);
    EXPECT_TRUE(AreApartBothWays(frame, MakeExact(Rectangle(10, 10, {5, 5})), 0));
    EXPECT_TRUE(AreApartBothWays(frame, MakeExact(Rectangle(6, 6, {7, 7})), 2));
    EXPECT_FALSE(AreApartBothWays(frame, MakeExact(Rectangle(6, 6, {7, 7})), 2.1));
    EXPECT_FALSE(AreApartBothWays(frame, MakeExact(Rectangle(1, 1, {2, 2})), 0)); // in the material
    EXPECT_FALSE(AreApartBothWays(frame, MakeExact(Rectangle(1, 1, {2, 2})), 0.5));
    EXPECT_FALSE(AreApartBothWays(frame, MakeExact(Rectangle(20, 20)), 0)); // hides the hole
    EXPECT_FALSE(AreApartBothWays(frame, MakeExact(Rectangle(30, 30, {-5, -5})), 0));
    contours.push_back(RoundContour({10, 10}, 2));
    const Shape island = MakeExact(contours);
    EXPECT_FALSE(AreApartBothWays(island, MakeExact(Rectangle(10, 10, {5, 5})), 0));
    EXPECT_FALSE(AreApartBothWays(island, Disc({10, 10}, 2), 0));
    EXPECT_FALSE(AreApartBothWays(island, Disc({10, 10}, 1), 0.1));
    EXPECT_FALSE(AreApartBothWays(island, Disc({10, 10}, 3), 0));
    EXPECT_TRUE(AreApartBothWays(island, Disc({6, 6}, 1), 0));
}

TEST(ZORNestSolverExactTest, TheOutsideOfASheetCountsAsARegion)
{
    const Shape outside(Polygon{Rectangle(100, 50), Rectangle(20, 20, {10, 10})}, Shape::Side::Outside);
    const auto isApart = [&](const Ring& ring, double distance) {
        return Exact::AreApart(MakeExact(ring), outside, distance);
    };
    EXPECT_TRUE(isApart(Rectangle(10, 50), 0));
    EXPECT_TRUE(isApart(Rectangle(60, 30, {35, 10}), 5));
    EXPECT_FALSE(isApart(Rectangle(60, 30, {35, 10}), 5.1));
    EXPECT_FALSE(isApart(Rectangle(10, 10, {15, 15}), 0)); // in the sheet's hole
    EXPECT_FALSE(isApart(Rectangle(20, 20, {10, 10}), 0));
    EXPECT_FALSE(isApart(Rectangle(40, 40, {5, 5}), 0)); // around it
    EXPECT_FALSE(isApart(Rectangle(40, 40, {5, 5}), 1));
    EXPECT_FALSE(isApart(Rectangle(10, 10, {200, 5}), 0));
    EXPECT_FALSE(isApart(Rectangle(10, 10, {200, 5}), 1));
    EXPECT_FALSE(isApart(Rectangle(10, 10, {-1.2e-6, 0}), 0));
    EXPECT_TRUE(isApart(Rectangle(10, 10, {-0.9e-6, 0}), 0));
}

TEST(ZORNestSolverExactTest, FlatArcsOfHugeCirclesAreExact)
{
    for (const double radius : {1e5, 1e7, 1e9, 1e11, 1e14}) {
        Contour bulging; // 100 wide, its lower side bulges downwards
        bulging.start = {0, 0};
        bulging.segments = {{{100, 0}, true, true, {50, std::sqrt(radius * radius - 2500)}},
                            {{100, 50}, false, true, {}},
                            {{0, 50}, false, true, {}}};
        const double sagitta = 2500 / (2 * radius);
        const Shape shape = MakeExact({bulging});
        EXPECT_NEAR(-sagitta, shape.GetBox().min.y, 2e-7) << radius;
        const auto isApart = [&](double y) {
            return AreApartBothWays(shape, MakeExact(Rectangle(300, 10, {-100, y - 10})), 0);
        };
        EXPECT_TRUE(isApart(-sagitta)) << radius;
        EXPECT_FALSE(isApart(-sagitta + 1.5e-6)) << radius;
    }
}

} // namespace ZORNestSolver::SolverShapes
