#include "ZORCmdPickRequest.h"

#include <ZORCommand/ZORCmdController.h>
#include <ZORCommand/ZORCmdPickAnswerer.h>
#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysException.h>

#include <utility>

class ZORCmdPickRequest::Private
{
public:
    Kinds kinds;
    QString prompt;
    Extent extent = Extent::One;
    Filter filter;
    QList<QList<ZORMathPoint>> preview;
    ZORCmdPickAnswerer* answerer = nullptr; // not owned; set while the request is active
};

ZORCmdPickRequest::ZORCmdPickRequest(Kinds kinds, const QString& prompt, QObject* parent)
    : QObject(parent)
    , d(std::make_unique<Private>())
{
    ZOR_TRACE_CALL(int(kinds), prompt, parent);
    d->kinds = kinds;
    d->prompt = prompt;
}

ZORCmdPickRequest::~ZORCmdPickRequest()
{
    Leave();
}

ZORCmdPickRequest::Kinds ZORCmdPickRequest::GetKinds() const
{
    return d->kinds;
}

QString ZORCmdPickRequest::GetPrompt() const
{
    return d->prompt;
}

void ZORCmdPickRequest::SetPrompt(const QString& prompt)
{
    ZOR_TRACE_CALL(prompt);
    if (prompt == d->prompt)
        return;
    d->prompt = prompt;
    emit PromptChanged(prompt);
}

ZORCmdPickRequest::Extent ZORCmdPickRequest::GetExtent() const
{
    return d->extent;
}

void ZORCmdPickRequest::SetExtent(Extent extent)
{
    ZOR_TRACE_CALL(int(extent));
    d->extent = extent;
}

void ZORCmdPickRequest::SetFilter(const Filter& filter)
{
    ZOR_TRACE_CALL();
    d->filter = filter;
}

bool ZORCmdPickRequest::Accepts(const ZORGeoGeometry* object) const
{
    return object && (!d->filter || d->filter(*object));
}

QList<QList<ZORMathPoint>> ZORCmdPickRequest::GetPreview() const
{
    return d->preview;
}

void ZORCmdPickRequest::SetPreview(const QList<QList<ZORMathPoint>>& preview)
{
    ZOR_TRACE_CALL(preview.size());
    d->preview = preview;
    emit PreviewChanged();
}

bool ZORCmdPickRequest::IsActive() const
{
    return d->answerer != nullptr;
}

void ZORCmdPickRequest::Start()
{
    ZOR_TRACE_CALL();
    if (IsActive())
        throw ZORSysException(tr("the request is active already"));
    ZORCmdController* const controller = ZORCmdController::GetController();
    if (!controller->GetPickAnswerer())
        throw ZORSysException(tr("there is no view to pick in"));
    if (ZORCmdPickRequest* const other = controller->GetPickRequest())
        other->Cancel();
    d->answerer = controller->GetPickAnswerer();
    controller->SetPickRequest(this);
    d->answerer->BeginPick(this);
}

bool ZORCmdPickRequest::Answer(const ZORCmdPick& pick)
{
    ZOR_TRACE_CALL(pick.object.data(), pick.point);
    const bool isOnlyOnSurface = d->kinds == Kinds(SurfaceLocations);
    if (!IsActive() || !Accepts(pick.object) || (isOnlyOnSurface && pick.location.IsNull()))
        return false;
    const QPointer<ZORCmdPickRequest> self = this;
    const bool isLast = d->extent == Extent::One;
    if (isLast)
        Leave();
    emit Picked(pick);
    if (self && isLast)
        emit Ended();
    return true;
}

void ZORCmdPickRequest::TakeBack()
{
    ZOR_TRACE_CALL();
    if (IsActive() && d->extent == Extent::Sequence)
        emit TakenBack();
}

void ZORCmdPickRequest::Complete()
{
    ZOR_TRACE_CALL();
    if (d->extent == Extent::Sequence)
        End(&ZORCmdPickRequest::Completed);
}

void ZORCmdPickRequest::Cancel()
{
    ZOR_TRACE_CALL();
    End(&ZORCmdPickRequest::Canceled);
}

void ZORCmdPickRequest::End(void (ZORCmdPickRequest::*reason)())
{
    if (!IsActive())
        return;
    const QPointer<ZORCmdPickRequest> self = this;
    Leave();
    emit(this->*reason)();
    if (self)
        emit Ended();
}

// Before the signals: their receivers may start another request.
void ZORCmdPickRequest::Leave()
{
    ZORCmdPickAnswerer* const answerer = std::exchange(d->answerer, nullptr);
    if (!answerer)
        return;
    ZORCmdController* const controller = ZORCmdController::GetController();
    controller->SetPickRequest(nullptr);
    if (answerer == controller->GetPickAnswerer()) // else it is being destroyed
        answerer->EndPick(this);
}
