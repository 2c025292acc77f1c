#include "nesting/ZORTestNestNestingDlg.h"

#include "NestingDlgTest.h"
#include "console/ZORTestMainDialog.h"
#include "support/CellEditing.h"
#include "support/HostileFiles.h"
#include "support/MessageOf.h"
#include "support/QtMessages.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMetaMethod>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>

#include <limits>

namespace {

class ZORTestNestNestingDlgTest : public NestingDlgTest
{
protected:
    /// Takes \a paths at once in the next file dialog; \a afterwards runs before the dialog's caller sees them.
    void AnswerFiles(const QStringList& paths, const std::function<void()>& afterwards = {})
    {
        answers.Answer("QFileDialog", [paths, afterwards](QDialog* shown) {
            auto* files = qobject_cast<QFileDialog*>(shown);
            EXPECT_EQ(QFileDialog::ExistingFiles, files->fileMode());
            files->findChild<QLineEdit*>()->setText('"' + paths.join("\" \"") + '"');
            files->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Open)->click();
            if (afterwards)
                afterwards();
        });
    }
    /// Answers the queries for the width and the name of a roll.
    void AnswerRoll(double width, const QString& name)
    {
        answers.Answer("QInputDialog", [width](QDialog* shown) {
            qobject_cast<QInputDialog*>(shown)->setDoubleValue(width);
            shown->accept();
        });
        answers.AnswerText(name);
    }
    static QStringList GetHeaders(const QTableWidget* table)
    {
        QStringList headers;
        for (int column = 0; column < table->columnCount(); ++column)
            headers.append(table->horizontalHeaderItem(column)->text());
        return headers;
    }
};

TEST_F(ZORTestNestNestingDlgTest, FormShowsPartsSheetsMaterialAndParameters)
{
    OpenDialog();
    const QMetaObject* metaObject = dialog->metaObject();
    EXPECT_STREQ("Translate for Nesting",
                 metaObject->classInfo(metaObject->indexOfClassInfo("label")).value());
    EXPECT_EQ(-1, metaObject->indexOfClassInfo("createdTypes"));
    EXPECT_EQ("Nesting Test", dialog->windowTitle());
    const QHash<QByteArray, QString> texts{{"_ItemLabel", "Sources:"},
                                           {"_PackageLabel", "Packaging: "},
                                           {"_IDLbl", "ID:"},
                                           {"_ThicknessLbl", "Thickness: "},
                                           {"_MaxDevLabel", "Max Dev:"},
                                           {"_DevIncLabel", "Dev. Inc."},
                                           {"_PackagingRuleLbl", "Packaging Usage Rule:"},
                                           {"_FrameWidthLbl", "Frame Width: "},
                                           {"_ItemSeparationLbl", "Item Separation: "},
                                           {"_MaxRunTimeLbl", "Max Run Time: "},
                                           {"_MinRunTimeLbl", "Min Run Time: "},
                                           {"_StackSizeLbl", "Stack Size: "}};
    const auto labels = dialog->findChildren<QLabel*>();
    EXPECT_EQ(texts.size(), labels.size());
    for (const QLabel* label : labels)
        EXPECT_EQ(texts.value(label->objectName().toLatin1()), label->text());
    const std::pair<const char*, const char*> buttons[] = {{"_AddItemBtn", "Add"},
                                                           {"_RemoveItemBtn", "Remove"},
                                                           {"_PackagingAddBtn", "Add"},
                                                           {"_PackagingRemoveBtn", "Remove"},
                                                           {"_SingleSidedChk", "Single Sided"},
                                                           {"_Grain90Chk", "Grain 90"},
                                                           {"_Grain180Chk", "Grain 180"},
                                                           {"_Grain270Chk", "Grain 270"},
                                                           {"_ComputeBtn", "Compute"},
                                                           {"_StopBtn", "Stop"}};
    for (const auto& [name, text] : buttons)
        EXPECT_EQ(QLatin1String(text), Find<QAbstractButton>(name)->text()) << name;
    EXPECT_EQ("Material", Find<QGroupBox>("_MaterialBox")->title());
    EXPECT_EQ("Nesting Parameters", Find<QGroupBox>("_ParametersBox")->title());
    EXPECT_EQ(QStringList({"Name", "Quantity", "Mirrored", "Orientation", "Flippable", "Grain90", "Grain180",
                           "Grain270", "Max Dev", "Dev Inc", "Priority", "File"}),
              GetHeaders(Items()));
    EXPECT_EQ(QStringList({"Name", "Quantity", "Width", "Length", "Infinite", "LeftTrim", "RightTrim",
                           "TopTrim", "BottomTrim", "Cost"}),
              GetHeaders(Sheets()));
    const auto* rules = Find<QComboBox>("_PackagingRuleCombo");
    ASSERT_EQ(3, rules->count());
    EXPECT_EQ("AsListed", rules->itemText(0));
    EXPECT_EQ("BestMix", rules->itemText(1));
    EXPECT_EQ("BestSize", rules->itemText(2));
    EXPECT_EQ(1, dialog->findChildren<ZORNestNestingProcessor*>().size());
}

