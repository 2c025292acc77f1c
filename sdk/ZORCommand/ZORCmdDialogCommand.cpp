#include "ZORCmdDialogCommand.h"

#include <ZORCommand/ZORCmdController.h>
#include <ZORCommand/ZORCmdDialogHandler.h>
#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysException.h>

#include <QPointer>

class ZORCmdDialogCommand::Private
{
public:
    QString problem;
    QPointer<QWidget> content; // owned by the frame as long as both live
};

ZORCmdDialogCommand::ZORCmdDialogCommand(QObject* parent, int interaction, int undoScope)
    : ZORCmdCommand(Untraced::Construction, parent, interaction, undoScope)
    , d(std::make_unique<Private>())
{
    ZOR_TRACE_CALL(parent, interaction, undoScope);
}

ZORCmdDialogCommand::~ZORCmdDialogCommand()
{
    // Its class may come from the library of the command, which may be unloaded next.
    delete d->content;
}

QWidget* ZORCmdDialogCommand::GetContentWidget() const
{
    return d->content;
}

QString ZORCmdDialogCommand::GetProblem() const
{
    return d->problem;
}

void ZORCmdDialogCommand::Start()
{
    ZOR_TRACE_CALL();
    ZORCmdDialogHandler* handler = ZORCmdController::GetController()->GetDialogHandler();
    if (!handler)
        throw ZORSysException(tr("no dialog handler set"));
    handler->ShowDialogCommand(this);
}

QWidget* ZORCmdDialogCommand::BuildContent(QWidget* parent)
{
    ZOR_TRACE_CALL(parent);
    if (d->content)
        throw ZORSysException(tr("content of the command was built already"));
    d->content = CreateContent(parent);
    if (!d->content)
        throw ZORSysException(tr("command has no content"));
    return d->content;
}

void ZORCmdDialogCommand::Accept()
{
    ZOR_TRACE_CALL();
    if (IsFinishing())
        return;
    if (!d->problem.isEmpty())
        throw ZORSysException(d->problem);
    Commit();
    FinishLater();
}

void ZORCmdDialogCommand::Reject()
{
    ZOR_TRACE_CALL();
    FinishLater();
}

void ZORCmdDialogCommand::Commit() {}

void ZORCmdDialogCommand::SetProblem(const QString& problem)
{
    if (problem == d->problem)
        return;
    d->problem = problem;
    emit ProblemChanged(problem);
}
