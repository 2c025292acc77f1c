#include "ZORWorkHelper_p.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <poll.h>
#include <sys/socket.h>
#include <sys/wait.h>

namespace {

constexpr qsizetype kMaximumErrors = qsizetype(1) << 16; // bytes
constexpr size_t kErrorPieceSize = 4096;                 // bytes
constexpr int kErrorPieces = 16;                         // what a pipe holds
constexpr auto kEndPulse = std::chrono::milliseconds(2); // between two questions whether a process has ended

int GetMilliseconds(std::optional<ZORWorkHelper::Clock::time_point> deadline)
{
    if (!deadline)
        return -1;
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(*deadline - ZORWorkHelper::Clock::now());
    return int(std::clamp<qint64>(left.count(), 0, 1000000));
}

} // namespace

ZORWorkHelper::ZORWorkHelper(ZORWorkSpawned process, const QString& program)
    : m_process(std::move(process))
    , m_program(program)
{
}

ZORWorkHelper::~ZORWorkHelper()
{
    Kill();
}

void ZORWorkHelper::Send(const ZORWorkProtocol::Message& message)
{
    if (m_queued.isEmpty())
        m_queued = ZORWorkProtocol::Encode(message); // without a second copy of a long one
    else
        m_queued.append(ZORWorkProtocol::Encode(message));
}

void ZORWorkHelper::Wake()
{
    const quint64 one = 1;
    [[maybe_unused]] const ssize_t written = write(m_process.wake.Get(), &one, sizeof one);
}

void ZORWorkHelper::Exchange(std::optional<Clock::time_point> deadline)
{
    if (m_isClosed)
        return;
    const short wanted = m_queued.isEmpty() ? POLLIN : POLLIN | POLLOUT;
    std::array<pollfd, 3> events{{{m_process.socket.Get(), wanted, 0},
                                  {m_process.errors.IsOpen() ? m_process.errors.Get() : -1, POLLIN, 0},
                                  {m_process.wake.Get(), POLLIN, 0}}};
    if (poll(events.data(), events.size(), GetMilliseconds(deadline)) <= 0)
        return;
    if (events[2].revents) {
        quint64 count = 0;
        [[maybe_unused]] const ssize_t taken = read(m_process.wake.Get(), &count, sizeof count);
    }
    if (events[1].revents)
        ReadErrors();
    if (events[0].revents & POLLOUT)
        SendQueued();
    if (events[0].revents & (POLLIN | POLLHUP | POLLERR))
        Receive();
}

void ZORWorkHelper::SendQueued()
{
    const ssize_t sent = send(m_process.socket.Get(), m_queued.constData() + m_sent,
                              size_t(m_queued.size() - m_sent), MSG_NOSIGNAL | MSG_DONTWAIT);
    if (sent < 0) {
        // What the helper said before it closed the connection can still be read.
        if (errno != EAGAIN && errno != EINTR)
            m_sent = m_queued.size();
        else
            return;
    } else {
        m_sent += sent;
    }
    if (m_sent == m_queued.size()) {
        m_queued = QByteArray();
        m_sent = 0;
    }
}

void ZORWorkHelper::Receive()
{
    std::array<char, 65536> buffer;
    const ssize_t received = recv(m_process.socket.Get(), buffer.data(), buffer.size(), MSG_DONTWAIT);
    if (received > 0)
        m_decoder.Append({buffer.data(), qsizetype(received)});
    else if (received == 0 || (errno != EAGAIN && errno != EINTR))
        m_isClosed = true;
}

// Reads a bounded amount, since a process that never stops writing must not hold its caller.
void ZORWorkHelper::ReadErrors()
{
    std::array<char, kErrorPieceSize> buffer;
    for (int piece = 0; piece < kErrorPieces; ++piece) {
        const ssize_t count = read(m_process.errors.Get(), buffer.data(), buffer.size());
        if (count <= 0) {
            if (count == 0 || (errno != EAGAIN && errno != EINTR))
                m_process.errors.Reset();
            return;
        }
        m_errors.append(buffer.data(), qsizetype(count));
        if (m_errors.size() > 2 * kMaximumErrors)
            m_errors = m_errors.right(kMaximumErrors);
    }
}

QString ZORWorkHelper::TakeErrors()
{
    if (m_process.errors.IsOpen())
        ReadErrors();
    const QString errors = QString::fromLocal8Bit(m_errors.right(kMaximumErrors)).trimmed();
    m_errors.clear();
    return errors;
}

// Not to a process that was waited for: its id may have another owner.
void ZORWorkHelper::Signal(int number)
{
    if (!HasEnded())
        kill(m_process.pid, number);
}

bool ZORWorkHelper::HasHungUp() const
{
    pollfd event = GetHangUpEvent();
    return m_isClosed || poll(&event, 1, 0) > 0;
}

bool ZORWorkHelper::HasEnded()
{
    if (m_hasEnded)
        return true;
    int status = -1;
    const pid_t ended = waitpid(m_process.pid, &status, WNOHANG);
    if (ended == 0 || (ended < 0 && errno == EINTR))
        return false;
    // Somebody else in this process may have asked for the end of all children.
    m_endStatus = ended == m_process.pid ? status : -1;
    m_hasEnded = true;
    return true;
}

bool ZORWorkHelper::AwaitEnd(Clock::time_point deadline, const std::atomic<bool>* isCanceled)
{
    while (!HasEnded()) {
        if ((isCanceled && *isCanceled) || Clock::now() >= deadline)
            return false;
        pollfd event{m_process.errors.IsOpen() ? m_process.errors.Get() : -1, POLLIN, 0};
        if (poll(&event, 1, int(kEndPulse.count())) > 0)
            ReadErrors();
    }
    return true;
}
