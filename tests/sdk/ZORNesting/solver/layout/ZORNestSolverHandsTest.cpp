#include "sdk/ZORNesting/solver/SolverShapes.h"

#include <ZORNesting/solver/layout/ZORNestSolverItemType.h>

namespace ZORNestSolver::SolverShapes {
namespace {

constexpr double kDegree = std::numbers::pi / 180;

/// The rotations of one hand in degrees, each from 0 to 360, sorted.
std::vector<double> GetAngles(const Item& item, const Job& job, bool mirrored)
{
    std::vector<double> angles;
    for (const PoseClass& poseClass : GetPoseClasses(item, job))
        if (poseClass.mirrored == mirrored)
            angles.push_back(std::round(NormalizeAngle(poseClass.angle) / kDegree * 1e6) / 1e6);
    std::sort(angles.begin(), angles.end());
    return angles;
}

/// Whether the check accepts a part in the middle of a large sheet.
bool IsAccepted(const Item& item, const Job& job, double degrees, bool mirrored)
{
    Job large = job;
    large.items = {item};
    large.kinds = {Sheet(1000, 1000)};
    NestedSheet sheet;
    sheet.usedLength = 1000;
    sheet.placements = {At(0, {500, 500}, degrees * kDegree, mirrored)};
    return FindPlacementFaults(large, sheet).empty();
}

using Angles = std::vector<double>;

} // namespace

TEST(ZORNestSolverHandsTest, TheFibersOfAFlippedPlyStayAlongTheSheet)
{
    // Its fibers are drawn at -45 degrees, and lie along x once it is turned by 45.
    Item ply = MakeItem(Rectangle(20, 10));
    ply.orientation = 45 * kDegree;
    ply.flippable = true;
    const Point fiber{std::sqrt(0.5), -std::sqrt(0.5)};
    ASSERT_EQ(GetPoseClasses(ply, {}).size(), 2U);
    for (const PoseClass& poseClass : GetPoseClasses(ply, {})) {
        const Point placed = Transform({poseClass.mirrored, poseClass.angle, {}}).Apply(fiber);
        EXPECT_NEAR(placed.y, 0, 1e-12) << poseClass.mirrored;
    }
    EXPECT_EQ(GetAngles(ply, {}, false), Angles{45});
    EXPECT_EQ(GetAngles(ply, {}, true), Angles{315});
    EXPECT_TRUE(IsAccepted(ply, {}, 45, false));
    EXPECT_TRUE(IsAccepted(ply, {}, -45, true));
    EXPECT_TRUE(IsAccepted(ply, {}, 315, true));
    EXPECT_FALSE(IsAccepted(ply, {}, 45, true));
    EXPECT_FALSE(IsAccepted(ply, {}, -45, false));
}

TEST(ZORNestSolverHandsTest, TheHandThatIsAskedForTakesTheRotationsAsTheyAre)
{
    Item item = MakeItem(Rectangle(20, 10));
    item.orientation = 30 * kDegree;
    item.mirrored = true;
    EXPECT_EQ(GetAngles(item, {}, true), Angles{30});
    EXPECT_EQ(GetAngles(item, {}, false), Angles{});
    EXPECT_TRUE(IsAccepted(item, {}, 30, true));
    EXPECT_FALSE(IsAccepted(item, {}, 30, false));
    EXPECT_FALSE(IsAccepted(item, {}, -30, true));
    item.flippable = true;
    item.grain90 = true;
    EXPECT_EQ(GetAngles(item, {}, true), (Angles{30, 120}));
    EXPECT_EQ(GetAngles(item, {}, false), (Angles{240, 330}));
    EXPECT_TRUE(IsAccepted(item, {}, 120, true));
    EXPECT_TRUE(IsAccepted(item, {}, -120, false));
    EXPECT_FALSE(IsAccepted(item, {}, 60, false)); // -30 + 90
    Job job;
    job.grain270 = true; // of the job: for every item
    EXPECT_EQ(GetAngles(item, job, true), (Angles{30, 120, 300}));
    EXPECT_EQ(GetAngles(item, job, false), (Angles{60, 240, 330}));
    EXPECT_TRUE(IsAccepted(item, job, 60, false));
    job.singleSided = true;
    EXPECT_EQ(GetAngles(item, job, false), Angles{});
    EXPECT_FALSE(IsAccepted(item, job, -30, false));
}

TEST(ZORNestSolverHandsTest, DeviationsOfTheOtherHandLieAroundTheNegativeRotations)
{
    Item item = MakeItem(Rectangle(20, 10));
    item.orientation = 30 * kDegree;
    item.flippable = true;
    Job job;
    job.maxDeviation = 7 * kDegree;
    for (const double turn : {-7.0, -3.5, 0.0, 7.0}) {
        EXPECT_TRUE(IsAccepted(item, job, 30 + turn, false)) << turn;
        EXPECT_TRUE(IsAccepted(item, job, -30 + turn, true)) << turn;
    }
    for (const double turn : {-7.001, 7.001, 60.0})
        EXPECT_FALSE(IsAccepted(item, job, -30 + turn, true)) << turn;
    job.deviationIncrement = 3 * kDegree;
    EXPECT_EQ(GetAngles(item, job, false), (Angles{24, 27, 30, 33, 36}));
    EXPECT_EQ(GetAngles(item, job, true), (Angles{324, 327, 330, 333, 336}));
    EXPECT_TRUE(IsAccepted(item, job, -36, true));
    EXPECT_FALSE(IsAccepted(item, job, -35, true));
    EXPECT_FALSE(IsAccepted(item, job, -39, true));
    item.maxDeviation = 1 * kDegree; // its own goes before the job's
    EXPECT_EQ(GetAngles(item, job, true), Angles{330});
    item.maxDeviation = 400 * kDegree; // more than a turn, in steps that do not divide it
    item.deviationIncrement = 50 * kDegree;
    EXPECT_TRUE(IsAccepted(item, job, 30 + 400, false));
    EXPECT_TRUE(IsAccepted(item, job, 30 + 40, false)); // 400 less a turn
    EXPECT_FALSE(IsAccepted(item, job, 30 + 45, false));
}

TEST(ZORNestSolverHandsTest, ListedAnglesHoldForBothHands)
{
    Item item = MakeItem(Rectangle(20, 10));
    item.orientation = 10 * kDegree; // not used
    item.allowedAngles = {30 * kDegree, 75 * kDegree};
    item.flippable = true;
    EXPECT_EQ(GetAngles(item, {}, false), (Angles{30, 75}));
    EXPECT_EQ(GetAngles(item, {}, true), (Angles{30, 75}));
    for (const bool mirrored : {false, true}) {
        EXPECT_TRUE(IsAccepted(item, {}, 75, mirrored));
        EXPECT_FALSE(IsAccepted(item, {}, -30, mirrored));
        EXPECT_FALSE(IsAccepted(item, {}, 10, mirrored));
    }
}

TEST(ZORNestSolverHandsTest, APartThatFitsOnlyFlippedIsTurnedBack)
{
    // A triangle turned by 45, for a sheet that is its mirror image and hardly larger.
    Item item = MakeItem(Transform({false, -45 * kDegree, {}}).Apply(Polygon{{{0, 0}, {60, 0}, {0, 30}}})[0]);
    item.orientation = 45 * kDegree;
    Job job;
    job.items = {item};
    job.kinds = {Sheet(62, 31)};
    job.kinds[0].outline = {{{0, 0}, {62, 0}, {62, 31}}};
    EXPECT_EQ(CountPlaced(SolveInSteps(job, 3000)), 0);
    job.items[0].flippable = true;
    const Solution solution = SolveInSteps(job, 3000);
    ASSERT_EQ(CountPlaced(solution), 1);
    const Pose& pose = solution.sheets[0].placements[0].pose;
    EXPECT_TRUE(pose.mirrored);
    EXPECT_NEAR(std::remainder(pose.angle + 45 * kDegree, 2 * std::numbers::pi), 0, 1e-12);
}

} // namespace ZORNestSolver::SolverShapes
