// Makes the geometries of a container file.

#pragma once

#include "ZORGeoStoredObject_p.h"

#include <ZORGeometry/ZORGeoObjectStorage.h>

#include <QHash>
#include <QPointer>
#include <QString>

#include <vector>

class ZORGeoContainer;
class ZORGeoContainerNames;
class ZORGeoGeometry;

/// Makes all objects of a file apart from the container and registers them once they are complete. What
/// fails on the way leaves the container as it was.
class ZORGeoContainerLoader
{
public:
    ZORGeoContainerLoader(ZORGeoContainer& container, const std::vector<ZORGeoStoredObject>& objects);
    /// Destroys what has been made, unless Register() came to its end.
    ~ZORGeoContainerLoader();
    Q_DISABLE_COPY_MOVE(ZORGeoContainerLoader)

    /// Makes the objects, what they refer to before them.
    /// \throws ZORSysFileException naming what is wrong
    void Make();
    /// Gives the objects their names and hands them to the container, in the order of the file.
    /// \return what is left of them, by number; null for objects that the container had before
    std::vector<QPointer<ZORGeoGeometry>> Register(ZORGeoContainerNames& names);

private:
    void FindStorages();
    void MakeWithReferences(int number);
    void MakeObject(int number);
    void Complete(int number);
    static void Initialize(ZORGeoGeometry& object);
    bool HasNewName(size_t object) const;
    void SetNames(ZORGeoContainerNames& names);
    QHash<QString, QString> ReplaceUsedNames(ZORGeoContainerNames& names) const;

    ZORGeoContainer& m_container;
    const std::vector<ZORGeoStoredObject>& m_objects;
    std::vector<const ZORGeoObjectStorage*> m_storages; // by object
    QHash<const QMetaObject*, ZORGeoObjectStorage::Chain> m_chains;
    std::vector<QList<qint32>> m_needs;            // all references of an object
    std::vector<ZORGeoGeometry*> m_made;           // by object
    std::vector<bool> m_isJoined;                  // by object: was in the container before
    std::vector<bool> m_isOpen;                    // by object: waits for its references
    std::vector<QPointer<ZORGeoGeometry>> m_owned; // in the order of their making
};
