#include "app/ZORHostTermination.h"

#include <QSocketNotifier>

#include <atomic>
#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace {

std::atomic<int> s_pipe = -1;

// Called at any moment, so that it only leaves a note for the event loop.
void Note(int number)
{
    const int error = errno;
    const char byte = char(number);
    [[maybe_unused]] const ssize_t written = write(s_pipe, &byte, sizeof byte);
    errno = error;
}

} // namespace

ZORHostTermination::ZORHostTermination(std::function<void(int)> end)
    : m_end(std::move(end))
{
    if (pipe2(m_pipe, O_CLOEXEC | O_NONBLOCK) != 0)
        return; // the signals end the program as ever
    s_pipe = m_pipe[1];
    m_notifier = new QSocketNotifier(m_pipe[0], QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, &ZORHostTermination::Receive);
    for (const int number : {SIGTERM, SIGINT, SIGHUP}) {
        struct sigaction action = {};
        if (sigaction(number, nullptr, &action) != 0 || action.sa_handler == SIG_IGN)
            continue;
        m_former[number] = action;
        action = {};
        action.sa_handler = Note;
        action.sa_flags = int(SA_RESETHAND | SA_RESTART);
        sigaction(number, &action, nullptr);
    }
}

ZORHostTermination::~ZORHostTermination()
{
    for (const auto& [number, action] : m_former)
        sigaction(number, &action, nullptr);
    s_pipe = -1;
    delete m_notifier;
    for (const int end : m_pipe) {
        if (end >= 0)
            close(end);
    }
}

void ZORHostTermination::Receive()
{
    char byte = 0;
    if (read(m_pipe[0], &byte, sizeof byte) == 1)
        m_end(byte);
}
