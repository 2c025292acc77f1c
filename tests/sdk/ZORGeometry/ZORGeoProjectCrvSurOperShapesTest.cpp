// Tests of ZORGeoProjectCrvSurOper: thin, torn, degenerate and real surfaces.

#include "ProjectionTest.h"
#include "support/Printers.h"
#include "support/TestData.h"

#include <ZORGeometry/ZORGeoStlLoader.h>

#include <QFile>

namespace {

using ZORGeoProjectCrvSurOperShapesTest = ProjectionTest;

/// A sheet over the unit square and another one below it, upside down.
TestMesh DoubleSheet(int cells, double thickness)
{
    TestMesh mesh = Sheet(cells);
    const int count = int(mesh.vertices.size());
    const TestMesh above = mesh;
    for (const ZORMathPoint& vertex : above.vertices)
        mesh.vertices.append(vertex - ZORMathVector(0, 0, thickness));
    for (const auto& [a, b, c] : above.triangles)
        mesh.triangles.append({a + count, c + count, b + count});
    return mesh;
}

/// The same with walls between the borders: a closed plate.
TestMesh Plate(int cells, double thickness)
{
    TestMesh mesh = DoubleSheet(cells, thickness);
    const int count = int(mesh.vertices.size()) / 2;
    const auto wall = [&](int from, int to) {
        mesh.triangles.append({from + count, to + count, to});
        mesh.triangles.append({from + count, to, from});
    };
    const int row = cells + 1;
    for (int i = 0; i < cells; ++i) {
        wall(i, i + 1);
        wall(i * row + cells, (i + 1) * row + cells);
        wall(cells * row + i + 1, cells * row + i);
        wall((i + 1) * row, i * row);
    }
    return mesh;
}

TestMesh Waves(int cells)
{
    TestMesh mesh = Sheet(cells);
    for (ZORMathPoint& vertex : mesh.vertices)
        vertex.SetZ(0.03 * std::sin(9 * vertex.GetX()) * std::cos(7 * vertex.GetY()));
    return mesh;
}

double Extent(const ZORGeoCurve& curve, double (ZORMathPoint::*coordinate)() const)
{
    double lower = INFINITY;
    double upper = -INFINITY;
    for (int i = 0; i < curve.GetNumPoints(); ++i) {
        lower = std::min(lower, (curve.GetPoint(i).*coordinate)());
        upper = std::max(upper, (curve.GetPoint(i).*coordinate)());
    }
    return upper - lower;
}

TEST_F(ZORGeoProjectCrvSurOperShapesTest, StaysOnOneFaceOfAThinPlate)
{
    ZORMathSetOfPoints winding;
    for (int i = 0; i <= 100; ++i)
        winding.append(ZORMathPoint(0.2 + 0.006 * i, 0.4, -0.005 + 0.02 * std::cos(0.7 * i)));
    for (const TestMesh& mesh : {Plate(8, 0.01), DoubleSheet(8, 0.01), DoubleSheet(8, 0)}) {
        const auto* const curve = Project(Add(mesh), winding);
        ASSERT_TRUE(curve);
        EXPECT_EQ(0, Extent(*curve, &ZORMathPoint::GetZ));
        EXPECT_NEAR(0.6, curve->GetLength(), 1e-6);
    }
}

TEST_F(ZORGeoProjectCrvSurOperShapesTest, StaysClosedWhereTwoFacetsAreEquallyNear)
{
    for (const double size : {1e-6, 1.0, 1e6}) {
        const auto scaled = [size](double x, double y, double z) {
            return ZORMathPoint(size * x, size * y, size * z);
        };
        // A valley along y. Above its bottom both sides are equally near.
        const ZORGeoSurface* const valley = Add({{scaled(0, -4, 0), scaled(0, 4, 0), scaled(4, -4, 4),
                                                  scaled(4, 4, 4), scaled(-4, -4, 4), scaled(-4, 4, 4)},
                                                 {{0, 2, 3}, {0, 3, 1}, {0, 5, 4}, {0, 1, 5}}});
        const auto project = [&](double offset) {
            const ZORGeoPolyline source(&m_container,
                                        {scaled(-offset, 0, 1), scaled(1, 0, 1), scaled(1, 1, 1),
                                         scaled(0.5, 1, 1), scaled(offset, 0, 1)},
                                        true);
            ZORGeoProjectCrvSurOper oper(valley, &source);
            oper.Run();
            return oper.GetCurve();
        };
        for (const double offset : {0.0, 5e-15, 1e-10}) {
            const ZORGeoCurveOnSurface* const curve = project(offset);
            ASSERT_TRUE(curve);
            EXPECT_EQ(curve->GetPoint(0), curve->GetPoint(curve->GetNumPoints() - 1))
                << size << " " << offset;
            EXPECT_GT(curve->GetLength(), 3 * size);
        }
        const ZORGeoCurveOnSurface* const open = project(1e-6);
        EXPECT_NEAR(size, open->GetPoint(0).DistanceTo(open->GetPoint(open->GetNumPoints() - 1)),
                    1e-5 * size);
    }
}

TEST_F(ZORGeoProjectCrvSurOperShapesTest, GoesRoundTheRimOfAPlate)
{
    ZORMathSetOfPoints loop;
    for (int i = 0; i <= 60; ++i) {
        const double angle = 2 * std::numbers::pi * (i % 60) / 60;
        loop.append(ZORMathPoint(0.5 + 0.8 * std::cos(angle), 0.45, -0.05 + 0.3 * std::sin(angle)));
    }
    const auto* const curve = Project(Add(Plate(8, 0.1)), loop);
    ASSERT_TRUE(curve);
    EXPECT_TRUE(curve->IsClosed());
    EXPECT_NEAR(2.2, curve->GetLength(), 1e-6);
}

TEST_F(ZORGeoProjectCrvSurOperShapesTest, KeepsTheLongestPieceOfATornCurve)
{
    TestMesh mesh = Sheet(8);
    const int count = int(mesh.vertices.size());
    const TestMesh first = mesh;
    for (const ZORMathPoint& vertex : first.vertices)
        mesh.vertices.append(vertex + ZORMathVector(5, 0, 0));
    for (const auto& [a, b, c] : first.triangles)
        mesh.triangles.append({a + count, b + count, c + count});
    const auto* const surface = Add(mesh);
    const auto* const curve = Project(surface, {{0.7, 0.5, 1}, {5.9, 0.5, 1}});
    ASSERT_TRUE(curve);
    EXPECT_NEAR(0.9, curve->GetLength(), 1e-9);
    EXPECT_TRUE(IsNear({5, 0.5, 0}, curve->GetPoint(0)));
    EXPECT_TRUE(IsNear({5.9, 0.5, 0}, LastPoint(*curve)));
    // The piece goes on over the start of a closed source.
    const auto* const closed = Project(
        surface, {{0.5, 0.2, 0}, {0.5, 0.8, 0}, {5.5, 0.8, 0}, {5.5, 0.7, 0}, {0.4, 0.1, 0}, {0.5, 0.2, 0}});
    ASSERT_TRUE(closed);
    EXPECT_NEAR(0, closed->GetPoint(0).GetX() - 1, 1e-9);
    EXPECT_NEAR(0, LastPoint(*closed).GetX() - 1, 1e-9);
}

TEST_F(ZORGeoProjectCrvSurOperShapesTest, DoesNotCareForWindings)
{
    TestMesh mesh = Waves(16);
    const ZORMathSetOfPoints source = Circle({0.5, 0.5, 0.2}, 0.4, 50);
    const auto* const curve = Project(Add(mesh), source);
    for (qsizetype i = 0; i < mesh.triangles.size(); i += 3)
        std::swap(mesh.triangles[i][1], mesh.triangles[i][2]);
    const auto* const flipped = Project(Add(mesh), source);
    ASSERT_TRUE(curve && flipped);
    EXPECT_TRUE(flipped->IsClosed());
    EXPECT_NEAR(curve->GetLength(), flipped->GetLength(), 1e-3);
}

TEST_F(ZORGeoProjectCrvSurOperShapesTest, StaysFiniteOnDegenerateTriangles)
{
    TestMesh mesh = Waves(12);
    std::mt19937 random(3);
    std::uniform_int_distribution<int> vertex(0, int(mesh.vertices.size()) - 2);
    for (int i = 0; i < 40; ++i) {
        const int moved = vertex(random);
        mesh.vertices[moved] = mesh.vertices[moved + 1];
    }
    for (int i = 0; i < 10; ++i)
        mesh.triangles.append({vertex(random), i, i});
    const auto* const sheet = Add(mesh);
    const auto* const soup = Add(Soup(100, 5));
    std::uniform_real_distribution<double> coordinate(-0.5, 1.5);
    for (int i = 0; i < 20; ++i) {
        ZORMathSetOfPoints points;
        for (int k = 0; k < 4; ++k)
            points.append(ZORMathPoint(coordinate(random), coordinate(random), 0.2 * coordinate(random)));
        EXPECT_TRUE(Project(sheet, points));
        EXPECT_TRUE(Project(soup, points));
    }
}

TEST_F(ZORGeoProjectCrvSurOperShapesTest, EndsForSourcesOfAnySize)
{
    const auto* const sheet = Add(Waves(10));
    ZORMathSetOfPoints many;
    for (int i = 0; i < 1000000; ++i)
        many.append(ZORMathPoint(1e-6 * i, 0.5 + 0.3 * std::sin(1e-5 * i), 0.1 * (i % 2)));
    const auto* const curve = Project(sheet, many);
    ASSERT_TRUE(curve);
    EXPECT_GT(curve->GetLength(), 1);
    EXPECT_LT(curve->GetNumPoints(), 100000);

    for (const double size : {1e6, 1e15, 1e60}) {
        const auto* const far = Project(sheet, {{-size, 0.3, size}, {size, 0.6, 0}, {0, size, -size}});
        ASSERT_TRUE(far);
        EXPECT_GE(far->GetNumPoints(), 1);
    }
    // Tiny triangles under a long source.
    TestMesh tiny = Waves(10);
    for (ZORMathPoint& point : tiny.vertices)
        point *= 1e-9;
    EXPECT_TRUE(Project(Add(tiny), {{-1, -1, 0.5}, {1, 1, -0.5}}));
    // Large ones, far away.
    for (ZORMathPoint& point : tiny.vertices)
        point = ZORMathPoint(1e50 * point.GetX() + 1e40, 1e50 * point.GetY(), 1e50 * point.GetZ());
    EXPECT_TRUE(Project(Add(tiny), {{-1e41, -1e41, 1e40}, {1e41, 1e41, -1e40}}));
}

ZORMathPoint NearestOfAll(const ZORGeoSurface& surface, const ZORMathPoint& point)
{
    ZORMathPoint nearest = NearestOfTriangle(surface, 1, point);
    for (int triangle = 2; triangle <= surface.GetNumTriangles(); ++triangle) {
        const ZORMathPoint candidate = NearestOfTriangle(surface, triangle, point);
        if (candidate.DistanceTo(point) < nearest.DistanceTo(point))
            nearest = candidate;
    }
    return nearest;
}

// Every corner of the source has its nearest place on the curve, one after the other.
TEST_F(ZORGeoProjectCrvSurOperShapesTest, PassesTheNearestPlacesOfRandomCurvesInOrder)
{
    std::mt19937 random(4);
    std::uniform_real_distribution<double> unit(-1, 1);
    int checked = 0;
    const auto check = [&](const ZORGeoSurface* surface, const ZORMathPoint& center, double size,
                           double height) {
        ZORMathSetOfPoints points;
        ZORMathPoint at = center;
        for (int k = 0; k < 10; ++k) {
            at = at + ZORMathVector(size * unit(random), size * unit(random), height * unit(random));
            points.append(at);
        }
        const auto* const curve = Project(surface, points);
        ASSERT_TRUE(curve);
        int index = 0;
        for (const ZORMathPoint& point : points) {
            const ZORMathPoint nearest = NearestOfAll(*surface, point);
            while (index < curve->GetNumPoints() && curve->GetPoint(index).DistanceTo(nearest) > 1e-9)
                ++index;
            ASSERT_LT(index, curve->GetNumPoints()) << "passes another place than the nearest";
            ++checked;
        }
        delete curve;
    };
    const auto* const sphere = Add(Sphere(1, 6));
    const auto* const sheet = Add(Waves(6));
    for (int i = 0; i < 500; ++i) {
        check(sphere, {1.2, 0.3, 0.2}, 0.1, 0.1);
        check(sheet, {0.5, 0.5, 0}, 0.2, 0.02);
    }
    EXPECT_EQ(10000, checked);
}

TEST_F(ZORGeoProjectCrvSurOperShapesTest, HoldsOnRealSurfaces)
{
    ZOR_REQUIRE_TEST_DATA(folder, "meshes/meshes");
    std::mt19937 random(5);
    std::uniform_real_distribution<double> unit(-0.6, 0.6);
    for (const char* const name :
         {"fandisk.stl", "boeing.stl", "beetle.stl", "teapot.stl", "wing_5degrees.stl",
          "elephant-with-holes.stl", "terrain-gmsh.stl", "NACA0012.stl"}) {
        SCOPED_TRACE(name);
        QFile file(folder + '/' + QLatin1String(name));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const auto surfaces = ZORGeoStlLoader(&file).Load(&m_container, ZORSysValue::Millimeter);
        ASSERT_FALSE(surfaces.isEmpty());
        const ZORMathBoundingBox box = surfaces.first()->GetBoundingBox();
        const ZORMathVector size = box.GetUpperPoint() - box.GetLowerPoint();
        for (int i = 0; i < 5; ++i) {
            ZORMathSetOfPoints points;
            for (int k = 0; k < 4; ++k)
                points.append(box.GetCenter()
                              + ZORMathVector(unit(random) * size.GetX(), unit(random) * size.GetY(),
                                              unit(random) * size.GetZ()));
            points.append(points.first());
            const auto* const curve = Project(surfaces.first(), points);
            ASSERT_TRUE(curve);
            EXPECT_GT(curve->GetLength(), 0);
        }
    }
}

} // namespace
