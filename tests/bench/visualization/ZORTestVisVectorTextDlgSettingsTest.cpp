// What the dialog of vector texts remembers.

#include "VectorTextDlgTest.h"

#include <ZORVisualization/ZORVisVectorFont.h>

#include <QMetaType>

namespace {

using ZORTestVisVectorTextDlgSettingsTest = VectorTextDlgTest;

TEST_F(ZORTestVisVectorTextDlgSettingsTest, FirstUseShowsZerosFirstEntriesAndNoDecorations)
{
    OpenDialog();
    for (const char* combo : {"_FontCombo", "_AnchorCombo", "_OrientationCombo", "_JustificationCombo"})
        EXPECT_EQ(0, Combo(combo)->currentIndex()) << combo;
    for (const char* check : {"_UnderlineChk", "_StrikeChk", "_OverlineChk"})
        EXPECT_FALSE(Check(check)->isChecked()) << check;
    const auto spinBoxes = dialog->findChildren<QDoubleSpinBox*>();
    EXPECT_EQ(13, spinBoxes.size());
    for (const QDoubleSpinBox* box : spinBoxes)
        EXPECT_EQ(0, box->value()) << box->objectName().toStdString();
    EXPECT_EQ(QString(), Find<QPlainTextEdit>("_TextEdit")->toPlainText());
}

TEST_F(ZORTestVisVectorTextDlgSettingsTest, OkOnFirstUseDrawsOriginAndGuideLinesAndWritesEveryKey)
{
    OpenDialog();
    PressOk();
    EXPECT_EQ(QList<bool>({true, true}), finished);
    ExpectOriginAndGuideLines(0, {}, {{}, {}, {}});

    GetSettings()->beginGroup("Debug/VisVectorText");
    QStringList keys = GetSettings()->childKeys();
    GetSettings()->endGroup();
    keys.sort();
    EXPECT_EQ(QStringList({"Anchor", "CharSpacing", "Decorations", "FirstDirX", "FirstDirY", "FirstDirZ",
                           "Font", "Justification", "LineSpacing", "Orientation", "OriginX", "OriginY",
                           "OriginZ", "SecondDirX", "SecondDirY", "SecondDirZ", "TextSize", "TiltAngle"}),
              keys);
    EXPECT_EQ(keys.size(), GetSettings()->allKeys().size());
    EXPECT_EQ(QVariant(ZORVisVectorFont::GetFontNames().constFirst()), GetSetting("Font"));
    for (const char* key : {"Anchor", "Orientation", "Justification", "Decorations"})
        EXPECT_EQ(QVariant(0), GetSetting(key)) << key;
    for (const char* key : {"LineSpacing", "CharSpacing", "TextSize", "TiltAngle", "OriginX", "SecondDirZ"})
        EXPECT_EQ(QVariant(0.0), GetSetting(key)) << key;
}

TEST_F(ZORTestVisVectorTextDlgSettingsTest, UnderlineAndOverlineAreStoredAsFive)
{
    OpenDialog();
    Check("_UnderlineChk")->setChecked(true);
    Check("_OverlineChk")->setChecked(true);
    PressOk();
    EXPECT_EQ(QVariant(5), GetSetting("Decorations"));

    OpenDialog();
    EXPECT_TRUE(Check("_UnderlineChk")->isChecked());
    EXPECT_FALSE(Check("_StrikeChk")->isChecked());
    EXPECT_TRUE(Check("_OverlineChk")->isChecked());
    Check("_StrikeChk")->setChecked(true);
    PressOk();
    EXPECT_EQ(QVariant(7), GetSetting("Decorations"));
}

TEST_F(ZORTestVisVectorTextDlgSettingsTest, NextDialogStartsFromAllValuesButTheText)
{
    OpenDialog();
    const auto spinBoxes = dialog->findChildren<QDoubleSpinBox*>();
    for (int i = 0; i < spinBoxes.size(); ++i)
        spinBoxes[i]->setValue(i % 2 ? -1234567.125 - i : 0.000001 * (i + 1));
    Combo("_FontCombo")->setCurrentText("scripts");
    Combo("_AnchorCombo")->setCurrentIndex(11);
    Combo("_OrientationCombo")->setCurrentIndex(1);
    Combo("_JustificationCombo")->setCurrentIndex(3);
    Check("_StrikeChk")->setChecked(true);
    Type("Not stored");
    PressOk();
    EXPECT_EQ(QVariant(QString("scripts")), GetSetting("Font"));
    EXPECT_EQ(QVariant(11), GetSetting("Anchor"));
    EXPECT_EQ(QVariant(1), GetSetting("Orientation"));
    EXPECT_EQ(QVariant(3), GetSetting("Justification"));
    EXPECT_EQ(QVariant(2), GetSetting("Decorations"));

    OpenDialog();
    const auto restored = dialog->findChildren<QDoubleSpinBox*>();
    ASSERT_EQ(13, restored.size());
    for (int i = 0; i < restored.size(); ++i)
        EXPECT_DOUBLE_EQ(i % 2 ? -1234567.125 - i : 0.000001 * (i + 1), restored[i]->value());
    EXPECT_EQ(QString("scripts"), Combo("_FontCombo")->currentText());
    EXPECT_EQ(11, Combo("_AnchorCombo")->currentIndex());
    EXPECT_EQ(1, Combo("_OrientationCombo")->currentIndex());
    EXPECT_EQ(3, Combo("_JustificationCombo")->currentIndex());
    EXPECT_TRUE(Check("_StrikeChk")->isChecked());
    EXPECT_EQ(QString(), Find<QPlainTextEdit>("_TextEdit")->toPlainText());
}

TEST_F(ZORTestVisVectorTextDlgSettingsTest, EveryKeyBelongsToItsBox)
{
    const QList<QPair<const char*, QString>> keys = {
        {"LineSpacing", "_LineSpacingSpn"}, {"CharSpacing", "_CharSpacingSpn"},
        {"TextSize", "_TextSizeSpn"},       {"TiltAngle", "_TiltAngleSpn"},
        {"OriginX", kPlaneBoxes[0]},        {"OriginY", kPlaneBoxes[1]},
        {"OriginZ", kPlaneBoxes[2]},        {"FirstDirX", kPlaneBoxes[3]},
        {"FirstDirY", kPlaneBoxes[4]},      {"FirstDirZ", kPlaneBoxes[5]},
        {"SecondDirX", kPlaneBoxes[6]},     {"SecondDirY", kPlaneBoxes[7]},
        {"SecondDirZ", kPlaneBoxes[8]}};
    for (int i = 0; i < keys.size(); ++i)
        SetSetting(keys[i].first, 1.5 + i);
    OpenDialog();
    for (int i = 0; i < keys.size(); ++i) {
        EXPECT_EQ(1.5 + i, Spin(keys[i].second)->value()) << keys[i].first;
        Spin(keys[i].second)->setValue(-2.25 - i);
    }
    PressOk();
    for (int i = 0; i < keys.size(); ++i) {
        EXPECT_EQ(QMetaType::Double, GetSetting(keys[i].first).typeId()) << keys[i].first;
        EXPECT_EQ(QVariant(-2.25 - i), GetSetting(keys[i].first)) << keys[i].first;
    }
}

TEST_F(ZORTestVisVectorTextDlgSettingsTest, StoredEntriesThatDoNotExistAreHarmless)
{
    SetSetting("Font", "no such font");
    SetSetting("Anchor", 99);
    SetSetting("Orientation", -5);
    SetSetting("Justification", "text");
    SetSetting("Decorations", 8);
    SetSetting("TextSize", "nan");
    OpenDialog();
    EXPECT_EQ(0, Combo("_FontCombo")->currentIndex());
    EXPECT_EQ(-1, Combo("_AnchorCombo")->currentIndex());
    EXPECT_EQ(-1, Combo("_OrientationCombo")->currentIndex());
    EXPECT_EQ(0, Combo("_JustificationCombo")->currentIndex());
    Type("I");
    PressOk();
    EXPECT_EQ(QList<bool>({true, true}), finished);
    EXPECT_EQ(QVariant(-1), GetSetting("Anchor"));
    EXPECT_EQ(QVariant(0), GetSetting("Decorations"));
}

TEST_F(ZORTestVisVectorTextDlgSettingsTest, CancelDrawsAndWritesNothing)
{
    OpenDialog();
    Type("Wing");
    PressCancel();
    EXPECT_EQ(QList<bool>({false}), finished);
    EXPECT_EQ(0, GetNumDrawn());
    EXPECT_TRUE(GetSettings()->allKeys().isEmpty());
}

} // namespace
