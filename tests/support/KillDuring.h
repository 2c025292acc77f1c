// Processes that are killed while they work.

#pragma once

#include <csignal>
#include <poll.h>
#include <random>
#include <sys/wait.h>
#include <unistd.h>

/// Repeats \a work in a separate process, and kills that at a random moment.
/// \param work         is called with 0, 1, 2 ...
/// \param mostWaiting  in ms, between the end of a call and the kill; a few calls should fit
/// \return whether it got that far
template<class Work>
bool KillDuring(Work work, std::mt19937& random, int mostWaiting = 4)
{
    constexpr int kMostCalls = 4; // that end before the kill
    int done[2] = {};
    if (pipe(done) != 0)
        return false;
    const pid_t child = fork();
    if (child == 0) {
        for (int i = 0;; ++i) {
            work(i);
            if (write(done[1], "", 1) != 1)
                _exit(1);
        }
    }
    close(done[1]);
    bool isAlive = child > 0;
    char byte = 0;
    for (unsigned left = 1 + random() % kMostCalls; left > 0; --left)
        isAlive = isAlive && read(done[0], &byte, 1) == 1;
    poll(nullptr, 0, int(random() % unsigned(mostWaiting)));
    if (child > 0) {
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
    }
    close(done[0]);
    return isAlive;
}
