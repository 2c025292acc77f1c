// Fixture of tests of the SDK's own commands in the host.

#pragma once

#include "HostTest.h"
#include "actions/ZORHostActionIndex.h"
#include "actions/ZORHostIcons.h"
#include "docks/ZORHostLog.h"
#include "plugins/ZORHostPluginManager.h"
#include "support/MessageBoxCatcher.h"
#include "window/ZORHostDialogFrame.h"
#include "window/ZORHostDialogHandler.h"
#include "window/ZORHostMainWindow.h"

#include <ZORCommand/ZORCmdController.h>

#include <QAction>
#include <QDialogButtonBox>
#include <QMenu>
#include <QPushButton>

/// The SDK's own commands, loaded into a host.
class StandardCommandsInHost : public HostTest
{
public:
    StandardCommandsInHost()
    {
        ZORCmdController::GetController()->SetIconResolver(&ZORHostIcon);
        plugins.SetMainWindow(&window);
        ZORCmdController::GetController()->SetDialogHandler(&dialogs);
        window.show();
        EXPECT_TRUE(plugins.Load(library));
    }
    ~StandardCommandsInHost() override
    {
        EXPECT_TRUE(plugins.Unload(library));
        ZORCmdController::GetController()->SetIconResolver({});
    }
    QStringList GetEntries(const char* menuName) const
    {
        QStringList texts;
        if (const auto* menu = window.findChild<QMenu*>(QLatin1String(menuName))) {
            for (const QAction* action : menu->actions())
                texts.append(ZORHostPlainText(action->text()));
        }
        return texts;
    }
    /// Triggers an entry; its frame is then the last one.
    ZORHostDialogFrame* Open(const char* id)
    {
        ZORCmdController::GetController()->GetAction(id)->trigger();
        const auto frames = window.findChildren<ZORHostDialogFrame*>();
        EXPECT_FALSE(frames.isEmpty());
        return frames.isEmpty() ? nullptr : frames.constLast();
    }
    static void Press(const QWidget* frame, QDialogButtonBox::StandardButton button)
    {
        frame->findChild<QDialogButtonBox*>("_ButtonBox")->button(button)->click();
        QCoreApplication::processEvents();
        DeleteDeferred();
    }

    const QString library = QStringLiteral(ZOR_STANDARD_COMMANDS);
    MessageBoxCatcher boxes;
    ZORHostLog log;
    ZORHostPluginManager plugins;
    ZORHostMainWindow window{&plugins, log.GetQueue()};
    ZORHostDialogHandler dialogs{&window};
};
