// The file menu: the document, samples, pictures of the view.

#pragma once

#include <QObject>
#include <QString>

class QAction;
class QMainWindow;
class QMenu;
class QToolBar;
class ZORFeatEnvironment;
class ZORHostDocumentState;
class ZORHostView3D;

/// Creates the menu "File" and does what its actions say. Errors are "Error" boxes of the window; what went
/// well is shown on its status bar. Object names: "_NewAction", "_OpenAction", "_SamplesMenu",
/// "_SaveDocumentAction", "_SavePictureAction", "_QuitAction".
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

    /// Chooses the document whose changes are watched; what it holds counts as saved.
    void SetEnvironment(ZORFeatEnvironment* environment);
    /// Whether the document has changes that are in no file.
    bool HasUnsavedChanges() const;
    /// Asks whether unsaved changes are to be saved, and saves them; asks nothing where there are none.
    /// \return whether the document may be closed: false after Cancel, after a save that was canceled or has
    ///         failed, and while the question is open already
    bool ConfirmClosing();
    /// Writes unsaved changes into a new file, which the next start names (ZORHostRescue), without a question or a box.
    /// The log has the file, or the reason why there is none.
    void RescueDocument();

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
    /// The file that the user wants to write; empty when the user cancels.
    /// \param start   file that is proposed
    /// \param suffix  of names that the user enters without one
    QString ChooseFile(const QString& title, const QString& start, const QString& filter,
                       const QString& suffix);
    bool SaveDocumentAs();
    bool SaveDocument(const QString& fileName);
    /// \return the error; empty when it went well
    static QString WriteDocument(const QString& fileName);
    void ShowReading(const QString& fileName);
    bool SavePicture(const QString& fileName);
    bool Report(const QString& error, const QString& message);

    QMainWindow* m_window;         // not owned
    ZORHostView3D* m_view;         // not owned
    ZORHostDocumentState* m_state; // child
    bool m_isAsking = false;
    bool m_isSessionOver = false; // whoever rescues documents ends the program
    QAction* m_new = nullptr;
    QAction* m_open = nullptr;
    QAction* m_saveDocument = nullptr;
    QAction* m_savePicture = nullptr;
};