TEST_F(ZORTestNestNestingDlgTest, NumbersHaveTheirEstablishedRanges)
{
    OpenDialog();
    const std::pair<const char*, double> maxima[] = {{"_ThicknessSpn", 99.99},      {"_MaxDevSpn", 99.99},
                                                     {"_DevIncSpn", 99.99},         {"_FrameWidthSpn", 99.99},
                                                     {"_ItemSeparationSpn", 99.99}, {"_MaxRunTimeSpn", 1e25},
                                                     {"_MinRunTimeSpn", 1e21}};
    for (const auto& [name, maximum] : maxima) {
        const auto* spinBox = Find<QDoubleSpinBox>(name);
        EXPECT_EQ(0, spinBox->minimum()) << name;
        EXPECT_EQ(maximum, spinBox->maximum()) << name;
        EXPECT_EQ(2, spinBox->decimals()) << name;
        EXPECT_EQ(0, spinBox->value()) << name;
    }
    EXPECT_EQ(0, Find<QSpinBox>("_StackSizeSpn")->minimum());
    EXPECT_EQ(99, Find<QSpinBox>("_StackSizeSpn")->maximum());
    Find<QDoubleSpinBox>("_MaxRunTimeSpn")->setValue(1e25);
    EXPECT_EQ(1e25, Find<QDoubleSpinBox>("_MaxRunTimeSpn")->value());
}

TEST_F(ZORTestNestNestingDlgTest, ActionRowHoldsBarAndButtons)
{
    OpenDialog();
    auto* row = dialog->findChild<QHBoxLayout*>("_ActionLayout");
    ASSERT_NE(nullptr, row);
    for (QWidget* widget : {static_cast<QWidget*>(Bar()), Find<QWidget>("_ComputeBtn"),
                            Find<QWidget>("_StopBtn"), Find<QWidget>("_ButtonBox")})
        EXPECT_GE(row->indexOf(widget), 0) << widget->objectName().toStdString();
    const auto* buttonBox = Find<QDialogButtonBox>("_ButtonBox");
    EXPECT_EQ(QDialogButtonBox::StandardButtons(QDialogButtonBox::Cancel), buttonBox->standardButtons());
    EXPECT_EQ(0, Bar()->value());
    EXPECT_EQ(0, Bar()->minimum());
    EXPECT_EQ(100, Bar()->maximum());
}

TEST_F(ZORTestNestNestingDlgTest, SlotsHaveTheirEstablishedNamesAndOrder)
{
    const QMetaObject& metaObject = ZORTestNestNestingDlg::staticMetaObject;
    QList<QByteArray> slotNames;
    for (int i = metaObject.methodOffset(); i < metaObject.methodCount(); ++i) {
        EXPECT_EQ(QMetaMethod::Slot, metaObject.method(i).methodType());
        slotNames.append(metaObject.method(i).methodSignature());
    }
    EXPECT_EQ(QList<QByteArray>({"OnAddItemClicked()", "OnRemoveItemClicked()", "OnAddPacakgeClicked()",
                                 "OnRemovePackageClicked()", "OnComputeClicked()", "OnStopClicked()",
                                 "OnCancelClicked()", "OnProgressUpdate(double)", "OnStatusChange()"}),
              slotNames);
    ASSERT_EQ(1, metaObject.constructorCount());
    EXPECT_EQ("ZORTestNestNestingDlg(ZORTestEnvironment*)", metaObject.constructor(0).methodSignature());
}

TEST_F(ZORTestNestNestingDlgTest, MenuOpensIt)
{
    OpenConsole();
    EXPECT_EQ("Nest...", MenuAction("actionNest")->text());
    EXPECT_NE(nullptr, qobject_cast<ZORTestNestNestingDlg*>(TriggerMenu("actionNest")));
}

TEST_F(ZORTestNestNestingDlgTest, AddAppendsARowOfTypedCellsForEachFile)
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
        EXPECT_EQ(types[column], GetRow(Items(), 0)[column].typeId()) << column;

    answers.CancelFile();
    Click("_AddItemBtn", dialog);
    EXPECT_EQ(2, Items()->rowCount());
}

TEST_F(ZORTestNestNestingDlgTest, CellsHaveTheEditorsOfTheirTypes)
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

