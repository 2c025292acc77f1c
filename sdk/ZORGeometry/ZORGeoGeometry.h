// Base of everything a geometry container holds.

#pragma once

#include <ZORGeometry/ZORGeometryGlobal.h>

#include <QObject>

#include <memory>

class ZORGeoContainer;
class ZORGeoGeometryPrivate;

/// A geometry, feature or body of a container.
///
/// Life.        Constructed with new and its container, then Initialize()d, which hands it to the container.
///              Until then it belongs to whoever created it. Deleting a registered geometry takes it out of
///              its container first.
/// References.  A geometry that uses another one holds a counted reference to it (ZORGeoReference). The
///              count protects nothing by itself: it tells who asks whether a geometry may be removed.
/// Threads.     Construction, registration, references and removal belong to the thread of the container.
class ZORGEOMETRY_EXPORT ZORGeoGeometry : public QObject
{
    Q_OBJECT

public:
    /// Takes this geometry out of its container, which emits GeometryAboutToBeRemoved() and
    /// GeometryRemoved(). A receiver of the former sees a mere ZORGeoGeometry: the derived parts are gone.
    ~ZORGeoGeometry() override;

    /// Registers this geometry with its container, which owns it from then on, and gives it a name of its
    /// own ("Surface.1") when it has no object name. A second call does nothing.
    /// Overriding classes call the one of their base.
    /// \throws ZORSysException "geometry has no container"
    virtual void Initialize();
    bool IsInitialized() const;

    /// The container given at construction; null when there was none or it is gone.
    ZORGeoContainer* GetContainer() const;

    /// How many references are held; 0 for a geometry that nothing uses.
    int GetReferenceCount() const;
    /// Counts one more user. Constant, since a user may need no more than a constant geometry.
    /// \param user  the object that uses this geometry, may be null; told apart only in traces
    void AddReference(const QObject* user) const;
    /// Takes back one AddReference(); with a count of 0 already it logs a warning and does nothing.
    void RemoveReference(const QObject* user) const;

    /// Destroys this geometry, and takes it out of its container before, if nothing references it; does
    /// nothing otherwise.
    void RemoveNoReferences();

    /// Reports that what container files keep of this geometry has changed: its container emits ContentChanged().
    /// Called by setters once the new value is in place; does nothing while the geometry is not registered.
    void ReportChange();

protected:
    /// \param container  where Initialize() will register the geometry; not owned, may be null
    explicit ZORGeoGeometry(ZORGeoContainer* container);

    /// Takes this geometry out of its container and destroys it, whatever its reference count. Unlike those of
    /// a plain delete, receivers of GeometryAboutToBeRemoved() see the whole object.
    void Destroy();

private:
    Q_DECLARE_PRIVATE(ZORGeoGeometry)
    friend class ZORGeoContainer;
    friend class ZORGeoContainerLoader;
    friend class ZORGeoContainerPrivate;
    friend class ZORGeoContainerIndex;
    const std::unique_ptr<ZORGeoGeometryPrivate> d_ptr;
};

Q_DECLARE_METATYPE(ZORGeoGeometry*)
