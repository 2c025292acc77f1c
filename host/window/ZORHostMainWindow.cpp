#include "window/ZORHostMainWindow.h"

#include "app/ZORHostTheme.h"
#include "docks/ZORHostApiDock.h"
#include "docks/ZORHostLogDock.h"
#include "plugins/ZORHostPluginDialog.h"
#include "plugins/ZORHostPluginManager.h"
#include "view/ZORHostSamples.h"
#include "view/ZORHostView3D.h"
#include "window/ZORHostAboutDialog.h"
#include "window/ZORHostCommandPalette.h"
#include "window/ZORHostIcons.h"
#include "window/ZORHostNoticeBar.h"
#include "window/ZORHostPublishedActions.h"
#include "window/ZORHostViewActions.h"

#include <ZORFeature/ZORFeatEnvironment.h>
#include <ZORFeature/ZORFeatEnvironmentManager.h>
#include <ZORFeatureUI/ZORFeatBrowserWidget.h>
#include <ZORGeometry/ZORGeoGeometry.h>
#include <ZORSystem/ZORSysException.h>
#include <ZORSystem/ZORSysSettingGroupContext.h>
#include <ZORSystem/ZORSysSettingsManager.h>

#include <QActionGroup>
#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QDockWidget>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QImageWriter>
#include <QMenuBar>
#include <QMessageBox>
#include <QSaveFile>
#include <QSettings>
#include <QStatusBar>
#include <QToolBar>
#include <QVBoxLayout>

namespace {

/// Of saveState(): raise when docks or tool bars change their meaning.
constexpr int layoutVersion = 1;

// The group is entered for one access only: dialogs run in between, and others use the store as well.
QVariant ReadSetting(const QString& key, const QVariant& defaultValue = {})
{
    QSettings* store = ZORSysSettingsManager::GetManager()->GetSource();
    if (!store)
        return defaultValue;
    const ZORSysSettingGroupContext group(store, "Host");
    return store->value(key, defaultValue);
}

void WriteSetting(const QString& key, const QVariant& value)
{
    QSettings* store = ZORSysSettingsManager::GetManager()->GetSource();
    if (!store)
        return;
    const ZORSysSettingGroupContext group(store, "Host");
    store->setValue(key, value);
}

} // namespace

ZORHostMainWindow::ZORHostMainWindow(ZORHostPluginManager* plugins, ZORHostLineQueue* log, QWidget* parent)
    : QMainWindow(parent)
    , m_plugins(plugins)
{
    setObjectName("ZORHostMainWindow");
    setWindowTitle(tr("Zorvane Host"));
    resize(1280, 820);
    setDockOptions(AnimatedDocks | AllowNestedDocks | AllowTabbedDocks);

    auto* central = new QWidget(this);
    central->setObjectName("_CentralWidget");
    auto* column = new QVBoxLayout(central);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    m_notices = new ZORHostNoticeBar(central);
    column->addWidget(m_notices);
    m_view = new ZORHostView3D(central);
    column->addWidget(m_view, 1);
    setCentralWidget(central);
    statusBar()->setObjectName("_StatusBar");

    CreateFileMenu();
    CreateDocks(log);
    CreateViewMenu();
    CreateHelpMenu();
    auto* published = addToolBar(tr("Commands"));
    published->setObjectName("_CommandToolBar");
    published->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    new ZORHostPublishedActions(menuBar(), m_helpMenu, published, this);

    connect(m_view, &ZORHostView3D::Picked, this, &ZORHostMainWindow::OnPicked);
    connect(m_view, &ZORHostView3D::PickCleared, this, [this] { statusBar()->clearMessage(); });
    connect(m_notices, &ZORHostNoticeBar::DetailsRequested, this, &ZORHostMainWindow::OnPluginsTriggered);
    auto* environments = ZORFeatEnvironmentManager::GetManager();
    connect(environments, &ZORFeatEnvironmentManager::CurrentEnvironmentChanged, this,
            &ZORHostMainWindow::SetEnvironment);
    SetEnvironment(environments->GetCurrentEnvironment());
    m_view->setFocus();
}

ZORHostMainWindow::~ZORHostMainWindow() = default;

QAction* ZORHostMainWindow::AddAction(const QString& objectName, const QString& icon, const QString& text)
{
    auto* action = new QAction(ZORHostIcon(icon), text, this);
    action->setObjectName(objectName);
    return action;
}

