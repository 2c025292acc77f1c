// Tests of ZORTopFactory::CreateSurface on surfaces with known faces.

#include "BodyChecks.h"
#include "TopologyTest.h"

namespace {

class ZORTopFactorySurfaceTest : public TopologyTest
{
protected:
    // "faces/edges/vertices" of a body whose parts fit together.
    QString CheckedFigures(const TestMesh& mesh, double degrees = 45)
    {
        const ZORTopBody* const body = Divide(mesh, degrees);
        if (body)
            CheckBody(*body, *qobject_cast<const ZORGeoSurface*>(body->GetGeometry()));
        return Figures(body);
    }

    static TestMesh CappedCylinder(int sides, int rows)
    {
        TestMesh mesh = Prism(sides, 10, 30, rows);
        const int top = rows * sides;
        const int center = int(mesh.vertices.size());
        mesh.vertices << ZORMathPoint(0, 0, 0) << ZORMathPoint(0, 0, 30);
        for (int i = 0; i < sides; ++i) {
            const int next = (i + 1) % sides;
            mesh.triangles.append({center, next, i});
            mesh.triangles.append({center + 1, top + i, top + next});
        }
        return mesh;
    }

    // Adds a copy of a mesh, moved along x.
    static void Append(TestMesh& mesh, const TestMesh& other, double x)
    {
        const int first = int(mesh.vertices.size());
        for (const ZORMathPoint& vertex : other.vertices)
            mesh.vertices.append(vertex + ZORMathVector(x, 0, 0));
        for (const auto& [a, b, c] : other.triangles)
            mesh.triangles.append({first + a, first + b, first + c});
    }
};

TEST_F(ZORTopFactorySurfaceTest, CubeHasSixFacesTwelveEdgesAndEightVertices)
{
    const ZORTopBody* const body = Divide(Cube());
    ASSERT_EQ("6/12/8", Figures(body));
    CheckBody(*body, *qobject_cast<const ZORGeoSurface*>(body->GetGeometry()));
    for (int i = 0; i < 6; ++i) {
        EXPECT_EQ(2, body->GetFace(i).GetNumTriangles());
        EXPECT_EQ(4, body->GetFace(i).GetNumEdges());
    }
    for (int i = 0; i < 12; ++i) {
        const ZORTopEdge edge = body->GetEdge(i);
        EXPECT_EQ(2, edge.GetNumVertices());
        ASSERT_EQ(2, edge.GetNumFaces());
        EXPECT_NE(edge.GetFace(0), edge.GetFace(1));
        EXPECT_EQ(1, edge.GetPoints().constFirst().DistanceTo(edge.GetPoints().constLast()));
    }
    for (int i = 0; i < 8; ++i)
        EXPECT_EQ(3, body->GetVertex(i).GetNumEdges());
}

TEST_F(ZORTopFactorySurfaceTest, CubeTurnsByARightAngle)
{
    EXPECT_EQ("6/12/8", CheckedFigures(Cube(), 0));
    EXPECT_EQ("6/12/8", CheckedFigures(Cube(), 89.99));
    EXPECT_EQ("1/0/0", CheckedFigures(Cube(), 90));
}

TEST_F(ZORTopFactorySurfaceTest, CappedCylinderHasThreeFacesAndTwoClosedEdges)
{
    const ZORTopBody* const body = Divide(CappedCylinder(64, 5));
    ASSERT_EQ("3/2/0", Figures(body));
    CheckBody(*body, *qobject_cast<const ZORGeoSurface*>(body->GetGeometry()));
    for (int i = 0; i < 2; ++i) {
        EXPECT_TRUE(body->GetEdge(i).IsClosed());
        EXPECT_EQ(65, body->GetEdge(i).GetPoints().size());
        EXPECT_EQ(2, body->GetEdge(i).GetNumFaces());
    }
    EXPECT_EQ(2, body->GetFace(0).GetNumEdges()) << "the mantle";
    EXPECT_EQ(1, body->GetFace(1).GetNumEdges()) << "a cap";
    EXPECT_EQ("10/24/16", CheckedFigures(CappedCylinder(8, 3), 44.99)) << "an eightfold prism";
    EXPECT_EQ("3/2/0", CheckedFigures(CappedCylinder(8, 3), 45));
}

TEST_F(ZORTopFactorySurfaceTest, SmoothClosedSurfacesAreOneFaceWithoutEdges)
{
    EXPECT_EQ("1/0/0", CheckedFigures(Torus(40, 20, 100, 30)));
    EXPECT_EQ("1/0/0", CheckedFigures(Sphere(10, 16)));
}

TEST_F(ZORTopFactorySurfaceTest, BordersAreEdges)
{
    EXPECT_EQ("1/1/0", CheckedFigures(Sheet(8))) << "a border is not divided at its corners";
    EXPECT_EQ("1/2/0", CheckedFigures(Prism(64, 10, 20, 3)));
    const ZORTopBody* const body = Divide(Sheet(1));
    ASSERT_EQ("1/1/0", Figures(body));
    EXPECT_EQ(1, body->GetEdge(0).GetNumFaces());
    EXPECT_EQ(ZORMathSetOfPoints({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {0, 0, 0}}),
              body->GetEdge(0).GetPoints())
        << "in the winding of the first triangle";
}

TEST_F(ZORTopFactorySurfaceTest, FlippedWindingsChangeNothing)
{
    for (unsigned seed = 0; seed < 10; ++seed) {
        EXPECT_EQ("6/12/8", CheckedFigures(WithRandomWindings(Cube(), seed)));
        EXPECT_EQ("3/2/0", CheckedFigures(WithRandomWindings(CappedCylinder(32, 3), seed)));
        EXPECT_EQ("1/0/0", CheckedFigures(WithRandomWindings(Torus(20, 20, 100, 30), seed)));
        EXPECT_EQ("1/1/0", CheckedFigures(WithRandomWindings(SliverSheet(4), seed)));
    }
}

TEST_F(ZORTopFactorySurfaceTest, MobiusStripIsOneFaceWithOneBorder)
{
    const int columns = 60;
    TestMesh strip;
    for (int column = 0; column < columns; ++column) {
        const double angle = 2 * std::numbers::pi * column / columns;
        for (const double width : {-1.0, 1.0}) {
            const double distance = 10 + width * std::cos(angle / 2);
            strip.vertices.append(ZORMathPoint(distance * std::cos(angle), distance * std::sin(angle),
                                               width * std::sin(angle / 2)));
        }
    }
    for (int column = 0; column < columns; ++column) {
        const bool isLast = column + 1 == columns; // joins the first one upside down
        const int a = 2 * column, b = a + 1;
        const int c = isLast ? 1 : a + 2, d = isLast ? 0 : a + 3;
        strip.triangles << ZORGeoSurface::Corners{a, c, b} << ZORGeoSurface::Corners{b, c, d};
    }
    EXPECT_EQ("1/1/0", CheckedFigures(strip));
}

TEST_F(ZORTopFactorySurfaceTest, TrianglesWithoutAreaDivideNoFace)
{
    EXPECT_EQ("1/1/0", CheckedFigures(SliverSheet(4), 0));
    EXPECT_EQ("1/1/0", CheckedFigures(DoubledSheet(4), 0));
    EXPECT_EQ("1/1/0", CheckedFigures({{{0, 0, 0}, {1, 0, 0}, {2, 0, 0}}, {{0, 1, 2}}}, 0));
    EXPECT_EQ("1/1/0", CheckedFigures({{{1, 1, 1}, {1, 1, 1}, {1, 1, 1}}, {{0, 1, 2}}}, 0));
}

TEST_F(ZORTopFactorySurfaceTest, TriangleWithoutAreaOnACreaseBelongsToOneOfItsFaces)
{
    // Two walls at a right angle along x; only the lower one has a vertex in the middle of their edge.
    const QList<ZORMathPoint> vertices{{0, 0, 0}, {2, 0, 0}, {1, 0, 0}, {1, 0, 3}, {1, 3, 0}};
    const TestMesh walls{vertices, {{0, 1, 3}, {0, 2, 1}, {0, 4, 2}, {2, 4, 1}}};
    const ZORTopBody* const body = Divide(walls);
    ASSERT_EQ("2/3/2", Figures(body));
    CheckBody(*body, *qobject_cast<const ZORGeoSurface*>(body->GetGeometry()));
    EXPECT_EQ(2, body->GetFace(0).GetNumTriangles());
    EXPECT_EQ(2, body->GetFace(0).GetTriangle(1)) << "that of the neighbour at its longest side";
    EXPECT_EQ("1/1/0", CheckedFigures(walls, 90));
}

TEST_F(ZORTopFactorySurfaceTest, StripsOfTrianglesWithoutAreaKeepTheirCrease)
{
    // As above, but both walls have vertices of their own along the edge: five triangles without area.
    const QList<ZORMathPoint> vertices{{0, 0, 0}, {4, 0, 0}, {1, 0, 0}, {3, 0, 0},
                                       {2, 0, 0}, {2, 0, 3}, {2, 3, 0}, {1.5, 0, 0}};
    const TestMesh walls{vertices,
                         {{0, 2, 5},
                          {2, 3, 5},
                          {3, 1, 5}, // upper
                          {0, 6, 4},
                          {4, 6, 1}, // lower
                          {0, 4, 2},
                          {2, 4, 7},
                          {2, 7, 3},
                          {7, 4, 3},
                          {4, 1, 3}}};
    const ZORTopBody* const body = Divide(walls);
    ASSERT_NE(nullptr, body);
    CheckBody(*body, *qobject_cast<const ZORGeoSurface*>(body->GetGeometry()));
    EXPECT_EQ(2, body->GetNumFaces());
    EXPECT_EQ("1/1/0", CheckedFigures(walls, 90));
}

TEST_F(ZORTopFactorySurfaceTest, CollapsedAndRepeatedTrianglesGoWithTheirLikes)
{
    TestMesh mesh = Cube();
    mesh.triangles << ZORGeoSurface::Corners{2, 1, 0} << ZORGeoSurface::Corners{5, 4, 6}
                   << ZORGeoSurface::Corners{0, 0, 1} << ZORGeoSurface::Corners{3, 3, 3}
                   << ZORGeoSurface::Corners{0, 1, 2};
    EXPECT_EQ("6/12/8", CheckedFigures(mesh));
    const QList<ZORMathPoint> corners{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}};
    EXPECT_EQ("1/1/0", CheckedFigures({corners, {{0, 1, 2}, {1, 2, 0}, {0, 2, 1}}}));
    EXPECT_EQ("1/0/0", CheckedFigures({corners, {{0, 0, 1}, {1, 1, 1}}}));
    EXPECT_EQ("2/0/0", CheckedFigures({corners, {{0, 0, 1}, {2, 2, 2}}}));
}

