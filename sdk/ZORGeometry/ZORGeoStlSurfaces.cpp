#include "ZORGeoStlSurfaces.h"

#include "mesh/ZORGeoSurface_p.h"
#include "stl/ZORGeoStlSurfaces_p.h"

#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoStlLoader.h>
#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysException.h>

#include <QPointer>

namespace {

using Surfaces = std::vector<std::unique_ptr<ZORGeoSurface>>;

/// Adds all surfaces to the container, or none where an exception ends it.
QList<const ZORGeoSurface*> Add(Surfaces& surfaces, ZORGeoContainer* container)
{
    QList<const ZORGeoSurface*> added;
    added.reserve(qsizetype(surfaces.size()));
    std::vector<QPointer<ZORGeoSurface>> joined; // receivers of the container's signals may remove them
    joined.reserve(surfaces.size());
    try {
        for (std::unique_ptr<ZORGeoSurface>& surface : surfaces) {
            if (!surface->objectName().isEmpty())
                surface->setObjectName(container->GetUniqueName(surface->objectName()));
            joined.emplace_back(surface.get());
            surface->Initialize();
            added.append(surface.release());
        }
    } catch (...) {
        joined.resize(size_t(added.size())); // the others still have their owner
        for (const QPointer<ZORGeoSurface>& surface : joined)
            delete surface.data();
        throw;
    }
    return added;
}

} // namespace

ZORGeoStlSurfaces::ZORGeoStlSurfaces()
    : d(new ZORGeoStlSurfacesData)
{
}

ZORGeoStlSurfaces::ZORGeoStlSurfaces(const ZORGeoStlSurfaces& other) = default;
ZORGeoStlSurfaces::ZORGeoStlSurfaces(ZORGeoStlSurfaces&& other) noexcept = default;
ZORGeoStlSurfaces& ZORGeoStlSurfaces::operator=(const ZORGeoStlSurfaces& other) = default;
ZORGeoStlSurfaces& ZORGeoStlSurfaces::operator=(ZORGeoStlSurfaces&& other) noexcept = default;
ZORGeoStlSurfaces::~ZORGeoStlSurfaces() = default;

int ZORGeoStlSurfaces::GetCount() const
{
    return int(d->surfaces.size());
}

QString ZORGeoStlSurfaces::GetName(int index) const
{
    Q_ASSERT(index >= 0 && index < GetCount());
    return d->surfaces[size_t(index)].name;
}

void ZORGeoStlSurfaces::SetName(int index, const QString& name)
{
    ZOR_TRACE_CALL(index, name);
    Q_ASSERT(index >= 0 && index < GetCount());
    d->surfaces[size_t(index)].name = name;
}

qint64 ZORGeoStlSurfaces::GetNumTriangles() const
{
    qint64 count = 0;
    for (const ZORGeoStlSurfacesData::Surface& surface : d->surfaces)
        count += surface.mesh->GetNumTriangles();
    return count;
}

QList<const ZORGeoSurface*> ZORGeoStlSurfaces::AddTo(ZORGeoContainer* container) const
{
    ZOR_TRACE_CALL(container);
    if (!container)
        throw ZORSysException(ZORGeoStlLoader::tr("container is null"));
    Surfaces surfaces;
    for (const ZORGeoStlSurfacesData::Surface& surface : d->surfaces) {
        surfaces.push_back(ZORGeoSurfacePrivate::MakeSurface(container, surface.mesh));
        surfaces.back()->setObjectName(surface.name);
    }
    return Add(surfaces, container);
}
