// Owner of the geometries of a document.

#pragma once

#include <ZORGeometry/ZORGeometryGlobal.h>

#include <QCborMap>
#include <QList>
#include <QObject>

#include <memory>
#include <utility>

class QIODevice;
class ZORGeoContainerLoader;
class ZORGeoGeometry;
struct ZORGeoStoredDocument;

/// Owns geometries and lists them in the order of their registration.
///
/// A geometry leaves the list by ZORGeoGeometry::RemoveNoReferences(), by Clear() or by being deleted; the
/// indices behind it move up by one. The destructor destroys what is left, newest first, without emitting
/// signals; references to it become null.
///
/// Thread safety: thread of the container; objects may be shared read-only.
class ZORGEOMETRY_EXPORT ZORGeoContainer : public QObject
{
    Q_OBJECT

public:
    explicit ZORGeoContainer(QObject* parent = nullptr);
    ~ZORGeoContainer() override;

    /// The exact number of registered, living geometries.
    int GetNumGeometry() const;
    /// The geometry at a place of the list. Constant time, amortised over a walk through the list; between
    /// two removals from the middle O(log n).
    /// \param index  0 ... GetNumGeometry() - 1
    /// \return not owned; null for any other index
    ZORGeoGeometry* GetGeometryByIndex(int index) const;

    /// Destroys every geometry, newest first, whatever its reference count.
    void Clear();

    /// A name that no geometry of this container bears now: \a wanted itself where it is free, else
    /// "wanted.2", "wanted.3" ...; constant time, amortised.
    QString GetUniqueName(const QString& wanted) const;

    /// Writes all geometries to a container file (*.ZORCont): with their names, references and exact numbers,
    /// in their order. Equal containers give equal bytes. Everything is put together in memory first; only
    /// a whole file is written.
    /// \param device  open for writing
    /// \throws ZORSysFileException "cannot write the container file: %1", "objects of these classes cannot be
    ///         saved: %1"
    /// \throws ZORSysException "'%1' uses '%2', which is not in the container"
    void Save(QIODevice& device) const;
    /// Adds the geometries of a container file: all of them, or none when it throws. Names that are taken
    /// become unique ("wanted.2"); a feature root joins the present one of its class. Writes the load dump
    /// of ZORGeoDebugOptions.
    /// \param device  open for reading, and holding nothing but the file from where it stands
    /// \throws ZORSysFileException "cannot read the container file: %1", "the file is not a container file",
    ///         "container file is of version %1, up to version %2 can be read", "container file is damaged: %1",
    ///         "container file holds objects of unknown classes: %1"
    void Load(QIODevice& device);

    /// The classes, base classes included, that containers may hold: those of all loaded libraries that were
    /// registered with RegisterType(), by class name ascending. Every class comes once.
    virtual QList<const QMetaObject*> GetRegisteredTypes() const;
    /// Makes a class known to all containers until the matching UnregisterType(); see ZOR_GEO_REGISTER_TYPE.
    /// Registered twice, a class stays known until it is unregistered twice. Usable from static
    /// initialisers and from any thread.
    static void RegisterType(const QMetaObject* type);
    static void UnregisterType(const QMetaObject* type);

signals:
    /// \a geometry was registered and is the last of the list.
    void GeometryAdded(ZORGeoGeometry* geometry);
    /// \a geometry is about to leave the list, in which it still stands, and to be destroyed.
    void GeometryAboutToBeRemoved(ZORGeoGeometry* geometry);
    /// The geometry announced before has left the list.
    void GeometryRemoved();
    /// What Save() writes has changed: a geometry was registered, removed or renamed, or reported a change of
    /// its content (ZORGeoGeometry::ReportChange()). Emitted once or more per change, ahead of the signals that
    /// name it. Receivers note the change; they must not change the container themselves.
    void ContentChanged();

protected:
    /// How geometries look, as container files keep it; not owned.
    using StoredStyles = QList<std::pair<ZORGeoGeometry*, QCborMap>>;
    /// Returns the styles that Save() writes, of registered geometries of this container, each once; here none. A file
    /// without styles is of version 1, one with styles of version 2.
    virtual StoredStyles GetStoredStyles() const;
    /// Takes the styles of a file whose geometries have all been registered. The values may be anything. Does nothing
    /// here.
    virtual void TakeStoredStyles(const StoredStyles& styles);

private:
    friend class ZORGeoContainerFile;
    friend class ZORGeoGeometry;
    void Add(ZORGeoGeometry* geometry);
    void Forget(ZORGeoGeometry* geometry);
    void Destroy(ZORGeoGeometry* geometry);
    ZORGeoStoredDocument Describe() const;
    void AddContent(const ZORGeoStoredDocument& content);

    class Private;
    const std::unique_ptr<Private> d;
};
