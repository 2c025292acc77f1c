// Reading, writing and drawing nesting results.

#include "BenchmarkProgram.h"
#include "ResultOfItems.h"

#include <ZORNesting/ZORNestResultReader.h>
#include <ZORNesting/ZORNestResultWriter.h>
#include <ZORNesting/ZORNestVisOptions.h>
#include <ZORNesting/ZORNestVisRepFactory.h>
#include <ZORVisualization/ZORVisRep.h>
#include <ZORVisualization/ZORVisRepFactory.h>

#include <QBuffer>
#include <QGuiApplication>
#include <QImage>

#include <benchmark/benchmark.h>
#include <fstream>
#include <malloc.h>
#include <memory>
#include <string>

namespace {

QByteArray Save(const ZORNestResult& result)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    ZORNestResultWriter(&buffer).Write(result);
    return buffer.data();
}

/// Forgets the most memory that the process has had so far, where the system can.
void ResetPeak()
{
    if (std::ofstream refs("/proc/self/clear_refs"); refs)
        refs << 5;
}

double PeakMebibytes()
{
    std::ifstream status("/proc/self/status");
    std::string word;
    double kibibytes = 0;
    while (status >> word) {
        if (word == "VmHWM:")
            status >> kibibytes;
    }
    return kibibytes / 1024;
}

/// 100 segments an item, half of them arcs. 47,000 items are a file of 100 MB, whose document is 390 MB long.
void ReadResult(benchmark::State& state)
{
    QByteArray file = Save(MakeResult(int(state.range(0)), 100));
    malloc_trim(0);
    ResetPeak();
    for (auto _ : state) {
        QBuffer buffer(&file);
        buffer.open(QIODevice::ReadOnly);
        const ZORNestResult result = ZORNestResultReader(&buffer).Read(nullptr);
        if (!result.IsValid())
            state.SkipWithError("the file cannot be read");
    }
    state.counters["MB"] = double(file.size()) / 1e6;
    state.counters["peak MiB"] = PeakMebibytes();
    state.SetBytesProcessed(int64_t(state.iterations()) * file.size());
}
BENCHMARK(ReadResult)->Arg(4700)->Arg(47000)->Unit(benchmark::kMillisecond)->Iterations(1);

void WriteResult(benchmark::State& state)
{
    const ZORNestResult result = MakeResult(int(state.range(0)), 100);
    qsizetype size = 0;
    for (auto _ : state)
        size = Save(result).size();
    state.SetBytesProcessed(int64_t(state.iterations()) * size);
}
BENCHMARK(WriteResult)->Arg(16000)->Unit(benchmark::kMillisecond);

void CreateRep(benchmark::State& state)
{
    const ZORNestResult result = MakeResult(int(state.range(0)), 40);
    for (auto _ : state)
        benchmark::DoNotOptimize(
            std::unique_ptr<ZORVisRep>(ZORNestVisRepFactory::CreateRep(result, ZORNestVisOptions())));
}
BENCHMARK(CreateRep)->Arg(200)->Arg(10000)->Unit(benchmark::kMillisecond);

/// 4000 x 2000 pixels.
void CreatePicture(benchmark::State& state)
{
    const ZORNestResult result = MakeResult(int(state.range(0)), 40);
    const std::unique_ptr<ZORVisRep> rep(ZORNestVisRepFactory::CreateRep(result, ZORNestVisOptions()));
    QImage image;
    for (auto _ : state)
        image = ZORVisRepFactory::CreateImage(QSize(4000, 2000), {rep.get()}, QColor::fromRgb(0));
    if (const QByteArray path = qgetenv("ZOR_BENCHMARK_PICTURE"); !path.isEmpty())
        image.save(QString::fromLocal8Bit(path));
}
BENCHMARK(CreatePicture)->Arg(200)->Arg(10000)->Unit(benchmark::kMillisecond);

} // namespace

int RunProgram(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    return RunBenchmarks(argc, argv);
}
