#include "ZORWorkProcessor.h"

#include "ZORWorkJobKind.h"
#include "helper/ZORWorkTeam_p.h"
#include "job/ZORWorkFailure_p.h"
#include "job/ZORWorkResponse_p.h"

#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysApiTracePause.h>
#include <ZORSystem/ZORSysException.h>

#include <QCoreApplication>
#include <QDir>
#include <QEvent>
#include <QHash>
#include <QLoggingCategory>
#include <QPointer>

#include <functional>
#include <new>
#include <thread>

namespace {

Q_LOGGING_CATEGORY(ZorWorkerLog, "zor.worker")

/// Calls a function in its own thread for each Post() in another one. An event has one owner at a time; a function
/// that Qt queues has users in both threads, and either may destroy it.
class NoticeReceiver : public QObject
{
public:
    NoticeReceiver(std::function<void()> deliver, QObject* parent)
        : QObject(parent)
        , m_deliver(std::move(deliver))
    {
    }
    void Post() { QCoreApplication::postEvent(this, new QEvent(kNotice)); }

protected:
    bool event(QEvent* event) override
    {
        if (event->type() != kNotice)
            return QObject::event(event);
        const auto deliver = m_deliver; // a receiver of signals may destroy this object
        deliver();
        return true;
    }

private:
    static inline const auto kNotice = QEvent::Type(QEvent::registerEventType());
    const std::function<void()> m_deliver;
};

} // namespace

class ZORWorkProcessor::Private
{
public:
    // Every notice has its own event, so that a receiver that runs its own event loop (a message
    // box) gets the later ones there.
    explicit Private(ZORWorkProcessor* processor)
        : team([receiver = new NoticeReceiver([this] { Deliver(); }, processor)] { receiver->Post(); })
    {
    }

    void Deliver();
    static QString Accept(ZORWorkResponse::Private& data, const ZORWorkNotice& notice);
    static void Succeed(ZORWorkResponse* response, const ZORWorkNotice& notice);
    static void Fail(ZORWorkResponse* response, const QString& reason);
    void Enqueue(const ZORWorkResponse::Private& data);
    void Execute(ZORWorkResponse* response);
    void Stop(ZORWorkResponse* response);
    void Cancel(ZORWorkResponse* response);

    /// Calls \a function with \a response, or with every response as long as the processor lives.
    template<class Function>
    void ForEach(ZORWorkProcessor* processor, ZORWorkResponse* response, Function function)
    {
        const QPointer<ZORWorkProcessor> guard(processor);
        const QList<ZORWorkResponse*> chosen = response ? QList{response} : responses;
        for (ZORWorkResponse* each : chosen) {
            if (responses.contains(each))
                function(each);
            if (!guard)
                return;
        }
    }

    QString baseDirectory = QDir::tempPath();
    Place place = HelperProcesses;
    qint64 memoryLimit = 0;            // bytes; 0: that of all processors
    QList<ZORWorkResponse*> responses; // QObject children of the processor
    QHash<quint64, ZORWorkJob> notExecuted;
    ZORWorkTeam team; // joined before the rest goes
};

// The receivers of a signal may destroy the processor: signals come last, or are followed by a look.
void ZORWorkProcessor::Private::Deliver()
{
    std::optional<ZORWorkNotice> notice = team.TakeNotice();
    if (!notice)
        return;
    ZORWorkResponse* const response = responses.at(qsizetype(notice->job));
    ZORWorkResponse::Private& data = *response->d;
    switch (notice->kind) {
    case ZORWorkNotice::Started:
        data.directoryPath = data.control->directory;
        if (data.status == ZORWorkResponse::Queued)
            response->SetStatus(ZORWorkResponse::Running);
        break;
    case ZORWorkNotice::Progressed:
        data.control->isProgressPending = false;
        response->SetProgress(data.control->progress);
        break;
    case ZORWorkNotice::Finished:
        // Canceled while the news was on its way.
        if (data.status == ZORWorkResponse::Canceling)
            Fail(response, ZORWorkFailure::GetCanceledReason());
        else
            Succeed(response, *notice);
        break;
    case ZORWorkNotice::Failed:
        Fail(response, notice->reason);
        break;
    }
}

/// Takes over a result with its files.
/// \return why it cannot be used; empty if it can
QString ZORWorkProcessor::Private::Accept(ZORWorkResponse::Private& data, const ZORWorkNotice& notice)
{
    const ZORSysApiTracePause pause; // a part of the job
    try {
        data.result = data.accept ? data.accept(notice.result) : notice.result;
        data.directory = notice.directory;
        return {};
    } catch (const std::bad_alloc&) {
        return tr("not enough memory to read the result");
    } catch (...) {
        const QString reason = ZORWorkFailure::GetReasonOfCurrentException();
        return reason.isEmpty() ? tr("the result cannot be read") : reason;
    }
}

void ZORWorkProcessor::Private::Succeed(ZORWorkResponse* response, const ZORWorkNotice& notice)
{
    const QString failure = Accept(*response->d, notice);
    if (!failure.isEmpty()) {
        Fail(response, failure);
        return;
    }
    const QPointer<ZORWorkResponse> guard(response);
    response->SetProgress(1);
    if (guard)
        response->SetStatus(ZORWorkResponse::Finished);
}

