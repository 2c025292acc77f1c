#include "window/ZORHostMainWindow.h"

#include "actions/ZORHostCommandPalette.h"
#include "actions/ZORHostDockAction.h"
#include "actions/ZORHostIcons.h"
#include "actions/ZORHostPublishedActions.h"
#include "actions/ZORHostViewActions.h"
#include "base/ZORHostApplication.h"
#include "base/ZORHostSettings.h"
#include "base/ZORHostWindowTitle.h"
#include "docks/ZORHostApiDock.h"
#include "docks/ZORHostLogDock.h"
#include "document/ZORHostAutosave.h"
#include "document/ZORHostDocument.h"
#include "document/ZORHostDocumentCommands.h"
#include "document/ZORHostDropTarget.h"
#include "document/ZORHostFileMenu.h"
#include "document/ZORHostRecoveryDialog.h"
#include "help/ZORHostHelp.h"
#include "objects/ZORHostEditMenu.h"
#include "objects/ZORHostObjectActions.h"
#include "plugins/ZORHostPluginDialog.h"
#include "plugins/ZORHostPluginManager.h"
#include "view/ZORHostPresentation.h"
#include "view/ZORHostSelection.h"
#include "view/ZORHostView3D.h"
#include "window/ZORHostAboutDialog.h"
#include "window/ZORHostDockLayout.h"
#include "window/ZORHostNoticeBar.h"
#include "window/ZORHostPlacement.h"
#include "window/ZORHostPreferencesDialog.h"
#include "window/ZORHostThemeMenu.h"
#include "window/ZORHostViewTools.h"
#include "window/ZORHostWelcomeView.h"
#include "window/ZORHostWindowMenu.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatEnvironment.h>
#include <ZORFeature/ZORFeatEnvironmentManager.h>
#include <ZORFeatureUI/ZORFeatBrowserWidget.h>
#include <ZORGeometry/ZORGeoGeometry.h>
#include <ZORSystem/ZORSysFileNotices.h>

#include <QApplication>
#include <QCloseEvent>
#include <QDockWidget>
#include <QFileInfo>
#include <QGridLayout>
#include <QMenuBar>
#include <QSessionManager>
#include <QStatusBar>
#include <QToolBar>
#include <QVBoxLayout>

namespace {

/// Of saveState(): raise when docks or tool bars change their meaning.
constexpr int kLayoutVersion = 1;

} // namespace

ZORHostMainWindow::ZORHostMainWindow(ZORHostPluginManager* plugins, ZORHostLineQueue* log, QWidget* parent)
    : QMainWindow(parent)
    , m_plugins(plugins)
{
    setObjectName("ZORHostMainWindow");
    ZORHostPlacement::SetFirstSize(this, {1280, 820});
    setDockOptions(AnimatedDocks | AllowNestedDocks | AllowTabbedDocks);

    auto* central = new QWidget(this);
    central->setObjectName("_CentralWidget");
    auto* column = new QVBoxLayout(central);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    m_notices = new ZORHostNoticeBar(central);
    column->addWidget(m_notices);
    m_view = new ZORHostView3D(central);
    auto* middle = new QGridLayout; // the welcome covers the view
    column->addLayout(middle, 1);
    middle->addWidget(m_view, 0, 0);
    m_welcome = new ZORHostWelcomeView(m_view, central);
    middle->addWidget(m_welcome, 0, 0);
    m_presentation = new ZORHostPresentation(m_view, this);
    m_selection = new ZORHostSelection(this);
    setCentralWidget(central);
    statusBar()->setObjectName("_StatusBar");

    CreateDocument();
    CreateDocks(log);
    auto* const editMenu = new ZORHostEditMenu(this, m_selection, m_view, m_browser);
    CreateViewMenu();
    new ZORHostWindowMenu(this);
    CreateHelpMenu();
    auto* published = addToolBar(tr("Commands"));
    published->setObjectName("_CommandToolBar");
    published->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    new ZORHostPublishedActions(menuBar(), m_helpMenu, published, this);
    FillWelcome();

    auto* const tools = new ZORHostViewTools(m_view, m_selection, m_viewToolBar, statusBar(), this);
    connect(tools, &ZORHostViewTools::Activated, editMenu->GetActions(), &ZORHostObjectActions::Activate);
    connect(ZORSysFileNotices::GetInstance(), &ZORSysFileNotices::Reported, m_notices,
            &ZORHostNoticeBar::AddLosses);
    connect(m_notices, &ZORHostNoticeBar::DetailsRequested, this, &ZORHostMainWindow::OnPluginsTriggered);
    auto* environments = ZORFeatEnvironmentManager::GetManager();
    connect(environments, &ZORFeatEnvironmentManager::CurrentEnvironmentChanged, this,
            &ZORHostMainWindow::SetEnvironment);
    SetEnvironment(environments->GetCurrentEnvironment());
    // The session waits only for direct connections.
    connect(qGuiApp, &QGuiApplication::commitDataRequest, this, &ZORHostMainWindow::OnSessionEnds,
            Qt::DirectConnection);
    m_view->setFocus();
}

