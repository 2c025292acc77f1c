#include "nesting/ZORTestNestNestingDlg.h"

#include "NestingDlgTablesTest.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QMetaMethod>
#include <QSpinBox>
#include <QTest>

#include <limits>

namespace {

using ZORTestNestNestingDlgTest = NestingDlgTablesTest;

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
        return std::pair(Bar()->value(), Bar()->maximum());
    };
    Bar()->setMaximum(250);
    EXPECT_EQ(std::pair(250, 250), show(0.0005));
    EXPECT_EQ(std::pair(50, 100), show(0.5));
    EXPECT_EQ(std::pair(100, 100), show(0));
    EXPECT_EQ(std::pair(99, 100), show(0.999));
    EXPECT_EQ(std::pair(0, 100), show(0.001));
    EXPECT_EQ(std::pair(28, 100), show(0.29)); // a bit less than 29 hundredths
    EXPECT_EQ(std::pair(100, 100), show(1));
    EXPECT_EQ(std::pair(100, 100), show(std::numeric_limits<double>::quiet_NaN()));
}

TEST_F(ZORTestNestNestingDlgTest, StatusOfNobodyIsIgnored)
{
    OpenDialog();
    EXPECT_TRUE(QMetaObject::invokeMethod(dialog, "OnStatusChange"));
    EXPECT_TRUE(GetResults().isEmpty());
}

} // namespace
