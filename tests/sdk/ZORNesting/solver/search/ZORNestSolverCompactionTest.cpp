#include "sdk/ZORNesting/solver/SolverShapes.h"

#include <ZORNesting/solver/base/ZORNestSolverLinearProgram.h>
#include <ZORNesting/solver/proof/ZORNestSolverCheck.h>
#include <ZORNesting/solver/search/ZORNestSolverCompaction.h>

#include <gtest/gtest.h>

namespace ZORNestSolver::SolverShapes {
namespace {

struct Line
{
    double x, y, limit; // x, y: factors
};

/// The best corner of a plane polygon given by lines, by trying all intersections.
double SolveByCorners(std::vector<Line> lines, Point objective)
{
    lines.push_back({-1, 0, 0});
    lines.push_back({0, -1, 0});
    double best = 0;
    for (const Line& a : lines)
        for (const Line& b : lines) {
            const double determinant = a.x * b.y - a.y * b.x;
            if (std::abs(determinant) < 1e-9)
                continue;
            const Point p{(a.limit * b.y - b.limit * a.y) / determinant,
                          (a.x * b.limit - b.x * a.limit) / determinant};
            bool inside = true;
            for (const Line& line : lines)
                inside = inside && line.x * p.x + line.y * p.y <= line.limit + 1e-9;
            if (inside)
                best = std::max(best, Dot(p, objective));
        }
    return best;
}

} // namespace

TEST(ZORNestSolverLinearProgramTest, RandomPlaneProgramsReachTheBestCorner)
{
    Random random(17);
    for (int i = 0; i < 200; ++i) {
        std::vector<Line> lines{{1, 1, 10}};
        for (int k = 0; k < 6; ++k)
            lines.push_back({random.Between(-1, 2), random.Between(-1, 2), random.Between(0, 5)});
        const Point objective{random.Between(-1, 1), random.Between(-1, 1)};
        LinearProgram program(2);
        program.SetObjective(0, objective.x);
        program.SetObjective(1, objective.y);
        for (const Line& line : lines)
            program.AddRow({{0, line.x}, {1, line.y}}, line.limit);
        const std::vector<double> values = program.Solve([] { return false; });
        EXPECT_NEAR(Dot({values[0], values[1]}, objective), SolveByCorners(lines, objective), 1e-7);
    }
}

TEST(ZORNestSolverCompactionTest, LooseSquaresBecomeARow)
{
    Job job;
    std::string reason;
    Problem problem;
    problem.types = {std::make_shared<const ItemType>(PrepareItem(MakeItem(Rectangle(10, 10)), job, reason))};
    problem.items = {0, 0, 0};
    problem.windows = {{{0, 0}, {40, 10}}};
    std::vector<Stand> stands(3);
    for (size_t i = 0; i < 3; ++i)
        stands[i].position = {5 + 10.3 * static_cast<double>(i), 5};
    const auto getEnd = [&](const std::vector<Stand>& tried) {
        double end = 0;
        for (const Stand& stand : tried)
            end = std::max(end, stand.position.x + 5);
        return end;
    };
    ASSERT_NEAR(getEnd(stands), 30.6, 1e-9);
    const Compaction compaction(problem, 0, [](const std::vector<Stand>& tried) {
        std::vector<Polygon> placed;
        placed.reserve(tried.size());
        for (const Stand& stand : tried)
            placed.push_back({Rectangle(10, 10, stand.position - Point{5, 5})});
        return AreAllApart(placed, 0);
    });
    EXPECT_NEAR(getEnd(compaction.Shorten(stands, [] { return false; })), 30, 1e-6);
}

} // namespace ZORNestSolver::SolverShapes
