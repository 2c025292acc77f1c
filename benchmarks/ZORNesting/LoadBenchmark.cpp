// Many nesting jobs at once, and a large one that is canceled.

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

/// From the call of Cancel() to the end of the job, which has run for a second.
void CancelJob(benchmark::State& state)
{
    const ZORNestNestingInput input = MakeInput(int(state.range(0)));
    for (auto _ : state) {
        ZORNestNestingProcessor processor;
        ZORNestNestingResponse* const response = processor.AddInput(input);
        processor.Execute(nullptr);
        QElapsedTimer timer;
        timer.start();
        while (timer.elapsed() < 1000 && !response->IsAtEnd())
            QCoreApplication::processEvents();
        timer.start();
        processor.Cancel();
        WaitFor([response] { return response->IsAtEnd(); });
        state.SetIterationTime(double(timer.nsecsElapsed()) * 1e-9);
    }
}
BENCHMARK(CancelJob)->Arg(500)->Arg(5000)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(5);

} // namespace

int RunProgram(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    return RunBenchmarks(argc, argv);
}
