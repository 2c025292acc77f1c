#include "ZORGeoSurface.h"

#include "mesh/ZORGeoMeshBorder_p.h"
#include "mesh/ZORGeoSurface_p.h"

#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoObjectStorage.h>
#include <ZORGeometry/ZORGeoRange.h>
#include <ZORGeometry/ZORGeoTriangleEdgeCurve.h>
#include <ZORGeometry/ZORGeoTypeRegistration.h>
#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysException.h>
#include <ZORSystem/ZORSysMemory.h>

#include <algorithm>
#include <cmath>
#include <cstring>

ZOR_GEO_REGISTER_TYPE(ZORGeoSurface)

const ZORGeoMeshTree& ZORGeoSurfacePrivate::GetTree() const
{
    std::call_once(m_treeBuilt, [this] { m_tree = std::make_unique<const ZORGeoMeshTree>(*mesh); });
    return *m_tree;
}

namespace {

void Check(const QList<ZORMathPoint>& vertices, const QList<ZORGeoSurface::Corners>& triangles)
{
    if (triangles.size() > ZORGeoMesh::kMaximumTriangles)
        throw ZORSysException(ZORGeoSurface::tr("surface has too many triangles"));
    for (qsizetype v = 0; v < vertices.size(); ++v) {
        if (!ZORGeoRange::Contains(vertices[v]))
            throw ZORSysException(ZORGeoSurface::tr("vertex %1 is not finite or too far away").arg(v));
    }
    for (qsizetype t = 0; t < triangles.size(); ++t) {
        for (const int corner : triangles[t]) {
            if (corner < 0 || corner >= vertices.size()) {
                throw ZORSysException(ZORGeoSurface::tr("triangle %1 refers to vertex %2 of %3")
                                          .arg(QString::number(t + 1), QString::number(corner),
                                               QString::number(vertices.size())));
            }
        }
    }
}

} // namespace

std::shared_ptr<const ZORGeoMesh>
ZORGeoSurfacePrivate::MakeMesh(const QList<ZORMathPoint>& vertices,
                               const QList<ZORGeoSurface::Corners>& triangles)
{
    Check(vertices, triangles);
    return std::make_shared<const ZORGeoMesh>(vertices, triangles);
}

std::unique_ptr<ZORGeoSurface>
ZORGeoSurfacePrivate::MakeSurface(ZORGeoContainer* container, const std::shared_ptr<const ZORGeoMesh>& mesh)
{
    auto surface =
        std::make_unique<ZORGeoSurface>(container, QList<ZORMathPoint>(), QList<ZORGeoSurface::Corners>());
    surface->d->mesh = mesh;
    return surface;
}

ZORGeoSurface::ZORGeoSurface(ZORGeoContainer* container, const QList<ZORMathPoint>& vertices,
                             const QList<Corners>& triangles)
    : ZORGeoGeometry(container)
    , d(std::make_unique<ZORGeoSurfacePrivate>())
{
    ZOR_TRACE_CALL(container, vertices, triangles);
    d->mesh = ZORGeoSurfacePrivate::MakeMesh(vertices, triangles);
}

ZORGeoSurface::~ZORGeoSurface() = default;

int ZORGeoSurface::GetNumTriangles() const
{
    return d->mesh->GetNumTriangles();
}

void ZORGeoSurface::GetVertices(int triangle, ZORMathPoint& a, ZORMathPoint& b, ZORMathPoint& c) const
{
    Q_ASSERT(triangle >= 1 && triangle <= GetNumTriangles());
    const Corners& corners = d->mesh->triangles[triangle - 1];
    a = d->mesh->vertices[corners[0]];
    b = d->mesh->vertices[corners[1]];
    c = d->mesh->vertices[corners[2]];
}

void ZORGeoSurface::GetNeighbors(int triangle, int& acrossAB, int& acrossBC, int& acrossCA) const
{
    Q_ASSERT(triangle >= 1 && triangle <= GetNumTriangles());
    acrossAB = int(d->mesh->GetNeighbor(triangle - 1, 0) / 4);
    acrossBC = int(d->mesh->GetNeighbor(triangle - 1, 1) / 4);
    acrossCA = int(d->mesh->GetNeighbor(triangle - 1, 2) / 4);
}

