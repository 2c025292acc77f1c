#include "SystemCallFaults.h"

#include <cerrno>
#include <cstdarg>
#include <dlfcn.h>
#include <fcntl.h>
#include <limits>
#include <unistd.h>

int SystemCallFaults::firstFailure = -1;
int SystemCallFaults::failures = std::numeric_limits<int>::max();
int SystemCallFaults::reads = 0;
bool SystemCallFaults::cannotRead = false;
bool SystemCallFaults::hasNoUnnamedFiles = false;

SystemCallFaults::~SystemCallFaults()
{
    firstFailure = -1;
    failures = std::numeric_limits<int>::max();
    reads = 0;
    cannotRead = false;
    hasNoUnnamedFiles = false;
}

// The libraries of the SDK call these instead of those of the C library.
extern "C" __attribute__((visibility("default"))) ssize_t pwrite(int file, const void* bytes, size_t size,
                                                                 off_t offset)
{
    static const auto original = reinterpret_cast<decltype(&pwrite)>(dlsym(RTLD_NEXT, "pwrite"));
    if (SystemCallFaults::firstFailure == 0 && SystemCallFaults::failures > 0) {
        --SystemCallFaults::failures;
        errno = ENOSPC;
        return -1;
    }
    if (SystemCallFaults::firstFailure > 0)
        --SystemCallFaults::firstFailure;
    return original(file, bytes, size, offset);
}

extern "C" __attribute__((visibility("default"))) ssize_t pread(int file, void* bytes, size_t size,
                                                                off_t offset)
{
    static const auto original = reinterpret_cast<decltype(&pread)>(dlsym(RTLD_NEXT, "pread"));
    ++SystemCallFaults::reads;
    return original(file, bytes, size, offset);
}

extern "C" __attribute__((visibility("default"))) ssize_t read(int file, void* bytes, size_t size)
{
    static const auto original = reinterpret_cast<decltype(&read)>(dlsym(RTLD_NEXT, "read"));
    if (SystemCallFaults::cannotRead) {
        errno = EIO;
        return -1;
    }
    return original(file, bytes, size);
}

extern "C" __attribute__((visibility("default"))) int open(const char* path, int flags, ...)
{
    static const auto original = reinterpret_cast<decltype(&open)>(dlsym(RTLD_NEXT, "open"));
    if ((flags & O_TMPFILE) == O_TMPFILE && SystemCallFaults::hasNoUnnamedFiles) {
        errno = EOPNOTSUPP;
        return -1;
    }
    std::va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = va_arg(arguments, mode_t);
    va_end(arguments);
    return original(path, flags, mode);
}
