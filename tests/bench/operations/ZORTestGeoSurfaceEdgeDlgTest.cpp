#include "OperationTest.h"
#include "core/ZORTestCommandRegistry.h"

#include <ZORDebug/ZORDebugVizContainer.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORGeometry/ZORGeoTriangleEdgeCurve.h>

namespace {

class ZORTestGeoSurfaceEdgeDlgTest : public OperationTest
{
protected:
    ZORTestGeoSurfaceEdgeDlgTest() { ZORDebugVizContainer::GetContainer()->RemoveAllObjects(); }
    ~ZORTestGeoSurfaceEdgeDlgTest() override { ZORDebugVizContainer::GetContainer()->RemoveAllObjects(); }

    void OpenDialog() { ASSERT_NE(nullptr, Open("ZORTestGeoSurfaceEdgeDlg")); }
    /// The calls of OK for a surface of these triangles.
    QStringList TraceOkFor(const QList<ZORMathPoint>& vertices,
                           const QList<ZORGeoSurface::Corners>& triangles)
    {
        auto* surface = new ZORGeoSurface(GetContainer(), vertices, triangles);
        surface->setObjectName("S");
        surface->Initialize();
        TakeNew();
        OpenDialog();
        return TraceOk();
    }
};

TEST_F(ZORTestGeoSurfaceEdgeDlgTest, FormAsksForASurface)
{
    AddSquare("S");
    OpenDialog();
    ExpectClass("Create Surface Edge Curves", "ZORGeoCurveOnSurface ZORGeoTriangleEdgeCurve");
    EXPECT_EQ(QStringList({"Surface: "}), GetCaptions());
    EXPECT_EQ(QStringList({"ZORGeoSurface"}), GetGeoTypes());
    for (const char* type : {"ZORGeoCurveOnSurface", "ZORGeoTriangleEdgeCurve"}) {
        EXPECT_TRUE(ZORTestCommandRegistry::Instance().FindCreators(type).contains(dialog->metaObject()))
            << type;
    }
}

TEST_F(ZORTestGeoSurfaceEdgeDlgTest, SingleTriangleGivesItsThreeSidesAsPairsOfPoints)
{
    const QStringList calls = TraceOkFor({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, {{0, 1, 2}});
    EXPECT_EQ(1, calls.filter("AddPolyline").size());
    EXPECT_EQ(QString("ZORDebugVizContainer::AddPolyline([6], 255, 255, 0, 0, \"\", 1)"),
              calls.filter("AddPolyline").value(0));
    EXPECT_EQ(QString("ZORGeoSurface::CreateEdges()"), calls.value(calls.size() - 1));
    EXPECT_EQ(1, ZORDebugVizContainer::GetContainer()->GetNumObjects());

    const auto* edge = TakeOnly<ZORGeoTriangleEdgeCurve>();
    EXPECT_TRUE(edge->IsClosed());
    EXPECT_EQ(4, edge->GetNumPoints());
    EXPECT_EQ(QList<bool>({true, true}), finished);
}

TEST_F(ZORTestGeoSurfaceEdgeDlgTest, InnerSidesAreLeftOut)
{
    AddSquare("S");
    OpenDialog();
    EXPECT_EQ(QStringList({"ZORDebugVizContainer::AddPolyline([8], 255, 255, 0, 0, \"\", 1)"}),
              TraceOk().filter("AddPolyline"));
    EXPECT_DOUBLE_EQ(40, TakeOnly<ZORGeoTriangleEdgeCurve>()->GetLength());
}

TEST_F(ZORTestGeoSurfaceEdgeDlgTest, EveryBorderLoopBecomesACurve)
{
    TraceOkFor({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {5, 0, 0}, {6, 0, 0}, {5, 1, 0}}, {{0, 1, 2}, {3, 4, 5}});
    const QList<ZORGeoGeometry*> added = TakeNew();
    ASSERT_EQ(2, added.size());
    for (ZORGeoGeometry* geometry : added)
        EXPECT_NE(nullptr, qobject_cast<ZORGeoTriangleEdgeCurve*>(geometry));
}

TEST_F(ZORTestGeoSurfaceEdgeDlgTest, ClosedSurfaceAddsAnEmptyDebugPolylineAndFailsSilently)
{
    AddCube("Cube");
    OpenDialog();
    EXPECT_EQ(QStringList({"ZORDebugVizContainer::AddPolyline([0], 255, 255, 0, 0, \"\", 1)"}),
              TraceOk().filter("AddPolyline"));
    EXPECT_EQ(1, ZORDebugVizContainer::GetContainer()->GetNumObjects());
    EXPECT_TRUE(TakeNew().isEmpty());
    EXPECT_EQ(QList<bool>({true}), finished) << "Apply() returned false: closed once only";
}

TEST_F(ZORTestGeoSurfaceEdgeDlgTest, SurfaceWithoutTrianglesFailsSilentlyToo)
{
    EXPECT_EQ(1, TraceOkFor({}, {}).filter("AddPolyline([0]").size());
    EXPECT_TRUE(TakeNew().isEmpty());
    EXPECT_EQ(QList<bool>({true}), finished);
}

TEST_F(ZORTestGeoSurfaceEdgeDlgTest, MissingSurfaceIsReported)
{
    OpenDialog();
    EXPECT_EQ(QStringList(), TraceOk());
    EXPECT_EQ(QStringList({"Surface selection invalid"}), boxes.TakeErrors());
    EXPECT_EQ(0, ZORDebugVizContainer::GetContainer()->GetNumObjects());
}

TEST_F(ZORTestGeoSurfaceEdgeDlgTest, ConsoleOpensItFromItsMenu)
{
    ExpectMenuOpens("_SurfaceEdgeAction", "ZORTestGeoSurfaceEdgeDlg");
}

} // namespace
