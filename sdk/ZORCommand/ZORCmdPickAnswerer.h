// What an application provides so that commands can ask users to point at something.

#pragma once

#include <ZORCommand/ZORCommandGlobal.h>

class ZORCmdPickRequest;

/// Implemented by the application's view and set with ZORCmdController::SetPickAnswerer().
/// Thread safety: main thread only.
class ZORCOMMAND_EXPORT ZORCmdPickAnswerer
{
public:
    /// Cancels the active request, without EndPick(), and removes itself from the controller.
    virtual ~ZORCmdPickAnswerer();

    /// Shows the prompt of \a request, gives the view the focus, and returns at once. From now on what the user
    /// does in the view is passed to the request: a click calls Answer(), Backspace TakeBack(), Return Complete(), and
    /// Escape Cancel(). At most one request is active.
    /// \param request  not owned; ends with EndPick()
    virtual void BeginPick(ZORCmdPickRequest* request) = 0;
    /// Removes the prompt and all marks: \a request was answered, completed, canceled, or is being destroyed.
    virtual void EndPick(ZORCmdPickRequest* request) = 0;

protected:
    ZORCmdPickAnswerer();
    Q_DISABLE_COPY_MOVE(ZORCmdPickAnswerer)
};
