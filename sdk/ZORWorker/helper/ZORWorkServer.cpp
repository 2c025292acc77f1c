#include "ZORWorkCrash_p.h"
#include "ZORWorkServer_p.h"
#include "job/ZORWorkFailure_p.h"

#include <ZORSystem/ZORSysApiTracePause.h>
#include <ZORSystem/ZORSysException.h>
#include <ZORSystem/ZORSysVersion.h>
#include <ZORWorker/ZORWorkContext.h>
#include <ZORWorker/ZORWorkJobKind.h>

#include <QFile>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <malloc.h>
#include <new>
#include <sys/resource.h>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define ZOR_WORK_RESERVES_MEMORY // sanitizers reserve terabytes of addresses, which a limit would forbid
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define ZOR_WORK_RESERVES_MEMORY
#endif
#endif

namespace {

constexpr double kProgressStep = 0.001; // smaller ones are not worth a message
constexpr int kProtocolExitCode = 2;

#ifndef ZOR_WORK_RESERVES_MEMORY
// Bytes of addresses that this process uses.
qint64 GetUsedAddresses()
{
    QFile file(QStringLiteral("/proc/self/statm"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    return file.readLine().split(' ').constFirst().toLongLong() * sysconf(_SC_PAGESIZE);
}
#endif

/// Limits the memory of this process for its own life time.
class MemoryLimit
{
public:
    /// \param bytes  beyond what the process uses now; 0 for no limit
    explicit MemoryLimit([[maybe_unused]] qint64 bytes)
    {
#ifndef ZOR_WORK_RESERVES_MEMORY
        if (bytes > 0 && getrlimit(RLIMIT_AS, &m_before) == 0) {
            rlimit limit = m_before;
            limit.rlim_cur = std::min<rlim_t>(limit.rlim_max, rlim_t(GetUsedAddresses() + bytes));
            m_isSet = setrlimit(RLIMIT_AS, &limit) == 0;
        }
#endif
    }
    ~MemoryLimit()
    {
        if (m_isSet)
            setrlimit(RLIMIT_AS, &m_before);
    }
    Q_DISABLE_COPY_MOVE(MemoryLimit)

private:
    rlimit m_before{};
    bool m_isSet = false;
};

ZORWorkProtocol::Result ToMessage(const ZORWorkResult& result)
{
    ZORWorkProtocol::Result message{{}, result.GetData()};
    for (const ZORWorkResource& resource : result.GetResources())
        message.files.append(resource.GetFilePath());
    return message;
}

} // namespace

ZORWorkServer::ZORWorkServer(int socket)
    : m_socket(socket)
{
}

void ZORWorkServer::Run()
{
    const QByteArray version = ZORSysVersion::GetString().toUtf8();
    Send(ZORWorkProtocol::Hello{ZORWorkProtocol::kVersion, version, ZORWorkJobKind::GetNames()});
    std::thread([this] { Read(); }).detach();
    for (;;) {
        RunTask(AwaitTask());
        malloc_trim(0); // an idle helper does not hold the memory of its last job
    }
}

void ZORWorkServer::Send(const ZORWorkProtocol::Message& message)
{
    const QByteArray bytes = ZORWorkProtocol::Encode(message);
    const std::lock_guard lock(m_sending);
    for (qsizetype sent = 0; sent < bytes.size();) {
        const ssize_t count =
            send(m_socket, bytes.constData() + sent, size_t(bytes.size() - sent), MSG_NOSIGNAL);
        if (count >= 0)
            sent += count;
        else if (errno != EINTR)
            ZORWorkCrash::End(0);
    }
}

void ZORWorkServer::Read()
{
    ZORWorkProtocol::Decoder decoder;
    std::array<char, 65536> buffer;
    try {
        for (;;) {
            const ssize_t count = recv(m_socket, buffer.data(), buffer.size(), 0);
            if (count < 0 && errno == EINTR)
                continue;
            if (count <= 0)
                ZORWorkCrash::End(0); // the caller has gone
            decoder.Append({buffer.data(), qsizetype(count)});
            while (std::optional<ZORWorkProtocol::Message> message = decoder.Take())
                Handle(*std::move(message));
        }
    } catch (const std::bad_alloc&) {
        ZORWorkCrash::End(ZORWorkFailure::kMemoryExitCode);
    } catch (const std::exception& exception) {
        std::fprintf(stderr, "caller broke the protocol: %s\n", exception.what());
        ZORWorkCrash::End(kProtocolExitCode);
    }
}

void ZORWorkServer::Handle(ZORWorkProtocol::Message message)
{
    const std::lock_guard lock(m_mutex);
    if (auto* const job = std::get_if<ZORWorkProtocol::Job>(&message)) {
        m_control = std::make_shared<ZORWorkControl>();
        m_control->directory = job->directory;
        m_control->isStopped = job->isStopped;
        m_tasks.push_back({std::move(*job), m_control});
        m_changed.notify_one();
    } else if (std::holds_alternative<ZORWorkProtocol::Stop>(message)) {
        if (m_control)
            m_control->Stop();
    } else if (std::holds_alternative<ZORWorkProtocol::Cancel>(message)) {
        if (m_control)
            m_control->Cancel();
    } else if (const auto* const hello = std::get_if<ZORWorkProtocol::Hello>(&message)) {
        if (hello->protocol != ZORWorkProtocol::kVersion)
            throw ZORSysException(tr("another version"));
    } else {
        throw ZORSysException(tr("message of type %1 is not for a helper").arg(message.index()));
    }
}

ZORWorkServer::Task ZORWorkServer::AwaitTask()
{
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [this] { return !m_tasks.empty(); });
    Task task = std::move(m_tasks.front());
    m_tasks.pop_front();
    return task;
}

void ZORWorkServer::RunTask(const Task& task)
{
    m_sentProgress = 0;
    ZORWorkCrash::ForgetMemoryStack();
    Send(ZORWorkProtocol::Progress{0});
    try {
        RunInLimit(task);
    } catch (const ZORWorkCanceled&) {
        Send(ZORWorkProtocol::Canceled());
    } catch (const std::bad_alloc&) {
        ZORWorkCrash::WriteMemoryStack();
        // What the job has left behind may be more than the next one can live with.
        Send(ZORWorkProtocol::Failure{ZORWorkFailure::GetMemoryReason(task.job.memoryLimit), true});
        ZORWorkCrash::End(0);
    } catch (...) {
        Send(ZORWorkProtocol::Failure{ZORWorkFailure::GetReasonOfCurrentException()});
    }
}

void ZORWorkServer::RunInLimit(const Task& task)
{
    const ZORSysApiTracePause pause;
    ZORWorkEvents events;
    events.progressed = [this, &task] { SendProgress(task.control->progress); };
    events.interim = [this](const QByteArray& result) { Send(ZORWorkProtocol::Interim{result}); };
    const ZORWorkContext context(*task.control, events);
    const MemoryLimit limit(task.job.memoryLimit);
    const ZORWorkProtocol::Job& job = task.job;
    Send(ToMessage(job.hasInterim ? ZORWorkJobKind::CompleteJob(job.kind, context, job.input, job.interim)
                                  : ZORWorkJobKind::RunJob(job.kind, context, job.input)));
}

void ZORWorkServer::SendProgress(double progress)
{
    double sent = m_sentProgress;
    while (progress >= 1 ? sent < 1 : progress - sent >= kProgressStep || sent == 0) {
        if (m_sentProgress.compare_exchange_weak(sent, progress)) {
            Send(ZORWorkProtocol::Progress{progress});
            return;
        }
    }
}
