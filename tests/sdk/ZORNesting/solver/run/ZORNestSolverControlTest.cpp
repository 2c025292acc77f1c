#include "sdk/ZORNesting/solver/SolverShapes.h"

#include <thread>

namespace ZORNestSolver::SolverShapes {
namespace {

Job MakeJob(int types, int copies, const SheetKind& kind)
{
    Job job;
    Random random(21);
    for (int i = 0; i < types; ++i) {
        job.items.push_back(MakeItem(RandomStar(random, 9, 10), copies));
        job.items.back().grain180 = true;
    }
    job.kinds = {kind};
    return job;
}

/// A run in a separate thread; its progress is watched until the end.
class Watched
{
public:
    Watched(const Job& job, const RunOptions& options)
        : m_thread([this, job, options] {
            m_solution = Solve(job, options, m_control);
            m_isOver = true;
        })
    {
    }
    Control& GetControl() { return m_control; }
    /// Waits until the run has moved items so often.
    void AwaitSteps(uint64_t steps) const
    {
        while (m_control.steps < steps)
            std::this_thread::yield();
    }
    /// Every value of the progress that was seen, in its order.
    const std::vector<double>& Watch()
    {
        while (!m_isOver) {
            const double progress = m_control.progress;
            if (m_seen.empty() || progress != m_seen.back())
                m_seen.push_back(progress);
            std::this_thread::yield();
        }
        m_thread.join();
        m_seen.push_back(m_control.progress);
        return m_seen;
    }
    const std::optional<Solution>& GetSolution() const { return m_solution; }

private:
    Control m_control;
    std::optional<Solution> m_solution;
    std::atomic<bool> m_isOver = false;
    std::vector<double> m_seen;
    std::jthread m_thread;
};

/// Limits a run by moves of items, which a busy machine does not change.
RunOptions Moves(double most, double least)
{
    RunOptions options;
    options.clock = Budget::Clock::Steps;
    options.maximumTime = most;
    options.minimumTime = least;
    return options;
}

/// A run that no lack of progress ends while a test may take.
RunOptions Endless()
{
    RunOptions options;
    options.minimumTime = 1e9;
    return options;
}

} // namespace

TEST(ZORNestSolverControlTest, ProgressOnlyRisesAndEndsAtOne)
{
    for (const SheetKind& kind : {Roll(60), Sheet(60, 60, -1)}) {
        Watched run(MakeJob(12, 3, kind), Moves(20000, 20000));
        const std::vector<double> seen = run.Watch();
        EXPECT_TRUE(std::is_sorted(seen.begin(), seen.end()));
        EXPECT_GE(seen.size(), 4U);
        EXPECT_EQ(seen.back(), 1);
    }
}

TEST(ZORNestSolverControlTest, StopAnswersWithEveryItem)
{
    for (const SheetKind& kind : {Roll(100), Sheet(100, 100, -1)}) {
        Watched run(MakeJob(40, 4, kind), Endless());
        run.AwaitSteps(500);
        run.GetControl().stop = true;
        run.Watch();
        ASSERT_TRUE(run.GetSolution().has_value());
        EXPECT_EQ(CountPlaced(*run.GetSolution()) + static_cast<int>(run.GetSolution()->unplaced.size()),
                  160);
    }
}

TEST(ZORNestSolverControlTest, CancelEndsWithoutAResult)
{
    Watched run(MakeJob(40, 4, Roll(100)), Endless());
    run.AwaitSteps(500);
    run.GetControl().cancel = true;
    run.Watch();
    EXPECT_FALSE(run.GetSolution().has_value());
}

TEST(ZORNestSolverControlTest, TheMaximumIsHard)
{
    constexpr double kMost = 5000;
    for (const SheetKind& kind : {Roll(100), Sheet(100, 100, -1), Sheet(100, 100, 2)}) {
        Control control;
        const auto solution = Solve(MakeJob(40, 4, kind), Moves(kMost, 0), control);
        EXPECT_LT(static_cast<double>(control.steps), 1.1 * kMost);
        EXPECT_TRUE(solution.has_value());
    }
}

TEST(ZORNestSolverControlTest, WhatTheTimeDoesNotSufficeForIsReportedSo)
{
    const Solution solution = SolveInSteps(MakeJob(40, 4, Sheet(100, 100, 2)), 40);
    EXPECT_GT(CountPlaced(solution), 10);
    ASSERT_FALSE(solution.unplaced.empty());
    EXPECT_EQ(solution.unplaced.front().reason, "no time left");
    for (const SheetKind& kind : {Sheet(100, 100, -1), Roll(100)})
        EXPECT_EQ(CountPlaced(SolveInSteps(MakeJob(40, 4, kind), 40)), 160) << "all are placed all the same";
}

TEST(ZORNestSolverControlTest, TheMinimumTimeIsUsedWhereSomethingCanBeGained)
{
    for (const SheetKind& kind : {Roll(30), Sheet(200, 30, 1)}) {
        Control control;
        Solve(MakeJob(2, 2, kind), Moves(1000000, 15000), control);
        EXPECT_GE(control.steps, 15000U);
        EXPECT_LT(control.steps, 500000U);
    }
}

TEST(ZORNestSolverControlTest, WithoutAMaximumTheRunEndsForLackOfProgress)
{
    Job job;
    job.items = {MakeItem(Rectangle(10, 10), 3)};
    for (const SheetKind& kind : {Roll(10.5), Sheet(15, 15, -1)}) {
        job.kinds = {kind};
        Control control;
        EXPECT_EQ(CountPlaced(*Solve(job, {}, control)), 3);
        EXPECT_EQ(control.progress, 1);
    }
}

TEST(ZORNestSolverControlTest, TheSameSeedGivesTheSameLayoutBitForBit)
{
    for (const SheetKind& kind : {Roll(60), Sheet(70, 60, -1)}) {
        Job job = MakeJob(12, 2, kind);
        job.items[0].maxDeviation = 0.5;
        const Solution first = SolveInSteps(job, 6000);
        const Solution second = SolveInSteps(job, 6000);
        job.seed = 2;
        const Solution other = SolveInSteps(job, 6000);
        ASSERT_EQ(first.sheets.size(), second.sheets.size());
        bool differs = other.sheets.size() != first.sheets.size();
        for (size_t s = 0; s < first.sheets.size(); ++s) {
            const auto& placements = first.sheets[s].placements;
            ASSERT_EQ(placements.size(), second.sheets[s].placements.size());
            for (size_t i = 0; i < placements.size(); ++i) {
                const Pose& pose = second.sheets[s].placements[i].pose;
                EXPECT_EQ(placements[i].item, second.sheets[s].placements[i].item);
                EXPECT_EQ(placements[i].pose.position, pose.position);
                EXPECT_EQ(placements[i].pose.angle, pose.angle);
                differs = differs || i >= other.sheets[s].placements.size()
                          || !(other.sheets[s].placements[i].pose.position == pose.position);
            }
        }
        EXPECT_TRUE(differs);
    }
}

TEST(ZORNestSolverControlTest, ThreadsShareTheWork)
{
    RunOptions options = Moves(20000, 20000);
    options.threads = 3;
    Control control;
    const Job job = MakeJob(8, 2, Roll(40));
    const auto solution = Solve(job, options, control);
    EXPECT_EQ(CountPlaced(*solution), 16);
    EXPECT_TRUE(FindFaults(job, *solution).empty());
}

} // namespace ZORNestSolver::SolverShapes
