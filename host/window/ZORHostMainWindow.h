// The main window of the host.

#pragma once

#include "base/ZORHostCommandLine.h"

#include <QMainWindow>

class QMenu;
class QSessionManager;
class QToolBar;
class ZORFeatBrowserWidget;
class ZORFeatEnvironment;
class ZORHostApiDock;
class ZORHostDockLayout;
class ZORHostDocumentCommands;
class ZORHostLineQueue;
class ZORHostLogDock;
class ZORHostNoticeBar;
class ZORHostPluginManager;
class ZORHostPresentation;
class ZORHostThemeMenu;
class ZORHostSelection;
class ZORHostView3D;
class ZORHostWelcomeView;

/// 3D view in the middle, docks with feature browser, log and API calls around it; menus and tool bars with
/// the host's own actions and those published through the command controller.
///
/// The title names the file of the document and marks unsaved changes. Files can be dropped anywhere on the window.
///
/// Closing it asks about unsaved changes of the document, then closes every other window of the program.
/// Cancel, a save that fails and a window that refuses keep it open. The same question comes when the session
/// ends, but not when code calls QCoreApplication::quit(). A session that allows no question gets the document rescued.
class ZORHostMainWindow : public QMainWindow
{
    Q_OBJECT

public:
    /// \param plugins  not owned, must outlive the window
    /// \param log      source of the log dock; not owned
    ZORHostMainWindow(ZORHostPluginManager* plugins, ZORHostLineQueue* log, QWidget* parent = nullptr);
    ~ZORHostMainWindow() override;

    ZORHostView3D* GetView() const { return m_view; }
    ZORHostPresentation* GetPresentation() const { return m_presentation; }
    ZORHostSelection* GetSelection() const { return m_selection; }
    ZORHostNoticeBar* GetNoticeBar() const { return m_notices; }

    /// Window geometry, dock layout, theme and display mode, from and to the settings store of the SDK's
    /// settings manager, group "Host".
    void RestoreSettings();
    void SaveSettings() const;
    /// Changes the colors of this run; the settings keep what the user chose in the menu last.
    void SetTheme(ZORHostOptions::Theme theme);

    ZORHostDocumentCommands* GetDocumentCommands() const { return m_document; }
    /// See ZORHostDocumentCommands::Add().
    bool OpenFiles(const QStringList& files);
    bool OpenFile(const QString& file) { return OpenFiles({file}); }
    /// See ZORHostDocumentCommands::SetAsksToSave().
    void SetAsksToSave(bool asks);
    /// See ZORHostDocumentCommands::Rescue().
    void RescueDocument();
    /// Shows what can be recovered, if there is something.
    void OfferRecovery();
    /// Puts plug-ins that did not load on the notice bar.
    void ShowPluginProblems();

public slots:
    void OnAboutTriggered();
    void OnPluginsTriggered();
    void OnPaletteTriggered();
    void OnPreferencesRequested();
    void OnRecoveryRequested();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void CreateViewMenu();
    void CreateHelpMenu();
    void CreateDocks(ZORHostLineQueue* log);
    void SetEnvironment(ZORFeatEnvironment* environment);
    void CreateDocument();
    void UpdateTitle();
    bool ConfirmClosing();
    void OnSessionEnds(QSessionManager& session);
    void AddDockActions();
    void FillWelcome();
    QAction* AddAction(const QString& objectName, const QString& icon, const QString& text,
                       const QString& tip);

    ZORHostPluginManager* m_plugins; // not owned
    ZORHostView3D* m_view;
    ZORHostPresentation* m_presentation; // child
    ZORHostNoticeBar* m_notices;
    ZORHostWelcomeView* m_welcome;
    ZORHostDocumentCommands* m_document = nullptr;
    ZORHostSelection* m_selection; // child
    ZORFeatBrowserWidget* m_browser = nullptr;
    ZORHostLogDock* m_logDock = nullptr;
    ZORHostApiDock* m_apiDock = nullptr;
    QToolBar* m_viewToolBar = nullptr;
    QMenu* m_viewMenu = nullptr;
    QMenu* m_helpMenu = nullptr;
    ZORHostThemeMenu* m_themes = nullptr;
    ZORHostDockLayout* m_dockLayout = nullptr;
};
