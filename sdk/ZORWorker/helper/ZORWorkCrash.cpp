#include "ZORWorkCrash_p.h"
#include "ZORWorkSpawn_p.h"
#include "job/ZORWorkFailure_p.h"

#include <ZORSystem/ZORSysStackTrace.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <exception>
#include <execinfo.h>
#include <new>
#include <sched.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

constexpr std::array<int, 5> kCrashes{SIGSEGV, SIGABRT, SIGBUS, SIGFPE, SIGILL};
constexpr unsigned kPatience = 4; // seconds for names and lines
constexpr int kMaximumFrames = 64;
constexpr size_t kStackSize = size_t(1) << 20; // bytes; symbols are read on it

std::atomic<int> s_crash = 0; // signal that came first
std::atomic<pid_t> s_crashedThread = 0;
std::array<void*, kMaximumFrames> s_frames;
int s_frameCount = 0;
int s_socket = -1;
std::terminate_handler s_terminate = nullptr;

std::atomic_flag s_memoryStackLock; // a lock that needs no memory
std::array<void*, kMaximumFrames> s_memoryFrames;
int s_memoryFrameCount = 0;

/// Guards the stack of the operator new that failed last.
class MemoryStackLock
{
public:
    MemoryStackLock()
    {
        while (s_memoryStackLock.test_and_set())
            sched_yield();
    }
    ~MemoryStackLock() { s_memoryStackLock.clear(); }
    Q_DISABLE_COPY_MOVE(MemoryStackLock)
};

void Write(const char* text, size_t size)
{
    [[maybe_unused]] const ssize_t written = write(STDERR_FILENO, text, size);
}

[[noreturn]] void Die()
{
    const int crash = s_crash;
    std::signal(crash, SIG_DFL);
    sigset_t set;
    sigemptyset(&set);
    sigaddset(&set, crash);
    pthread_sigmask(SIG_UNBLOCK, &set, nullptr);
    raise(crash);
    _exit(128 + crash);
}

// Names and lines could not be read, for want of time or by another crash: addresses can always be written.
[[noreturn]] void DieWithAddresses()
{
    std::signal(SIGALRM, SIG_IGN);
    backtrace_symbols_fd(s_frames.data(), s_frameCount, STDERR_FILENO);
    Die();
}

void OnAlarm(int)
{
    DieWithAddresses();
}

// Reading names allocates memory, which no signal handler should; what goes wrong ends in DieWithAddresses().
void OnCrash(int number)
{
    int none = 0;
    if (!s_crash.compare_exchange_strong(none, number)) {
        while (gettid() != s_crashedThread)
            pause(); // the thread that crashed first ends the process
        DieWithAddresses();
    }
    s_crashedThread = gettid();
    shutdown(s_socket, SHUT_RDWR);
    s_frameCount = backtrace(s_frames.data(), kMaximumFrames);
    rlimit limit{};
    if (getrlimit(RLIMIT_AS, &limit) == 0) {
        limit.rlim_cur = limit.rlim_max;
        setrlimit(RLIMIT_AS, &limit);
    }
    std::signal(SIGALRM, OnAlarm);
    alarm(kPatience);
    const QByteArray text = ZORSysStackTrace::Capture(kMaximumFrames).ToSTring(QString(), 0).toLocal8Bit();
    Write(text.constData(), size_t(text.size()));
    Die();
}

// Addresses only, which needs no memory: the job may be in the middle of an allocation, and goes on.
void OnStackRequest(int)
{
    const int error = errno;
    std::array<void*, kMaximumFrames> frames;
    backtrace_symbols_fd(frames.data(), backtrace(frames.data(), kMaximumFrames), STDERR_FILENO);
    errno = error;
}

// The stack is written when the job fails for it, and no longer known then.
void OnNoMemory()
{
    {
        const MemoryStackLock lock;
        s_memoryFrameCount = backtrace(s_memoryFrames.data(), kMaximumFrames);
    }
    throw std::bad_alloc();
}

[[noreturn]] void OnTerminate()
{
    try {
        if (const std::exception_ptr exception = std::current_exception())
            std::rethrow_exception(exception);
    } catch (const std::bad_alloc&) {
        ZORWorkCrash::WriteMemoryStack();
        _exit(ZORWorkFailure::kMemoryExitCode);
    } catch (...) {
    }
    s_terminate(); // says what was thrown
    std::abort();
}

} // namespace

void ZORWorkCrash::End(int code)
{
    while (s_crash != 0)
        pause();
    _exit(code);
}

void ZORWorkCrash::ForgetMemoryStack()
{
    const MemoryStackLock lock;
    s_memoryFrameCount = 0;
}

void ZORWorkCrash::WriteMemoryStack()
{
    const MemoryStackLock lock;
    backtrace_symbols_fd(s_memoryFrames.data(), s_memoryFrameCount, STDERR_FILENO);
}

void ZORWorkCrash::Install(int socket)
{
    s_socket = socket;
    void* frame = nullptr;
    backtrace(&frame, 1); // loads what it needs, which a crashed process could not

    static std::array<char, kStackSize> stack; // where the stack of the thread is exhausted
    stack_t alternative{};
    alternative.ss_sp = stack.data();
    alternative.ss_size = stack.size();
    sigaltstack(&alternative, nullptr);

    struct sigaction action
    {
    };
    action.sa_handler = OnCrash;
    action.sa_flags = SA_ONSTACK | SA_NODEFER;
    sigemptyset(&action.sa_mask);
    for (const int crash : kCrashes)
        sigaction(crash, &action, nullptr);
    action.sa_handler = OnStackRequest;
    action.sa_flags = SA_ONSTACK | SA_RESTART;
    sigaction(ZORWorkSpawn::kStackSignal, &action, nullptr);
    s_terminate = std::set_terminate(OnTerminate);
    std::set_new_handler(OnNoMemory);
}
