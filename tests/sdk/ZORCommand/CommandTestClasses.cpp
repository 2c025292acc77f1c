#include "CommandTestClasses.h"

#include <QCoreApplication>
#include <QEvent>
#include <QLabel>

#include <utility>

std::function<void(ScriptedCommand&)> ScriptedCommand::s_start;
QPointer<ScriptedCommand> ScriptedCommand::s_last;
QPointer<NoCommand> NoCommand::s_last;
std::function<void()> ScriptedDialogCommand::s_commit;
bool ScriptedDialogCommand::s_hasContent = true;
QPointer<ScriptedDialogCommand> ScriptedDialogCommand::s_last;

ScriptedCommand::ScriptedCommand(QObject* parent)
    : ZORCmdCommand(parent, OwnWindows, SelfManaged)
{
    s_last = this;
}

void ScriptedCommand::Start()
{
    if (s_start)
        s_start(*this);
}

DerivedCommand::DerivedCommand(QObject* parent)
    : ScriptedCommand(parent)
{
}

ClosedCommand::ClosedCommand(QObject* parent)
    : ZORCmdCommand(parent, Silent, NoUndo)
{
}

void ClosedCommand::Start() {}

NoCommand::NoCommand(QObject* parent)
    : QObject(parent)
{
    s_last = this;
}

ScriptedDialogCommand::ScriptedDialogCommand(QObject* parent)
    : ZORCmdDialogCommand(parent, Dialog, NoUndo)
{
    s_last = this;
}

QWidget* ScriptedDialogCommand::CreateContent(QWidget* parent)
{
    return s_hasContent ? new QLabel(QStringLiteral("content"), parent) : nullptr;
}

void ScriptedDialogCommand::Commit()
{
    if (s_commit)
        s_commit();
    else
        ZORCmdDialogCommand::Commit();
}

void DeletePosted()
{
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}