ZORHostMainWindow::~ZORHostMainWindow() = default;

void ZORHostMainWindow::FillWelcome()
{
    constexpr int kMostFiles = 6;
    m_welcome->AddActions(tr("Start"),
                          {findChild<QAction*>("_OpenAction"), findChild<QAction*>("_ImportAction")});
    m_welcome->AddActions(tr("First steps"),
                          {findChild<QAction*>("_FirstStepsAction"), findChild<QAction*>("_KeysAction"),
                           findChild<QAction*>("_PaletteAction")});
    m_welcome->AddMenu(tr("Samples"), findChild<QMenu*>("_SamplesMenu"), kMostFiles);
    m_welcome->AddMenu(tr("Recent files"), findChild<QMenu*>("_RecentMenu"), kMostFiles);
}

void ZORHostMainWindow::CreateDocument()
{
    m_document = new ZORHostDocumentCommands(this, m_view);
    auto* fileMenu = new ZORHostFileMenu(this, m_document, m_view);
    m_viewToolBar = addToolBar(tr("File and View"));
    m_viewToolBar->setObjectName("_ViewToolBar");
    fileMenu->AddTo(m_viewToolBar);
    m_viewToolBar->addSeparator();
    new ZORHostDropTarget(this, m_view, m_document);
    connect(fileMenu, &ZORHostFileMenu::PreferencesRequested, this,
            &ZORHostMainWindow::OnPreferencesRequested);
    connect(fileMenu, &ZORHostFileMenu::RecoveryRequested, this, &ZORHostMainWindow::OnRecoveryRequested);
    connect(m_document->GetDocument(), &ZORHostDocument::Changed, this, &ZORHostMainWindow::UpdateTitle);
    connect(m_document->GetAutosave(), &ZORHostAutosave::Failed, this, [this](const QString& reason) {
        m_notices->AddMessage(tr("The document could not be saved automatically: %1").arg(reason));
    });
}

void ZORHostMainWindow::UpdateTitle()
{
    const ZORHostDocument* document = m_document->GetDocument();
    setWindowTitle(ZORHostWindowTitle::Make(document->GetName()));
    setWindowModified(document->IsModified());
}

QAction* ZORHostMainWindow::AddAction(const QString& objectName, const QString& icon, const QString& text,
                                      const QString& tip)
{
    auto* action = new QAction(ZORHostIcon(icon), text, this);
    action->setObjectName(objectName);
    action->setToolTip(tip);
    action->setStatusTip(tip);
    return action;
}

void ZORHostMainWindow::CreateDocks(ZORHostLineQueue* log)
{
    auto* browserDock = new QDockWidget(tr("Browser"), this);
    browserDock->setObjectName("_BrowserDock");
    m_browser = new ZORFeatBrowserWidget(browserDock);
    m_browser->setObjectName("_Browser");
    browserDock->setWidget(m_browser);
    m_logDock = new ZORHostLogDock(log, this);
    m_apiDock = new ZORHostApiDock(this);
    m_dockLayout = new ZORHostDockLayout(this, {browserDock, m_logDock, m_apiDock});
}

