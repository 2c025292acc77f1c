// What main() of the command-line tools has in common.

#pragma once

#include <cstdio>
#include <exception>
#include <new>

/// Runs a tool and returns its exit code. An exception that leaves the tool is reported on stderr.
/// \param run              returns the exit code
/// \param failureExitCode  the exit code after an exception
template<class Run>
int ZorRunTool(const Run& run, int failureExitCode)
{
    try {
        return run();
    } catch (const std::bad_alloc&) {
        std::fputs("out of memory\n", stderr);
    } catch (const std::exception& exception) {
        std::fprintf(stderr, "%s\n", exception.what());
    }
    return failureExitCode;
}
