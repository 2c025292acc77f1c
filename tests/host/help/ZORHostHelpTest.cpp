#include "help/ZORHostHelp.h"

#include "HostTest.h"
#include "docks/ZORHostLog.h"
#include "help/ZORHostHelpPages.h"
#include "help/ZORHostHelpSubject.h"
#include "help/ZORHostHelpWindow.h"
#include "plugins/ZORHostPluginManager.h"
#include "window/ZORHostMainWindow.h"

#include <ZORCommand/ZORCmdController.h>

#include <QAction>
#include <QApplication>
#include <QInputDialog>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTimer>
#include <QTreeWidget>

namespace {

TEST(ZORHostHelpPagesTest, SlugsAreWhatLinksCallHeadings)
{
    EXPECT_EQ("mouse-and-keys", ZORHostHelpPages::MakeSlug("Mouse and keys"));
    EXPECT_EQ("3d-view-f", ZORHostHelpPages::MakeSlug(" 3D  view (F): "));
    EXPECT_EQ("", ZORHostHelpPages::MakeSlug("&%."));
}

TEST(ZORHostHelpPagesTest, PagesOfTheHostComeWithTheProgram)
{
    const QStringList pages = ZORHostHelpPages::GetPages();
    ASSERT_FALSE(pages.isEmpty());
    EXPECT_EQ("Working with the host", ZORHostHelpPages::GetTitle(pages[0]));
    for (const QString& page : pages) {
        EXPECT_GT(ZORHostHelpPages::Read(page).size(), 200) << page.toStdString();
        EXPECT_FALSE(ZORHostHelpPages::Read(page).contains("](images/")) << page.toStdString();
    }
}

TEST(ZORHostHelpPagesTest, FindsHeadingsWhateverTheirCase)
{
    const ZORHostHelpPlace place = ZORHostHelpPages::Find("MOUSE and Keys");
    EXPECT_EQ("mouse-and-keys", place.slug);
    EXPECT_TRUE(ZORHostHelpPages::ReadSection(place).contains("zooms at the cursor"));
    EXPECT_FALSE(ZORHostHelpPages::ReadSection(place).contains("## Windows"));
    for (const char* topic : {"", "&", "no such heading"})
        EXPECT_TRUE(ZORHostHelpPages::Find(QLatin1String(topic)).IsNull()) << topic;
}

TEST(ZORHostHelpPagesTest, LinksLeadToPagesThatComeAlong)
{
    const QString host = ZORHostHelpPages::GetPages().value(0);
    EXPECT_EQ((ZORHostHelpPlace{host, "help"}), ZORHostHelpPages::Resolve(host, "#help"));
    EXPECT_EQ("Nesting", ZORHostHelpPages::GetTitle(ZORHostHelpPages::Resolve(host, "nesting.md#a").page));
    EXPECT_TRUE(ZORHostHelpPages::Resolve(host, "../sdk/nowhere.md").IsNull());
}

class ZORHostHelpTest : public HostTest
{
protected:
    ZORHostHelpTest()
    {
        window.show();
        window.activateWindow();
        EXPECT_TRUE(WaitFor([this] { return window.isActiveWindow(); }));
    }
    /// The help that is open; null where none is.
    static ZORHostHelpWindow* FindHelp()
    {
        const auto windows = QApplication::topLevelWidgets();
        for (QWidget* candidate : windows) {
            if (candidate->isVisible() && qobject_cast<ZORHostHelpWindow*>(candidate))
                return qobject_cast<ZORHostHelpWindow*>(candidate);
        }
        return nullptr;
    }
    /// The line at the top of the visible part of the text.
    static QString GetTopLine()
    {
        auto* const browser = FindHelp()->findChild<QTextBrowser*>("_HelpText");
        return browser->textCursor().block().text();
    }

