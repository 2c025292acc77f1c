// Small surfaces for tests.

#pragma once

#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORMathematics/ZORMathPoint.h>

#include <QList>

#include <cmath>
#include <memory>
#include <random>

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
        const double latitude = M_PI * (double(row) / rows - 0.5);
        for (int column = 0; column < columns; ++column) {
            const double longitude = 2 * M_PI * column / columns;
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
