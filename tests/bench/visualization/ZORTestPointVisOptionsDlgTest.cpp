#include "visualization/ZORTestPointVisOptionsDlg.h"

#include "VisualizationTest.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>

namespace {

class ZORTestPointVisOptionsDlgTest : public VisualizationTest
{
protected:
    void Build() { options = std::make_unique<ZORTestPointVisOptionsDlg>(GetEnvironment()); }
    QPushButton* ColorButton() { return options->findChild<QPushButton*>("_ColorBtn"); }
    QComboBox* SymbolCombo() { return options->findChild<QComboBox*>("_SymbolCmb"); }

    std::unique_ptr<ZORTestPointVisOptionsDlg> options;
};

TEST_F(ZORTestPointVisOptionsDlgTest, ShowsItsTexts)
{
    Build();
    EXPECT_EQ(QString("Point Visualization Options"), options->windowTitle());
    QStringList labels;
    const auto found = options->findChildren<QLabel*>();
    for (const QLabel* label : found)
        labels.append(label->text());
    EXPECT_EQ(QStringList({"Color: ", "Symbol: "}), labels);
    EXPECT_NE(nullptr, GetButton(options.get(), "OK"));
    EXPECT_NE(nullptr, GetButton(options.get(), "Cancel"));
}

TEST_F(ZORTestPointVisOptionsDlgTest, PlaceInTheListIsTheSymbolCode)
{
    const QStringList symbols = {"cross",       "plus",         "concentric",  "coincident",
                                 "full-circle", "full-square",  "star",        "nesting-dot",
                                 "small-dot",   "full-circle2", "full-square2"};
    Build();
    ASSERT_EQ(symbols.size(), SymbolCombo()->count());
    for (int i = 0; i < symbols.size(); ++i) {
        SymbolCombo()->setCurrentIndex(i);
        EXPECT_EQ(symbols[i], SymbolCombo()->currentText());
        EXPECT_EQ(i, int(options->GetOptions().GetPointSymbol()));
    }
}

TEST_F(ZORTestPointVisOptionsDlgTest, FirstRunShowsAGreyCross)
{
    Build();
    EXPECT_EQ(QVariant(QColor(127, 127, 127)), ColorButton()->property("color"));
    EXPECT_EQ(QString("cross"), SymbolCombo()->currentText());
    EXPECT_EQ(QColor(127, 127, 127), options->GetOptions().GetColor());
}

TEST_F(ZORTestPointVisOptionsDlgTest, OkWritesEveryKey)
{
    Build();
    Press(options.get(), "OK");
    EXPECT_EQ(QDialog::Accepted, options->result());
    ExpectSettings(
        {{"Point/Color", QMetaType::QColor, QColor(127, 127, 127)}, {"Point/Symbol", QMetaType::Int, 0}});
}

TEST_F(ZORTestPointVisOptionsDlgTest, CancelWritesNothing)
{
    Build();
    SymbolCombo()->setCurrentIndex(3);
    Press(options.get(), "Cancel");
    EXPECT_EQ(QDialog::Rejected, options->result());
    EXPECT_TRUE(GetSettings()->allKeys().isEmpty());
}

TEST_F(ZORTestPointVisOptionsDlgTest, NextDialogStartsFromTheStoredValues)
{
    Build();
    SymbolCombo()->setCurrentIndex(10);
    answers.AnswerColor(QColor(5, 6, 7));
    ColorButton()->click();
    Press(options.get(), "OK");

    Build();
    EXPECT_EQ(QString("full-square2"), SymbolCombo()->currentText());
    EXPECT_EQ(QColor(5, 6, 7), options->GetOptions().GetColor());
}

TEST_F(ZORTestPointVisOptionsDlgTest, StoredSymbolOutOfRangeLeavesNoCurrentEntry)
{
    SetSetting("Point/Symbol", 11);
    Build();
    EXPECT_EQ(-1, SymbolCombo()->currentIndex());
}

} // namespace
