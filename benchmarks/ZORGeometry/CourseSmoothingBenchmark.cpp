// Courses over a surface of a million triangles, given a minimum radius.

#include "BenchmarkMeshes.h"

#include <ZORGeometry/ZORGeoCurveOnSurfaceSmoother.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORMathematics/ZORMathPoint.h>

#include <algorithm>
#include <benchmark/benchmark.h>
#include <cmath>

namespace {

using Locations = ZORGeoCurveOnSurfaceSmoother::Locations;

// A meander of 10,000 points: legs of 160 mm, 40 mm apart, with two right angles between them.
Locations MakeMeander(const ZORGeoSurface& sheet)
{
    constexpr int kCount = 10000;
    constexpr double kLeg = 160;
    constexpr double kShift = 40;
    constexpr double kStep = 23 * (kLeg + kShift) / kCount;
    Locations places;
    for (int i = 0; i < kCount; ++i) {
        const int period = int(i * kStep / (kLeg + kShift));
        const double rest = i * kStep - period * (kLeg + kShift);
        const double along = std::min(rest, kLeg);
        const double x = 30 + period * kShift + std::max(rest - kLeg, 0.0);
        const double y = 400 + (period % 2 == 0 ? along : kLeg - along);
        places.append(sheet.Project({x, y, GetSheetHeight(x, y)}));
    }
    return ZORGeoCurveOnSurfaceSmoother::Connect(places);
}

// Points on a wave with a radius of 62 mm at least in the plane.
Locations MakeWave(const ZORGeoSurface& sheet)
{
    Locations places;
    for (int i = 0; i < 10000; ++i) {
        const double x = 20 + 0.096 * i;
        const double y = 500 + 40 * std::sin(x / 50);
        places.append(sheet.Project({x, y, GetSheetHeight(x, y)}));
    }
    return ZORGeoCurveOnSurfaceSmoother::Connect(places);
}

// 100 bends 9 mm apart, from side to side of a straight line.
Locations MakeZigzag(const ZORGeoSurface& sheet, double height)
{
    Locations places;
    for (int i = 0; i < 102; ++i) {
        const double x = 20 + 9 * i;
        const double y = 500 + (i % 2 == 0 ? -height : height);
        places.append(sheet.Project({x, y, GetSheetHeight(x, y)}));
    }
    return ZORGeoCurveOnSurfaceSmoother::Connect(places);
}

Locations MakeLowZigzag(const ZORGeoSurface& sheet)
{
    return MakeZigzag(sheet, 10);
}

Locations MakeHighZigzag(const ZORGeoSurface& sheet)
{
    return MakeZigzag(sheet, 30);
}

void SmoothCourse(benchmark::State& state, Locations (*make)(const ZORGeoSurface&), double radius)
{
    const auto sheet = MakeSheet(TriangleOrder::Rows);
    const Locations course = make(*sheet);
    const ZORGeoCurveOnSurfaceSmoother smoother(radius);
    qsizetype places = 0;
    for (auto _ : state)
        places = smoother.Smooth(course).size();
    state.counters["before"] = double(course.size());
    state.counters["after"] = double(places);
}

BENCHMARK_CAPTURE(SmoothCourse, Meander, MakeMeander, 15)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(SmoothCourse, LowZigzag, MakeLowZigzag, 50)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(SmoothCourse, HighZigzag, MakeHighZigzag, 50)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(SmoothCourse, SmoothWave, MakeWave, 5)->Unit(benchmark::kMillisecond);

} // namespace