const QList<ZORMathPoint>& ZORGeoSurface::GetVertexArray() const
{
    return d->mesh->vertices;
}

const QList<ZORGeoSurface::Corners>& ZORGeoSurface::GetCornerArray() const
{
    return d->mesh->triangles;
}

ZORMathBoundingBox ZORGeoSurface::GetBoundingBox() const
{
    return d->mesh->GetBox();
}

double ZORGeoSurface::GetArea() const
{
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
    if (!ZORGeoRange::Contains(point))
        return {};
    const auto [triangle, place] = d->GetTree().FindNearest(point);
    if (triangle < 0)
        return {};
    return {this, triangle + 1, place.weightB, place.weightC, place.point};
}

ZORGeoLocationOnSurface ZORGeoSurface::IntersectRay(const ZORMathPoint& origin,
                                                    const ZORMathVector& direction, double* parameter) const
{
    ZOR_TRACE_CALL(origin, direction);
    const double largest =
        std::max({std::abs(direction.GetX()), std::abs(direction.GetY()), std::abs(direction.GetZ())});
    const bool hasDirection = largest >= 1 / ZORGeoRange::kLargestCoordinate;
    if (!ZORGeoRange::Contains(origin) || !ZORGeoRange::Contains(ZORMathPoint() + direction) || !hasDirection)
        return {};
    const auto [triangle, hit] = d->GetTree().FindFirst(ZORGeoRay(origin, direction));
    if (triangle < 0)
        return {};
    ZORMathPoint a;
    ZORMathPoint b;
    ZORMathPoint c;
    GetVertices(triangle + 1, a, b, c);
    if (parameter)
        *parameter = hit.parameter;
    return {this, triangle + 1, hit.weightB, hit.weightC, a + hit.weightB * (b - a) + hit.weightC * (c - a)};
}

QList<const ZORGeoTriangleEdgeCurve*> ZORGeoSurface::CreateEdges()
{
    ZOR_TRACE_CALL();
    const auto loops = ZorGeoFindBorderLoops(*d->mesh);
    if (!loops.isEmpty() && !GetContainer())
        throw ZORSysException(tr("geometry has no container"));
    QList<const ZORGeoTriangleEdgeCurve*> curves;
    curves.reserve(loops.size());
    for (const auto& loop : loops) {
        auto* const curve = new ZORGeoTriangleEdgeCurve(this, loop);
        curve->Initialize();
        curves.append(curve);
    }
    return curves;
}

struct ZORGeoSurfaceStorage
{
    using Corners = ZORGeoSurface::Corners;
    static_assert(sizeof(Corners) == 3 * sizeof(qint32));

    static void Write(const ZORGeoSurface& surface, ZORGeoObjectWriter& writer)
    {
        const QList<Corners>& triangles = surface.GetCornerArray();
        auto corners = ZORSysMemory::MakeList<qint32>(3 * triangles.size());
        if (!triangles.isEmpty())
            std::memcpy(corners.data(), triangles.constData(), size_t(triangles.size()) * sizeof(Corners));
        writer.WritePoints("vertices", surface.GetVertexArray());
        writer.WriteInts("triangles", corners);
    }
    static ZORGeoSurface* Create(ZORGeoContainer* container, const ZORGeoObjectReader& reader)
    {
        const QList<qint32>& corners = reader.GetInts("triangles");
        if (corners.size() % 3 != 0)
            reader.Fail(ZORGeoSurface::tr("value 'triangles' ends within a triangle"));
        auto triangles = ZORSysMemory::MakeList<Corners>(corners.size() / 3);
        if (!triangles.isEmpty())
            std::memcpy(triangles.data(), corners.constData(), size_t(triangles.size()) * sizeof(Corners));
        return new ZORGeoSurface(container, reader.GetPoints("vertices"), triangles);
    }
};

ZOR_GEO_REGISTER_STORAGE(ZORGeoSurface)
