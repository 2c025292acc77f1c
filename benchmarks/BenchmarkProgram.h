// What the programs of benchmarks share: their main() reports what goes wrong.

#pragma once

/// Runs the benchmarks that the arguments choose.
/// \return 1 when an argument is unknown, else 0
int RunBenchmarks(int argc, char** argv);

/// Called by main(), which reports an exception that leaves it and ends with 1. By default it runs the
/// benchmarks; a program that needs an application object first defines its own.
/// \return what the program ends with
int RunProgram(int argc, char** argv);
