// A container of 100000 geometries.

#include <ZORGeometry/ZORGeoCartesianPoint.h>
#include <ZORGeometry/ZORGeoContainer.h>

#include <benchmark/benchmark.h>

namespace {

constexpr int kCount = 100000;

void Fill(ZORGeoContainer& container)
{
    for (int i = 0; i < kCount; ++i)
        (new ZORGeoCartesianPoint(&container, ZORMathPoint(i, 0, 0)))->Initialize();
}

void ContainerAdd(benchmark::State& state)
{
    for (auto _ : state) {
        ZORGeoContainer container;
        Fill(container);
        state.PauseTiming();
        container.Clear();
        state.ResumeTiming();
    }
}

void ContainerClear(benchmark::State& state)
{
    ZORGeoContainer container;
    for (auto _ : state) {
        state.PauseTiming();
        Fill(container);
        state.ResumeTiming();
        container.Clear();
    }
}

// Name and reference count of every geometry, as a table shows them.
void ContainerList(benchmark::State& state)
{
    ZORGeoContainer container;
    Fill(container);
    for (auto _ : state) {
        qint64 sum = 0;
        for (int i = 0; i < container.GetNumGeometry(); ++i) {
            const ZORGeoGeometry* geometry = container.GetGeometryByIndex(i);
            sum += geometry->GetReferenceCount() + geometry->objectName().size();
        }
        benchmark::DoNotOptimize(sum);
    }
}

// One out of the middle, then the next look-up, until half are gone.
void ContainerRemoveAndLook(benchmark::State& state)
{
    for (auto _ : state) {
        state.PauseTiming();
        ZORGeoContainer container;
        Fill(container);
        state.ResumeTiming();
        for (int i = 0; i < kCount / 2; ++i)
            container.GetGeometryByIndex(kCount / 4)->RemoveNoReferences();
    }
}

BENCHMARK(ContainerAdd)->Unit(benchmark::kMillisecond);
BENCHMARK(ContainerClear)->Unit(benchmark::kMillisecond);
BENCHMARK(ContainerList)->Unit(benchmark::kMillisecond);
BENCHMARK(ContainerRemoveAndLook)->Unit(benchmark::kMillisecond);

} // namespace
