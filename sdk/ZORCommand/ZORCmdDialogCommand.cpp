#include "ZORCmdDialogCommand.h"

#include <ZORCommand/ZORCmdController.h>
#include <ZORCommand/ZORCmdDialogHandler.h>
#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysException.h>

ZORCmdDialogCommand::ZORCmdDialogCommand(QObject* parent, int interaction, int undoScope)
    : ZORCmdCommand(Untraced::Construction, parent, interaction, undoScope)
{
    ZOR_TRACE_CALL(parent, interaction, undoScope);
}

ZORCmdDialogCommand::~ZORCmdDialogCommand()
{
    // Its class may come from the library of the command, which may be unloaded next.
    delete m_content;
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
    if (m_content)
        throw ZORSysException(tr("content of the command was built already"));
    m_content = CreateContent(parent);
    if (!m_content)
        throw ZORSysException(tr("command has no content"));
    return m_content;
}

void ZORCmdDialogCommand::Accept()
{
    ZOR_TRACE_CALL();
    if (IsFinishing())
        return;
    if (!m_problem.isEmpty())
        throw ZORSysException(m_problem);
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
    if (problem == m_problem)
        return;
    m_problem = problem;
    emit ProblemChanged(problem);
}
