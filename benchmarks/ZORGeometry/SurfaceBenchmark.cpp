// Operations on a surface of a million triangles.

#include "BenchmarkMeshes.h"

#include <ZORMathematics/ZORMathPoint.h>
#include <ZORMathematics/ZORMathSetOfPoints.h>
#include <ZORMathematics/ZORMathVector.h>

#include <benchmark/benchmark.h>
#include <vector>

namespace {

// The neighbour table, from arrays that are there.
void Adjacency(benchmark::State& state, TriangleOrder order)
{
    const auto sheet = MakeSheet(order);
    for (auto _ : state) {
        const ZORGeoSurface surface(nullptr, sheet->GetVertexArray(), sheet->GetCornerArray());
        benchmark::DoNotOptimize(surface.GetNumTriangles());
    }
}

// Every edge once, as a wireframe display collects them.
ZORMathSetOfPoints CollectEdges(const ZORGeoSurface& surface)
{
    ZORMathSetOfPoints edges;
    std::vector<char> visited(size_t(surface.GetNumTriangles()) + 1, 0);
    std::vector<int> waiting;
    for (int seed = 1; seed <= surface.GetNumTriangles(); ++seed) {
        waiting.push_back(seed);
        while (!waiting.empty()) {
            const int triangle = waiting.back();
            waiting.pop_back();
            if (visited[size_t(triangle)])
                continue;
            visited[size_t(triangle)] = 1;
            ZORMathPoint corners[3];
            int across[3];
            surface.GetVertices(triangle, corners[0], corners[1], corners[2]);
            surface.GetNeighbors(triangle, across[0], across[1], across[2]);
            for (int side = 0; side < 3; ++side) {
                if (across[side] != 0 && visited[size_t(across[side])])
                    continue;
                edges.append(corners[side]);
                edges.append(corners[(side + 1) % 3]);
                if (across[side] != 0)
                    waiting.push_back(across[side]);
            }
        }
    }
    return edges;
}

void WireframeWalk(benchmark::State& state)
{
    const auto sheet = MakeSheet(TriangleOrder::Rows);
    for (auto _ : state) {
        if (CollectEdges(*sheet).size() != 2 * (999698 * 3 + 4 * 707) / 2)
            state.SkipWithError("wrong number of edges");
    }
}

// The first query builds the search tree.
void TreeBuild(benchmark::State& state, TriangleOrder order)
{
    const auto sheet = MakeSheet(order);
    for (auto _ : state) {
        state.PauseTiming();
        auto surface =
            std::make_unique<ZORGeoSurface>(nullptr, sheet->GetVertexArray(), sheet->GetCornerArray());
        state.ResumeTiming();
        benchmark::DoNotOptimize(surface->Project(ZORMathPoint()));
        state.PauseTiming();
        surface.reset();
        state.ResumeTiming();
    }
}

// 100000 closest points for places at a height over the sheet.
void Project(benchmark::State& state, double lower, double upper)
{
    const auto sheet = MakeSheet(TriangleOrder::Rows);
    const std::vector<ZORMathPoint> points = MakePointsOverSheet(lower, upper);
    sheet->Project(points.front());
    for (auto _ : state) {
        for (const ZORMathPoint& point : points)
            benchmark::DoNotOptimize(sheet->Project(point));
    }
}

// 100000 slanting rays from above.
void IntersectRay(benchmark::State& state)
{
    const auto sheet = MakeSheet(TriangleOrder::Rows);
    const std::vector<ZORMathPoint> points = MakePointsOverSheet(100, 500);
    sheet->Project(points.front());
    for (auto _ : state) {
        for (const ZORMathPoint& point : points)
            benchmark::DoNotOptimize(sheet->IntersectRay(point, ZORMathVector(0.1, 0.2, -1)));
    }
}

BENCHMARK_CAPTURE(Adjacency, Rows, TriangleOrder::Rows)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Adjacency, Shuffled, TriangleOrder::Shuffled)->Unit(benchmark::kMillisecond);
BENCHMARK(WireframeWalk)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(TreeBuild, Rows, TriangleOrder::Rows)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(TreeBuild, Shuffled, TriangleOrder::Shuffled)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(Project, Near, -1, 1)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Project, Far, 500, 2000)->Unit(benchmark::kMillisecond);
BENCHMARK(IntersectRay)->Unit(benchmark::kMillisecond);

} // namespace
