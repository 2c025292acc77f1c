// What is in containers.

#pragma once

#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoGeometry.h>

#include <QStringList>

/// Initializes a geometry, which its container then owns, and returns it.
template<class Geometry>
Geometry* Register(Geometry* geometry)
{
    geometry->Initialize();
    return geometry;
}

/// Returns the names of the geometries of a container from index \a first on.
inline QStringList GetNames(const ZORGeoContainer& container, int first = 0)
{
    QStringList names;
    for (int i = first; i < container.GetNumGeometry(); ++i)
        names.append(container.GetGeometryByIndex(i)->objectName());
    return names;
}
