// The document of the host: its container, its file, and whether it holds work that is in no file.

#pragma once

#include "base/ZORHostFileStamp.h"

#include <QObject>
#include <QPointer>
#include <QString>

class ZORFeatContainer;

/// Follows the container of a document and knows the file that it belongs to.
///
/// A document counts as modified when its container has reported a change of content since the document was created,
/// opened or saved. An empty document without a file has nothing to lose and is never modified. A document that was
/// opened from a file of another kind is untitled, like a new one.
///
/// Thread safety: main thread only.
class ZORHostDocument : public QObject
{
    Q_OBJECT

public:
    /// Suffix of container files, without the dot.
    static constexpr QLatin1String kSuffix{"ZORCont"};

    explicit ZORHostDocument(QObject* parent);

    /// Follows another container, whose content counts as saved; the document becomes untitled.
    /// \param container  not owned; may be null and may be destroyed first
    void SetContainer(ZORFeatContainer* container);
    /// Returns null without a document.
    ZORFeatContainer* GetContainer() const;

    /// Returns the absolute path of the container file of the document; empty while it is untitled.
    const QString& GetFile() const { return m_file; }
    /// Returns the name of the file without its folder, or "Untitled".
    QString GetName() const;
    /// Returns the file that is proposed when the document is saved under another name; the folder may be missing.
    QString GetProposedFile() const;

    bool IsEmpty() const;
    /// Returns whether closing the document would lose work.
    bool IsModified() const { return m_isModified; }
    /// Returns the number of changes of the content so far: what was saved at the same number is up to date.
    qint64 GetNumChanges() const { return m_numChanges; }
    /// Returns whether the file of the document is there and differs from what was opened or saved last.
    bool IsFileChangedByOthers() const;

    /// The document was emptied and has no file anymore.
    void MarkNew();
    /// The document now holds what the container file \a file holds.
    void MarkOpened(const QString& file);
    /// The document now holds what a file of another kind holds; its name is proposed for saving.
    void MarkOpenedForeign(const QString& file);
    /// The document holds recovered work, which is in no file of the user.
    /// \param file  the file that it belonged to, which is proposed for saving; may be empty
    void MarkRecovered(const QString& file);
    /// The document was written into \a file, which is its file from now on.
    /// \param numChanges  GetNumChanges() of what was written; later changes are not in the file
    void MarkSaved(const QString& file, qint64 numChanges);
    /// Takes back the mark of changes that were undone, such as those of a file that could not be read to its end.
    /// \param wasModified  IsModified() before these changes
    void RestoreModified(bool wasModified);

signals:
    /// The name, the file or the mark of the document has changed.
    void Changed();
    /// The content of the document has changed. Emitted once or more per change; receivers only note it.
    void ContentChanged();

private:
    void NoteChange();
    void Set(const QString& file, const QString& proposed, bool isMarked);
    void Update();

    QPointer<ZORFeatContainer> m_container; // not owned
    QString m_file;
    QString m_proposed;
    ZORHostFileStamp m_stamp; // of the file when it was opened or saved
    qint64 m_numChanges = 0;
    bool m_isMarked = false;   // changed since the last save
    bool m_isModified = false; // as reported last
};
