#include "sdk/ZORNesting/solver/SolverShapes.h"

#include <ZORNesting/solver/plan/ZORNestSolverBound.h>

namespace ZORNestSolver::SolverShapes {
namespace {

constexpr double kDegree = std::numbers::pi / 180;

/// A part of 100 x 90 mm, turned by 20 degrees, that may deviate by 15 degrees.
Job MakeTurnedJob(double separation)
{
    Job job;
    job.items = {MakeItem(Rectangle(100, 90))};
    job.items[0].orientation = 20 * kDegree;
    job.items[0].maxDeviation = 15 * kDegree;
    job.kinds = {Sheet(300, 300)};
    job.separation = separation;
    return job;
}

double GetTurnedLength(double degrees)
{
    return 100 * std::cos(degrees * kDegree) + 90 * std::sin(degrees * kDegree);
}

/// The part of the job at the left edge of a sheet.
NestedSheet MakeTurnedSheet(double degrees)
{
    NestedSheet sheet;
    sheet.usedLength = 300;
    sheet.placements = {At(0, {90 * std::sin(degrees * kDegree), 0}, degrees * kDegree)};
    return sheet;
}

} // namespace

TEST(ZORNestSolverBoundTest, APartIsShortestOnlyAtTheBestOfItsFreeAngles)
{
    for (const double separation : {0.0, 1.0, 20.0, 60.0}) {
        const Job job = MakeTurnedJob(separation);
        Control control;
        const PreparedJob prepared(job, Budget(control, Budget::Clock::Steps, 0));
        EXPECT_TRUE(IsShortest(prepared, MakeTurnedSheet(5))) << separation;
        for (const double degrees : {5.001, 5.9, 10.0, 20.0, 35.0})
            EXPECT_FALSE(IsShortest(prepared, MakeTurnedSheet(degrees))) << separation << " " << degrees;
    }
}

TEST(ZORNestSolverBoundTest, TheBestAngleFitsTheHeightOfTheSheet)
{
    Job job = MakeTurnedJob(0);
    job.items[0].orientation = 80 * kDegree; // shorter and higher, the more it is turned
    job.kinds[0].width = 100 * std::sin(85 * kDegree) + 90 * std::cos(85 * kDegree);
    job.items[0].maxDeviation = 10 * kDegree;
    const Solution low = SolveWith(job, Budget::Clock::Steps, 20000, 20000);
    ASSERT_EQ(CountPlaced(low), 1);
    EXPECT_NEAR(low.sheets[0].remnantLength, 300 - 90, 1e-6);
    job.kinds[0].width = 99;
    EXPECT_EQ(CountPlaced(SolveWith(job, Budget::Clock::Steps, 20000, 20000)), 0);
}

TEST(ZORNestSolverBoundTest, ASinglePartIsPushedToTheLeftAtItsBestAngle)
{
    for (const double separation : {0.0, 20.0, 60.0}) {
        const Solution solution = SolveWith(MakeTurnedJob(separation), Budget::Clock::Steps, 20000, 20000);
        ASSERT_EQ(CountPlaced(solution), 1);
        EXPECT_NEAR(solution.sheets[0].remnantLength, 300 - separation - GetTurnedLength(5), 1e-6)
            << separation;
    }
}

TEST(ZORNestSolverBoundTest, ThePolygonAroundAnArcProvesNoNumberOfSheets)
{
    // Two discs have less area than a sheet, but the polygons around them have more.
    Job job;
    job.items = {MakeItem(Rectangle(1, 1), 2)};
    job.items[0].contours = {RoundContour({50, 50}, 50)};
    const double area = 2 * std::numbers::pi * 50 * 50;
    job.kinds = {Sheet(area * (1 + 1e-5) / 125, 125, 2)};
    Control control;
    const PreparedJob prepared(job, Budget(control, Budget::Clock::Steps, 0));
    ASSERT_GT(2 * prepared.types[0]->area, prepared.areas[0].area);
    JobPlan plan;
    plan.left = {0};
    for (int i = 0; i < 2; ++i) {
        NestedSheet sheet;
        sheet.placements = {At(0, {})};
        plan.sheets.push_back(sheet);
    }
    Measure(plan, prepared);
    EXPECT_FALSE(IsCheapest(prepared, {0}, plan));
    job.kinds[0].width *= 1 - 2e-5; // no longer enough for both
    const PreparedJob smaller(job, Budget(control, Budget::Clock::Steps, 0));
    Measure(plan, smaller);
    EXPECT_TRUE(IsCheapest(smaller, {0}, plan));
}

TEST(ZORNestSolverBoundTest, HolesTakeNoAreaInTheProof)
{
    Job job;
    job.items = {MakeItem(Rectangle(100, 100), 2)};
    job.items[0].contours.push_back(RoundContour({50, 50}, 40));
    const double area = 10000 - std::numbers::pi * 40 * 40;
    Control control;
    NestedSheet sheet;
    sheet.placements = {At(0, {}), At(0, {})};
    const auto isShortest = [&](double height) {
        job.kinds = {Sheet(1000, height)};
        const PreparedJob prepared(job, Budget(control, Budget::Clock::Steps, 0));
        return IsShortest(prepared, sheet);
    };
    EXPECT_TRUE(isShortest(2 * area / 100 * (1 - 1e-6)));
    sheet.placements[1].pose.position.x = 0.1; // longer than the widest part
    EXPECT_TRUE(isShortest(2 * area / 100.1 * (1 - 1e-6)));
    EXPECT_FALSE(isShortest(2 * area / 100.1 * (1 + 1e-6)));
}

} // namespace ZORNestSolver::SolverShapes
