#include "sdk/ZORNesting/solver/SolverShapes.h"

#include <ZORNesting/solver/geometry/ZORNestSolverOffset.h>
#include <ZORNesting/solver/model/ZORNestSolverUnplaced.h>
#include <ZORNesting/solver/plan/ZORNestSolverFill.h>

namespace ZORNestSolver::SolverShapes {
namespace {

Job MakeJobOfDefects(std::vector<Polygon> defects)
{
    Job job;
    job.items = {MakeItem(Rectangle(50, 30), 5)};
    job.kinds = {Sheet(3000, 3000)};
    job.kinds[0].defects = std::move(defects);
    return job;
}

/// Thin defects all across the sheet, in any direction.
std::vector<Polygon> MakeScratches(int count)
{
    Random random(1);
    std::vector<Polygon> scratches;
    for (int i = 0; i < count; ++i) {
        const double angle = random.Between(0, std::numbers::pi);
        const Point along = Point{std::cos(angle), std::sin(angle)} * 3000;
        const Point across = Point{-along.y, along.x} * (1.0 / 3000);
        const Point middle{random.Between(0, 3000), random.Between(0, 3000)};
        scratches.push_back(
            {{middle - along, middle + along, middle + along + across, middle - along + across}});
    }
    return scratches;
}

std::vector<Polygon> MakeCrumbs(int columns)
{
    std::vector<Polygon> crumbs;
    for (int i = 0; i < columns; ++i)
        for (int k = 0; k < columns; ++k)
            crumbs.push_back({{Point{20.0 * i, 20.0 * k}, Point{20.0 * i + 5, 20.0 * k},
                               Point{20.0 * i + 5, 20.0 * k + 5}}});
    return crumbs;
}

/// A ring of many corners around a point, as a scan of a hide gives it.
Ring MakeScan(int corners, Point center, double radius)
{
    Random random(3);
    Ring ring;
    for (int i = 0; i < corners; ++i) {
        const double angle = 2 * std::numbers::pi * i / corners;
        const double reach = radius * (1 + 0.1 * std::cos(5 * angle)) + random.Between(-0.5, 0.5);
        ring.push_back(center + Point{std::cos(angle), std::sin(angle)} * reach);
    }
    return ring;
}

Ring MakeStar(int corners, Point center, double radius)
{
    Ring star;
    const int step = corners / 2;
    for (int i = 0; i < corners; ++i) {
        const double angle = 2 * std::numbers::pi * (double(i) * step / corners);
        star.push_back(center + Point{std::cos(angle), std::sin(angle)} * radius);
    }
    return star;
}

enum class State { Running, Stopped };

void Prepare(const Job& job, State state, const std::function<void(const PreparedJob&)>& look)
{
    Control control;
    control.stop = state == State::Stopped;
    look(PreparedJob(job, Budget(control, Budget::Clock::Wall, 0)));
}

bool IsOnObstacle(Point p, const SheetArea& area)
{
    return std::any_of(area.obstacles.begin(), area.obstacles.end(), [p](const Obstacle& obstacle) {
        return IsInside(p, obstacle.polygon) || GetDistanceToBoundary(p, obstacle.polygon) < 1e-6;
    });
}

} // namespace

TEST(ZORNestSolverSheetPreparationTest, AStoppedJobIsNotTriedOnAllOfManySheets)
{
    Job job;
    for (int i = 0; i < 300; ++i) {
        job.items.push_back(MakeItem(MakeScan(300, {}, 50 + i * 1e-6)));
        job.items.back().maxDeviation = std::numbers::pi;
    }
    for (int i = 0; i < 3000; ++i)
        job.kinds.push_back(Sheet(105.5 + i * 1e-5, 105.5));
    Prepare(job, State::Stopped, [](const PreparedJob& prepared) {
        EXPECT_EQ(prepared.reasons[0], "no time left"); // it only fits turned, and nobody has tried that
        EXPECT_FALSE(prepared.FitsOn(0, 2999));
    });
    job.kinds.front() = Sheet(200, 200);
    Prepare(job, State::Stopped, [](const PreparedJob& prepared) {
        for (size_t i = 0; i < 10; ++i) {
            EXPECT_EQ(prepared.reasons[i], "");
            EXPECT_TRUE(prepared.FitsOn(i, 0));
        }
    });
}

TEST(ZORNestSolverSheetPreparationTest, AStoppedJobFindsTheSheetOnWhichItFits)
{
    Job job;
    job.items = {MakeItem(Rectangle(50, 30), 2), MakeItem(Rectangle(500, 30))};
    job.kinds = {Sheet(10, 10), Sheet(100, 100), Sheet(100, 100)};
    Prepare(job, State::Stopped, [](const PreparedJob& prepared) {
        EXPECT_FALSE(prepared.FitsOn(0, 0));
        EXPECT_TRUE(prepared.FitsOn(0, 1));
        EXPECT_TRUE(prepared.FitsOn(0, 2));
        EXPECT_EQ(prepared.DropEqual({0, 1, 2}), (std::vector<size_t>{0, 1}));
        EXPECT_EQ(prepared.reasons[0], "");
    });
    Prepare(job, State::Running, [](const PreparedJob& prepared) { EXPECT_EQ(prepared.reasons[1], ""); });
}

TEST(ZORNestSolverSheetPreparationTest, EqualSheetsArePreparedOnce)
{
    Job job = MakeJobOfDefects(MakeScratches(60));
    job.kinds.resize(400, job.kinds[0]);
    job.kinds[7].defects.pop_back();
    Prepare(job, State::Running, [](const PreparedJob& prepared) {
        EXPECT_EQ(prepared.areas[399].obstacles.size(), 60U);
        EXPECT_EQ(prepared.areas[7].obstacles.size(), 59U);
        EXPECT_EQ(prepared.areas[399].area, prepared.areas[0].area);
        // Four hundred searches for circles would use up what they share.
        for (size_t i = 0; i < 60; ++i)
            EXPECT_EQ(prepared.areas[399].hazards[i].shape.poleCount,
                      prepared.areas[0].hazards[i].shape.poleCount);
    });
}

TEST(ZORNestSolverSheetPreparationTest, VeryManyDefectsAreJoined)
{
    Job job = MakeJobOfDefects(MakeCrumbs(150));
    for (const State state : {State::Running, State::Stopped}) {
        Prepare(job, state, [&job](const PreparedJob& prepared) {
            const SheetArea& area = prepared.areas[0];
            EXPECT_LE(area.obstacles.size(), 1000U);
            for (size_t i = 0; i < job.kinds[0].defects.size(); i += 97)
                for (const Point p : job.kinds[0].defects[i][0])
                    EXPECT_TRUE(IsOnObstacle(p, area)) << i;
            ASSERT_FALSE(prepared.remarks.empty());
            EXPECT_EQ(prepared.remarks[0],
                      "sheet \"sheet\" has too many defects: parts keep off the hulls of "
                      "neighboring ones");
        });
    }
    job.kinds[0].defects.resize(1000);
    Prepare(job, State::Running, [](const PreparedJob& prepared) {
        EXPECT_EQ(prepared.areas[0].obstacles.size(), 1000U);
        EXPECT_EQ(prepared.remarks, std::vector<std::string>());
    });
}

TEST(ZORNestSolverSheetPreparationTest, ManyScratchesAcrossEachOtherArePreparedSoon)
{
    for (const int count : {300, 3000}) {
        const Job job = MakeJobOfDefects(MakeScratches(count));
        for (const State state : {State::Running, State::Stopped})
            Prepare(job, state,
                    [](const PreparedJob& prepared) { EXPECT_FALSE(prepared.areas[0].window.IsEmpty()); });
    }
}

TEST(ZORNestSolverSheetPreparationTest, DefectsOfManyCornersShareThem)
{
    std::vector<Polygon> defects;
    defects.reserve(100);
    for (int row = 0; row < 10; ++row) {
        for (int column = 0; column < 10; ++column)
            defects.push_back({MakeScan(2500, {150.0 + 280 * column, 150.0 + 280 * row}, 100)});
    }
    const Job job = MakeJobOfDefects(defects);
    Prepare(job, State::Running, [&](const PreparedJob& prepared) {
        size_t corners = 0;
        for (const Obstacle& obstacle : prepared.areas[0].obstacles)
            corners += obstacle.polygon[0].size();
        EXPECT_LE(corners, 20000U);
        for (const Point p : defects[42][0])
            EXPECT_TRUE(IsInside(p, prepared.areas[0].obstacles[42].polygon)
                        || GetDistanceToBoundary(p, prepared.areas[0].obstacles[42].polygon) < 1e-6);
        const std::vector<std::string> remarks{
            "sheet \"sheet\" has defects with too many corners, which are nested around coarsely"};
        EXPECT_EQ(prepared.remarks, remarks);
    });
}

TEST(ZORNestSolverSheetPreparationTest, AScannedSheetIsNestedWithACoarserOutline)
{
    Job job = MakeJobOfDefects({});
    job.kinds[0].outline = {MakeScan(20000, {1500, 1500}, 1200)};
    job.frameWidth = 5;
    for (const State state : {State::Running, State::Stopped})
        Prepare(job, state, [&job](const PreparedJob& prepared) {
            const SheetArea& area = prepared.areas[0];
            ASSERT_EQ(area.obstacles.size(), 1U);
            size_t corners = 0;
            for (const Ring& ring : area.obstacles[0].polygon)
                corners += ring.size();
            EXPECT_LE(corners, 2000U);
            for (size_t i = 0; i < job.kinds[0].outline[0].size(); i += 7)
                EXPECT_TRUE(IsOnObstacle(job.kinds[0].outline[0][i], area));
            EXPECT_FALSE(IsOnObstacle({1500, 1500}, area));
        });
    EXPECT_EQ(CountPlaced(SolveInSteps(job, 10)), 5);
}

TEST(ZORNestSolverSheetPreparationTest, TangledSheetsAreNotUsedAndTangledDefectsKeepTheirHulls)
{
    Job job = MakeJobOfDefects({{MakeStar(2001, {1000, 1000}, 300)}, {MakeStar(5, {2000, 2000}, 300)}});
    job.kinds.push_back(Sheet(3000, 3000));
    job.kinds[1].name = "star";
    job.kinds[1].outline = {MakeStar(2001, {1500, 1500}, 1400)};
    Prepare(job, State::Running, [](const PreparedJob& prepared) {
        EXPECT_TRUE(prepared.areas[1].window.IsEmpty());
        EXPECT_EQ(prepared.areas[0].obstacles[0].polygon.size(), 1U);
        EXPECT_LE(prepared.areas[0].obstacles[0].polygon[0].size(), 2001U);
        const std::vector<std::string> remarks{
            "sheet \"sheet\" has defects that cross themselves too often: parts keep off their hulls",
            "sheet \"star\" crosses itself too often and is not used"};
        EXPECT_EQ(prepared.remarks, remarks);
    });
    EXPECT_EQ(CountPlaced(SolveInSteps(job, 10)), 5);
}

TEST(ZORNestSolverSheetPreparationTest, SearchesForCirclesShareTheirEffort)
{
    const Polygon bar{Rectangle(3000, 1)};
    double squares = 100;
    EXPECT_FALSE(FindPoles(bar, squares).empty());
    EXPECT_LT(squares, 100);
    squares = 0;
    for (const Polygon& polygon : {bar, Polygon{MakeStar(5, {0, 0}, 10)}, Polygon{Rectangle(1, 3000)},
                                   Polygon{{{0, 0}, {10, 0}, {10, 1}, {1, 1}, {1, 10}, {0, 10}}}}) {
        const std::vector<Circle> poles = FindPoles(polygon, squares);
        ASSERT_EQ(poles.size(), 1U);
        EXPECT_GT(poles[0].radius, 0);
        EXPECT_TRUE(IsInside(poles[0].centre, polygon));
        EXPECT_NEAR(poles[0].radius, GetDistanceToBoundary(poles[0].centre, polygon), 1e-9);
    }
    EXPECT_EQ(squares, 0);
}

TEST(ZORNestSolverUnplacedTest, EntriesOfAnItemAndReasonAreOne)
{
    UnplacedList list({{3, 2, "no sheet left"}, {1, 1, "no time left"}});
    list.Add(3, 5, "no sheet left");
    list.Add(3, 1, "no time left");
    list.Add(7, 0, "no time left");
    list.Add(7, -1, "no time left");
    const std::vector<UnplacedItem>& entries = list.GetEntries();
    ASSERT_EQ(entries.size(), 3U);
    EXPECT_EQ(entries[0].count, 7);
    EXPECT_EQ(entries[2].item, 3U);
    EXPECT_EQ(entries[2].reason, "no time left");
}

// A search for each of them along the list would take longer than a test may.
TEST(ZORNestSolverUnplacedTest, AListHoldsVeryManyEntries)
{
    constexpr size_t kCount = 2000000;
    UnplacedList list{std::vector<UnplacedItem>()};
    for (size_t item = 0; item < kCount; ++item)
        list.Add(item, 1, "no time left");
    EXPECT_EQ(list.GetEntries().size(), kCount);
}

TEST(ZORNestSolverUnplacedTest, VeryManyItemsAreReported)
{
    Job job; // all of them are too large
    job.items.resize(200000, MakeItem(Rectangle(20, 10)));
    job.kinds = {Sheet(10, 10)};
    Control control;
    control.stop = true;
    const auto solution = Solve(job, {}, control);
    ASSERT_TRUE(solution);
    EXPECT_EQ(solution->unplaced.size(), 200000U);
}

} // namespace ZORNestSolver::SolverShapes
