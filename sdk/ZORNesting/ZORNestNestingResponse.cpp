#include "ZORNestNestingResponse.h"

#include "job/ZORNestNestingTask_p.h"

#include <ZORWorker/ZORWorkResponse.h>

ZORNestNestingResponse::ZORNestNestingResponse(ZORWorkResponse* workResponse,
                                               std::shared_ptr<const ZORNestNestingOutcome> outcome,
                                               QObject* parent)
    : QObject(parent)
    , m_workResponse(workResponse)
    , m_outcome(std::move(outcome))
{
    qRegisterMetaType<Status>("ZORNestNestingResponse::Status");
    connect(workResponse, &ZORWorkResponse::ProgressChanged, this, &ZORNestNestingResponse::ProgressChanged);
    connect(workResponse, &ZORWorkResponse::StatusChanged, this, [this](ZORWorkResponse::Status status) {
        m_isCanceled = m_isCanceled || status == ZORWorkResponse::Canceling;
        emit StatusChanged(GetStatus());
    });
}

ZORNestNestingResponse::~ZORNestNestingResponse() = default;

ZORNestNestingResponse::Status ZORNestNestingResponse::GetStatus() const
{
    switch (m_workResponse->GetStatus()) {
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
    return m_isCanceled ? Canceled : Failed;
}

bool ZORNestNestingResponse::IsAtEnd() const
{
    return m_workResponse->IsAtEnd();
}

double ZORNestNestingResponse::GetProgress() const
{
    return m_workResponse->GetProgress();
}

QList<QByteArray> ZORNestNestingResponse::GetSheetFiles() const
{
    return GetStatus() == Completed ? m_outcome->sheetFiles : QList<QByteArray>();
}

QByteArray ZORNestNestingResponse::GetReportFile() const
{
    return GetStatus() == Completed ? m_outcome->report : QByteArray();
}

QStringList ZORNestNestingResponse::GetRemarks() const
{
    return GetStatus() == Completed ? m_outcome->remarks : QStringList();
}

QString ZORNestNestingResponse::GetFailureReason() const
{
    return m_workResponse->GetFailureReason();
}
