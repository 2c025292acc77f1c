#include "ZORTopEdge.h"

#include "ZORTopBody_p.h"

#include <ZORGeometry/ZORGeoCurve.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORMathematics/ZORMathSetOfPoints.h>
#include <ZORTopology/ZORTopFace.h>
#include <ZORTopology/ZORTopVertex.h>

int ZORTopEdge::GetNumVertices() const
{
    return int(m_body->structure.verticesOfEdge.Get(m_index).size());
}

ZORTopVertex ZORTopEdge::GetVertex(int i) const
{
    Q_ASSERT(i >= 0 && i < GetNumVertices());
    return {m_body, m_body->structure.verticesOfEdge.Get(m_index)[size_t(i)]};
}

int ZORTopEdge::GetNumFaces() const
{
    return int(m_body->structure.facesOfEdge.Get(m_index).size());
}

ZORTopFace ZORTopEdge::GetFace(int i) const
{
    Q_ASSERT(i >= 0 && i < GetNumFaces());
    return {m_body, m_body->structure.facesOfEdge.Get(m_index)[size_t(i)]};
}

ZORMathSetOfPoints ZORTopEdge::GetPoints() const
{
    const ZORTopStructure& structure = m_body->structure;
    const ZORGeoGeometry* const part = m_body->GetPart(structure.partOfEdge[size_t(m_index)]);
    const auto* const curve = qobject_cast<const ZORGeoCurve*>(part);
    const auto* const surface = qobject_cast<const ZORGeoSurface*>(part);
    ZORMathSetOfPoints points;
    if (!curve && !surface)
        return points;
    const auto indices = structure.pointsOfEdge.Get(m_index);
    points.reserve(qsizetype(indices.size()));
    for (const int index : indices)
        points.append(curve ? curve->GetPoint(index) : surface->GetVertexArray()[index]);
    return points;
}

const ZORGeoCurve* ZORTopEdge::GetCurve() const
{
    return qobject_cast<const ZORGeoCurve*>(m_body->GetPart(m_body->structure.partOfEdge[size_t(m_index)]));
}

QList<ZORGeoTriangleEdgeCurve::Edge> ZORTopEdge::GetSides() const
{
    const ZORTopStructure& structure = m_body->structure;
    const auto* const surface =
        qobject_cast<const ZORGeoSurface*>(m_body->GetPart(structure.partOfEdge[size_t(m_index)]));
    if (!surface)
        return {};
    const auto points = structure.pointsOfEdge.Get(m_index);
    const auto packedSides = structure.sidesOfEdge.Get(m_index);
    QList<ZORGeoTriangleEdgeCurve::Edge> sides;
    sides.reserve(qsizetype(packedSides.size()));
    for (size_t i = 0; i < packedSides.size(); ++i) {
        const int triangle = packedSides[i] / 4;
        const int side = packedSides[i] % 4;
        const int start = surface->GetCornerArray()[triangle - 1][size_t(side)];
        sides.append({triangle, side, start != points[i]});
    }
    return sides;
}