    ZORHostLog log;
    ZORHostPluginManager plugins;
    ZORHostMainWindow window{&plugins, log.GetQueue()};
};

TEST_F(ZORHostHelpTest, F1ExplainsTheDockWithTheFocus)
{
    auto* const filter = window.findChild<QLineEdit*>("_LogFilterEdit");
    filter->setFocus();
    QTest::keyClick(filter, Qt::Key_F1);
    ASSERT_NE(nullptr, FindHelp());
    EXPECT_EQ("Log", GetTopLine());
    const ZORHostHelpWindow* const first = FindHelp();
    window.activateWindow();
    window.findChild<QWidget*>("_View3D")->setFocus();
    QTest::keyClick(window.findChild<QWidget*>("_View3D"), Qt::Key_F1);
    EXPECT_EQ("Mouse and keys", GetTopLine());
    EXPECT_EQ(first, FindHelp()); // one window for all
}

TEST_F(ZORHostHelpTest, F1InAModalDialogOpensAHelpThatItDoesNotBlock)
{
    QDialog dialog(&window);
    dialog.setWindowTitle("Plug-ins");
    QLineEdit edit(&dialog);
    bool isChecked = false;
    QTimer::singleShot(0, &dialog, [&] {
        QTest::keyClick(&edit, Qt::Key_F1);
        ASSERT_NE(nullptr, FindHelp());
        EXPECT_EQ("Plug-ins", GetTopLine());
        EXPECT_EQ(&dialog, FindHelp()->parentWidget());
        isChecked = true;
        dialog.reject();
    });
    dialog.exec();
    EXPECT_TRUE(isChecked);
}

TEST_F(ZORHostHelpTest, F1InAnOpenMenuExplainsTheEntry)
{
    auto* const menu = window.findChild<QMenu*>("_ViewMenu");
    menu->popup(window.pos());
    menu->setActiveAction(window.findChild<QAction*>("_FitAllAction"));
    QTest::keyClick(menu, Qt::Key_F1);
    ASSERT_NE(nullptr, FindHelp());
    EXPECT_FALSE(menu->isVisible());
    EXPECT_TRUE(FindHelp()->GetShownText().contains("Zooms so that everything is in view"));
    EXPECT_TRUE(FindHelp()->GetShownText().contains("Keys: F"));
}

TEST_F(ZORHostHelpTest, AWindowWithoutAPageGetsItsFields)
{
    ZORHostHelpWindow other(&window); // any window of the program
    other.setWindowTitle("Very <b>special</b> & *new*");
    other.show();
    auto* const edit = other.findChild<QLineEdit*>();
    edit->setToolTip("Filters | by text");
    const ZORHostHelpSubject subject = ZORHostHelpSubject::Find(edit);
    EXPECT_TRUE(subject.place.IsNull());
    ZORHostHelpWindow help(&window);
    help.ShowText(subject.text);
    EXPECT_TRUE(help.GetShownText().startsWith("Very <b>special</b> & *new*"))
        << help.GetShownText().toStdString();
    EXPECT_TRUE(help.GetShownText().contains("Search in the help: Filters | by text"));
}

TEST_F(ZORHostHelpTest, BackAndForwardGoThroughWhatWasShown)
{
    ZORHostHelpWindow help(&window);
    auto* const back = help.findChild<QPushButton*>("_HelpBackBtn");
    auto* const forward = help.findChild<QPushButton*>("_HelpForwardBtn");
    EXPECT_FALSE(back->isEnabled() || forward->isEnabled());
    help.ShowText("# One");
    help.ShowText("# Two");
    help.ShowText("# Two");
    help.ShowPlace(ZORHostHelpPages::Find("Log"));
    back->click();
    EXPECT_EQ("Two", help.GetShownText().trimmed());
    back->click();
    EXPECT_EQ("One", help.GetShownText().trimmed());
    EXPECT_FALSE(back->isEnabled());
    help.OnBackClicked();
    forward->click();
    EXPECT_EQ("Two", help.GetShownText().trimmed());
    help.ShowText("# Three");
    EXPECT_FALSE(forward->isEnabled());
    help.OnForwardClicked();
    EXPECT_EQ("Three", help.GetShownText().trimmed());
}

TEST_F(ZORHostHelpTest, SearchLeavesHeadingsThatMatchOrHoldTheText)
{
    ZORHostHelpWindow help(&window);
    auto* const contents = help.findChild<QTreeWidget*>("_HelpContents");
    const auto count = [contents] {
        int visible = 0;
        for (QTreeWidgetItemIterator item(contents, QTreeWidgetItemIterator::NotHidden); *item; ++item)
            ++visible;
        return visible;
    };
    const int all = count();
    EXPECT_GT(all, 20);
    auto* const search = help.findChild<QLineEdit*>("_HelpSearchEdit");
    search->setText("asterisk behind it");
    EXPECT_EQ(2, count()); // the section and its page
    search->setText("no text has this");
    EXPECT_EQ(0, count());
    search->clear();
    EXPECT_EQ(all, count());
}

TEST_F(ZORHostHelpTest, TheSheetOfKeysHasThoseOfAllMenus)
{
    window.findChild<QAction*>("_KeysAction")->trigger();
    ASSERT_NE(nullptr, FindHelp());
    const QString sheet = FindHelp()->GetShownText();
    for (const char* text : {"zooms at the cursor", "Fit All", "Ctrl+Shift+P", "Isometric"})
        EXPECT_TRUE(sheet.contains(QLatin1String(text))) << text;
}

TEST_F(ZORHostHelpTest, EveryDialogOfTheStandardCommandsHasASection)
{
    const QString library = QStringLiteral(ZOR_STANDARD_COMMANDS);
    ASSERT_TRUE(plugins.Load(library));
    auto* const controller = ZORCmdController::GetController();
    int count = 0;
    const QStringList categories = controller->GetCategories();
    for (const QString& category : categories) {
        const QList<QAction*> actions = controller->GetActions(category);
        for (const QAction* action : actions) {
            const QString title = QString(action->text()).remove(u'&');
            const ZORHostHelpPlace place = ZORHostHelpPages::Find(title);
            EXPECT_TRUE(place.page.startsWith(":/zorsdk/help/")) << title.toStdString();
            EXPECT_GT(ZORHostHelpPages::ReadSection(place).size(), 60) << title.toStdString();
            ++count;
        }
    }
    EXPECT_GE(count, 6);
    EXPECT_TRUE(plugins.Unload(library));
    EXPECT_TRUE(ZORHostHelpPages::Find("Create Layup").IsNull()); // it goes with its plug-in
}

TEST_F(ZORHostHelpTest, TopicsOfTheHostAreHeadings)
{
    for (const char* topic : {"Working with the host", "First steps", "Mouse and keys", "Browser", "Log",
                              "API calls", "Command Palette", "Plug-ins", "About Zorvane Host", "Help"})
        EXPECT_FALSE(ZORHostHelpPages::Find(QLatin1String(topic)).IsNull()) << topic;
}

} // namespace
