#include "ZORGeoTriangleEdgeCurve.h"

#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORGeometry/ZORGeoTypeRegistration.h>
#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysException.h>

ZOR_GEO_REGISTER_TYPE(ZORGeoTriangleEdgeCurve)

namespace {

using Edge = ZORGeoTriangleEdgeCurve::Edge;

int CornerAt(const Edge& edge, bool atEnd)
{
    return (edge.side + (atEnd != edge.isReversed ? 1 : 0)) % 3;
}

int VertexAt(const ZORGeoSurface& surface, const Edge& edge, bool atEnd)
{
    return surface.GetCornerArray()[edge.triangle - 1][size_t(CornerAt(edge, atEnd))];
}

ZORGeoLocationOnSurface LocationAt(const ZORGeoSurface& surface, const Edge& edge, bool atEnd)
{
    const int corner = CornerAt(edge, atEnd);
    return {&surface, edge.triangle, corner == 1 ? 1.0 : 0.0, corner == 2 ? 1.0 : 0.0,
            surface.GetVertexArray()[VertexAt(surface, edge, atEnd)]};
}

void Check(const ZORGeoSurface& surface, const QList<Edge>& edges)
{
    for (qsizetype i = 0; i < edges.size(); ++i) {
        const auto [triangle, side, isReversed] = edges[i];
        if (triangle < 1 || triangle > surface.GetNumTriangles() || side < 0 || side > 2)
            throw ZORSysException(
                ZORGeoTriangleEdgeCurve::tr("edge %1 of the curve is not on the surface").arg(i));
        if (i > 0 && VertexAt(surface, edges[i], false) != VertexAt(surface, edges[i - 1], true)) {
            throw ZORSysException(ZORGeoTriangleEdgeCurve::tr(
                                      "edge %1 of the curve does not start where the one before it ends")
                                      .arg(i));
        }
    }
}

QList<ZORGeoLocationOnSurface> LocationsOf(const ZORGeoSurface& surface, const QList<Edge>& edges)
{
    Check(surface, edges);
    QList<ZORGeoLocationOnSurface> locations;
    locations.reserve(edges.size() + 1);
    for (const Edge& edge : edges)
        locations.append(LocationAt(surface, edge, false));
    if (!edges.isEmpty())
        locations.append(LocationAt(surface, edges.constLast(), true));
    return locations;
}

} // namespace

ZORGeoTriangleEdgeCurve::ZORGeoTriangleEdgeCurve(const ZORGeoSurface* surface, const QList<Edge>& edges)
    : ZORGeoCurveOnSurface(LocationsOf(*surface, edges), false)
    , m_edges(edges)
{
    ZOR_TRACE_CALL(surface, edges);
}

ZORGeoTriangleEdgeCurve::~ZORGeoTriangleEdgeCurve() = default;
