// Saving and loading containers: a surface of a million triangles, and 100000 points.

#include "BenchmarkMeshes.h"

#include <ZORGeometry/ZORGeoCartesianPoint.h>
#include <ZORGeometry/ZORGeoContainer.h>

#include <QBuffer>

#include <benchmark/benchmark.h>

namespace {

void FillWithSheet(ZORGeoContainer& container)
{
    const std::unique_ptr<ZORGeoSurface> sheet = MakeSheet(TriangleOrder::Rows);
    (new ZORGeoSurface(&container, sheet->GetVertexArray(), sheet->GetCornerArray()))->Initialize();
}

void FillWithPoints(ZORGeoContainer& container)
{
    for (int i = 0; i < 100000; ++i)
        (new ZORGeoCartesianPoint(&container, ZORMathPoint(i, 1.0 / (i + 1), 0)))->Initialize();
}

QByteArray Save(const ZORGeoContainer& container)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    container.Save(buffer);
    return buffer.data();
}

void ContainerSave(benchmark::State& state, void (*fill)(ZORGeoContainer&))
{
    ZORGeoContainer container;
    fill(container);
    qsizetype size = 0;
    for (auto _ : state)
        size = Save(container).size();
    state.counters["MiB"] = double(size) / (1 << 20);
}

void ContainerLoad(benchmark::State& state, void (*fill)(ZORGeoContainer&))
{
    ZORGeoContainer source;
    fill(source);
    QByteArray file = Save(source);
    for (auto _ : state) {
        ZORGeoContainer container;
        QBuffer buffer(&file);
        buffer.open(QIODevice::ReadOnly);
        container.Load(buffer);
        benchmark::DoNotOptimize(container.GetNumGeometry());
    }
}

BENCHMARK_CAPTURE(ContainerSave, MillionTriangles, FillWithSheet)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ContainerLoad, MillionTriangles, FillWithSheet)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ContainerSave, Points, FillWithPoints)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ContainerLoad, Points, FillWithPoints)->Unit(benchmark::kMillisecond);

} // namespace
