// The checks themselves: they find what is wrong and nothing else.

#include "WindowChecks.h"

#include "support/Printers.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTabWidget>
#include <QTableWidget>
#include <QTest>
#include <QVBoxLayout>

#include <gtest/gtest.h>

namespace {

class WindowChecksTest : public testing::Test
{
protected:
    WindowChecksTest()
        : layout(new QVBoxLayout(&window))
    {
    }

    template<class Widget>
    Widget* Add(Widget* widget)
    {
        layout->addWidget(widget);
        return widget;
    }
    void Show()
    {
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    }

    QWidget window;
    QVBoxLayout* layout;
};

TEST_F(WindowChecksTest, GoodFormPasses)
{
    auto* label = Add(new QLabel("&Name: "));
    auto* edit = Add(new QLineEdit);
    label->setBuddy(edit);
    Add(new QCheckBox("Draw as wireframe"));
    Add(new QPushButton("OK"));
    Show();
    EXPECT_EQ(QStringList(), FindCutTexts(&window));
    EXPECT_EQ(QStringList(), FindUnreachableWidgets(&window));
}

TEST_F(WindowChecksTest, SqueezedTextsAreFound)
{
    Add(new QLabel("A text that is much longer than its place"))->setFixedWidth(60);
    Add(new QPushButton("A button with a long text"))->setFixedWidth(60);
    Add(new QCheckBox("A check box with a long text"))->setFixedWidth(60);
    auto* combo = Add(new QComboBox);
    combo->addItems({"short", "an entry with a long text"});
    combo->setFixedWidth(80);
    auto* tabs = Add(new QTabWidget);
    for (const char* title : {"A long title", "Another long title", "A third long title"})
        tabs->addTab(new QWidget, QLatin1String(title));
    tabs->setFixedWidth(120);
    auto* wrapped = Add(new QLabel("Some words that are broken into lines of which the last are cut off"));
    wrapped->setWordWrap(true);
    wrapped->setFixedSize(80, 20);
    auto* table = Add(new QTableWidget(1, 1));
    table->setHorizontalHeaderLabels({"A header that is too long"});
    table->setColumnWidth(0, 20);
    Show();
    const QStringList problems = FindCutTexts(&window);
    for (const char* className : {"QLabel \"A text", "QPushButton", "QCheckBox", "QComboBox", "QTabBar",
                                  "QLabel \"Some", "QHeaderView"})
        EXPECT_FALSE(problems.filter(QLatin1String(className)).isEmpty()) << className;
    EXPECT_TRUE(problems.filter("short").isEmpty());
}

TEST_F(WindowChecksTest, FaintTextsAreFound)
{
    auto* faint = Add(new QLabel("faint"));
    QPalette palette(QColor(128, 128, 128), Qt::white);
    palette.setColor(QPalette::WindowText, QColor(0x80, 0x80, 0x80)); // 3.95 : 1
    faint->setPalette(palette);
    faint->setAutoFillBackground(true);
    auto* clear = Add(new QLabel("clear"));
    palette.setColor(QPalette::WindowText, QColor(0x70, 0x70, 0x70)); // 4.95 : 1
    clear->setPalette(palette);
    clear->setAutoFillBackground(true);
    Show();
    const QStringList problems = FindFaintTexts(&window);
    EXPECT_EQ(1, problems.filter("QLabel").size());
    EXPECT_EQ(1, problems.filter("\"faint\"").size());
}

TEST_F(WindowChecksTest, ContrastIsThatOfTheGuidelines)
{
    EXPECT_NEAR(21, GetContrast(Qt::black, Qt::white), 1e-9);
    EXPECT_NEAR(1, GetContrast(Qt::red, Qt::red), 1e-9);
    EXPECT_NEAR(4.54, GetContrast(QColor(0x76, 0x76, 0x76), Qt::white), 0.005);
}

TEST_F(WindowChecksTest, WidgetsOutOfReachOrWithoutNameAreFound)
{
    Add(new QPushButton("First"));
    Add(new QPushButton("Clicked only"))->setFocusPolicy(Qt::ClickFocus);
    Add(new QLineEdit)->setObjectName("_Nameless");
    Show();
    EXPECT_EQ(
        QStringList({"QPushButton is not reached by Tab", "QLineEdit _Nameless has no accessible name"}),
        FindUnreachableWidgets(&window));
}

TEST_F(WindowChecksTest, TableThatKeepsTheTabKeyIsFound)
{
    auto* table = Add(new QTableWidget(3, 3));
    table->setAccessibleName("Table");
    for (int i = 0; i < 9; ++i)
        table->setItem(i / 3, i % 3, new QTableWidgetItem("cell"));
    Add(new QPushButton("Behind"));
    Show();
    table->setFocus();
    EXPECT_EQ(QStringList({"QPushButton is not reached by Tab"}), FindUnreachableWidgets(&window));
    table->setTabKeyNavigation(false);
    EXPECT_EQ(QStringList(), FindUnreachableWidgets(&window));
}

TEST_F(WindowChecksTest, FieldsThatSwallowReturnAreFoundAndNothingIsPressed)
{
    class Swallowing : public QLineEdit
    {
    protected:
        void keyPressEvent(QKeyEvent* event) override { event->accept(); }
    };
    QDialog dialog;
    auto* column = new QVBoxLayout(&dialog);
    column->addWidget(new QLineEdit);
    column->addWidget(new QComboBox);
    column->addWidget(new QDoubleSpinBox);
    column->addWidget(new QCheckBox("Flip"));
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    column->addWidget(buttons);
    QSignalSpy accepted(buttons, &QDialogButtonBox::accepted);
    dialog.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&dialog));
    EXPECT_EQ(QStringList(), FindSwallowedReturns(&dialog));
    auto* swallowing = new Swallowing;
    column->insertWidget(0, swallowing);
    swallowing->show();
    EXPECT_EQ(QStringList({"QLineEdit swallows Return"}), FindSwallowedReturns(&dialog));
    EXPECT_EQ(0, accepted.size());
    buttons->button(QDialogButtonBox::Ok)->click();
    EXPECT_EQ(1, accepted.size());
}

TEST_F(WindowChecksTest, EveryPageIsVisited)
{
    auto* tabs = Add(new QTabWidget);
    for (const char* title : {"A", "B", "C"})
        tabs->addTab(new QLabel(QLatin1String(title)), QLatin1String(title));
    tabs->setCurrentIndex(1);
    Show();
    QStringList seen;
    ForEachPage(&window, [&] { seen.append(tabs->tabText(tabs->currentIndex())); });
    EXPECT_EQ(QStringList({"A", "B", "C"}), seen);
    EXPECT_EQ(1, tabs->currentIndex());
}

} // namespace
