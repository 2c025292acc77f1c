#include "ZORTopMesh_p.h"

#include <queue>

#include <algorithm>

ZORTopMesh::ZORTopMesh(const ZORGeoSurface& surface)
    : m_surface(surface)
    , m_vertices(surface.GetVertexArray())
    , m_corners(surface.GetCornerArray())
{
    MeasureNormals();
    SpreadNormals();
}

bool ZORTopMesh::IsCollapsed(int triangle) const
{
    const auto& [a, b, c] = m_corners[triangle];
    return a == b || b == c || c == a;
}

std::array<int, 3> ZORTopMesh::GetNeighbors(int triangle) const
{
    std::array<int, 3> neighbors{};
    m_surface.GetNeighbors(triangle + 1, neighbors[0], neighbors[1], neighbors[2]);
    for (int& neighbor : neighbors)
        --neighbor;
    return neighbors;
}

ZORTopMesh::Neighbor ZORTopMesh::FindNeighbor(int triangle, int side, int other) const
{
    if (other < 0)
        return {};
    const int start = GetStart(triangle, side);
    const int end = GetEnd(triangle, side);
    for (int otherSide = 0; otherSide < 3; ++otherSide) {
        if (GetStart(other, otherSide) == end && GetEnd(other, otherSide) == start)
            return {other, otherSide, false};
        if (GetStart(other, otherSide) == start && GetEnd(other, otherSide) == end)
            return {other, otherSide, true};
    }
    return {};
}

void ZORTopMesh::MeasureNormals()
{
    constexpr double kNarrow = 1e-9; // height by longest side
    m_normals.resize(size_t(GetNumTriangles()));
    for (int triangle = 0; triangle < GetNumTriangles(); ++triangle) {
        const auto& [a, b, c] = m_corners[triangle];
        ZORMathVector ab = m_vertices[b] - m_vertices[a];
        ZORMathVector ac = m_vertices[c] - m_vertices[a];
        const double longest =
            std::max({ab.GetLength(), ac.GetLength(), (m_vertices[c] - m_vertices[b]).GetLength()});
        if (longest > 0) { // in units of the longest side, lest tiny products underflow
            ab *= 1 / longest;
            ac *= 1 / longest;
        }
        const ZORMathVector normal = Cross(ab, ac);
        if (normal.GetLength() > kNarrow)
            m_normals[size_t(triangle)] = normal.GetNormalized();
        else
            m_narrow.push_back(triangle);
    }
}

// The longest sides first, so that a narrow triangle gets the normal of the neighbour along it rather than of
// one that touches a short end. Whole strips of narrow triangles take part one by one.
void ZORTopMesh::SpreadNormals()
{
    struct Step
    {
        double length = 0;
        int triangle = 0; // without a normal
        int from = 0;     // its neighbour with one
        bool isFlipped = false;

        bool operator<(const Step& other) const
        {
            if (length != other.length)
                return length < other.length;
            return triangle > other.triangle || (triangle == other.triangle && from > other.from);
        }
    };
    const auto hasNormal = [&](int triangle) { return GetNormal(triangle) != ZORMathVector(); };
    std::priority_queue<Step> steps;
    // Adds the steps between a triangle and its neighbours, into the one or out of it.
    const auto addSteps = [&](int triangle) {
        const std::array<int, 3> neighbors = GetNeighbors(triangle);
        for (int side = 0; side < 3; ++side) {
            const Neighbor neighbor = FindNeighbor(triangle, side, neighbors[size_t(side)]);
            if (neighbor.triangle < 0 || hasNormal(neighbor.triangle) == hasNormal(triangle))
                continue;
            const double length =
                (GetPoint(GetEnd(triangle, side)) - GetPoint(GetStart(triangle, side))).GetLength();
            if (hasNormal(triangle))
                steps.push({length, neighbor.triangle, triangle, neighbor.isFlipped});
            else
                steps.push({length, triangle, neighbor.triangle, neighbor.isFlipped});
        }
    };
    for (const int triangle : m_narrow)
        addSteps(triangle);
    while (!steps.empty()) {
        const Step step = steps.top();
        steps.pop();
        if (hasNormal(step.triangle))
            continue;
        const ZORMathVector& normal = GetNormal(step.from);
        m_normals[size_t(step.triangle)] = step.isFlipped ? -normal : normal;
        addSteps(step.triangle);
    }
}
