// Docks, windows and keys of the main window.

#include "HostTest.h"
#include "base/ZORHostTheme.h"
#include "base/ZORHostWindowTitle.h"
#include "docks/ZORHostLineQueue.h"
#include "plugins/ZORHostPluginManager.h"
#include "support/MessageBoxCatcher.h"
#include "view/ZORHostView3D.h"
#include "window/ZORHostMainWindow.h"
#include "window/ZORHostPlacement.h"

#include <ZORFeatureUI/ZORFeatBrowserWidget.h>
#include <ZORSystem/ZORSysApiTrace.h>

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QDockWidget>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QScreen>
#include <QToolBar>
#include <QToolButton>
#include <QTreeView>

namespace {

class ZORHostWindowsTest : public HostTest
{
protected:
    ZORHostWindowsTest() { MakeWindow(); }
    ~ZORHostWindowsTest() override
    {
        window.reset();
        ZORHostTheme::Apply(ZORHostOptions::Theme::System);
    }
    void MakeWindow()
    {
        window = std::make_unique<ZORHostMainWindow>(&plugins, &log);
        window->RestoreSettings();
        window->show();
        QCoreApplication::processEvents();
    }
    QAction* Action(const char* name) const
    {
        auto* action = window->findChild<QAction*>(QLatin1String(name));
        EXPECT_NE(nullptr, action) << name;
        return action;
    }
    QDockWidget* Dock(const char* name) const { return window->findChild<QDockWidget*>(QLatin1String(name)); }
    /// Texts of the window menu as it opens now; the enabled ones only.
    QStringList OpenWindowMenu() const
    {
        QStringList texts;
        auto* menu = window->findChild<QMenu*>("_WindowMenu");
        emit menu->aboutToShow();
        for (const QAction* action : menu->actions()) {
            if (!action->isSeparator() && action->isEnabled())
                texts.append(action->text());
        }
        return texts;
    }

    /// The entry of the main window.
    QString GetFirstEntry() const { return "&1 " + ZORHostWindowTitle::GetShown(window.get()); }

