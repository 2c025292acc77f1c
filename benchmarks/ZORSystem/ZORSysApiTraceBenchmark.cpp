// What the API trace costs a call: off, on, and on below another traced call.

#include <ZORSystem/ZORSysApiTrace.h>

#include <benchmark/benchmark.h>

namespace {

class Setter
{
public:
    [[gnu::noinline]] void SetUntraced(double first, double second) { m_sum = first + second; }
    [[gnu::noinline]] void SetTraced(double first, double second)
    {
        ZOR_TRACE_CALL(first, second);
        m_sum = first + second;
    }
    [[gnu::noinline]] void SetNested(double first, double second)
    {
        ZOR_TRACE_CALL(first, second);
        SetTraced(first, second);
    }

    double m_sum = 0;
};

void Untraced(benchmark::State& state)
{
    Setter setter;
    for (auto _ : state) {
        setter.SetUntraced(1.5, 2.5);
        benchmark::DoNotOptimize(setter);
    }
}
BENCHMARK(Untraced);

void TraceOff(benchmark::State& state)
{
    Setter setter;
    for (auto _ : state) {
        setter.SetTraced(1.5, 2.5);
        benchmark::DoNotOptimize(setter);
    }
}
BENCHMARK(TraceOff);

void TraceOn(benchmark::State& state)
{
    ZORSysApiTrace::GetInstance()->SetEnabled(true);
    Setter setter;
    for (auto _ : state) {
        setter.SetTraced(1.5, 2.5);
        benchmark::DoNotOptimize(setter);
    }
    ZORSysApiTrace::GetInstance()->SetEnabled(false);
}
BENCHMARK(TraceOn);

void TraceOnNested(benchmark::State& state)
{
    ZORSysApiTrace::GetInstance()->SetEnabled(true);
    Setter setter;
    for (auto _ : state) {
        setter.SetNested(1.5, 2.5);
        benchmark::DoNotOptimize(setter);
    }
    ZORSysApiTrace::GetInstance()->SetEnabled(false);
}
BENCHMARK(TraceOnNested);

} // namespace
