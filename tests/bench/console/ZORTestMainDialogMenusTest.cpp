// Tests of the menus of ZORTestMainDialog.

#include "console/ZORTestMainDialog.h"
#include "core/ZORTestCommandRegistry.h"
#include "support/BenchTest.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>

#include <vector>

namespace {

struct Entry
{
    const char* text = nullptr; // null for a separator
    const char* objectName = nullptr;
    const char* command = nullptr;
    const char* actionId = nullptr;
};

struct Menu
{
    const char* title;
    const char* objectName;
    std::vector<Entry> entries;
};

constexpr Entry kSeparator{};

/// The contract with those who use the menus by name; docs/adding-a-dialog.md names this table.
const std::vector<Menu>& ExpectedMenus()
{
    static const std::vector<Menu> menus{
        // clang-format off
        {"File", "_FileMenu", {
            {"Save Container...", "_FileMenuSaveAction", "ZORTestSaveContainerCmd"},
            {"Load Container...", "_FileMenuLoadAction", "ZORTestLoadContainerCmd"},
            kSeparator,
            {"Initialize Root...", "_InitializeRootAction", "ZORTestInitializeRootCmd"},
        }},
        {"Geometry", "_GeoMenu", {
            {"Import Surface STL", "_ImportSTLAction", "ZORTestImportSTLCmd"},
            {"Export Surface STL", "_ExportSTLAction", "ZORTestExportSTLDlg"},
            {"Import Catia Composites XML Curves", "_ImportCatiaXMLAction", "ZORTestImportCatiaXMLCurvesDlg"},
            kSeparator,
            {"Create Cartesian Point", "_CartPointAction", "ZORTestGeoCreateCartesianPointDlg"},
            {"Create Point On Curve", "_PointOnCurveAction", "ZORTestGeoCreatePointOnCurveDlg"},
            {"Create Constant Angle Curve", "_ConstAngCurveAction", "ZORGeoGeodesicCurveDlg"},
            {"Create Geodesic Curve", "_GeodesicCurveAction", "ZORTestGeoGeodesicDlg"},
            {"Create Geodesic Ladder", "_GeodesicLadderAction"},
            kSeparator,
            {"Project Curve to Surface", "_ProjectCurveSurAction", "ZORTestGeoProjectCurveSurDlg"},
            {"Project Point to Surface", "_ProjectPtSurAction", "ZORTestGeoProjectPointSurfaceDlg"},
            {"Project Point to Curve", "_ProjectPtCurveAction", "ZORTestGeoProjectPointCurveDlg"},
            {"Translate Curve to Surface", "_TranslateCurveSurAction"},
            {"Create Surface Edge Curve", "_SurfaceEdgeAction", "ZORTestGeoSurfaceEdgeDlg"},
            kSeparator,
            {"Extrapolate Curve", "_ExtrapCurveAction"},
            {"Offset Curve", "_OffsetCurveAction", "ZORTestGeoCurveOffsetDlg"},
            {"Max Normal Distance", "_MaxNormAction"},
            {"Clean Curve", "_CleanCurveAction", "ZORTestGeoCleanCurveDlg"},
            {"Remove Curve Self Intersections", "_CurveSelfIntAction"},
            {"Subdivision Curve", "_SubdivCurveAction"},
            kSeparator,
            {"Area Buffer", "_AreaBufferAction"},
            {"Surface Offset", "_SurfaceOffsetAction"},
            {"Variable Surface Offset", "_VariableSurfOffsetAction"},
            kSeparator,
        }},
        {"Composites", "_CompMenu", {
            {"Create Layup...", "actionCreate_Layup", "ZORTestLaunchStandardCmd", "ZORCompLayupCmd.Create"},
            {"Material Library...", "actionMaterials", "ZORTestLaunchStandardCmd", "ZORCompMaterialLibraryCmd.Edit"},
            {"Create Rosette...", "actionCreate_Rosette", "ZORTestLaunchStandardCmd", "ZORCompRosetteCmd.Create"},
            {"Read Composites...", "actionRead_Composites", "ZORTestCompReaderCmd"},
            kSeparator,
            {"Create Surface Update", "_SurfaceUpdateAction"},
        }},
        {"Fiber", "_FiberMenu", {
            {"Create Course Curve", "_CourseCurveAction", "ZORTestImportSTLCmd"},
            {"Create Layer", "_LayerAction"},
            {"Create Draping Layer", "_DrapingLayerAction", "ZORTestCreateDrapingDlg"},
        }},
        {"Draping", "menuDraping", {
            {"Geometric Draping", "actionGeometric_Draping", "ZORTestDrapingGeoDlg"},
        }},
        {"Topology", "_TopologyMenu", {
            {"Create Surface", "_TopSurfaceAction", "ZORTestCreateTopSurfaceDlg"},
            {"Create Curve", "_TopCurveAction", "ZORTestCreateTopCurveDlg"},
            {"Create Point", "_TopPointAction"},
            kSeparator,
            {"Project", "_ProjectAction", "ZORTestTopProjectDlg"},
        }},
        {"Wireframe", "menuWireframe", {
            {"Create Raw Point", "actionCreate_Raw_Point", "ZORTestCreatePointCmd"},
            {"Create Raw Curve", "actionCreate_Raw_Curve", "ZORTestCreateWFRawCurveDlg"},
            {"Create Raw Surface", "actionCreate_Raw_Surface", "ZORTestCreateWFRawSurfaceDlg"},
            {"Create Projection", "actionCreate_Projection", "ZORTestLaunchStandardCmd", "ZORWFProjectionCmd.Create"},
            {"Create Curve on Support", "actionCreate_Curve_on_Support", "ZORTestWFCurveOnSupportDlg"},
        }},
        {"Feature", "menuFeature", {
            {"Create Folder", "actionCreate_Folder", "ZORTestCreateFolderDlg"},
        }},
        {"Nesting", "menuNesting", {
            {"Read MSI File...", "actionRead_MSI_File", "ZORTestReadMSIFileCmd"},
            {"Save MSI File", "actionSave_MSI_File", "ZORTestWriteMSIFileCmd"},
            {"Translate...", "actionTranslate", "ZORTestNestTranslateDlg"},
            {"Nest...", "actionNest", "ZORTestNestNestingDlg"},
            {"MSI to PNG...", "actionMSI_to_PNG", "ZORTestNestVisualizeResultCmd"},
        }},
        {"Visualization", "menuVisualization", {
            {"Create Vector Text", "actionCreate_Vector_Text", "ZORTestVisVectorTextDlg"},
        }},
        {"Tool Path", "menuTool_Path", {
            {"Smooth Course...", "actionSmooth_Course", "ZORTestTPCourseSmoothingDlg"},
        }},
        // clang-format on
    };
    return menus;
}

class ZORTestMainDialogMenusTest : public BenchTest
{
protected:
    ZORTestMainDialogMenusTest() { OpenConsole(); }

