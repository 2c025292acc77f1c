#include "ZORTopSides_p.h"

#include <algorithm>
#include <array>
#include <numeric>

ZORTopSides::ZORTopSides(const ZORTopMesh& mesh, const ZORTopTurn& turn)
    : m_mesh(mesh)
    , m_isIdle(size_t(mesh.GetNumTriangles()))
    , m_faceOfTriangle(size_t(mesh.GetNumTriangles()))
{
    std::iota(m_faceOfTriangle.begin(), m_faceOfTriangle.end(), 0);
    JoinRepetitions();
    JoinCollapsed();
    CrossSides(turn);
    AddLooseSides();
    NumberFaces();
}

int ZORTopSides::FindRoot(int triangle)
{
    std::vector<int>& parent = m_faceOfTriangle;
    while (parent[size_t(triangle)] != triangle) {
        parent[size_t(triangle)] = parent[size_t(parent[size_t(triangle)])];
        triangle = parent[size_t(triangle)];
    }
    return triangle;
}

void ZORTopSides::Join(int a, int b)
{
    const auto [first, second] = std::minmax({FindRoot(a), FindRoot(b)});
    m_faceOfTriangle[size_t(second)] = first;
}

// A repetition has no neighbour at all; what it repeats shares its three vertices.
void ZORTopSides::JoinRepetitions()
{
    const int numTriangles = m_mesh.GetNumTriangles();
    const auto isAlone = [&](int triangle) {
        return m_mesh.GetNeighbors(triangle) == std::array{-1, -1, -1} && !m_mesh.IsCollapsed(triangle);
    };
    std::vector<bool> isCorner; // of a triangle without neighbours
    for (int triangle = 0; triangle < numTriangles; ++triangle) {
        if (!isAlone(triangle))
            continue;
        isCorner.resize(size_t(m_mesh.GetNumVertices()));
        for (const int corner : m_mesh.GetCorners(triangle))
            isCorner[size_t(corner)] = true;
    }
    if (isCorner.empty())
        return;

    std::vector<std::array<int, 4>> candidates; // ascending corners, then the triangle
    for (int triangle = 0; triangle < numTriangles; ++triangle) {
        ZORGeoSurface::Corners corners = m_mesh.GetCorners(triangle);
        const bool isCandidate =
            std::all_of(corners.begin(), corners.end(), [&](int corner) { return isCorner[size_t(corner)]; });
        if (!isCandidate || m_mesh.IsCollapsed(triangle))
            continue;
        std::sort(corners.begin(), corners.end());
        candidates.push_back({corners[0], corners[1], corners[2], triangle});
    }
    std::sort(candidates.begin(), candidates.end());
    for (size_t i = 1; i < candidates.size(); ++i) {
        const auto& previous = candidates[i - 1];
        const auto& next = candidates[i];
        if (!std::equal(previous.begin(), previous.begin() + 3, next.begin()))
            continue;
        Join(previous[3], next[3]);
        m_isIdle[size_t(next[3])] = true;
    }
}

void ZORTopSides::JoinCollapsed()
{
    const int numTriangles = m_mesh.GetNumTriangles();
    std::vector<int> collapsed;
    for (int triangle = 0; triangle < numTriangles; ++triangle) {
        if (m_mesh.IsCollapsed(triangle))
            collapsed.push_back(triangle);
    }
    if (collapsed.empty())
        return;

    std::vector<int> firstAt(size_t(m_mesh.GetNumVertices()), -1);
    const auto occupy = [&](int triangle) {
        for (const int corner : m_mesh.GetCorners(triangle)) {
            if (firstAt[size_t(corner)] < 0)
                firstAt[size_t(corner)] = triangle;
        }
    };
    for (int triangle = 0; triangle < numTriangles; ++triangle) {
        if (!m_mesh.IsCollapsed(triangle))
            occupy(triangle);
    }
    for (const int triangle : collapsed) {
        m_isIdle[size_t(triangle)] = true;
        const auto& corners = m_mesh.GetCorners(triangle);
        const auto known = std::find_if(corners.begin(), corners.end(),
                                        [&](int corner) { return firstAt[size_t(corner)] >= 0; });
        if (known == corners.end())
            occupy(triangle);
        else
            Join(firstAt[size_t(*known)], triangle);
    }
}

