// The triangle mesh behind a surface: corners and neighbours.

#pragma once

#include <ZORMathematics/ZORMathBoundingBox.h>
#include <ZORMathematics/ZORMathPoint.h>

#include <QList>

#include <array>
#include <mutex>
#include <vector>

/// Vertices, corners and the neighbour table. Triangles count from 0 here; a surface adds 1.
///
/// Neighbour rule. Two triangles are neighbours across an edge when they are the only two on it, whatever
/// their winding. A border edge and an edge of more than two triangles have no neighbours. Of triangles with
/// the same three corners only the first takes part; a triangle with two equal corners takes no part.
class ZORGeoMesh
{
public:
    using Corners = std::array<int, 3>;

    /// Builds the neighbour table in O(n): a counting sort of the sides on the lower of their vertices.
    /// \param triangles  every corner is an index of \a vertices; at most MaximumTriangles
    ZORGeoMesh(const QList<ZORMathPoint>& vertices, const QList<Corners>& triangles);

    static constexpr qsizetype kMaximumTriangles = (qsizetype(1) << 29) - 2;

    /// \param corner  0 ... 2
    const ZORMathPoint& GetCorner(int triangle, int corner) const
    {
        return vertices[triangles[triangle][size_t(corner)]];
    }
    /// Returns the box around the corners of all triangles; measured by whichever thread asks first.
    const ZORMathBoundingBox& GetBox() const;
    int GetNumTriangles() const { return int(triangles.size()); }
    /// 0 for no neighbour, else 4 * (triangle + 1) + side, the side of the neighbour on the same edge.
    quint32 GetNeighbor(int triangle, int side) const { return m_neighbors[size_t(3 * triangle + side)]; }

    const QList<ZORMathPoint> vertices;
    const QList<Corners> triangles;

private:
    mutable std::once_flag m_boxMeasured;
    mutable ZORMathBoundingBox m_box;
    std::vector<quint32> m_neighbors; // [3 * triangle + side], sides AB, BC, CA
};
