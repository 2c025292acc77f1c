// Which objects of a container use others.

#pragma once

#include <ZORGeometry/ZORGeometryGlobal.h>

#include <QHash>
#include <QList>

class QObject;
class ZORGeoContainer;
class ZORGeoGeometry;

/// Finds the geometries of a container that hold counted references to others. Knows the geometries that were
/// registered at its construction, so it is used at once and not kept.
///
/// Thread safety: thread of the container; objects may be shared read-only.
class ZORGEOMETRY_EXPORT ZORGeoHolders
{
public:
    /// Cost: O(objects).
    explicit ZORGeoHolders(const ZORGeoContainer& container);

    /// Returns the geometries of the container that reference \a geometry, each once, in the order of their
    /// registration. Not owned. Cost: O(users log users).
    QList<ZORGeoGeometry*> GetHolders(const ZORGeoGeometry& geometry) const;
    /// Returns the number of references to \a geometry that no geometry of the container holds, such as those of
    /// dialogs.
    int GetNumOtherReferences(const ZORGeoGeometry& geometry) const;

private:
    struct Entry
    {
        ZORGeoGeometry* geometry;
        int index;
    };
    QHash<const QObject*, Entry> m_entries;
};
