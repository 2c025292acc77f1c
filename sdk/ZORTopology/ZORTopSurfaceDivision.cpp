#include "ZORTopSides_p.h"
#include "ZORTopSurfaceDivision_p.h"

#include <algorithm>

namespace {

// Chains sides into edges.
class Chains
{
public:
    Chains(const ZORTopMesh& mesh, const ZORTopSides& sides)
        : m_mesh(mesh)
        , m_sides(sides)
        , m_isChained(sides.GetSides().size())
    {
        ZORTopIndexLists ends;
        for (const ZORTopSide& side : sides.GetSides()) {
            ends.Add(side.start);
            ends.Add(side.end);
            ends.Close();
        }
        m_sidesAt = ends.GetInverse(mesh.GetNumVertices());
    }

    void Write(ZORTopStructure& structure)
    {
        AddVertices(structure);
        for (int side = 0; side < int(m_isChained.size()); ++side) {
            if (!m_isChained[size_t(side)])
                AddEdge(structure, side);
        }
    }

private:
    const ZORTopSide& Side(int side) const { return m_sides.GetSides()[size_t(side)]; }

    // Edges end where there are not two sides, or different faces along them.
    bool IsEnd(int vertex) const
    {
        const auto sides = m_sidesAt.Get(vertex);
        if (sides.size() != 2)
            return true;
        const ZORTopIndexLists& faces = m_sides.GetFacesOfSide();
        const auto first = faces.Get(sides[0]);
        const auto second = faces.Get(sides[1]);
        return !std::equal(first.begin(), first.end(), second.begin(), second.end());
    }

    void AddVertices(ZORTopStructure& structure)
    {
        m_vertexAt.assign(size_t(m_mesh.GetNumVertices()), -1);
        for (int vertex = 0; vertex < m_mesh.GetNumVertices(); ++vertex) {
            if (m_sidesAt.Get(vertex).empty() || !IsEnd(vertex))
                continue;
            m_vertexAt[size_t(vertex)] = structure.GetNumVertices();
            structure.vertices.push_back({m_mesh.GetPoint(vertex)});
        }
    }

    // Moves on to the next side and the vertex at its far end.
    void Step(int& side, int& vertex) const
    {
        const auto sides = m_sidesAt.Get(vertex);
        side = sides[0] == side ? sides[1] : sides[0];
        vertex = Side(side).start == vertex ? Side(side).end : Side(side).start;
    }

    // An edge has the direction of its first side.
    void AddEdge(ZORTopStructure& structure, int first)
    {
        int side = first;
        int start = Side(first).start;
        while (m_vertexAt[size_t(start)] < 0) {
            Step(side, start);
            if (side == first)
                break; // all the way round: closed without a vertex
        }
        int end = Side(side).start == start ? Side(side).end : Side(side).start;
        for (const int face : m_sides.GetFacesOfSide().Get(first))
            structure.facesOfEdge.Add(face);
        structure.pointsOfEdge.Add(start);
        for (;;) {
            m_isChained[size_t(side)] = true;
            structure.sidesOfEdge.Add(4 * (Side(side).triangle + 1) + Side(side).side);
            structure.pointsOfEdge.Add(end);
            if (m_vertexAt[size_t(end)] >= 0 || end == start)
                break;
            Step(side, end);
        }
        if (m_vertexAt[size_t(start)] >= 0) {
            structure.verticesOfEdge.Add(m_vertexAt[size_t(start)]);
            if (end != start)
                structure.verticesOfEdge.Add(m_vertexAt[size_t(end)]);
        }
        structure.facesOfEdge.Close();
        structure.pointsOfEdge.Close();
        structure.sidesOfEdge.Close();
        structure.verticesOfEdge.Close();
        structure.partOfEdge.push_back(0);
    }

    const ZORTopMesh& m_mesh;
    const ZORTopSides& m_sides;
    std::vector<bool> m_isChained;
    ZORTopIndexLists m_sidesAt;  // by vertex of the mesh
    std::vector<int> m_vertexAt; // by vertex of the mesh; -1: none of the body
};

} // namespace

ZORTopStructure ZorTopDivideSurface(const ZORGeoSurface& surface, double tolerance)
{
    ZORTopStructure structure;
    const ZORTopMesh mesh(surface);
    const ZORTopSides sides(mesh, ZORTopTurn(tolerance));
    ZORTopIndexLists faces; // one for each triangle, which has the number of the list
    faces.Close();          // triangle numbers start with 1
    for (const int face : sides.GetFaceOfTriangle()) {
        faces.Add(face);
        faces.Close();
    }
    structure.trianglesOfFace = faces.GetInverse(sides.GetNumFaces());
    Chains(mesh, sides).Write(structure);
    structure.Complete();
    return structure;
}
