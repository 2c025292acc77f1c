#include "ZORCmdController.h"

#include "ZORCmdController_p.h"

#include <ZORCommand/ZORCmdCommand.h>
#include <ZORCommand/ZORCmdDialogCommand.h>
#include <ZORCommand/ZORCmdDialogHandler.h>
#include <ZORCommand/ZORCmdPickAnswerer.h>
#include <ZORCommand/ZORCmdPickRequest.h>
#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysException.h>

#include <QGuiApplication>
#include <QHash>

#include <algorithm>
#include <list>

class ZORCmdController::Private
{
public:
    QHash<QByteArray, QList<const QMetaObject*>> commands; // by class name; the last one is in force
    QList<QPointer<ZORCmdCommand>> running;
    std::list<Publication> publications;          // in the order of publication; addresses stay
    QPointer<QCoreApplication> application;       // the one that the actions were made for
    ZORCmdDialogHandler* dialogHandler = nullptr; // not owned
    ZORCmdPickAnswerer* pickAnswerer = nullptr;   // not owned
    ZORCmdPickRequest* pickRequest = nullptr;     // not owned; active
    std::function<QIcon(const QString&)> iconResolver;

    QIcon ResolveIcon(const QString& name) const
    {
        return iconResolver ? iconResolver(name) : QIcon::fromTheme(name);
    }

    std::list<Publication>::iterator Find(const ZORCmdActionPublisher* publisher)
    {
        return std::find_if(publications.begin(), publications.end(),
                            [publisher](const Publication& p) { return p.publisher == publisher; });
    }

    const QMetaObject* FindCommand(const QByteArray& name) const
    {
        const QList<const QMetaObject*> classes = commands.value(name);
        return classes.isEmpty() ? nullptr : classes.constLast();
    }

    void DeleteRunning(const QMetaObject* command)
    {
        // One of them may take another one along.
        const QList<QPointer<ZORCmdCommand>> all = running;
        for (const QPointer<ZORCmdCommand>& run : all) {
            if (run && (!command || run->metaObject()->inherits(command)))
                delete run;
        }
        running.removeAll(nullptr);
    }
};

namespace {

// Qt keeps the description of a type that it meets first: not that of a plug-in, which may be unloaded.
[[maybe_unused]] const int kActionMetaType = qRegisterMetaType<QAction*>();

// Class names of a library vanish with it: look them up and store them by value.
QByteArray NameOf(const QMetaObject* command)
{
    return QByteArray(command->className(), qsizetype(qstrlen(command->className())));
}

} // namespace

ZORCmdController* ZORCmdController::GetController()
{
    static ZORCmdController controller;
    return &controller;
}

ZORCmdController::ZORCmdController()
    : d(std::make_unique<Private>())
{
    setObjectName(QStringLiteral("ZORCmdController"));
}

ZORCmdController::~ZORCmdController() = default;

void ZORCmdController::RegisterCommand(const QMetaObject* command)
{
    ZOR_TRACE_CALL(command);
    QList<const QMetaObject*>& classes = d->commands[NameOf(command)];
    classes.removeOne(command);
    classes.append(command);
}

void ZORCmdController::UnregisterCommand(const QMetaObject* command)
{
    ZOR_TRACE_CALL(command);
    const auto classes = d->commands.find(NameOf(command));
    if (classes == d->commands.end() || !classes->removeOne(command))
        return;
    if (classes->isEmpty())
        d->commands.erase(classes);
    d->DeleteRunning(command);
}

QAction* ZORCmdController::GetAction(const QByteArray& id) const
{
    ZOR_TRACE_CALL(id);
    for (Publication& publication : d->publications) {
        if (publication.id == id)
            return MakeAction(publication);
    }
    return nullptr;
}

QStringList ZORCmdController::GetCategories() const
{
    QStringList categories;
    for (const Publication& publication : d->publications) {
        if (!categories.contains(publication.category))
            categories.append(publication.category);
    }
    return categories;
}

QList<QAction*> ZORCmdController::GetActions(const QString& category) const
{
    ZOR_TRACE_CALL(category);
    QList<Publication*> published;
    for (Publication& publication : d->publications) {
        if (publication.category == category)
            published.append(&publication);
    }
    // Not by publication: the order of a library's static initialisers is an accident of its link.
    std::stable_sort(published.begin(), published.end(), [](const Publication* a, const Publication* b) {
        return a->position != b->position ? a->position < b->position : a->text < b->text;
    });
    QList<QAction*> actions;
    for (Publication* publication : published) {
        if (QAction* action = MakeAction(*publication))
            actions.append(action);
    }
    return actions;
}

void ZORCmdController::SetDialogHandler(ZORCmdDialogHandler* handler)
{
    ZOR_TRACE_CALL(handler);
    d->dialogHandler = handler;
}

ZORCmdDialogHandler* ZORCmdController::GetDialogHandler() const
{
    return d->dialogHandler;
}

void ZORCmdController::SetPickAnswerer(ZORCmdPickAnswerer* answerer)
{
    ZOR_TRACE_CALL(answerer);
    if (answerer == d->pickAnswerer)
        return;
    if (d->pickRequest)
        d->pickRequest->Cancel();
    d->pickAnswerer = answerer;
    emit PickAnswererChanged();
}

// The answerer is being destroyed: it cannot be called any more.
void ZORCmdController::ForgetPickAnswerer(const ZORCmdPickAnswerer* answerer)
{
    if (answerer != d->pickAnswerer)
        return;
    d->pickAnswerer = nullptr;
    if (d->pickRequest)
        d->pickRequest->Cancel();
    emit PickAnswererChanged();
}

