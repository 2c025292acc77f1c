#include "ZORWorkHelperPool_p.h"
#include "ZORWorkHelperRun_p.h"
#include "job/ZORWorkControl_p.h"
#include "job/ZORWorkFailure_p.h"

#include <ZORSystem/ZORSysException.h>
#include <ZORWorker/ZORWorkJobKind.h>

#include <QDir>
#include <QLoggingCategory>

#include <algorithm>
#include <atomic>

namespace {

Q_LOGGING_CATEGORY(ZorWorkerLog, "zor.worker")

using namespace std::chrono_literals;

constexpr int kAttempts = 3;         // to find a helper that begins
constexpr auto kCancelGrace = 150ms; // a canceled job ends in 0.2 s, the kill included
constexpr auto kStopGrace = 10s;     // a first result can be made in that time
constexpr auto kTraceGrace = 6s;     // for a process that has crashed to write its stack
constexpr auto kStackTime = 80ms;    // for a process to write its stack before it is killed
constexpr auto kKillGrace = 25ms;    // for a killed process to vanish, as most do

std::atomic<std::chrono::milliseconds> s_stopGrace{kStopGrace};

// As if the caller's process had written it.
void PassOn(const ZORWorkProtocol::Log& log)
{
    const QLoggingCategory category(log.category.constData());
    const auto severity = QtMsgType(std::min<int>(log.severity, QtInfoMsg));
    if (!category.isEnabled(severity == QtFatalMsg ? QtCriticalMsg : severity))
        return;
    const QMessageLogger logger(nullptr, 0, nullptr, category.categoryName());
    const QByteArray text = log.text.toUtf8();
    switch (severity) {
    case QtDebugMsg:
        logger.debug("%s", text.constData());
        break;
    case QtInfoMsg:
        logger.info("%s", text.constData());
        break;
    case QtWarningMsg:
        logger.warning("%s", text.constData());
        break;
    default:
        logger.critical("%s", text.constData());
    }
}

} // namespace

void ZORWorkHelperRun::SetStopGrace(std::chrono::milliseconds grace)
{
    s_stopGrace = grace;
}

std::chrono::milliseconds ZORWorkHelperRun::GetStopGrace()
{
    return s_stopGrace;
}

ZORWorkHelperRun::ZORWorkHelperRun(const ZORWorkJob& job, qint64 memoryLimit, ZORWorkControl& control,
                                   const ZORWorkContext& context, std::shared_ptr<ZORWorkDirectory> directory)
    : m_job(job)
    , m_memoryLimit(memoryLimit)
    , m_control(control)
    , m_context(context)
    , m_directory(std::move(directory))
{
}

ZORWorkResult ZORWorkHelperRun::Execute(std::unique_ptr<ZORWorkHelper> helper)
{
    End end = Follow(*helper, {});
    GiveBack(std::move(helper), end);
    // An idle helper may have been killed just before it got the job.
    for (int attempt = 1; end.hasVanished && !m_hasBegun && attempt < kAttempts; ++attempt) {
        helper =
            ZORWorkHelperPool::GetInstance().Acquire(m_job.kind, std::make_unique<ZORWorkTicket>(m_control));
        if (!helper)
            return ZORWorkJobKind::RunJob(m_job.kind, m_context, m_job.input);
        end = Follow(*helper, {});
        GiveBack(std::move(helper), end);
    }
    if (m_control.isCanceled)
        throw ZORWorkCanceled();
    if (end.result)
        return *end.result;
    if (!end.isLost || !m_control.isStopped || !m_interim || !ZORWorkJobKind::CanComplete(m_job.kind))
        throw ZORSysException(end.reason);
    qCWarning(ZorWorkerLog).noquote()
        << tr("job '%1' is completed with its last interim result: %2").arg(m_job.name, end.reason);
    return Complete();
}

// In another process: it may do what the first one did.
ZORWorkResult ZORWorkHelperRun::Complete()
{
    std::unique_ptr<ZORWorkHelper> helper =
        ZORWorkHelperPool::GetInstance().Acquire(m_job.kind, std::make_unique<ZORWorkTicket>(m_control));
    if (!helper)
        return ZORWorkJobKind::CompleteJob(m_job.kind, m_context, m_job.input, *m_interim);
    const End end = Follow(*helper, std::exchange(m_interim, {}));
    GiveBack(std::move(helper), end);
    if (m_control.isCanceled)
        throw ZORWorkCanceled();
    if (!end.result)
        throw ZORSysException(end.reason);
    return *end.result;
}

void ZORWorkHelperRun::GiveBack(std::unique_ptr<ZORWorkHelper> helper, const End& end)
{
    if (end.isHelperReady)
        ZORWorkHelperPool::GetInstance().Release(std::move(helper));
    else
        ZORWorkHelperPool::GetInstance().Discard(std::move(helper), m_directory);
}

