#include "ZORCmdPickAnswerer.h"

#include <ZORCommand/ZORCmdController.h>

ZORCmdPickAnswerer::ZORCmdPickAnswerer() = default;

ZORCmdPickAnswerer::~ZORCmdPickAnswerer()
{
    ZORCmdController::GetController()->ForgetPickAnswerer(this);
}