void ZORHostMainWindow::CreateFileMenu()
{
    QMenu* menu = menuBar()->addMenu(tr("&File"));
    menu->setObjectName("_FileMenu");
    QAction* open = AddAction("_OpenAction", "open", tr("&Open..."));
    open->setShortcut(QKeySequence::Open);
    open->setToolTip(tr("Opens an STL file and shows its surfaces"));
    connect(open, &QAction::triggered, this, &ZORHostMainWindow::OnOpenTriggered);
    menu->addAction(open);
    QMenu* samples = menu->addMenu(tr("Open &Samples"));
    samples->setObjectName("_SamplesMenu");
    connect(samples, &QMenu::aboutToShow, this, [this, samples] { FillSamplesMenu(samples); });
    FillSamplesMenu(samples);
    menu->addSeparator();
    QAction* save = AddAction("_SavePictureAction", "save-picture", tr("Save &Picture..."));
    save->setShortcut(QKeySequence::Save);
    save->setToolTip(tr("Writes the 3D view into a PNG file"));
    connect(save, &QAction::triggered, this, &ZORHostMainWindow::OnSavePictureTriggered);
    menu->addAction(save);
    menu->addSeparator();
    QAction* quit = AddAction("_QuitAction", QString(), tr("&Quit"));
    quit->setShortcut(QKeySequence::Quit);
    quit->setMenuRole(QAction::QuitRole);
    connect(quit, &QAction::triggered, this, &QWidget::close);
    menu->addAction(quit);

    m_viewToolBar = addToolBar(tr("File and View"));
    m_viewToolBar->setObjectName("_ViewToolBar");
    m_viewToolBar->addAction(open);
    m_viewToolBar->addAction(save);
    m_viewToolBar->addSeparator();
}

void ZORHostMainWindow::FillSamplesMenu(QMenu* menu)
{
    menu->clear();
    const QStringList files = ZORHostSamples::GetFiles();
    for (const QString& file : files) {
        auto* action = new QAction(QFileInfo(file).fileName(), menu);
        action->setObjectName(QStringLiteral("_Sample_%1").arg(QFileInfo(file).completeBaseName()));
        action->setToolTip(QDir::toNativeSeparators(file));
        connect(action, &QAction::triggered, this, [this, file] { OpenFile(file); });
        menu->addAction(action);
    }
    if (files.isEmpty())
        menu->addAction(tr("No samples found"))->setEnabled(false);
}

void ZORHostMainWindow::CreateDocks(ZORHostLineQueue* log)
{
    auto* browserDock = new QDockWidget(tr("Browser"), this);
    browserDock->setObjectName("_BrowserDock");
    m_browser = new ZORFeatBrowserWidget(browserDock);
    m_browser->setObjectName("_Browser");
    browserDock->setWidget(m_browser);
    addDockWidget(Qt::LeftDockWidgetArea, browserDock);
    m_logDock = new ZORHostLogDock(log, this);
    addDockWidget(Qt::BottomDockWidgetArea, m_logDock);
    m_apiDock = new ZORHostApiDock(this);
    addDockWidget(Qt::BottomDockWidgetArea, m_apiDock);
    tabifyDockWidget(m_logDock, m_apiDock);
    m_logDock->raise();
    setCorner(Qt::BottomLeftCorner, Qt::LeftDockWidgetArea);
    resizeDocks({browserDock}, {260}, Qt::Horizontal);
    resizeDocks({m_logDock}, {180}, Qt::Vertical);
}

void ZORHostMainWindow::CreateViewMenu()
{
    m_viewMenu = menuBar()->addMenu(tr("&View"));
    m_viewMenu->setObjectName("_ViewMenu");
    ZORHostAddViewActions(m_view, m_viewMenu, m_viewToolBar);
    for (QDockWidget* dock : findChildren<QDockWidget*>(Qt::FindDirectChildrenOnly)) {
        dock->toggleViewAction()->setObjectName(dock->objectName() + "Action");
        m_viewMenu->addAction(dock->toggleViewAction());
    }
    QMenu* themes = m_viewMenu->addMenu(tr("T&heme"));
    themes->setObjectName("_ThemeMenu");
    m_themes = new QActionGroup(this);
    const std::pair<ZORHostOptions::Theme, QString> choices[] = {
        {ZORHostOptions::Theme::System, tr("&System")},
        {ZORHostOptions::Theme::Light, tr("&Light")},
        {ZORHostOptions::Theme::Dark, tr("&Dark")}};
    for (const auto& [theme, text] : choices) {
        QAction* action = m_themes->addAction(text);
        action->setObjectName(QStringLiteral("_Theme_%1").arg(ZORHostTheme::ToName(theme)));
        action->setCheckable(true);
        action->setChecked(theme == ZORHostOptions::Theme::System);
        connect(action, &QAction::triggered, this, [this, chosen = theme] { SetTheme(chosen); });
        themes->addAction(action);
    }
}

void ZORHostMainWindow::CreateHelpMenu()
{
    m_helpMenu = menuBar()->addMenu(tr("&Help"));
    m_helpMenu->setObjectName("_HelpMenu");
    QAction* palette = AddAction("_PaletteAction", "palette", tr("&Command Palette..."));
    palette->setShortcut(Qt::CTRL | Qt::SHIFT | Qt::Key_P);
    palette->setShortcutContext(Qt::ApplicationShortcut);
    connect(palette, &QAction::triggered, this, &ZORHostMainWindow::OnPaletteTriggered);
    m_helpMenu->addAction(palette);
    QAction* plugins = AddAction("_PluginsAction", "plugins", tr("&Plug-ins..."));
    connect(plugins, &QAction::triggered, this, &ZORHostMainWindow::OnPluginsTriggered);
    m_helpMenu->addAction(plugins);
    QAction* about = AddAction("_AboutAction", "zorhost", tr("&About Zorvane Host"));
    about->setMenuRole(QAction::AboutRole);
    connect(about, &QAction::triggered, this, &ZORHostMainWindow::OnAboutTriggered);
    m_helpMenu->addAction(about);
}

