// Curves over a surface of a million triangles.

#include "BenchmarkMeshes.h"

#include <ZORGeometry/ZORGeoCurveOnSurfaceProcessor.h>
#include <ZORMathematics/ZORMathPoint.h>
#include <ZORMathematics/ZORMathVector.h>

#include <benchmark/benchmark.h>
#include <cmath>
#include <limits>
#include <numbers>
#include <random>
#include <vector>

namespace {

struct Start
{
    ZORGeoLocationOnSurface location;
    double angle;
};

std::vector<Start> RandomStarts(const ZORGeoSurface& sheet)
{
    std::mt19937 random(11);
    std::uniform_real_distribution<double> across(0, 1000);
    std::uniform_real_distribution<double> angle(0, 2 * std::numbers::pi);
    std::vector<Start> starts(1000);
    for (Start& start : starts) {
        const double x = across(random);
        const double y = across(random);
        start = {sheet.Project(ZORMathPoint(x, y, GetSheetHeight(x, y))), angle(random)};
    }
    return starts;
}

using Method = ZORGeoCurveOnSurfaceResult (ZORGeoCurveOnSurfaceProcessor::*)(const ZORGeoLocationOnSurface&,
                                                                             const ZORMathVector&,
                                                                             double) const;

// 1000 curves from random starts to the border, on both sides.
void ToTheBorder(benchmark::State& state, Method method, TriangleOrder order)
{
    const auto sheet = MakeSheet(order);
    const std::vector<Start> starts = RandomStarts(*sheet);
    constexpr double kUnbounded = std::numeric_limits<double>::quiet_NaN();
    const ZORGeoCurveOnSurfaceProcessor processor(sheet.get(), kUnbounded, kUnbounded);
    qint64 crossed = 0;
    for (auto _ : state) {
        for (const auto& [location, angle] : starts)
            crossed += (processor.*method)(location, ZORMathVector(1, 0, 0), angle).GetLocations().size() - 1;
    }
    state.counters["triangles"] = benchmark::Counter(double(crossed), benchmark::Counter::kAvgIterations);
    // Shown with its unit: 50n is 0.05 us.
    state.counters["per_triangle"] =
        benchmark::Counter(double(crossed), benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

BENCHMARK_CAPTURE(ToTheBorder, Geodesic, &ZORGeoCurveOnSurfaceProcessor::ComputeGeodesic, TriangleOrder::Rows)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ToTheBorder, GeodesicShuffled, &ZORGeoCurveOnSurfaceProcessor::ComputeGeodesic,
                  TriangleOrder::Shuffled)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ToTheBorder, ConstantAngle, &ZORGeoCurveOnSurfaceProcessor::ComputeConstantAngle,
                  TriangleOrder::Rows)
    ->Unit(benchmark::kMillisecond);

} // namespace
