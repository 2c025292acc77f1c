#include "help/ZORHostHelp.h"

#include "actions/ZORHostActionIndex.h"
#include "help/ZORHostHelpSubject.h"
#include "help/ZORHostHelpWindow.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMainWindow>
#include <QMenu>

ZORHostHelp::ZORHostHelp(QMainWindow* window)
    : QObject(window)
    , m_window(window)
{
    // Shortcuts of the main window rest while a modal dialog is open.
    qApp->installEventFilter(this);
}

QAction* ZORHostHelp::AddAction(QMenu* menu, const char* objectName, const QString& text, const QString& tip)
{
    auto* const action = new QAction(text, this);
    action->setObjectName(QLatin1String(objectName));
    action->setToolTip(tip);
    action->setStatusTip(tip);
    menu->addAction(action);
    return action;
}

void ZORHostHelp::AddTo(QMenu* menu)
{
    QAction* const help = AddAction(menu, "_HelpAction", tr("Help on &What Is Active"),
                                    tr("Explains the dialog, dock or menu entry in use"));
    help->setShortcut(Qt::Key_F1);
    connect(help, &QAction::triggered, this, &ZORHostHelp::OnHelpTriggered);
    connect(
        AddAction(menu, "_HelpContentsAction", tr("Help C&ontents"), tr("Opens the help at its beginning")),
        &QAction::triggered, this, &ZORHostHelp::OnContentsTriggered);
    connect(AddAction(menu, "_FirstStepsAction", tr("&First Steps"),
                      tr("Leads through the host in some minutes")),
            &QAction::triggered, this, [this] { ShowTopic(tr("First steps")); });
    connect(AddAction(menu, "_KeysAction", tr("&Mouse and Keys"),
                      tr("Shows what mouse buttons and keys do, on one page")),
            &QAction::triggered, this, &ZORHostHelp::OnKeysTriggered);
}

ZORHostHelpWindow* ZORHostHelp::OpenWindow()
{
    QWidget* const modal = QApplication::activeModalWidget();
    QWidget* const parent = modal ? modal : m_window;
    if (m_help && m_help->parentWidget() != parent) {
        m_help->close();
        m_help->deleteLater();
        m_help.clear();
    }
    if (!m_help)
        m_help = new ZORHostHelpWindow(parent);
    m_help->setWindowState(m_help->windowState() & ~Qt::WindowMinimized);
    m_help->show();
    m_help->raise();
    m_help->activateWindow();
    return m_help;
}

void ZORHostHelp::ShowTopic(const QString& topic)
{
    const ZORHostHelpPlace place = ZORHostHelpPages::Find(topic);
    if (place.IsNull())
        OnContentsTriggered();
    else
        OpenWindow()->ShowPlace(place);
}

void ZORHostHelp::ShowFor(QWidget* widget)
{
    const ZORHostHelpSubject subject = ZORHostHelpSubject::Find(widget);
    if (!subject.place.IsNull())
        OpenWindow()->ShowPlace(subject.place);
    else if (!subject.text.isEmpty())
        OpenWindow()->ShowText(subject.text);
    else
        OnContentsTriggered();
}

void ZORHostHelp::OnHelpTriggered()
{
    QWidget* const focus = QApplication::focusWidget();
    ShowFor(focus ? focus : QApplication::activeWindow());
}

void ZORHostHelp::OnContentsTriggered()
{
    const QStringList pages = ZORHostHelpPages::GetPages();
    OpenWindow()->ShowPlace({pages.value(0), {}});
}

void ZORHostHelp::OnKeysTriggered()
{
    OpenWindow()->ShowText(MakeKeySheet());
}

QString ZORHostHelp::MakeKeySheet() const
{
    QString sheet = tr("# Mouse and keys") + QLatin1String("\n\n")
                    + ZORHostHelpPages::ReadSection(ZORHostHelpPages::Find("Mouse and keys"));
    sheet += QLatin1String("\n## ") + tr("Keys of menu entries") + QLatin1String("\n\n")
             + tr("| Keys | Entry | Menu |\n|---|---|---|\n");
    const QList<ZORHostActionEntry> entries = ZORHostCollectActions(m_window);
    for (const ZORHostActionEntry& entry : entries) {
        if (!entry.action || entry.action->shortcut().isEmpty())
            continue;
        const QString menu = entry.path.section(QLatin1String(" > "), 1); // without the title of the window
        sheet += QStringLiteral("| %1 | %2 | %3 |\n")
                     .arg(entry.action->shortcut().toString(QKeySequence::NativeText), entry.text, menu);
    }
    return sheet;
}

bool ZORHostHelp::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress)
        return false;
    const auto* const key = static_cast<QKeyEvent*>(event);
    if (key->key() != Qt::Key_F1 || key->modifiers() != Qt::NoModifier)
        return false;
    auto* const popup = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    if (popup) {
        const QString text = ZORHostHelpSubject::DescribeAction(popup->activeAction());
        while (QWidget* const open = QApplication::activePopupWidget())
            open->close();
        text.isEmpty() ? OnContentsTriggered() : OpenWindow()->ShowText(text);
    } else if (auto* const widget = qobject_cast<QWidget*>(watched)) {
        ShowFor(widget);
    } else {
        OnHelpTriggered(); // on its way through the window
    }
    return true;
}
