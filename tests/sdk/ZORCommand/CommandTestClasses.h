// Command classes that the tests publish.

#pragma once

#include "support/MessageOf.h"

#include <ZORCommand/ZORCmdDialogCommand.h>
#include <ZORCommand/ZORCmdDialogHandler.h>
#include <ZORSystem/ZORSysException.h>

#include <QPointer>
#include <QVariant>

#include <functional>

/// A command that does what the test says and stays alive until it is told to finish.
class ScriptedCommand : public ZORCmdCommand
{
    Q_OBJECT

public:
    Q_INVOKABLE explicit ScriptedCommand(QObject* parent);
    void Start() override;

    static std::function<void(ScriptedCommand&)> s_start; // run by Start()
    static QPointer<ScriptedCommand> s_last;              // the one created last
};

/// Below ScriptedCommand, with its own meta-object.
class DerivedCommand : public ScriptedCommand
{
    Q_OBJECT

public:
    Q_INVOKABLE explicit DerivedCommand(QObject* parent);
};

/// Cannot be created through its meta-object.
class ClosedCommand : public ZORCmdCommand
{
    Q_OBJECT

public:
    explicit ClosedCommand(QObject* parent);
    void Start() override;
};

/// Can be created but is no command.
class NoCommand : public QObject
{
    Q_OBJECT

public:
    Q_INVOKABLE explicit NoCommand(QObject* parent);
    static QPointer<NoCommand> s_last;
};

/// A dialog command whose commit does what the test says.
class ScriptedDialogCommand : public ZORCmdDialogCommand
{
    Q_OBJECT

public:
    Q_INVOKABLE explicit ScriptedDialogCommand(QObject* parent);

    static std::function<void()> s_commit;
    static bool s_hasContent;
    static QPointer<ScriptedDialogCommand> s_last;

protected:
    QWidget* CreateContent(QWidget* parent) override;
    void Commit() override;
};

/// Remembers what it was asked to show.
class RecordingDialogHandler : public ZORCmdDialogHandler
{
public:
    QWidget* GetParentWidget() const override { return nullptr; }
    void ShowDialogCommand(ZORCmdDialogCommand* command) override { shown = command; }

    QPointer<ZORCmdDialogCommand> shown;
};

/// Lets posted deletions happen.
void DeletePosted();
