// A program that only runs benchmarks.

#include "BenchmarkProgram.h"

int RunProgram(int argc, char** argv)
{
    return RunBenchmarks(argc, argv);
}
