// Private state of a surface: the mesh and what is made of it on first use.

#pragma once

#include "ZORGeoMeshTree_p.h"

#include <ZORGeometry/ZORGeoSurface.h>

#include <memory>
#include <mutex>

class ZORGeoSurfacePrivate
{
public:
    static const ZORGeoSurfacePrivate& Of(const ZORGeoSurface& surface) { return *surface.d; }

    /// Checks the lists and builds the mesh of a surface, in any thread.
    /// \throws ZORSysException as the constructor of ZORGeoSurface
    static std::shared_ptr<const ZORGeoMesh> MakeMesh(const QList<ZORMathPoint>& vertices,
                                                      const QList<ZORGeoSurface::Corners>& triangles);
    /// Makes the surface of a mesh, in constant time.
    static std::unique_ptr<ZORGeoSurface> MakeSurface(ZORGeoContainer* container,
                                                      const std::shared_ptr<const ZORGeoMesh>& mesh);

    // Made on first use, by whichever thread comes first.
    const ZORGeoMeshTree& GetTree() const;

    std::shared_ptr<const ZORGeoMesh> mesh; // never changes

private:
    mutable std::once_flag m_treeBuilt;
    mutable std::unique_ptr<const ZORGeoMeshTree> m_tree;
};
