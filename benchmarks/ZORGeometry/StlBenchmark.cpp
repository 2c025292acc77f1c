// Reading and writing of STL files with a million triangles.

#include "BenchmarkMeshes.h"

#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoStlLoader.h>

#include <QFile>

#include <benchmark/benchmark.h>

namespace {

// Load, weld and adjacency, and the memory they take.
void StlLoad(benchmark::State& state, TriangleOrder order, ZORGeoStlWriter::FileFormats format)
{
    const QString fileName = GetSheetFile(order, format);
    ResetPeakMemory();
    for (auto _ : state) {
        QFile file(fileName);
        file.open(QIODevice::ReadOnly);
        ZORGeoContainer container;
        const auto surfaces = ZORGeoStlLoader(&file).Load(&container, ZORSysValue::Millimeter);
        if (surfaces.size() != 1 || surfaces.constFirst()->GetNumTriangles() != 999698)
            state.SkipWithError("wrong surface");
    }
    state.counters["peak_MiB"] = GetPeakMemory();
}

void StlWrite(benchmark::State& state, ZORGeoStlWriter::FileFormats format)
{
    const auto sheet = MakeSheet(TriangleOrder::Rows);
    QString fileName = GetScratchFolder() + "/written.stl";
    for (auto _ : state)
        ZORGeoStlWriter(fileName, sheet.get(), format).Write(ZORSysValue::Millimeter);
    QFile::remove(fileName);
}

BENCHMARK_CAPTURE(StlLoad, Binary, TriangleOrder::Rows, ZORGeoStlWriter::Binary)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(StlLoad, BinaryShuffled, TriangleOrder::Shuffled, ZORGeoStlWriter::Binary)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(StlLoad, Ascii, TriangleOrder::Rows, ZORGeoStlWriter::Ascii)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(StlLoad, AsciiShuffled, TriangleOrder::Shuffled, ZORGeoStlWriter::Ascii)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(StlWrite, Binary, ZORGeoStlWriter::Binary)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(StlWrite, Ascii, ZORGeoStlWriter::Ascii)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