void ZORWorkProcessor::Private::Fail(ZORWorkResponse* response, const QString& reason)
{
    if (response->d->status == ZORWorkResponse::Canceling)
        qCDebug(ZorWorkerLog).noquote() << QStringLiteral("job '%1': %2").arg(response->d->name, reason);
    else
        qCWarning(ZorWorkerLog).noquote()
            << QStringLiteral("job '%1' failed: %2").arg(response->d->name, reason);
    response->d->reason = reason;
    response->SetStatus(ZORWorkResponse::Failed);
}

void ZORWorkProcessor::Private::Enqueue(const ZORWorkResponse::Private& data)
{
    team.Add(data.id, notExecuted.value(data.id), {baseDirectory, place == HelperProcesses, memoryLimit},
             data.control);
    notExecuted.remove(data.id);
}

void ZORWorkProcessor::Private::Execute(ZORWorkResponse* response)
{
    if (response->GetStatus() != ZORWorkResponse::Created)
        return;
    Enqueue(*response->d);
    response->SetStatus(ZORWorkResponse::Queued);
}

void ZORWorkProcessor::Private::Stop(ZORWorkResponse* response)
{
    const ZORWorkResponse::Private& data = *response->d;
    const bool isCreated = data.status == ZORWorkResponse::Created;
    if (!isCreated && data.status != ZORWorkResponse::Queued && data.status != ZORWorkResponse::Running)
        return;
    if (!data.runsWhenStopped && (isCreated || team.IsWaiting(data.id))) {
        Cancel(response);
        return;
    }
    data.control->Stop(); // before the job can run
    if (isCreated) {
        try {
            Enqueue(data);
        } catch (...) {
            data.control->isStopped = false;
            throw;
        }
    }
    team.Hasten(data.id);
    response->SetStatus(ZORWorkResponse::Stopping);
}

void ZORWorkProcessor::Private::Cancel(ZORWorkResponse* response)
{
    const ZORWorkResponse::Private& data = *response->d;
    if (response->IsAtEnd() || data.status == ZORWorkResponse::Canceling)
        return;
    data.control->Cancel();
    const bool hasNoThread = data.status == ZORWorkResponse::Created || team.Withdraw(data.id);
    notExecuted.remove(data.id);
    if (hasNoThread) {
        QMetaObject::invokeMethod(
            response, [response] { Fail(response, ZORWorkFailure::GetCanceledReason()); },
            Qt::QueuedConnection);
    }
    response->SetStatus(ZORWorkResponse::Canceling);
}

ZORWorkProcessor::ZORWorkProcessor(QObject* parent)
    : QObject(parent)
    , d(std::make_unique<Private>(this))
{
    ZOR_TRACE_CALL(parent);
    SetMaximumThreads(int(std::thread::hardware_concurrency()));
}

ZORWorkProcessor::~ZORWorkProcessor() = default;

void ZORWorkProcessor::SetPlace(Place place)
{
    ZOR_TRACE_CALL(place);
    d->place = place;
}

ZORWorkProcessor::Place ZORWorkProcessor::GetPlace() const
{
    return d->place;
}

void ZORWorkProcessor::SetMemoryLimit(qint64 bytes)
{
    ZOR_TRACE_CALL(bytes);
    d->memoryLimit = std::max<qint64>(0, bytes);
}

qint64 ZORWorkProcessor::GetMemoryLimit() const
{
    return d->memoryLimit;
}

void ZORWorkProcessor::SetBaseDirectory(const QString& directory)
{
    ZOR_TRACE_CALL(directory);
    d->baseDirectory = directory;
}

QString ZORWorkProcessor::GetBaseDirectory() const
{
    return d->baseDirectory;
}

void ZORWorkProcessor::SetMaximumThreads(int count)
{
    ZOR_TRACE_CALL(count);
    d->team.SetMaximumThreads(count);
}

ZORWorkResponse* ZORWorkProcessor::AddJob(const ZORWorkJob& job)
{
    ZOR_TRACE_CALL(job.name, job.isDirectoryKept);
    if (!job.run && job.kind.isEmpty())
        throw ZORSysException(tr("job has nothing to run"));
    if (job.run && !job.kind.isEmpty())
        throw ZORSysException(tr("job has both a function and a kind"));
    if (!job.run && !ZORWorkJobKind::IsRegistered(job.kind))
        throw ZORSysException(tr("there is no job kind '%1'").arg(QString::fromUtf8(job.kind)));
    auto data = std::make_unique<ZORWorkResponse::Private>();
    data->id = quint64(d->responses.size());
    data->name = job.name;
    data->runsWhenStopped = job.runsWhenStopped;
    data->accept = job.accept;
    data->control = std::make_shared<ZORWorkControl>();
    d->notExecuted.insert(data->id, job);
    d->responses.append(new ZORWorkResponse(std::move(data), this));
    return d->responses.constLast();
}

QList<ZORWorkResponse*> ZORWorkProcessor::GetResponses() const
{
    return d->responses;
}

void ZORWorkProcessor::Execute(ZORWorkResponse* response)
{
    ZOR_TRACE_CALL(response);
    d->ForEach(this, response, [this](ZORWorkResponse* each) { d->Execute(each); });
}

void ZORWorkProcessor::Stop(ZORWorkResponse* response)
{
    ZOR_TRACE_CALL(response);
    d->ForEach(this, response, [this](ZORWorkResponse* each) { d->Stop(each); });
}

void ZORWorkProcessor::Cancel(ZORWorkResponse* response)
{
    ZOR_TRACE_CALL(response);
    d->ForEach(this, response, [this](ZORWorkResponse* each) { d->Cancel(each); });
}
