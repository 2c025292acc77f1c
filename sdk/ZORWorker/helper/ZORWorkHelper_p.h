// The caller's side of one helper process.

#pragma once

#include "ZORWorkProtocol_p.h"
#include "ZORWorkSpawn_p.h"

#include <ZORWorker/ZORWorkerGlobal.h>

#include <QString>

#include <atomic>
#include <chrono>
#include <csignal>
#include <optional>
#include <poll.h>

/// One helper process: its streams, and its end. To be used in one thread at a time, but for Wake().
class ZORWorkHelper
{
public:
    using Clock = std::chrono::steady_clock;

    /// Takes the process over.
    ZORWORKER_EXPORT ZORWorkHelper(ZORWorkSpawned process, const QString& program);
    /// Kills the process if it still runs. Does not wait for its end, which is the pool's business.
    ZORWORKER_EXPORT ~ZORWorkHelper();
    Q_DISABLE_COPY_MOVE(ZORWorkHelper)

    const QString& GetProgram() const { return m_program; }
    const QList<QByteArray>& GetKinds() const { return m_kinds; }
    void SetKinds(const QList<QByteArray>& kinds) { m_kinds = kinds; }

    /// State of the program's file when it was started, as the caller describes it.
    const QByteArray& GetFile() const { return m_file; }
    void SetFile(const QByteArray& file) { m_file = file; }

    /// Queues a message, which Exchange() sends.
    /// \throws ZORSysException when it is too long
    void Send(const ZORWorkProtocol::Message& message);
    /// The next message that has arrived.
    /// \throws ZORSysException when the helper has sent something else
    std::optional<ZORWorkProtocol::Message> Take() { return m_decoder.Take(); }
    /// Sends and receives what can be, and waits for it until \a deadline or until somebody calls Wake().
    /// Without effect once the connection is closed.
    ZORWORKER_EXPORT void Exchange(std::optional<Clock::time_point> deadline);
    /// Makes a running or the next Exchange() return at once. Safe to call from any thread.
    void Wake();
    /// Whether the other side has gone; messages may still wait to be taken.
    bool IsClosed() const { return m_isClosed; }

    void Kill() { Signal(SIGKILL); }
    /// Makes the process write the stack of its job and go on.
    void AskForStack() { Signal(ZORWorkSpawn::kStackSignal); }
    /// Makes the process write the stack of its job, with names and lines, and end.
    void Abort()
    {
        Signal(SIGABRT);
        Signal(SIGCONT); // a process that is halted does nothing else
    }
    /// Closes the connection: an idle helper then ends by itself.
    void Close() { m_process.socket.Reset(); }
    /// For poll(), to wait until the other side has gone; messages do not end the waiting.
    pollfd GetHangUpEvent() const { return {m_process.socket.Get(), 0, 0}; }
    /// Whether the other side has gone, although messages may still wait to be received; never waits.
    bool HasHungUp() const;
    /// Whether the process has ended; never waits.
    bool HasEnded();
    /// Reads its last words until it has ended, \a deadline has passed or the job is canceled.
    /// \param isCanceled  null for a job that is canceled already
    /// \return whether it has ended
    ZORWORKER_EXPORT bool AwaitEnd(Clock::time_point deadline, const std::atomic<bool>* isCanceled = nullptr);
    /// Of waitpid(), once it has ended; -1 when it is unknown.
    int GetEndStatus() const { return m_endStatus; }
    /// What the process has written to its standard error since the last call, at most its last 64 KiB. Never
    /// waits.
    ZORWORKER_EXPORT QString TakeErrors();

private:
    void Signal(int number);
    void SendQueued();
    void Receive();
    void ReadErrors();

    ZORWorkSpawned m_process;
    const QString m_program;
    QByteArray m_file;
    QList<QByteArray> m_kinds;
    ZORWorkProtocol::Decoder m_decoder;
    QByteArray m_queued; // to be sent
    qsizetype m_sent = 0;
    QByteArray m_errors;
    bool m_isClosed = false;
    bool m_hasEnded = false;
    int m_endStatus = -1;
};
