#include "ZORWorkHelperPool_p.h"
#include "ZORWorkHelperRun_p.h"
#include "ZORWorkTeam_p.h"
#include "job/ZORWorkDirectory_p.h"
#include "job/ZORWorkFailure_p.h"

#include <ZORSystem/ZORSysApiTracePause.h>
#include <ZORSystem/ZORSysException.h>
#include <ZORWorker/ZORWorkHelpers.h>
#include <ZORWorker/ZORWorkJobKind.h>

#include <algorithm>
#include <exception>
#include <system_error>

ZORWorkTeam::ZORWorkTeam(std::function<void()> noticed)
    : m_noticed(std::move(noticed))
{
}

ZORWorkTeam::~ZORWorkTeam()
{
    {
        const std::lock_guard lock(m_mutex);
        m_isEnding = true;
        for (const Running& running : m_running)
            running.control->Cancel();
    }
    m_changed.notify_all();
    for (std::thread& thread : m_threads)
        thread.join();
}

void ZORWorkTeam::SetMaximumThreads(int count)
{
    const std::lock_guard lock(m_mutex);
    m_maximumThreads = size_t(std::max(1, count));
}

void ZORWorkTeam::Add(quint64 id, ZORWorkJob job, const ZORWorkSurroundings& surroundings,
                      std::shared_ptr<ZORWorkControl> control)
{
    const std::lock_guard lock(m_mutex);
    m_waiting.push_back({id, std::move(job), surroundings, std::move(control)});
    try {
        EnsureThread(m_waiting.size(), m_maximumThreads);
    } catch (const std::system_error& error) {
        if (!m_threads.empty())
            return;
        m_waiting.pop_back();
        throw ZORSysException(tr("cannot start a thread: %1").arg(QString::fromUtf8(error.what())));
    }
    m_changed.notify_all();
}

// One thread more when those that do not run a job cannot take all that waits.
void ZORWorkTeam::EnsureThread(size_t waiting, size_t most)
{
    const size_t idle = m_threads.size() - m_running.size();
    if (waiting > idle && m_threads.size() < most)
        m_threads.emplace_back(&ZORWorkTeam::Work, this);
}

// Urgent jobs do not wait for jobs that may run for hours.
size_t ZORWorkTeam::GetMostRunning(const Task& task) const
{
    return (task.isUrgent ? 2 : 1) * m_maximumThreads;
}

std::deque<ZORWorkTeam::Task>::iterator ZORWorkTeam::FindWaiting(quint64 id)
{
    return std::find_if(m_waiting.begin(), m_waiting.end(),
                        [id](const Task& waiting) { return waiting.id == id; });
}

void ZORWorkTeam::Hasten(quint64 id)
{
    const std::lock_guard lock(m_mutex);
    const auto found = FindWaiting(id);
    if (found == m_waiting.end() || found->isUrgent)
        return;
    found->isUrgent = true;
    const auto end = std::stable_partition(m_waiting.begin(), m_waiting.end(),
                                           [](const Task& waiting) { return waiting.isUrgent; });
    try {
        EnsureThread(size_t(end - m_waiting.begin()), GetMostRunning(m_waiting.front()));
    } catch (const std::system_error&) {
        // The job is the next one on the threads that there are.
    }
    m_changed.notify_all();
}

bool ZORWorkTeam::IsWaiting(quint64 id)
{
    const std::lock_guard lock(m_mutex);
    if (FindWaiting(id) != m_waiting.end())
        return true;
    // Or for a helper process.
    const auto running =
        std::find_if(m_running.begin(), m_running.end(), [id](const Running& each) { return each.id == id; });
    return running != m_running.end() && !running->control->hasBegun;
}

bool ZORWorkTeam::Withdraw(quint64 id)
{
    Task task; // destroyed without the lock: what the job captured may come back here
    const std::lock_guard lock(m_mutex);
    const auto found = FindWaiting(id);
    if (found == m_waiting.end())
        return false;
    task = std::move(*found);
    m_waiting.erase(found);
    return true;
}

std::optional<ZORWorkNotice> ZORWorkTeam::TakeNotice()
{
    const std::lock_guard lock(m_mutex);
    if (m_notices.empty())
        return {};
    ZORWorkNotice notice = std::move(m_notices.front());
    m_notices.pop_front();
    return notice;
}

