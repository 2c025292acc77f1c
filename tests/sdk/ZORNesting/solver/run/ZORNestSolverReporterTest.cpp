// Tests of the solutions that a run reports on the way.

#include "sdk/ZORNesting/solver/SolverShapes.h"

#include <ZORNesting/solver/run/ZORNestSolverReporter.h>

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <stdexcept>
#include <thread>

namespace ZORNestSolver::SolverShapes {

using namespace std::chrono_literals;

namespace {

constexpr auto kPatience = 60s; // until a test gives up

/// Collects what is reported and waits for it.
class Reports
{
public:
    PlanReporter::Listener GetListener()
    {
        return [this](const Solution& solution) {
            const std::lock_guard lock(m_mutex);
            m_solutions.push_back(solution);
            m_changed.notify_all();
        };
    }
    template<class Condition>
    bool WaitFor(Condition isTrue)
    {
        std::unique_lock lock(m_mutex);
        return m_changed.wait_for(lock, kPatience, [&] { return isTrue(m_solutions); });
    }
    bool WaitForCount(size_t count)
    {
        return WaitFor([count](const std::vector<Solution>& all) { return all.size() >= count; });
    }
    std::vector<Solution> Get()
    {
        const std::lock_guard lock(m_mutex);
        return m_solutions;
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::vector<Solution> m_solutions;
};

Job MakeStars(int types, int copies, const std::vector<SheetKind>& kinds)
{
    Job job;
    Random random(5);
    for (int i = 0; i < types; ++i) {
        job.items.push_back(MakeItem(RandomStar(random, 9, random.Between(6, 12)), copies));
        job.items.back().grain180 = true;
        job.items.back().priority = i % 2;
    }
    job.kinds = kinds;
    return job;
}

int CountAll(const Solution& solution)
{
    int count = CountPlaced(solution);
    for (const UnplacedItem& entry : solution.unplaced)
        count += entry.count;
    return count;
}

/// A run without end, in a separate thread.
class EndlessRun
{
public:
    EndlessRun(const Job& job, PlanReporter::Listener listener)
    {
        RunOptions options;
        options.minimumTime = 1e6;
        options.listener = std::move(listener);
        m_thread = std::jthread([this, job, options] { m_solution = Solve(job, options, m_control); });
    }
    ~EndlessRun() { m_control.cancel = true; }
    std::optional<Solution> Stop()
    {
        m_control.stop = true;
        m_thread.join();
        return m_solution;
    }

private:
    Control m_control;
    std::optional<Solution> m_solution;
    std::jthread m_thread;
};

JobPlan MakePlan(double cost)
{
    JobPlan plan;
    plan.cost = cost;
    return plan;
}

} // namespace

TEST(ZORNestSolverReporterTest, EveryReportIsProvedAndComplete)
{
    size_t reported = 0;
    for (const UsageRule rule : {UsageRule::AsListed, UsageRule::BestMix, UsageRule::BestSize}) {
        for (const int stack : {1, 3}) {
            for (const std::vector<SheetKind>& kinds :
                 {std::vector{Roll(60)}, std::vector{Sheet(60, 50, 30), Sheet(80, 70, 30)},
                  std::vector{Sheet(50, 40, 2), Roll(40)}, std::vector{Sheet(50, 40, 2)}}) {
                Job job = MakeStars(4, 4, kinds);
                job.usageRule = rule;
                job.stackSize = stack;
                job.items.push_back(MakeItem(Rectangle(500, 500), 2)); // larger than every sheet
                Reports reports;
                RunOptions options;
                options.clock = Budget::Clock::Steps;
                options.maximumTime = options.minimumTime = 1500;
                options.listener = reports.GetListener();
                Control control;
                const auto last = Solve(job, options, control);
                ASSERT_TRUE(last);
                for (const Solution& solution : reports.Get()) {
                    EXPECT_EQ(FindFaults(job, solution), std::vector<std::string>());
                    EXPECT_EQ(CountAll(solution), 18);
                }
                reported += reports.Get().size();
            }
        }
    }
    EXPECT_GT(reported, 0U);
}

TEST(ZORNestSolverReporterTest, ARunReportsWhileItGoesOn)
{
    for (const std::vector<SheetKind>& kinds : {std::vector{Roll(60)}, std::vector{Sheet(60, 60, -1)},
                                                std::vector{Sheet(50, 40, -1), Sheet(70, 60, -1)}}) {
        Job job = MakeStars(8, 4, kinds);
        job.usageRule = kinds.size() > 1 ? UsageRule::BestMix : UsageRule::AsListed;
        Reports reports;
        EndlessRun run(job, reports.GetListener());
        ASSERT_TRUE(reports.WaitForCount(kinds[0].IsRoll() ? 4 : 1));
        const auto last = run.Stop();
        ASSERT_TRUE(last);
        const std::vector<Solution> all = reports.Get();
        for (size_t i = 1; i < all.size(); ++i)
            EXPECT_LE(all[i].cost, all[i - 1].cost * (1 + 1e-9));
        EXPECT_LE(last->cost, all.back().cost * (1 + 1e-9)) << "a stop loses nothing";
    }
}

TEST(ZORNestSolverReporterTest, AListenerChangesNothing)
{
    for (const SheetKind& kind : {Roll(60), Sheet(70, 60, -1)}) {
        const Job job = MakeStars(8, 3, {kind});
        std::vector<Solution> solutions;
        for (const bool isHeard : {false, true}) {
            RunOptions options;
            options.clock = Budget::Clock::Steps;
            options.maximumTime = options.minimumTime = 6000;
            Reports reports;
            if (isHeard)
                options.listener = reports.GetListener();
            Control control;
            solutions.push_back(*Solve(job, options, control));
        }
        ASSERT_EQ(solutions[0].sheets.size(), solutions[1].sheets.size());
        for (size_t s = 0; s < solutions[0].sheets.size(); ++s) {
            const auto& a = solutions[0].sheets[s].placements;
            const auto& b = solutions[1].sheets[s].placements;
            ASSERT_EQ(a.size(), b.size());
            for (size_t i = 0; i < a.size(); ++i) {
                EXPECT_EQ(a[i].item, b[i].item);
                EXPECT_EQ(a[i].pose.angle, b[i].pose.angle);
                EXPECT_EQ(a[i].pose.position, b[i].pose.position);
            }
        }
    }
}

TEST(ZORNestSolverReporterTest, AListenerThatThrowsEndsNothing)
{
    RunOptions options;
    options.clock = Budget::Clock::Steps;
    options.maximumTime = 2000;
    options.listener = [](const Solution&) { throw std::runtime_error("no"); };
    Control control;
    EXPECT_EQ(CountPlaced(*Solve(MakeStars(4, 2, {Roll(60)}), options, control)), 8);
}

TEST(ZORNestSolverReporterTest, TheLastPlanIsProvedThoughNothingFollows)
{
    Reports reports;
    PlanReporter reporter(
        [](const JobPlan& plan, const Interruption&) {
            Solution solution;
            solution.cost = plan.cost;
            return std::optional(solution);
        },
        reports.GetListener());
    ASSERT_TRUE(reporter.IsListening());
    for (int cost = 1000; cost >= 0; --cost)
        reporter.Offer(MakePlan(cost));
    reporter.Offer(MakePlan(7)); // not better
    EXPECT_TRUE(reports.WaitFor(
        [](const std::vector<Solution>& all) { return !all.empty() && all.back().cost == 0; }));
    EXPECT_LT(reports.Get().size(), 1000U) << "at most ten a second";
}

TEST(ZORNestSolverReporterTest, PlansThatDoNotPassAreNotReported)
{
    Reports reports;
    std::atomic<int> proofs = 0;
    {
        PlanReporter reporter(
            [&proofs](const JobPlan& plan, const Interruption&) -> std::optional<Solution> {
                ++proofs;
                Solution solution;
                solution.cost = plan.cost;
                return plan.cost > 5 ? std::nullopt : std::optional(solution);
            },
            reports.GetListener());
        reporter.Offer(MakePlan(8));
        while (proofs < 1)
            std::this_thread::yield();
        reporter.Offer(MakePlan(4));
        ASSERT_TRUE(reports.WaitForCount(1));
    }
    EXPECT_EQ(reports.Get().size(), 1U);
    EXPECT_EQ(reports.Get()[0].cost, 4);
}

TEST(ZORNestSolverReporterTest, AReporterMayGoWhileItProves)
{
    std::atomic<bool> isProving = false;
    Reports reports;
    {
        PlanReporter reporter(
            [&isProving](const JobPlan&, const Interruption& isOver) {
                isProving = true;
                while (!isOver())
                    std::this_thread::yield();
                return std::optional(Solution());
            },
            reports.GetListener());
        reporter.Offer(MakePlan(1));
        while (!isProving)
            std::this_thread::yield();
    }
    EXPECT_TRUE(reports.Get().empty());
    const PlanReporter silent({}, {});
    EXPECT_FALSE(silent.IsListening());
}

} // namespace ZORNestSolver::SolverShapes
