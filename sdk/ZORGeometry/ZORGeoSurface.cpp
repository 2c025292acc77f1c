#include "ZORGeoSurface.h"

#include "ZORGeoMesh_p.h"
#include "ZORGeoRange_p.h"
#include "ZORGeoTriangle_p.h"

#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoTypeRegistration.h>
#include <ZORMathematics/ZORMathBoundingBox.h>
#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysException.h>

#include <cmath>
#include <limits>

ZOR_GEO_REGISTER_TYPE(ZORGeoSurface)

class ZORGeoSurfacePrivate
{
public:
    std::unique_ptr<const ZORGeoMesh> mesh;
};

namespace {

void Check(const QList<ZORMathPoint>& vertices, const QList<ZORGeoSurface::Corners>& triangles)
{
    if (triangles.size() > ZORGeoMesh::MaximumTriangles)
        throw ZORSysException(ZORGeoSurface::tr("surface has too many triangles"));
    for (qsizetype v = 0; v < vertices.size(); ++v) {
        if (!ZorGeoIsInRange(vertices[v]))
            throw ZORSysException(ZORGeoSurface::tr("vertex %1 is not finite or too far away").arg(v));
    }
    for (qsizetype t = 0; t < triangles.size(); ++t) {
        for (const int corner : triangles[t]) {
            if (corner < 0 || corner >= vertices.size()) {
                throw ZORSysException(ZORGeoSurface::tr("triangle %1 refers to vertex %2 of %3")
                                          .arg(t + 1)
                                          .arg(corner)
                                          .arg(vertices.size()));
            }
        }
    }
}

} // namespace

ZORGeoSurface::ZORGeoSurface(ZORGeoContainer* container, const QList<ZORMathPoint>& vertices,
                             const QList<Corners>& triangles)
    : ZORGeoGeometry(container)
    , d_ptr(std::make_unique<ZORGeoSurfacePrivate>())
{
    ZOR_TRACE_CALL(container, vertices, triangles);
    Check(vertices, triangles);
    Q_D(ZORGeoSurface);
    d->mesh = std::make_unique<const ZORGeoMesh>(vertices, triangles);
}

ZORGeoSurface::~ZORGeoSurface() = default;

int ZORGeoSurface::GetNumTriangles() const
{
    Q_D(const ZORGeoSurface);
    return d->mesh->GetNumTriangles();
}

void ZORGeoSurface::GetVertices(int triangle, ZORMathPoint& a, ZORMathPoint& b, ZORMathPoint& c) const
{
    Q_D(const ZORGeoSurface);
    Q_ASSERT(triangle >= 1 && triangle <= GetNumTriangles());
    const Corners& corners = d->mesh->triangles[triangle - 1];
    a = d->mesh->vertices[corners[0]];
    b = d->mesh->vertices[corners[1]];
    c = d->mesh->vertices[corners[2]];
}

void ZORGeoSurface::GetNeighbors(int triangle, int& acrossAB, int& acrossBC, int& acrossCA) const
{
    Q_D(const ZORGeoSurface);
    Q_ASSERT(triangle >= 1 && triangle <= GetNumTriangles());
    acrossAB = int(d->mesh->GetNeighbor(triangle - 1, 0) / 4);
    acrossBC = int(d->mesh->GetNeighbor(triangle - 1, 1) / 4);
    acrossCA = int(d->mesh->GetNeighbor(triangle - 1, 2) / 4);
}

const QList<ZORMathPoint>& ZORGeoSurface::GetVertexArray() const
{
    Q_D(const ZORGeoSurface);
    return d->mesh->vertices;
}

const QList<ZORGeoSurface::Corners>& ZORGeoSurface::GetCornerArray() const
{
    Q_D(const ZORGeoSurface);
    return d->mesh->triangles;
}

ZORMathBoundingBox ZORGeoSurface::GetBoundingBox() const
{
    Q_D(const ZORGeoSurface);
    ZORMathBoundingBox box;
    for (const Corners& corners : d->mesh->triangles) {
        for (const int corner : corners)
            box.Add(d->mesh->vertices[corner]);
    }
    return box;
}

double ZORGeoSurface::GetArea() const
{
    Q_D(const ZORGeoSurface);
    double twice = 0;
    for (const Corners& corners : d->mesh->triangles) {
        const ZORMathPoint& a = d->mesh->vertices[corners[0]];
        twice += Cross(d->mesh->vertices[corners[1]] - a, d->mesh->vertices[corners[2]] - a).GetLength();
    }
    return twice / 2;
}

ZORGeoLocationOnSurface ZORGeoSurface::Project(const ZORMathPoint& point) const
{
    ZOR_TRACE_CALL(point);
    ZORGeoLocationOnSurface nearest;
    if (!ZorGeoIsInRange(point))
        return nearest;
    double squaredDistance = std::numeric_limits<double>::infinity();
    for (int triangle = 1; triangle <= GetNumTriangles(); ++triangle) {
        ZORMathPoint a;
        ZORMathPoint b;
        ZORMathPoint c;
        GetVertices(triangle, a, b, c);
        const ZORGeoTrianglePlace place = ZorGeoClosestOnTriangle(point, a, b, c);
        if (place.squaredDistance < squaredDistance) {
            squaredDistance = place.squaredDistance;
            nearest = {this, triangle, place.weightB, place.weightC, place.point};
        }
    }
    return nearest;
}

ZORGeoLocationOnSurface ZORGeoSurface::IntersectRay(const ZORMathPoint& origin,
                                                    const ZORMathVector& direction, double* parameter) const
{
    ZOR_TRACE_CALL(origin, direction);
    ZORGeoLocationOnSurface first;
    const ZORMathVector unit = direction.GetNormalized();
    if (!ZorGeoIsInRange(origin) || !ZorGeoIsInRange(ZORMathPoint() + direction) || unit == ZORMathVector())
        return first;
    const ZORGeoRay ray(origin, direction);
    ZORGeoRay::Hit nearest;
    for (int triangle = 1; triangle <= GetNumTriangles(); ++triangle) {
        ZORMathPoint a;
        ZORMathPoint b;
        ZORMathPoint c;
        GetVertices(triangle, a, b, c);
        ZORGeoRay::Hit hit;
        if (ray.Intersect(a, b, c, hit) && (first.IsNull() || hit.parameter < nearest.parameter)) {
            nearest = hit;
            first = {this, triangle, hit.weightB, hit.weightC,
                     a + hit.weightB * (b - a) + hit.weightC * (c - a)};
        }
    }
    if (parameter && !first.IsNull())
        *parameter = nearest.parameter;
    return first;
}
