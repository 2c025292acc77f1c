// The triangles of a surface as its division needs them.

#pragma once

#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORMathematics/ZORMathPoint.h>

#include <vector>

/// A view of the triangles of a surface, numbered from 0, with their normals. The surface must outlive it.
///
/// A triangle of no width to speak of (its height less than 1e-9 of its longest side) has no normal of its own:
/// it takes that of a neighbour, across its longest side where possible. So it belongs to the side of a crease
/// on which that neighbour lies, and neither parts a smooth surface nor joins the two sides of a crease.
class ZORTopMesh
{
public:
    /// The other triangle at a side.
    struct Neighbor
    {
        int triangle = -1; // -1: none
        int side = 0;
        bool isFlipped = false; // has the opposite winding
    };

    /// O(T), and O(d log d) for d triangles without a normal of their own.
    explicit ZORTopMesh(const ZORGeoSurface& surface);

    int GetNumTriangles() const { return int(m_corners.size()); }
    int GetNumVertices() const { return int(m_vertices.size()); }
    const ZORMathPoint& GetPoint(int vertex) const { return m_vertices[vertex]; }
    const ZORGeoSurface::Corners& GetCorners(int triangle) const { return m_corners[triangle]; }
    int GetStart(int triangle, int side) const { return m_corners[triangle][size_t(side)]; }
    int GetEnd(int triangle, int side) const { return m_corners[triangle][size_t(side + 1) % 3]; }

    /// Whether two corners of a triangle are the same vertex.
    bool IsCollapsed(int triangle) const;
    /// The triangles across the sides, -1 for none.
    std::array<int, 3> GetNeighbors(int triangle) const;
    /// \param other  the triangle across the side, or -1
    Neighbor FindNeighbor(int triangle, int side, int other) const;

    /// Of length 1, in the winding of the triangle; zero for one without width, and no neighbours with any.
    const ZORMathVector& GetNormal(int triangle) const { return m_normals[size_t(triangle)]; }

private:
    void MeasureNormals();
    void SpreadNormals();

    const ZORGeoSurface& m_surface;
    const QList<ZORMathPoint>& m_vertices;
    const QList<ZORGeoSurface::Corners>& m_corners;
    std::vector<ZORMathVector> m_normals;
    std::vector<int> m_narrow; // triangles without a normal of their own
};
