#include "ZORNestNestingResponse.h"

#include "ZORNestJobBytes_p.h"

#include <ZORWorker/ZORWorkResponse.h>

ZORNestNestingResponse::ZORNestNestingResponse(ZORWorkResponse* workResponse, QObject* parent)
    : QObject(parent)
    , m_workResponse(workResponse)
{
    qRegisterMetaType<Status>("ZORNestNestingResponse::Status");
    connect(workResponse, &ZORWorkResponse::ProgressChanged, this, &ZORNestNestingResponse::ProgressChanged);
    connect(workResponse, &ZORWorkResponse::StatusChanged, this, [this](ZORWorkResponse::Status status) {
        m_isCanceled = m_isCanceled || status == ZORWorkResponse::Canceling;
        if (status == ZORWorkResponse::Finished)
            TakeOutcome();
        emit StatusChanged(GetStatus());
    });
}

ZORNestNestingResponse::~ZORNestNestingResponse() = default;

/// An outcome that cannot be read makes the job a failed one.
void ZORNestNestingResponse::TakeOutcome()
{
    try {
        m_outcome = std::make_unique<const ZORNestNestingOutcome>(
            ZORNestJobBytes::ReadNestingOutcome(m_workResponse->GetResult().GetData()));
    } catch (const std::exception& exception) {
        m_failure = QString::fromUtf8(exception.what());
    }
}

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
        return m_failure.isEmpty() ? Completed : Failed;
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
    return m_outcome ? m_outcome->sheetFiles : QList<QByteArray>();
}

QByteArray ZORNestNestingResponse::GetReportFile() const
{
    return m_outcome ? m_outcome->report : QByteArray();
}

QStringList ZORNestNestingResponse::GetRemarks() const
{
    return m_outcome ? m_outcome->remarks : QStringList();
}

QString ZORNestNestingResponse::GetFailureReason() const
{
    return m_failure.isEmpty() ? m_workResponse->GetFailureReason() : m_failure;
}
