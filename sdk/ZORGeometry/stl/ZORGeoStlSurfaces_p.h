// Meshes of the solids of an STL file, which the loader fills in.

#pragma once

#include "mesh/ZORGeoMesh_p.h"

#include <ZORGeometry/ZORGeoStlSurfaces.h>

#include <QSharedData>

#include <memory>
#include <vector>

class ZORGeoStlSurfacesData : public QSharedData
{
public:
    struct Surface
    {
        QString name;
        std::shared_ptr<const ZORGeoMesh> mesh;
    };
    std::vector<Surface> surfaces;
};
