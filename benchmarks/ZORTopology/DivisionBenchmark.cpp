// Division of surfaces of a million triangles into faces, edges and vertices.

#include "GridTriangles.h"
#include "ZORGeometry/BenchmarkMeshes.h"

#include <ZORMathematics/ZORMathPoint.h>
#include <ZORTopology/ZORTopBody.h>

#include <benchmark/benchmark.h>
#include <numbers>

namespace {

void Divide(benchmark::State& state, const ZORGeoSurface& surface)
{
    for (auto _ : state) {
        const ZORTopBody body(nullptr, &surface, std::numbers::pi / 4);
        state.counters["faces"] = body.GetNumFaces();
        state.counters["edges"] = body.GetNumEdges();
    }
}

void DivideSheet(benchmark::State& state, TriangleOrder order)
{
    Divide(state, *MakeSheet(order));
}

// Folded along every row and column: every cell is a face.
void DivideFolds(benchmark::State& state)
{
    constexpr int kCells = 707;
    QList<ZORMathPoint> vertices;
    for (int row = 0; row <= kCells; ++row) {
        for (int column = 0; column <= kCells; ++column)
            vertices.append(ZORMathPoint(column, row, 1.5 * (row % 2 + column % 2)));
    }
    Divide(state, ZORGeoSurface(nullptr, vertices, MakeGridTriangles(kCells)));
}

// Triangles that share no vertex.
void DivideSoup(benchmark::State& state)
{
    QList<ZORMathPoint> vertices;
    QList<ZORGeoSurface::Corners> triangles;
    for (int i = 0; i < 1000000; ++i) {
        triangles.append({3 * i, 3 * i + 1, 3 * i + 2});
        vertices << ZORMathPoint(i, 0, 0) << ZORMathPoint(i + 1, 0, 0) << ZORMathPoint(i, 1, 0);
    }
    Divide(state, ZORGeoSurface(nullptr, vertices, triangles));
}

BENCHMARK_CAPTURE(DivideSheet, Rows, TriangleOrder::Rows)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(DivideSheet, Shuffled, TriangleOrder::Shuffled)->Unit(benchmark::kMillisecond);
BENCHMARK(DivideFolds)->Unit(benchmark::kMillisecond);
BENCHMARK(DivideSoup)->Unit(benchmark::kMillisecond);

} // namespace
