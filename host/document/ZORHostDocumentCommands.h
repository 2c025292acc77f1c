// What can be done with the document as a whole.

#pragma once

#include "document/ZORHostOpening.h"
#include "document/ZORHostRescue.h"

#include <QObject>
#include <QStringList>

class QMainWindow;
class ZORFeatEnvironment;
class ZORHostAutosave;
class ZORHostDocument;
class ZORHostProgressPanel;
class ZORHostSaving;
class ZORHostView3D;

/// Creates, opens, imports, saves and closes the document, with the questions that this takes. Errors are "Error" boxes of the
/// window; what went well is shown on its status bar.
///
/// Whatever would lose unsaved changes asks first whether to save them, to discard them or to go back. Files are read and
/// written in threads, with progress in the status bar; functions that do so run the event loop and return at the end. Meanwhile
/// others of them fail.
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
    ZORHostOpening* GetOpening() const { return m_opening; }
    /// Returns whether a file is being read or written.
    bool IsBusy() const;

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
    /// Returns whether a file is being written; Settled() reports the end of that.
    bool IsWriting() const;
    /// Gives up reading files.
    void CancelReading();
    /// Writes unsaved changes that would be asked about into a file that the next start names, without a question or a box.
    void Rescue();

    /// Shows an error in a box, or else a message on the status bar.
    /// \return whether \a error is empty
    bool Report(const QString& error, const QString& message);

public slots:
    void OnOpenTriggered();
    void OnImportTriggered();

signals:
    /// IsBusy() has changed.
    void BusyChanged();
    /// The file that was being written is in its place, or could not be written.
    void Settled();

private:
    void CreateProgress();
    bool Read(const QString& file, ZORHostOpening::Mode mode);
    /// Adds what was read to the document, or replaces it.
    void Commit(const QString& file, ZORExcFileKind::Kind kind, ZORHostOpening::Mode mode,
                const ZORHostOpening::Add& add);
    void Replace(const QString& file, const ZORHostOpening::Add& add);
    void ShowRead(const ZORHostOpenedFile& file);
    void Empty();
    bool Write(const QString& file);
    bool WriteFile(const QString& file, const QString& message);
    QStringList ChooseFilesToRead(const QString& title, bool severalFiles);

    QMainWindow* m_window;       // not owned
    ZORHostView3D* m_view;       // not owned
    ZORHostDocument* m_document; // child
    ZORHostAutosave* m_autosave; // child
    ZORHostOpening* m_opening;   // child
    ZORHostSaving* m_saving;     // child
    QString m_error;             // of the file that was read last
    QString m_recovered;         // file with recovered work that is being read
    qint64 m_numChanges = 0;     // of the document when the file to open was asked for
    bool m_asksToSave = true;
    bool m_isAsking = false;
    bool m_isCanceled = false;    // reading of the last file
    bool m_isSessionOver = false; // whoever rescues documents ends the program
};
