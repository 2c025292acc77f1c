#include "StandardCommandsTest.h"
#include "support/CellEditing.h"
#include "support/QtMessages.h"

#include <ZORComposites/ZORCompLayup.h>
#include <ZORComposites/ZORCompMaterial.h>
#include <ZORComposites/ZORCompMaterialLibrary.h>
#include <ZORComposites/ZORCompPly.h>
#include <ZORComposites/ZORCompSequence.h>

#include <QAbstractButton>
#include <QAbstractItemModelTester>
#include <QLineEdit>
#include <QTableView>
#include <QTest>

#include <cmath>

namespace {

enum Column { Name, Type, Thickness, Density, E1, E2, G12, G23, Nu12, Permeability1 };

class ZORCompMaterialLibraryCmdTest : public StandardCommandsTest
{
protected:
    void OpenLibrary() { Open("ZORCompMaterialLibraryCmd.Edit"); }
    void SetMaterialCell(int row, int column, const QString& text)
    {
        SetCell("_MaterialTable", row, column, text);
    }
    QString GetCell(int row, int column) const
    {
        const QAbstractItemModel* const model = Find<QTableView>("_MaterialTable")->model();
        return model->index(row, column).data().toString();
    }
    int GetNumRows() const { return Find<QTableView>("_MaterialTable")->model()->rowCount(); }
    void SelectRow(int row) { Find<QTableView>("_MaterialTable")->selectRow(row); }
};

TEST_F(ZORCompMaterialLibraryCmdTest, AddsMaterials)
{
    OpenLibrary();
    EXPECT_EQ(GetNumRows(), 0);
    EXPECT_EQ(GetProblem(), QString());
    EXPECT_FALSE(Find<QAbstractButton>("_RemoveBtn")->isEnabled());
    Click("_AddBtn");
    Click("_AddBtn");
    EXPECT_EQ(GetCell(0, Name), QString("Material 1"));
    EXPECT_EQ(GetCell(1, Name), QString("Material 2"));
    SetMaterialCell(0, Name, "Prepreg");
    SetMaterialCell(0, Type, "CFRP");
    SetMaterialCell(0, Thickness, "0.125");
    SetMaterialCell(0, Density, " 1600 ");
    SetMaterialCell(0, E1, "1.35e5");
    SetMaterialCell(0, Nu12, "-0.3");
    SetMaterialCell(0, Permeability1, "0");
    EXPECT_EQ(GetProblem(), QString());
    EXPECT_TRUE(GetAll<ZORCompMaterial>().isEmpty()) << "nothing changes before OK";
    EXPECT_EQ(Accept(), QString());
    const QList<ZORCompMaterial*> materials = GetLibrary()->GetMaterials();
    ASSERT_EQ(materials.size(), 2);
    EXPECT_EQ(materials[0]->GetLabel(), QString("Prepreg"));
    const ZORCompMaterialProperties& properties = materials[0]->GetProperties();
    EXPECT_EQ(properties.type, QString("CFRP"));
    EXPECT_EQ(properties.thickness, 0.125);
    EXPECT_NEAR(properties.density, 1.6e-9, 1e-24);
    EXPECT_EQ(properties.E1, 1.35e5);
    EXPECT_TRUE(std::isnan(properties.E2)) << "empty is unknown";
    EXPECT_EQ(properties.v12, -0.3);
    EXPECT_EQ(properties.permeability1, 0);
    EXPECT_EQ(materials[1]->GetProperties(), ZORCompMaterialProperties());
}

TEST_F(ZORCompMaterialLibraryCmdTest, CopiesNothingWhereNoCellIsCurrent)
{
    OpenLibrary();
    auto* const table = Find<QTableView>("_MaterialTable");
    QAbstractItemModel* const model = table->model();
    const QAbstractItemModelTester tester(model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    QTest::keyClick(table, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QVariant(), model->data({}, Qt::DisplayRole));
    EXPECT_FALSE(model->setData({}, "Name", Qt::EditRole));
}

TEST_F(ZORCompMaterialLibraryCmdTest, EditsAndRemovesMaterialsAndKeepsWhatWasNotEdited)
{
    ZORCompMaterial* const first = AddMaterial("First", 0.1 + 0.2);
    ZORCompMaterial* const second = AddMaterial("Second", 1);
    ZORCompMaterial* const third = AddMaterial("Third", 2);
    OpenLibrary();
    EXPECT_EQ(GetNumRows(), 3);
    EXPECT_EQ(GetCell(0, Thickness), QString("0.3"));
    SetMaterialCell(0, Thickness, "0.3");
    SetMaterialCell(0, E2, "9000");
    SelectRow(1);
    Click("_RemoveBtn");
    SetMaterialCell(1, Name, "Second");
    SetMaterialCell(1, Thickness, "");
    EXPECT_EQ(second->GetLabel(), QString("Second"));
    EXPECT_EQ(Accept(), QString());
    EXPECT_EQ(GetLibrary()->GetMaterials(), (QList<ZORCompMaterial*>{first, third}));
    EXPECT_EQ(first->GetProperties().thickness, 0.1 + 0.2) << "to the last bit";
    EXPECT_EQ(first->GetProperties().E2, 9000);
    EXPECT_EQ(third->GetLabel(), QString("Second"));
    EXPECT_TRUE(std::isnan(third->GetProperties().thickness));
}

TEST_F(ZORCompMaterialLibraryCmdTest, CancelChangesNothing)
{
    const ZORCompMaterial* const first = AddMaterial("First", 1);
    const int numGeometry = container->GetNumGeometry();
    OpenLibrary();
    SetMaterialCell(0, Name, "Other");
    Click("_AddBtn");
    SelectRow(0);
    Click("_RemoveBtn");
    Cancel();
    EXPECT_EQ(container->GetNumGeometry(), numGeometry);
    EXPECT_EQ(first->GetLabel(), QString("First"));
}

TEST_F(ZORCompMaterialLibraryCmdTest, DoesNotTakeNamesThatAreEmptyOrTaken)
{
    AddMaterial("First", 1);
    AddMaterial("Second", 1);
    OpenLibrary();
    SetMaterialCell(1, Name, " First ");
    EXPECT_EQ(GetProblem(), QString("Row 2: another material is named 'First'."));
    EXPECT_EQ(Accept(), GetProblem());
    SetMaterialCell(0, Name, "");
    EXPECT_EQ(GetProblem(), QString("Row 1: enter a name."));
    SetMaterialCell(0, Name, "Second");
    EXPECT_EQ(GetProblem(), QString());
    EXPECT_EQ(Accept(), QString()) << "names may change places";
    EXPECT_EQ(GetLibrary()->GetMaterials()[0]->GetLabel(), QString("Second"));
    EXPECT_EQ(GetLibrary()->GetMaterials()[1]->GetLabel(), QString("First"));
}

TEST_F(ZORCompMaterialLibraryCmdTest, DoesNotTakeNumbersThatDoNotFit)
{
    const ZORCompMaterial* const first = AddMaterial("First", 1);
    OpenLibrary();
    for (const char* text : {"thin", "1 2", "inf", "nan"}) {
        SetMaterialCell(0, Thickness, QLatin1String(text));
        EXPECT_EQ(GetProblem(), QString("Thickness (mm) of 'First': enter a number, or nothing.")) << text;
        EXPECT_EQ(GetCell(0, Thickness), QLatin1String(text)) << "the input stays";
    }
    for (const char* text : {"0", "-1"}) {
        SetMaterialCell(0, Thickness, QLatin1String(text));
        EXPECT_EQ(GetProblem(), QString("Thickness (mm) of 'First' must be more than 0.")) << text;
    }
    SetMaterialCell(0, Thickness, "1");
    SetMaterialCell(0, Permeability1, "-1e-12");
    EXPECT_EQ(GetProblem(), QString::fromUtf8("Permeability 1 (m\u00b2) of 'First' must not be negative."));
    const QModelIndex cell = Find<QTableView>("_MaterialTable")->model()->index(0, Permeability1);
    EXPECT_EQ(cell.data(Qt::ToolTipRole).toString(), GetProblem());
    EXPECT_FALSE(cell.data(Qt::DecorationRole).isNull());
    EXPECT_EQ(Accept(), GetProblem());
    EXPECT_EQ(first->GetProperties().thickness, 1);
    Cancel();
}

TEST_F(ZORCompMaterialLibraryCmdTest, TableWithoutCurrentCellLogsNothing)
{
    AddMaterial("First", 1);
    OpenLibrary();
    QtMessages messages;
    EXPECT_FALSE(Find<QTableView>("_MaterialTable")->model()->data({}).isValid());
    EXPECT_EQ(QStringList(), messages.TakeWarnings());
    Cancel();
}

TEST_F(ZORCompMaterialLibraryCmdTest, KeepsMaterialsThatPliesAreMadeOf)
{
    ZORCompMaterial* const used = AddMaterial("Used", 1);
    ZORCompMaterial* const later = AddMaterial("Later", 1);
    auto* const layup = new ZORCompLayup(GetLibrary()->GetParentFeature());
    layup->Initialize();
    auto* const sequence = new ZORCompSequence(layup);
    sequence->Initialize();
    auto* const ply = new ZORCompPly(sequence);
    ply->SetMaterial(used);
    ply->Initialize();
    OpenLibrary();
    SelectRow(0);
    Click("_RemoveBtn");
    const auto shown = boxes.Take();
    ASSERT_EQ(shown.size(), 1);
    EXPECT_EQ(shown[0].text, QString("'Used' cannot be removed: plies are made of it (1)."));
    EXPECT_EQ(GetNumRows(), 2);
    SelectRow(1);
    Click("_RemoveBtn");
    ply->SetMaterial(later);
    EXPECT_EQ(Accept(), QString("a ply is made of the removed material 'Later'"));
    EXPECT_EQ(GetLibrary()->GetMaterials().size(), 2);
    ply->SetMaterial(used);
    EXPECT_EQ(Accept(), QString());
    EXPECT_EQ(GetLibrary()->GetMaterials(), QList<ZORCompMaterial*>{used});
}

TEST_F(ZORCompMaterialLibraryCmdTest, GetsAlongWithChangesFromOutside)
{
    ZORCompMaterial* const first = AddMaterial("First", 1);
    OpenLibrary();
    Click("_AddBtn");
    ZORCompMaterial* const other = AddMaterial("Material 1", 1);
    EXPECT_EQ(Accept(), QString("the library has another material named 'Material 1' by now"));
    EXPECT_EQ(GetLibrary()->GetMaterials().size(), 2);
    SetMaterialCell(1, Name, "Mine");
    first->SetLabel("First of all");
    EXPECT_EQ(GetCell(0, Name), QString("First of all")) << "follows";
    SetMaterialCell(0, Name, "Best");
    first->SetLabel("First");
    EXPECT_EQ(GetCell(0, Name), QString("Best")) << "was edited";
    first->Remove();
    EXPECT_EQ(GetProblem(), QString("Row 1: the material 'First' has been deleted. Remove the row."));
    EXPECT_EQ(Accept(), GetProblem());
    SelectRow(0);
    Click("_RemoveBtn");
    EXPECT_EQ(Accept(), QString());
    QStringList names;
    for (const ZORCompMaterial* material : GetLibrary()->GetMaterials())
        names.append(material->GetLabel());
    EXPECT_EQ(names, QStringList({"Material 1", "Mine"}));
    EXPECT_EQ(GetLibrary()->GetMaterials().constFirst(), other);
}

TEST_F(ZORCompMaterialLibraryCmdTest, ButtonsFinishAnOpenEditor)
{
    OpenLibrary();
    auto* const table = Find<QTableView>("_MaterialTable");
    QtMessages messages;
    Click("_AddBtn"); // opens the editor of the name
    QTest::keyClicks(table->findChild<QLineEdit*>(), "Carbon");
    Click("_AddBtn");
    EXPECT_EQ(GetCell(0, Name), QString("Carbon"));
    SettleEvents();
    EXPECT_EQ(1, table->findChildren<QLineEdit*>().size());

    QTest::keyClicks(EditCell(table, 1, Name), "Glass");
    Click("_RemoveBtn"); // the row that is edited
    SettleEvents();
    EXPECT_EQ(1, GetNumRows());
    EXPECT_EQ(GetCell(0, Name), QString("Carbon"));

    // Enter takes the value a moment later, when the row may be gone.
    QTest::keyClick(EditCell(table, 0, Name), Qt::Key_Return);
    Click("_RemoveBtn");
    SettleEvents();
    EXPECT_EQ(0, GetNumRows());
    EXPECT_EQ(QStringList(), messages.TakeWarnings());

    Click("_AddBtn");
    SettleEvents();
    EXPECT_NE(nullptr, EditCell(table, 0, Thickness)) << "the table still edits";
    EXPECT_EQ(QStringList(), messages.TakeWarnings());
}

} // namespace
