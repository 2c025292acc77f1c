#include "ZORWorkResponse.h"

#include "job/ZORWorkResponse_p.h"

ZORWorkResponse::ZORWorkResponse(std::unique_ptr<Private> data, QObject* parent)
    : QObject(parent)
    , d(std::move(data))
{
}

ZORWorkResponse::~ZORWorkResponse() = default;

ZORWorkResponse::Status ZORWorkResponse::GetStatus() const
{
    return d->status;
}

double ZORWorkResponse::GetProgress() const
{
    return d->progress;
}

ZORWorkResult ZORWorkResponse::GetResult() const
{
    return d->result;
}

QString ZORWorkResponse::GetFailureReason() const
{
    return d->reason;
}

QString ZORWorkResponse::GetJobName() const
{
    return d->name;
}

QString ZORWorkResponse::GetWorkDirectory() const
{
    return d->directoryPath;
}

void ZORWorkResponse::SetStatus(Status status)
{
    if (IsAtEnd() || status == d->status)
        return;
    d->status = status;
    emit StatusChanged(status);
}

void ZORWorkResponse::SetProgress(double progress)
{
    if (IsAtEnd() || !(progress > d->progress))
        return;
    d->progress = progress;
    emit ProgressChanged(progress);
}
