// What can be done with the document as a whole.

#pragma once

#include "document/ZORHostRescue.h"

#include <QObject>
#include <QStringList>

class QMainWindow;
class ZORFeatEnvironment;
class ZORHostAutosave;
class ZORHostDocument;
class ZORHostView3D;

/// Creates, opens, imports, saves and closes the document, with the questions that this takes. Errors are "Error" boxes of the
/// window; what went well is shown on its status bar.
///
/// Whatever would lose unsaved changes asks first whether to save them, to discard them or to go back.
///
/// Thread safety: main thread only.
class ZORHostDocumentCommands : public QObject
{
    Q_OBJECT

public:
    /// \param window  parent of dialogs, owns this object
    /// \param view    shows what is opened; not owned
    ZORHostDocumentCommands(QMainWindow* window, ZORHostView3D* view);

    ZORHostDocument* GetDocument() const { return m_document; }
    ZORHostAutosave* GetAutosave() const { return m_autosave; }

    /// Chooses the document; what it holds counts as saved.
    void SetEnvironment(ZORFeatEnvironment* environment);
    /// Whether unsaved changes are asked about and saved automatically; true by default. Without, they are discarded.
    void SetAsksToSave(bool asks);

    /// Empties the document, which has no file then.
    /// \return false if the user has canceled
    bool New();
    /// Replaces the document by the contents of a file. It keeps its contents where the file cannot be read.
    /// \return whether it was opened
    bool Open(const QString& file);
    /// Adds the contents of a file to the document.
    /// \return whether they were added
    bool Import(const QString& file);
    /// Opens the first file if the document is empty and unmodified, and imports all others.
    /// \return whether all of them were read
    bool Add(const QStringList& files);
    /// Returns whether Add() opens the first file.
    bool OpensFirst() const;

    /// Writes the document into its file; an untitled document asks for the name.
    /// \return false if the user has canceled or the file could not be written
    bool Save();
    bool SaveAs();
    /// Writes a copy of the document, which keeps its file and its mark.
    bool SaveCopy();

    /// Replaces the document by recovered work, which belongs to no file of the user before it is saved.
    bool Recover(const ZORHostRescue::Entry& entry);

    /// Asks whether unsaved changes are to be saved, and saves them; asks nothing where there are none.
    /// \return whether the document may be closed: false after Cancel, after a save that was canceled or has
    ///         failed, and while a question is open already
    bool ConfirmClosing();
    /// Writes unsaved changes that would be asked about into a file that the next start names, without a question or a box.
    void Rescue();

    /// The file that the user wants to write; empty when the user cancels.
    /// \param start   file that is proposed
    /// \param suffix  added to names that do not end with it
    QString ChooseFileToWrite(const QString& title, const QString& start, const QString& filter,
                              const QString& suffix);
    /// Shows an error in a box, or else a message on the status bar.
    /// \return whether \a error is empty
    bool Report(const QString& error, const QString& message);

public slots:
    void OnOpenTriggered();
    void OnImportTriggered();

private:
    enum class Role { Document, Addition };

    bool Read(const QString& file, Role role);
    QString ReadInto(const QString& file, Role role, int* count);
    void Empty();
    bool Write(const QString& file);
    bool ConfirmReplacing(const QString& file);
    void ShowReading(const QString& file);
    QStringList ChooseFilesToRead(const QString& title, bool severalFiles);

    QMainWindow* m_window;       // not owned
    ZORHostView3D* m_view;       // not owned
    ZORHostDocument* m_document; // child
    ZORHostAutosave* m_autosave; // child
    bool m_asksToSave = true;
    bool m_isAsking = false;
    bool m_isSessionOver = false; // whoever rescues documents ends the program
};
