#include "BenchmarkProgram.h"

#include <benchmark/benchmark.h>
#include <cstdio>
#include <exception>

int RunBenchmarks(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}

int main(int argc, char** argv)
{
    try {
        return RunProgram(argc, argv);
    } catch (const std::exception& exception) {
        std::fprintf(stderr, "%s: %s\n", argv[0], exception.what());
    } catch (...) {
        std::fprintf(stderr, "%s: an exception of unknown type\n", argv[0]);
    }
    return 1;
}
