#include "console/ZORTestContainerBrowser.h"

#include "console/ZORTestGeoInspectionDlg.h"
#include "console/ZORTestMainDialog.h"
#include "support/BenchTest.h"
#include "support/RemovingGeometry.h"

#include <ZORFeature/ZORFeatFolder.h>
#include <ZORFeature/ZORFeatRoot.h>
#include <ZORGeometry/ZORGeoCartesianPoint.h>
#include <ZORGeometry/ZORGeoCurve.h>
#include <ZORGeometry/ZORGeoLine.h>
#include <ZORGeometry/ZORGeoPolyline.h>
#include <ZORGeometry/ZORGeoSurface.h>

#include <QComboBox>
#include <QHeaderView>
#include <QListWidget>
#include <QTableView>
#include <QTest>

namespace {

const QString kDeleteRefused =
    QStringLiteral("Geometry reference is not zero. The only geometry with non-zero reference count that can "
                   "be deleted are features.");

class ZORTestContainerBrowserTest : public BenchTest
{
protected:
    QAbstractItemModel* GetModel() { return InConsole<QTableView>("_ContTable")->model(); }

    /// Texts of the rows as "name|count".
    QStringList GetRows()
    {
        QStringList rows;
        for (int row = 0; row < GetModel()->rowCount(); ++row)
            rows.append(GetText(row, 0) + u'|' + GetText(row, 1));
        return rows;
    }
    QString GetText(int row, int column) { return GetModel()->index(row, column).data().toString(); }

    /// Makes the row named \a name current as a user does: by a click into column \a column.
    void ClickRow(const QString& name, int column = 0)
    {
        auto* table = InConsole<QTableView>("_ContTable");
        for (int row = 0; row < table->model()->rowCount(); ++row) {
            if (GetText(row, 0) == name) {
                const QPoint position = table->visualRect(table->model()->index(row, column)).center();
                QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, position);
                return;
            }
        }
        ADD_FAILURE() << "no row " << name.toStdString();
    }

    void ChooseType(const char* name)
    {
        auto* combo = InConsole<QComboBox>("_ContTypeCombo");
        const int index = combo->findText(QString::fromLatin1(name));
        ASSERT_GE(index, 0) << name;
        combo->setCurrentIndex(index);
    }
};

TEST_F(ZORTestContainerBrowserTest, ShowsTheHeadersOfAnEmptyContainer)
{
    OpenConsole();
    ASSERT_EQ(2, GetModel()->columnCount());
    EXPECT_EQ(0, GetModel()->rowCount());
    EXPECT_EQ(QString("Name"), GetModel()->headerData(0, Qt::Horizontal).toString());
    EXPECT_EQ(QString("Ref Count"), GetModel()->headerData(1, Qt::Horizontal).toString());
    Click("_ContRefreshBtn");
    EXPECT_EQ(2, GetModel()->columnCount());
    EXPECT_EQ(0, GetModel()->rowCount());
}

TEST_F(ZORTestContainerBrowserTest, ListsWhatTheContainerHoldsWhenTheConsoleOpens)
{
    AddPoint(QStringLiteral("P"));
    OpenConsole();
    EXPECT_EQ(QStringList{"P|0"}, GetRows());
}

TEST_F(ZORTestContainerBrowserTest, OffersAllTypesThenTheRegisteredClassesByName)
{
    OpenConsole();
    const auto* combo = InConsole<QComboBox>("_ContTypeCombo");
    EXPECT_EQ(QString("<all types>"), combo->itemText(0));
    EXPECT_FALSE(combo->itemData(0).isValid());
    EXPECT_EQ(0, combo->currentIndex());

    QMap<QByteArray, const QMetaObject*> expected;
    const auto types = GetContainer()->GetRegisteredTypes();
    for (const QMetaObject* type : types)
        expected.insert(type->className(), type);
    ASSERT_EQ(int(expected.size()) + 1, combo->count());
    int index = 1;
    for (auto type = expected.cbegin(); type != expected.cend(); ++type, ++index) {
        EXPECT_EQ(QString::fromLatin1(type.key()), combo->itemText(index));
        EXPECT_EQ(type.value(), combo->itemData(index, Qt::UserRole).value<const QMetaObject*>());
    }
    EXPECT_GE(combo->findText("ZORGeoSurface"), 1);
}

TEST_F(ZORTestContainerBrowserTest, ListsGeometriesInOrderWithNameAndReferenceCount)
{
    AddSurface(QStringLiteral("Skin"));
    ZORGeoPoint* point = AddPoint(QStringLiteral("A"));
    AddPoint(QStringLiteral("B"));
    const QObject user;
    point->AddReference(&user);
    point->AddReference(&user);
    OpenConsole();
    EXPECT_EQ((QStringList{"Skin|0", "A|2", "B|0"}), GetRows());
    EXPECT_EQ(point, GetModel()->index(1, 0).data(Qt::UserRole + 1).value<ZORGeoGeometry*>());
    EXPECT_FALSE(GetModel()->index(1, 1).data(Qt::UserRole + 1).isValid());
    point->RemoveReference(&user);
    point->RemoveReference(&user);
}

