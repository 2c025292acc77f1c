// Frame of dialog commands for tests.

#pragma once

#include <ZORCommand/ZORCmdController.h>
#include <ZORCommand/ZORCmdDialogCommand.h>
#include <ZORCommand/ZORCmdDialogHandler.h>

#include <QPointer>
#include <QWidget>

/// Frame without decoration: builds the content and leaves OK and Cancel to the test. The controller's
/// dialog handler while it lives.
class DialogFrame final : public ZORCmdDialogHandler
{
public:
    DialogFrame() { ZORCmdController::GetController()->SetDialogHandler(this); }
    ~DialogFrame() override { ZORCmdController::GetController()->SetDialogHandler(nullptr); }

    QWidget* GetParentWidget() const override { return nullptr; }
    void ShowDialogCommand(ZORCmdDialogCommand* shown) override
    {
        command = shown;
        content = shown->BuildContent(&widget);
        widget.show();
    }

    QWidget widget;
    QPointer<ZORCmdDialogCommand> command;
    QPointer<QWidget> content;
};
