// Memory that repeated work leaves behind.

#pragma once

#include <gtest/gtest.h>

#include <malloc.h>
#include <string>

/// Repeats \a cycle and returns the bytes by which the heap grows each time, after ten times that fill the caches of Qt; the
/// property "bytesPerCycle" of the test records them. Ends at a fatal failure.
template<class Cycle>
double MeasureHeapGrowth(int numCycles, const Cycle& cycle)
{
    constexpr int kWarmUp = 10;
    size_t before = 0;
    for (int i = 0; i < kWarmUp + numCycles && !testing::Test::HasFatalFailure(); ++i) {
        if (i == kWarmUp)
            before = mallinfo2().uordblks;
        cycle();
    }
    const double growth = (double(mallinfo2().uordblks) - double(before)) / numCycles;
    testing::Test::RecordProperty("bytesPerCycle", std::to_string(growth));
    return growth;
}
