#include "ZORWorkHelperPool_p.h"
#include "job/ZORWorkControl_p.h"
#include "job/ZORWorkFailure_p.h"
#include "job/ZORWorkRemoval_p.h"

#include <ZORSystem/ZORSysException.h>
#include <ZORSystem/ZORSysVersion.h>
#include <ZORWorker/ZORWorkContext.h>
#include <ZORWorker/ZORWorkHelpers.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <iterator>
#include <poll.h>
#include <sys/eventfd.h>
#include <thread>
#include <utility>

namespace {

using namespace std::chrono_literals;

constexpr auto kGreetingTime = 10s; // until a program that says nothing is given up
constexpr auto kFarewellTime = 1s;  // until a helper that should end by itself is killed
constexpr auto kEndPulse = 5ms;     // between two questions whether a process has ended

/// Returns a turn unless a helper has taken it over.
class Turn
{
public:
    explicit Turn(std::function<void()> end)
        : m_end(std::move(end))
    {
    }
    ~Turn()
    {
        if (m_end)
            m_end();
    }
    Q_DISABLE_COPY_MOVE(Turn)
    void Keep() { m_end = {}; }

private:
    std::function<void()> m_end;
};

} // namespace

ZORWorkHelperPool& ZORWorkHelperPool::GetInstance()
{
    static auto* const pool = [] {
        qAddPostRoutine([] { GetInstance().AwaitBurials(); });
        return new ZORWorkHelperPool;
    }();
    return *pool;
}

ZORWorkHelperPool::ZORWorkHelperPool()
    : m_mostBusy(std::max(1U, std::thread::hardware_concurrency()))
{
}

ZORWorkTicket::ZORWorkTicket(ZORWorkControl& control)
    : m_control(control)
{
    ZORWorkHelperPool& pool = ZORWorkHelperPool::GetInstance();
    const std::lock_guard lock(pool.m_mutex);
    pool.m_tickets.push_back(this);
}

ZORWorkTicket::~ZORWorkTicket()
{
    ZORWorkHelperPool& pool = ZORWorkHelperPool::GetInstance();
    {
        const std::lock_guard lock(pool.m_mutex);
        std::erase(pool.m_tickets, this);
    }
    pool.m_changed.notify_all();
}

std::unique_ptr<ZORWorkHelper> ZORWorkHelperPool::Acquire(const QByteArray& kind,
                                                          std::unique_ptr<ZORWorkTicket> ticket)
{
    ZORWorkControl& control = ticket->GetControl();
    const QString program = ZORWorkHelpers::GetProgram();
    if (program.isEmpty() || m_rejection.IsRejected(program))
        return nullptr;
    AwaitTurn(std::move(ticket));
    std::unique_ptr<ZORWorkHelper> helper = TakeIdle(program, kind);
    Turn turn([this] { EndTurn(); });
    if (!helper) {
        const QByteArray file = ZORWorkRejection::GetFileState(program);
        const auto start = ZORWorkHelper::Clock::now();
        try {
            helper = Start(program, control);
        } catch (const std::exception&) {
            m_rejection.Reject(program, file, ZORWorkFailure::GetReasonOfCurrentException(),
                               ZORWorkHelper::Clock::now() - start);
            return nullptr;
        }
        helper->SetFile(file);
        m_rejection.Readmit(program);
    }
    if (!helper->GetKinds().contains(kind)) {
        m_rejection.WarnOfKind(program, kind);
        {
            const std::lock_guard lock(m_mutex);
            m_idle.push_back(std::move(helper));
        }
        WakeThread();
        return nullptr;
    }
    turn.Keep();
    return helper;
}

bool ZORWorkHelperPool::HasTurn(const ZORWorkTicket& ticket) const
{
    if (ticket.GetControl().isStopped)
        return m_busy < 2 * m_mostBusy;
    if (m_busy >= m_mostBusy)
        return false;
    const auto first = std::find_if(m_tickets.begin(), m_tickets.end(), [](const ZORWorkTicket* each) {
        return !each->GetControl().isStopped && !each->GetControl().isCanceled;
    });
    // There is none when this job was stopped or canceled just now: whoever did that wakes it.
    return first != m_tickets.end() && *first == &ticket;
}

void ZORWorkHelperPool::AwaitTurn(std::unique_ptr<ZORWorkTicket> ticket)
{
    const ZORWorkControl& control = ticket->GetControl();
    // Takes the lock, so that nobody misses a call between checking the requests and waiting.
    const ZORWorkWake wake(ticket->GetControl(), [this] {
        {
            const std::lock_guard lock(m_mutex);
        }
        m_changed.notify_all();
    });
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [&] { return control.isCanceled || HasTurn(*ticket); });
    if (control.isCanceled)
        throw ZORWorkCanceled();
    ++m_busy;
}

