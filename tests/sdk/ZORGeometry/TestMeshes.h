// Small surfaces for tests.

#pragma once

#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORMathematics/ZORMathPoint.h>

#include <QList>

#include <cmath>
#include <memory>
#include <numbers>
#include <random>
#include <utility>

struct TestMesh
{
    QList<ZORMathPoint> vertices;
    QList<ZORGeoSurface::Corners> triangles;

    std::unique_ptr<ZORGeoSurface> Make(ZORGeoContainer* container = nullptr) const
    {
        return std::make_unique<ZORGeoSurface>(container, vertices, triangles);
    }
};

/// The unit cube, outward normals; the bottom comes first.
inline TestMesh Cube()
{
    return {{{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {0, 0, 1}, {1, 0, 1}, {1, 1, 1}, {0, 1, 1}},
            {{0, 2, 1},
             {0, 3, 2},
             {4, 5, 6},
             {4, 6, 7},
             {0, 1, 5},
             {0, 5, 4},
             {1, 2, 6},
             {1, 6, 5},
             {2, 3, 7},
             {2, 7, 6},
             {3, 0, 4},
             {3, 4, 7}}};
}

/// The box from the origin to a corner, outward normals, two triangles a face.
inline TestMesh Box(double x, double y, double z)
{
    TestMesh box = Cube();
    for (ZORMathPoint& vertex : box.vertices)
        vertex = ZORMathPoint(x * vertex.GetX(), y * vertex.GetY(), z * vertex.GetZ());
    return box;
}

/// A tetrahedron of edge 1, outward normals; vertex 3 is opposite to the first triangle.
inline TestMesh Tetrahedron()
{
    return {{{0, 0, 0}, {1, 0, 0}, {0.5, std::sqrt(0.75), 0}, {0.5, std::sqrt(1 / 12.0), std::sqrt(2 / 3.0)}},
            {{0, 2, 1}, {0, 1, 3}, {1, 2, 3}, {2, 0, 3}}};
}

/// A unit square in the plane z = 0, cut into 2 * cells * cells triangles with normals upwards.
inline TestMesh Sheet(int cells)
{
    TestMesh mesh;
    for (int row = 0; row <= cells; ++row) {
        for (int column = 0; column <= cells; ++column)
            mesh.vertices.append(ZORMathPoint(double(column) / cells, double(row) / cells, 0));
    }
    for (int row = 0; row < cells; ++row) {
        for (int column = 0; column < cells; ++column) {
            const int a = row * (cells + 1) + column;
            const int b = a + cells + 1;
            mesh.triangles.append({a, a + 1, b + 1});
            mesh.triangles.append({a, b + 1, b});
        }
    }
    return mesh;
}

/// A sphere around the origin, outward normals: poles on the z axis, 2 * rows meridians, rows of equal
/// latitude steps between the poles; the first meridian at y = 0, x > 0.
inline TestMesh Sphere(double radius, int rows)
{
    const int columns = 2 * rows;
    TestMesh mesh;
    mesh.vertices << ZORMathPoint(0, 0, -radius);
    for (int row = 1; row < rows; ++row) {
        const double latitude = std::numbers::pi * (double(row) / rows - 0.5);
        for (int column = 0; column < columns; ++column) {
            const double longitude = 2 * std::numbers::pi * column / columns;
            mesh.vertices << ZORMathPoint(radius * std::cos(latitude) * std::cos(longitude),
                                          radius * std::cos(latitude) * std::sin(longitude),
                                          radius * std::sin(latitude));
        }
    }
    const int top = int(mesh.vertices.size());
    mesh.vertices << ZORMathPoint(0, 0, radius);
    for (int column = 0; column < columns; ++column) {
        const int next = (column + 1) % columns;
        mesh.triangles.append({0, 1 + next, 1 + column});
        for (int row = 0; row < rows - 2; ++row) {
            const int first = 1 + row * columns;
            mesh.triangles.append({first + column, first + next, first + columns + next});
            mesh.triangles.append({first + column, first + columns + next, first + columns + column});
        }
        mesh.triangles.append({top, top - columns + column, top - columns + next});
    }
    return mesh;
}

/// Triangles of all shapes and sizes at random places, points and needles among them.
inline TestMesh Soup(int triangles, unsigned seed)
{
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> coordinate(-1, 1);
    std::uniform_int_distribution<int> kind(0, 9);
    const auto vector = [&](double size) {
        return ZORMathVector(size * coordinate(random), size * coordinate(random), size * coordinate(random));
    };
    TestMesh mesh;
    for (int i = 0; i < triangles; ++i) {
        const int shape = kind(random);
        const double size = shape < 6 ? 0.1 : 1.0;
        const ZORMathPoint a = ZORMathPoint() + vector(1);
        const ZORMathPoint b = shape == 0 ? a : a + vector(size);
        ZORMathPoint c = a + vector(size);
        if (shape <= 1) // a point or a segment
            c = b;
        else if (shape == 2) // no area
            c = a + 0.25 * (b - a);
        else if (shape == 3) // hardly any
            c = a + 0.75 * (b - a) + vector(1e-9);
        const int first = int(mesh.vertices.size());
        mesh.vertices << a << b << c;
        mesh.triangles.append({first, first + 1, first + 2});
    }
    return mesh;
}

/// Grid of columns * rows cells with normals to the left of (column direction x row direction). Where it is
/// closed, the last column or row joins the first.
/// \param place  the vertex of a column and row, both counted from 0
template<class Place>
TestMesh Grid(int columns, int rows, bool isColumnsClosed, bool isRowsClosed, const Place& place)
{
    TestMesh mesh;
    const int width = columns + (isColumnsClosed ? 0 : 1);
    const int height = rows + (isRowsClosed ? 0 : 1);
    for (int row = 0; row < height; ++row) {
        for (int column = 0; column < width; ++column)
            mesh.vertices.append(place(column, row));
    }
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column) {
            const int right = (column + 1) % width;
            const int below = row * width;
            const int above = (row + 1) % height * width;
            mesh.triangles.append({below + column, below + right, above + right});
            mesh.triangles.append({below + column, above + right, above + column});
        }
    }
    return mesh;
}

