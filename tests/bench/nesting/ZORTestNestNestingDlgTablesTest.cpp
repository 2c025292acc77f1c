// The tables of parts and sheets of the nesting dialog.

#include "NestingDlgTablesTest.h"
#include "nesting/ZORTestNestNestingDlg.h"
#include "support/CellEditing.h"
#include "support/HostileFiles.h"
#include "support/MessageOf.h"
#include "support/QtMessages.h"

#include <QComboBox>
#include <QFile>
#include <QFileInfo>
#include <QSpinBox>
#include <QTest>

namespace {

using ZORTestNestNestingDlgTablesTest = NestingDlgTablesTest;

TEST_F(ZORTestNestNestingDlgTablesTest, AddAppendsARowOfTypedCellsForEachFile)
{
    const QStringList paths{WritePart("rib.left.msi"), WritePart("a skin.msi")};
    OpenDialog();
    AnswerFiles(paths);
    Click("_AddItemBtn", dialog);
    const QList<DialogAnswerer::Shown> shown = answers.Take();
    ASSERT_EQ(1, shown.size());
    EXPECT_EQ("Select MSI files", shown[0].title);
    EXPECT_EQ(dialog, shown[0].parent);
    EXPECT_EQ(QStringList("All Files (*)"), shown[0].filters);
    ASSERT_EQ(2, Items()->rowCount());
    EXPECT_EQ(QVariantList({"rib", 1, false, 0.0, false, false, false, false, 0.0, 0.0, 0, paths[0]}),
              GetRow(Items(), 0));
    EXPECT_EQ(QVariantList({"a skin", 1, false, 0.0, false, false, false, false, 0.0, 0.0, 0, paths[1]}),
              GetRow(Items(), 1));
    const QMetaType::Type types[] = {QMetaType::QString, QMetaType::Int,  QMetaType::Bool,
                                     QMetaType::Double,  QMetaType::Bool, QMetaType::Bool,
                                     QMetaType::Bool,    QMetaType::Bool, QMetaType::Double,
                                     QMetaType::Double,  QMetaType::Int,  QMetaType::QString};
    for (int column = 0; column < 12; ++column)
        EXPECT_EQ(types[column], GetRow(Items(), 0).at(column).typeId()) << column;

    answers.CancelFile();
    Click("_AddItemBtn", dialog);
    EXPECT_EQ(2, Items()->rowCount());
}

TEST_F(ZORTestNestNestingDlgTablesTest, CellsHaveTheEditorsOfTheirTypes)
{
    OpenDialog();
    AddItem(WritePart("rib.msi"));
    AddRoll(300);
    const auto expectEditor = [](const char* className, QTableWidget* table, int column) {
        table->setCurrentCell(0, column);
        table->editItem(table->item(0, column));
        const QWidget* editor = table->indexWidget(table->currentIndex());
        EXPECT_TRUE(editor && editor->inherits(className)) << className << " in column " << column;
        table->setCurrentCell(0, 0);
    };
    expectEditor("QSpinBox", Items(), 1);
    expectEditor("QComboBox", Items(), 2); // false and true
    expectEditor("QDoubleSpinBox", Items(), 3);
    expectEditor("QSpinBox", Items(), 10);
    expectEditor("QLineEdit", Items(), 11);
    expectEditor("QDoubleSpinBox", Sheets(), 2);
    expectEditor("QComboBox", Sheets(), 4);
}

TEST_F(ZORTestNestNestingDlgTablesTest, FileThatCannotBeOpenedEndsAddingAndKeepsThoseBefore)
{
    const QStringList paths{WritePart("a.msi"), WritePart("b.msi"), WritePart("c.msi")};
    const auto remove = [&paths] { EXPECT_TRUE(QFile::remove(paths[1])); };
    const QString message = "cannot open file '" + paths[1] + "': No such file or directory";
    OpenDialog();
    AnswerFiles(paths, remove);
    Click("_AddItemBtn", dialog);
    EXPECT_EQ(QStringList(message), boxes.TakeErrors());
    ASSERT_EQ(1, Items()->rowCount());
    EXPECT_EQ(paths[0], GetRow(Items(), 0).at(11).toString());

    WritePart("b.msi");
    AnswerFiles(paths, remove);
    EXPECT_EQ(message, MessageOf([this] { Slots()->OnAddItemClicked(); }));
    EXPECT_EQ(2, Items()->rowCount());
}

TEST_F(ZORTestNestNestingDlgTablesTest, PipesAndEnormousFilesAreNotAdded)
{
    const QString folder = QFileInfo(GetPath("a")).absolutePath();
    const QString pipe = HostileFiles::MakePipe(folder, "pipe.msi");
    const QString zeros = HostileFiles::MakeZeros(folder, (qint64(1) << 30) + 1, "zeros.msi");
    OpenDialog();
    AnswerFiles({pipe});
    EXPECT_EQ("cannot open file '" + pipe + "': it is not a regular file",
              MessageOf([this] { Slots()->OnAddItemClicked(); }));
    AnswerFiles({zeros});
    EXPECT_EQ("cannot open file '" + zeros + "': it is larger than 1 GB",
              MessageOf([this] { Slots()->OnAddItemClicked(); }));
    EXPECT_EQ(0, Items()->rowCount());
}

TEST_F(ZORTestNestNestingDlgTablesTest, RemoveTakesEveryRowOfAllSelectedRangesOnce)
{
    OpenDialog();
    for (QTableWidget* table : {Items(), Sheets()}) {
        for (int row = 0; row < 8; ++row)
            AppendRow(table, {QString::number(row)});
        table->setRangeSelected({1, 0, 2, 3}, true);
        table->setRangeSelected({2, 5, 3, 6}, true);
        table->setRangeSelected({6, 2, 6, 2}, true);
        ASSERT_GE(table->selectedRanges().size(), 3);
        Click(table == Items() ? "_RemoveItemBtn" : "_PackagingRemoveBtn", dialog);
        QStringList left;
        for (int row = 0; row < table->rowCount(); ++row)
            left.append(table->item(row, 0)->text());
        EXPECT_EQ(QStringList({"0", "4", "5", "7"}), left);
    }
}

TEST_F(ZORTestNestNestingDlgTablesTest, RemoveWithoutSelectionTakesNothing)
{
    OpenDialog();
    for (QTableWidget* table : {Items(), Sheets()})
        AppendRow(table, {"one"});
    Click("_RemoveItemBtn", dialog);
    Click("_PackagingRemoveBtn", dialog);
    EXPECT_EQ(1, Items()->rowCount());
    EXPECT_EQ(1, Sheets()->rowCount());
}

TEST_F(ZORTestNestNestingDlgTablesTest, AddPackagingAsksForWidthAndNameOfARoll)
{
    OpenDialog();
    answers.Answer("QInputDialog", [](QDialog* shown) {
        auto* query = qobject_cast<QInputDialog*>(shown);
        EXPECT_EQ(0, query->doubleValue());
        EXPECT_EQ(-2147483647, query->doubleMinimum());
        EXPECT_EQ(2147483647, query->doubleMaximum());
        EXPECT_EQ(1, query->doubleDecimals());
        EXPECT_EQ(1, query->doubleStep());
        query->setDoubleValue(1250.5);
        query->accept();
    });
    answers.Answer("QInputDialog", [](QDialog* shown) {
        auto* query = qobject_cast<QInputDialog*>(shown);
        EXPECT_EQ("", query->textValue());
        query->setTextValue("roll");
        query->accept();
    });
    Click("_PackagingAddBtn", dialog);
    const QList<DialogAnswerer::Shown> shown = answers.Take();
    ASSERT_EQ(2, shown.size());
    EXPECT_EQ("Width", shown[0].title);
    EXPECT_EQ("Width", shown[0].label);
    EXPECT_EQ("Name", shown[1].title);
    EXPECT_EQ("Name", shown[1].label);
    ASSERT_EQ(1, Sheets()->rowCount());
    EXPECT_EQ(QVariantList({"roll", 1, 1250.5, "inf", true, 0.0, 0.0, 0.0, 0.0, 0.0}), GetRow(Sheets(), 0));
    const QMetaType::Type types[] = {
        QMetaType::QString, QMetaType::Int,    QMetaType::Double, QMetaType::QString, QMetaType::Bool,
        QMetaType::Double,  QMetaType::Double, QMetaType::Double, QMetaType::Double,  QMetaType::Double};
    for (int column = 0; column < 10; ++column)
        EXPECT_EQ(types[column], GetRow(Sheets(), 0).at(column).typeId()) << column;
}

TEST_F(ZORTestNestNestingDlgTablesTest, CancelledQueriesAreTakenAsTheyCome)
{
    OpenDialog();
    answers.CancelInput();
    answers.CancelInput();
    Click("_PackagingAddBtn", dialog);
    answers.CancelInput();
    answers.AnswerText("named");
    Click("_PackagingAddBtn", dialog);
    AnswerRoll(300, "");
    Click("_PackagingAddBtn", dialog);
    ASSERT_EQ(3, Sheets()->rowCount());
    EXPECT_EQ(QVariantList({"", 1, 0.0, "inf", true, 0.0, 0.0, 0.0, 0.0, 0.0}), GetRow(Sheets(), 0));
    EXPECT_EQ("named", GetRow(Sheets(), 1).at(0));
    EXPECT_EQ(0.0, GetRow(Sheets(), 1).at(2));
    EXPECT_EQ("", GetRow(Sheets(), 2).at(0));
    EXPECT_EQ(300.0, GetRow(Sheets(), 2).at(2));
}

TEST_F(ZORTestNestNestingDlgTablesTest, RowsVanishUnderAnOpenEditor)
{
    OpenDialog();
    QtMessages messages;
    for (int i = 0; i < 3; ++i) {
        AddItem(WritePart("part"));
        AddRoll(100);
    }
    for (QTableWidget* table : {Items(), Sheets()}) {
        const char* const removeButton = table == Items() ? "_RemoveItemBtn" : "_PackagingRemoveBtn";
        table->selectRow(1);
        QTest::keyClicks(EditCell(table, 1, 0), "typed");
        Find<QPushButton>(removeButton)->click();
        SettleEvents();
        EXPECT_EQ(2, table->rowCount());
        // Enter takes the value a moment later, when the row may be gone.
        table->selectRow(1);
        QTest::keyClick(EditCell(table, 1, 0), Qt::Key_Return);
        Find<QPushButton>(removeButton)->click();
        SettleEvents();
        EXPECT_EQ(1, table->rowCount());

        QTest::keyClicks(EditCell(table, 0, 0), "kept");
        Find<QPushButton>(removeButton)->click(); // another row, or none, is selected
        SettleEvents();
        if (table->rowCount() == 0)
            continue;
        EXPECT_EQ(QString("kept"), table->item(0, 0)->text());
        EXPECT_NE(nullptr, EditCell(table, 0, 1)) << "the table still edits";
    }
    EXPECT_EQ(QStringList(), messages.TakeWarnings());
}

} // namespace
