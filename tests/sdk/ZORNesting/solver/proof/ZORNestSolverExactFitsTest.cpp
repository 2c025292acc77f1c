#include "sdk/ZORNesting/solver/SolverOracle.h"
#include "sdk/ZORNesting/solver/SolverShapes.h"

#include <functional>

namespace ZORNestSolver::SolverShapes {
namespace {

constexpr double kDegree = std::numbers::pi / 180;

/// Every copy is placed, without a fault that the check or the oracle finds.
void ExpectAllPlaced(const Job& job, const std::string& name, double steps = 2000)
{
    const Solution solution = SolveInSteps(job, steps);
    int ordered = 0;
    for (const Item& item : job.items)
        ordered += item.quantity;
    EXPECT_EQ(CountPlaced(solution), ordered) << name;
    EXPECT_EQ(SolverOracle::FindFaults(job, solution), std::vector<std::string>()) << name;
}

/// A part as large as the usable part of a sheet of 100 x 60, less what the options take.
struct Option
{
    std::string name;
    std::function<void(Job&, Box&)> apply; // the box: what the part may fill
};

const std::vector<Option>& GetOptions()
{
    static const std::vector<Option> options{
        {"none", [](Job&, Box&) {}},
        {"separation", [](Job& job, Box&) { job.separation = 7; }},
        {"frame",
         [](Job& job, Box& box) {
             job.frameWidth = 3.3;
             box = box.Grown(-3.3);
         }},
        {"trims",
         [](Job& job, Box& box) {
             SheetKind& kind = job.kinds[0];
             kind.leftTrim = 1.7;
             kind.rightTrim = 2.9;
             kind.topTrim = 0.3;
             kind.bottomTrim = 5.1;
             box = {{box.min.x + 1.7, box.min.y + 5.1}, {box.max.x - 2.9, box.max.y - 0.3}};
         }},
        {"stack",
         [](Job& job, Box&) {
             job.stackSize = 3;
             job.items[0].quantity = 3;
             job.kinds[0].quantity = 3;
         }},
        {"cheapest mix", [](Job& job, Box&) { job.usageRule = UsageRule::BestMix; }},
        {"best size", [](Job& job, Box&) { job.usageRule = UsageRule::BestSize; }},
        {"defect beside", // keeps its distance exactly
         [](Job& job, Box& box) {
             job.defectSeparation = 2.2;
             job.kinds[0].defects = {{Rectangle(5, 60, {90, 0})}};
             box.max.x = std::min(box.max.x, 90 - 2.2);
         }},
        {"deviation", [](Job& job, Box&) { job.maxDeviation = 3 * kDegree; }},
        {"steps of deviation",
         [](Job& job, Box&) {
             job.maxDeviation = 90 * kDegree;
             job.deviationIncrement = 30 * kDegree;
         }},
        {"priority", [](Job& job, Box&) { job.items[0].priority = 5; }},
        {"roll", [](Job& job, Box&) { job.kinds[0].length = std::numeric_limits<double>::quiet_NaN(); }}};
    return options;
}

/// Ways in which a part of the size of the box is drawn.
struct Drawing
{
    std::string name;
    std::function<void(Item&, double, double)> draw; // width and height
};

const std::vector<Drawing>& GetDrawings()
{
    static const std::vector<Drawing> drawings{
        {"as it lies",
         [](Item& item, double width, double height) {
             item.contours = {MakeContour(Rectangle(width, height, {400, -300}))};
         }},
        {"upright, with a quarter turn",
         [](Item& item, double width, double height) {
             item.contours = {MakeContour(Reversed(Rectangle(height, width)))};
             item.grain90 = true;
         }},
        {"upright, oriented",
         [](Item& item, double width, double height) {
             item.contours = {MakeContour(Rectangle(height, width, {-20, 7}))};
             item.orientation = -90 * kDegree;
         }},
        {"mirrored",
         [](Item& item, double width, double height) {
             item.contours = {MakeContour({{0, 0}, {width, 0}, {width / 3, height}, {0, height / 2}})};
             item.mirrored = true;
         }},
        {"round ends", // bulges to its left and right
         [](Item& item, double width, double height) {
             const double r = height / 2;
             Contour contour;
             contour.start = {r, 0};
             contour.segments = {{{width - r, 0}, false, true, {}},
                                 {{width - r, height}, true, true, {width - r, r}},
                                 {{r, height}, false, true, {}},
                                 {{r, 0}, true, true, {r, r}}};
             item.contours = {contour};
         }}};
    return drawings;
}

Job MakeJob(const Drawing& drawing, const Option& first, const Option& second)
{
    Job job;
    job.kinds = {Sheet(100, 60)};
    job.items.resize(1);
    Box box{{0, 0}, {100, 60}};
    first.apply(job, box);
    if (second.name != first.name)
        second.apply(job, box);
    drawing.draw(job.items[0], box.GetWidth(), box.GetHeight());
    return job;
}

} // namespace

TEST(ZORNestSolverExactFitsTest, APartAsLargeAsTheUsablePartFitsWithEveryPairOfOptions)
{
    const std::vector<Option>& options = GetOptions();
    for (const Drawing& drawing : GetDrawings())
        for (size_t i = 0; i < options.size(); ++i)
            for (size_t k = i; k < options.size(); ++k)
                ExpectAllPlaced(MakeJob(drawing, options[i], options[k]),
                                drawing.name + ", " + options[i].name + ", " + options[k].name, 300);
}

TEST(ZORNestSolverExactFitsTest, DiscsFitExactly)
{
    for (const double separation : {0.0, 5.0}) {
        for (const double diameter : {1000.0, 999.5}) {
            Job job;
            job.separation = separation;
            job.kinds = {Sheet(1000, 1000)};
            Item disc;
            disc.contours = {RoundContour({123, 45}, diameter / 2)};
            job.items = {disc};
            ExpectAllPlaced(job, "two halves");
            Contour circle;
            circle.start = {diameter / 2, 0};
            circle.segments = {{circle.start, true, false, {}}};
            job.items[0].contours = {circle};
            ExpectAllPlaced(job, "one circle");
        }
    }
}

TEST(ZORNestSolverExactFitsTest, APartHardlyLowerThanTheSheetFitsWithASeparation)
{
    Job job;
    job.separation = 10;
    job.kinds = {Sheet(2000, 980)};
    job.items = {MakeItem({{0, 0}, {500, 0}, {480, 978}, {30, 970}})};
    ExpectAllPlaced(job, "978 of 980");
    job.kinds[0].width = 978;
    ExpectAllPlaced(job, "978 of 978");
    job.kinds[0].width = 978 - 2e-6;
    EXPECT_EQ(CountPlaced(SolveInSteps(job, 500)), 0);
}

TEST(ZORNestSolverExactFitsTest, OneAngleOfAContinuousRangeIsFound)
{
    // A bar on a sheet that is as high as the bar at 20 degrees, and as long.
    const Item bar = MakeItem(Rectangle(100, 5));
    const Box box = SolverOracle::GetBox(bar, {false, 20 * kDegree, {}});
    for (const double slack : {0.0, 1e-3, 0.1}) {
        Job job;
        job.items = {bar};
        job.maxDeviation = 45 * kDegree;
        job.kinds = {Sheet(box.GetWidth() + slack, box.GetHeight() + slack)};
        ExpectAllPlaced(job, "bar, slack " + std::to_string(slack));
        job.separation = 4;
        ExpectAllPlaced(job, "bar with separation, slack " + std::to_string(slack));
        job.kinds[0].length = std::numeric_limits<double>::quiet_NaN();
        ExpectAllPlaced(job, "bar on a roll, slack " + std::to_string(slack));
    }
}

TEST(ZORNestSolverExactFitsTest, AnExactFitNextToADefect)
{
    Job job;
    job.kinds = {Sheet(100, 60)};
    job.kinds[0].defects = {{Rectangle(20, 20, {80, 40})}};
    job.items = {MakeItem({{0, 0}, {100, 0}, {100, 40}, {80, 40}, {80, 60}, {0, 60}})};
    ExpectAllPlaced(job, "around a corner");
    job.separation = 3; // is between parts
    ExpectAllPlaced(job, "around a corner, with separation");
}

TEST(ZORNestSolverExactFitsTest, AnExactFitInAnIrregularSheet)
{
    Job job;
    job.kinds = {Sheet(100, 60)};
    job.kinds[0].outline = {{{0, 0}, {100, 0}, {0, 60}}};
    job.items = {MakeItem({{10, 10}, {110, 10}, {10, 70}})};
    ExpectAllPlaced(job, "triangle");
    job.items[0].contours = {MakeContour({{10, 10}, {-90, 10}, {10, 70}})};
    EXPECT_EQ(CountPlaced(SolveInSteps(job, 500)), 0);
    job.items[0].flippable = true;
    ExpectAllPlaced(job, "its mirror image");
}

TEST(ZORNestSolverExactFitsTest, RowsAndGridsFillASheetWithTheirSeparation)
{
    for (const double separation : {0.0, 0.3, 10.0}) {
        for (const bool hasFrame : {false, true}) {
            for (const int rows : {1, 2, 3}) {
                Job job;
                job.separation = separation;
                job.frameWidth = hasFrame ? 4 : 0;
                const double edges = 2 * job.frameWidth;
                job.kinds = {
                    Sheet(3 * 80 + 2 * separation + edges, rows * 30 + (rows - 1) * separation + edges)};
                job.items = {MakeItem(Rectangle(80, 30), 3 * rows)};
                ExpectAllPlaced(job,
                                "grid of " + std::to_string(rows) + " rows, " + std::to_string(separation));
            }
        }
    }
}

TEST(ZORNestSolverExactFitsTest, ARowFillsTheWidthOfARoll)
{
    for (const double separation : {0.0, 10.0}) {
        Job job;
        job.separation = separation;
        job.kinds = {Roll(2 * 485 + separation)};
        job.items = {MakeItem(Rectangle(100, 485), 4)};
        const Solution solution = SolveInSteps(job, 3000);
        EXPECT_EQ(CountPlaced(solution), 4);
        EXPECT_NEAR(solution.sheets[0].usedLength, 200 + separation, 1e-5); // two columns
    }
}

TEST(ZORNestSolverExactFitsTest, APartFillsTheHoleOfAnother)
{
    const Ring triangle{{20, 10}, {80, 10}, {30, 50}};
    const Ring corner{{20, 10}, {80, 10}, {80, 20}, {30, 20}, {30, 50}, {20, 50}};
    for (const double angle : {0.0, 30 * kDegree}) {
        for (const Ring& hole : {Rectangle(50, 40, {20, 10}), triangle, corner}) {
            Item frame = MakeItem(Rectangle(100, 60));
            frame.orientation = angle;
            const Box box = SolverOracle::GetBox(frame, {false, angle, {}});
            Item part = MakeItem(hole);
            part.orientation = angle;
            frame.contours.push_back(MakeContour(hole));
            Job job;
            job.kinds = {Sheet(box.GetWidth(), box.GetHeight(), 1)};
            job.items = {frame, part};
            ExpectAllPlaced(job, "hole of " + std::to_string(hole.size()) + " corners");
        }
    }
}

TEST(ZORNestSolverExactFitsTest, APartFillsTheHoleOfAnotherButForTheSeparation)
{
    Item frame = MakeItem(Rectangle(100, 60));
    frame.contours.push_back(MakeContour(Rectangle(50, 40, {20, 10})));
    Job job;
    job.separation = 2;
    job.kinds = {Sheet(100, 60, 1)};
    job.items = {frame, MakeItem(Rectangle(46, 36))};
    ExpectAllPlaced(job, "hole, with separation");
}

} // namespace ZORNestSolver::SolverShapes
