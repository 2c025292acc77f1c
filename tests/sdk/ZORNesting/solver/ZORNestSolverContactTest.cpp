#include "SolverShapes.h"

using namespace SolverShapes;

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
