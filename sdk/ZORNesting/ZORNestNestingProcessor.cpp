#include "ZORNestNestingProcessor.h"

#include "ZORNestDebugOptions.h"
#include "job/ZORNestJobBytes_p.h"
#include "job/ZORNestJobKinds_p.h"

#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORWorker/ZORWorkProcessor.h>

#include <QElapsedTimer>
#include <QLoggingCategory>

namespace {

Q_LOGGING_CATEGORY(ZorNestingLog, "zor.nesting")

/// Decodes an outcome, whose bytes are not needed any more.
ZORWorkResult Accept(const ZORWorkResult& result, ZORNestNestingOutcome& outcome, int numParts,
                     const QElapsedTimer& timer)
{
    outcome = ZORNestJobBytes::ReadNestingOutcome(result.GetData());
    qCInfo(ZorNestingLog).noquote() << ZORNestNestingProcessor::tr("Nested %n part(s) on %1 sheets in %2 s",
                                                                   nullptr, numParts)
                                           .arg(QString::number(outcome.sheetFiles.size()),
                                                QString::number(double(timer.elapsed()) / 1000, 'f', 2));
    return {};
}

} // namespace

class ZORNestNestingProcessor::Private
{
public:
    /// Calls a function of the worker for \a response, or with null for all.
    void Do(void (ZORWorkProcessor::*function)(ZORWorkResponse*), ZORNestNestingResponse* response)
    {
        if (!response)
            (worker.*function)(nullptr);
        else if (responses.contains(response))
            (worker.*function)(response->GetWorkResponse());
    }

    QList<ZORNestNestingResponse*> responses; // QObject children of the processor
    ZORWorkProcessor worker;
    std::shared_ptr<QElapsedTimer> timer = std::make_shared<QElapsedTimer>(); // since the last Execute()
};

ZORNestNestingProcessor::ZORNestNestingProcessor(QObject* parent)
    : QObject(parent)
    , d(std::make_unique<Private>())
{
    ZOR_TRACE_CALL(parent);
}

ZORNestNestingProcessor::~ZORNestNestingProcessor() = default;

void ZORNestNestingProcessor::SetPlace(ZORWorkProcessor::Place place)
{
    ZOR_TRACE_CALL(place);
    d->worker.SetPlace(place);
}

ZORNestNestingResponse* ZORNestNestingProcessor::AddInput(const ZORNestNestingInput& input)
{
    ZOR_TRACE_CALL(input);
    const bool isKept = ZORNestDebugOptions::GetInstance()->GetKeepNestingWorkDirectories();
    ZORWorkJob job;
    job.name = QStringLiteral("nesting");
    job.kind = ZORNestJobKinds::kNesting;
    job.input = ZORNestJobBytes::Write(ZORNestNestingTask{input, isKept});
    job.isDirectoryKept = isKept;
    job.runsWhenStopped = true;
    const auto outcome = std::make_shared<ZORNestNestingOutcome>();
    int numParts = 0;
    for (const ZORNestNestingInputItem& item : input.GetItems())
        numParts += item.GetQuantity();
    job.accept = [outcome, numParts, timer = d->timer](const ZORWorkResult& result) {
        return Accept(result, *outcome, numParts, *timer);
    };
    d->responses.append(new ZORNestNestingResponse(d->worker.AddJob(job), outcome, this));
    return d->responses.constLast();
}

QList<ZORNestNestingResponse*> ZORNestNestingProcessor::GetResponses() const
{
    return d->responses;
}

void ZORNestNestingProcessor::Execute(ZORNestNestingResponse* response)
{
    ZOR_TRACE_CALL(response);
    d->timer->start();
    d->Do(&ZORWorkProcessor::Execute, response);
}

void ZORNestNestingProcessor::Stop(ZORNestNestingResponse* response)
{
    ZOR_TRACE_CALL(response);
    d->Do(&ZORWorkProcessor::Stop, response);
}

void ZORNestNestingProcessor::Cancel(ZORNestNestingResponse* response)
{
    ZOR_TRACE_CALL(response);
    d->Do(&ZORWorkProcessor::Cancel, response);
}
