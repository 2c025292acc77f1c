#include "sdk/ZORNesting/solver/SolverShapes.h"

#include <ZORNesting/solver/proof/ZORNestSolverApart.h>

#include <numbers>

namespace ZORNestSolver::SolverShapes {
namespace {

/// The largest depth of a grid point in both polygons.
double SampleDepth(const Polygon& a, const Polygon& b)
{
    constexpr int kCount = 60;
    const Box box = GetBox(a);
    double depth = 0;
    for (int i = 0; i <= kCount; ++i) {
        for (int j = 0; j <= kCount; ++j) {
            const Point p = box.min + Point{box.GetWidth() * i / kCount, box.GetHeight() * j / kCount};
            if (IsInside(p, a) && IsInside(p, b))
                depth = std::max(depth, std::min(GetDistanceToBoundary(p, a), GetDistanceToBoundary(p, b)));
        }
    }
    return depth;
}

double GetSegmentDistance(Point a1, Point a2, Point b1, Point b2)
{
    if (DoSegmentsMeet(a1, a2, b1, b2))
        return 0;
    return std::min({GetDistanceToSegment(a1, b1, b2), GetDistanceToSegment(a2, b1, b2),
                     GetDistanceToSegment(b1, a1, a2), GetDistanceToSegment(b2, a1, a2)});
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

// To compare every two edges would take longer than a test may.
TEST(ZORNestSolverApartTest, CombsOfManyTeethAreJudgedQuickly)
{
    constexpr int kTeeth = 100000;
    Ring comb{{0, -5}, {4.0 * kTeeth, -5}};
    for (int i = kTeeth; i-- > 0;)
        comb.insert(comb.end(), {{4.0 * i + 1, 0}, {4.0 * i + 1, 10}, {4.0 * i, 10}, {4.0 * i, 0}});
    const auto turned = [&comb](double x, double y) { // its teeth point down
        return Transform({false, std::numbers::pi, {4.0 * kTeeth + x, y}}).Apply({comb});
    };
    EXPECT_TRUE(AreApart({comb}, turned(-1, 11), 1)); // teeth between teeth
    EXPECT_FALSE(AreApart({comb}, turned(-1, 11), 1.1));
    EXPECT_FALSE(AreApart({comb}, turned(-0.5, 11), 1));
    EXPECT_TRUE(AreApart({comb}, turned(-1, 10), 0)); // on the ground
    EXPECT_TRUE(AreApart({comb}, turned(0, 10), 0));  // side by side
    EXPECT_FALSE(AreApart({comb}, turned(-1, 9.9), 0));
}

TEST(ZORNestSolverApartTest, PolygonsThatAreTooNearToEarlierOnesAreLeftOut)
{
    const auto at = [](double x) { return Polygon{Rectangle(10, 10, {x, 0})}; };
    EXPECT_EQ(FindAllApart({at(0), at(11), at(5), at(-9), at(22)}, 1), (std::vector<size_t>{0, 1, 4}));
    EXPECT_EQ(FindAllApart({at(20), at(12), at(0), at(0)}, 1), (std::vector<size_t>{0, 2}));
    EXPECT_EQ(FindAllApart({at(0), at(0)}, 0), (std::vector<size_t>{0}));
    EXPECT_EQ(FindAllApart({}, 0), (std::vector<size_t>{}));
}

} // namespace ZORNestSolver::SolverShapes
