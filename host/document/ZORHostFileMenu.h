// The file menu: the document, samples, pictures of the view.

#pragma once

#include <QList>
#include <QObject>
#include <QString>

class QAction;
class QMainWindow;
class QMenu;
class QToolBar;
class ZORHostDocumentCommands;
class ZORHostView3D;

/// Creates the menu "File", whose actions call ZORHostDocumentCommands. Object names: "_NewAction", "_OpenAction",
/// "_RecentMenu", "_SamplesMenu", "_ImportAction", "_CloseDocumentAction", "_SaveAction", "_SaveDocumentAction" (Save As),
/// "_SaveCopyAction", "_SavePictureAction", "_RecoverAction", "_PreferencesAction", "_QuitAction".
class ZORHostFileMenu : public QObject
{
    Q_OBJECT

public:
    /// \param window    gets the menu at the end of its menu bar and owns this object
    /// \param commands  not owned
    /// \param view      what a picture shows; not owned
    ZORHostFileMenu(QMainWindow* window, ZORHostDocumentCommands* commands, ZORHostView3D* view);

    /// Adds New, Open, Save and Save Picture.
    void AddTo(QToolBar* toolBar) const;

public slots:
    void OnSavePictureTriggered();

signals:
    /// The user wants to choose preferences.
    void PreferencesRequested();
    /// The user wants to see what can be recovered.
    void RecoveryRequested();

private:
    void AddOpening(QMenu* menu);
    void AddSaving(QMenu* menu);
    void AddProgram(QMenu* menu);
    QAction* AddAction(QMenu* menu, const QString& objectName, const QString& icon, const QString& text,
                       const QString& toolTip);
    void FillRecentMenu(QMenu* menu);
    void FillSamplesMenu(QMenu* menu);
    void OpenRecent(const QString& file);
    void UpdateActions();
    bool SavePicture(const QString& fileName);

    QMainWindow* m_window;               // not owned
    ZORHostDocumentCommands* m_commands; // not owned
    ZORHostView3D* m_view;               // not owned
    QList<QAction*> m_documentActions;   // disabled while a file is read or written
    QMenu* m_recent = nullptr;
    QAction* m_new = nullptr;
    QAction* m_open = nullptr;
    QAction* m_close = nullptr;
    QAction* m_save = nullptr;
    QAction* m_savePicture = nullptr;
};