/// An open prism around the z axis from z = 0 on, its first edge at (radius, 0).
inline TestMesh Prism(int sides, double radius, double height, int rows = 1)
{
    return Grid(sides, rows, true, false, [=](int column, int row) {
        const double angle = 2 * std::numbers::pi * column / sides;
        return ZORMathPoint(radius * std::cos(angle), radius * std::sin(angle), height * row / rows);
    });
}

/// A closed torus about the z axis.
/// \param phase  cells by which the vertices are moved along both circles
inline TestMesh Torus(int columns, int rows, double radius, double tubeRadius, double phase = 0)
{
    return Grid(columns, rows, true, true, [=](int column, int row) {
        const double longitude = 2 * std::numbers::pi * (column + phase) / columns;
        const double around = 2 * std::numbers::pi * (row + phase) / rows;
        const double distance = radius + tubeRadius * std::cos(around);
        return ZORMathPoint(distance * std::cos(longitude), distance * std::sin(longitude),
                            tubeRadius * std::sin(around));
    });
}

/// The sheet with its inner vertices moved within the plane, so that no two triangles are alike.
inline TestMesh JitteredSheet(int cells, unsigned seed)
{
    TestMesh mesh = Sheet(cells);
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> shift(-0.3 / cells, 0.3 / cells);
    for (int row = 1; row < cells; ++row) {
        for (int column = 1; column < cells; ++column) {
            const double x = shift(random);
            const double y = shift(random);
            ZORMathPoint& vertex = mesh.vertices[row * (cells + 1) + column];
            vertex = vertex + ZORMathVector(x, y, 0);
        }
    }
    return mesh;
}

/// The sheet, the diagonal of every cell torn open for a triangle without area with its third corner in the
/// middle of the diagonal. Exact for powers of two.
inline TestMesh SliverSheet(int cells)
{
    TestMesh mesh{Sheet(cells).vertices, {}};
    for (int row = 0; row < cells; ++row) {
        for (int column = 0; column < cells; ++column) {
            const int a = row * (cells + 1) + column;
            const int b = a + cells + 1;
            const int middle = int(mesh.vertices.size());
            mesh.vertices.append(ZORMathPoint((column + 0.5) / cells, (row + 0.5) / cells, 0));
            mesh.triangles.append({a, a + 1, middle});
            mesh.triangles.append({a + 1, b + 1, middle});
            mesh.triangles.append({a, middle, b + 1});
            mesh.triangles.append({a, b + 1, b});
        }
    }
    return mesh;
}

/// The sheet; every inner vertex is two at the same place, joined by an edge of no length with triangles of
/// no height on both sides.
inline TestMesh DoubledSheet(int cells)
{
    TestMesh mesh = Sheet(cells);
    for (int row = 1; row < cells; ++row) {
        for (int column = 1; column < cells; ++column) {
            // The twin takes the triangles above the edges to the left and right neighbour.
            const int vertex = row * (cells + 1) + column;
            const int twin = int(mesh.vertices.size());
            mesh.vertices.append(mesh.vertices[vertex]);
            const int cell = row * cells + column;
            const auto replace = [&](int triangle) {
                for (int& corner : mesh.triangles[triangle]) {
                    if (corner == vertex)
                        corner = twin;
                }
            };
            const auto cornerOf = [&](int triangle, qsizetype index) {
                return mesh.triangles[triangle][size_t(index)];
            };
            replace(2 * cell);
            replace(2 * cell + 1);
            replace(2 * (cell - 1));
            // Corner 1 of the cell's lower triangle is to the right; the upper left cell's, corner 0.
            mesh.triangles.append({vertex, cornerOf(2 * cell, 1), twin});
            mesh.triangles.append({vertex, twin, cornerOf(2 * (cell - 1), 0)});
        }
    }
    return mesh;
}

/// The mesh with the winding of every triangle left to chance.
inline TestMesh WithRandomWindings(TestMesh mesh, unsigned seed)
{
    std::mt19937 random(seed);
    for (auto& corners : mesh.triangles) {
        if (random() % 2 == 0)
            std::swap(corners[1], corners[2]);
    }
    return mesh;
}
