// Shortest geodesics between random places of surfaces of 20,000 triangles.

#include "GridTriangles.h"

#include <ZORGeometry/ZORGeoCurveOnSurfaceProcessor.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORMathematics/ZORMathPoint.h>

#include <benchmark/benchmark.h>
#include <cmath>
#include <functional>
#include <memory>
#include <random>
#include <vector>

namespace {

constexpr int kColumns = 100;
using Shape = std::function<ZORMathPoint(double, double)>;

// A grid over the unit square, bent.
std::unique_ptr<ZORGeoSurface> MakeSurface(const Shape& shape)
{
    QList<ZORMathPoint> vertices;
    for (int row = 0; row <= kColumns; ++row) {
        for (int column = 0; column <= kColumns; ++column)
            vertices.append(shape(double(column) / kColumns, double(row) / kColumns));
    }
    return std::make_unique<ZORGeoSurface>(nullptr, vertices, MakeGridTriangles(kColumns));
}

ZORMathPoint Hills(double x, double y)
{
    return {1000 * x, 1000 * y, 120 * std::sin(15 * x) * std::cos(12 * y)};
}

// Seven eighths of the way round in both directions.
ZORMathPoint Dome(double x, double y)
{
    const double longitude = 5.5 * x;
    const double latitude = 2.6 * (y - 0.5);
    return {500 * std::cos(latitude) * std::cos(longitude), 500 * std::cos(latitude) * std::sin(longitude),
            500 * std::sin(latitude)};
}

std::vector<ZORGeoLocationOnSurface> RandomPlaces(const ZORGeoSurface& surface)
{
    std::mt19937 random(3);
    std::uniform_int_distribution<int> triangle(1, surface.GetNumTriangles());
    std::uniform_real_distribution<double> weight(0, 0.5);
    std::vector<ZORGeoLocationOnSurface> places;
    for (int i = 0; i < 200; ++i) {
        ZORMathPoint corners[3];
        const int chosen = triangle(random);
        surface.GetVertices(chosen, corners[0], corners[1], corners[2]);
        const double b = weight(random);
        const double c = weight(random);
        places.push_back({&surface, chosen, b, c,
                          corners[0] + b * (corners[1] - corners[0]) + c * (corners[2] - corners[0])});
    }
    return places;
}

// 100 pairs; the time is that of a pair.
void PointToPoint(benchmark::State& state, const Shape& shape)
{
    const auto surface = MakeSurface(shape);
    const auto places = RandomPlaces(*surface);
    const ZORGeoCurveOnSurfaceProcessor processor(surface.get(), 0, 0);
    double length = 0;
    size_t pair = 0;
    for (auto _ : state) {
        length += processor.ComputePointToPoint(places[2 * pair], places[2 * pair + 1]).GetEndLength();
        pair = (pair + 1) % 100;
    }
    state.counters["mm"] = benchmark::Counter(length, benchmark::Counter::kAvgIterations);
}

BENCHMARK_CAPTURE(PointToPoint, Hills, Hills)->Unit(benchmark::kMillisecond)->Iterations(200);
BENCHMARK_CAPTURE(PointToPoint, Dome, Dome)->Unit(benchmark::kMillisecond)->Iterations(200);

} // namespace
