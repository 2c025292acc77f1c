#include "sdk/ZORNesting/solver/SolverShapes.h"

#include <ZORNesting/solver/geometry/ZORNestSolverPose.h>
#include <ZORNesting/solver/model/ZORNestSolverArc.h>
#include <ZORNesting/solver/model/ZORNestSolverSilhouette.h>

namespace ZORNestSolver::SolverShapes {
namespace {

constexpr double kPi = std::numbers::pi;

/// Random lines and arcs around the origin.
Contour RandomContour(Random& random, size_t corners)
{
    const Ring ring = RandomStar(random, corners, 10);
    Contour contour = MakeContour(ring);
    Point from = contour.start;
    for (Segment& segment : contour.segments) {
        if (random.Index(2) == 0) {
            const Point middle = (from + segment.end) * 0.5;
            const Point across{from.y - segment.end.y, segment.end.x - from.x};
            segment.isArc = true;
            segment.counterClockwise = random.Index(2) == 0;
            segment.centre = middle + across * random.Between(-1, 1);
        }
        from = segment.end;
    }
    return contour;
}

std::vector<Point> Sample(const Contour& contour)
{
    std::vector<Point> points{contour.start};
    Point from = contour.start;
    for (const Segment& segment : contour.segments) {
        const Arc arc(from, segment.end, segment.centre, segment.counterClockwise);
        for (int i = 1; segment.isArc && i <= 400; ++i)
            points.push_back(arc.Evaluate(i / 400.0));
        points.push_back(segment.end);
        from = segment.end;
    }
    return points;
}

Silhouette OfRectangle(double length, double width)
{
    return Silhouette({MakeContour(Rectangle(length, width, {3, -7}))});
}

} // namespace

TEST(ZORNestSolverSilhouetteTest, ReachesAsFarAsThePointsOfTheOutline)
{
    Random random(5);
    for (int i = 0; i < 60; ++i) {
        const Contour contour = RandomContour(random, 3 + random.Index(12));
        const Silhouette silhouette({contour});
        const std::vector<Point> points = Sample(contour);
        for (int k = 0; k < 40; ++k) {
            const double direction = random.Between(-7, 7);
            double farthest = -std::numeric_limits<double>::infinity();
            for (const Point p : points)
                farthest = std::max(farthest, Dot(p, {std::cos(direction), std::sin(direction)}));
            EXPECT_GE(silhouette.GetReach(direction), farthest - 1e-12);
            EXPECT_LE(silhouette.GetReach(direction), farthest + 0.001);
        }
    }
}

TEST(ZORNestSolverSilhouetteTest, TheBoxIsThatOfThePlacedOutline)
{
    Random random(6);
    for (int i = 0; i < 60; ++i) {
        const Contour contour = RandomContour(random, 3 + random.Index(12));
        const bool mirrored = random.Index(2) == 0;
        const double angle = random.Between(-4, 4);
        const Transform transform({mirrored, angle, {}});
        Box exact;
        for (const Point p : Sample(contour))
            exact.Add(transform.Apply(p));
        const Box box = Silhouette({contour}).GetBox(mirrored, angle);
        EXPECT_NEAR(box.min.x, exact.min.x, 0.001);
        EXPECT_NEAR(box.min.y, exact.min.y, 0.001);
        EXPECT_NEAR(box.max.x, exact.max.x, 0.001);
        EXPECT_NEAR(box.max.y, exact.max.y, 0.001);
        EXPECT_TRUE(box.Grown(1e-12).Contains(exact));
    }
}

TEST(ZORNestSolverSilhouetteTest, TheBoxOfADiscIsExactAtEveryAngle)
{
    const Silhouette disc({RoundContour({3, 4}, 500)});
    for (const double angle : {0.0, 0.1, kPi / 2, 2.0}) {
        EXPECT_NEAR(disc.GetBox(false, angle).GetWidth(), 1000, 1e-9);
        EXPECT_NEAR(disc.GetBox(true, angle).GetHeight(), 1000, 1e-9);
    }
}

TEST(ZORNestSolverSilhouetteTest, ABarFitsAtTheAnglesThatGeometrySays)
{
    // The bar of 1000 x 20 is 500 wide where 1000 sin a + 20 cos a = 500.
    const double opening = std::asin(500 / std::hypot(1000.0, 20.0)) - std::atan(0.02);
    const double infinity = std::numeric_limits<double>::infinity();
    for (const bool mirrored : {false, true}) {
        const auto ranges = OfRectangle(1000, 20).FindFitting(mirrored, 0, kPi / 2, infinity, 500);
        ASSERT_EQ(ranges.size(), 1U);
        EXPECT_NEAR(ranges[0].from, -opening, 1e-9);
        EXPECT_NEAR(ranges[0].to, opening, 1e-9);
    }
}

TEST(ZORNestSolverSilhouetteTest, ASingleAngleIsFound)
{
    // A bar along the diagonal of a square of 1000, which it touches with all four corners.
    const double length = 1000 * std::numbers::sqrt2 - 20;
    const auto ranges = OfRectangle(length, 20).FindFitting(false, 0, kPi, 1000, 1000);
    ASSERT_EQ(ranges.size(), 4U); // at 45, 135, ... degrees
    for (const AngleRange& range : ranges) {
        EXPECT_NEAR(std::abs(std::remainder(range.from, kPi / 2)), kPi / 4, 1e-6);
        EXPECT_LT(range.to - range.from, 1e-6);
    }
    EXPECT_TRUE(OfRectangle(length + 1e-5, 20).FindFitting(false, 0, kPi, 1000, 1000).empty());
    EXPECT_TRUE(OfRectangle(length, 20).FindFitting(false, 0, kPi / 4 - 1e-4, 1000, 1000).empty());
}

TEST(ZORNestSolverSilhouetteTest, TheAnglesFoundAreThoseThatFit)
{
    Random random(8);
    int fitting = 0;
    for (int i = 0; i < 200; ++i) {
        const Silhouette silhouette({RandomContour(random, 3 + random.Index(9))});
        const bool mirrored = random.Index(2) == 0;
        const double middle = random.Between(-4, 4);
        const double deviation = random.Between(0, kPi);
        const Box box = silhouette.GetBox(mirrored, middle);
        const double length = box.GetWidth() * random.Between(0.7, 1.3);
        const double width = box.GetHeight() * random.Between(0.7, 1.3);
        const auto ranges = silhouette.FindFitting(mirrored, middle, deviation, length, width);
        for (int k = 0; k <= 200; ++k) {
            const double angle = middle + deviation * (k / 100.0 - 1);
            const Box turned = silhouette.GetBox(mirrored, angle);
            const double excess = std::max(turned.GetWidth() - length, turned.GetHeight() - width);
            const bool isFound = std::any_of(ranges.begin(), ranges.end(), [angle](const AngleRange& r) {
                return angle >= r.from - 1e-9 && angle <= r.to + 1e-9;
            });
            fitting += isFound ? 1 : 0;
            if (std::abs(excess) > 1e-6) {
                EXPECT_EQ(isFound, excess < 0) << angle;
            }
        }
    }
    EXPECT_GT(fitting, 2000);
    EXPECT_LT(fitting, 38000);
}

TEST(ZORNestSolverSilhouetteTest, TheShortestRotationIsTheBestOfAllThatFit)
{
    Random random(9);
    int limited = 0;
    for (int i = 0; i < 200; ++i) {
        const Silhouette silhouette({RandomContour(random, 3 + random.Index(9))});
        const bool mirrored = random.Index(2) == 0;
        const double middle = random.Between(-4, 4);
        const double deviation = i % 5 == 0 ? 0 : random.Between(0, kPi);
        const bool isOpen = i % 3 == 0;
        const double width = isOpen
                                 ? std::numeric_limits<double>::infinity()
                                 : silhouette.GetBox(mirrored, middle).GetHeight() * random.Between(0.8, 1.2);
        const auto shortest = silhouette.FindShortest(mirrored, middle, deviation, width);
        double best = std::numeric_limits<double>::infinity();
        for (int k = 0; k <= 1000; ++k) {
            const Box box = silhouette.GetBox(mirrored, middle + deviation * (k / 500.0 - 1));
            if (box.GetHeight() <= width)
                best = std::min(best, box.GetWidth());
        }
        limited += shortest ? 0 : 1;
        if (!shortest) {
            EXPECT_TRUE(std::isinf(best));
            continue;
        }
        const Box box = silhouette.GetBox(mirrored, shortest->angle);
        EXPECT_NEAR(box.GetWidth(), shortest->length, 1e-9);
        EXPECT_LE(box.GetHeight(), width + kFitTolerance);
        EXPECT_LE(std::abs(shortest->angle - middle), deviation + 1e-12);
        EXPECT_LE(shortest->length, best + 1e-9);
    }
    EXPECT_GT(limited, 5);
}

TEST(ZORNestSolverSilhouetteTest, ARoundEndIsShortestBetweenItsCorners)
{
    // A disc and a bar from its center: shortest wherever the bar hides behind the disc.
    const Silhouette silhouette({RoundContour({0, 0}, 10), MakeContour(Rectangle(30, 1, {0, -0.5}))});
    const auto shortest = silhouette.FindShortest(false, 0.3, 1, std::numeric_limits<double>::infinity());
    ASSERT_TRUE(shortest);
    const Box box = silhouette.GetBox(false, shortest->angle);
    EXPECT_NEAR(box.GetWidth(), shortest->length, 1e-12);
    EXPECT_NEAR(shortest->angle, 1.3, 1e-12);
}

} // namespace ZORNestSolver::SolverShapes
