// The windows of the bench.

#include "WindowTest.h"
#include "base/ZORHostTheme.h"
#include "console/ZORTestGeoInspectionDlg.h"
#include "console/ZORTestMainDialog.h"
#include "core/ZORTestCommandRegistry.h"
#include "core/ZORTestDialog.h"
#include "core/ZORTestOptionsDlg.h"
#include "nesting/ZORTestNestNestingResultDlg.h"
#include "visualization/ZORTestCurveVisOptionsDlg.h"
#include "visualization/ZORTestPointVisOptionsDlg.h"
#include "visualization/ZORTestSurfaceVisOptionsDlg.h"
#include "widgets/ZORTestGeometrySelector.h"

#include <ZORFeature/ZORFeatRoot.h>
#include <ZORGeometry/ZORGeoPointOnSurface.h>
#include <ZORGeometry/ZORGeoPolyline.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORWireframe/ZORWFRawSurface.h>

#include <QAction>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QFile>
#include <QInputDialog>
#include <QListWidget>
#include <QPushButton>
#include <QTableWidget>

#include <algorithm>

namespace {

class BenchWindowsTest : public WindowTest
{
protected:
    /// The names of all operations that open a dialog, in alphabetical order.
    static QList<QByteArray> GetDialogs()
    {
        QList<QByteArray> dialogs{"ZORTestCreatePointCmd"}; // the established name of a dialog
        const QList<QByteArray> classNames = ZORTestCommandRegistry::Instance().GetClassNames();
        for (const QByteArray& className : classNames) {
            if (className.endsWith("Dlg"))
                dialogs.append(className);
        }
        std::sort(dialogs.begin(), dialogs.end());
        return dialogs;
    }
};

INSTANTIATE_TEST_SUITE_P(Themes, BenchWindowsTest,
                         testing::Values(ZORHostOptions::Theme::Light, ZORHostOptions::Theme::Dark),
                         [](const auto& tested) { return ZORHostTheme::ToName(tested.param).toStdString(); });

TEST_P(BenchWindowsTest, Console)
{
    AddSurface("Wing skin");
    AddPoint("Origin");
    OpenConsole();
    Walk(console, "console");
}

TEST_P(BenchWindowsTest, Options)
{
    ZORTestOptionsDlg options(nullptr);
    Walk(&options, "options");
}

TEST_P(BenchWindowsTest, Inspection)
{
    ZORTestGeoInspectionDlg inspection(nullptr);
    inspection.SetGeometry(AddSurface("Wing skin"));
    Walk(&inspection, "inspection");
}

TEST_P(BenchWindowsTest, CurveVisualizationOptions)
{
    ZORTestCurveVisOptionsDlg options(GetEnvironment());
    Walk(&options, "curve-visualization");
}

TEST_P(BenchWindowsTest, PointVisualizationOptions)
{
    ZORTestPointVisOptionsDlg options(GetEnvironment());
    Walk(&options, "point-visualization");
}

TEST_P(BenchWindowsTest, SurfaceVisualizationOptions)
{
    ZORTestSurfaceVisOptionsDlg options(GetEnvironment());
    Walk(&options, "surface-visualization");
}

TEST_P(BenchWindowsTest, ExportSTL)
{
    AddSurface("Wing skin");
    AddSurface("A surface with a name as long as importers make them");
    ASSERT_NE(nullptr, Open("ZORTestExportSTLDlg"));
    Walk(dialog, "export-stl");
}

TEST_P(BenchWindowsTest, VectorText)
{
    ASSERT_NE(nullptr, Open("ZORTestVisVectorTextDlg"));
    Walk(dialog, "vector-text");
}

TEST_P(BenchWindowsTest, Operations)
{
    AddSurface("Wing skin");
    AddPolyline("A curve with a name as long as importers make them", {{0, 0, 0}, {1, 0, 0}});
    AddPoint("Origin");
    for (const QByteArray& className : GetDialogs()) {
        ASSERT_NE(nullptr, Open(className)) << className.constData();
        Walk(dialog, QString::fromLatin1(className));
        PressCancel();
    }
}

TEST_P(BenchWindowsTest, Geodesic)
{
    auto* point = new ZORGeoPointOnSurface(AddSurface("Wing skin")->Project({0.5, 0.5, 0}));
    point->setObjectName("A point with a name as long as importers make them");
    point->Initialize();
    ASSERT_NE(nullptr, Open("ZORTestGeoGeodesicDlg"));
    dialog->findChild<QDoubleSpinBox*>("_StartLenSpin")->setValue(-123456.789);
    Walk(dialog, "geodesic");
}

TEST_P(BenchWindowsTest, CurveOnSupport)
{
    auto* feature =
        new ZORWFRawSurface(GetContainer()->GetFeatureRoot("ZORFeatRoot"), AddSurface("Wing skin"));
    feature->setObjectName("A support with a name as long as importers make them");
    feature->Initialize();
    for (int type = 0; type < 3; ++type) {
        ASSERT_NE(nullptr, Open("ZORTestWFCurveOnSupportDlg"));
        dialog->findChild<QComboBox*>("_TypeCombo")->setCurrentIndex(type);
        dialog->findChild<QDoubleSpinBox*>("_EndLenSpin")->setValue(-123456.789);
        Walk(dialog, "curve-on-support-" + QString::number(type));
        PressCancel();
    }
}

TEST_P(BenchWindowsTest, ImportContours)
{
    QFile file(GetPath("contours.xml"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("<Laminate NAME='Upper skin'>");
    for (int i = 1; i <= 30; ++i)
        file.write("<Ply NAME='Ply." + QByteArray::number(i) + "'><OuterContour/></Ply>");
    file.write("</Laminate>");
    file.close();
    GetSettings()->setValue("Debug/ImportCatiaXML/File", file.fileName());
    ASSERT_NE(nullptr, Open("ZORTestImportCatiaXMLCurvesDlg"));
    auto* list = dialog->findChild<QListWidget*>("_CurveList");
    ASSERT_EQ(30, list->count());
    list->item(1)->setSelected(true);
    Walk(dialog, "import-contours");
}

TEST_P(BenchWindowsTest, TranslateForNesting)
{
    ASSERT_NE(nullptr, Open("ZORTestNestTranslateDlg"));
    auto* list = dialog->findChild<QListWidget*>("_FileList");
    for (int i = 1; i <= 30; ++i)
        list->addItem("/home/somebody/drawings/a folder with a long name/rib " + QString::number(i) + ".dxf");
    list->item(1)->setSelected(true);
    Walk(dialog, "translate-for-nesting");
}

TEST_P(BenchWindowsTest, Nesting)
{
    ASSERT_NE(nullptr, Open("ZORTestNestNestingDlg"));
    const auto addRow = [](QTableWidget* table, const QVariantList& values) {
        const int row = table->rowCount();
        table->insertRow(row);
        for (int column = 0; column < values.size(); ++column) {
            table->setItem(row, column, new QTableWidgetItem);
            table->item(row, column)->setData(Qt::EditRole, values[column]);
        }
    };
    auto* items = dialog->findChild<QTableWidget*>("_ItemTable");
    for (int i = 1; i <= 30; ++i) {
        addRow(items,
               {"rib " + QString::number(i), i, i % 2 == 0, 90.0, true, false, true, false, 2.5, 0.5, 0,
                "/home/somebody/drawings/a folder with a long name/rib " + QString::number(i) + ".msi"});
    }
    items->selectRow(1);
    auto* sheets = dialog->findChild<QTableWidget*>("_PackagingTable");
    addRow(sheets, {"roll", 1, 1250.0, "inf", true, 10.0, 10.0, 5.0, 5.0, 0.0});
    addRow(sheets, {"remnant", 12, 1000.0, 2000.0, false, 0.0, 0.0, 0.0, 0.0, 87.5});
    Walk(dialog, "nesting");
}

TEST_P(BenchWindowsTest, NestingResults)
{
    ZORTestNestNestingResultDlg results(nullptr, GetEnvironment());
    results.SetData("<h1>Nesting</h1><p>Two sheets.</p>", {"unreadable", "unreadable"});
    Walk(&results, "nesting-results");
}

TEST_P(BenchWindowsTest, SelectorOfSeveralGeometries)
{
    ZORTestGeometrySelector selector(nullptr);
    selector.setProperty("geoType", "ZORGeoSurface");
    selector.setProperty("label", "Surfaces: ");
    selector.setProperty("multi", true);
    selector.SetEnvironment(GetEnvironment());
    auto* list = selector.findChild<QListWidget*>("_List");
    list->addItem("Wing skin");
    Walk(&selector, "multi-selector");
}

TEST_P(BenchWindowsTest, UnitQuery)
{
    OpenConsole();
    AddSurface("Wing skin");
    ASSERT_NE(nullptr, TriggerMenu("_ExportSTLAction"));
    answers.AnswerFile(GetPath("out.stl"));
    for (const char* name : {"select-units", "select-file-type"}) {
        answers.Answer("QInputDialog", [this, name](QDialog* query) {
            Walk(query, QLatin1String(name));
            query->accept();
        });
    }
    PressOk();
}

} // namespace
