#include "ZORCmdDialogHandler.h"

#include <ZORCommand/ZORCmdController.h>

ZORCmdDialogHandler::~ZORCmdDialogHandler()
{
    ZORCmdController* controller = ZORCmdController::GetController();
    if (controller->GetDialogHandler() == this)
        controller->SetDialogHandler(nullptr);
}
