// Base of everything a geometry container holds.

#pragma once

#include <ZORGeometry/ZORGeometryGlobal.h>

#include <QObject>

#include <memory>

class ZORGeoContainer;

/// A geometry, feature or body of a container.
///
/// Life.        Constructed with new and its container, then Initialize()d, which hands it to the container.
///              Until then it belongs to whoever created it. Deleting a registered geometry takes it out of
///              its container first.
/// References.  A geometry that uses another one holds a counted reference to it (ZORGeoReference). The
///              count protects nothing by itself: callers ask it whether a geometry may be removed.
/// Changes.     The shape of most geometries is fixed at construction. One that changes in place stays the same
///              object with its name, references and position in the container. First everything that is
///              derived from it, such as a point on a curve or a body, is updated; then each of them emits
///              ShapeChanged(), so that receivers never see a mixture of old and new shapes.
///
/// Thread safety: thread of the container; objects may be shared read-only.
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
    /// \param user  the object that uses this geometry, may be null; distinguished only in traces
    void AddReference(const QObject* user) const;
    /// Takes back one AddReference(); with a count of 0 already it logs a warning and does nothing.
    void RemoveReference(const QObject* user) const;

    /// Destroys this geometry, and takes it out of its container before, if nothing references it; does
    /// nothing otherwise.
    void RemoveNoReferences();

    /// Reports that what container files keep of this geometry has changed: its container emits ContentChanged().
    /// Called by setters once the new value is in place; does nothing while the geometry is not registered.
    void ReportChange();

signals:
    /// The shape has changed in place: what was taken from it before is out of date. Follows ContentChanged()
    /// of the container. Receivers may remove any geometry.
    void ShapeChanged();
    /// For followers alone: the first of the two steps of a change.
    void UpdateRequested(QPrivateSignal);

protected:
    /// \param container  where Initialize() will register the geometry; not owned, may be null
    explicit ZORGeoGeometry(ZORGeoContainer* container);

    /// Takes this geometry out of its container and destroys it, whatever its reference count. Unlike those of
    /// a plain delete, receivers of GeometryAboutToBeRemoved() see the whole object.
    void Destroy();

    /// Makes this geometry follow one that it is derived from: UpdateShape() is called whenever \a used changes
    /// in place, and ShapeChanged() emitted afterwards.
    /// \param used  not owned; null is ignored
    void FollowShape(const ZORGeoGeometry* used);
    /// Derives the shape again from what this geometry follows. Does nothing here. Must not add, change or
    /// remove geometries: other followers may not be up to date yet.
    virtual void UpdateShape();
    /// Reports a change in place. To be called last by whoever changed the shape: receivers may have destroyed
    /// this geometry when it returns.
    void ReportShapeChange();

private:
    void EmitShapeChanged();

    friend class ZORGeoContainer;
    friend class ZORGeoContainerLoader;
    friend class ZORGeoContainerIndex;
    class Private;
    const std::unique_ptr<Private> d;
};

Q_DECLARE_METATYPE(ZORGeoGeometry*)