void ZORHostMainWindow::SetEnvironment(ZORFeatEnvironment* environment)
{
    m_view->SetEnvironment(environment);
    m_browser->SetEnvironment(environment);
}

void ZORHostMainWindow::SetTheme(ZORHostOptions::Theme theme)
{
    ZORHostTheme::Apply(theme);
    const QString name = QStringLiteral("_Theme_%1").arg(ZORHostTheme::ToName(theme));
    const QList<QAction*> actions = m_themes->actions();
    for (QAction* action : actions)
        action->setChecked(action->objectName() == name);
}

void ZORHostMainWindow::RestoreSettings()
{
    restoreGeometry(ReadSetting("Geometry").toByteArray());
    restoreState(ReadSetting("Layout").toByteArray(), layoutVersion);
    SetTheme(ZORHostTheme::FromName(ReadSetting("Theme").toString()));
    const bool wireframe = ReadSetting("Wireframe").toBool();
    m_view->SetDisplayMode(wireframe ? ZORVisRenderer::Wireframe : ZORVisRenderer::Shaded);
}

void ZORHostMainWindow::SaveSettings() const
{
    WriteSetting("Geometry", saveGeometry());
    WriteSetting("Layout", saveState(layoutVersion));
    WriteSetting("Wireframe", m_view->GetDisplayMode() == ZORVisRenderer::Wireframe);
    if (const QAction* theme = m_themes->checkedAction())
        WriteSetting("Theme", theme->objectName().section(u'_', 2));
}

bool ZORHostMainWindow::OpenFile(const QString& fileName)
{
    ZORFeatEnvironment* environment = ZORFeatEnvironmentManager::GetManager()->GetCurrentEnvironment();
    if (!environment)
        return false;
    QElapsedTimer timer;
    timer.start();
    QApplication::setOverrideCursor(Qt::WaitCursor);
    QString error;
    int surfaces = 0;
    try {
        surfaces = ZORHostOpenFile(fileName, environment);
    } catch (const ZORSysException& exception) {
        error = exception.GetMessage();
    }
    QApplication::restoreOverrideCursor();
    if (!error.isEmpty()) {
        ShowError(error);
        return false;
    }
    m_view->FitAll();
    statusBar()->showMessage(tr("%1: %n surface(s) in %2 s", nullptr, surfaces)
                                 .arg(QFileInfo(fileName).fileName())
                                 .arg(double(timer.elapsed()) / 1000, 0, 'f', 2));
    return true;
}

void ZORHostMainWindow::OnOpenTriggered()
{
    const QString start = ReadSetting("OpenDir", ZORHostSamples::FindFolder()).toString();
    const QStringList files =
        QFileDialog::getOpenFileNames(this, tr("Open"), start, tr("STL files (*.stl *.STL);;All files (*)"));
    for (const QString& file : files) {
        if (OpenFile(file))
            WriteSetting("OpenDir", QFileInfo(file).absolutePath());
    }
}

void ZORHostMainWindow::OnSavePictureTriggered()
{
    const QString start = ReadSetting("PictureFile", "view.png").toString();
    QString file = QFileDialog::getSaveFileName(this, tr("Save Picture"), start, tr("PNG pictures (*.png)"));
    if (file.isEmpty())
        return;
    if (QFileInfo(file).suffix().isEmpty())
        file += ".png";
    if (SavePicture(file))
        WriteSetting("PictureFile", file);
}

bool ZORHostMainWindow::SavePicture(const QString& fileName)
{
    const QImage picture = m_view->RenderPicture(m_view->GetDevicePixels(), m_view->devicePixelRatioF());
    QSaveFile file(fileName);
    QString error;
    if (picture.isNull()) {
        error = tr("The view is too small for a picture.");
    } else if (!file.open(QIODevice::WriteOnly)) {
        error = file.errorString();
    } else {
        QImageWriter writer(&file, "png");
        if (!writer.write(picture))
            error = writer.errorString();
        else if (!file.commit())
            error = file.errorString();
    }
    if (!error.isEmpty()) {
        ShowError(tr("Cannot write '%1': %2").arg(QDir::toNativeSeparators(fileName), error));
        return false;
    }
    statusBar()->showMessage(tr("Picture saved as '%1'").arg(QDir::toNativeSeparators(fileName)));
    return true;
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

void ZORHostMainWindow::OnPicked(QObject* owner, const QString& name, const ZORMathPoint& point)
{
    if (auto* geometry = qobject_cast<ZORGeoGeometry*>(owner))
        m_browser->SelectGeometry(geometry);
    statusBar()->showMessage(tr("%1 at %2 mm").arg(name, point.ToString('f', 3)));
}

void ZORHostMainWindow::ShowError(const QString& message)
{
    QMessageBox::critical(this, tr("Error"), message);
}

void ZORHostMainWindow::closeEvent(QCloseEvent* event)
{
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
