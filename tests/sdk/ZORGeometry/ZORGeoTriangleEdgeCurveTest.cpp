// Tests of ZORGeoTriangleEdgeCurve and of the border curves of surfaces.

#include "TestMeshes.h"
#include "support/ContainerContent.h"
#include "support/Printers.h"
#include "support/TestData.h"

#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoStlLoader.h>
#include <ZORGeometry/ZORGeoTriangleEdgeCurve.h>
#include <ZORSystem/ZORSysException.h>

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace {

using Edge = ZORGeoTriangleEdgeCurve::Edge;

class ZORGeoTriangleEdgeCurveTest : public testing::Test
{
protected:
    ZORGeoSurface* Add(const TestMesh& mesh) { return Register(mesh.Make(&m_container).release()); }

    static QList<qsizetype> EdgeCounts(const QList<const ZORGeoTriangleEdgeCurve*>& curves)
    {
        QList<qsizetype> counts;
        for (const ZORGeoTriangleEdgeCurve* curve : curves)
            counts.append(curve->GetEdges().size());
        return counts;
    }

    ZORGeoContainer m_container;
};

// Every side without a neighbour is in one curve, once; every curve is closed.
void CheckBorder(const ZORGeoSurface& surface, const QList<const ZORGeoTriangleEdgeCurve*>& curves)
{
    std::set<std::pair<int, int>> expected;
    for (int t = 1; t <= surface.GetNumTriangles(); ++t) {
        int across[3];
        surface.GetNeighbors(t, across[0], across[1], across[2]);
        for (int side = 0; side < 3; ++side) {
            if (across[side] == 0)
                expected.insert({t, side});
        }
    }
    std::set<std::pair<int, int>> found;
    for (const ZORGeoTriangleEdgeCurve* curve : curves) {
        EXPECT_TRUE(curve->IsClosed());
        EXPECT_EQ(curve->GetNumPoints(), curve->GetEdges().size() + 1);
        EXPECT_FALSE(curve->GetEdges().constFirst().isReversed);
        for (const Edge& edge : curve->GetEdges())
            EXPECT_TRUE(found.insert({edge.triangle, edge.side}).second);
    }
    EXPECT_EQ(expected, found);
}

TEST_F(ZORGeoTriangleEdgeCurveTest, FollowsTheSidesOfTriangles)
{
    ZORGeoSurface* const surface = Add(Cube());
    // Down the vertical edge at the origin, then along the bottom's diagonal.
    const ZORGeoTriangleEdgeCurve curve(surface, {{11, 1, true}, {1, 0, false}});
    ASSERT_EQ(3, curve.GetNumPoints());
    EXPECT_EQ(ZORMathPoint(0, 0, 1), curve.GetPoint(0));
    EXPECT_EQ(ZORMathPoint(0, 0, 0), curve.GetPoint(1));
    EXPECT_EQ(ZORMathPoint(1, 1, 0), curve.GetPoint(2));
    EXPECT_EQ(11, curve.GetLocations().constFirst().triangle);
    EXPECT_EQ(1, curve.GetLocations().at(1).triangle);
    EXPECT_EQ(1, curve.GetLocations().at(2).triangle);
    EXPECT_EQ(1, curve.GetLocations().at(2).weightB);
}

TEST_F(ZORGeoTriangleEdgeCurveTest, RefusesEdgesThatAreNoneOrDoNotMeet)
{
    ZORGeoSurface* const surface = Add(Cube());
    const auto failure = [&](const QList<Edge>& edges) -> QString {
        try {
            const ZORGeoTriangleEdgeCurve curve(surface, edges);
        } catch (const ZORSysException& exception) {
            return exception.GetMessage();
        }
        return "none";
    };
    EXPECT_EQ("edge 0 of the curve is not on the surface", failure({{13, 0, false}}));
    EXPECT_EQ("edge 0 of the curve is not on the surface", failure({{0, 0, false}}));
    EXPECT_EQ("edge 1 of the curve is not on the surface", failure({{1, 0, false}, {1, 3, false}}));
    EXPECT_EQ("edge 1 of the curve does not start where the one before it ends",
              failure({{1, 0, false}, {1, 2, false}}));
    EXPECT_EQ("none", failure({{1, 0, false}, {1, 1, false}, {1, 2, false}}));
    EXPECT_EQ("none", failure({}));
}

TEST_F(ZORGeoTriangleEdgeCurveTest, AClosedSurfaceHasNoBorder)
{
    EXPECT_TRUE(Add(Cube())->CreateEdges().isEmpty());
    EXPECT_TRUE(Add({})->CreateEdges().isEmpty());
    EXPECT_EQ(2, m_container.GetNumGeometry());
}

TEST_F(ZORGeoTriangleEdgeCurveTest, ASheetHasOneBorderAroundIt)
{
    ZORGeoSurface* const surface = Add(Sheet(5));
    const auto curves = surface->CreateEdges();
    ASSERT_EQ(1, curves.size());
    CheckBorder(*surface, curves);
    EXPECT_EQ(20, curves[0]->GetEdges().size());
    EXPECT_DOUBLE_EQ(4, curves[0]->GetLength());
    EXPECT_EQ(&m_container, curves[0]->GetContainer());
    EXPECT_TRUE(curves[0]->IsInitialized());
    EXPECT_EQ("TriangleEdgeCurve.1", curves[0]->objectName());
    EXPECT_EQ(1, surface->GetReferenceCount());
    // In the winding of the first triangle: the sheet on the left.
    EXPECT_EQ(ZORMathPoint(0, 0, 0), curves[0]->GetPoint(0));
    EXPECT_EQ(ZORMathPoint(0.2, 0, 0), curves[0]->GetPoint(1));
}

TEST_F(ZORGeoTriangleEdgeCurveTest, HolesAndPiecesHaveBordersOfTheirOwn)
{
    TestMesh mesh = Sheet(3);
    mesh.triangles.remove(8, 2); // the cell in the middle
    const int next = int(mesh.vertices.size());
    mesh.vertices << ZORMathPoint(5, 0, 0) << ZORMathPoint(6, 0, 0) << ZORMathPoint(5, 1, 0);
    mesh.triangles.append({next, next + 1, next + 2});
    ZORGeoSurface* const surface = Add(mesh);
    const auto curves = surface->CreateEdges();
    CheckBorder(*surface, curves);
    EXPECT_EQ(QList<qsizetype>({12, 4, 3}), EdgeCounts(curves));
}

TEST_F(ZORGeoTriangleEdgeCurveTest, FansThatTouchInAVertexStayApart)
{
    ZORGeoSurface* const surface =
        Add({{{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {-1, 0, 0}, {-1, -1, 0}}, {{0, 1, 2}, {0, 3, 4}}});
    const auto curves = surface->CreateEdges();
    CheckBorder(*surface, curves);
    EXPECT_EQ(QList<qsizetype>({3, 3}), EdgeCounts(curves));
}

TEST_F(ZORGeoTriangleEdgeCurveTest, TrianglesTurnedOverDoNotBreakTheBorder)
{
    TestMesh mesh = Sheet(6);
    for (qsizetype i = 0; i < mesh.triangles.size(); i += 3)
        std::swap(mesh.triangles[i][0], mesh.triangles[i][1]);
    ZORGeoSurface* const surface = Add(mesh);
    const auto curves = surface->CreateEdges();
    CheckBorder(*surface, curves);
    EXPECT_EQ(QList<qsizetype>({24}), EdgeCounts(curves));
    EXPECT_DOUBLE_EQ(4, curves[0]->GetLength());
}

TEST_F(ZORGeoTriangleEdgeCurveTest, AnEdgeOfThreeTrianglesIsABorderOfEach)
{
    ZORGeoSurface* const surface =
        Add({{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, -1, 0}, {0, 0, 1}}, {{0, 1, 2}, {1, 0, 3}, {0, 1, 4}}});
    const auto curves = surface->CreateEdges();
    CheckBorder(*surface, curves);
    EXPECT_EQ(QList<qsizetype>({3, 3, 3}), EdgeCounts(curves));
}

TEST_F(ZORGeoTriangleEdgeCurveTest, DegenerateAndRepeatedTrianglesHaveBordersToo)
{
    ZORGeoSurface* const surface =
        Add({{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, {{0, 1, 2}, {2, 1, 0}, {0, 0, 1}, {1, 1, 1}}});
    const auto curves = surface->CreateEdges();
    CheckBorder(*surface, curves);
    EXPECT_EQ(QList<qsizetype>({3, 3, 3, 3}), EdgeCounts(curves));
}

TEST_F(ZORGeoTriangleEdgeCurveTest, WithoutAContainerNothingIsCreated)
{
    const auto surface = Sheet(1).Make();
    EXPECT_THROW(surface->CreateEdges(), ZORSysException);
    EXPECT_EQ(0, surface->GetReferenceCount());
}

TEST_F(ZORGeoTriangleEdgeCurveTest, RandomMeshesAreBorderedCompletely)
{
    std::mt19937 random(7);
    for (int round = 0; round < 300; ++round) {
        // Few vertices and many triangles: every kind of edge and vertex occurs.
        std::uniform_int_distribution<int> vertex(0, 3 + round % 20);
        TestMesh mesh;
        for (int v = 0; v <= vertex.max(); ++v)
            mesh.vertices.append(ZORMathPoint(v, v * v, v % 3));
        for (int t = 0; t < 30; ++t)
            mesh.triangles.append({vertex(random), vertex(random), vertex(random)});
        ZORGeoSurface* const surface = Add(mesh);
        CheckBorder(*surface, surface->CreateEdges());
    }
}

TEST_F(ZORGeoTriangleEdgeCurveTest, RealMeshesAreBorderedCompletely)
{
    ZOR_REQUIRE_TEST_DATA(folder, "meshes/meshes");
    int surfaces = 0;
    const QStringList files = QDir(folder).entryList({"*.stl"}, QDir::Files);
    for (const QString& name : files) {
        QFile file(QDir(folder).filePath(name));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        QList<const ZORGeoSurface*> loaded;
        try {
            loaded = ZORGeoStlLoader(&file).Load(
                &m_container, ZORSysValue::GetMagnitudeUnits(ZORSysValue::Length).constFirst());
        } catch (const ZORSysException&) {
            continue; // one of the broken files
        }
        for (const ZORGeoSurface* surface : loaded) {
            CheckBorder(*surface, const_cast<ZORGeoSurface*>(surface)->CreateEdges());
            ++surfaces;
        }
    }
    EXPECT_GT(surfaces, 0);
}

} // namespace