TEST_F(ZORTestNestNestingDlgTest, FileThatCannotBeOpenedEndsAddingAndKeepsThoseBefore)
{
    const QStringList paths{WritePart("a.msi"), WritePart("b.msi"), WritePart("c.msi")};
    const auto remove = [&paths] { EXPECT_TRUE(QFile::remove(paths[1])); };
    const QString message = "cannot open file '" + paths[1] + "': No such file or directory";
    OpenDialog();
    AnswerFiles(paths, remove);
    Click("_AddItemBtn", dialog);
    EXPECT_EQ(QStringList(message), boxes.TakeErrors());
    ASSERT_EQ(1, Items()->rowCount());
    EXPECT_EQ(paths[0], GetRow(Items(), 0)[11].toString());

    WritePart("b.msi");
    AnswerFiles(paths, remove);
    EXPECT_EQ(message, MessageOf([this] { Slots()->OnAddItemClicked(); }));
    EXPECT_EQ(2, Items()->rowCount());
}

TEST_F(ZORTestNestNestingDlgTest, PipesAndEnormousFilesAreNotAdded)
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

TEST_F(ZORTestNestNestingDlgTest, RemoveTakesEveryRowOfAllSelectedRangesOnce)
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

TEST_F(ZORTestNestNestingDlgTest, RemoveWithoutSelectionTakesNothing)
{
    OpenDialog();
    for (QTableWidget* table : {Items(), Sheets()})
        AppendRow(table, {"one"});
    Click("_RemoveItemBtn", dialog);
    Click("_PackagingRemoveBtn", dialog);
    EXPECT_EQ(1, Items()->rowCount());
    EXPECT_EQ(1, Sheets()->rowCount());
}

TEST_F(ZORTestNestNestingDlgTest, AddPackagingAsksForWidthAndNameOfARoll)
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
        EXPECT_EQ(types[column], GetRow(Sheets(), 0)[column].typeId()) << column;
}

TEST_F(ZORTestNestNestingDlgTest, CancelledQueriesAreTakenAsTheyCome)
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
    EXPECT_EQ("named", GetRow(Sheets(), 1)[0]);
    EXPECT_EQ(0.0, GetRow(Sheets(), 1)[2]);
    EXPECT_EQ("", GetRow(Sheets(), 2)[0]);
    EXPECT_EQ(300.0, GetRow(Sheets(), 2)[2]);
}

TEST_F(ZORTestNestNestingDlgTest, ReturnInAFieldPressesNoButton)
{
    OpenDialog();
    QTest::keyClick(Find<QLineEdit>("_IDEdit"), Qt::Key_Return);
    QTest::keyClick(Find<QDoubleSpinBox>("_FrameWidthSpn"), Qt::Key_Return);
    QTest::keyClick(Items(), Qt::Key_Return);
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_EQ(0, Processor()->GetResponses().size());
}

TEST_F(ZORTestNestNestingDlgTest, CancelButtonEndsTheDialogAndItsRuns)
{
    OpenDialog();
    const QStringList calls = TraceCalls([this] { PressCancel(); });
    EXPECT_EQ(1, calls.count("ZORNestNestingProcessor::Cancel(null)"));
    EXPECT_EQ(QList<bool>({false}), finished);
    EXPECT_EQ(nullptr, dialog.data());
}

TEST_F(ZORTestNestNestingDlgTest, StopButtonStopsAllRuns)
{
    OpenDialog();
    EXPECT_EQ(QStringList("ZORNestNestingProcessor::Stop(null)"),
              TraceCalls([this] { Click("_StopBtn", dialog); }));
}

TEST_F(ZORTestNestNestingDlgTest, BarFollowsTheProgress)
{
    OpenDialog();
    const auto show = [this](double ratio) {
        EXPECT_TRUE(QMetaObject::invokeMethod(dialog, "OnProgressUpdate", Q_ARG(double, ratio)));
        return QPair(Bar()->value(), Bar()->maximum());
    };
    Bar()->setMaximum(250);
    EXPECT_EQ(QPair(250, 250), show(0.0005));
    EXPECT_EQ(QPair(50, 100), show(0.5));
    EXPECT_EQ(QPair(100, 100), show(0));
    EXPECT_EQ(QPair(99, 100), show(0.999));
    EXPECT_EQ(QPair(0, 100), show(0.001));
    EXPECT_EQ(QPair(28, 100), show(0.29)); // a bit less than 29 hundredths
    EXPECT_EQ(QPair(100, 100), show(1));
    EXPECT_EQ(QPair(100, 100), show(std::numeric_limits<double>::quiet_NaN()));
}

TEST_F(ZORTestNestNestingDlgTest, StatusOfNobodyIsIgnored)
{
    OpenDialog();
    EXPECT_TRUE(QMetaObject::invokeMethod(dialog, "OnStatusChange"));
    EXPECT_TRUE(GetResults().isEmpty());
}

TEST_F(ZORTestNestNestingDlgTest, RowsVanishUnderAnOpenEditor)
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
