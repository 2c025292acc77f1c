// Surfaces of an STL file that are in no container yet.

#pragma once

#include <ZORGeometry/ZORGeometryGlobal.h>

#include <QList>
#include <QSharedDataPointer>
#include <QString>

class ZORGeoContainer;
class ZORGeoStlSurfacesData;
class ZORGeoSurface;

/// What ZORGeoStlLoader::Read() makes of a file: the meshes of its solids, ready for a container.
///
/// Reading takes long and may happen in any thread; adding takes constant time for each surface and happens in the thread
/// of the container. The meshes never change, and all surfaces that are made of them share them. A value: copies share
/// their data, O(1). One that was moved from may only be assigned or destroyed.
///
/// Thread safety: reentrant; objects may be shared read-only.
class ZORGEOMETRY_EXPORT ZORGeoStlSurfaces
{
public:
    /// No surfaces.
    ZORGeoStlSurfaces();
    ZORGeoStlSurfaces(const ZORGeoStlSurfaces& other);
    ZORGeoStlSurfaces(ZORGeoStlSurfaces&& other) noexcept;
    ZORGeoStlSurfaces& operator=(const ZORGeoStlSurfaces& other);
    ZORGeoStlSurfaces& operator=(ZORGeoStlSurfaces&& other) noexcept;
    ~ZORGeoStlSurfaces();
    void swap(ZORGeoStlSurfaces& other) noexcept { d.swap(other.d); }

    int GetCount() const;
    /// Returns the name of a solid, empty for one without.
    /// \param index  0 ... GetCount() - 1 (asserted)
    QString GetName(int index) const;
    /// Names the surface that is made of a solid; an empty name leaves that to the container.
    /// \param index  0 ... GetCount() - 1 (asserted)
    void SetName(int index, const QString& name);
    /// Returns the number of triangles of all surfaces.
    qint64 GetNumTriangles() const;

    /// Makes the surfaces and registers them with \a container, in the thread of which it must be called. Either all are
    /// added or, when an exception is thrown, none. Names that are taken become unique ("wanted.2").
    /// \return the surfaces in the order of the file, owned by the container
    /// \throws ZORSysException "container is null"
    QList<const ZORGeoSurface*> AddTo(ZORGeoContainer* container) const;

private:
    friend class ZORGeoStlLoader;

    QSharedDataPointer<ZORGeoStlSurfacesData> d;
};

Q_DECLARE_SHARED(ZORGeoStlSurfaces)
