#include "ZORTopFace.h"

#include "ZORTopBody_p.h"

#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORTopology/ZORTopEdge.h>

const ZORGeoSurface* ZORTopFace::GetSurface() const
{
    return qobject_cast<const ZORGeoSurface*>(m_body->GetPart(0));
}

int ZORTopFace::GetNumTriangles() const
{
    return int(m_body->structure.trianglesOfFace.Get(m_index).size());
}

int ZORTopFace::GetTriangle(int i) const
{
    Q_ASSERT(i >= 0 && i < GetNumTriangles());
    return m_body->structure.trianglesOfFace.Get(m_index)[size_t(i)];
}

int ZORTopFace::GetNumEdges() const
{
    return int(m_body->structure.edgesOfFace.Get(m_index).size());
}

ZORTopEdge ZORTopFace::GetEdge(int i) const
{
    Q_ASSERT(i >= 0 && i < GetNumEdges());
    return {m_body, m_body->structure.edgesOfFace.Get(m_index)[size_t(i)]};
}
