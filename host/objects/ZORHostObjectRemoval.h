// Deleting objects of the document.

#pragma once

#include <QCoreApplication>
#include <QList>
#include <QString>

class ZORGeoContainer;
class ZORGeoGeometry;

/// Deletes objects with everything below them and everything they own, or nothing when other objects use some of it.
///
/// Thread safety: main thread only.
class ZORHostObjectRemoval
{
    Q_DECLARE_TR_FUNCTIONS(ZORHostObjectRemoval)

public:
    /// Cost: O(objects of the container).
    /// \param objects  of the container; not owned
    ZORHostObjectRemoval(const ZORGeoContainer& container, const QList<ZORGeoGeometry*>& objects);

    /// Returns the objects that use what would be deleted, and are not to be deleted themselves. What belongs to a
    /// feature stands for the feature.
    const QList<ZORGeoGeometry*>& GetHolders() const { return m_holders; }
    /// Returns the number of references that no object of the document holds, for example those of open dialogs.
    int GetNumOtherReferences() const { return m_numOthers; }
    bool IsPossible() const { return m_holders.isEmpty() && m_numOthers == 0; }
    /// Returns the question whether to delete, with the name or number of the objects and of what goes with them.
    QString GetQuestion() const;
    /// Returns why the deletion is refused, with the names of up to a dozen holders, one to a line.
    QString GetRefusal() const;

    /// Deletes the objects; some may have been deleted by others before.
    /// \return the number of the chosen objects that are gone
    static int Remove(const QList<ZORGeoGeometry*>& objects);

private:
    QString m_name; // of the first one
    int m_numObjects = 0;
    int m_numParts = 0;
    int m_numOthers = 0;
    QList<ZORGeoGeometry*> m_holders;
};
