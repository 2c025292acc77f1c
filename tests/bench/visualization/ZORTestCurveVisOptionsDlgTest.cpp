#include "visualization/ZORTestCurveVisOptionsDlg.h"

#include "VisualizationTest.h"

#include <ZORSystem/ZORSysSettingsManager.h>

#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

namespace {

class ZORTestCurveVisOptionsDlgTest : public VisualizationTest
{
protected:
    void Build() { options = std::make_unique<ZORTestCurveVisOptionsDlg>(GetEnvironment()); }
    template<class Widget>
    Widget* Find(const char* objectName)
    {
        auto* widget = options->findChild<Widget*>(QLatin1String(objectName));
        EXPECT_NE(nullptr, widget) << objectName;
        return widget;
    }

    std::unique_ptr<ZORTestCurveVisOptionsDlg> options;
};

TEST_F(ZORTestCurveVisOptionsDlgTest, ShowsItsTexts)
{
    Build();
    EXPECT_EQ(QString("Curve Visualization"), options->windowTitle());
    QStringList labels;
    const auto found = options->findChildren<QLabel*>();
    for (const QLabel* label : found)
        labels.append(label->text());
    EXPECT_EQ(QStringList({"Color: ", "Style: ", "Width: "}), labels);
    EXPECT_EQ(QString("Draw Lines"), Find<QRadioButton>("_LinesRadio")->text());
    EXPECT_EQ(QString("Draw Points"), Find<QRadioButton>("_PointsRadio")->text());
    EXPECT_EQ(QString("Show point indexes"), Find<QCheckBox>("_PointIdxChk")->text());
    EXPECT_NE(nullptr, GetButton(options.get(), "OK"));
    EXPECT_NE(nullptr, GetButton(options.get(), "Cancel"));
}

TEST_F(ZORTestCurveVisOptionsDlgTest, StyleCodesAreCrossedAgainstTheList)
{
    struct Row
    {
        const char* text;
        int code;
    };
    const Row table[] = {
        {"solid", 0},
        {"dash", 1},
        {"dot", 2},
        {"chain", 4},
        {"1 dash 1 dot", 3},
        {"1 dash 2 dot", 5},
        {"1 dash 3 dot", 6},
        {"2 dash chain", 8},
        {"2 dash 2 dot", 7},
        {"2 dash 3 dot", 9},
        {"long dash dot", 10},
        {"long dash 2 dot", 11},
        {"long dash 3 dot", 12},
    };
    Build();
    auto* combo = Find<QComboBox>("_StyleCmb");
    ASSERT_EQ(int(std::size(table)), combo->count());
    for (int i = 0; i < combo->count(); ++i) {
        combo->setCurrentIndex(i);
        EXPECT_EQ(QString::fromLatin1(table[i].text), combo->currentText());
        EXPECT_EQ(QVariant(table[i].code), combo->currentData());
        EXPECT_EQ(table[i].code, int(options->GetOptions().GetLineStyle())) << table[i].text;
    }
}

TEST_F(ZORTestCurveVisOptionsDlgTest, WidthsAreOneToEight)
{
    Build();
    auto* combo = Find<QComboBox>("_WidthCmb");
    ASSERT_EQ(8, combo->count());
    for (int i = 0; i < combo->count(); ++i) {
        combo->setCurrentIndex(i);
        EXPECT_EQ(QString::number(i + 1), combo->currentText());
        EXPECT_EQ(i + 1, options->GetOptions().GetLineThickness());
    }
}

TEST_F(ZORTestCurveVisOptionsDlgTest, FirstRunShowsTheDefaults)
{
    Build();
    EXPECT_EQ(QVariant(QColor(255, 255, 255)), Find<QPushButton>("_ColorBtn")->property("color"));
    EXPECT_EQ(QString("solid"), Find<QComboBox>("_StyleCmb")->currentText());
    EXPECT_EQ(QString("2"), Find<QComboBox>("_WidthCmb")->currentText());
    EXPECT_TRUE(Find<QRadioButton>("_LinesRadio")->isChecked());
    EXPECT_FALSE(Find<QRadioButton>("_PointsRadio")->isChecked());
    EXPECT_FALSE(Find<QCheckBox>("_PointIdxChk")->isChecked());
    EXPECT_TRUE(options->IsDrawLines());
    EXPECT_FALSE(options->IsShowPointIndexes());
    EXPECT_TRUE(GetSettings()->allKeys().isEmpty()) << "building the dialog writes nothing";
}

TEST_F(ZORTestCurveVisOptionsDlgTest, OkWritesEveryKey)
{
    Build();
    Press(options.get(), "OK");
    EXPECT_EQ(QDialog::Accepted, options->result());
    ExpectSettings({{"Curve/Style", QMetaType::Int, 0},
                    {"Curve/Width", QMetaType::Int, 1},
                    {"Curve/Lines", QMetaType::Bool, true},
                    {"Curve/PointIdx", QMetaType::Bool, false},
                    {"Curve/Color", QMetaType::QColor, QColor(255, 255, 255)}});
}

TEST_F(ZORTestCurveVisOptionsDlgTest, OkWritesWhatWasChosen)
{
    Build();
    Find<QComboBox>("_StyleCmb")->setCurrentIndex(7);
    Find<QComboBox>("_WidthCmb")->setCurrentIndex(4);
    Find<QRadioButton>("_PointsRadio")->click();
    Find<QCheckBox>("_PointIdxChk")->click();
    answers.AnswerColor(QColor(1, 2, 3));
    Find<QPushButton>("_ColorBtn")->click();
    EXPECT_FALSE(options->IsDrawLines());
    EXPECT_TRUE(options->IsShowPointIndexes());

    Press(options.get(), "OK");
    ExpectSettings({{"Curve/Style", QMetaType::Int, 7},
                    {"Curve/Width", QMetaType::Int, 4},
                    {"Curve/Lines", QMetaType::Bool, false},
                    {"Curve/PointIdx", QMetaType::Bool, true},
                    {"Curve/Color", QMetaType::QColor, QColor(1, 2, 3)}});
}

TEST_F(ZORTestCurveVisOptionsDlgTest, CancelWritesNothing)
{
    Build();
    Find<QComboBox>("_StyleCmb")->setCurrentIndex(7);
    options->show();
    Press(options.get(), "Cancel");
    EXPECT_EQ(QDialog::Rejected, options->result());
    EXPECT_FALSE(options->isVisible());
    EXPECT_TRUE(GetSettings()->allKeys().isEmpty());
}

TEST_F(ZORTestCurveVisOptionsDlgTest, NextDialogStartsFromTheStoredValues)
{
    SetSetting("Curve/Style", 12);
    SetSetting("Curve/Width", 7);
    SetSetting("Curve/Lines", false);
    SetSetting("Curve/PointIdx", true);
    SetSetting("Curve/Color", QColor(9, 8, 7));
    // Through a file, as after a restart.
    GetSettings()->sync();
    ASSERT_TRUE(QFile::copy(GetSettings()->fileName(), GetPath("restarted.ini")));
    QSettings restarted(GetPath("restarted.ini"), QSettings::IniFormat);
    ZORSysSettingsManager::GetManager()->SetSource(&restarted);

    Build();
    ZORSysSettingsManager::GetManager()->SetSource(GetSettings());
    EXPECT_EQ(QString("long dash 3 dot"), Find<QComboBox>("_StyleCmb")->currentText());
    EXPECT_EQ(QString("8"), Find<QComboBox>("_WidthCmb")->currentText());
    EXPECT_FALSE(options->IsDrawLines());
    EXPECT_TRUE(Find<QRadioButton>("_PointsRadio")->isChecked());
    EXPECT_TRUE(options->IsShowPointIndexes());
    EXPECT_EQ(QColor(9, 8, 7), options->GetOptions().GetColor());
}

TEST_F(ZORTestCurveVisOptionsDlgTest, StoredStyleOutOfRangeLeavesNoCurrentEntry)
{
    for (const int index : {13, -1, 1000000}) {
        SetSetting("Curve/Style", index);
        SetSetting("Curve/Width", index);
        Build();
        EXPECT_EQ(-1, Find<QComboBox>("_StyleCmb")->currentIndex()) << index;
        EXPECT_EQ(-1, Find<QComboBox>("_WidthCmb")->currentIndex()) << index;
        EXPECT_EQ(ZORVisOptions::Solid, options->GetOptions().GetLineStyle());
    }
}

TEST_F(ZORTestCurveVisOptionsDlgTest, InvalidColorIsStoredAndGivenOn)
{
    Build();
    answers.CancelColor();
    Find<QPushButton>("_ColorBtn")->click();
    EXPECT_FALSE(options->GetOptions().GetColor().isValid());
    Press(options.get(), "OK");
    EXPECT_EQ(QVariant(QColor()), GetSetting("Curve/Color"));

    Build();
    EXPECT_FALSE(options->GetOptions().GetColor().isValid()) << "a stored invalid color stays invalid";
}

} // namespace
