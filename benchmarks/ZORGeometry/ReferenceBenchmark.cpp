// What recording stack traces adds to constructions and to changes of reference counts.

#include <ZORGeometry/ZORGeoCartesianPoint.h>
#include <ZORGeometry/ZORGeoDebugOptions.h>
#include <ZORSystem/ZORSysStackMonitor.h>

#include <benchmark/benchmark.h>

namespace {

void AddAndRemoveReference(benchmark::State& state)
{
    ZORGeoDebugOptions* const options = ZORGeoDebugOptions::GetInstance();
    options->SetReferenceStackTraces(state.range(0) != 0);
    const ZORGeoCartesianPoint point(nullptr, ZORMathPoint(1, 2, 3));
    for (auto _ : state) {
        point.AddReference(nullptr);
        point.RemoveReference(nullptr);
    }
    options->SetReferenceStackTraces(false);
    ZORSysStackMonitor::GetStackMonitor()->ClearAllTraces();
}

void ConstructPoint(benchmark::State& state)
{
    ZORGeoDebugOptions* const options = ZORGeoDebugOptions::GetInstance();
    options->SetConstructorStackTraces(state.range(0) != 0);
    for (auto _ : state)
        benchmark::DoNotOptimize(ZORGeoCartesianPoint(nullptr, ZORMathPoint(1, 2, 3)));
    options->SetConstructorStackTraces(false);
    ZORSysStackMonitor::GetStackMonitor()->ClearAllTraces();
}

} // namespace

BENCHMARK(AddAndRemoveReference)->ArgName("traced")->Arg(0)->Arg(1);
BENCHMARK(ConstructPoint)->ArgName("traced")->Arg(0)->Arg(1);
