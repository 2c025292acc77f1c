#include "ZORGeoMeshBorder_p.h"

#include <vector>

using Edge = ZORGeoTriangleEdgeCurve::Edge;

ZORGeoDirectedSide ZorGeoFindNextBorderSide(const ZORGeoMesh& mesh, ZORGeoDirectedSide at)
{
    for (;;) {
        // The other side of this triangle at the same corner.
        const int corner = at.GetEndCorner();
        const int other = at.side == corner ? (corner + 2) % 3 : corner;
        const quint32 neighbor = mesh.GetNeighbor(at.triangle, other);
        if (neighbor == 0)
            return {at.triangle, other, other != corner};
        const int vertex = mesh.triangles[at.triangle][size_t(corner)];
        at.triangle = int(neighbor / 4) - 1;
        at.side = int(neighbor % 4);
        at.isReversed = mesh.triangles[at.triangle][size_t(at.side)] == vertex;
    }
}

QList<QList<Edge>> ZorGeoFindBorderLoops(const ZORGeoMesh& mesh)
{
    QList<QList<Edge>> loops;
    std::vector<bool> visited(size_t(3) * size_t(mesh.GetNumTriangles()));
    const auto index = [](const ZORGeoDirectedSide& at) {
        return size_t(3) * size_t(at.triangle) + size_t(at.side);
    };
    for (int triangle = 0; triangle < mesh.GetNumTriangles(); ++triangle) {
        for (int side = 0; side < 3; ++side) {
            ZORGeoDirectedSide at = {triangle, side, false};
            if (mesh.GetNeighbor(triangle, side) != 0 || visited[index(at)])
                continue;
            QList<Edge>& loop = loops.emplaceBack();
            for (; !visited[index(at)]; at = ZorGeoFindNextBorderSide(mesh, at)) {
                visited[index(at)] = true;
                loop.append({at.triangle + 1, at.side, at.isReversed});
            }
        }
    }
    return loops;
}
