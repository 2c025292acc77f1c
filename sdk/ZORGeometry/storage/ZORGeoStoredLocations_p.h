// Locations on a surface in container files.

#pragma once

#include <ZORGeometry/ZORGeoLocationOnSurface.h>

#include <QList>

class ZORGeoObjectReader;
class ZORGeoObjectWriter;

/// Writes the values "triangles", "weights" (two a location) and "points".
void ZorGeoWriteLocations(ZORGeoObjectWriter& writer, const QList<ZORGeoLocationOnSurface>& locations);
/// Reads them back as places on \a surface.
/// \throws ZORSysFileException for a triangle that the surface has not, weights that are no numbers, and lists
///         of different lengths
QList<ZORGeoLocationOnSurface> ZorGeoReadLocations(const ZORGeoObjectReader& reader,
                                                   const ZORGeoSurface& surface);
