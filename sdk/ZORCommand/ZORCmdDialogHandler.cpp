#include "ZORCmdDialogHandler.h"

ZORCmdDialogHandler::~ZORCmdDialogHandler() = default;
