// Selectors that offer a geometry of another class than the operation needs: refused as if nothing was selected.

#include "OperationTest.h"

#include <ZORComposites/ZORCompRoot.h>
#include <ZORComposites/ZORCompStrategy.h>
#include <ZORGeometry/ZORGeoPointOnSurface.h>
#include <ZORGeometry/ZORGeoPolyline.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORTopology/ZORTopBody.h>

#include <QComboBox>

namespace {

struct Selection
{
    const char* dialog;
    const char* selector; ///< receives the wrong geometry, the other ones keep their first candidates
    const char* wrong;    ///< name of a geometry
    const char* message;
};

void PrintTo(const Selection& selection, std::ostream* stream)
{
    *stream << selection.dialog << ' ' << selection.selector << ' ' << selection.wrong;
}

/// One geometry of every class that a selector asks for.
class WrongSelectionTest : public OperationTest, public testing::WithParamInterface<Selection>
{
protected:
    WrongSelectionTest()
    {
        ZORGeoSurface* const surface = AddSquare("Surface");
        AddPointOn(surface, "Point", {5, 5, 0});
        ZORGeoPolyline* const curve = AddPolyline("Curve", {{1, 1, 3}, {4, 5, 3}});
        AddFolder("Folder");
        AddBody("CurveBody", curve);
        AddBody("SurfaceBody", surface);
        auto* strategy = new ZORCompStrategy(GetContainer()->GetFeatureRoot("ZORCompRoot"));
        strategy->setObjectName("Strategy");
        strategy->Initialize();
        TakeNew();
    }
    void AddBody(const QString& name, const ZORGeoGeometry* geometry)
    {
        auto* body = new ZORTopBody(GetContainer(), geometry);
        body->setObjectName(name);
        body->Initialize();
    }
    ZORGeoGeometry* Get(const char* name) const
    {
        for (int i = 0; i < GetContainer()->GetNumGeometry(); ++i) {
            ZORGeoGeometry* const geometry = GetContainer()->GetGeometryByIndex(i);
            if (geometry->objectName() == QLatin1String(name))
                return geometry;
        }
        ADD_FAILURE() << "no geometry " << name;
        return nullptr;
    }
};

TEST_P(WrongSelectionTest, IsRefusedAndCreatesNothing)
{
    const Selection& selection = GetParam();
    ASSERT_NE(nullptr, Open(selection.dialog));
    auto* combo = Field<QWidget>(selection.selector)->findChild<QComboBox*>("_Combo");
    combo->addItem("wrong", QVariant::fromValue(Get(selection.wrong)));
    combo->setCurrentIndex(combo->count() - 1);
    PressOk();
    EXPECT_EQ(QStringList(QLatin1String(selection.message)), boxes.TakeErrors());
    EXPECT_TRUE(TakeNew().isEmpty());
}

// The messages are a contract; docs/adding-a-dialog.md names this table.
INSTANTIATE_TEST_SUITE_P(
    Selectors, WrongSelectionTest,
    testing::Values(
        Selection{"ZORTestGeoCreatePointOnCurveDlg", "_CurveSel", "Surface",
                  "Selection of curve was invalid"},
        Selection{"ZORTestGeoProjectCurveSurDlg", "_CurveSel", "Surface", "Curve selection invalid"},
        Selection{"ZORTestGeoProjectCurveSurDlg", "_SurfaceSel", "Curve", "Surface selection invalid"},
        Selection{"ZORTestGeoProjectPointCurveDlg", "_PointSel", "Curve", "Point selection invalid"},
        Selection{"ZORTestGeoProjectPointCurveDlg", "_CurveSel", "Surface", "Surface selection invalid"},
        Selection{"ZORTestGeoProjectPointSurfaceDlg", "_PointSel", "Surface", "Point selection invalid"},
        Selection{"ZORTestGeoProjectPointSurfaceDlg", "_SurfaceSel", "Curve", "Surface selection invalid"},
        Selection{"ZORTestGeoSurfaceEdgeDlg", "_SurfaceSel", "SurfaceBody", "Surface selection invalid"},
        Selection{"ZORTestGeoCleanCurveDlg", "_CurveSel", "Curve", "Selection of curve was invalid"},
        Selection{"ZORTestGeoGeodesicDlg", "_StartSel", "Surface", "Invalid start point selection"},
        Selection{"ZORTestCreateTopCurveDlg", "_CurveSel", "CurveBody", "Curve selection invalid"},
        Selection{"ZORTestCreateTopSurfaceDlg", "_SurfaceSel", "SurfaceBody", "Surface selection invalid"},
        Selection{"ZORTestTopProjectDlg", "_ProjectedSel", "Curve",
                  "Selection of projected geometry was invalid"},
        Selection{"ZORTestTopProjectDlg", "_SupportSel", "Surface",
                  "Selection of support geometry was invalid"},
        Selection{"ZORTestCreatePointCmd", "_FolderSel", "Curve", "Selection of parent folder is invalid"},
        Selection{"ZORTestCreateFolderDlg", "_ParentSel", "Surface", "Selection of parent folder is invalid"},
        Selection{"ZORTestCreateWFRawCurveDlg", "_CurveSel", "Surface", "Selection of curve was invalid"},
        Selection{"ZORTestCreateWFRawCurveDlg", "_FolderSel", "Curve", "Selection of folder was invalid"},
        Selection{"ZORTestCreateWFRawSurfaceDlg", "_SurfaceSel", "Curve", "Selection of surface was invalid"},
        Selection{"ZORTestCreateWFRawSurfaceDlg", "_FolderSel", "Strategy",
                  "Selection of folder was invalid"},
        Selection{"ZORTestCreateDrapingDlg", "_StrategySel", "Folder", "Strategy selection invalid"},
        Selection{"ZORTestCreateDrapingDlg", "_SurfaceSel", "Curve", "Surface selection invalid"},
        Selection{"ZORTestCreateDrapingDlg", "_PointOnSurSel", "Surface", "Point selection invalid"},
        Selection{"ZORTestStrategyDlg", "_StrategySel", "Folder", "Strategy selection invalid"},
        Selection{"ZORTestTPCourseSmoothingDlg", "_CourseSel", "Curve", "Selection of course was invalid"},
        Selection{"ZORTestWFCurveOnSupportDlg", "_SurfaceSel", "Surface", "Surface selection invalid"}));

} // namespace
