// What recording a stack and showing it costs.

#include <ZORSystem/ZORSysStackMonitor.h>
#include <ZORSystem/ZORSysStackTrace.h>

#include <benchmark/benchmark.h>

namespace {

// Calls function() with `frames` frames of its own above the caller's.
template<class Function>
[[gnu::noinline]] void AtDepth(int frames, const Function& function)
{
    if (frames > 0)
        AtDepth(frames - 1, function);
    else
        function();
    benchmark::ClobberMemory(); // no tail call: the frame must stay
}

void CaptureStack(benchmark::State& state)
{
    AtDepth(int(state.range(0)), [&state] {
        for (auto _ : state)
            benchmark::DoNotOptimize(ZORSysStackTrace::Capture(int(state.range(0))));
    });
}
BENCHMARK(CaptureStack)->Arg(8)->Arg(32);

void RecordStack(benchmark::State& state)
{
    ZORSysStackMonitor* monitor = ZORSysStackMonitor::GetStackMonitor();
    const QString label = QStringLiteral("Benchmark");
    AtDepth(32, [&] {
        for (auto _ : state)
            monitor->Record(label, 32);
    });
    monitor->ClearAllTraces();
}
BENCHMARK(RecordStack)->Iterations(100000);

void ShowStack(benchmark::State& state)
{
    ZORSysStackTrace trace;
    AtDepth(32, [&trace] { trace = ZORSysStackTrace::Capture(32); });
    trace.ToSTring(QString(), 0); // the first one reads the debug information
    for (auto _ : state)
        benchmark::DoNotOptimize(trace.ToSTring(QString(), 0));
}
BENCHMARK(ShowStack)->Unit(benchmark::kMicrosecond);

} // namespace
