// What the nesting dialog remembers.

#include "NestingDlgRunTest.h"

#include <QComboBox>
#include <QLineEdit>
#include <QSpinBox>

namespace {

using ZORTestNestNestingDlgSettingsTest = NestingDlgRunTest;

TEST_F(ZORTestNestNestingDlgSettingsTest, RunRemembersMaterialAndParametersAsTheJobHasThem)
{
    OpenDialog();
    Find<QLineEdit>("_IDEdit")->setText("T-800");
    Set("_ThicknessSpn", 0.25);
    Set("_MaxDevSpn", 5);
    Set("_DevIncSpn", 2.5);
    Check("_SingleSidedChk");
    Check("_Grain90Chk");
    Check("_Grain270Chk");
    Set("_ItemSeparationSpn", 4);
    Set("_FrameWidthSpn", 6);
    Find<QComboBox>("_PackagingRuleCombo")->setCurrentIndex(1);
    Set("_MaxRunTimeSpn", 90);
    Set("_MinRunTimeSpn", 0.25);
    Find<QSpinBox>("_StackSizeSpn")->setValue(3);
    EXPECT_TRUE(GetSettings()->allKeys().isEmpty());
    Compute();

    // From the file: it has been written.
    QSettings stored(GetSettings()->fileName(), QSettings::IniFormat);
    stored.beginGroup("Debug");
    stored.beginGroup("ZORTestNestNestingDlg");
    EXPECT_EQ(14, stored.allKeys().size());
    EXPECT_EQ("T-800", stored.value("MaterialID").toString());
    EXPECT_EQ(0.25, stored.value("MaterialThickness").toDouble());
    EXPECT_NEAR(0.0872664626, stored.value("MaxDeviation").toDouble(), 1e-10);
    EXPECT_NEAR(0.0436332313, stored.value("DeviationIncrement").toDouble(), 1e-10);
    EXPECT_TRUE(stored.value("SingleSided").toBool());
    EXPECT_TRUE(stored.value("Grain90").toBool());
    EXPECT_FALSE(stored.value("Grain180", true).toBool());
    EXPECT_TRUE(stored.value("Grain270").toBool());
    EXPECT_EQ(4, stored.value("ItemSeparation").toDouble());
    EXPECT_EQ(6, stored.value("FrameWidth").toDouble());
    EXPECT_EQ(1, stored.value("PackagingUsageRule").toInt());
    EXPECT_EQ(90, stored.value("MaxRunTime").toDouble());
    EXPECT_EQ(0.25, stored.value("MinRunTime").toDouble());
    EXPECT_EQ(3, stored.value("StackSize").toInt());
    EXPECT_TRUE(GetSettings()->group().isEmpty());

    OpenDialog();
    EXPECT_EQ("T-800", Find<QLineEdit>("_IDEdit")->text());
    EXPECT_EQ(0.25, Find<QDoubleSpinBox>("_ThicknessSpn")->value());
    EXPECT_EQ(5, Find<QDoubleSpinBox>("_MaxDevSpn")->value());
    EXPECT_EQ(2.5, Find<QDoubleSpinBox>("_DevIncSpn")->value());
    EXPECT_TRUE(Find<QCheckBox>("_SingleSidedChk")->isChecked());
    EXPECT_TRUE(Find<QCheckBox>("_Grain90Chk")->isChecked());
    EXPECT_FALSE(Find<QCheckBox>("_Grain180Chk")->isChecked());
    EXPECT_TRUE(Find<QCheckBox>("_Grain270Chk")->isChecked());
    EXPECT_EQ(4, Find<QDoubleSpinBox>("_ItemSeparationSpn")->value());
    EXPECT_EQ(6, Find<QDoubleSpinBox>("_FrameWidthSpn")->value());
    EXPECT_EQ(1, Find<QComboBox>("_PackagingRuleCombo")->currentIndex());
    EXPECT_EQ(90, Find<QDoubleSpinBox>("_MaxRunTimeSpn")->value());
    EXPECT_EQ(0.25, Find<QDoubleSpinBox>("_MinRunTimeSpn")->value());
    EXPECT_EQ(3, Find<QSpinBox>("_StackSizeSpn")->value());
}

TEST_F(ZORTestNestNestingDlgSettingsTest, KeysThatAreMissingLeaveTheirWidgetsAlone)
{
    Store("FrameWidth", 12.5);
    Store("Grain180", true);
    Store("PackagingUsageRule", 7); // no such rule
    OpenDialog();
    EXPECT_EQ(12.5, Find<QDoubleSpinBox>("_FrameWidthSpn")->value());
    EXPECT_TRUE(Find<QCheckBox>("_Grain180Chk")->isChecked());
    EXPECT_EQ(0, Find<QComboBox>("_PackagingRuleCombo")->currentIndex());
    EXPECT_EQ("", Find<QLineEdit>("_IDEdit")->text());
    EXPECT_EQ(0, Find<QDoubleSpinBox>("_MaxRunTimeSpn")->value());
    EXPECT_FALSE(Find<QCheckBox>("_Grain90Chk")->isChecked());
}

TEST_F(ZORTestNestNestingDlgSettingsTest, OnlyARunWritesTheSettings)
{
    OpenDialog();
    Set("_FrameWidthSpn", 6);
    PressCancel();
    EXPECT_TRUE(GetSettings()->allKeys().isEmpty());
}

} // namespace
