#include "ZORTopBody.h"

#include "ZORTopBody_p.h"
#include "ZORTopCurveDivision_p.h"
#include "ZORTopSurfaceDivision_p.h"

#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoCurve.h>
#include <ZORGeometry/ZORGeoPoint.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORGeometry/ZORGeoTypeRegistration.h>
#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysException.h>

#include <numbers>

ZOR_GEO_REGISTER_TYPE(ZORTopBody)

namespace {

ZORTopStructure Divide(const ZORGeoGeometry* geometry, double tolerance)
{
    if (!(tolerance >= 0))
        throw ZORSysException(
            ZORTopBody::tr("edge tolerance %1 is not an angle of 0 or more").arg(tolerance));
    if (!geometry)
        return {};
    if (const auto* point = qobject_cast<const ZORGeoPoint*>(geometry)) {
        ZORTopStructure structure;
        structure.vertices.push_back({point->GetMathPoint(), 0});
        structure.Complete();
        return structure;
    }
    if (const auto* curve = qobject_cast<const ZORGeoCurve*>(geometry))
        return ZorTopDivideCurve(*curve, tolerance);
    if (const auto* surface = qobject_cast<const ZORGeoSurface*>(geometry))
        return ZorTopDivideSurface(*surface, tolerance);
    throw ZORSysException(ZORTopBody::tr("a body needs a point, a curve or a surface"));
}

} // namespace

ZORTopBody::ZORTopBody(ZORGeoContainer* container, const ZORGeoGeometry* geometry)
    : ZORTopBody(container, geometry, std::numbers::pi)
{
}

ZORTopBody::ZORTopBody(ZORGeoContainer* container, const ZORGeoGeometry* geometry, double tolerance)
    : ZORGeoGeometry(container)
    , d_ptr(std::make_unique<ZORTopBodyPrivate>())
{
    ZOR_TRACE_CALL(container, geometry, tolerance);
    Q_D(ZORTopBody);
    d->structure = Divide(geometry, tolerance);
    d->tolerance = tolerance;
    if (geometry)
        AddPart(geometry);
}

ZORTopBody::ZORTopBody(ZORGeoContainer* container, ZORTopStructure structure,
                       const QList<const ZORGeoGeometry*>& parts)
    : ZORGeoGeometry(container)
    , d_ptr(std::make_unique<ZORTopBodyPrivate>())
{
    Q_D(ZORTopBody);
    d->structure = std::move(structure);
    d->parts.reserve(size_t(parts.size()));
    for (const ZORGeoGeometry* part : parts)
        AddPart(part);
}

ZORTopBody::~ZORTopBody() = default;

void ZORTopBody::AddPart(const ZORGeoGeometry* part)
{
    Q_D(ZORTopBody);
    d->parts.emplace_back(part, this);
    // Surfaces never change, and bodies of them are the ones that are expensive to divide.
    if (!qobject_cast<const ZORGeoSurface*>(part))
        FollowShape(part);
}

void ZORTopBody::UpdateShape()
{
    Q_D(ZORTopBody);
    if (d->IsComplete())
        d->Update();
}

void ZORTopBodyPrivate::Update()
{
    if (parts.size() == 1) {
        structure = Divide(GetPart(0), tolerance);
        return;
    }
    for (ZORTopStructure::Vertex& vertex : structure.vertices) {
        if (const auto* point = qobject_cast<const ZORGeoPoint*>(GetPart(vertex.part)))
            vertex.point = point->GetMathPoint();
    }
    ZORTopIndexLists pointsOfEdge;
    for (int edge = 0; edge < structure.GetNumEdges(); ++edge) {
        AddPointsOfEdge(edge, pointsOfEdge);
        pointsOfEdge.Close();
    }
    structure.pointsOfEdge = std::move(pointsOfEdge);
}

void ZORTopBodyPrivate::AddPointsOfEdge(int edge, ZORTopIndexLists& pointsOfEdge)
{
    const auto* const curve = qobject_cast<const ZORGeoCurve*>(GetPart(structure.partOfEdge[size_t(edge)]));
    if (!curve) {
        for (const int point : structure.pointsOfEdge.Get(edge))
            pointsOfEdge.Add(point);
        return;
    }
    const int count = curve->GetNumPoints();
    for (int point = 0; point < count; ++point)
        pointsOfEdge.Add(point);
    const std::span<const int> ends = structure.verticesOfEdge.Get(edge);
    if (!ends.empty() && count > 0) {
        structure.vertices[size_t(ends.back())].point = curve->GetPoint(count - 1);
        structure.vertices[size_t(ends.front())].point = curve->GetPoint(0);
    }
}

int ZORTopBody::GetDimension() const
{
    Q_D(const ZORTopBody);
    if (!d->IsComplete())
        return EmptyDimension;
    if (d->structure.GetNumFaces() > 0)
        return 2;
    if (d->structure.GetNumEdges() > 0)
        return 1;
    return d->structure.GetNumVertices() > 0 ? 0 : EmptyDimension;
}

const ZORGeoGeometry* ZORTopBody::GetGeometry() const
{
    Q_D(const ZORTopBody);
    return d->parts.size() == 1 ? d->GetPart(0) : nullptr;
}

QList<const ZORGeoGeometry*> ZORTopBody::GetGeometries() const
{
    Q_D(const ZORTopBody);
    if (!d->IsComplete())
        return {};
    return {d->parts.begin(), d->parts.end()};
}

int ZORTopBody::GetNumVertices() const
{
    Q_D(const ZORTopBody);
    return d->IsComplete() ? d->structure.GetNumVertices() : 0;
}

int ZORTopBody::GetNumEdges() const
{
    Q_D(const ZORTopBody);
    return d->IsComplete() ? d->structure.GetNumEdges() : 0;
}

int ZORTopBody::GetNumFaces() const
{
    Q_D(const ZORTopBody);
    return d->IsComplete() ? d->structure.GetNumFaces() : 0;
}

ZORTopVertex ZORTopBody::GetVertex(int index) const
{
    Q_D(const ZORTopBody);
    Q_ASSERT(index >= 0 && index < GetNumVertices());
    return {d, index};
}

ZORTopEdge ZORTopBody::GetEdge(int index) const
{
    Q_D(const ZORTopBody);
    Q_ASSERT(index >= 0 && index < GetNumEdges());
    return {d, index};
}

ZORTopFace ZORTopBody::GetFace(int index) const
{
    Q_D(const ZORTopBody);
    Q_ASSERT(index >= 0 && index < GetNumFaces());
    return {d, index};
}
