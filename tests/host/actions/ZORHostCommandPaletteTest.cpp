#include "actions/ZORHostCommandPalette.h"

#include "HostTest.h"

#include <QAction>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenuBar>
#include <QPointer>
#include <QTreeWidget>

namespace {

class ZORHostCommandPaletteTest : public HostTest
{
public:
    ZORHostCommandPaletteTest()
    {
        window.setWindowTitle("Window");
        QMenu* file = window.menuBar()->addMenu("&File");
        Add(file, "&Open...");
        file->addSeparator();
        Add(file->addMenu("&Recent"), "Wing && Skin");
        Add(file, "Disabled")->setEnabled(false);
        window.show();
        other.setWindowTitle("Console");
        Add(other.menuBar()->addMenu("Geometry"), "Import Surface STL");
        Add(other.menuBar()->addMenu("Open"), "Something Else");
        other.show();
        window.activateWindow();
    }
    QAction* Add(QMenu* menu, const QString& text)
    {
        QAction* action = menu->addAction(text);
        QObject::connect(action, &QAction::triggered, action, [this, text] { triggered.append(text); });
        return action;
    }
    void Open()
    {
        palette = new ZORHostCommandPalette(&window);
        palette->show();
    }
    QStringList Rows()
    {
        QStringList rows;
        const auto* list = palette->findChild<QTreeWidget*>("_PaletteList");
        for (int i = 0; i < list->topLevelItemCount(); ++i)
            rows.append(list->topLevelItem(i)->text(1) + ": " + list->topLevelItem(i)->text(0));
        return rows;
    }
    QLineEdit* Edit() { return palette->findChild<QLineEdit*>("_PaletteEdit"); }

    QMainWindow window;
    QMainWindow other;
    QStringList triggered;
    QPointer<ZORHostCommandPalette> palette;
};

TEST_F(ZORHostCommandPaletteTest, ListsTheEnabledActionsOfAllMainWindowsWithTheirPath)
{
    Open();
    QStringList rows = Rows();
    rows.sort();
    EXPECT_EQ(QStringList({"Console > Geometry: Import Surface STL", "Console > Open: Something Else",
                           "Window > File > Recent: Wing & Skin", "Window > File: Open"}),
              rows);
}

TEST_F(ZORHostCommandPaletteTest, TypingFiltersByTextAndPathBestHitsFirst)
{
    Open();
    Edit()->setText("open");
    EXPECT_EQ(QStringList({"Window > File: Open", "Console > Open: Something Else"}), Rows());
    Edit()->setText("stl import");
    EXPECT_EQ(QStringList("Console > Geometry: Import Surface STL"), Rows());
    Edit()->setText("no such command");
    EXPECT_TRUE(Rows().isEmpty());
    QTest::keyClick(Edit(), Qt::Key_Return);
    EXPECT_TRUE(palette);
    EXPECT_TRUE(triggered.isEmpty());
}

TEST_F(ZORHostCommandPaletteTest, EnterTriggersTheCurrentActionAndCloses)
{
    Open();
    Edit()->setText("s");
    const QStringList rows = Rows();
    ASSERT_GE(rows.size(), 2);
    QTest::keyClick(Edit(), Qt::Key_Down);
    QTest::keyClick(Edit(), Qt::Key_Return);
    DeleteDeferred();
    EXPECT_FALSE(palette);
    ASSERT_EQ(1, triggered.size());
    EXPECT_TRUE(rows[1].endsWith(QString(triggered[0]).replace("&&", "&")));
}

TEST_F(ZORHostCommandPaletteTest, AnActionThatWentMeanwhileDoesNoHarm)
{
    Open();
    other.menuBar()->clear();
    qDeleteAll(other.menuBar()->findChildren<QMenu*>());
    Edit()->setText("import");
    EXPECT_TRUE(Rows().isEmpty());
    palette->close();
}

TEST_F(ZORHostCommandPaletteTest, RowsOfActionsThatVanishGoAtOnceAndTheOthersStay)
{
    Open();
    Edit()->setText("open");
    auto* list = palette->findChild<QTreeWidget*>("_PaletteList");
    ASSERT_EQ(2, list->topLevelItemCount());
    list->setCurrentItem(list->topLevelItem(1));
    delete window.menuBar()->findChildren<QMenu*>().constFirst()->actions().constFirst();
    EXPECT_EQ(QStringList("Console > Open: Something Else"), Rows());
    EXPECT_EQ(list->topLevelItem(0), list->currentItem());
    QTest::keyClick(Edit(), Qt::Key_Return);
    EXPECT_EQ(QStringList("Something Else"), triggered);
}

TEST(ZORHostActionIndexTest, PlainTextsAreWithoutMnemonicsAndDots)
{
    EXPECT_EQ(QString("Open"), ZORHostPlainText("&Open..."));
    EXPECT_EQ(QString("Edit"), ZORHostPlainText("Edit "));
    EXPECT_EQ(QString("A & B"), ZORHostPlainText("A && &B"));
    EXPECT_EQ(QString("Save"), ZORHostPlainText(QString("Save") + QChar(0x2026)));
    EXPECT_EQ(QString("&"), ZORHostPlainText("&"));
}

} // namespace
