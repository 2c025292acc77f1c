// Threads of tests.

#pragma once

#include <latch>
#include <thread>
#include <vector>

/// Calls \a function with 0 ... \a number - 1, each in its own thread, all at once, and waits for their ends.
template<class Function>
void RunInThreads(int number, Function function)
{
    std::latch ready(number);
    std::vector<std::jthread> threads;
    int i = 0;
    try {
        for (; i < number; ++i) {
            threads.emplace_back([&ready, &function, i] {
                ready.arrive_and_wait();
                function(i);
            });
        }
    } catch (...) { // no more threads: those that wait end all the same
        ready.count_down(number - i);
        throw;
    }
}
