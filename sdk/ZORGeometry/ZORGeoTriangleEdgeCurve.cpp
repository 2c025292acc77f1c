#include "ZORGeoTriangleEdgeCurve.h"

#include <ZORGeometry/ZORGeoObjectStorage.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORGeometry/ZORGeoTypeRegistration.h>
#include <ZORMathematics/ZORMathSetOfPoints.h>
#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysException.h>

ZOR_GEO_REGISTER_TYPE(ZORGeoTriangleEdgeCurve)

namespace {

using Edge = ZORGeoTriangleEdgeCurve::Edge;

enum class End { First, Last };

int CornerAt(const Edge& edge, End end)
{
    return (edge.side + ((end == End::Last) != edge.isReversed ? 1 : 0)) % 3;
}

int VertexAt(const ZORGeoSurface& surface, const Edge& edge, End end)
{
    return surface.GetCornerArray()[edge.triangle - 1][size_t(CornerAt(edge, end))];
}

ZORGeoLocationOnSurface LocationAt(const ZORGeoSurface& surface, const Edge& edge, End end)
{
    const int corner = CornerAt(edge, end);
    return {&surface, edge.triangle, corner == 1 ? 1.0 : 0.0, corner == 2 ? 1.0 : 0.0,
            surface.GetVertexArray()[VertexAt(surface, edge, end)]};
}

void Check(const ZORGeoSurface& surface, const QList<Edge>& edges)
{
    for (qsizetype i = 0; i < edges.size(); ++i) {
        const auto [triangle, side, isReversed] = edges[i];
        if (triangle < 1 || triangle > surface.GetNumTriangles() || side < 0 || side > 2)
            throw ZORSysException(
                ZORGeoTriangleEdgeCurve::tr("edge %1 of the curve is not on the surface").arg(i));
        if (i > 0 && VertexAt(surface, edges[i], End::First) != VertexAt(surface, edges[i - 1], End::Last)) {
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
        locations.append(LocationAt(surface, edge, End::First));
    if (!edges.isEmpty())
        locations.append(LocationAt(surface, edges.constLast(), End::Last));
    return locations;
}

} // namespace

class ZORGeoTriangleEdgeCurve::Private
{
public:
    QList<Edge> edges;
};

ZORGeoTriangleEdgeCurve::ZORGeoTriangleEdgeCurve(const ZORGeoSurface* surface, const QList<Edge>& edges)
    : ZORGeoCurveOnSurface(LocationsOf(*surface, edges), false)
    , d(new Private{edges})
{
    ZOR_TRACE_CALL(surface, edges);
}

ZORGeoTriangleEdgeCurve::ZORGeoTriangleEdgeCurve(ZORGeoContainer* container, const ZORMathSetOfPoints& points,
                                                 const QList<Edge>& edges)
    : ZORGeoCurveOnSurface(container, points)
    , d(new Private{edges})
{
}

ZORGeoTriangleEdgeCurve::~ZORGeoTriangleEdgeCurve() = default;

const QList<Edge>& ZORGeoTriangleEdgeCurve::GetEdges() const
{
    return d->edges;
}

struct ZORGeoTriangleEdgeCurveStorage
{
    static void Write(const ZORGeoTriangleEdgeCurve& curve, ZORGeoObjectWriter& writer)
    {
        QList<qint32> edges;
        edges.reserve(3 * curve.GetEdges().size());
        for (const Edge& edge : curve.GetEdges())
            edges << edge.triangle << edge.side << int(edge.isReversed);
        writer.WriteReference("surface", curve.GetSurface());
        writer.WriteInts("edges", edges);
        if (!curve.GetSurface())
            writer.WritePoints("points", curve.GetPoints());
    }
    static ZORGeoTriangleEdgeCurve* Create(ZORGeoContainer* container, const ZORGeoObjectReader& reader)
    {
        const QList<qint32>& numbers = reader.GetInts("edges");
        if (numbers.size() % 3 != 0)
            reader.Fail(ZORGeoTriangleEdgeCurve::tr("value 'edges' ends within an edge"));
        QList<Edge> edges;
        edges.reserve(numbers.size() / 3);
        for (qsizetype i = 0; i < numbers.size(); i += 3)
            edges.append({numbers[i], numbers[i + 1], numbers[i + 2] != 0});
        if (const auto* surface = reader.GetReference<ZORGeoSurface>("surface")) {
            if (edges.isEmpty())
                reader.Fail(ZORGeoTriangleEdgeCurve::tr("it has a surface, but no edge of it"));
            return new ZORGeoTriangleEdgeCurve(surface, edges);
        }
        return new ZORGeoTriangleEdgeCurve(container, reader.GetPoints("points"), edges);
    }
};

ZOR_GEO_REGISTER_STORAGE(ZORGeoTriangleEdgeCurve)