    MessageBoxCatcher::Box ErrorBox(const char* text) const
    {
        return {QMessageBox::Critical, "Error", QString::fromLatin1(text), QMessageBox::Ok, console.data()};
    }
};

TEST_F(ZORTestMainDialogMenusTest, HasTheMenusWithTheirEntriesInOrder)
{
    const auto* bar = InConsole<QMenuBar>("_Menu");
    EXPECT_EQ(bar, console->menuBar());
    const QList<QAction*> menuActions = bar->actions();
    ASSERT_EQ(int(ExpectedMenus().size()), menuActions.size());
    for (int m = 0; m < menuActions.size(); ++m) {
        const Menu& expected = ExpectedMenus()[size_t(m)];
        const QMenu* menu = menuActions[m]->menu();
        ASSERT_NE(nullptr, menu);
        SCOPED_TRACE(expected.title);
        EXPECT_EQ(QString::fromLatin1(expected.title), menu->title());
        EXPECT_EQ(QString::fromLatin1(expected.objectName), menu->objectName());
        EXPECT_EQ(bar, menu->parent()) << "entries of other menus do not reach the menu bar's signal";
        const QList<QAction*> actions = menu->actions();
        ASSERT_EQ(int(expected.entries.size()), actions.size());
        for (int e = 0; e < actions.size(); ++e) {
            const Entry& entry = expected.entries[size_t(e)];
            const QAction* action = actions[e];
            EXPECT_EQ(entry.text == nullptr, action->isSeparator()) << e;
            if (!entry.text || action->isSeparator())
                continue;
            EXPECT_EQ(QString::fromLatin1(entry.text), action->text());
            EXPECT_EQ(QString::fromLatin1(entry.objectName), action->objectName());
            EXPECT_EQ(QByteArray(entry.command), action->property("command").toByteArray());
            EXPECT_EQ(entry.command != nullptr, action->property("command").isValid());
            EXPECT_EQ(QByteArray(entry.actionId), action->property("actionId").toByteArray());
            EXPECT_EQ(entry.actionId != nullptr, action->property("actionId").isValid());
            EXPECT_TRUE(action->isEnabled());
        }
    }
}

TEST_F(ZORTestMainDialogMenusTest, ReportsEveryEntryWhoseClassIsAbsentAsNotRegistered)
{
    for (const Menu& menu : ExpectedMenus()) {
        for (const Entry& entry : menu.entries) {
            if (!entry.text || ZORTestCommandRegistry::Instance().GetClassNames().contains(entry.command))
                continue;
            MenuAction(entry.objectName)->trigger();
            EXPECT_EQ(QList{ErrorBox("Command not registered")}, boxes.Take()) << entry.text;
        }
    }
}

TEST_F(ZORTestMainDialogMenusTest, ReportsOddEntriesAsNotRegistered)
{
    for (const char* name : {"_ConstAngCurveAction", "_OffsetCurveAction", "actionGeometric_Draping",
                             "_GeodesicLadderAction", "_SurfaceUpdateAction", "_TopPointAction"}) {
        TriggerMenu(name);
        EXPECT_EQ(QList{ErrorBox("Command not registered")}, boxes.Take()) << name;
    }
}

} // namespace
