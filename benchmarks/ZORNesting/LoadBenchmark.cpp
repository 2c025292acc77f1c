// Many nesting jobs at once, and a large one that is canceled, destroyed and watched.

#include "BenchmarkProgram.h"

#include <ZORNesting/ZORNestNestingInput.h>
#include <ZORNesting/ZORNestNestingProcessor.h>
#include <ZORNesting/ZORNestNestingResponse.h>
#include <ZORNesting/ZORNestResult.h>
#include <ZORNesting/ZORNestResultWriter.h>

#include <QBuffer>
#include <QCoreApplication>
#include <QElapsedTimer>

#include <algorithm>
#include <benchmark/benchmark.h>
#include <limits>
#include <memory>

namespace {

/// A part file with one rectangle.
QByteArray MakePart(double width, double height)
{
    const QList<ZORMathPoint> corners{{0, 0, 0}, {width, 0, 0}, {width, height, 0}, {0, height, 0}};
    QList<ZORNestResultSegment> segments;
    for (qsizetype i = 0; i < corners.size(); ++i) {
        segments.append(ZORNestResultSegment::CreateLine(corners[i], corners[(i + 1) % corners.size()]));
        segments.last().SetLayer(ZORNestResultSegment::Nest);
    }
    ZORNestResultItem item(QStringLiteral("part"));
    item.SetPartName(QStringLiteral("part"));
    item.AddShape(ZORNestResultShape(segments));
    ZORNestResult result(ZORNestResult::Translation);
    result.AddItem(item);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    ZORNestResultWriter(&buffer).Write(result);
    return buffer.data();
}

/// Fifty types of rectangles on a roll.
ZORNestNestingInput MakeInput(int numParts)
{
    constexpr int kNumTypes = 50;
    QList<ZORNestNestingInputItem> items;
    for (int i = 0; i < kNumTypes; ++i) {
        ZORNestNestingInputItem item(QStringLiteral("type %1").arg(i), MakePart(20 + i, 70 - i));
        item.SetQuantity(numParts / kNumTypes);
        items.append(item);
    }
    ZORNestNestingInputPackaging roll(QStringLiteral("roll"), 1500, std::numeric_limits<double>::quiet_NaN());
    roll.SetQuantity(1);
    return ZORNestNestingInput(QStringLiteral("material"), 0.25, items, {roll});
}

template<class Condition>
void WaitFor(const Condition& condition)
{
    while (!condition())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

/// From the start to the end of the last of 20 jobs of 100 parts and 300 moves.
void RunJobsAtOnce(benchmark::State& state)
{
    ZORNestNestingInput input = MakeInput(100);
    input.SetMaxSteps(300);
    for (auto _ : state) {
        ZORNestNestingProcessor processor;
        QList<ZORNestNestingResponse*> responses;
        for (int i = 0; i < state.range(0); ++i)
            responses.append(processor.AddInput(input));
        processor.Execute(nullptr);
        WaitFor([&responses] {
            return std::all_of(responses.cbegin(), responses.cend(),
                               [](const auto* response) { return response->IsAtEnd(); });
        });
    }
}
BENCHMARK(RunJobsAtOnce)->Arg(1)->Arg(20)->Unit(benchmark::kMillisecond)->UseRealTime();

/// Handles events for so many milliseconds, at most until the end of the job.
/// \return the longest time that this held up other events, in nanoseconds
qint64 HandleEvents(const ZORNestNestingResponse* response, qint64 milliseconds)
{
    QElapsedTimer whole;
    whole.start();
    qint64 longest = 0;
    while (whole.elapsed() < milliseconds && !response->IsAtEnd()) {
        QElapsedTimer timer;
        timer.start();
        QCoreApplication::processEvents();
        longest = std::max(longest, timer.nsecsElapsed());
    }
    return longest;
}

double ToSeconds(qint64 nanoseconds)
{
    return double(nanoseconds) * 1e-9;
}

constexpr qint64 kWarmUp = 1000; // milliseconds until a job nests
constexpr qint64 kWatch = 5000;  // milliseconds that a job is watched for

/// From the call of Cancel() to the end of the job, which has run for a second.
void CancelJob(benchmark::State& state)
{
    const ZORNestNestingInput input = MakeInput(int(state.range(0)));
    for (auto _ : state) {
        ZORNestNestingProcessor processor;
        ZORNestNestingResponse* const response = processor.AddInput(input);
        processor.Execute(nullptr);
        HandleEvents(response, kWarmUp);
        QElapsedTimer timer;
        timer.start();
        processor.Cancel();
        WaitFor([response] { return response->IsAtEnd(); });
        state.SetIterationTime(ToSeconds(timer.nsecsElapsed()));
    }
}
BENCHMARK(CancelJob)->Arg(500)->Arg(5000)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(5);

/// The destructor of a processor whose job has run for a second.
void DestroyProcessor(benchmark::State& state)
{
    const ZORNestNestingInput input = MakeInput(int(state.range(0)));
    for (auto _ : state) {
        auto processor = std::make_unique<ZORNestNestingProcessor>();
        const ZORNestNestingResponse* const response = processor->AddInput(input);
        processor->Execute(nullptr);
        HandleEvents(response, kWarmUp);
        QElapsedTimer timer;
        timer.start();
        processor.reset();
        state.SetIterationTime(ToSeconds(timer.nsecsElapsed()));
    }
}
BENCHMARK(DestroyProcessor)
    ->Arg(500)
    ->Arg(5000)
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime()
    ->Iterations(5);

/// The time between two signals.
struct Silence
{
    Silence() { timer.start(); }
    void End()
    {
        longest = std::max(longest, timer.nsecsElapsed());
        timer.restart();
    }

    QElapsedTimer timer;
    qint64 longest = 0; // ns
};

/// The longest time between two signals of progress of a job that runs for five seconds.
void LongestSilence(benchmark::State& state)
{
    ZORNestNestingInput input = MakeInput(int(state.range(0)));
    input.SetMaxRunTime(2e-3 * kWatch);
    for (auto _ : state) {
        ZORNestNestingProcessor processor;
        ZORNestNestingResponse* const response = processor.AddInput(input);
        Silence silence;
        const QObject context; // of what follows, which lives as long
        QObject::connect(response, &ZORNestNestingResponse::ProgressChanged, &context,
                         [watch = &silence] { watch->End(); });
        processor.Execute(nullptr);
        HandleEvents(response, kWatch);
        silence.End();
        state.SetIterationTime(ToSeconds(silence.longest));
    }
}
BENCHMARK(LongestSilence)->Arg(5000)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(1);

/// The longest time that the event loop is held up by a job that runs for five seconds in a helper process.
void LongestPause(benchmark::State& state)
{
    ZORNestNestingInput input = MakeInput(int(state.range(0)));
    input.SetMaxRunTime(2e-3 * kWatch);
    for (auto _ : state) {
        ZORNestNestingProcessor processor;
        const ZORNestNestingResponse* const response = processor.AddInput(input);
        processor.Execute(nullptr);
        state.SetIterationTime(ToSeconds(HandleEvents(response, kWatch)));
    }
}
BENCHMARK(LongestPause)->Arg(1000)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(1);

} // namespace

int RunProgram(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    return RunBenchmarks(argc, argv);
}