void ZORTopSides::CrossSides(const ZORTopTurn& turn)
{
    for (int triangle = 0; triangle < m_mesh.GetNumTriangles(); ++triangle) {
        const std::array<int, 3> neighbors = m_mesh.GetNeighbors(triangle);
        for (int side = 0; side < 3; ++side) {
            if (neighbors[size_t(side)] < triangle)
                continue; // crossed from there, or none
            const auto neighbor = m_mesh.FindNeighbor(triangle, side, neighbors[size_t(side)]);
            const ZORMathVector& normal = m_mesh.GetNormal(neighbor.triangle);
            if (turn.IsSmooth(m_mesh.GetNormal(triangle), neighbor.isFlipped ? -normal : normal))
                Join(triangle, neighbor.triangle);
            else
                AddSide(triangle, side, {triangle, neighbor.triangle});
        }
    }
}

// Sides without neighbour, by their vertices: alone on a border, several where many triangles meet.
void ZORTopSides::AddLooseSides()
{
    std::vector<size_t> starts(size_t(m_mesh.GetNumVertices()) + 1);
    const auto forEachLoose = [&](auto function) {
        for (int triangle = 0; triangle < m_mesh.GetNumTriangles(); ++triangle) {
            if (m_isIdle[size_t(triangle)])
                continue;
            const std::array<int, 3> neighbors = m_mesh.GetNeighbors(triangle);
            for (int side = 0; side < 3; ++side) {
                const auto [lower, upper] =
                    std::minmax({m_mesh.GetStart(triangle, side), m_mesh.GetEnd(triangle, side)});
                if (neighbors[size_t(side)] < 0)
                    function(size_t(lower), Loose{upper, triangle, side});
            }
        }
    };
    forEachLoose([&](size_t lower, const Loose&) { ++starts[lower + 1]; });
    std::partial_sum(starts.begin(), starts.end(), starts.begin());
    std::vector<Loose> sides(starts.back());
    std::vector<size_t> next(starts.begin(), starts.end() - 1);
    forEachLoose([&](size_t lower, const Loose& side) { sides[next[lower]++] = side; });

    for (size_t vertex = 0; vertex + 1 < starts.size(); ++vertex) {
        const auto begin = sides.begin() + ptrdiff_t(starts[vertex]);
        const auto end = sides.begin() + ptrdiff_t(starts[vertex + 1]);
        std::stable_sort(begin, end, [](const Loose& a, const Loose& b) { return a.upper < b.upper; });
        for (auto group = begin; group != end;) {
            const auto groupEnd =
                std::find_if(group, end, [&](const Loose& side) { return side.upper != group->upper; });
            std::vector<int> triangles;
            for (auto side = group; side != groupEnd; ++side)
                triangles.push_back(side->triangle);
            AddSide(group->triangle, group->side, triangles);
            group = groupEnd;
        }
    }
}

void ZORTopSides::AddSide(int triangle, int side, const std::vector<int>& triangles)
{
    m_sides.push_back({triangle, side, m_mesh.GetStart(triangle, side), m_mesh.GetEnd(triangle, side)});
    for (const int neighbor : triangles)
        m_trianglesOfSide.Add(neighbor);
    m_trianglesOfSide.Close();
}

void ZORTopSides::NumberFaces()
{
    // A triangle's parent is never higher than the triangle itself, and has its number already.
    for (int triangle = 0; triangle < m_mesh.GetNumTriangles(); ++triangle) {
        int& face = m_faceOfTriangle[size_t(triangle)];
        face = face == triangle ? m_numFaces++ : m_faceOfTriangle[size_t(face)];
    }

    std::vector<int> order(m_sides.size());
    std::iota(order.begin(), order.end(), 0);
    std::sort(order.begin(), order.end(), [&](int a, int b) {
        const ZORTopSide& first = m_sides[size_t(a)];
        const ZORTopSide& second = m_sides[size_t(b)];
        return std::pair(first.triangle, first.side) < std::pair(second.triangle, second.side);
    });
    std::vector<ZORTopSide> sides;
    sides.reserve(order.size());
    std::vector<int> faces;
    for (const int i : order) {
        sides.push_back(m_sides[size_t(i)]);
        faces.clear();
        for (const int triangle : m_trianglesOfSide.Get(i))
            faces.push_back(m_faceOfTriangle[size_t(triangle)]);
        std::sort(faces.begin(), faces.end());
        for (const int face : faces)
            m_facesOfSide.Add(face);
        m_facesOfSide.Close();
    }
    m_sides = std::move(sides);
}
