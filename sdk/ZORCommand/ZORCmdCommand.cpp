#include "ZORCmdCommand.h"

#include <ZORSystem/ZORSysApiTrace.h>

#include <QPointer>

class ZORCmdCommand::Private
{
public:
    Interaction interaction;
    UndoScope undoScope;
    QString title;
    QPointer<QObject> editedObject;
    bool isEditor = false;
    bool finishing = false;
};

ZORCmdCommand::ZORCmdCommand(QObject* parent, int interaction, int undoScope)
    : ZORCmdCommand(Untraced::Construction, parent, interaction, undoScope)
{
    ZOR_TRACE_CALL(parent, interaction, undoScope);
}

ZORCmdCommand::ZORCmdCommand(Untraced, QObject* parent, int interaction, int undoScope)
    : QObject(parent)
    , d(new Private{static_cast<Interaction>(interaction), static_cast<UndoScope>(undoScope), {}, {}})
{
}

ZORCmdCommand::~ZORCmdCommand() = default;

ZORCmdCommand::Interaction ZORCmdCommand::GetInteraction() const
{
    return d->interaction;
}

ZORCmdCommand::UndoScope ZORCmdCommand::GetUndoScope() const
{
    return d->undoScope;
}

QString ZORCmdCommand::GetTitle() const
{
    return d->title;
}

bool ZORCmdCommand::IsFinishing() const
{
    return d->finishing;
}

void ZORCmdCommand::SetTitle(const QString& title)
{
    ZOR_TRACE_CALL(title);
    d->title = title;
}

QObject* ZORCmdCommand::GetEditedObject() const
{
    return d->editedObject;
}

bool ZORCmdCommand::IsEditor() const
{
    return d->isEditor;
}

void ZORCmdCommand::SetEditedObject(QObject* object)
{
    ZOR_TRACE_CALL(object);
    d->editedObject = object;
    d->isEditor = object != nullptr;
}

void ZORCmdCommand::FinishLater()
{
    ZOR_TRACE_CALL();
    if (d->finishing)
        return;
    d->finishing = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            deleteLater(); // first: a receiver may throw
            emit Finished();
        },
        Qt::QueuedConnection);
}