void ZORWorkTeam::Notify(ZORWorkNotice notice)
{
    {
        const std::lock_guard lock(m_mutex);
        m_notices.push_back(std::move(notice));
    }
    m_noticed();
}

void ZORWorkTeam::Work()
{
    for (;;) {
        Task task;
        {
            std::unique_lock lock(m_mutex);
            m_changed.wait(lock, [this] {
                return m_isEnding
                       || (!m_waiting.empty() && m_running.size() < GetMostRunning(m_waiting.front()));
            });
            if (m_isEnding)
                return;
            task = std::move(m_waiting.front());
            m_waiting.pop_front();
            m_running.push_back({task.id, task.control});
            // With the lock, so that jobs get helpers in their order.
            if (!task.job.run && task.surroundings.usesHelpers)
                task.ticket = std::make_unique<ZORWorkTicket>(*task.control);
        }
        Run(task);
    }
}

void ZORWorkTeam::Run(Task& task)
{
    const ZORSysApiTracePause pause; // the caller has made one call, which was traced
    ZORWorkNotice end{task.id, ZORWorkNotice::Failed, {}, {}, {}};
    {
        std::shared_ptr<ZORWorkDirectory> directory;
        try {
            Execute(task, end, directory);
        } catch (const ZORWorkCanceled&) {
            end.reason = ZORWorkFailure::GetCanceledReason();
        } catch (...) {
            end.reason = task.control->isCanceled ? ZORWorkFailure::GetCanceledReason()
                                                  : ZORWorkFailure::GetReasonOfCurrentException();
        }
        task.job.run = nullptr;
        task.job.input.clear();
    }
    {
        const std::lock_guard lock(m_mutex);
        std::erase_if(m_running, [&task](const Running& running) { return running.id == task.id; });
    }
    // A thread that was kept from a job by the maximum may have its turn.
    m_changed.notify_one();
    Notify(std::move(end));
}

void ZORWorkTeam::Execute(Task& task, ZORWorkNotice& end, std::shared_ptr<ZORWorkDirectory>& directory)
{
    ZORWorkControl& control = *task.control;
    if (control.isCanceled)
        throw ZORWorkCanceled();
    const ZORWorkSurroundings& surroundings = task.surroundings;
    std::unique_ptr<ZORWorkHelper> helper;
    if (task.ticket)
        helper = ZORWorkHelperPool::GetInstance().Acquire(task.job.kind, std::move(task.ticket));
    try {
        control.hasBegun = true;
        directory = std::make_shared<ZORWorkDirectory>(surroundings.baseDirectory, task.job.name,
                                                       task.job.isDirectoryKept);
        control.directory = directory->GetPath();
        Notify({task.id, ZORWorkNotice::Started, {}, {}, {}});
    } catch (...) {
        if (helper)
            ZORWorkHelperPool::GetInstance().Release(std::move(helper));
        throw;
    }
    end.result = RunJob(task, std::move(helper), directory);
    if (control.isCanceled) {
        end.result = ZORWorkResult();
        throw ZORWorkCanceled();
    }
    end.kind = ZORWorkNotice::Finished;
    end.directory = directory;
}

ZORWorkResult ZORWorkTeam::RunJob(Task& task, std::unique_ptr<ZORWorkHelper> helper,
                                  const std::shared_ptr<ZORWorkDirectory>& directory)
{
    ZORWorkEvents events;
    events.progressed = [this, &task] {
        if (!task.control->isProgressPending.exchange(true))
            Notify({task.id, ZORWorkNotice::Progressed, {}, {}, {}});
    };
    const ZORWorkContext context(*task.control, events);
    if (task.job.run)
        return task.job.run(context);
    if (!helper)
        return ZORWorkJobKind::RunJob(task.job.kind, context, task.job.input);
    const qint64 own = task.surroundings.memoryLimit;
    ZORWorkHelperRun run(task.job, own > 0 ? own : ZORWorkHelpers::GetMemoryLimit(), *task.control, context,
                         directory);
    return run.Execute(std::move(helper));
}
