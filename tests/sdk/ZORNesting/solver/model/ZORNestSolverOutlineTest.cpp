#include "sdk/ZORNesting/solver/SolverShapes.h"

#include <ZORNesting/solver/geometry/ZORNestSolverOffset.h>
#include <ZORNesting/solver/geometry/ZORNestSolverPoles.h>
#include <ZORNesting/solver/layout/ZORNestSolverItemType.h>
#include <ZORNesting/solver/layout/ZORNestSolverLayout.h>
#include <ZORNesting/solver/model/ZORNestSolverArc.h>
#include <ZORNesting/solver/model/ZORNestSolverFlatten.h>

namespace ZORNestSolver::SolverShapes {
namespace {

/// A sheet of 100 x 40 with a V-cut from the upper edge that reaches down to the given height.
Ring CutPlate(double height)
{
    return {{0, 0}, {100, 0}, {100, 40}, {60, 40}, {50, height}, {40, 40}, {0, 40}};
}

/// Two equal triangles that meet in the origin.
const Ring kBowTie{{-20, -10}, {20, 10}, {20, -10}, {-20, 10}};

enum class Turning { CounterClockwise, Clockwise };

Segment ArcTo(Point end, Point centre, Turning turning)
{
    return {end, true, turning == Turning::CounterClockwise, centre};
}

/// Two circles that meet in the origin, drawn in one go.
Contour FigureEight(double radius)
{
    Contour contour;
    contour.segments = {ArcTo({2 * radius, 0}, {radius, 0}, Turning::CounterClockwise),
                        ArcTo({}, {radius, 0}, Turning::CounterClockwise),
                        ArcTo({-2 * radius, 0}, {-radius, 0}, Turning::Clockwise),
                        ArcTo({}, {-radius, 0}, Turning::Clockwise)};
    return contour;
}

Polygon OuterOf(const std::vector<Contour>& contours)
{
    std::string reason;
    Polygon polygon = MakeOuterPolygon(contours, reason);
    EXPECT_EQ(reason, "");
    return polygon;
}

OutlineLoss GetLoss(const std::vector<Contour>& contours)
{
    std::string reason;
    OutlineLoss loss = OutlineLoss::None;
    EXPECT_FALSE(MakeOuterPolygon(contours, reason, NeverInterrupted, &loss).empty());
    return loss;
}

OutlineLoss GetLossOfHull(const std::vector<Contour>& contours)
{
    std::string reason;
    OutlineLoss loss = OutlineLoss::None;
    EXPECT_FALSE(MakeOuterHull(contours, reason, &loss).empty());
    return loss;
}

ItemType Prepared(const Item& item, double separation = 0)
{
    Job job;
    job.separation = separation;
    std::string reason;
    ItemType type = PrepareItem(item, job, reason);
    EXPECT_EQ(reason, "");
    return type;
}

bool DoCollide(const ItemType& a, const ItemType& b, Point offset)
{
    OutlineTest test;
    const Point between = offset + b.reference - a.reference;
    return DoPolesOverlap(a.base, b.base, between) || test.DoCollide(a.base, b.base, between);
}

} // namespace

TEST(ZORNestSolverTouchingOutlineTest, AVCutThroughTheWholePartKeepsBothHalves)
{
    for (const double height : {0.0, 1e-9, -1e-9, -5.0}) {
        const Polygon polygon = OuterOf({MakeContour(CutPlate(height))});
        EXPECT_NEAR(GetArea(polygon), 100 * 40 - 10 * 40, 45) << height;
        EXPECT_TRUE(IsInside({5, 20}, polygon)) << height;
        EXPECT_TRUE(IsInside({95, 20}, polygon)) << height;
        EXPECT_FALSE(IsInside({50, 30}, polygon)) << height;
    }
}

TEST(ZORNestSolverTouchingOutlineTest, NothingMayLieOnEitherHalf)
{
    const ItemType coin = Prepared(MakeItem(Rectangle(6, 6)));
    for (const double separation : {0.0, 2.0}) {
        for (const Ring& ring : {CutPlate(0), kBowTie}) {
            const ItemType plate = Prepared(MakeItem(ring), separation);
            const Polygon outer = OuterOf({MakeContour(ring)});
            int free = 0;
            for (double x = -30.01; x < 110; x += 3.7) {
                for (double y = -20; y < 50; y += 3.1) {
                    const Polygon placed{Rectangle(6, 6, {x, y})};
                    const bool overlaps = std::any_of(placed[0].begin(), placed[0].end(),
                                                      [&](Point p) { return IsInside(p, outer); })
                                          || IsInside({x + 3, y + 3}, outer);
                    const bool collide = DoCollide(plate, coin, {x, y});
                    EXPECT_EQ(collide, DoCollide(coin, plate, Point{} - Point{x, y}));
                    if (overlaps) {
                        EXPECT_TRUE(collide) << x << ' ' << y;
                    }
                    free += collide ? 0 : 1;
                }
            }
            EXPECT_GT(free, 100);
        }
    }
}

TEST(ZORNestSolverTouchingOutlineTest, ASymmetricFigureEightHasAnArea)
{
    EXPECT_NEAR(GetArea(OuterOf({MakeContour(kBowTie)})), 400, 1e-3);
    EXPECT_NEAR(GetEnclosedArea(MakeContour(kBowTie)), 400, 1e-3);
    const Polygon rings = OuterOf({FigureEight(10)});
    EXPECT_GT(GetArea(rings), 2 * std::numbers::pi * 100);
    EXPECT_LT(GetArea(rings), 2 * std::numbers::pi * 100 * 1.003);
    for (const double side : {-1.0, 1.0}) {
        for (int i = 0; i < 360; ++i) {
            const double angle = i * std::numbers::pi / 180;
            const Point p{side * (10 + 9.9999 * std::cos(angle)), 9.9999 * std::sin(angle)};
            EXPECT_TRUE(IsInside(p, rings)) << i;
        }
    }
}

TEST(ZORNestSolverTouchingOutlineTest, PiecesAreNestedAsOnePart)
{
    for (const Ring& ring : {CutPlate(0), kBowTie}) {
        Job job;
        job.items = {MakeItem(ring, 3), MakeItem(Rectangle(5, 5), 20)};
        job.kinds = {Sheet(210, 90, 2)};
        const Solution solution = SolveInSteps(job, 2000);
        EXPECT_EQ(CountPlaced(solution), 23);
    }
}

TEST(ZORNestSolverTouchingOutlineTest, AnIslandInAHoleIsMaterial)
{
    const std::vector<Contour> contours{MakeContour(Rectangle(100, 100)),
                                        MakeContour(Rectangle(80, 80, {10, 10})),
                                        MakeContour(Rectangle(20, 20, {40, 40}))};
    const Polygon polygon = OuterOf(contours);
    EXPECT_NEAR(GetArea(polygon), 10000 - 6400 + 400, 1e-6);
    EXPECT_TRUE(IsInside({50, 50}, polygon));
    EXPECT_FALSE(IsInside({20, 50}, polygon));
    Item frame;
    frame.contours = contours;
    for (const double separation : {0.0, 3.0}) {
        const ItemType type = Prepared(frame, separation);
        const ItemType coin = Prepared(MakeItem(Rectangle(4, 4)));
        EXPECT_TRUE(DoCollide(type, coin, {48, 48})) << separation;  // on the island
        EXPECT_FALSE(DoCollide(type, coin, {20, 48})) << separation; // beside it
        EXPECT_TRUE(DoCollide(type, coin, {3, 48})) << separation;   // on the frame
    }
}

TEST(ZORNestSolverTouchingOutlineTest, TheBodyHoldsAllThatIsDrawn)
{
    Random random(21);
    for (int i = 0; i < 100; ++i) {
        Ring ring; // crosses itself at will
        for (int k = 0; k < 8; ++k)
            ring.push_back({random.Between(-10, 10), random.Between(-10, 10)});
        Contour contour = MakeContour(ring);
        Point from = contour.start;
        for (Segment& segment : contour.segments) {
            if (random.Index(2) == 0)
                segment = ArcTo(segment.end, (from + segment.end) * 0.5,
                                random.Index(2) == 0 ? Turning::CounterClockwise : Turning::Clockwise);
            from = segment.end;
        }
        const Polygon polygon = OuterOf({contour});
        from = contour.start;
        for (const Segment& segment : contour.segments) {
            const Arc arc(from, segment.end, segment.centre, segment.counterClockwise);
            for (int k = 1; segment.isArc && k < 50; ++k) {
                const Point p = arc.Evaluate(k / 50.0);
                EXPECT_TRUE(IsInside(p, polygon) || GetDistanceToBoundary(p, polygon) < 1e-6) << i;
            }
            from = segment.end;
        }
    }
}

TEST(ZORNestSolverArcOutlineTest, TheTailOfAnArcBelongsToThePart)
{
    Contour contour; // the arc ends on its circle, 10 mm before the end
    contour.start = {50, 0};
    contour.segments = {ArcTo({-60, 0}, {}, Turning::CounterClockwise),
                        {{-60, -30}, false, true, {}},
                        {{50, -30}, false, true, {}}};
    const Polygon polygon = OuterOf({contour});
    EXPECT_NEAR(GetArea(polygon), std::numbers::pi * 1250 + 110 * 30, 5);
    EXPECT_NEAR(GetSignedArea(contour), std::numbers::pi * 1250 + 110 * 30, 1e-9);
    EXPECT_NEAR(GetLength(contour), std::numbers::pi * 50 + 10 + 30 + 110, 1e-9);
    EXPECT_NEAR(GetBox(polygon).min.x, -60, 1e-9);
    EXPECT_NEAR(GetBox(polygon).max.y, 50, 1e-9);
    EXPECT_TRUE(IsInside({-59, -0.1}, polygon));
    EXPECT_FALSE(IsInside({-59, 1}, polygon));
}

TEST(ZORNestSolverArcOutlineTest, CoincidingEndsMakeACircleAndTinyAnglesAChord)
{
    Contour circle;
    circle.start = {30, 0};
    circle.segments = {ArcTo({30 + 1e-12, 1e-12}, {}, Turning::Clockwise)};
    EXPECT_NEAR(std::abs(GetSignedArea(circle)), std::numbers::pi * 900, 1e-6);
    EXPECT_NEAR(GetBox(OuterOf({circle})).GetWidth(), 60, 1e-9);
    Contour plate = MakeContour(Rectangle(100, 50)); // its lower edge is as good as straight
    plate.segments[0] = ArcTo({100, 0}, {50, 1e15}, Turning::CounterClockwise);
    const Polygon polygon = OuterOf({plate});
    EXPECT_EQ(polygon.size(), 1U);
    EXPECT_EQ(polygon[0].size(), 4U);
    EXPECT_NEAR(GetArea(polygon), 5000, 1e-9);
}

TEST(ZORNestSolverArcOutlineTest, HugeRadiiAndManyArcsGiveFewCorners)
{
    Contour circle = RoundContour({0, 0}, 1e9);
    EXPECT_LE(OuterOf({circle})[0].size(), 20000U);
    Contour flat = MakeContour(Rectangle(100, 50));
    flat.segments[0] = ArcTo({100, 0}, {50, 1e9}, Turning::CounterClockwise);
    EXPECT_LT(OuterOf({flat})[0].size(), 20U);
    std::vector<Contour> sieve{MakeContour(Rectangle(2000, 2000))};
    for (int i = 0; i < 40; ++i)
        for (int k = 0; k < 40; ++k)
            sieve.push_back(RoundContour({25.0 + i * 49, 25.0 + k * 49}, 24));
    size_t corners = 0;
    for (const Ring& ring : OuterOf(sieve))
        corners += ring.size();
    EXPECT_LT(corners, 100000U);
}

TEST(ZORNestSolverArcOutlineTest, OnlyArcsWithTooFewCornersAreCoarse)
{
    std::vector<Contour> sieve{MakeContour(Rectangle(2000, 2000))};
    for (int i = 0; i < 40; ++i)
        for (int k = 0; k < 40; ++k)
            sieve.push_back(RoundContour({25.0 + i * 49, 25.0 + k * 49}, 24));
    Contour bow = MakeContour(Rectangle(100, 50));
    bow.segments[0] = ArcTo({100, 0}, {50, 1e9}, Turning::CounterClockwise);
    EXPECT_EQ(GetLoss(sieve), OutlineLoss::Coarse);
    EXPECT_EQ(GetLoss({RoundContour({0, 0}, 1e9)}), OutlineLoss::Coarse);
    EXPECT_EQ(GetLoss({sieve.begin(), sieve.begin() + 200}), OutlineLoss::None);
    EXPECT_EQ(GetLoss({bow}), OutlineLoss::None);
    for (const double radius : {1e-3, 1.0, 500.0, 1e5})
        EXPECT_EQ(GetLoss({RoundContour({3, 4}, radius)}), OutlineLoss::None) << radius;
}

TEST(ZORNestSolverArcOutlineTest, AHullLosesNothingOfAConvexOutline)
{
    const Ring corner{{0, 0}, {50, 0}, {50, 50}, {40, 50}, {40, 10}, {0, 10}};
    EXPECT_EQ(GetLossOfHull({MakeContour(Rectangle(10, 20))}), OutlineLoss::None);
    EXPECT_EQ(GetLossOfHull({RoundContour({0, 0}, 100)}), OutlineLoss::None);
    EXPECT_EQ(GetLossOfHull({MakeContour(corner)}), OutlineLoss::Hull);
    EXPECT_EQ(GetLossOfHull({RoundContour({0, 0}, 100), RoundContour({0, 0}, 10)}), OutlineLoss::Hull);
    EXPECT_EQ(GetLossOfHull({MakeContour(kBowTie)}), OutlineLoss::Hull);
}

TEST(ZORNestSolverArcOutlineTest, TangentsTouchWhereAnArcReachesFarthest)
{
    for (const double start : {0.0, 0.3, 2.0}) {
        Contour circle;
        circle.start = {500 * std::cos(start), 500 * std::sin(start)};
        circle.segments = {ArcTo(circle.start, {}, Turning::CounterClockwise)};
        const Box box = GetBox(OuterOf({circle}));
        EXPECT_NEAR(box.min.x, -500, 1e-9);
        EXPECT_NEAR(box.min.y, -500, 1e-9);
        EXPECT_NEAR(box.max.x, 500, 1e-9);
        EXPECT_NEAR(box.max.y, 500, 1e-9);
    }
}

TEST(ZORNestSolverArcOutlineTest, ManyArcsThatTouchEachOtherByRoundingAreMeasuredInNoTime)
{
    // The ends of the arcs differ by rounding: to clean them would take longer than a test may.
    constexpr int kCount = 20000;
    constexpr double kRadius = 1000;
    Contour contour{{0, 0}, {{{100, 0}, false, true, {}}, {{100, 50}, false, true, {}}}};
    for (int i = 0; i < kCount; ++i) {
        const double from = 100 - 100.0 * i / kCount;
        const double to = 100 - 100.0 * (i + 1) / kCount;
        const double height = std::sqrt(kRadius * kRadius - (from - to) * (from - to) / 4);
        contour.segments.push_back({{to, 50}, true, true, {(from + to) / 2, 50 - height}});
    }
    EXPECT_NEAR(GetEnclosedArea(contour), 5000, 1e-3);
    std::string reason;
    EXPECT_NEAR(GetArea(MakeOuterPolygon({contour}, reason)), 5000, 1e-3);
    EXPECT_EQ(reason, "");
    const Ring ring = Flatten(contour, ArcSide::Chords, ChooseFineness({contour}, 100));
    EXPECT_FALSE(IsSimple({ring}));
    EXPECT_NE(GetLossOfTangled({ring}), OutlineLoss::None);
}

} // namespace ZORNestSolver::SolverShapes
