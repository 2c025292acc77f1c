// How fast the nesting solver prepares items, finds a first layout and judges places, and how soon it ends.

#include "solver/base/ZORNestSolverRandom.h"
#include "solver/proof/ZORNestSolverApart.h"
#include "solver/run/ZORNestSolverPlan.h"
#include "solver/run/ZORNestSolverRun.h"
#include "solver/search/ZORNestSolverStrip.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <benchmark/benchmark.h>
#include <ctime>
#include <thread>

namespace ZORNestSolver {
namespace {

/// Round the origin with a few waves, counter-clockwise.
Ring MakeWavyRing(Random& random, int corners, double radius)
{
    struct Wave
    {
        double height;
        double phase;
    };
    std::array<Wave, 6> waves{};
    for (size_t k = 0; k < waves.size(); ++k)
        waves[k] = {random.Between(0, 0.3) / static_cast<double>(k + 1), random.Between(0, 6)};
    Ring ring;
    for (int i = 0; i < corners; ++i) {
        const double angle = 2 * std::numbers::pi * i / corners;
        double r = radius;
        for (size_t k = 0; k < waves.size(); ++k)
            r += radius * waves[k].height * std::cos(static_cast<double>(k + 1) * angle + waves[k].phase);
        ring.push_back({r * std::cos(angle), r * std::sin(angle)});
    }
    return ring;
}

Job MakeJob(int types, int corners, int quantity)
{
    Random random(1);
    Job job;
    for (int i = 0; i < types; ++i) {
        Item item;
        item.contours = {MakeContour(MakeWavyRing(random, corners, random.Between(50, 150)))};
        item.grain180 = true;
        item.quantity = quantity;
        job.items.push_back(item);
    }
    SheetKind roll;
    roll.width = 1500;
    roll.length = std::numeric_limits<double>::quiet_NaN();
    job.kinds = {roll};
    return job;
}

/// The strip of a job of one roll.
std::shared_ptr<Problem> MakeProblem(const PreparedJob& prepared)
{
    auto problem = std::make_shared<Problem>();
    problem->types = prepared.types;
    problem->windows = {prepared.areas[0].window};
    for (size_t i = 0; i < prepared.job.items.size(); ++i)
        problem->items.insert(problem->items.end(), static_cast<size_t>(prepared.job.items[i].quantity), i);
    return problem;
}

bool Accept(const std::vector<Stand>&, double)
{
    return true;
}

/// 100 outlines of 400 corners; the argument is the separation.
void Prepare(benchmark::State& state)
{
    Job job = MakeJob(100, 400, 1);
    job.separation = static_cast<double>(state.range(0));
    for (auto _ : state)
        benchmark::DoNotOptimize(PreparedJob(job).types.data());
}
BENCHMARK(Prepare)->Arg(0)->Arg(5)->Unit(benchmark::kMillisecond);

/// The argument is the number of items, of twenty types.
void FirstLayout(benchmark::State& state)
{
    const Job job = MakeJob(20, 60, static_cast<int>(state.range(0)) / 20);
    for (auto _ : state) {
        const PreparedJob prepared(job);
        Control control;
        StripSearch search(MakeProblem(prepared), 1, Accept);
        search.Construct(Budget(control, Budget::Clock::Processor, 0));
        benchmark::DoNotOptimize(search.GetLength());
    }
}
BENCHMARK(FirstLayout)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond);

/// A search of 20,000 moves for 100 items; evaluations per second are its measure.
void Explore(benchmark::State& state)
{
    const PreparedJob prepared(MakeJob(20, 60, 5));
    uint64_t evaluations = 0;
    for (auto _ : state) {
        Control control;
        const Budget budget(control, Budget::Clock::Steps, 20000);
        StripSearch search(MakeProblem(prepared), 1, Accept);
        search.Construct(budget);
        search.Explore(budget);
        evaluations += search.GetEvaluationCount();
    }
    state.counters["evaluations"] =
        benchmark::Counter(static_cast<double>(evaluations), benchmark::Counter::kIsRate);
}
BENCHMARK(Explore)->Unit(benchmark::kMillisecond);

/// 160 items on sheets of a length, as many as it takes, or on a roll where that is not a number.
Job MakeLongJob(double length)
{
    Job job = MakeJob(40, 60, 4);
    job.kinds[0].length = length;
    job.kinds[0].quantity = -1;
    return job;
}

/// A plate with as many square holes in each direction as the argument says.
void Holes(benchmark::State& state)
{
    const auto count = static_cast<int>(state.range(0));
    const auto makeSquare = [](double size, double x, double y) {
        return MakeContour({{x, y}, {x + size, y}, {x + size, y + size}, {x, y + size}});
    };
    Item plate;
    plate.contours = {makeSquare(2 * count + 1, 0, 0)};
    for (int row = 0; row < count; ++row) {
        for (int column = 0; column < count; ++column)
            plate.contours.push_back(makeSquare(1, 1 + 2.0 * column, 1 + 2.0 * row));
    }
    Job job = MakeJob(0, 0, 0);
    job.items = {plate};
    for (auto _ : state)
        benchmark::DoNotOptimize(PreparedJob(job).types.data());
}
BENCHMARK(Holes)->Arg(100)->Arg(400)->Unit(benchmark::kMillisecond);

/// The proof for two combs whose teeth mesh without touching; the argument is the number of teeth.
void Combs(benchmark::State& state)
{
    const auto teeth = static_cast<int>(state.range(0));
    Ring comb{{0, -5}, {4.0 * teeth, -5}};
    for (int i = teeth; i-- > 0;)
        comb.insert(comb.end(), {{4.0 * i + 1, 0}, {4.0 * i + 1, 10}, {4.0 * i, 10}, {4.0 * i, 0}});
    const Polygon turned = Transform({false, std::numbers::pi, {4.0 * teeth - 1, 11}}).Apply({comb});
    for (auto _ : state)
        benchmark::DoNotOptimize(AreApart({comb}, turned, 1));
}
BENCHMARK(Combs)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

double GetProcessorTime()
{
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

/// The processor time from a stop to the answer, after 500 moves of items.
void StopSearch(benchmark::State& state, double length)
{
    const Job job = MakeLongJob(length);
    RunOptions options;
    options.minimumTime = 3600;
    for (auto _ : state) {
        Control control;
        std::atomic<bool> isOver = false;
        std::jthread run([&] {
            benchmark::DoNotOptimize(Solve(job, options, control));
            isOver = true;
        });
        while (control.steps < 500 && !isOver)
            std::this_thread::yield();
        if (isOver)
            state.SkipWithError("the run has ended by itself");
        const double start = GetProcessorTime();
        control.stop = true;
        run.join();
        state.SetIterationTime(GetProcessorTime() - start);
    }
}
constexpr double kSheetLength = 1500;
constexpr double kNoLength = std::numeric_limits<double>::quiet_NaN();
BENCHMARK_CAPTURE(StopSearch, sheets, kSheetLength)
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime()
    ->Iterations(5);
BENCHMARK_CAPTURE(StopSearch, roll, kNoLength)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(5);

/// The answer to a stop before the start, where 5,000 parts of so many types may be turned freely.
void StopAtStart(benchmark::State& state)
{
    const auto types = static_cast<int>(state.range(0));
    Job job = MakeJob(types, 12, 5000 / types);
    for (Item& item : job.items)
        item.maxDeviation = std::numbers::pi;
    for (auto _ : state) {
        Control control;
        control.stop = true;
        benchmark::DoNotOptimize(Solve(job, {}, control));
    }
}
BENCHMARK(StopAtStart)->Arg(1)->Arg(100)->Unit(benchmark::kMillisecond);

/// The processor time beyond the one that a run may take.
void Overrun(benchmark::State& state, double length)
{
    const Job job = MakeLongJob(length);
    RunOptions options;
    options.clock = Budget::Clock::Processor;
    options.maximumTime = 0.6;
    for (auto _ : state) {
        Control control;
        const double start = GetProcessorTime();
        benchmark::DoNotOptimize(Solve(job, options, control));
        state.SetIterationTime(std::max(GetProcessorTime() - start - options.maximumTime, 0.0));
    }
}
BENCHMARK_CAPTURE(Overrun, sheets, kSheetLength)
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime()
    ->Iterations(5);
BENCHMARK_CAPTURE(Overrun, roll, kNoLength)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(5);

} // namespace
} // namespace ZORNestSolver
