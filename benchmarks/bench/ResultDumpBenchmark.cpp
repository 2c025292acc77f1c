// The dump of a nesting result into the debug log, offscreen.

#include "BenchmarkProgram.h"
#include "ZORNesting/ResultOfItems.h"
#include "nesting/ZORTestResultDump.h"

#include <ZORDebug/ZORDebugVizContainer.h>

#include <QDebug>
#include <QGuiApplication>

#include <benchmark/benchmark.h>

namespace {

qint64 numLines = 0;

void CountLine(QtMsgType, const QMessageLogContext&, const QString&)
{
    ++numLines;
}

/// Items with 20 segments and a hole; nobody keeps the lines.
void DumpResult(benchmark::State& state)
{
    const ZORNestResult result = MakeResult(int(state.range(0)), 20);
    const QtMessageHandler former = qInstallMessageHandler(&CountLine);
    for (auto _ : state) {
        numLines = 0;
        ZORTestDumpResult(result, QStringLiteral("sheet.msi"));
        state.PauseTiming();
        ZORDebugVizContainer::GetContainer()->RemoveAllObjects();
        state.ResumeTiming();
    }
    qInstallMessageHandler(former);
    state.counters["lines"] = double(numLines);
}
BENCHMARK(DumpResult)->Arg(10000)->Unit(benchmark::kMillisecond)->Iterations(1);

/// Calls a function with every segment of the same result.
template<class Function>
void ForEachSegment(benchmark::State& state, Function function)
{
    const ZORNestResult result = MakeResult(int(state.range(0)), 20);
    const QtMessageHandler former = qInstallMessageHandler(&CountLine);
    for (auto _ : state) {
        for (const ZORNestResultItem* item : result.GetItems()) {
            for (const ZORNestResultShape* shape : item->GetShapes()) {
                for (const ZORNestResultSegment& segment : shape->GetSegments())
                    function(segment);
            }
        }
        state.PauseTiming();
        ZORDebugVizContainer::GetContainer()->RemoveAllObjects();
        state.ResumeTiming();
    }
    qInstallMessageHandler(former);
}

// Parts of the dump. A segment has 12 lines here, with three points.

void SendLines(benchmark::State& state)
{
    ForEachSegment(state, [](const ZORNestResultSegment& segment) {
        for (int i = 0; i < 12; ++i)
            qDebug() << "\t\t\t\tLine Style: " << segment.GetLineStyle();
    });
}
BENCHMARK(SendLines)->Arg(10000)->Unit(benchmark::kMillisecond)->Iterations(1);

void FormatPoints(benchmark::State& state)
{
    ForEachSegment(state, [](const ZORNestResultSegment& segment) {
        for (int i = 0; i < 3; ++i)
            benchmark::DoNotOptimize(segment.GetStartPoint().ToString('f', 3));
    });
}
BENCHMARK(FormatPoints)->Arg(10000)->Unit(benchmark::kMillisecond)->Iterations(1);

void SampleSegments(benchmark::State& state)
{
    ForEachSegment(state, [](const ZORNestResultSegment& segment) {
        benchmark::DoNotOptimize(segment.GetPoints(0.001));
    });
}
BENCHMARK(SampleSegments)->Arg(10000)->Unit(benchmark::kMillisecond)->Iterations(1);

/// With their sampling.
void DrawSegments(benchmark::State& state)
{
    ForEachSegment(state, [](const ZORNestResultSegment& segment) {
        ZORDebugVizContainer::AddPolyline(segment.GetPoints(0.001), 0, 0, 0, 0, QString(), 0);
    });
}
BENCHMARK(DrawSegments)->Arg(10000)->Unit(benchmark::kMillisecond)->Iterations(1);

} // namespace

int RunProgram(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    return RunBenchmarks(argc, argv);
}
