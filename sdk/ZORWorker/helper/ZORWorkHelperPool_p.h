// The helper processes of this process.

#pragma once

#include "ZORWorkHelper_p.h"
#include "ZORWorkRejection_p.h"

#include <ZORSystem/ZORSysDescriptor.h>

#include <QByteArray>
#include <QCoreApplication>

#include <condition_variable>
#include <deque>
#include <future>
#include <memory>
#include <mutex>
#include <vector>

class ZORWorkControl;

/// A place in the queue for a helper process. Jobs that were stopped do not queue.
class ZORWorkTicket
{
public:
    /// \param control  of the job; outlives the ticket
    explicit ZORWorkTicket(ZORWorkControl& control);
    ~ZORWorkTicket();
    Q_DISABLE_COPY_MOVE(ZORWorkTicket)

    ZORWorkControl& GetControl() const { return m_control; }

private:
    ZORWorkControl& m_control;
};

/// Helper processes that run a job or wait for the next one; at most one per processor of the machine runs a
/// job, and as many more run jobs that were stopped before they began.
///
/// A thread that never ends starts them, since they die with the thread that started them, and waits for
/// the end of those that are idle or not needed any more. The end of the application waits for it too, for 1 s
/// at most. Safe to use from any thread.
class ZORWorkHelperPool
{
    Q_DECLARE_TR_FUNCTIONS(ZORWorkHelperPool)

public:
    /// Never destroyed: the helpers notice the end of this process themselves.
    static ZORWorkHelperPool& GetInstance();

    /// Waits for a helper that knows \a kind: one that is idle, or a new one.
    /// \return null where a thread has to serve, which the log explains once
    /// \throws ZORWorkCanceled when the job is canceled meanwhile
    std::unique_ptr<ZORWorkHelper> Acquire(const QByteArray& kind, std::unique_ptr<ZORWorkTicket> ticket);
    /// Receives a helper that is ready for the next job.
    void Release(std::unique_ptr<ZORWorkHelper> helper);
    /// Receives a helper that was killed or is to end by itself, and waits for its end without the caller.
    /// \param kept  released when the helper has ended
    void Discard(std::unique_ptr<ZORWorkHelper> helper, std::shared_ptr<void> kept = {});

private:
    friend class ZORWorkTicket;

    struct Dying
    {
        std::unique_ptr<ZORWorkHelper> helper;
        std::shared_ptr<void> kept;
        ZORWorkHelper::Clock::time_point killTime;
    };
    struct Order // of a process
    {
        QString program;
        std::promise<ZORWorkSpawned> promise;
    };

    ZORWorkHelperPool();

    bool HasTurn(const ZORWorkTicket& ticket) const;
    void AwaitTurn(std::unique_ptr<ZORWorkTicket> ticket);
    void EndTurn();
    std::unique_ptr<ZORWorkHelper> TakeIdle(const QString& program, const QByteArray& kind);
    std::unique_ptr<ZORWorkHelper> Start(const QString& program, ZORWorkControl& control);
    static void Greet(ZORWorkHelper& helper, ZORWorkControl& control);
    void Bury(std::unique_ptr<ZORWorkHelper> helper, std::shared_ptr<void> kept);
    void EnsureThread();
    void WakeThread();
    void Serve();
    void AwaitWork(std::unique_lock<std::mutex>& lock);
    void BuryIdle();
    void ServeOrders(std::unique_lock<std::mutex>& lock);
    void EndDying(std::unique_lock<std::mutex>& lock);
    void AwaitBurials();

    const size_t m_mostBusy;
    ZORWorkRejection m_rejection;
    std::mutex m_mutex; // of everything below
    std::condition_variable m_changed;
    std::deque<const ZORWorkTicket*> m_tickets;         // in the order of their jobs
    size_t m_busy = 0;                                  // jobs that have a helper or are about to get one
    size_t m_held = 0;                                  // helpers that they have, or start
    std::vector<std::unique_ptr<ZORWorkHelper>> m_idle; // the last one ran a job last
    std::deque<Order> m_orders;
    std::vector<Dying> m_dying;
    size_t m_buried = 0;     // those that are dying, and those whose directory is being removed
    ZORSysDescriptor m_wake; // eventfd that interrupts the waiting of the thread; open once that runs
};
