// Tests of SheetSearch: items on equal sheets.

#include "sdk/ZORNesting/solver/SolverShapes.h"

#include <ZORNesting/solver/search/ZORNestSolverSheets.h>

#include <numeric>

namespace ZORNestSolver::SolverShapes {
namespace {

/// Items of one sheet, placed one after another and then by separating overlaps.
struct Outcome
{
    Packing packing;
    uint64_t steps = 0; // of adding what the first step left
};

Outcome Pack(const Job& job, size_t sheets)
{
    std::vector<std::shared_ptr<const ItemType>> types;
    std::vector<size_t> items;
    std::string reason;
    for (size_t i = 0; i < job.items.size(); ++i) {
        types.push_back(std::make_shared<const ItemType>(PrepareItem(job.items[i], job, reason)));
        items.insert(items.end(), static_cast<size_t>(job.items[i].quantity), i);
    }
    SheetSearch search(types, items, PrepareSheet(job.kinds[0], job), sheets, job.seed);
    std::vector<size_t> all(items.size());
    std::iota(all.begin(), all.end(), size_t{0});
    Control control;
    const Budget budget(control, Budget::Clock::Steps, 0);
    Outcome outcome;
    search.Add(outcome.packing, all, budget);
    const uint64_t before = control.steps;
    search.AddRest(outcome.packing, 0, budget);
    outcome.steps = control.steps - before;
    return outcome;
}

/// Tiles of which ten find room on the sheet.
Job MakeTiles(int types, int copies)
{
    Job job;
    for (int i = 0; i < types; ++i)
        job.items.push_back(MakeItem(Rectangle(10, 10 + 0.1 * i), copies));
    job.kinds = {Sheet(52, 22)};
    return job;
}

} // namespace

TEST(ZORNestSolverSheetsTest, EqualItemsThatAreLeftAreTriedOncePerRound)
{
    const Outcome few = Pack(MakeTiles(1, 11), 1);
    ASSERT_EQ(few.packing.placed.size(), 10U);
    ASSERT_GT(few.steps, 0U);
    const Outcome many = Pack(MakeTiles(1, 300), 1);
    EXPECT_EQ(many.packing.placed.size(), 10U);
    EXPECT_EQ(many.packing.rest.size(), 290U);
    EXPECT_LT(many.steps, 2 * few.steps);
}

TEST(ZORNestSolverSheetsTest, EveryTypeThatIsLeftIsTriedInEveryRound)
{
    const Outcome one = Pack(MakeTiles(1, 60), 1);
    const Outcome three = Pack(MakeTiles(3, 20), 1);
    EXPECT_EQ(three.packing.placed.size(), 10U);
    EXPECT_GT(three.steps, 2 * one.steps);
    EXPECT_LT(three.steps, 5 * one.steps);
}

TEST(ZORNestSolverSheetsTest, EveryCopyThatHasRoomIsAdded)
{
    Job job = MakeTiles(1, 4);
    job.items.push_back(MakeItem(Rectangle(60, 60), 5)); // never fit, and take nothing away
    std::rotate(job.items.begin(), job.items.begin() + 1, job.items.end());
    const Outcome outcome = Pack(job, 1);
    EXPECT_EQ(outcome.packing.placed.size(), 4U);
    EXPECT_EQ(outcome.packing.rest.size(), 5U);
    EXPECT_EQ(outcome.steps, 0U) << "nothing of what is left fits";
    EXPECT_TRUE(Pack(job, 0).packing.placed.empty());
}

} // namespace ZORNestSolver::SolverShapes
