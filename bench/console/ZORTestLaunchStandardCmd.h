// Command that runs one of the SDK's own commands.

#pragma once

#include "core/ZORTestCommand.h"

/// Activates the SDK's action whose id is the property "actionId" of the menu entry, which is this
/// command's property "action". The SDK's command runs with its own user interface; Finished() is never
/// emitted.
class ZORTestLaunchStandardCmd final : public ZORTestCommand
{
    Q_OBJECT
    Q_CLASSINFO("label", QT_TR_NOOP("Launch Standard Command"))

public:
    Q_INVOKABLE explicit ZORTestLaunchStandardCmd(ZORTestEnvironment* environment);

    void Execute() override;
};