ZORCmdPickAnswerer* ZORCmdController::GetPickAnswerer() const
{
    return d->pickAnswerer;
}

ZORCmdPickRequest* ZORCmdController::GetPickRequest() const
{
    return d->pickRequest;
}

void ZORCmdController::SetPickRequest(ZORCmdPickRequest* request)
{
    d->pickRequest = request;
}

const ZORCmdController::Publication* ZORCmdController::FindEditor(const QObject* object) const
{
    for (const QMetaObject* type = object ? object->metaObject() : nullptr; type; type = type->superClass()) {
        for (const Publication& publication : d->publications) {
            if (publication.options.value(QStringLiteral("edits"))
                    .toStringList()
                    .contains(QLatin1String(type->className())))
                return &publication;
        }
    }
    return nullptr;
}

QAction* ZORCmdController::GetEditor(const QObject* object) const
{
    ZOR_TRACE_CALL(object);
    const Publication* const publication = FindEditor(object);
    return publication ? MakeAction(*const_cast<Publication*>(publication)) : nullptr;
}

bool ZORCmdController::ShowOpenEditor(const QObject* object) const
{
    for (const QPointer<ZORCmdCommand>& run : std::as_const(d->running)) {
        const auto* const command = qobject_cast<const ZORCmdDialogCommand*>(run);
        if (!command || command->IsFinishing() || command->GetEditedObject() != object)
            continue;
        if (QWidget* const content = command->GetContentWidget()) {
            content->window()->show(); // it may be minimized
            content->window()->raise();
            content->activateWindow();
            return true;
        }
    }
    return false;
}

bool ZORCmdController::Edit(QObject* object)
{
    ZOR_TRACE_CALL(object);
    const Publication* const publication = FindEditor(object);
    if (!publication)
        return false;
    if (!ShowOpenEditor(object))
        Run(publication->publisher, object);
    return true;
}

void ZORCmdController::SetIconResolver(const std::function<QIcon(const QString&)>& resolver)
{
    ZOR_TRACE_CALL();
    d->iconResolver = resolver;
    for (const Publication& publication : d->publications) {
        if (publication.action)
            publication.action->setIcon(d->ResolveIcon(publication.icon));
    }
}

void ZORCmdController::Publish(Publication&& publication)
{
    d->publications.push_back(std::move(publication));
    if (QAction* action = MakeAction(d->publications.back()))
        emit ActionPublished(action);
}

void ZORCmdController::Withdraw(const ZORCmdActionPublisher* publisher)
{
    const auto publication = d->Find(publisher);
    if (publication == d->publications.end())
        return;
    if (publication->action) {
        emit ActionAboutToBeWithdrawn(publication->action);
        delete publication->action;
    }
    const QMetaObject* command = publication->command;
    d->publications.erase(publication);
    const bool stillPublished = std::any_of(d->publications.begin(), d->publications.end(),
                                            [command](const Publication& p) { return p.command == command; });
    if (!stillPublished)
        UnregisterCommand(command);
}

QAction* ZORCmdController::MakeAction(Publication& publication) const
{
    if (publication.action || !QCoreApplication::instance())
        return publication.action;
    if (!qobject_cast<QGuiApplication*>(QCoreApplication::instance()))
        return nullptr;
    if (d->application != QCoreApplication::instance()) {
        d->application = QCoreApplication::instance();
        qAddPostRoutine(&ZORCmdController::DeleteActions);
    }

    auto* self = const_cast<ZORCmdController*>(this);
    publication.action = new QAction(d->ResolveIcon(publication.icon), publication.text, self);
    publication.action->setObjectName(QString::fromLatin1(publication.id));
    publication.action->setToolTip(publication.toolTip);
    publication.action->setStatusTip(publication.toolTip);
    publication.action->setProperty("category", publication.category);
    publication.action->setProperty("commandId", publication.id);
    publication.action->setProperty("placement", publication.placement);
    publication.action->setProperty("iconName", publication.icon);
    connect(publication.action, &QAction::triggered, self,
            [self, publisher = publication.publisher] { self->Run(publisher, nullptr); });
    return publication.action;
}

void ZORCmdController::Run(const ZORCmdActionPublisher* publisher, QObject* editedObject)
{
    const auto publication = d->Find(publisher);
    if (publication == d->publications.end())
        return;
    const QByteArray name = publication->className;
    const QMetaObject* const commandClass = d->FindCommand(name);
    if (!commandClass)
        throw ZORSysException(tr("command class '%1' is not registered").arg(QLatin1String(name)));
    QObject* object = commandClass->newInstance(Q_ARG(QObject*, this));
    const QPointer<ZORCmdCommand> command = qobject_cast<ZORCmdCommand*>(object);
    if (!command) {
        delete object;
        throw ZORSysException(tr("command class '%1' cannot be created").arg(QLatin1String(name)));
    }
    d->running.removeAll(nullptr);
    d->running.append(command);
    for (auto option = publication->options.begin(); option != publication->options.end(); ++option)
        command->setProperty(option.key().toUtf8().constData(), option.value());
    command->SetTitle(publication->text);
    command->SetEditedObject(editedObject);
    try {
        command->Start();
    } catch (...) {
        if (command) // it may have been withdrawn meanwhile
            command->FinishLater();
        throw;
    }
}

void ZORCmdController::DeleteActions()
{
    Private& d = *GetController()->d;
    for (Publication& publication : d.publications)
        delete publication.action;
    d.DeleteRunning(nullptr);
}