void ZORHostMainWindow::AddDockActions()
{
    auto* const browser = findChild<QDockWidget*>("_BrowserDock", Qt::FindDirectChildrenOnly);
    m_viewMenu->addActions(
        {new ZORHostDockAction(browser, tr("Brows&er"),
                               tr("Shows or hides the tree of the document's objects")),
         new ZORHostDockAction(m_logDock, tr("Lo&g"), tr("Shows or hides the messages of the program")),
         new ZORHostDockAction(m_apiDock, tr("API &calls"),
                               tr("Shows or hides the calls into the SDK, which can be recorded there"))});
    QAction* reset = AddAction("_ResetLayoutAction", QString(), tr("Reset La&yout"),
                               tr("Puts docks and tool bars where they were at first"));
    connect(reset, &QAction::triggered, m_dockLayout, &ZORHostDockLayout::Reset);
    m_viewMenu->addAction(reset);
}

void ZORHostMainWindow::CreateViewMenu()
{
    m_viewMenu = menuBar()->addMenu(tr("&View"));
    m_viewMenu->setObjectName("_ViewMenu");
    ZORHostAddViewActions(m_view, m_viewMenu, m_viewToolBar);
    AddDockActions();
    m_viewMenu->addSeparator();
    m_themes = new ZORHostThemeMenu(m_viewMenu);
}

void ZORHostMainWindow::CreateHelpMenu()
{
    m_helpMenu = menuBar()->addMenu(tr("&Help"));
    m_helpMenu->setObjectName("_HelpMenu");
    setProperty("helpTopic", tr("Working with the host"));
    m_view->setProperty("helpTopic", tr("Mouse and keys"));
    (new ZORHostHelp(this))->AddTo(m_helpMenu);
    m_helpMenu->addSeparator();
    QAction* palette = AddAction("_PaletteAction", "palette", tr("&Command Palette..."),
                                 tr("Finds any action by a part of its name and runs it"));
    palette->setShortcut(Qt::CTRL | Qt::SHIFT | Qt::Key_P);
    palette->setShortcutContext(Qt::ApplicationShortcut);
    connect(palette, &QAction::triggered, this, &ZORHostMainWindow::OnPaletteTriggered);
    m_helpMenu->addAction(palette);
    QAction* plugins =
        AddAction("_PluginsAction", "plugins", tr("&Plug-ins..."), tr("Lists, loads and unloads plug-ins"));
    connect(plugins, &QAction::triggered, this, &ZORHostMainWindow::OnPluginsTriggered);
    m_helpMenu->addAction(plugins);
    QAction* about = AddAction("_AboutAction", "zorhost", tr("&About Zorvane Host"),
                               tr("Shows versions, graphics and acknowledgements"));
    about->setMenuRole(QAction::AboutRole);
    connect(about, &QAction::triggered, this, &ZORHostMainWindow::OnAboutTriggered);
    m_helpMenu->addAction(about);
}

void ZORHostMainWindow::SetEnvironment(ZORFeatEnvironment* environment)
{
    m_presentation->SetEnvironment(environment);
    m_selection->SetContainer(environment ? environment->GetContainer() : nullptr);
    m_browser->SetEnvironment(environment);
    m_welcome->SetEnvironment(environment);
    m_document->SetEnvironment(environment);
}

void ZORHostMainWindow::SetTheme(ZORHostOptions::Theme theme)
{
    m_themes->SetTheme(theme);
}

void ZORHostMainWindow::RestoreSettings()
{
    restoreGeometry(ZORHostSettings::Read("Geometry").toByteArray());
    ZORHostPlacement::KeepOnScreen(this);
    restoreState(ZORHostSettings::Read("Layout").toByteArray(), kLayoutVersion);
    m_dockLayout->GetSizes()->SetSizes(ZORHostSettings::Read("DockSizes").toMap());
    m_themes->RestoreSettings();
    const bool wireframe = ZORHostSettings::Read("Wireframe").toBool();
    m_view->SetDisplayMode(wireframe ? ZORVisRenderer::Wireframe : ZORVisRenderer::Shaded);
}