    MessageBoxCatcher boxes;
    ZORHostLineQueue log{100};
    ZORHostPluginManager plugins;
    std::unique_ptr<ZORHostMainWindow> window;
};

TEST_F(ZORHostWindowsTest, AnActionBringsADockBehindOthersToTheFront)
{
    QAction* const api = Action("_ApiDockAction");
    QAction* const messages = Action("_LogDockAction");
    ASSERT_TRUE(WaitFor([messages] { return messages->isChecked(); }));
    EXPECT_FALSE(api->isChecked());
    api->trigger();
    ASSERT_TRUE(WaitFor([api, messages] { return api->isChecked() && !messages->isChecked(); }));
    EXPECT_FALSE(Dock("_ApiDock")->visibleRegion().isEmpty());
    EXPECT_TRUE(Dock("_LogDock")->visibleRegion().isEmpty());
    api->trigger();
    ASSERT_TRUE(WaitFor([api] { return !api->isChecked(); }));
    EXPECT_TRUE(Dock("_ApiDock")->isHidden());
    api->trigger();
    EXPECT_TRUE(WaitFor([this] { return !Dock("_ApiDock")->visibleRegion().isEmpty(); }));
    EXPECT_TRUE(api->isChecked());
}

TEST_F(ZORHostWindowsTest, TheDockOfApiCallsOffersToRecordWhileItIsEmpty)
{
    Action("_ApiDockAction")->trigger();
    auto* const hint = window->findChild<QWidget*>("_ApiHint");
    ASSERT_NE(nullptr, hint);
    ASSERT_TRUE(WaitFor([hint] { return hint->isVisible(); }));
    window->findChild<QPushButton*>("_ApiStartBtn")->click();
    EXPECT_TRUE(window->findChild<QCheckBox*>("_ApiRecordChk")->isChecked());
    EXPECT_FALSE(hint->isVisible());
    AddBox("Box");
    auto* const table = window->findChild<QTreeView*>("_ApiTable");
    ASSERT_TRUE(WaitFor([table] { return table->model()->rowCount() > 0; }));
    window->findChild<QCheckBox*>("_ApiRecordChk")->setChecked(false);
    EXPECT_FALSE(hint->isVisible()); // there is something to read
    window->findChild<QPushButton*>("_ApiClearBtn")->click();
    EXPECT_TRUE(hint->isVisible());
}

TEST_F(ZORHostWindowsTest, KeysOfTheViewWorkInTheTreeAndStayTextInFields)
{
    AddBox("Box");
    window->activateWindow();
    ASSERT_TRUE(WaitFor([this] { return window->isActiveWindow(); }));
    auto* const tree = window->findChild<QTreeView*>("_Browser")
                           ? window->findChild<QTreeView*>("_Browser")
                           : window->findChild<QWidget*>("_Browser")->findChild<QTreeView*>();
    ASSERT_NE(nullptr, tree);
    tree->setFocus();
    QTest::keyClick(tree, Qt::Key_6);
    EXPECT_NEAR(-1, window->GetView()->GetCamera().GetViewDirection().GetZ(), 1e-12);
    QTest::keyClick(tree, Qt::Key_W);
    EXPECT_EQ(ZORVisRenderer::Wireframe, window->GetView()->GetDisplayMode());

    auto* const filter = window->findChild<QLineEdit*>("_LogFilterEdit");
    filter->setFocus();
    for (const Qt::Key key : {Qt::Key_S, Qt::Key_F, Qt::Key_1})
        QTest::keyClick(filter, key);
    EXPECT_EQ("sf1", filter->text());
    EXPECT_EQ(ZORVisRenderer::Wireframe, window->GetView()->GetDisplayMode());
}

TEST_F(ZORHostWindowsTest, TheWindowMenuListsOtherWindowsAndRaisesThem)
{
    EXPECT_EQ(QStringList({GetFirstEntry()}), OpenWindowMenu());
    EXPECT_FALSE(Action("_CloseWindowsAction")->isEnabled());
    QWidget second, first;
    second.setWindowTitle("Results & more");
    first.setWindowTitle("Console[*]");
    second.show();
    first.show();
    QWidget third;
    third.setWindowTitle("Console");
    third.show();
    EXPECT_EQ(QStringList({"&Close All Others", GetFirstEntry(), "&2 Console", "&3 Console (2)",
                           "&4 Results && more"}),
              OpenWindowMenu());
    first.showMinimized();
    Action("_Window_2")->trigger();
    EXPECT_FALSE(first.isMinimized());
    EXPECT_TRUE(WaitFor([&first] { return first.isActiveWindow(); }));
    OpenWindowMenu();
    EXPECT_TRUE(Action("_Window_2")->isChecked());
    EXPECT_FALSE(Action("_Window_1")->isChecked());
    Action("_CloseWindowsAction")->trigger();
    EXPECT_FALSE(first.isVisible() || second.isVisible() || third.isVisible());
    EXPECT_TRUE(window->isVisible());
}

TEST_F(ZORHostWindowsTest, AnEntryOfTheWindowMenuOutlivesItsWindow)
{
    auto other = std::make_unique<QWidget>();
    other->setWindowTitle("Gone soon");
    other->show();
    EXPECT_EQ(3, OpenWindowMenu().size());
    other.reset();
    Action("_Window_2")->trigger();
    EXPECT_EQ(QStringList({GetFirstEntry()}), OpenWindowMenu());
}

TEST_F(ZORHostWindowsTest, AThemeOfTheCommandLineLastsForOneRun)
{
    Action("_Theme_light")->trigger();
    window->SetTheme(ZORHostOptions::Theme::Dark); // as the command line does
    EXPECT_TRUE(Action("_Theme_dark")->isChecked());
    window->SaveSettings();
    EXPECT_EQ("light", GetSettings()->value("Host/Theme").toString());
    Action("_Theme_dark")->trigger();
    window->SaveSettings();
    EXPECT_EQ("dark", GetSettings()->value("Host/Theme").toString());
}

TEST_F(ZORHostWindowsTest, WindowsAreMovedAndShrunkIntoTheirScreen)
{
    const QRect screen(100, 50, 800, 600);
    const auto fit = [&screen](const QRect& wanted) { return ZORHostPlacement::FitInto(wanted, screen); };
    EXPECT_EQ(QRect(200, 100, 300, 200), fit({200, 100, 300, 200}));
    EXPECT_EQ(screen, fit({0, 0, 5000, 5000}));
    EXPECT_EQ(screen, fit(screen));
    EXPECT_EQ(QRect(100, 450, 300, 200), fit({-4000, 9000, 300, 200}));
    EXPECT_EQ(QRect(100, 50, 800, 10), fit({2000, -70, 900, 10}));
}

TEST_F(ZORHostWindowsTest, AWindowThatWasKeptLargerThanTheScreenComesBackOntoIt)
{
    const QRect screen = window->screen()->availableGeometry();
    window->setWindowState(Qt::WindowNoState);
    window->setGeometry(QRect(screen.bottomRight(), screen.size() * 2));
    QCoreApplication::processEvents();
    window->SaveSettings();
    MakeWindow();
    EXPECT_TRUE(screen.contains(window->geometry()))
        << window->width() << " x " << window->height() << " at " << window->x() << ", " << window->y();
}

TEST_F(ZORHostWindowsTest, TheWindowFitsScreensOf1024By700AtTwiceTheSize)
{
    const QSize least = window->minimumSizeHint();
    EXPECT_LE(least.width(), 500);
    EXPECT_LE(least.height(), 330);
}

TEST_F(ZORHostWindowsTest, DocksThatASmallWindowHasSqueezedGetTheirSizesBack)
{
    const auto enlarge = [this] {
        window->setWindowState(Qt::WindowNoState);
        window->resize(1200, 800);
    };
    const auto squeeze = [this] {
        window->resize(window->minimumSizeHint());
        const bool isSmall = WaitFor(
            [this] { return Dock("_BrowserDock")->width() < 300 && Dock("_LogDock")->height() < 190; });
        QCoreApplication::processEvents();
        return isSmall;
    };
    const auto haveSizes = [this](int width, int height) {
        return WaitFor([=, this] {
            return Dock("_BrowserDock")->width() == width && Dock("_LogDock")->height() == height;
        });
    };
    enlarge();
    ASSERT_TRUE(WaitFor([this] { return Dock("_BrowserDock")->width() == 260; }));
    const auto isSettled = [this] { return window->findChild<ZORHostDockSizes*>()->IsSettled(); };
    ASSERT_TRUE(WaitFor(isSettled));
    window->resizeDocks({Dock("_BrowserDock")}, {300}, Qt::Horizontal);
    window->resizeDocks({Dock("_LogDock")}, {240}, Qt::Vertical);
    ASSERT_TRUE(WaitFor([this] { return Dock("_BrowserDock")->width() == 300; }));
    const int height = Dock("_LogDock")->height(); // without the tabs
    ASSERT_GT(height, 200);
    for (int round = 0; round < 3; ++round) {
        ASSERT_TRUE(squeeze());
        enlarge();
        EXPECT_TRUE(haveSizes(300, height))
            << Dock("_BrowserDock")->width() << ' ' << Dock("_LogDock")->height() << " for " << height;
    }
    ASSERT_TRUE(squeeze());
    window->SaveSettings();
    MakeWindow();
    enlarge();
    EXPECT_TRUE(haveSizes(300, height)) << Dock("_BrowserDock")->width() << ' ' << Dock("_LogDock")->height();
}

TEST_F(ZORHostWindowsTest, ResetLayoutBringsClosedDocksBack)
{
    for (const char* name : {"_BrowserDock", "_LogDock", "_ApiDock"})
        Dock(name)->close();
    Action("_ResetLayoutAction")->trigger();
    for (const char* name : {"_BrowserDock", "_LogDock", "_ApiDock"})
        EXPECT_FALSE(Dock(name)->isHidden()) << name;
}

TEST_F(ZORHostWindowsTest, ResetLayoutPutsEverythingWhereItWas)
{
    auto* const toolBar = window->findChild<QToolBar*>("_ViewToolBar");
    window->addToolBar(Qt::LeftToolBarArea, toolBar);
    toolBar->hide();
    Dock("_BrowserDock")->setFloating(true);
    window->addDockWidget(Qt::RightDockWidgetArea, Dock("_LogDock"));
    Action("_ResetLayoutAction")->trigger();
    EXPECT_EQ(Qt::TopToolBarArea, window->toolBarArea(toolBar));
    EXPECT_TRUE(toolBar->isVisible());
    EXPECT_FALSE(Dock("_BrowserDock")->isFloating());
    EXPECT_EQ(Qt::LeftDockWidgetArea, window->dockWidgetArea(Dock("_BrowserDock")));
    EXPECT_EQ(Qt::BottomDockWidgetArea, window->dockWidgetArea(Dock("_LogDock")));
    EXPECT_EQ(QList<QDockWidget*>{Dock("_ApiDock")}, window->tabifiedDockWidgets(Dock("_LogDock")));
}

TEST_F(ZORHostWindowsTest, ResetLayoutWorksWhileAToolBarShowsAllItsButtons)
{
    window->resize(window->minimumSizeHint());
    auto* const toolBar = window->findChild<QToolBar*>("_ViewToolBar");
    auto* const more = toolBar->findChild<QToolButton*>("qt_toolbar_ext_button");
    ASSERT_TRUE(WaitFor([more] { return more->isVisible(); }));
    more->click();
    Action("_ResetLayoutAction")->trigger();
    EXPECT_EQ(Qt::TopToolBarArea, window->toolBarArea(toolBar));
}

} // namespace