TEST_F(ZORTestContainerBrowserTest, FiltersByClassAndItsSubclasses)
{
    AddPoint(QStringLiteral("P"));
    AddPolyline(QStringLiteral("C"), {{0, 0, 0}, {1, 0, 0}});
    AddSurface(QStringLiteral("S"));
    auto* line = new ZORGeoLine(GetContainer(), {0, 0, 0}, {1, 0, 0});
    line->setObjectName("L");
    line->Initialize();
    OpenConsole();
    EXPECT_EQ((QStringList{"P|0", "C|0", "S|0", "L|0"}), GetRows());
    ChooseType("ZORGeoCurve");
    EXPECT_EQ((QStringList{"C|0", "L|0"}), GetRows());
    ChooseType("ZORGeoPolyline");
    EXPECT_EQ(QStringList{"C|0"}, GetRows());
    ChooseType("ZORFeatFolder");
    EXPECT_TRUE(GetRows().isEmpty());
    EXPECT_EQ(2, GetModel()->columnCount());
    ChooseType("ZORGeoGeometry");
    EXPECT_EQ(4, GetRows().size());
    ChooseType("<all types>");
    EXPECT_EQ(4, GetRows().size());
}

TEST_F(ZORTestContainerBrowserTest, FitsTheColumnsToTheirContents)
{
    OpenConsole();
    auto* table = InConsole<QTableView>("_ContTable");
    const QAbstractItemView* const view = table; // which publishes the size of the contents
    const auto expectFit = [&](const char* when) {
        for (int column = 0; column < 2; ++column)
            table->setColumnWidth(column, 700);
        console->RefreshContainer();
        for (int column = 0; column < 2; ++column) {
            const int header = table->horizontalHeader()->sectionSizeHint(column);
            EXPECT_EQ(std::max(view->sizeHintForColumn(column), header), table->columnWidth(column))
                << when << ", column " << column;
        }
    };
    expectFit("empty");
    const int narrow = table->columnWidth(0);
    AddPoint(QString(60, u'W'));
    expectFit("with a long name");
    EXPECT_GT(table->columnWidth(0), narrow);
}

TEST_F(ZORTestContainerBrowserTest, SkipsIndicesWhoseGeometryIsGone)
{
    OpenConsole();
    auto* removing = new RemovingGeometry(GetContainer());
    removing->setObjectName("Removing");
    removing->Initialize();
    removing->other = AddPoint(QStringLiteral("P"));
    ChooseType("ZORGeoGeometry");
    EXPECT_EQ(nullptr, removing->other.data()) << "the second index has become null";
    EXPECT_EQ(QStringList{"Removing|0"}, GetRows());
}

TEST_F(ZORTestContainerBrowserTest, LosesTheCurrentRowOnRefresh)
{
    AddPoint(QStringLiteral("P"));
    OpenConsole();
    ClickRow(QStringLiteral("P"));
    EXPECT_TRUE(InConsole<QTableView>("_ContTable")->currentIndex().isValid());
    Click("_ContRefreshBtn");
    EXPECT_FALSE(InConsole<QTableView>("_ContTable")->currentIndex().isValid());
}

TEST_F(ZORTestContainerBrowserTest, DoesNothingWithoutACurrentRow)
{
    AddPoint(QStringLiteral("P"));
    OpenConsole();
    for (const char* button : {"_ContDeleteBtn", "_ContVisuBtn", "_ContInspectBtn"})
        Click(button);
    EXPECT_TRUE(boxes.Take().isEmpty());
    EXPECT_EQ(1, GetContainer()->GetNumGeometry());
    EXPECT_EQ(nullptr, console->findChild<QDialog*>());
}

TEST_F(ZORTestContainerBrowserTest, DeletesAnUnreferencedGeometryAndRefreshes)
{
    AddPoint(QStringLiteral("A"));
    const QPointer<ZORGeoPoint> deleted(AddPoint(QStringLiteral("B")));
    OpenConsole();
    AddPoint(QStringLiteral("C"));
    ClickRow(QStringLiteral("B"));
    Click("_ContDeleteBtn");
    EXPECT_EQ(nullptr, deleted.data());
    EXPECT_EQ((QStringList{"A|0", "C|0"}), GetRows());
}

