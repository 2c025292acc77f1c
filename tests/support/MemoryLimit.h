// Child processes that may use little memory.

#pragma once

#include <QtGlobal>

#include <cstdio>
#include <new>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

/// Skips the running test under sanitizers, whose shadow memory needs all addresses.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define ZOR_REQUIRE_MEMORY_LIMITS() GTEST_SKIP() << "sanitizers do not work with a limit of the address space"
#else
#define ZOR_REQUIRE_MEMORY_LIMITS() static_cast<void>(0)
#endif

/// Allows this process, and what it becomes, so many bytes of address space.
inline void LimitAddresses(qint64 size)
{
    const rlimit limits{rlim_t(size), rlim_t(size)};
    setrlimit(RLIMIT_AS, &limits);
}

/// Allows this process so many bytes more than it uses.
inline void LimitMemory(qint64 room)
{
    long pages = 0;
    if (std::FILE* file = std::fopen("/proc/self/statm", "r")) {
        if (std::fscanf(file, "%ld", &pages) != 1)
            pages = 0;
        std::fclose(file);
    }
    LimitAddresses(pages * sysconf(_SC_PAGESIZE) + room);
}

constexpr int kBadAllocEscaped = 90;

/// Runs a function in a child process that may use \a room bytes more than this process does now.
/// \return what \a run returns, which is 0 to 89; kBadAllocEscaped; or the negative number of the signal that ended
///         the child
template<class Function>
int RunWithMemory(qint64 room, Function run)
{
    const pid_t child = fork();
    if (child == 0) {
        LimitMemory(room);
        int result = kBadAllocEscaped;
        try {
            result = run();
        } catch (const std::bad_alloc&) {
            result = kBadAllocEscaped;
        }
        _exit(result);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}
