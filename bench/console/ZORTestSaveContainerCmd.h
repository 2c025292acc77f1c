// Test command "Save Container".

#pragma once

#include "core/ZORTestCommand.h"

/// Asks for a file and saves the container to it. A file of that name stays as it was until the new one is
/// complete.
///
/// Settings group "Debug/SaveContainer": "Dir" (path of the last file, in spite of its name).
class ZORTestSaveContainerCmd final : public ZORTestCommand
{
    Q_OBJECT
    Q_CLASSINFO("label", QT_TR_NOOP("Save Container"))

public:
    Q_INVOKABLE explicit ZORTestSaveContainerCmd(ZORTestEnvironment* environment);

    /// \throws ZORSysException from the SDK, ZORSysFileException when the file cannot be written; the path is
    ///         not stored then
    void Execute() override;
};