void ZORHostMainWindow::SaveSettings() const
{
    ZORHostSettings::Write("Geometry", saveGeometry());
    ZORHostSettings::Write("Layout", saveState(kLayoutVersion));
    ZORHostSettings::Write("Wireframe", m_view->GetDisplayMode() == ZORVisRenderer::Wireframe);
    ZORHostSettings::Write("DockSizes", m_dockLayout->GetSizes()->GetSizes());
    m_themes->SaveSettings();
}

bool ZORHostMainWindow::OpenFiles(const QStringList& files)
{
    return m_document->Add(files);
}

void ZORHostMainWindow::SetAsksToSave(bool asks)
{
    m_document->SetAsksToSave(asks);
}

void ZORHostMainWindow::OfferRecovery()
{
    if (!ZORHostRescue::FindAbandoned().isEmpty())
        OnRecoveryRequested();
}

void ZORHostMainWindow::OnRecoveryRequested()
{
    const QList<ZORHostRescue::Entry> entries = ZORHostRescue::FindAbandoned();
    if (entries.isEmpty()) {
        statusBar()->showMessage(tr("There are no documents to recover"));
        return;
    }
    auto* dialog = new ZORHostRecoveryDialog(entries, m_document, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
}

void ZORHostMainWindow::OnPreferencesRequested()
{
    auto* dialog = new ZORHostPreferencesDialog(this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
}

void ZORHostMainWindow::OnAboutTriggered()
{
    auto* dialog = new ZORHostAboutDialog(*m_plugins, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->show();
}

void ZORHostMainWindow::OnPluginsTriggered()
{
    auto* dialog = findChild<ZORHostPluginDialog*>(QString(), Qt::FindDirectChildrenOnly);
    if (!dialog)
        dialog = new ZORHostPluginDialog(m_plugins, this);
    dialog->show();
    dialog->raise();
    dialog->activateWindow();
}

void ZORHostMainWindow::OnPaletteTriggered()
{
    QWidget* parent = QApplication::activeWindow();
    (new ZORHostCommandPalette(parent ? parent : this))->show();
}

void ZORHostMainWindow::ShowPluginProblems()
{
    int failures = 0;
    for (const ZORHostPlugin& plugin : m_plugins->GetPlugins()) {
        if (plugin.state != ZORHostPlugin::State::Failed)
            continue;
        ++failures;
        m_notices->AddMessage(
            tr("Plug-in '%1' was not loaded: %2").arg(QFileInfo(plugin.path).fileName(), plugin.reason));
    }
    if (failures > 0)
        m_notices->SetDetails(tr("Plug-ins..."));
}

bool ZORHostMainWindow::ConfirmClosing()
{
    const auto* application = qobject_cast<ZORHostApplication*>(QCoreApplication::instance());
    return (application && application->IsQuitting()) || m_document->ConfirmClosing();
}

void ZORHostMainWindow::RescueDocument()
{
    m_document->Rescue();
}

void ZORHostMainWindow::OnSessionEnds(QSessionManager& session)
{
    if (!m_document->GetDocument()->IsModified())
        return;
    if (!session.allowsInteraction()) {
        RescueDocument();
        return;
    }
    const bool mayEnd = ConfirmClosing();
    session.release();
    if (!mayEnd)
        session.cancel();
}

void ZORHostMainWindow::closeEvent(QCloseEvent* event)
{
    if (m_document->IsWriting()) {
        connect(m_document, &ZORHostDocumentCommands::Settled, this, &QWidget::close,
                Qt::ConnectionType(Qt::QueuedConnection | Qt::SingleShotConnection));
        event->ignore();
        return;
    }
    // Before anything is closed, so that Cancel leaves everything as it is.
    if (!ConfirmClosing()) {
        event->ignore();
        return;
    }
    m_document->CancelReading();
    SaveSettings();
    // Windows of plug-ins hold on to the environment: they go first.
    const QWidgetList windows = QApplication::topLevelWidgets();
    QList<QPointer<QWidget>> others(windows.cbegin(), windows.cend());
    for (const QPointer<QWidget>& window : std::as_const(others)) {
        if (window && window != this && window->isVisible() && !window->close()) {
            event->ignore();
            return;
        }
    }
    event->accept();
}
