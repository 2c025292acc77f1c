#include "ZORTopVertex.h"

#include "ZORTopBody_p.h"

#include <ZORGeometry/ZORGeoPoint.h>
#include <ZORTopology/ZORTopEdge.h>

ZORMathPoint ZORTopVertex::GetPoint() const
{
    return m_body->structure.vertices[size_t(m_index)].point;
}

const ZORGeoPoint* ZORTopVertex::GetGeometry() const
{
    const int part = m_body->structure.vertices[size_t(m_index)].part;
    return qobject_cast<const ZORGeoPoint*>(m_body->GetPart(part));
}

int ZORTopVertex::GetNumEdges() const
{
    return int(m_body->structure.edgesOfVertex.Get(m_index).size());
}

ZORTopEdge ZORTopVertex::GetEdge(int i) const
{
    Q_ASSERT(i >= 0 && i < GetNumEdges());
    return {m_body, m_body->structure.edgesOfVertex.Get(m_index)[size_t(i)]};
}
