#include "ZORCmdTask.h"

#include <QEventLoop>
#include <QThread>
#include <QTimer>

#include <algorithm>
#include <atomic>
#include <exception>
#include <utility>

class ZORCmdTask::Private
{
public:
    bool Report(double part);
    void Run() noexcept;

    Work work;
    std::unique_ptr<QThread> thread;
    QTimer pulse;
    std::atomic<double> progress = 0;
    std::atomic<bool> isCanceled = false;
    std::exception_ptr failure;
    Outcome outcome = Pending;
    double shown = 0; // the progress that was signaled last
};

bool ZORCmdTask::Private::Report(double part)
{
    if (part > progress.load(std::memory_order_relaxed))
        progress.store(std::min(part, 1.0), std::memory_order_relaxed);
    return !isCanceled.load(std::memory_order_relaxed);
}

void ZORCmdTask::Private::Run() noexcept
{
    try {
        work([this](double part) { return Report(part); });
    } catch (...) {
        failure = std::current_exception();
    }
    work = {}; // what it holds may be large
}

ZORCmdTask::ZORCmdTask(Work work, QObject* parent)
    : QObject(parent)
    , d(std::make_unique<Private>())
{
    constexpr int kPulse = 50; // milliseconds
    d->work = std::move(work);
    d->pulse.setInterval(kPulse);
    connect(&d->pulse, &QTimer::timeout, this, &ZORCmdTask::UpdateProgress);
}

ZORCmdTask::~ZORCmdTask()
{
    Cancel();
    if (d->thread) {
        disconnect(d->thread.get(), nullptr, this, nullptr);
        d->thread->wait();
    }
}

void ZORCmdTask::Start()
{
    Q_ASSERT(!d->thread);
    d->thread.reset(QThread::create([p = d.get()] { p->Run(); }));
    connect(d->thread.get(), &QThread::finished, this, &ZORCmdTask::Finish);
    d->pulse.start();
    d->thread->start();
}

void ZORCmdTask::Cancel()
{
    d->isCanceled = true;
}

void ZORCmdTask::Wait()
{
    if (!IsRunning())
        return;
    QEventLoop loop;
    connect(this, &ZORCmdTask::Finished, &loop, &QEventLoop::quit);
    connect(this, &QObject::destroyed, &loop, &QEventLoop::quit);
    loop.exec();
}

void ZORCmdTask::WaitForThread()
{
    if (IsRunning())
        Finish();
}

bool ZORCmdTask::IsRunning() const
{
    return d->thread && d->outcome == Pending;
}

bool ZORCmdTask::IsCanceled() const
{
    return d->isCanceled;
}

ZORCmdTask::Outcome ZORCmdTask::GetOutcome() const
{
    return d->outcome;
}

double ZORCmdTask::GetProgress() const
{
    return d->progress;
}

void ZORCmdTask::ThrowFailure() const
{
    if (d->outcome == Failed)
        std::rethrow_exception(d->failure);
}

void ZORCmdTask::UpdateProgress()
{
    if (const double progress = GetProgress(); progress > d->shown) {
        d->shown = progress;
        emit ProgressChanged(progress);
    }
}

void ZORCmdTask::Finish()
{
    if (d->outcome != Pending)
        return;
    d->thread->wait();
    d->pulse.stop();
    d->outcome = d->isCanceled ? Canceled : d->failure ? Failed : Succeeded;
    if (d->outcome == Succeeded)
        UpdateProgress();
    emit Finished();
}
