#include "sdk/ZORNesting/solver/SolverShapes.h"

#include <ZORNesting/solver/layout/ZORNestSolverPreparedJob.h>

namespace ZORNestSolver::SolverShapes {
namespace {

/// A plate in the form of an L with a square grid of round holes, of which the second one touches the first.
std::vector<Contour> MakePlate(int rows, double radius, double secondRow)
{
    const double size = 50.0 * rows + 10;
    std::vector<Contour> plate{MakeContour(
        {{0, 0}, {2 * size, 0}, {2 * size, size}, {size, size}, {size, 2 * size}, {0, 2 * size}})};
    for (int i = 0; i < rows; ++i)
        for (int k = 0; k < rows; ++k)
            plate.push_back(RoundContour({30.0 + i * 50, 30.0 + k * 50}, radius));
    plate[2] = RoundContour({30.0, secondRow}, radius);
    return plate;
}

/// The area that two circles have in common.
double GetLens(double radius, double distance)
{
    return 2 * radius * radius * std::acos(distance / (2 * radius))
           - distance / 2 * std::sqrt(4 * radius * radius - distance * distance);
}

OutlineLoss GetLoss(const std::vector<Contour>& contours, double* area = nullptr)
{
    std::string reason;
    OutlineLoss loss = OutlineLoss::None;
    const Polygon polygon = MakeOuterPolygon(contours, reason, NeverInterrupted, &loss);
    EXPECT_EQ(reason, "");
    if (area)
        *area = GetArea(polygon);
    return loss;
}

} // namespace

TEST(ZORNestSolverCleaningTest, APlateKeepsItsAreaWhereTwoOfManyHolesOverlap)
{
    for (const int rows : {4, 10, 20}) {
        double area = 0;
        EXPECT_EQ(GetLoss(MakePlate(rows, 24, 77), &area), OutlineLoss::None) << rows;
        const double size = 50.0 * rows + 10;
        const double holes = rows * rows * std::numbers::pi * 24 * 24;
        EXPECT_NEAR(area, 3 * size * size - holes + 2 * GetLens(24, 47), 0.003 * holes) << rows; // chords
    }
}

TEST(ZORNestSolverCleaningTest, APlateOfManyKeyholesKeepsItsArea)
{
    std::vector<Contour> plate = MakePlate(14, 10, 80);
    const size_t holes = plate.size();
    for (size_t i = 1; i < holes; ++i) {
        const Point corner = plate[i].start + Point{-12, 5};
        plate.push_back(MakeContour(Rectangle(4, 18, corner)));
    }
    double area = 0;
    EXPECT_EQ(GetLoss(plate, &area), OutlineLoss::None);
    EXPECT_LT(area, 3 * 710 * 710 - 196 * 100 * std::numbers::pi);
}

TEST(ZORNestSolverCleaningTest, AnOutlineThatManyHolesCrossTakesItsHullSoon)
{
    Ring teeth{{0, 0}, {20000, 0}};
    for (int i = 20000; i >= 0; i -= 2)
        for (const double height : {100.0, 101.0})
            teeth.push_back({i - (height - 100), height});
    std::vector<Contour> crossed{MakeContour(teeth)};
    for (int i = 0; i < 10000; ++i)
        crossed.push_back(MakeContour(Rectangle(0.5, 1, {2.0 * i + 0.2, 99.9})));
    EXPECT_EQ(GetLoss(crossed), OutlineLoss::CostlyHull);
    crossed[0] = MakeContour(Rectangle(20000, 100));
    EXPECT_EQ(GetLoss(crossed), OutlineLoss::CostlyHull);
}

TEST(ZORNestSolverCleaningTest, TheHullOfAChainIsTakenSoon)
{
    // Rings that touch one another only by rounding are one for the clipping library.
    std::vector<Contour> chain{MakeContour({{0, 0}, {60000, 0}, {60000, 9}, {9, 9}, {9, 90}, {0, 90}})};
    for (int i = 0; i < 20000; ++i)
        chain.push_back(MakeContour({{3.0 * i + 1, 4.0 + i % 2},
                                     {3.0 * i + 2.5, 5.0 - i % 2},
                                     {3.0 * i + 4 - 1e-11, 5.0 - i % 2},
                                     {3.0 * i + 2.5, 5.5 - i % 2}}));
    chain.push_back(MakeContour(Rectangle(1, 1, {2, 50})));
    chain.push_back(MakeContour(Rectangle(1, 1, {2.5, 50.5})));
    EXPECT_EQ(GetLoss(chain), OutlineLoss::CostlyHull);
}

TEST(ZORNestSolverCleaningTest, RingsThatMeetAreGrouped)
{
    const Polygon rings{Rectangle(10, 10), Rectangle(1, 1, {2, 2}), Rectangle(10, 10, {10, 5}),
                        Rectangle(1, 1, {3, 3}), Rectangle(1, 1, {7, 7})};
    const std::vector<size_t> groups = GroupRings(rings);
    EXPECT_EQ(groups[0], groups[2]);
    EXPECT_EQ(groups[1], groups[3]);
    EXPECT_NE(groups[0], groups[1]);
    EXPECT_NE(groups[4], groups[0]);
    EXPECT_NE(groups[4], groups[1]);
    EXPECT_EQ(GroupRings({Rectangle(1, 1)}), std::vector<size_t>{0});
    EXPECT_EQ(GroupRings({}), std::vector<size_t>());
}

TEST(ZORNestSolverCleaningTest, AHullForLackOfTimeToCleanNamesTheCorners)
{
    Job job;
    job.items.emplace_back();
    job.items[0].name = "comb";
    Ring comb{{0, 0}, {20000, 0}};
    for (int i = 20000; i >= 0; i -= 2)
        for (const double height : {100.0, 101.0})
            comb.push_back({i - (height - 100), height});
    job.items[0].contours = {MakeContour(comb)};
    for (int i = 0; i < 600; ++i)
        job.items[0].contours.push_back(MakeContour(Rectangle(0.5, 1, {2.0 * i + 0.2, 99.9})));
    const std::vector<std::string> remarks{
        "part \"comb\" has too many corners to be cleaned and is nested within its hull"};
    EXPECT_EQ(PreparedJob(job).remarks, remarks);
}

} // namespace ZORNestSolver::SolverShapes
