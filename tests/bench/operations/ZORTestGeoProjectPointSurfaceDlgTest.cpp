#include "OperationTest.h"

#include <ZORGeometry/ZORGeoPointOnSurface.h>
#include <ZORGeometry/ZORGeoSurface.h>

#include <QComboBox>

namespace {

class ZORTestGeoProjectPointSurfaceDlgTest : public OperationTest
{
protected:
    void OpenDialog() { ASSERT_NE(nullptr, Open("ZORTestGeoProjectPointSurfaceDlg")); }
};

TEST_F(ZORTestGeoProjectPointSurfaceDlgTest, FormAsksForAPointAndASurface)
{
    AddSquare("S");
    AddPoint("P");
    OpenDialog();
    ExpectClass("Project Point to Surface", "ZORGeoPointOnSurface");
    EXPECT_EQ(QStringList({"Point: ", "Surface: "}), GetCaptions());
    EXPECT_EQ(QStringList({"ZORGeoPoint", "ZORGeoSurface"}), GetGeoTypes());
    EXPECT_EQ(QStringList({"P"}), GetCandidates("_PointSel"));
    EXPECT_EQ(QStringList({"S"}), GetCandidates("_SurfaceSel"));
}

TEST_F(ZORTestGeoProjectPointSurfaceDlgTest, ChoicesStandBelowEachOther)
{
    OpenDialog();
    const auto left = [this](const char* name) {
        const auto* combo = Field<ZORTestGeometrySelector>(name)->findChild<QComboBox*>("_Combo");
        return combo->mapTo(dialog.data(), QPoint()).x();
    };
    EXPECT_EQ(left("_PointSel"), left("_SurfaceSel"));
}

TEST_F(ZORTestGeoProjectPointSurfaceDlgTest, OkAddsTheNearestPlaceOfTheSurface)
{
    AddSquare("S");
    AddPoint("P", {3, 4, 5});
    TakeNew();
    OpenDialog();
    const QStringList calls = TraceOk();
    ASSERT_EQ(3, calls.size()) << calls.join('\n').toStdString();
    EXPECT_EQ(QString("ZORGeoSurface::Project((3, 4, 5))"), calls[0]);
    EXPECT_TRUE(calls[1].startsWith("ZORGeoPointOnSurface::ZORGeoPointOnSurface(")) << calls[1].toStdString();
    EXPECT_EQ(QString("ZORGeoGeometry::Initialize()"), calls[2]);
    const auto* point = TakeOnly<ZORGeoPointOnSurface>();
    EXPECT_TRUE(IsNear({3, 4, 0}, point->GetMathPoint()));
    EXPECT_EQ(QString("S"), point->GetSurface()->objectName());
}

TEST_F(ZORTestGeoProjectPointSurfaceDlgTest, PointsBesideTheSurfaceGoToItsBorder)
{
    AddSquare("S");
    AddPoint("P", {-100, 5, 1});
    TakeNew();
    OpenDialog();
    PressOk();
    EXPECT_TRUE(IsNear({0, 5, 0}, TakeOnly<ZORGeoPointOnSurface>()->GetMathPoint()));
}

TEST_F(ZORTestGeoProjectPointSurfaceDlgTest, FirstInvalidSelectionIsReported)
{
    OpenDialog();
    PressOk();
    EXPECT_EQ(QStringList({"Point selection invalid"}), boxes.TakeErrors());
    AddPoint("P");
    TakeNew();
    OpenDialog();
    ExpectRefused("Surface selection invalid", SdkCalls::None);
}

TEST_F(ZORTestGeoProjectPointSurfaceDlgTest, SurfaceWithoutTrianglesGivesTheMessageOfTheSdk)
{
    auto* surface = new ZORGeoSurface(GetContainer(), {}, {});
    surface->Initialize();
    AddPoint("P");
    TakeNew();
    OpenDialog();
    ExpectRefused("location is not on a surface");
}

TEST_F(ZORTestGeoProjectPointSurfaceDlgTest, ConsoleOpensItFromItsMenu)
{
    ExpectMenuOpens("_ProjectPtSurAction", "ZORTestGeoProjectPointSurfaceDlg");
}

} // namespace
