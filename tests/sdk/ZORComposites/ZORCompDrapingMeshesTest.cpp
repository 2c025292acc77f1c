// Tests that draping copes with meshes of every kind.

#include "DrapingChecks.h"
#include "sdk/ZORGeometry/TestMeshes.h"
#include "support/TestData.h"

#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoStlLoader.h>
#include <ZORMathematics/ZORMathBoundingBox.h>
#include <ZORMathematics/ZORMathPoint.h>

#include <QDir>
#include <QFile>

#include <random>

namespace {

const QString kNothingFits = QStringLiteral("no cell of the net fits on the surface at the seed");

// Drapes from the middle of a triangle and checks the net.
// \return the number of cells; 0 where none fits
qsizetype CellsFrom(const ZORGeoSurface& surface, int triangle, const ZORCompStrategyParameters& parameters)
{
    ZORMathPoint a, b, c;
    surface.GetVertices(triangle, a, b, c);
    const ZORMathPoint middle = a + (1 / 3.0) * ((b - a) + (c - a));
    ZORCompDrapingNet net;
    const QString failure = MessageOf([&] {
        net = ZORCompKinematicDraping(&surface, parameters)
                  .Run({&surface, triangle, 1 / 3.0, 1 / 3.0, middle}, {1, 0.3, 0.2});
    });
    if (!failure.isEmpty()) {
        EXPECT_EQ(kNothingFits, failure);
        return 0;
    }
    CheckNet(surface, net);
    return net.GetCells().size();
}

// Vertices and triangles at random: folds, edges of many triangles, repeated triangles, everything.
TestMesh Tangle(unsigned seed)
{
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> coordinate(-1, 1);
    TestMesh mesh;
    const int numVertices = 4 + int(random() % 20);
    for (int i = 0; i < numVertices; ++i)
        mesh.vertices << ZORMathPoint(coordinate(random), coordinate(random), 0.3 * coordinate(random));
    const int numTriangles = 1 + int(random() % 40);
    for (int i = 0; i < numTriangles; ++i)
        mesh.triangles.append(
            {int(random() % numVertices), int(random() % numVertices), int(random() % numVertices)});
    return mesh;
}

} // namespace

TEST(ZORCompDrapingMeshesTest, DrapesRandomMeshes)
{
    qsizetype cells = 0;
    for (unsigned seed = 0; seed < 300; ++seed) {
        SCOPED_TRACE(seed);
        const auto surface = Tangle(seed).Make();
        const double step = std::array<double, 3>{0.3, 0.1, 0.03}[seed % 3];
        cells += CellsFrom(*surface, 1 + int(seed) % surface->GetNumTriangles(), WithStep(step, seed));
        if (testing::Test::HasFatalFailure())
            return;
    }
    EXPECT_GT(cells, 10000);
}

TEST(ZORCompDrapingMeshesTest, DrapesRoughSurfaces)
{
    for (unsigned seed = 0; seed < 20; ++seed) {
        SCOPED_TRACE(seed);
        TestMesh mesh = WithRandomWindings(JitteredSheet(12, seed), seed);
        std::mt19937 random(seed);
        std::uniform_real_distribution<double> height(0, 0.004 * seed);
        for (ZORMathPoint& vertex : mesh.vertices)
            vertex.SetZ(height(random));
        const auto surface = mesh.Make();
        EXPECT_GT(CellsFrom(*surface, 140, WithStep(seed % 2 ? 0.05 : 0.013, seed)), seed < 10 ? 100 : 0);
    }
}

TEST(ZORCompDrapingMeshesTest, DrapesOverCreasesOfACube)
{
    const auto cube = Cube().Make();
    for (int triangle = 1; triangle <= cube->GetNumTriangles(); ++triangle) {
        for (const double step : {0.3, 0.05})
            EXPECT_GT(CellsFrom(*cube, triangle, WithStep(step, 0.4 * triangle)), 0);
    }
    EXPECT_GT(CellsFrom(*cube, 5, WithStep(0.011, 0.3)), 30000);
}

TEST(ZORCompDrapingMeshesTest, EndsAtEdgesOfThreeTriangles)
{
    TestMesh mesh = Sheet(8);
    const int first = 4 * 9 + 2; // a wall on the edges in the middle row
    const int top = int(mesh.vertices.size());
    mesh.vertices << ZORMathPoint(0.3, 0.5, 1);
    for (int i = 0; i < 4; ++i)
        mesh.triangles.append({first + i, first + i + 1, top});
    const auto surface = mesh.Make();
    const ZORCompDrapingNet net = Drape(*surface, WithStep(0.02), {0.1, 0.2, 0}, {1, 0, 0});
    CheckNet(*surface, net);
    EXPECT_GT(AreaOf(net), 0.85) << "around the wall";
    for (const ZORCompDrapingNode& node : net.GetNodes())
        EXPECT_EQ(0, node.location.point.GetZ());
}

TEST(ZORCompDrapingMeshesTest, KnowsTheTwoSidesOfAThinPart)
{
    // A flat box, thinner than a step: one side is not taken for the other.
    const auto box = Box(1, 1, 0.001).Make();
    const ZORCompDrapingNet net = Drape(*box, WithStep(0.02), {0.5, 0.5, 0.001}, {1, 0, 0});
    CheckNet(*box, net);
    EXPECT_GT(AreaOf(net), 0.9);
    double upper = 0;
    for (const ZORCompDrapingCell& cell : net.GetCells())
        upper += net.GetNodes()[cell.nodes[0]].location.point.GetZ() == 0.001 ? 4e-4 : 0;
    EXPECT_NEAR(1, upper, 0.08);
}

TEST(ZORCompDrapingMeshesTest, DrapesRealMeshes)
{
    ZOR_REQUIRE_TEST_DATA(folder, "meshes/meshes");
    const QStringList files = QDir(folder).entryList({QStringLiteral("*.stl")}, QDir::Files, QDir::Name);
    ASSERT_FALSE(files.isEmpty());
    for (const QString& name : files) {
        SCOPED_TRACE(name.toStdString());
        QFile file(QDir(folder).filePath(name));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        ZORGeoContainer container;
        const QList<const ZORGeoSurface*> surfaces =
            ZORGeoStlLoader(&file).Load(&container, ZORSysValue::Unit());
        qsizetype cells = 0;
        for (const ZORGeoSurface* surface : surfaces) {
            const double size = surface->GetBoundingBox().GetDiagonal();
            for (const int parts : {30, 100}) {
                for (int i = 0; i < 3; ++i) {
                    const int triangle = 1 + (surface->GetNumTriangles() - 1) * (2 * i + 1) / 6;
                    cells += CellsFrom(*surface, triangle, WithStep(size / parts, 0.7 * i));
                }
            }
        }
        EXPECT_GT(cells, 0);
    }
}

TEST(ZORCompDrapingMeshesTest, CoversAWing)
{
    ZOR_REQUIRE_TEST_DATA(path, "meshes/meshes/wing_5degrees.stl");
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    ZORGeoContainer container;
    const auto surfaces = ZORGeoStlLoader(&file).Load(&container, ZORSysValue::Unit());
    ASSERT_EQ(1, surfaces.size());
    const ZORGeoSurface& wing = *surfaces.first();
    const ZORMathBoundingBox box = wing.GetBoundingBox();
    const ZORCompDrapingNet net = Drape(wing, WithStep(box.GetDiagonal() / 100), box.GetCenter(), {1, 0, 0});
    CheckNet(wing, net);
    EXPECT_GT(AreaOf(net), 0.7 * wing.GetArea());
    EXPECT_LT(AreaOf(net), 1.02 * wing.GetArea());
}
