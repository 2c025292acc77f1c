// The threads that work off the jobs of a processor.

#pragma once

#include "ZORWorkHelperPool_p.h"
#include "job/ZORWorkControl_p.h"

#include <ZORWorker/ZORWorkContext.h>
#include <ZORWorker/ZORWorkResult.h>

#include <QCoreApplication>
#include <QString>

#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

class ZORWorkDirectory;

/// What happened to a job, in the order in which it happened.
struct ZORWorkNotice
{
    enum Kind { Started, Progressed, Finished, Failed };

    quint64 job = 0;
    Kind kind = Started;
    ZORWorkResult result;                        // Finished
    QString reason;                              // Failed
    std::shared_ptr<ZORWorkDirectory> directory; // Finished: lives as long as somebody holds it, unless kept
};

/// Where and how a job is to run.
struct ZORWorkSurroundings
{
    QString baseDirectory;
    bool usesHelpers = true; // for a job with a kind
    qint64 memoryLimit = 0;  // bytes; 0: that of all jobs
};

/// A queue of jobs over a bounded number of threads, which start when there is work and live until the end.
///
/// The owner gets notices from a queue; it is called once, in any thread, for each notice put in.
class ZORWorkTeam
{
    Q_DECLARE_TR_FUNCTIONS(ZORWorkTeam)

public:
    /// \param noticed  called without any lock held
    explicit ZORWorkTeam(std::function<void()> noticed);
    /// Cancels what runs, drops what waits and joins the threads.
    ~ZORWorkTeam();
    Q_DISABLE_COPY_MOVE(ZORWorkTeam)

    /// Holds for jobs that have not been started. At least 1.
    void SetMaximumThreads(int count);
    /// \throws ZORSysException "cannot start a thread: %1" when there is not a single one; the job is not
    ///         added
    void Add(quint64 id, ZORWorkJob job, const ZORWorkSurroundings& surroundings,
             std::shared_ptr<ZORWorkControl> control);
    /// Whether the job waits for a thread or a helper process.
    bool IsWaiting(quint64 id);
    /// Lets a waiting job run before those that are not in a hurry, on one of as many further threads if all
    /// are busy. Without effect on a job that does not wait.
    void Hasten(quint64 id);
    /// \return whether the job was still waiting; it is gone then, without a notice
    bool Withdraw(quint64 id);
    std::optional<ZORWorkNotice> TakeNotice();

private:
    struct Task
    {
        quint64 id = 0;
        ZORWorkJob job;
        ZORWorkSurroundings surroundings;
        std::shared_ptr<ZORWorkControl> control;
        bool isUrgent = false;                      // those stand before all others
        std::unique_ptr<ZORWorkTicket> ticket = {}; // of a job that waits for a helper process
    };
    struct Running
    {
        quint64 id = 0;
        std::shared_ptr<ZORWorkControl> control;
    };

    std::deque<Task>::iterator FindWaiting(quint64 id);
    size_t GetMostRunning(const Task& task) const;
    void Work();
    void Run(Task& task);
    void Execute(Task& task, ZORWorkNotice& end, std::shared_ptr<ZORWorkDirectory>& directory);
    ZORWorkResult RunJob(Task& task, std::unique_ptr<ZORWorkHelper> helper,
                         const std::shared_ptr<ZORWorkDirectory>& directory);
    void Notify(ZORWorkNotice notice);
    void EnsureThread(size_t waiting, size_t most);

    const std::function<void()> m_noticed;
    std::mutex m_mutex; // of everything below
    std::condition_variable m_changed;
    std::deque<Task> m_waiting;
    std::deque<ZORWorkNotice> m_notices;
    std::vector<Running> m_running;
    std::vector<std::thread> m_threads;
    size_t m_maximumThreads = 1;
    bool m_isEnding = false;
};