TEST_F(ZORTestContainerBrowserTest, RefusesToDeleteWhenTheCountIsCurrentAndRefreshes)
{
    AddPoint(QStringLiteral("A"));
    GetContainer()->GetFeatureRoot("ZORFeatRoot")->setObjectName("Root");
    OpenConsole();
    for (const char* name : {"A", "Root"}) {
        ClickRow(QLatin1String(name), 1);
        EXPECT_EQ(1, InConsole<QTableView>("_ContTable")->currentIndex().column());
        Click("_ContDeleteBtn");
        const QList<MessageBoxCatcher::Box> expected{
            {QMessageBox::Critical, "Error", kDeleteRefused, QMessageBox::Ok, console.data()}};
        EXPECT_EQ(expected, boxes.Take()) << name;
        EXPECT_EQ(2, GetContainer()->GetNumGeometry()) << name;
        EXPECT_FALSE(InConsole<QTableView>("_ContTable")->currentIndex().isValid()) << "refreshed";
    }
}

TEST_F(ZORTestContainerBrowserTest, VisualizesAndInspectsTheRowWhoseCountIsCurrent)
{
    AddPoint(QStringLiteral("A"));
    AddPoint(QStringLiteral("B"));
    OpenConsole();
    ClickRow(QStringLiteral("B"), 1);
    Click("_ContInspectBtn");
    const auto* inspection = console->findChild<ZORTestGeoInspectionDlg*>();
    ASSERT_NE(nullptr, inspection);
    EXPECT_TRUE(inspection->isVisible());
    EXPECT_EQ(GetContainer()->GetGeometryByIndex(1), inspection->GetGeometry());
    answers.Accept("ZORTestPointVisOptionsDlg");
    Click("_ContVisuBtn");
    const auto* list = InConsole<QListWidget>("_VisList");
    ASSERT_EQ(1, list->count());
    EXPECT_EQ(QString("B"), list->item(0)->text());
}

TEST_F(ZORTestContainerBrowserTest, RefusesToDeleteAReferencedGeometryAndRefreshes)
{
    ZORGeoPoint* point = AddPoint(QStringLiteral("A"));
    const QObject user;
    point->AddReference(&user);
    OpenConsole();
    AddPoint(QStringLiteral("B"));
    ClickRow(QStringLiteral("A"));
    Click("_ContDeleteBtn");
    const QList<MessageBoxCatcher::Box> expected{
        {QMessageBox::Critical, "Error", kDeleteRefused, QMessageBox::Ok, console.data()}};
    EXPECT_EQ(expected, boxes.Take());
    EXPECT_EQ((QStringList{"A|1", "B|0"}), GetRows());
    point->RemoveReference(&user);
}

TEST_F(ZORTestContainerBrowserTest, DeletesAFeatureWhateverItsReferenceCount)
{
    ZORFeatRoot* root = GetContainer()->GetFeatureRoot("ZORFeatRoot");
    ASSERT_NE(nullptr, root);
    auto* folder = new ZORFeatFolder(root);
    folder->setObjectName("Folder");
    folder->Initialize();
    const QPointer<ZORFeatFolder> deleted(folder);
    const QObject user;
    folder->AddReference(&user);
    OpenConsole();
    ClickRow(QStringLiteral("Folder"));
    Click("_ContDeleteBtn");
    EXPECT_EQ(nullptr, deleted.data());
    EXPECT_EQ(1, GetRows().size()) << "the root is left";
}

TEST_F(ZORTestContainerBrowserTest, DeletesNothingByDeleteAll)
{
    AddPoint(QStringLiteral("A"));
    OpenConsole();
    ClickRow(QStringLiteral("A"));
    Click("_ContDeleteAllBtn");
    EXPECT_EQ(1, GetContainer()->GetNumGeometry());
    EXPECT_TRUE(InConsole<QTableView>("_ContTable")->currentIndex().isValid());
}

TEST_F(ZORTestContainerBrowserTest, SurvivesRowsWhoseGeometryIsGone)
{
    OpenConsole();
    for (const char* button : {"_ContVisuBtn", "_ContInspectBtn", "_ContDeleteBtn"}) {
        ZORGeoPoint* point = AddPoint(QStringLiteral("A"));
        console->RefreshContainer();
        ClickRow(QStringLiteral("A"));
        point->RemoveNoReferences();
        Click(button);
    }
    EXPECT_EQ(QStringList{kDeleteRefused}, boxes.TakeErrors()) << "of Delete alone";
    EXPECT_TRUE(GetRows().isEmpty());
    EXPECT_EQ(nullptr, console->findChild<QDialog*>());
}

TEST_F(ZORTestContainerBrowserTest, SeparatesTheNamesakesOfTwoConsoles)
{
    AddPoint(QStringLiteral("A"));
    OpenConsole();
    const QPointer<ZORTestMainDialog> first(console);
    OpenConsole();
    ClickRow(QStringLiteral("A"));
    Click("_ContDeleteBtn");
    EXPECT_TRUE(GetRows().isEmpty());
    CloseConsole();
    console = first;
    ClickRow(QStringLiteral("A"));
    Click("_ContInspectBtn");
    EXPECT_EQ(nullptr, console->findChild<QDialog*>());
}

} // namespace
