#include "sdk/ZORNesting/solver/SolverShapes.h"

#include <ZORNesting/solver/layout/ZORNestSolverLayout.h>

namespace ZORNestSolver::SolverShapes {
namespace {

constexpr double kPi = std::numbers::pi;

/// A sheet of that usable size within trims and a frame of 7.
SheetKind TrimmedSheet(double length, double width)
{
    SheetKind kind = Sheet(length + 14 + 3 + 5, width + 14 + 2 + 11);
    kind.leftTrim = 3;
    kind.rightTrim = 5;
    kind.bottomTrim = 2;
    kind.topTrim = 11;
    return kind;
}

Job MakeJob(const Item& item, const SheetKind& kind, double separation)
{
    Job job;
    job.items = {item};
    job.kinds = {kind};
    job.separation = separation;
    job.frameWidth = 7;
    return job;
}

void ExpectAllPlaced(const Job& job)
{
    const Solution solution = SolveInSteps(job, 3000);
    int ordered = 0;
    for (const Item& item : job.items)
        ordered += item.quantity;
    EXPECT_EQ(CountPlaced(solution), ordered);
    for (const UnplacedItem& unplaced : solution.unplaced)
        ADD_FAILURE() << unplaced.count << " of item " << unplaced.item << ": " << unplaced.reason;
}

Item Disc(double radius)
{
    Item item;
    item.contours = {RoundContour({12, 34}, radius)};
    return item;
}

} // namespace

TEST(ZORNestSolverFitTest, APartAsLargeAsTheUsableSheetFits)
{
    const Ring triangle{{0, 0}, {812.3, 0}, {0, 978.7}};
    for (const double separation : {0.0, 0.1, 10.0, 25.0}) {
        for (const bool mirrored : {false, true}) {
            for (const Ring& ring : {Rectangle(812.3, 978.7, {-5.1, 1000.3}), triangle}) {
                Item item = MakeItem(ring);
                item.mirrored = mirrored;
                ExpectAllPlaced(MakeJob(item, TrimmedSheet(812.3, 978.7), separation));
                item.grain90 = true; // only turned by a quarter
                ExpectAllPlaced(MakeJob(item, TrimmedSheet(978.7, 812.3), separation));
                item.orientation = kPi / 2;
                ExpectAllPlaced(MakeJob(item, TrimmedSheet(812.3, 978.7), separation));
            }
        }
    }
}

TEST(ZORNestSolverFitTest, APartThatIsLargerByAHairIsRefused)
{
    for (const double separation : {0.0, 10.0}) {
        const Job job =
            MakeJob(MakeItem(Rectangle(812.3 + 1e-5, 978.7)), TrimmedSheet(812.3, 978.7), separation);
        const Solution solution = SolveInSteps(job, 100);
        ASSERT_EQ(solution.unplaced.size(), 1U);
        EXPECT_EQ(solution.unplaced[0].reason, "larger than every sheet");
    }
}

TEST(ZORNestSolverFitTest, ADiscFitsASquareOfItsDiameter)
{
    for (const double room : {1000.0, 1000.5}) {
        for (const double separation : {0.0, 10.0}) {
            ExpectAllPlaced(MakeJob(Disc(500), TrimmedSheet(room, room), separation));
            Item turned = Disc(500);
            turned.orientation = 0.3;
            turned.flippable = true;
            ExpectAllPlaced(MakeJob(turned, TrimmedSheet(room, room), separation));
        }
    }
}

TEST(ZORNestSolverFitTest, AnArcThatReachesTheEdgesFits)
{
    Contour contour; // half a disc below a rectangle
    contour.start = {-200, 0};
    contour.segments = {
        {{200, 0}, true, true, {0, 0}}, {{200, 30}, false, true, {}}, {{-200, 30}, false, true, {}}};
    Item item;
    item.contours = {contour};
    ExpectAllPlaced(MakeJob(item, TrimmedSheet(400, 230), 10));
    item.grain270 = true;
    ExpectAllPlaced(MakeJob(item, TrimmedSheet(230, 400), 10));
}

TEST(ZORNestSolverFitTest, RowsThatFitExactlyAreFound)
{
    struct Row
    {
        double side;
        double separation;
        int copies;
    };
    for (const Row& row : {Row{485, 10, 2}, Row{320, 10, 3}, Row{490, 0, 2}, Row{245, 0, 4}}) {
        Item item = MakeItem(Rectangle(row.side, 100.1), row.copies);
        ExpectAllPlaced(MakeJob(item, TrimmedSheet(980, 100.1), row.separation));
        item.orientation = kPi / 2;
        ExpectAllPlaced(MakeJob(item, TrimmedSheet(100.1, 980), row.separation));
    }
}

TEST(ZORNestSolverFitTest, DiscsInARowFitExactly)
{
    for (const double separation : {0.0, 10.0}) {
        Item item = Disc(250);
        item.quantity = 3;
        ExpectAllPlaced(MakeJob(item, TrimmedSheet(1500 + 2 * separation, 500), separation));
    }
}

TEST(ZORNestSolverFitTest, ABarThatFitsWithinTwoDegreesIsPlaced)
{
    Item bar = MakeItem(Rectangle(1000, 20));
    bar.orientation = 1;
    bar.maxDeviation = kPi;
    const double width = 20 * std::cos(kPi / 180) + 1000 * std::sin(kPi / 180);
    for (const double separation : {0.0, 10.0}) {
        for (const bool mirrored : {false, true}) {
            bar.mirrored = mirrored;
            ExpectAllPlaced(MakeJob(bar, TrimmedSheet(1100, width), separation));
            SheetKind roll = TrimmedSheet(1100, width);
            roll.length = std::numeric_limits<double>::quiet_NaN();
            bar.quantity = 3;
            ExpectAllPlaced(MakeJob(bar, roll, separation));
            bar.quantity = 1;
        }
    }
}

TEST(ZORNestSolverFitTest, ABarThatFitsAtOneAngleIsPlaced)
{
    Item bar = MakeItem(Rectangle(1000 * std::numbers::sqrt2 - 20, 20));
    bar.maxDeviation = kPi / 2;
    ExpectAllPlaced(MakeJob(bar, TrimmedSheet(1000, 1000), 10));
    bar.deviationIncrement = kPi / 4; // among the steps
    ExpectAllPlaced(MakeJob(bar, TrimmedSheet(1000, 1000), 10));
    bar.deviationIncrement = kPi / 5; // not among them
    const Solution solution = SolveInSteps(MakeJob(bar, TrimmedSheet(1000, 1000), 10), 100);
    ASSERT_EQ(solution.unplaced.size(), 1U);
    EXPECT_EQ(solution.unplaced[0].reason, "larger than every sheet");
}

TEST(ZORNestSolverFitTest, SeveralBarsAtTheOnlyAngleShareASheet)
{
    Item bar = MakeItem(Rectangle(1000, 20), 4);
    bar.maxDeviation = kPi / 2;
    // Only within half a degree of 30 degrees and of 60 degrees is there room for a bar.
    ExpectAllPlaced(MakeJob(bar, Sheet(1500, 535), 5));
}

TEST(ZORNestSolverFitTest, APartFitsExactlyBesideADefect)
{
    for (const double separation : {0.0, 10.0}) {
        for (const double distance : {0.0, 3.0, 20.0}) {
            Job job = MakeJob(MakeItem(Rectangle(300, 200)), TrimmedSheet(400, 200), separation);
            job.defectSeparation = distance;
            job.kinds[0].defects = {{Rectangle(90, 90, {10 + 300 + distance, 50})}};
            ExpectAllPlaced(job);
        }
    }
}

TEST(ZORNestSolverFitTest, APartFillsAnIrregularSheet)
{
    const Ring corner{{0, 0}, {500, 0}, {500, 200}, {300, 200}, {300, 400}, {0, 400}};
    for (const double separation : {0.0, 10.0}) {
        Job job;
        job.items = {MakeItem(corner)};
        job.kinds = {Sheet(500, 400)};
        job.kinds[0].outline = {corner};
        job.separation = separation;
        ExpectAllPlaced(job);
    }
}

TEST(ZORNestSolverFitTest, RoomMayFallShortByRoundingOnly)
{
    Shape shape;
    shape.extent = {{0, 0}, {10, 5}};
    EXPECT_FALSE(GetRoom({{0, 0}, {10 - 1e-8, 5}}, shape).IsEmpty());
    EXPECT_TRUE(GetRoom({{0, 0}, {10 - 1e-6, 5}}, shape).IsEmpty());
    EXPECT_TRUE(GetRoom({{0, 0}, {10, 5 - 1e-6}}, shape).IsEmpty());
}

} // namespace ZORNestSolver::SolverShapes
