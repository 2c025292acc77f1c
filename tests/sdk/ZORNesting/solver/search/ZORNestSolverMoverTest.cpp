#include "sdk/ZORNesting/solver/SolverShapes.h"

#include <ZORNesting/solver/search/ZORNestSolverMover.h>

namespace ZORNestSolver::SolverShapes {
namespace {

constexpr MoveEffort kOnlyMatching{0, 0, 300, 0, 3};
const Ring kTriangle{{0, 0}, {30, 0}, {0, 20}};

std::shared_ptr<const Problem> MakeProblem(const std::vector<Item>& items, const Box& window)
{
    Job job;
    auto problem = std::make_shared<Problem>();
    for (const Item& item : items) {
        std::string reason;
        problem->types.push_back(std::make_shared<ItemType>(PrepareItem(item, job, reason)));
        problem->items.push_back(problem->items.size());
        EXPECT_EQ(reason, "");
    }
    problem->windows = {window};
    return problem;
}

/// Item 0 in the middle of the window, and item 1 on the place found for it from there.
Stand MatchSecond(Layout& layout)
{
    const Point middle = GetRoom(layout.GetWindow(0), layout.GetType(0).shapes[0]).GetCentre();
    layout.Place(0, {middle, layout.GetType(0).classes[0].angle, 0, 0});
    layout.Place(1, {middle, layout.GetType(1).classes[0].angle, 0, 0});
    EXPECT_GT(layout.GetTotalLoss(), 0);
    Random random(3);
    Mover mover(layout, random);
    const Stand found = mover.FindBetter(1, kOnlyMatching);
    layout.Place(1, found);
    return found;
}

/// Edges of both items go from the same corner in the same direction.
bool LieAlongEachOther(const Layout& layout)
{
    const auto getEnds = [&layout](size_t item, size_t edge) {
        const Shape& shape = layout.GetShape(item);
        const Point at = layout.GetStand(item).position;
        return std::pair{at + Point{shape.ax[edge], shape.ay[edge]},
                         at + Point{shape.bx[edge], shape.by[edge]}};
    };
    for (size_t i = 0; i < layout.GetShape(0).edgeCount; ++i) {
        for (size_t k = 0; k < layout.GetShape(1).edgeCount; ++k) {
            const auto [a, b] = getEnds(0, i);
            const auto [c, d] = getEnds(1, k);
            for (const auto& [from, to, otherFrom, otherTo] :
                 {std::tuple{a, b, c, d}, {a, b, d, c}, {b, a, c, d}, {b, a, d, c}}) {
                const Point u = to - from;
                const Point v = otherTo - otherFrom;
                if (Length(from - otherFrom) < 1e-6 && Dot(u, v) > 0
                    && std::abs(Cross(u, v)) < 1e-9 * Length(u) * Length(v))
                    return true;
            }
        }
    }
    return false;
}

} // namespace

TEST(ZORNestSolverMoverTest, ATurnedTriangleIsLaidAlongItsCopy)
{
    Item turned = MakeItem(kTriangle);
    turned.grain180 = true;
    Layout layout(MakeProblem({MakeItem(kTriangle), turned}, {{0, 0}, {30.03, 20.02}}));
    const Stand found = MatchSecond(layout);
    EXPECT_EQ(layout.GetTotalLoss(), 0);
    EXPECT_NEAR(std::abs(found.angle), std::numbers::pi, 1e-12);
}

TEST(ZORNestSolverMoverTest, FreeAnglesAreTurnedToTheNeighboursEdge)
{
    Item slanted = MakeItem(kTriangle);
    slanted.orientation = 0.3;
    Item free = MakeItem({{0, 0}, {17, 4}, {3, 9}});
    free.maxDeviation = std::numbers::pi;
    for (const bool mirrored : {false, true}) {
        free.mirrored = mirrored;
        Layout layout(MakeProblem({slanted, free}, {{0, 0}, {100, 100}}));
        MatchSecond(layout);
        EXPECT_EQ(layout.GetTotalLoss(), 0);
        EXPECT_TRUE(LieAlongEachOther(layout)) << mirrored;
    }
}

} // namespace ZORNestSolver::SolverShapes
