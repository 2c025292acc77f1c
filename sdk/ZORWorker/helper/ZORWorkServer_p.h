// The helper's side: runs the jobs that its caller sends.

#pragma once

#include "ZORWorkProtocol_p.h"
#include "job/ZORWorkControl_p.h"

#include <QCoreApplication>

#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>

/// One connection to a caller. A thread reads it, so that requests reach a job that is busy, and so that the
/// process ends at once, whatever it does, when the caller has gone.
class ZORWorkServer
{
    Q_DECLARE_TR_FUNCTIONS(ZORWorkServer)

public:
    /// \param socket  connected stream; not owned
    explicit ZORWorkServer(int socket);

    /// Runs jobs in this thread until the process ends.
    [[noreturn]] void Run();

    /// Sends a message; safe to call from any thread. Ends the process when the caller has gone.
    /// \throws ZORSysException when it is too long
    void Send(const ZORWorkProtocol::Message& message);

private:
    struct Task
    {
        ZORWorkProtocol::Job job;
        std::shared_ptr<ZORWorkControl> control;
    };

    void Read();
    void Handle(ZORWorkProtocol::Message message);
    Task AwaitTask();
    void RunTask(const Task& task);
    void RunInLimit(const Task& task);
    void SendProgress(double progress);

    const int m_socket;
    std::mutex m_sending;
    std::mutex m_mutex; // of everything below
    std::condition_variable m_changed;
    std::deque<Task> m_tasks;
    std::shared_ptr<ZORWorkControl> m_control; // of the last task
    std::atomic<double> m_sentProgress = 0;
};
