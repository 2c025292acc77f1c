// Test command that loads a container file; its label is "Save Container" all the same.

#pragma once

#include "core/ZORTestCommand.h"

/// Asks for a container file and adds what it holds to the container.
///
/// Settings group "Debug/LoadContainer": "Dir" (path of the last file, in spite of its name).
class ZORTestLoadContainerCmd final : public ZORTestCommand
{
    Q_OBJECT
    Q_CLASSINFO("label", QT_TR_NOOP("Save Container"))

public:
    Q_INVOKABLE explicit ZORTestLoadContainerCmd(ZORTestEnvironment* environment);

    /// \throws ZORSysException from the SDK; nothing is added then, and the path is not stored
    void Execute() override;
};