void ZORWorkHelperPool::EndTurn()
{
    {
        const std::lock_guard lock(m_mutex);
        --m_busy;
        --m_held;
    }
    m_changed.notify_all();
}

std::unique_ptr<ZORWorkHelper> ZORWorkHelperPool::TakeIdle(const QString& program, const QByteArray& kind)
{
    for (;;) {
        std::unique_ptr<ZORWorkHelper> helper;
        {
            const std::lock_guard lock(m_mutex);
            ++m_held;
            if (m_idle.empty())
                return nullptr; // the caller starts one
            helper = std::move(m_idle.back());
            m_idle.pop_back();
        }
        helper->Exchange(ZORWorkHelper::Clock::now()); // it may have ended
        // A program that was replaced may know more than the one that still runs.
        const bool isOutdated = !helper->GetKinds().contains(kind)
                                && helper->GetFile() != ZORWorkRejection::GetFileState(program);
        if (helper->GetProgram() == program && !isOutdated && !helper->IsClosed() && !helper->HasEnded())
            return helper;
        Bury(std::move(helper), {});
        const std::lock_guard lock(m_mutex);
        --m_held;
    }
}

std::unique_ptr<ZORWorkHelper> ZORWorkHelperPool::Start(const QString& program, ZORWorkControl& control)
{
    std::future<ZORWorkSpawned> spawned;
    {
        const std::lock_guard lock(m_mutex);
        EnsureThread();
        m_orders.push_back({program, {}});
        spawned = m_orders.back().promise.get_future();
    }
    WakeThread();
    auto helper = std::make_unique<ZORWorkHelper>(spawned.get(), program);
    try {
        Greet(*helper, control);
    } catch (...) {
        helper->Kill();
        Bury(std::move(helper), {});
        throw;
    }
    return helper;
}

void ZORWorkHelperPool::Greet(ZORWorkHelper& helper, ZORWorkControl& control)
{
    const ZORWorkWake wake(control, [&helper] { helper.Wake(); });
    const QByteArray version = ZORSysVersion::GetString().toUtf8();
    helper.Send(ZORWorkProtocol::Hello{ZORWorkProtocol::kVersion, version, {}});
    const auto deadline = ZORWorkHelper::Clock::now() + kGreetingTime;
    std::optional<ZORWorkProtocol::Message> message;
    while (!(message = helper.Take())) {
        if (control.isCanceled)
            throw ZORWorkCanceled();
        if (helper.IsClosed()) {
            helper.AwaitEnd(ZORWorkHelper::Clock::now() + kFarewellTime, &control.isCanceled);
            const QString errors = helper.TakeErrors();
            throw ZORSysException(errors.isEmpty() ? tr("it ended at once") : errors);
        }
        if (ZORWorkHelper::Clock::now() >= deadline)
            throw ZORSysException(tr("it does not answer"));
        helper.Exchange(deadline);
    }
    const auto* const hello = std::get_if<ZORWorkProtocol::Hello>(&*message);
    if (!hello)
        throw ZORSysException(tr("it does not begin with its version"));
    if (hello->protocol != ZORWorkProtocol::kVersion || hello->sdkVersion != version)
        throw ZORSysException(tr("it belongs to another version of the SDK"));
    helper.SetKinds(hello->kinds);
}

void ZORWorkHelperPool::Release(std::unique_ptr<ZORWorkHelper> helper)
{
    const bool isWanted = helper->GetProgram() == ZORWorkHelpers::GetProgram() && !helper->IsClosed();
    std::unique_ptr<ZORWorkHelper> unwanted;
    {
        const std::lock_guard lock(m_mutex);
        --m_busy;
        --m_held;
        if (isWanted && m_held + m_idle.size() < m_mostBusy)
            m_idle.push_back(std::move(helper));
        else
            unwanted = std::move(helper);
    }
    m_changed.notify_all();
    WakeThread();
    if (unwanted) {
        unwanted->Close();
        Bury(std::move(unwanted), {});
    }
}

void ZORWorkHelperPool::Discard(std::unique_ptr<ZORWorkHelper> helper, std::shared_ptr<void> kept)
{
    EndTurn();
    Bury(std::move(helper), std::move(kept));
}

