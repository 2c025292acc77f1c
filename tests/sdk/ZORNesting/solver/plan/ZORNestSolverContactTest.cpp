#include "sdk/ZORNesting/solver/SolverShapes.h"

namespace ZORNestSolver::SolverShapes {

// Rectangles whose sums are exactly the usable length or width.

TEST(ZORNestSolverContactTest, ARowThatFitsWithItsSeparationIsFound)
{
    Job job;
    job.items = {MakeItem(Rectangle(485, 700), 2)};
    job.separation = 10;
    job.kinds = {Sheet(980, 900)};
    EXPECT_EQ(CountPlaced(SolveInSteps(job, 2000)), 2);
    job.kinds = {Sheet(979.99, 900)};
    EXPECT_EQ(CountPlaced(SolveInSteps(job, 2000)), 1);
}

TEST(ZORNestSolverContactTest, AGridWithAnEmptyCellIsFound)
{
    Job job;
    job.items = {MakeItem(Rectangle(100, 60), 6), MakeItem(Rectangle(100, 50), 4)};
    job.separation = 4;
    job.frameWidth = 3;
    job.kinds = {Sheet(3 * 100 + 2 * 4 + 6, 2 * 60 + 50 + 2 * 4 + 6)};
    EXPECT_EQ(CountPlaced(SolveInSteps(job, 3000)), 9) << "there are nine cells";
    job.items[0].quantity = 5;
    job.items[1].quantity = 3;
    EXPECT_EQ(CountPlaced(SolveInSteps(job, 3000)), 8);
}

TEST(ZORNestSolverContactTest, RowsFitBetweenDefects)
{
    Job job;
    job.items = {MakeItem(Rectangle(40, 30), 2)};
    job.defectSeparation = 5;
    job.kinds = {Sheet(95, 30)};
    job.kinds[0].defects = {{Rectangle(5, 30, {45, 0})}};
    job.kinds[0].length = 45 + 5 + 5 + 40;
    EXPECT_EQ(CountPlaced(SolveInSteps(job, 2000)), 2);
}

TEST(ZORNestSolverContactTest, FreeAnglesLieAlongTheSheet)
{
    Job job;
    job.items = {MakeItem(Transform({false, 0.3, {}}).Apply(Polygon{Rectangle(50, 20)}).front(), 4)};
    job.maxDeviation = std::numbers::pi;
    job.kinds = {Sheet(100.001, 40.001)};
    EXPECT_EQ(CountPlaced(SolveInSteps(job, 3000)), 4);
}

TEST(ZORNestSolverContactTest, PartsThatFitOnlyWhenAllOfThemAreTurnedArePlaced)
{
    Job job;
    job.items = {MakeItem(Rectangle(50, 100), 2)};
    job.items[0].grain90 = true;
    for (const double separation : {0.0, 0.1, 5.0}) {
        for (const double slack : {0.0, 0.1, 0.5, 2.0}) {
            job.separation = separation;
            job.kinds = {Sheet(100 + slack, 100 + separation + slack, 2)};
            const Solution solution = SolveInSteps(job, 2000);
            EXPECT_EQ(CountPlaced(solution), 2);
            EXPECT_EQ(solution.sheets.size(), 1U) << separation << ", " << slack;
        }
    }
}

TEST(ZORNestSolverContactTest, GridsOfTurnedPartsFitBetweenFrameAndTrims)
{
    Job job;
    job.separation = 5;
    job.frameWidth = 10;
    for (const int columns : {1, 2, 3, 4}) {
        for (const int rows : {2, 3}) {
            job.items = {MakeItem(Rectangle(50, 100), columns * rows)};
            job.items[0].grain90 = true;
            job.kinds = {Sheet(columns * 105 - 5 + 20 + 8, rows * 55 - 5 + 20 + 18)};
            SheetKind& kind = job.kinds[0];
            kind.leftTrim = 3;
            kind.rightTrim = 5;
            kind.topTrim = 7;
            kind.bottomTrim = 11;
            EXPECT_EQ(CountPlaced(SolveInSteps(job, 2000)), columns * rows) << columns << " x " << rows;
        }
    }
}

TEST(ZORNestSolverContactTest, PartsThatFitTurnedOrStraightByTypeArePlaced)
{
    Job job;
    job.separation = 2;
    job.items = {MakeItem(Rectangle(50, 100)), MakeItem(Rectangle(40, 100)), MakeItem(Rectangle(92, 30))};
    for (Item& item : job.items)
        item.grain90 = true;
    job.kinds = {Sheet(100 + 2 + 30, 50 + 2 + 40)};
    EXPECT_EQ(CountPlaced(SolveInSteps(job, 2000)), 3);
    for (Item& item : job.items)
        item.maxDeviation = std::numbers::pi;
    EXPECT_EQ(CountPlaced(SolveInSteps(job, 2000)), 3) << "at free angles";
}

TEST(ZORNestSolverContactTest, SmallerPartsThatFillTheSheetWinOverTheLargestOne)
{
    Job job;
    job.items = {MakeItem(Rectangle(60, 100)), MakeItem(Rectangle(50, 100), 2)};
    job.kinds = {Sheet(100, 100)};
    EXPECT_EQ(CountPlaced(SolveInSteps(job, 2000)), 2);
    job.items[0].priority = 1;
    const Solution solution = SolveInSteps(job, 2000);
    ASSERT_EQ(CountPlaced(solution), 1);
    EXPECT_EQ(solution.sheets[0].placements[0].item, 0U) << "its priority is higher";
}

namespace {

/// A sheet of 100 x 100 whose defect leaves only holes free.
SheetKind MakeSheetOfHoles(const Polygon& holes)
{
    SheetKind sheet = Sheet(100, 100);
    Polygon defect{Rectangle(100, 100)};
    for (const Ring& hole : holes)
        defect.push_back(Reversed(hole));
    sheet.defects = {defect};
    return sheet;
}

} // namespace

TEST(ZORNestSolverContactTest, APartFillsAHoleBetweenDefects)
{
    Job job;
    job.items = {MakeItem(Rectangle(50, 50))};
    for (const double slack : {0.0, 0.001, 0.01, 0.1, 1.0}) {
        for (const double distance : {0.0, 2.5}) {
            job.defectSeparation = distance;
            const double side = 50 + slack + 2 * distance;
            job.kinds = {MakeSheetOfHoles({Rectangle(side, side, {25, 30})})};
            EXPECT_EQ(CountPlaced(SolveInSteps(job, 500)), 1) << slack << ", " << distance;
        }
    }
}

TEST(ZORNestSolverContactTest, PartsFillSeveralHolesAndHolesOfOtherShapes)
{
    Job job;
    job.items = {MakeItem(Rectangle(40, 20), 4), MakeItem({{0, 0}, {30, 10}, {5, 35}})};
    job.items[0].grain90 = true;
    job.kinds = {MakeSheetOfHoles({Rectangle(40, 40, {5, 5}),
                                   Rectangle(20, 40, {70, 50}),
                                   Rectangle(40, 20, {5, 75}),
                                   {{50, 5}, {80, 15}, {55, 40}}})};
    EXPECT_EQ(CountPlaced(SolveInSteps(job, 2000)), 5);
}

TEST(ZORNestSolverContactTest, AnEmptySheetWithoutRoomBesideItsDefectsIsNotUsedUp)
{
    Job job;
    job.items = {MakeItem(Rectangle(50, 50), 2)};
    job.kinds = {MakeSheetOfHoles({Rectangle(49.9, 60, {25, 30})})};
    Solution solution = SolveInSteps(job, 500);
    ASSERT_EQ(solution.unplaced.size(), 1U);
    EXPECT_EQ(solution.unplaced[0].reason, "no room found on an empty sheet");
    job.kinds = {MakeSheetOfHoles({Rectangle(50, 60, {25, 30})})};
    solution = SolveInSteps(job, 500);
    ASSERT_EQ(solution.unplaced.size(), 1U);
    EXPECT_EQ(solution.unplaced[0].reason, "no sheet left") << "the first part uses it";
}

} // namespace ZORNestSolver::SolverShapes
