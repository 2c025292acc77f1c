// The commands of the process and the actions that run them.

#pragma once

#include <ZORCommand/ZORCommandGlobal.h>

#include <QByteArray>
#include <QIcon>
#include <QList>
#include <QObject>
#include <QStringList>

#include <functional>
#include <memory>

class QAction;
class ZORCmdActionPublisher;
class ZORCmdDialogHandler;
class ZORCmdPickAnswerer;
class ZORCmdPickRequest;

/// Process-wide register of command classes and of the actions published for them.
///
/// Registering and publishing work from static initialisers, before an application object exists; the
/// QActions are made when they are first asked for. Nothing of a library stays behind when its
/// publishers withdraw: texts are copied, and commands of a withdrawn class that still run are deleted.
///
/// Thread safety: main thread only.
class ZORCOMMAND_EXPORT ZORCmdController : public QObject
{
    Q_OBJECT

public:
    static ZORCmdController* GetController();

    /// Makes a command class known; it takes the place of one of the same name until it is unregistered.
    /// \param command  not owned; must not be null
    void RegisterCommand(const QMetaObject* command);
    /// Forgets a command class and deletes its running commands; an unknown class is ignored.
    void UnregisterCommand(const QMetaObject* command);

    /// The action of an id: the class name of its command, or "<class name>.<method>" for publishers with
    /// the option "method".
    /// \return owned by the controller; null when nobody published it or before the application object
    QAction* GetAction(const QByteArray& id) const;

    /// The categories in the order of their first publication.
    QStringList GetCategories() const;
    /// The actions of a category by position, then by text. An action has the dynamic
    /// properties "category", "commandId", "iconName" and "placement" (a ZORCmdActionPublisher::Placement).
    QList<QAction*> GetActions(const QString& category) const;

    /// \param handler  not owned: the caller sets null before it dies
    void SetDialogHandler(ZORCmdDialogHandler* handler);
    /// The handler of the application; null when there is none.
    ZORCmdDialogHandler* GetDialogHandler() const;

    /// Cancels the active request of the answerer before.
    /// \param answerer  not owned; null for none
    void SetPickAnswerer(ZORCmdPickAnswerer* answerer);
    /// The answerer of the application; null when there is none: nothing can be picked then.
    ZORCmdPickAnswerer* GetPickAnswerer() const;
    /// The active request; null for none.
    ZORCmdPickRequest* GetPickRequest() const;

    /// The action whose command edits an object, which its publisher names in the option "edits". Where several
    /// edit it, the one for the most derived class counts.
    /// \param object  null for none
    /// \return as GetAction(); null when no command edits the object
    QAction* GetEditor(const QObject* object) const;
    /// Runs the command that edits an object: ZORCmdCommand::GetEditedObject() is the object. When its dialog is open
    /// already, that one comes to the front instead.
    /// \return false when no command edits the object
    /// \throws ZORSysException as ZORCmdCommand::Start()
    bool Edit(QObject* object);

    /// Sets how icon names become icons, also for the actions that exist already; an empty function gives
    /// icons of the desktop's theme.
    void SetIconResolver(const std::function<QIcon(const QString& name)>& resolver);

signals:
    /// An action was published while the application object exists.
    void ActionPublished(QAction* action);
    /// An action is about to be deleted.
    void ActionAboutToBeWithdrawn(QAction* action);
    /// GetPickAnswerer() is another one.
    void PickAnswererChanged();

private:
    friend class ZORCmdActionPublisher;
    friend class ZORCmdPickAnswerer;
    friend class ZORCmdPickRequest;
    struct Publication;
    class Private;

    ZORCmdController();
    ~ZORCmdController() override;

    void Publish(Publication&& publication);
    void Withdraw(const ZORCmdActionPublisher* publisher);
    QAction* MakeAction(Publication& publication) const;
    void Run(const ZORCmdActionPublisher* publisher, QObject* editedObject);
    void ForgetPickAnswerer(const ZORCmdPickAnswerer* answerer);
    void SetPickRequest(ZORCmdPickRequest* request);
    const Publication* FindEditor(const QObject* object) const;
    bool ShowOpenEditor(const QObject* object) const;
    static void DeleteActions();

    const std::unique_ptr<Private> d;
};
