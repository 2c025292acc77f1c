// What the host knows about unsaved work.

#pragma once

#include <QObject>
#include <QPointer>

#include <functional>

class ZORFeatContainer;

/// Follows the container of a document and knows whether it holds work that is in no file.
///
/// A document counts as changed when its container has reported a change of content since it was saved or
/// emptied. Opening files adds what is on disk already and does not count, except in a document that has a
/// file itself, which then differs from it.
class ZORHostDocumentState : public QObject
{
    Q_OBJECT

public:
    explicit ZORHostDocumentState(QObject* parent);

    /// Follows another container, whose content counts as saved.
    /// \param container  not owned; may be null and may die first
    void SetContainer(ZORFeatContainer* container);

    /// Whether closing the document would lose work. An empty document without a file has nothing to lose.
    bool IsChanged() const;

    /// The document was written into its file.
    void MarkSaved();
    /// The document was emptied and has no file anymore.
    void MarkNew();
    /// Runs \a add, which adds the contents of a file. Where it throws, the state follows what it has changed.
    /// \param isDocument  whether the file is a container file, which becomes the file of an empty document
    void AddFromFile(bool isDocument, const std::function<void()>& add);

private:
    bool IsEmpty() const;

    QPointer<ZORFeatContainer> m_container; // not owned
    bool m_isChanged = false;
    bool m_hasFile = false;
};
