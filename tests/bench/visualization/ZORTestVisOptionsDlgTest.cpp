// What the three option dialogs have in common.

#include "visualization/ZORTestVisOptionsDlg.h"

#include "VisualizationTest.h"
#include "console/ZORTestMainDialog.h"

#include <QCheckBox>
#include <QPushButton>
#include <QTableView>
#include <QTest>

namespace {

class ProbeOptionsDlg : public ZORTestVisOptionsDlg
{
public:
    explicit ProbeOptionsDlg(ZORTestEnvironment* environment)
        : ZORTestVisOptionsDlg(environment)
        , button(this)
    {
        connect(&button, &QPushButton::clicked, this, &ZORTestVisOptionsDlg::SelectColor);
    }

    QPushButton button;
};

class ZORTestVisOptionsDlgTest : public VisualizationTest
{
protected:
    ProbeOptionsDlg options{GetEnvironment()};
};

TEST_F(ZORTestVisOptionsDlgTest, KeepsTheEnvironment)
{
    EXPECT_EQ(GetEnvironment(), options.GetEnvironment());
}

TEST_F(ZORTestVisOptionsDlgTest, ColorIsPaintedAndKeptAsAProperty)
{
    options.SetButtonColor(&options.button, QColor(1, 20, 255, 40));
    EXPECT_EQ(QString("background-color: rgb(1,20,255);"), options.button.styleSheet());
    EXPECT_EQ(QVariant(QColor(1, 20, 255, 40)), options.button.property("color"));
    EXPECT_EQ(QColor(1, 20, 255, 40), ZORTestVisOptionsDlg::GetButtonColor(&options.button));
}

TEST_F(ZORTestVisOptionsDlgTest, ButtonAsksForItsColor)
{
    options.SetButtonColor(&options.button, QColor(10, 20, 30));
    answers.AnswerColor(QColor(200, 100, 0));
    QTest::mouseClick(&options.button, Qt::LeftButton);

    const QList<DialogAnswerer::Shown> shown = answers.Take();
    ASSERT_EQ(1, shown.size());
    EXPECT_EQ(QString("Surface Color"), shown[0].title);
    EXPECT_EQ(QColor(10, 20, 30), shown[0].color);
    EXPECT_EQ(0, shown[0].colorOptions);
    EXPECT_EQ(&options, shown[0].parent);
    EXPECT_EQ(QColor(200, 100, 0), ZORTestVisOptionsDlg::GetButtonColor(&options.button));
    EXPECT_EQ(QString("background-color: rgb(200,100,0);"), options.button.styleSheet());
}

TEST_F(ZORTestVisOptionsDlgTest, CancelledColorIsInvalid)
{
    options.SetButtonColor(&options.button, QColor(10, 20, 30));
    answers.CancelColor();
    QTest::mouseClick(&options.button, Qt::LeftButton);
    const QVariant color = options.button.property("color");
    EXPECT_EQ(QMetaType::QColor, color.typeId());
    EXPECT_FALSE(color.value<QColor>().isValid());
    EXPECT_EQ(QString("background-color: rgb(0,0,0);"), options.button.styleSheet());
}

TEST_F(ZORTestVisOptionsDlgTest, SelectingAColorWithoutAButtonDoesNothing)
{
    options.SelectColor();
    EXPECT_TRUE(answers.Take().isEmpty());
}

// From the console: the dialog belongs to its window, Cancel shows nothing in the view.
TEST_F(ZORTestVisOptionsDlgTest, ConsoleIsTheParent)
{
    AddSurface("S");
    OpenConsole();
    InConsole<QTableView>("_ContTable")->selectRow(0);
    answers.Cancel("ZORTestSurfaceVisOptionsDlg");
    Click("_ContVisuBtn");
    const QList<DialogAnswerer::Shown> shown = answers.Take();
    ASSERT_EQ(1, shown.size());
    EXPECT_EQ(console.data(), shown[0].parent);
    EXPECT_EQ(0, GetFeatEnvironment()->GetNumVirtualObjects());
    EXPECT_EQ(QStringList({"Visualization creation failed"}), boxes.TakeErrors());
}

} // namespace
