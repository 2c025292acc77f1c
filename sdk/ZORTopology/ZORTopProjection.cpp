#include "ZORTopProjection_p.h"

#include <ZORGeometry/ZORGeoCurveOnSurface.h>
#include <ZORGeometry/ZORGeoPointOnSurface.h>
#include <ZORGeometry/ZORGeoPolyline.h>
#include <ZORGeometry/ZORGeoProjectCrvSurOper.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORMathematics/ZORMathBoundingBox.h>
#include <ZORTopology/ZORTopBody.h>

ZORTopProjection::ZORTopProjection(const ZORGeoSurface& support)
    : m_support(support)
    , m_tiny(1e-9 * support.GetBoundingBox().GetDiagonal())
{
}

ZORTopProjection::~ZORTopProjection()
{
    for (const QPointer<ZORGeoGeometry>& geometry : qAsConst(m_created)) {
        if (geometry)
            geometry->RemoveNoReferences();
    }
}

bool ZORTopProjection::Run(const ZORTopBody& projected)
{
    if (!AddPoints(projected))
        return false;
    for (int i = 0; i < projected.GetNumEdges(); ++i) {
        if (!AddCurve(projected.GetEdge(i)))
            return false;
    }
    ShareVertices(projected.GetNumVertices());
    AddVertices();
    AddVerticesOfEdges();
    m_structure.Complete();
    return true;
}

// Vertices by themselves; the others come with their edges.
bool ZORTopProjection::AddPoints(const ZORTopBody& projected)
{
    for (int i = 0; i < projected.GetNumVertices(); ++i) {
        const ZORTopVertex vertex = projected.GetVertex(i);
        if (vertex.GetNumEdges() > 0)
            continue;
        const ZORGeoLocationOnSurface location = m_support.Project(vertex.GetPoint());
        if (location.IsNull())
            return false;
        AddEnd(location, i, EndKind::OfPoint);
    }
    return true;
}

bool ZORTopProjection::AddCurve(const ZORTopEdge& edge)
{
    const ZORGeoPolyline source(nullptr, edge.GetPoints(), true);
    ZORGeoProjectCrvSurOper projection(&m_support, &source);
    projection.Run();
    ZORGeoCurveOnSurface* const curve = projection.GetCurve();
    if (!curve)
        return false;
    if (curve->GetLength() > m_tiny) {
        AddPartOfEdge(*curve);
        AddEnds(edge, *curve);
        return true;
    }
    // Seen along the projection the edge is a point, which joins its vertices.
    const ZORGeoLocationOnSurface location = curve->GetLocations().constFirst();
    const int end = AddEnd(location, -1, EndKind::OfPoint);
    for (int i = 0; i < edge.GetNumVertices(); ++i)
        Share(end, AddEnd(location, edge.GetVertex(i).GetIndex(), EndKind::OfPoint));
    curve->RemoveNoReferences();
    return true;
}

void ZORTopProjection::AddEnds(const ZORTopEdge& edge, const ZORGeoCurveOnSurface& curve)
{
    const int numVertices = edge.GetNumVertices();
    const QList<ZORGeoLocationOnSurface> locations = curve.GetLocations();
    const ZORGeoLocationOnSurface& start = locations.constFirst();
    const ZORGeoLocationOnSurface& end = locations.constLast();
    const bool isClosed = (end.point - start.point).GetLength() <= m_tiny;
    if (numVertices > 0 || !isClosed) {
        const int startSource = numVertices > 0 ? edge.GetVertex(0).GetIndex() : -1;
        const int endSource = numVertices > 0 ? edge.GetVertex(numVertices - 1).GetIndex() : -1;
        m_endsOfCurve.Add(AddEnd(start, startSource, EndKind::OfCurve));
        m_endsOfCurve.Add(AddEnd(end, endSource, EndKind::OfCurve));
    }
    m_endsOfCurve.Close();
}

int ZORTopProjection::AddEnd(const ZORGeoLocationOnSurface& location, int source, EndKind kind)
{
    m_ends.push_back({location, source, int(m_ends.size()), kind == EndKind::OfCurve});
    return int(m_ends.size()) - 1;
}

int ZORTopProjection::FindFirst(int end) const
{
    while (m_ends[size_t(end)].first != end)
        end = m_ends[size_t(end)].first;
    return end;
}

void ZORTopProjection::Share(int a, int b)
{
    const auto [first, second] = std::minmax({FindFirst(a), FindFirst(b)});
    m_ends[size_t(second)].first = first;
    m_ends[size_t(first)].isOfCurve |= m_ends[size_t(second)].isOfCurve;
}

// Ends that come from one vertex share one, unless the surface is torn there.
void ZORTopProjection::ShareVertices(int numSources)
{
    ZORTopIndexLists sources;
    for (const End& end : m_ends) {
        if (end.source >= 0)
            sources.Add(end.source);
        sources.Close();
    }
    const ZORTopIndexLists endsOfSource = sources.GetInverse(numSources);
    for (int source = 0; source < numSources; ++source) {
        const auto ends = endsOfSource.Get(source);
        for (size_t i = 1; i < ends.size(); ++i) {
            for (size_t j = 0; j < i; ++j) {
                const ZORMathPoint& a = m_ends[size_t(ends[i])].location.point;
                const ZORMathPoint& b = m_ends[size_t(ends[j])].location.point;
                if ((a - b).GetLength() <= m_tiny)
                    Share(ends[i], ends[j]);
            }
        }
    }
}

void ZORTopProjection::AddVertices()
{
    for (int i = 0; i < int(m_ends.size()); ++i) {
        End& end = m_ends[size_t(i)];
        if (end.first != i) {
            end.vertex = m_ends[size_t(FindFirst(i))].vertex;
            continue;
        }
        end.vertex = m_structure.GetNumVertices();
        m_structure.vertices.push_back({end.location.point, end.isOfCurve ? -1 : AddPoint(end.location)});
    }
}

int ZORTopProjection::AddPoint(const ZORGeoLocationOnSurface& location)
{
    auto point = std::make_unique<ZORGeoPointOnSurface>(location);
    point->Initialize();
    m_created.append(point.release());
    return int(m_created.size()) - 1;
}

void ZORTopProjection::AddPartOfEdge(ZORGeoCurveOnSurface& curve)
{
    m_structure.partOfEdge.push_back(int(m_created.size()));
    m_created.append(&curve);
    for (int point = 0; point < curve.GetNumPoints(); ++point)
        m_structure.pointsOfEdge.Add(point);
    m_structure.pointsOfEdge.Close();
    m_structure.sidesOfEdge.Close();
    m_structure.facesOfEdge.Close();
}

void ZORTopProjection::AddVerticesOfEdges()
{
    for (int i = 0; i < m_endsOfCurve.GetCount(); ++i) {
        const auto ends = m_endsOfCurve.Get(i);
        if (!ends.empty()) {
            const int start = m_ends[size_t(ends[0])].vertex;
            const int end = m_ends[size_t(ends[1])].vertex;
            m_structure.verticesOfEdge.Add(start);
            if (start != end)
                m_structure.verticesOfEdge.Add(end);
        }
        m_structure.verticesOfEdge.Close();
    }
}
