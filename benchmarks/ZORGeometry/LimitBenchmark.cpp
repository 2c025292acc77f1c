// Curves that end at limit curves, over a surface of a million triangles.

#include "BenchmarkMeshes.h"

#include <ZORGeometry/ZORGeoCurveOnSurface.h>
#include <ZORGeometry/ZORGeoCurveOnSurfaceProcessor.h>
#include <ZORMathematics/ZORMathPoint.h>
#include <ZORMathematics/ZORMathVector.h>

#include <benchmark/benchmark.h>
#include <limits>
#include <memory>
#include <vector>

namespace {

using Processor = ZORGeoCurveOnSurfaceProcessor;

constexpr double kUnbounded = std::numeric_limits<double>::quiet_NaN();

// Limits from border to border, all across the sheet at the same distance from each other.
std::vector<std::unique_ptr<ZORGeoCurveOnSurface>> MakeLimits(const ZORGeoSurface& sheet, int count)
{
    const Processor processor(&sheet, kUnbounded, kUnbounded);
    std::vector<std::unique_ptr<ZORGeoCurveOnSurface>> limits;
    for (int i = 0; i < count; ++i) {
        const double x = 1000 * (i + 0.5) / count;
        const auto start = sheet.Project(ZORMathPoint(x, 500, GetSheetHeight(x, 500)));
        const auto line = processor.ComputeGeodesic(start, ZORMathVector(0, 1, 0), 0);
        limits.push_back(std::make_unique<ZORGeoCurveOnSurface>(line.GetLocations(), false));
    }
    return limits;
}

void AddSingly(Processor& processor, const std::vector<std::unique_ptr<ZORGeoCurveOnSurface>>& curves)
{
    for (const auto& curve : curves) {
        ZORGeoCurveOnSurfaceLimits limits;
        limits.SetGeometry({curve.get()});
        processor.AddGeometricLimits(limits, Processor::Start | Processor::End);
    }
}

void GeodesicToLimits(benchmark::State& state)
{
    const auto sheet = MakeSheet(TriangleOrder::Rows);
    const auto curves = MakeLimits(*sheet, int(state.range(0)));
    Processor processor(sheet.get(), kUnbounded, kUnbounded);
    AddSingly(processor, curves);
    const auto start = sheet->Project(ZORMathPoint(500, 501, GetSheetHeight(500, 501)));
    qsizetype locations = 0;
    for (auto _ : state)
        locations = processor.ComputeGeodesic(start, ZORMathVector(1, 0, 0), 0).GetLocations().size();
    state.counters["locations"] = double(locations);
}

void AddLimitsSingly(benchmark::State& state)
{
    const auto sheet = MakeSheet(TriangleOrder::Rows);
    const auto curves = MakeLimits(*sheet, int(state.range(0)));
    qsizetype segments = 0;
    for (const auto& curve : curves)
        segments += curve->GetNumPoints() - 1;
    for (auto _ : state) {
        Processor processor(sheet.get(), kUnbounded, kUnbounded);
        AddSingly(processor, curves);
    }
    state.counters["segments"] = double(segments);
}

BENCHMARK(GeodesicToLimits)->Arg(200)->Unit(benchmark::kMicrosecond);
BENCHMARK(AddLimitsSingly)->Arg(50)->Arg(200)->Unit(benchmark::kMillisecond);

} // namespace