ZORWorkHelperRun::End ZORWorkHelperRun::Follow(ZORWorkHelper& helper,
                                               const std::optional<QByteArray>& interim)
{
    if (m_job.input.size() > ZORWorkProtocol::kMaximumInput)
        return {{}, tr("the input of the job is too long (%1 bytes)").arg(m_job.input.size()), false, true};
    const ZORWorkWake wake(m_control, [&helper] { helper.Wake(); });
    m_hasStopped = m_hasCanceled = m_hasBegun = false;
    m_deadline.reset();
    m_stackTime.reset();
    try {
        ZORWorkProtocol::Job job{m_job.kind, m_job.input, m_control.directory, m_memoryLimit};
        job.isStopped = m_control.isStopped;
        job.hasInterim = interim.has_value();
        job.interim = interim.value_or(QByteArray());
        helper.Send(job);
        if (job.isStopped) {
            m_hasStopped = true;
            // Completing takes its time however little the job had.
            m_deadline = Clock::now() + (interim ? kStopGrace : GetStopGrace());
        }
        for (;;) {
            while (std::optional<ZORWorkProtocol::Message> message = helper.Take()) {
                if (std::optional<End> end = Handle(helper, *std::move(message)))
                    return *std::move(end);
            }
            if (helper.IsClosed())
                return Bury(helper);
            PassRequests(helper);
            if (m_deadline && Clock::now() >= *m_deadline)
                return GiveUp(helper);
            if (m_stackTime && Clock::now() >= *m_stackTime) {
                m_stackTime.reset();
                helper.AskForStack();
            }
            helper.Exchange(m_stackTime ? m_stackTime : m_deadline);
        }
    } catch (const ZORSysException& exception) {
        helper.Kill();
        return {
            {}, tr("the process of the job broke the protocol: %1").arg(exception.GetMessage()), true, false};
    } catch (const std::exception&) {
        helper.Kill();
        return {{}, ZORWorkFailure::GetReasonOfCurrentException(), true, false};
    }
}

void ZORWorkHelperRun::PassRequests(ZORWorkHelper& helper)
{
    if (m_control.isCanceled && !m_hasCanceled) {
        m_hasCanceled = true;
        helper.Send(ZORWorkProtocol::Cancel());
        m_deadline = Clock::now() + kCancelGrace;
        m_stackTime = *m_deadline - kStackTime;
    } else if (m_control.isStopped && !m_hasStopped && !m_hasCanceled) {
        m_hasStopped = true;
        helper.Send(ZORWorkProtocol::Stop());
        m_deadline = Clock::now() + GetStopGrace();
    }
}

std::optional<ZORWorkHelperRun::End> ZORWorkHelperRun::Handle(ZORWorkHelper& helper,
                                                              ZORWorkProtocol::Message message)
{
    m_hasBegun = true;
    if (const auto* const progress = std::get_if<ZORWorkProtocol::Progress>(&message)) {
        m_context.SetProgress(progress->value);
        return {};
    }
    if (auto* const interim = std::get_if<ZORWorkProtocol::Interim>(&message)) {
        m_interim = std::move(interim->result);
        return {};
    }
    if (const auto* const log = std::get_if<ZORWorkProtocol::Log>(&message)) {
        PassOn(*log);
        return {};
    }
    if (const auto* const result = std::get_if<ZORWorkProtocol::Result>(&message))
        return FinishResult(*result);
    if (const auto* const failure = std::get_if<ZORWorkProtocol::Failure>(&message)) {
        if (failure->endsHelper)
            LogErrors(helper, failure->reason);
        return End{{}, failure->reason, failure->endsHelper, !failure->endsHelper};
    }
    if (std::holds_alternative<ZORWorkProtocol::Canceled>(message))
        return End{{}, ZORWorkFailure::GetCanceledReason(), false, true};
    throw ZORSysException(tr("message of type %1 is not for the caller").arg(message.index()));
}

// Whoever gets the files may delete them: a faulty process must not name others.
ZORWorkHelperRun::End ZORWorkHelperRun::FinishResult(const ZORWorkProtocol::Result& result) const
{
    const QString inside = QDir::cleanPath(m_control.directory) + u'/';
    QList<ZORWorkResource> resources;
    for (const QString& file : result.files) {
        if (!QDir::cleanPath(file).startsWith(inside))
            return {
                {}, tr("the job returned '%1', which is not in its work directory").arg(file), false, true};
        resources.append(ZORWorkResource(file));
    }
    return {ZORWorkResult(resources, result.data), {}, false, true};
}

// Waits for a process that writes its stack and ends, unless the job is canceled.
bool ZORWorkHelperRun::AwaitTrace(ZORWorkHelper& helper) const
{
    if (helper.AwaitEnd(Clock::now() + kTraceGrace, &m_control.isCanceled))
        return true;
    helper.Kill();
    return false;
}

void ZORWorkHelperRun::LogErrors(ZORWorkHelper& helper, const QString& reason) const
{
    const QString errors = helper.TakeErrors();
    if (errors.isEmpty())
        return;
    const QString text = tr("job '%1': %2; its process wrote:").arg(m_job.name, reason) + u'\n' + errors;
    if (m_control.isCanceled)
        qCInfo(ZorWorkerLog).noquote() << text;
    else
        qCWarning(ZorWorkerLog).noquote() << text;
}

// The process has closed the connection, so it has crashed or is about to end.
ZORWorkHelperRun::End ZORWorkHelperRun::Bury(ZORWorkHelper& helper) const
{
    const QString reason = AwaitTrace(helper)
                               ? ZORWorkFailure::GetReasonOfEnd(helper.GetEndStatus(), m_memoryLimit)
                               : tr("the process of the job closed its connection");
    LogErrors(helper, reason);
    return {{}, reason, true, false, true};
}

ZORWorkHelperRun::End ZORWorkHelperRun::GiveUp(ZORWorkHelper& helper) const
{
    if (m_control.isCanceled) {
        helper.Kill();
        helper.AwaitEnd(Clock::now() + kKillGrace); // afterwards it is the pool that waits
        LogErrors(helper, tr("the job did not answer a cancel and was killed"));
        return {{}, ZORWorkFailure::GetCanceledReason(), true, false};
    }
    const qint64 seconds = std::chrono::round<std::chrono::seconds>(GetStopGrace()).count();
    const QString reason = tr("the job did not end within %1 s of a stop and was killed").arg(seconds);
    helper.Abort();
    AwaitTrace(helper);
    LogErrors(helper, reason);
    return {{}, reason, true, false};
}