void ZORWorkHelperPool::Bury(std::unique_ptr<ZORWorkHelper> helper, std::shared_ptr<void> kept)
{
    if (helper->HasEnded())
        return;
    helper->Close();
    {
        const std::lock_guard lock(m_mutex);
        m_dying.push_back({std::move(helper), std::move(kept), ZORWorkHelper::Clock::now() + kFarewellTime});
        ++m_buried;
    }
    WakeThread();
}

// With the lock. Without the thread, nothing that it waits for can happen.
void ZORWorkHelperPool::EnsureThread()
{
    if (m_wake.IsOpen())
        return;
    ZORSysDescriptor wake(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK));
    if (!wake.IsOpen())
        throw ZORSysException(QString::fromLocal8Bit(std::strerror(errno)));
    m_wake = std::move(wake);
    try {
        std::thread(&ZORWorkHelperPool::Serve, this).detach();
    } catch (...) {
        m_wake.Reset();
        throw;
    }
}

void ZORWorkHelperPool::WakeThread()
{
    const std::lock_guard lock(m_mutex); // of the descriptor
    if (!m_wake.IsOpen())
        return;
    const quint64 one = 1;
    [[maybe_unused]] const ssize_t written = write(m_wake.Get(), &one, sizeof one);
}

void ZORWorkHelperPool::Serve()
{
    sigset_t set;
    sigfillset(&set);
    pthread_sigmask(SIG_SETMASK, &set, nullptr); // the program's signals are not for this thread
    std::unique_lock lock(m_mutex);
    for (;;) {
        AwaitWork(lock);
        ServeOrders(lock);
        BuryIdle();
        EndDying(lock);
    }
}

// Without the lock, until somebody wakes the thread, an idle helper has gone, or it is time to examine the dying ones.
void ZORWorkHelperPool::AwaitWork(std::unique_lock<std::mutex>& lock)
{
    std::vector<pollfd> events{{m_wake.Get(), POLLIN, 0}};
    for (const auto& helper : m_idle)
        events.push_back(helper->GetHangUpEvent());
    const int timeout = m_dying.empty() ? -1 : int(std::chrono::milliseconds(kEndPulse).count());
    lock.unlock();
    poll(events.data(), nfds_t(events.size()), timeout);
    if (events[0].revents) {
        quint64 count = 0;
        [[maybe_unused]] const ssize_t taken = read(events[0].fd, &count, sizeof count);
    }
    lock.lock();
}

// Somebody may kill a helper that is idle, and nobody else would notice before the next job.
void ZORWorkHelperPool::BuryIdle()
{
    const auto gone = std::stable_partition(m_idle.begin(), m_idle.end(),
                                            [](const auto& helper) { return !helper->HasHungUp(); });
    for (auto helper = gone; helper != m_idle.end(); ++helper) {
        m_dying.push_back({std::move(*helper), {}, ZORWorkHelper::Clock::now() + kFarewellTime});
        ++m_buried;
    }
    m_idle.erase(gone, m_idle.end());
}

void ZORWorkHelperPool::ServeOrders(std::unique_lock<std::mutex>& lock)
{
    while (!m_orders.empty()) {
        Order order = std::move(m_orders.front());
        m_orders.pop_front();
        lock.unlock();
        try {
            order.promise.set_value(ZORWorkSpawn::Spawn(order.program));
        } catch (...) {
            order.promise.set_exception(std::current_exception());
        }
        lock.lock();
    }
}

void ZORWorkHelperPool::EndDying(std::unique_lock<std::mutex>& lock)
{
    const auto now = ZORWorkHelper::Clock::now();
    const auto ended = std::partition(m_dying.begin(), m_dying.end(), [now](Dying& dying) {
        if (now >= dying.killTime)
            dying.helper->Kill();
        return !dying.helper->HasEnded();
    });
    std::vector<Dying> dead(std::make_move_iterator(ended), std::make_move_iterator(m_dying.end()));
    m_dying.erase(ended, m_dying.end());
    if (dead.empty())
        return;
    const size_t count = dead.size();
    lock.unlock();
    dead.clear(); // renames what was kept
    lock.lock();
    m_buried -= count;
    m_changed.notify_all();
}

// Otherwise the work directories of jobs that were killed at the end of the program would stay.
void ZORWorkHelperPool::AwaitBurials()
{
    std::unique_lock lock(m_mutex);
    m_changed.wait_for(lock, kFarewellTime, [this] { return m_buried == 0; });
    std::vector<Dying> late = std::exchange(m_dying, {});
    m_buried -= late.size();
    lock.unlock();
    late.clear();
    ZORWorkRemoval::Await(kFarewellTime);
}
