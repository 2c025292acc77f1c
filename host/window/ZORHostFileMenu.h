// The file menu: the document, samples, pictures of the view.

#pragma once

#include <QObject>
#include <QString>

class QAction;
class QMainWindow;
class QMenu;
class QToolBar;
class ZORHostView3D;

/// Creates the menu "File" and does what its actions say. Errors are "Error" boxes of the window; what went well
/// is told on its status bar. Object names: "_NewAction", "_OpenAction", "_SamplesMenu", "_SaveDocumentAction",
/// "_SavePictureAction", "_QuitAction".
class ZORHostFileMenu : public QObject
{
    Q_OBJECT

public:
    /// \param window  gets the menu at the end of its menu bar and owns this object
    /// \param view    shows what is opened, and is what a picture shows; not owned
    ZORHostFileMenu(QMainWindow* window, ZORHostView3D* view);

    /// Adds New, Open, Save and Save Picture.
    void AddTo(QToolBar* toolBar) const;

    /// Opens an STL or container file and fits the view.
    /// \return whether it was opened
    bool OpenFile(const QString& fileName);

public slots:
    /// Takes everything out of the document and the view, after a question if there is something.
    void OnNewTriggered();
    void OnOpenTriggered();
    void OnSaveDocumentTriggered();
    void OnSavePictureTriggered();

private:
    QAction* AddAction(QMenu* menu, const QString& objectName, const QString& icon, const QString& text,
                       const QString& toolTip);
    void FillSamplesMenu(QMenu* menu);
    bool SaveDocument(const QString& fileName);
    bool SavePicture(const QString& fileName);
    bool Report(const QString& error, const QString& message);

    QMainWindow* m_window; // not owned
    ZORHostView3D* m_view; // not owned
    QAction* m_new = nullptr;
    QAction* m_open = nullptr;
    QAction* m_saveDocument = nullptr;
    QAction* m_savePicture = nullptr;
};
