// The dump of a nesting result into the debug log, offscreen.

#include "../ZORNesting/ResultOfItems.h"
#include "nesting/ZORTestResultDump.h"

#include <ZORDebug/ZORDebugVizContainer.h>

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

/// The part of it that draws the segments.
void DrawSegments(benchmark::State& state)
{
    const ZORNestResult result = MakeResult(int(state.range(0)), 20);
    for (auto _ : state) {
        for (const ZORNestResultItem* item : result.GetItems()) {
            for (const ZORNestResultShape* shape : item->GetShapes()) {
                for (const ZORNestResultSegment& segment : shape->GetSegments())
                    ZORDebugVizContainer::AddPolyline(segment.GetPoints(0.001), 0, 0, 0, 0, QString(), 0);
            }
        }
        state.PauseTiming();
        ZORDebugVizContainer::GetContainer()->RemoveAllObjects();
        state.ResumeTiming();
    }
}
BENCHMARK(DrawSegments)->Arg(10000)->Unit(benchmark::kMillisecond)->Iterations(1);

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
