// Test command "Save MSI File".

#pragma once

#include "core/ZORTestCommand.h"

/// Asks for a nesting result file and writes what it reads beside it, with "_2" behind the name: both files
/// must be the same. The created types are established, though nothing is created.
class ZORTestWriteMSIFileCmd final : public ZORTestCommand
{
    Q_OBJECT
    Q_CLASSINFO("label", QT_TR_NOOP("Save to MSI file"))
    Q_CLASSINFO("createdTypes", "ZORGeoSurface")

public:
    Q_INVOKABLE explicit ZORTestWriteMSIFileCmd(ZORTestEnvironment* environment);

    /// Emits Finished(false) when there is no result to write. Tells nothing when it cannot be written.
    void Execute() override;
};
