#include "sdk/ZORNesting/solver/SolverShapes.h"

#include <ZORNesting/solver/model/ZORNestSolverUsable.h>
#include <ZORNesting/solver/proof/ZORNestSolverCheck.h>

namespace ZORNestSolver::SolverShapes {
namespace {

constexpr double kSlip = 1e-5; // clearly more than the tolerance

/// Two squares, a triangle and a frame with a square in it, everything touching, on a sheet with a defect.
struct Tight
{
    Job job;
    Solution solution;

    Tight()
    {
        Item frame = MakeItem(Rectangle(20, 20));
        frame.contours.push_back(MakeContour(Reversed(Rectangle(10, 10, {5, 5}))));
        job.items = {MakeItem(Rectangle(10, 10), 3), MakeItem({{0, 0}, {10, 0}, {0, 10}}), frame};
        job.kinds = {Sheet(40, 20, 1)};
        job.kinds[0].defects = {{Rectangle(10, 10, {30, 10})}};
        NestedSheet sheet;
        sheet.usedLength = 40;
        sheet.placements = {At(0, {20, 0}), At(0, {20, 10}), At(0, {5, 5}), At(1, {30, 0}), At(2, {0, 0})};
        solution.sheets = {sheet};
    }
    size_t CountFaults() const { return FindFaults(job, solution).size(); }
    Placement& GetPlacement(size_t i) { return solution.sheets[0].placements[i]; }
};

} // namespace

TEST(ZORNestSolverCheckTest, TouchingPartsAreNoFault)
{
    EXPECT_EQ(Tight().CountFaults(), 0U);
}

TEST(ZORNestSolverCheckTest, EverySlipOfAPartIsFound)
{
    const std::vector<std::pair<size_t, Point>> slips{{0, {-1, 0}}, {0, {1, 0}},  {0, {0, 1}},  {0, {0, -1}},
                                                      {1, {0, 1}},  {1, {1, 0}},  {2, {1, 0}},  {2, {0, -1}},
                                                      {2, {-1, 1}}, {3, {-1, 0}}, {3, {0, -1}}, {4, {0, 1}}};
    for (const auto& [placement, direction] : slips) {
        Tight tight;
        tight.GetPlacement(placement).pose.position =
            tight.GetPlacement(placement).pose.position + direction * kSlip;
        EXPECT_GE(tight.CountFaults(), 1U) << placement << " by " << direction.x << ", " << direction.y;
        tight = Tight();
        tight.GetPlacement(placement).pose.position =
            tight.GetPlacement(placement).pose.position + direction * 1e-8;
        EXPECT_EQ(tight.CountFaults(), 0U) << placement;
    }
}

TEST(ZORNestSolverCheckTest, ATurnOrAHandThatIsNotAllowedIsFound)
{
    Tight tight;
    tight.GetPlacement(2).pose.angle = 1e-7;
    EXPECT_GE(tight.CountFaults(), 1U);
    tight = Tight();
    tight.GetPlacement(0).pose = {true, 0, {30, 0}}; // covers the same square
    EXPECT_EQ(tight.CountFaults(), 1U);
    tight.job.items[0].flippable = true;
    EXPECT_EQ(tight.CountFaults(), 0U);
    tight.job.singleSided = true;
    EXPECT_EQ(tight.CountFaults(), 1U);
    tight = Tight();
    tight.job.items[0].maxDeviation = 0.2;
    tight.job.items[0].deviationIncrement = 0.1;
    tight.GetPlacement(2).pose.angle = 0.15;
    EXPECT_GE(tight.CountFaults(), 1U);
}

TEST(ZORNestSolverCheckTest, MissingAndSurplusPartsAndSheetsAreFound)
{
    Tight tight;
    tight.solution.sheets[0].placements.pop_back();
    EXPECT_EQ(tight.CountFaults(), 1U);
    tight.solution.unplaced = {{2, 1, "no sheet left"}};
    EXPECT_EQ(tight.CountFaults(), 0U);
    tight = Tight();
    tight.job.items[0].quantity = 2;
    EXPECT_EQ(tight.CountFaults(), 1U);
    tight = Tight();
    tight.solution.sheets[0].stack = 2; // twice of everything, and twice the sheet, and no stacks allowed
    EXPECT_EQ(tight.CountFaults(), 5U);
    tight.job.stackSize = 2;
    EXPECT_EQ(tight.CountFaults(), 4U);
    tight.solution.sheets[0].stack = 0;
    EXPECT_EQ(tight.CountFaults(), 4U); // nothing of any item, and a stack of nothing
    tight = Tight();
    tight.solution.sheets[0].kind = 7;
    EXPECT_GE(tight.CountFaults(), 1U);
    tight = Tight();
    tight.GetPlacement(1).item = 9;
    EXPECT_GE(tight.CountFaults(), 1U);
}

TEST(ZORNestSolverCheckTest, TrimsFrameAndSeparationsAreMeasured)
{
    for (const double slip : {0.0, kSlip}) {
        Job job;
        job.items = {MakeItem(Rectangle(10, 10), 2)};
        job.kinds = {Sheet(31, 16)};
        job.kinds[0].leftTrim = 1;
        job.kinds[0].rightTrim = 2;
        job.kinds[0].bottomTrim = 1.5;
        job.kinds[0].topTrim = 0.5;
        job.frameWidth = 2;
        job.separation = 4;
        Solution solution;
        solution.sheets.resize(1);
        solution.sheets[0].usedLength = 31;
        solution.sheets[0].placements = {At(0, {3, 3.5}), At(0, {17, 3.5})};
        EXPECT_EQ(FindFaults(job, solution).size(), 0U);
        for (double* value : {&job.separation, &job.frameWidth, &job.kinds[0].leftTrim,
                              &job.kinds[0].rightTrim, &job.kinds[0].bottomTrim, &job.kinds[0].topTrim}) {
            const double kept = *value;
            *value += slip;
            EXPECT_EQ(FindFaults(job, solution).empty(), slip == 0);
            *value = kept;
        }
        job.kinds[0].defects = {{Rectangle(1, 1, {28 + 1, 14})}};
        job.defectSeparation = std::hypot(2, 0.5) + slip;
        EXPECT_EQ(FindFaults(job, solution).empty(), slip == 0);
    }
}

TEST(ZORNestSolverCheckTest, ASheetIsAsLongAsItsKind)
{
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    for (const double length :
         {0.0, 40 + kSlip, 1e108, kInfinity, std::numeric_limits<double>::quiet_NaN()}) {
        Tight tight;
        tight.solution.sheets[0].usedLength = length;
        EXPECT_EQ(tight.CountFaults(), 1U) << length;
    }
    Tight roll;
    roll.job.kinds[0].length = std::numeric_limits<double>::quiet_NaN();
    roll.solution.sheets[0].usedLength = 50;
    EXPECT_EQ(roll.CountFaults(), 0U);
    roll.solution.sheets[0].usedLength = kInfinity;
    EXPECT_GE(roll.CountFaults(), 1U);
}

TEST(ZORNestSolverCheckTest, TheOutlineOfAHideIsKept)
{
    Job job;
    job.items = {MakeItem(Rectangle(10, 10))};
    job.kinds = {Sheet(30, 30)};
    job.kinds[0].outline = {{{0, 0}, {30, 0}, {0, 30}}};
    Solution solution;
    solution.sheets.resize(1);
    solution.sheets[0].usedLength = 30;
    solution.sheets[0].placements = {At(0, {5, 5})};
    EXPECT_TRUE(FindFaults(job, solution).empty());
    solution.sheets[0].placements = {At(0, {5 + kSlip, 5 + kSlip})};
    EXPECT_FALSE(FindFaults(job, solution).empty());
}

TEST(ZORNestSolverCheckTest, NumbersThatCannotBeUsedCountAsZero)
{
    for (const double odd : {-3.0, double(NAN), double(INFINITY), -double(INFINITY)}) {
        Tight tight;
        SheetKind& kind = tight.job.kinds[0];
        for (double* value : {&kind.leftTrim, &kind.rightTrim, &kind.topTrim, &kind.bottomTrim,
                              &tight.job.frameWidth, &tight.job.separation, &tight.job.defectSeparation,
                              &tight.job.maxDeviation, &tight.job.deviationIncrement})
            *value = odd;
        tight.job.items[0].allowedAngles = {odd == -3 ? 0 : odd};
        EXPECT_EQ(tight.CountFaults(), 0U) << odd;
        for (Placement& placement : tight.solution.sheets[0].placements)
            placement.pose.position.x -= kSlip;
        EXPECT_EQ(tight.CountFaults(), 1U) << odd << ": the frame leaves the sheet";
        EXPECT_EQ(FindFaultsOfUsable(MakeUsable(tight.job), tight.solution),
                  FindFaults(tight.job, tight.solution));
        EXPECT_EQ(FindPlacementFaults(MakeUsable(tight.job), tight.solution.sheets[0]).size(), 1U) << odd;
    }
}

} // namespace ZORNestSolver::SolverShapes
