#include "visualization/ZORTestSurfaceVisOptionsDlg.h"

#include "VisualizationTest.h"

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>

namespace {

class ZORTestSurfaceVisOptionsDlgTest : public VisualizationTest
{
protected:
    void Build() { options = std::make_unique<ZORTestSurfaceVisOptionsDlg>(GetEnvironment()); }
    QPushButton* ColorButton() { return options->findChild<QPushButton*>("_ColorBtn"); }
    QCheckBox* WireframeCheck() { return options->findChild<QCheckBox*>("_WireframeChk"); }

    std::unique_ptr<ZORTestSurfaceVisOptionsDlg> options;
};

TEST_F(ZORTestSurfaceVisOptionsDlgTest, ShowsItsTexts)
{
    Build();
    EXPECT_EQ(QString("Surface Visualization Options"), options->windowTitle());
    EXPECT_EQ(QString("Color: "), options->findChild<QLabel*>()->text());
    EXPECT_EQ(QString("Draw as wireframe"), WireframeCheck()->text());
    EXPECT_NE(nullptr, GetButton(options.get(), "OK"));
    EXPECT_NE(nullptr, GetButton(options.get(), "Cancel"));
}

TEST_F(ZORTestSurfaceVisOptionsDlgTest, FirstRunShowsShadedGrey)
{
    Build();
    EXPECT_EQ(QVariant(QColor(127, 127, 127)), ColorButton()->property("color"));
    EXPECT_FALSE(WireframeCheck()->isChecked());
    EXPECT_FALSE(options->IsWireframe());
    EXPECT_EQ(QColor(127, 127, 127), options->GetOptions().GetColor());
}

TEST_F(ZORTestSurfaceVisOptionsDlgTest, OkWritesEveryKey)
{
    Build();
    Press(options.get(), "OK");
    EXPECT_EQ(QDialog::Accepted, options->result());
    ExpectSettings({{"Surface/Color", QMetaType::QColor, QColor(127, 127, 127)},
                    {"Surface/Wireframe", QMetaType::Bool, false}});
}

TEST_F(ZORTestSurfaceVisOptionsDlgTest, CancelWritesNothing)
{
    Build();
    WireframeCheck()->click();
    Press(options.get(), "Cancel");
    EXPECT_EQ(QDialog::Rejected, options->result());
    EXPECT_TRUE(GetSettings()->allKeys().isEmpty());
}

TEST_F(ZORTestSurfaceVisOptionsDlgTest, NextDialogStartsFromTheStoredValues)
{
    Build();
    WireframeCheck()->click();
    answers.AnswerColor(QColor(0, 170, 0));
    ColorButton()->click();
    Press(options.get(), "OK");

    Build();
    EXPECT_TRUE(options->IsWireframe());
    EXPECT_EQ(QColor(0, 170, 0), options->GetOptions().GetColor());
    EXPECT_EQ(QString("background-color: rgb(0,170,0);"), ColorButton()->styleSheet());
}

} // namespace
