#include "ZORNestSolverApart.h"

#include "SolverShapes.h"
#include "ZORNestSolverPoles.h"

using namespace SolverShapes;

namespace {

/// The largest depth of a grid point in both polygons.
double SampleDepth(const Polygon& a, const Polygon& b)
{
    constexpr int count = 60;
    const Box box = GetBox(a);
    double depth = 0;
    for (int i = 0; i <= count; ++i) {
        for (int j = 0; j <= count; ++j) {
            const Point p = box.min + Point{box.GetWidth() * i / count, box.GetHeight() * j / count};
            if (IsInside(p, a) && IsInside(p, b))
                depth = std::max(depth, std::min(GetDistanceToBoundary(p, a), GetDistanceToBoundary(p, b)));
        }
    }
    return depth;
}

double MeasureDistance(const Polygon& a, const Polygon& b)
{
    double distance = std::numeric_limits<double>::infinity();
    for (const Ring& first : a)
        for (const Ring& second : b)
            for (size_t i = 0; i < first.size(); ++i)
                for (size_t j = 0; j < second.size(); ++j)
                    distance =
                        std::min(distance, GetSegmentDistance(first[i], first[(i + 1) % first.size()],
                                                              second[j], second[(j + 1) % second.size()]));
    return IsInside(a[0][0], b) || IsInside(b[0][0], a) ? 0 : distance;
}

} // namespace

TEST(ZORNestSolverApartTest, RandomPairsAreJudgedAsByBruteForce)
{
    Random random(77);
    int overlaps = 0;
    for (int i = 0; i < 400; ++i) {
        const Polygon a{RandomStar(random, 9, 10)};
        Polygon b{RandomStar(random, 7, 8)};
        if (i % 4 == 0) // a ring around the origin
            b = {Rectangle(40, 40, {-20, -20}), Reversed(RandomStar(random, 11, 16))};
        const Pose pose{i % 2 == 1, random.Between(0, 6), {random.Between(-16, 16), random.Between(-16, 16)}};
        const Polygon placed = Transform(pose).Apply(b);
        const double depth = SampleDepth(a, placed);
        const double distance = MeasureDistance(a, placed);
        if (depth > 1e-3) {
            EXPECT_FALSE(AreApart(a, placed, 0)) << i;
            ++overlaps;
        }
        if (distance > 0) {
            EXPECT_TRUE(AreApart(a, placed, 0)) << i;
        }
        for (const double separation : {0.5, 3.0})
            EXPECT_EQ(AreApart(a, placed, separation), distance >= separation) << i;
    }
    EXPECT_GT(overlaps, 50);
}

TEST(ZORNestSolverApartTest, PiecesAreHeldOneByOne)
{
    const Polygon frame{Rectangle(40, 40), Reversed(Rectangle(20, 20, {10, 10}))};
    const Ring outside = Rectangle(5, 5, {50, 0});
    const Ring inHole = Rectangle(20, 20, {10, 10}); // fills it
    const Ring held = Rectangle(4, 4, {3, 3});
    EXPECT_TRUE(AreApart(frame, {outside, inHole}, 0));
    EXPECT_TRUE(AreApart({outside, inHole}, frame, 0));
    for (const Polygon& pieces : {Polygon{outside, held}, Polygon{inHole, held, outside}}) {
        for (const double separation : {0.0, 0.5}) {
            EXPECT_FALSE(AreApart(frame, pieces, separation));
            EXPECT_FALSE(AreApart(pieces, frame, separation));
        }
    }
    EXPECT_FALSE(AreApart(frame, frame, 0)); // no edge lies deep inside of the other one
}

TEST(ZORNestSolverApartTest, DeepPointsAreFoundInWantedPiecesOnly)
{
    const Polygon polygon{Rectangle(40, 40), Reversed(Rectangle(20, 20, {10, 10})),
                          Rectangle(10, 10, {50, 0})};
    EXPECT_EQ(FindDeepPoints(polygon).size(), 2U);
    const auto isSmall = [](const Ring& ring) { return GetSignedArea(ring) < 200; };
    const std::vector<Point> points = FindDeepPoints(polygon, isSmall);
    ASSERT_EQ(points.size(), 1U);
    EXPECT_NEAR(points[0].x, 55, 0.1);
    EXPECT_NEAR(points[0].y, 5, 0.1);
    EXPECT_TRUE(FindDeepPoints(polygon, [](const Ring&) { return false; }).empty());
}
