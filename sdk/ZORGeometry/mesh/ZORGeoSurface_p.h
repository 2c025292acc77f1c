// Private state of a surface: the mesh and what is made of it on first use.

#pragma once

#include "ZORGeoMeshTree_p.h"

#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORMathematics/ZORMathBoundingBox.h>

#include <memory>
#include <mutex>

class ZORGeoSurfacePrivate
{
public:
    static const ZORGeoSurfacePrivate& Of(const ZORGeoSurface& surface) { return *surface.d; }

    // Made on first use, by whichever thread comes first.
    const ZORGeoMeshTree& GetTree() const;
    const ZORMathBoundingBox& GetBox() const;

    std::unique_ptr<const ZORGeoMesh> mesh;

private:
    mutable std::once_flag m_boxMeasured;
    mutable ZORMathBoundingBox m_box;
    mutable std::once_flag m_treeBuilt;
    mutable std::unique_ptr<const ZORGeoMeshTree> m_tree;
};
