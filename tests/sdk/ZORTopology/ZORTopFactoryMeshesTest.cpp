// Tests of ZORTopFactory::CreateSurface on random surfaces and real ones.

#include "BodyChecks.h"
#include "TopologyTest.h"
#include "support/TestData.h"

#include <ZORGeometry/ZORGeoStlLoader.h>

#include <QFile>

namespace {

class ZORTopFactoryMeshesTest : public TopologyTest
{
protected:
    void Compare(const TestMesh& mesh, double degrees)
    {
        ZORGeoContainer own;
        const auto surface = mesh.Make(&own);
        const ZORTopBody* const body = ZORTopFactory(&own).CreateSurface(surface.get(), degrees * kDegree);
        ASSERT_NE(nullptr, body);
        CheckBody(*body, *surface);
        CompareBody(*body, *surface, degrees * kDegree);
    }

    std::mt19937 random{20};
};

TEST_F(ZORTopFactoryMeshesTest, RoughSheetsAreDividedByTheBook)
{
    std::uniform_real_distribution<double> height(-0.1, 0.1);
    for (unsigned run = 0; run < 60; ++run) {
        SCOPED_TRACE(run);
        TestMesh mesh = WithRandomWindings(JitteredSheet(6, run), run);
        for (ZORMathPoint& vertex : mesh.vertices)
            vertex = vertex + ZORMathVector(0, 0, height(random));
        for (unsigned holes = random() % 8; holes > 0; --holes)
            mesh.triangles.removeAt(qsizetype(random() % size_t(mesh.triangles.size())));
        Compare(mesh, double(random() % 90));
        if (HasFailure())
            return;
    }
}

TEST_F(ZORTopFactoryMeshesTest, TanglesAreDividedByTheBook)
{
    std::uniform_real_distribution<double> coordinate(-1, 1);
    for (unsigned run = 0; run < 400; ++run) {
        SCOPED_TRACE(run);
        TestMesh mesh;
        const unsigned numVertices = 4 + random() % 10;
        for (unsigned i = 0; i < numVertices; ++i)
            mesh.vertices.append(ZORMathPoint(coordinate(random), coordinate(random), coordinate(random)));
        const auto corner = [&] { return int(random() % numVertices); };
        for (unsigned i = 1 + random() % 40; i > 0; --i)
            mesh.triangles.append({corner(), corner(), corner()});
        Compare(mesh, double(random() % 180));
        if (HasFailure())
            return;
    }
}

TEST_F(ZORTopFactoryMeshesTest, LargeSurfacesAreDivided)
{
    const ZORTopBody* const sheet = Divide(Sheet(700), 0);
    EXPECT_EQ("1/1/0", Figures(sheet));
    EXPECT_EQ(980000, sheet->GetFace(0).GetNumTriangles());
    const ZORTopBody* const folds =
        Divide(Grid(400, 400, false, false,
                    [](int column, int row) { return ZORMathPoint(column, row, column % 2 == 0 ? 0 : 2); }),
               45);
    EXPECT_EQ(400, folds->GetNumFaces());
    EXPECT_EQ(2 * 399, folds->GetNumVertices());
    EXPECT_EQ(399 + 2 * 399, folds->GetNumEdges());
}

// The regions and creases of a real file at 45 degrees.
TEST_F(ZORTopFactoryMeshesTest, RealSurfacesHaveTheirRegionsAndCreases)
{
    ZOR_REQUIRE_TEST_DATA(table, "meshes/expected.tsv");
    const QString folder = table.section('/', 0, -2) + '/';
    QFile expectations(table);
    ASSERT_TRUE(expectations.open(QIODevice::ReadOnly));
    int numFiles = 0;
    while (!expectations.atEnd()) {
        const QString line = QString::fromUtf8(expectations.readLine());
        const auto figure = [&](const QString& key) {
            return line.section('\t' + key + '=', 1, 1).section('\t', 0, 0).toInt();
        };
        const QString name = line.section('\t', 0, 0);
        SCOPED_TRACE(name.toStdString());
        QFile file(folder + name);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        ZORGeoContainer own;
        const auto surfaces = ZORGeoStlLoader(&file).Load(&own, ZORSysValue::Millimeter);
        if (surfaces.size() != 1)
            continue; // the table counts what several solids share
        const ZORGeoSurface& surface = *surfaces.constFirst();
        const ZORTopBody* const body = ZORTopFactory(&own).CreateSurface(&surface, 45 * kDegree);
        CheckBody(*body, surface);
        int borders = 0, creases = 0, others = 0;
        for (int i = 0; i < body->GetNumEdges(); ++i) {
            const ZORTopEdge edge = body->GetEdge(i);
            int& count = edge.GetNumFaces() == 1 ? borders : edge.GetNumFaces() == 2 ? creases : others;
            count += int(edge.GetSides().size());
        }
        EXPECT_EQ(figure("regions45"), body->GetNumFaces());
        EXPECT_EQ(figure("crease45"), creases);
        EXPECT_EQ(figure("border"), borders);
        EXPECT_EQ(figure("nonmanifold"), others);
        ++numFiles;
    }
    EXPECT_GT(numFiles, 25);
}

} // namespace