TEST_F(ZORTopFactorySurfaceTest, MoreThanTwoTrianglesMeetAtAnEdge)
{
    const TestMesh book{{{0, 0, 0}, {0, 0, 1}, {1, 0, 0}, {-1, 1, 0}, {-1, -1, 0}, {0, 1, 1}},
                        {{0, 1, 2}, {0, 1, 3}, {1, 0, 4}, {0, 1, 5}}};
    const ZORTopBody* const body = Divide(book, 180);
    ASSERT_EQ("4/5/2", Figures(body));
    CheckBody(*body, *qobject_cast<const ZORGeoSurface*>(body->GetGeometry()));
    EXPECT_EQ(4, body->GetEdge(0).GetNumFaces());
    EXPECT_EQ(5, body->GetVertex(0).GetNumEdges());
}

TEST_F(ZORTopFactorySurfaceTest, CreaseThatEndsWithinAFaceMeetsItTwice)
{
    // A sheet with a ridge that runs from the border to the middle and flattens out there.
    TestMesh mesh = Sheet(4);
    for (ZORMathPoint& vertex : mesh.vertices) {
        if (vertex.GetX() == 0.5 && vertex.GetY() < 0.5)
            vertex = vertex + ZORMathVector(0, 0, 0.25 * (0.5 - vertex.GetY()) / 0.5);
    }
    const ZORTopBody* const body = Divide(mesh, 60);
    ASSERT_NE(nullptr, body);
    CheckBody(*body, *qobject_cast<const ZORGeoSurface*>(body->GetGeometry()));
    ASSERT_EQ("1/2/2", Figures(body));
    bool isMetTwice = false;
    for (int i = 0; i < 2; ++i) {
        const ZORTopEdge edge = body->GetEdge(i);
        isMetTwice |= edge.GetNumFaces() == 2 && edge.GetFace(0) == edge.GetFace(1) && !edge.IsClosed();
    }
    EXPECT_TRUE(isMetTwice);
    EXPECT_EQ(2, body->GetFace(0).GetNumEdges());
}

TEST_F(ZORTopFactorySurfaceTest, PiecesAreFacesOfOneBody)
{
    TestMesh mesh;
    for (int i = 0; i < 100; ++i) {
        Append(mesh, Cube(), 3 * i);
        Append(mesh, Tetrahedron(), 3 * i + 1.5);
    }
    EXPECT_EQ("1000/1800/1200", CheckedFigures(mesh));
    TestMesh soup; // triangles that share nothing
    for (int i = 0; i < 1000; ++i)
        Append(soup, {{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, {{0, 1, 2}}}, i);
    EXPECT_EQ("1000/1000/0", CheckedFigures(soup));
}

TEST_F(ZORTopFactorySurfaceTest, SizeOfTheSurfaceDoesNotMatter)
{
    for (const double size : {1e-150, 1e-100, 1e-9, 1e9, 1e59})
        EXPECT_EQ("6/12/8", CheckedFigures(Box(size, 2 * size, 3 * size))) << size;
}

TEST_F(ZORTopFactorySurfaceTest, NarrowTrianglesHaveNormalsOfTheirOwn)
{
    EXPECT_EQ("6/12/8", CheckedFigures(Box(1, 1, 1e-6)));
}

} // namespace
