// Base of the commands that an application runs from its actions.

#pragma once

#include <ZORCommand/ZORCommandGlobal.h>

#include <QObject>
#include <QString>

#include <memory>

/// One run of a command: created by the controller when its action is triggered, started, and deleted
/// some time after it called FinishLater().
///
/// A concrete class has a constructor "Q_INVOKABLE explicit X(QObject* parent)", through which the
/// controller creates it.
///
/// Thread safety: main thread only.
class ZORCOMMAND_EXPORT ZORCmdCommand : public QObject
{
    Q_OBJECT

public:
    /// How a command meets the user.
    enum Interaction : int {
        Silent = 0,     ///< it runs and ends
        Dialog = 1,     ///< one dialog in the frame of the application
        OwnWindows = 2, ///< windows of its own, which may outlive it
    };
    /// What a later undo would take back.
    enum UndoScope : int {
        NoUndo = 0,      ///< nothing: it does not touch the document
        OneStep = 1,     ///< all that it does, as one step
        SelfManaged = 2, ///< what it starts makes steps of its own
    };

    /// \param parent       usually the controller
    /// \param interaction  code of an Interaction
    /// \param undoScope    code of an UndoScope
    ZORCmdCommand(QObject* parent, int interaction, int undoScope);
    ~ZORCmdCommand() override;

    Interaction GetInteraction() const;
    UndoScope GetUndoScope() const;

    /// Text of the action that started the command, for titles; empty when it was not started by one.
    QString GetTitle() const;
    void SetTitle(const QString& title);

    /// The object that ZORCmdController::Edit() started the command for; not owned. Null for a command that edits
    /// nothing, and once the object has been destroyed.
    QObject* GetEditedObject() const;
    /// Whether the command was started for an object, which may have been destroyed since.
    bool IsEditor() const;
    /// For the controller, before Start().
    void SetEditedObject(QObject* object);

    /// Runs the command; it may go on living until it calls FinishLater().
    /// \throws ZORSysException when it cannot run; the controller then deletes it
    virtual void Start() = 0;

    /// Ends the command: it emits Finished() and deletes itself from the event loop. Further calls do
    /// nothing.
    void FinishLater();
    bool IsFinishing() const;

signals:
    void Finished();

protected:
    /// For base classes whose own constructor is the traced one.
    enum class Untraced { Construction };
    ZORCmdCommand(Untraced, QObject* parent, int interaction, int undoScope);

private:
    class Private;
    const std::unique_ptr<Private> d;
};
