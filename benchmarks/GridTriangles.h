// Triangles of regular grids.

#pragma once

#include <ZORGeometry/ZORGeoSurface.h>

#include <QList>

/// Returns two triangles for each cell of a square grid, row by row. Vertices are counted row by row, one more in a row than
/// cells.
inline QList<ZORGeoSurface::Corners> MakeGridTriangles(int cells)
{
    QList<ZORGeoSurface::Corners> triangles;
    triangles.reserve(qsizetype(2) * cells * cells);
    for (int row = 0; row < cells; ++row) {
        for (int column = 0; column < cells; ++column) {
            const int a = row * (cells + 1) + column;
            const int b = a + cells + 1;
            triangles.append({a, a + 1, b + 1});
            triangles.append({a, b + 1, b});
        }
    }
    return triangles;
}
