// Saving and loading containers: a surface of a million triangles, and 100000 points; levels of compression.

#include "BenchmarkMeshes.h"

#include <ZORGeometry/ZORGeoCartesianPoint.h>
#include <ZORGeometry/ZORGeoContainer.h>

#include <QBuffer>
#include <QtEndian>

#include <benchmark/benchmark.h>
#include <zstd.h>

namespace {

constexpr qsizetype kHeaderSize = 64;

template<TriangleOrder Order>
void FillWithSheet(ZORGeoContainer& container)
{
    const std::unique_ptr<ZORGeoSurface> sheet = MakeSheet(Order);
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

// The document of a surface, as the file holds it before compression.
QByteArray MakeDocument(TriangleOrder order)
{
    ZORGeoContainer container;
    order == TriangleOrder::Rows ? FillWithSheet<TriangleOrder::Rows>(container)
                                 : FillWithSheet<TriangleOrder::Shuffled>(container);
    const QByteArray file = Save(container);
    QByteArray document(qFromLittleEndian<qint64>(file.constData() + 16), Qt::Uninitialized);
    ZSTD_decompress(document.data(), size_t(document.size()), file.constData() + kHeaderSize,
                    size_t(file.size() - kHeaderSize));
    return document;
}

void ContainerCompress(benchmark::State& state, TriangleOrder order)
{
    const QByteArray document = MakeDocument(order);
    QByteArray compressed(qsizetype(ZSTD_compressBound(size_t(document.size()))), Qt::Uninitialized);
    size_t size = 0;
    for (auto _ : state) {
        size = ZSTD_compress(compressed.data(), size_t(compressed.size()), document.constData(),
                             size_t(document.size()), int(state.range(0)));
    }
    state.counters["MiB"] = double(size) / (1 << 20);
    state.counters["document"] = double(document.size()) / (1 << 20);
}

// Levels of compression.
void TryLevels(benchmark::internal::Benchmark* compression)
{
    for (const int level : {-5, -1, 1, 2, 3, 6})
        compression->Arg(level);
    compression->Unit(benchmark::kMillisecond);
}

BENCHMARK_CAPTURE(ContainerSave, MillionTriangles, FillWithSheet<TriangleOrder::Rows>)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ContainerLoad, MillionTriangles, FillWithSheet<TriangleOrder::Rows>)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ContainerSave, Shuffled, FillWithSheet<TriangleOrder::Shuffled>)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ContainerLoad, Shuffled, FillWithSheet<TriangleOrder::Shuffled>)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ContainerSave, Points, FillWithPoints)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ContainerLoad, Points, FillWithPoints)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ContainerCompress, MillionTriangles, TriangleOrder::Rows)->Apply(TryLevels);
BENCHMARK_CAPTURE(ContainerCompress, Shuffled, TriangleOrder::Shuffled)->Apply(TryLevels);

} // namespace
