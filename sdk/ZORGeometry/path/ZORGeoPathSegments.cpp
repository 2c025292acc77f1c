#include "ZORGeoPathSegments_p.h"

ZORGeoPathSegments::ZORGeoPathSegments(const ZORGeoMesh& mesh, const ZORGeoMeshPath& path, size_t first)
    : m_path(path)
{
    ZORGeoMeshPlace end;
    for (size_t i = first; i + 1 < path.size(); ++i) {
        const int triangle = path[i].triangle;
        Insert(triangle, i);
        if (!ZorGeoExpressPlace(mesh, path[i + 1], triangle, end))
            continue;
        for (int side = 0; side < 3; ++side) {
            const quint32 neighbor = mesh.GetNeighbor(triangle, side);
            if (neighbor != 0 && path[i].IsOnSide(side) && end.IsOnSide(side))
                Insert(int(neighbor / 4) - 1, i);
        }
    }
}

void ZORGeoPathSegments::Insert(int triangle, size_t segment)
{
    m_segments[triangle].push_back(segment);
    m_mayHold[BitOf(triangle)] = true;
}

const std::vector<size_t>* ZORGeoPathSegments::Find(int triangle) const
{
    if (!m_mayHold[BitOf(triangle)])
        return nullptr;
    const auto found = m_segments.find(triangle);
    return found == m_segments.end() ? nullptr : &found->second;
}
