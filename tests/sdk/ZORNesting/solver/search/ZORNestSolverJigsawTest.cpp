#include "sdk/ZORNesting/solver/SolverShapes.h"

#include <ZORNesting/solver/search/ZORNestSolverJigsaw.h>

namespace ZORNestSolver::SolverShapes {
namespace {

/// A random straight cut of a convex ring on a lattice of even numbers, through two of its sides.
bool Cut(const Ring& ring, Random& random, Ring& left, Ring& right)
{
    const size_t first = random.Index(ring.size());
    const size_t second = random.Index(ring.size());
    if (first >= second)
        return false;
    const auto middle = [&ring](size_t side) { return (ring[side] + ring[(side + 1) % ring.size()]) * 0.5; };
    left = {middle(first)};
    left.insert(left.end(), ring.begin() + static_cast<std::ptrdiff_t>(first) + 1,
                ring.begin() + static_cast<std::ptrdiff_t>(second) + 1);
    left.push_back(middle(second));
    right = {middle(second)};
    for (size_t i = second + 1; i <= first + ring.size(); ++i)
        right.push_back(ring[i % ring.size()]);
    right.push_back(middle(first));
    return true;
}

/// Items that were cut from a box, in any of four directions.
std::vector<Item> CutBox(double length, double width, size_t count, Random& random)
{
    std::vector<Ring> rings{Rectangle(length, width)};
    while (rings.size() < count) {
        auto largest = std::max_element(rings.begin(), rings.end(), [](const Ring& a, const Ring& b) {
            return GetSignedArea(a) < GetSignedArea(b);
        });
        Ring left;
        Ring right;
        if (!Cut(*largest, random, left, right))
            continue;
        *largest = left;
        rings.push_back(right);
    }
    std::vector<Item> items;
    for (const Ring& ring : rings) {
        const Pose pose{false, static_cast<double>(random.Index(4)) * std::numbers::pi / 2, {}};
        items.push_back(MakeItem(Transform(pose).Apply(Polygon{ring}).front()));
        items.back().grain90 = items.back().grain180 = items.back().grain270 = true;
    }
    return items;
}

std::vector<std::shared_ptr<const ItemType>> Prepare(const Job& job)
{
    std::vector<std::shared_ptr<const ItemType>> types;
    std::string reason;
    for (const Item& item : job.items)
        types.push_back(std::make_shared<const ItemType>(PrepareItem(item, job, reason)));
    return types;
}

} // namespace

TEST(ZORNestSolverJigsawTest, ABoxThatWasCutIsPutTogetherAgain)
{
    Random random(5);
    for (int round = 0; round < 10; ++round) {
        Job job;
        job.items = CutBox(1024, 512, 12, random);
        const auto types = Prepare(job);
        std::vector<size_t> items(job.items.size());
        std::iota(items.begin(), items.end(), size_t{0});
        Control control;
        const Budget budget(control, Budget::Clock::Processor, 0);
        Jigsaw jigsaw(types, items, 1);
        const auto places = jigsaw.Fill({{100, 50}, {1124, 562}}, 4, budget);
        ASSERT_EQ(places.size(), items.size()) << round;
        std::vector<Polygon> placed;
        for (const Jigsaw::Place& place : places) {
            const ItemType& type = *types[place.item];
            const Pose pose = type.GetPose(place.stand.poseClass, place.stand.angle, place.stand.position);
            placed.push_back(Transform(pose).Apply(type.outer));
            EXPECT_TRUE(
                (Box{{100 - 1e-6, 50 - 1e-6}, {1124 + 1e-6, 562 + 1e-6}}.Contains(GetBox(placed.back()))));
        }
        EXPECT_TRUE(AreAllApart(placed, 0));
        EXPECT_TRUE(jigsaw.Fill({{0, 0}, {1024, 512}}, 4, budget).empty()) << "nothing is left";
    }
}

TEST(ZORNestSolverJigsawTest, WhatDoesNotFillABoxIsNotForcedIntoIt)
{
    Job job;
    job.items = {MakeItem(Rectangle(6, 4), 2), MakeItem({{0, 0}, {8, 0}, {0, 13}})};
    const auto types = Prepare(job);
    Control control;
    const Budget budget(control, Budget::Clock::Processor, 0);
    EXPECT_TRUE(Jigsaw(types, {0, 0, 1}, 1).Fill({{0, 0}, {10, 10}}, 4, budget).empty());
    EXPECT_EQ(Jigsaw(types, {0, 0, 1}, 1).Fill({{0, 0}, {12, 4}}, 4, budget).size(), 2U);
}

TEST(ZORNestSolverJigsawTest, CutSheetsAndStripsAreFilledWithoutWaste)
{
    Random random(8);
    Job job;
    job.items = CutBox(640, 480, 9, random);
    const std::vector<Item> more = CutBox(640, 480, 7, random);
    job.items.insert(job.items.end(), more.begin(), more.end());
    job.kinds = {Sheet(640, 480, -1)};
    EXPECT_EQ(SolveWith(job, Budget::Clock::Processor, 5).sheets.size(), 2U);
    job.items = CutBox(640, 480, 8, random);
    job.kinds = {Roll(480)};
    EXPECT_NEAR(SolveWith(job, Budget::Clock::Processor, 5).sheets.at(0).usedLength, 640, 1e-5);
}

} // namespace ZORNestSolver::SolverShapes
