// Draping of a surface of a million triangles.

#include "ZORGeometry/BenchmarkMeshes.h"

#include <ZORComposites/ZORCompKinematicDraping.h>
#include <ZORMathematics/ZORMathPoint.h>

#include <benchmark/benchmark.h>
#include <cmath>

namespace {

// Nodes in thousands, over the whole of the sheet.
void DrapeSheet(benchmark::State& state, TriangleOrder order)
{
    const auto surface = MakeSheet(order);
    const ZORGeoLocationOnSurface seed = surface->Project({500, 500, GetSheetHeight(500, 500)});
    ZORCompStrategyParameters parameters;
    parameters.step = std::sqrt(surface->GetArea() / (1000.0 * double(state.range(0))));
    parameters.fibreAngle = 0.5;
    const ZORCompKinematicDraping draping(surface.get(), parameters);
    qsizetype nodes = 0;
    ResetPeakMemory();
    for (auto _ : state) {
        const ZORCompDrapingNet net = draping.Run(seed, {1, 0, 0});
        nodes = net.GetNodes().size();
        state.counters["cells"] = double(net.GetCells().size());
        state.counters["shear"] = net.GetMaximumShear();
    }
    state.counters["nodes"] = double(nodes);
    state.counters["nodes/s"] =
        benchmark::Counter(double(nodes), benchmark::Counter::kIsIterationInvariantRate);
    state.counters["MiB"] = GetPeakMemory(); // of the process, the surface included
}

BENCHMARK_CAPTURE(DrapeSheet, Rows, TriangleOrder::Rows)
    ->Arg(10)
    ->Arg(100)
    ->Arg(500)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(DrapeSheet, Shuffled, TriangleOrder::Shuffled)->Arg(100)->Unit(benchmark::kMillisecond);

} // namespace
