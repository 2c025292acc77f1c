#include "ZORGeoStoredLocations_p.h"

#include <ZORGeometry/ZORGeoObjectReader.h>
#include <ZORGeometry/ZORGeoObjectWriter.h>
#include <ZORGeometry/ZORGeoSurface.h>

#include <cmath>

void ZorGeoWriteLocations(ZORGeoObjectWriter& writer, const QList<ZORGeoLocationOnSurface>& locations)
{
    QList<qint32> triangles;
    QList<double> weights;
    QList<ZORMathPoint> points;
    triangles.reserve(locations.size());
    weights.reserve(2 * locations.size());
    points.reserve(locations.size());
    for (const ZORGeoLocationOnSurface& location : locations) {
        triangles.append(location.triangle);
        weights << location.weightB << location.weightC;
        points.append(location.point);
    }
    writer.WriteInts("triangles", triangles);
    writer.WriteDoubles("weights", weights);
    writer.WritePoints("points", points);
}

QList<ZORGeoLocationOnSurface> ZorGeoReadLocations(const ZORGeoObjectReader& reader,
                                                   const ZORGeoSurface& surface)
{
    const QList<qint32>& triangles = reader.GetInts("triangles");
    const QList<double>& weights = reader.GetDoubles("weights");
    const QList<ZORMathPoint> points = reader.GetPoints("points");
    if (weights.size() != 2 * triangles.size() || points.size() != triangles.size())
        reader.Fail(ZORGeoSurface::tr("its lists are of different lengths"));
    QList<ZORGeoLocationOnSurface> locations;
    locations.reserve(triangles.size());
    for (qsizetype i = 0; i < triangles.size(); ++i) {
        const double weightB = weights[2 * i];
        const double weightC = weights[2 * i + 1];
        const bool isOnSurface = triangles[i] >= 1 && triangles[i] <= surface.GetNumTriangles();
        if (!isOnSurface || !std::isfinite(weightB) || !std::isfinite(weightC) || !points[i].IsFinite())
            reader.Fail(ZORGeoSurface::tr("location %1 is not on the surface").arg(i));
        locations.append({&surface, triangles[i], weightB, weightC, points[i]});
    }
    return locations;
}
