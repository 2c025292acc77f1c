#include "ZORNestNestingResponse.h"

#include "job/ZORNestNestingTask_p.h"

#include <ZORWorker/ZORWorkResponse.h>

class ZORNestNestingResponse::Private
{
public:
    ZORWorkResponse* workResponse;                        // not owned
    std::shared_ptr<const ZORNestNestingOutcome> outcome; // written at the end of the job
    bool isCanceled = false;
};

ZORNestNestingResponse::ZORNestNestingResponse(ZORWorkResponse* workResponse,
                                               std::shared_ptr<const ZORNestNestingOutcome> outcome,
                                               QObject* parent)
    : QObject(parent)
    , d(new Private{workResponse, std::move(outcome)})
{
    qRegisterMetaType<Status>("ZORNestNestingResponse::Status");
    connect(workResponse, &ZORWorkResponse::ProgressChanged, this, &ZORNestNestingResponse::ProgressChanged);
    connect(workResponse, &ZORWorkResponse::StatusChanged, this, [this](ZORWorkResponse::Status status) {
        d->isCanceled = d->isCanceled || status == ZORWorkResponse::Canceling;
        emit StatusChanged(GetStatus());
    });
}

ZORNestNestingResponse::~ZORNestNestingResponse() = default;

ZORWorkResponse* ZORNestNestingResponse::GetWorkResponse() const
{
    return d->workResponse;
}

ZORNestNestingResponse::Status ZORNestNestingResponse::GetStatus() const
{
    switch (d->workResponse->GetStatus()) {
    case ZORWorkResponse::Created:
        return Created;
    case ZORWorkResponse::Queued:
        return Queued;
    case ZORWorkResponse::Running:
        return Running;
    case ZORWorkResponse::Stopping:
        return Stopping;
    case ZORWorkResponse::Finished:
        return Completed;
    case ZORWorkResponse::Canceling:
        return Canceling;
    case ZORWorkResponse::Failed:
        break;
    }
    return d->isCanceled ? Canceled : Failed;
}

bool ZORNestNestingResponse::IsAtEnd() const
{
    return d->workResponse->IsAtEnd();
}

double ZORNestNestingResponse::GetProgress() const
{
    return d->workResponse->GetProgress();
}

QList<QByteArray> ZORNestNestingResponse::GetSheetFiles() const
{
    return GetStatus() == Completed ? d->outcome->sheetFiles : QList<QByteArray>();
}

QByteArray ZORNestNestingResponse::GetReportFile() const
{
    return GetStatus() == Completed ? d->outcome->report : QByteArray();
}

QStringList ZORNestNestingResponse::GetRemarks() const
{
    return GetStatus() == Completed ? d->outcome->remarks : QStringList();
}

QString ZORNestNestingResponse::GetFailureReason() const
{
    return d->workResponse->GetFailureReason();
}
