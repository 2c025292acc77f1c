// The windows of the host.

#include "WindowTest.h"
#include "app/ZORHostTheme.h"
#include "core/ZORTestOptionsCmd.h"
#include "docks/ZORHostLog.h"
#include "plugins/ZORHostPluginDialog.h"
#include "plugins/ZORHostPluginManager.h"
#include "window/ZORHostAboutDialog.h"
#include "window/ZORHostCommandPalette.h"
#include "window/ZORHostDialogHandler.h"
#include "window/ZORHostIcons.h"
#include "window/ZORHostMainWindow.h"
#include "window/ZORHostNoticeBar.h"

#include <ZORCommand/ZORCmdController.h>

#include <QAction>
#include <QApplication>
#include <QDialog>

#include <optional>

namespace {

class HostWindowsTest : public WindowTest
{
protected:
    HostWindowsTest()
    {
        ZORCmdController::GetController()->SetIconResolver(&ZORHostIcon);
        plugins.emplace();
        plugins->Load(GetPath("missing.so"));
        window.emplace(&*plugins, log.GetQueue());
        plugins->SetMainWindow(&*window);
        dialogs.emplace(&*window);
        ZORCmdController::GetController()->SetDialogHandler(&*dialogs);
    }
    ~HostWindowsTest() override
    {
        ZORCmdController::GetController()->SetDialogHandler(nullptr);
        dialogs.reset();
        plugins->SetMainWindow(nullptr);
        window.reset();
        ZORCmdController::GetController()->SetIconResolver({});
    }

    /// The dialog of \a className that is open; a failure when there is none.
    static QDialog* FindDialog(const char* className)
    {
        const auto windows = QApplication::topLevelWidgets();
        for (QWidget* candidate : windows) {
            if (candidate->isVisible() && candidate->inherits(className))
                return qobject_cast<QDialog*>(candidate);
        }
        ADD_FAILURE() << "no " << className << " is open";
        return nullptr;
    }

    ZORHostLog log;
    std::optional<ZORHostPluginManager> plugins;
    std::optional<ZORHostMainWindow> window;
    std::optional<ZORHostDialogHandler> dialogs;
};

INSTANTIATE_TEST_SUITE_P(Themes, HostWindowsTest,
                         testing::Values(ZORHostOptions::Theme::Light, ZORHostOptions::Theme::Dark),
                         [](const auto& tested) { return ZORHostTheme::ToName(tested.param).toStdString(); });

TEST_P(HostWindowsTest, MainWindow)
{
    AddSurface("Wing skin");
    Walk(&*window, "host");
}

TEST_P(HostWindowsTest, MainWindowWithNotice)
{
    window->show();
    window->ShowPluginProblems();
    Walk(&*window, "host-notice");
}

TEST_P(HostWindowsTest, About)
{
    ZORHostAboutDialog about(*plugins, nullptr);
    Walk(&about, "about");
}

TEST_P(HostWindowsTest, Plugins)
{
    ZORHostPluginDialog page(&*plugins, nullptr);
    Walk(&page, "plugins");
}

TEST_P(HostWindowsTest, CommandPalette)
{
    window->show();
    auto* palette = new ZORHostCommandPalette(&*window);
    Walk(palette, "palette");
    palette->close();
}

TEST_P(HostWindowsTest, FrameOfTheTestOptions)
{
    window->show();
    QAction* action = ZORCmdController::GetController()->GetAction("ZORTestOptionsCmd");
    ASSERT_NE(nullptr, action);
    action->trigger();
    QDialog* frame = FindDialog("ZORHostDialogFrame");
    ASSERT_NE(nullptr, frame);
    Walk(frame, "options-frame");
    frame->reject();
}

} // namespace
