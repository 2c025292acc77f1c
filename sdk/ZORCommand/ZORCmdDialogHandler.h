// What an application provides so that commands can show dialogs.

#pragma once

#include <ZORCommand/ZORCommandGlobal.h>

class QWidget;
class ZORCmdDialogCommand;

/// Implemented by the application and set on the controller.
/// Thread safety: main thread only.
class ZORCOMMAND_EXPORT ZORCmdDialogHandler
{
public:
    /// Takes itself from the controller.
    virtual ~ZORCmdDialogHandler();

    /// Parent for the dialogs and message boxes of commands; may be null.
    virtual QWidget* GetParentWidget() const = 0;

    /// Shows \a command in a frame with OK and Cancel and returns at once. The frame builds the content
    /// with BuildContent() and ends the command with Accept() or Reject().
    virtual void ShowDialogCommand(ZORCmdDialogCommand* command) = 0;
};
