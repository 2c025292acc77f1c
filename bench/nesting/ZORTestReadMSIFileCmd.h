// Test command "Read MSI File...".

#pragma once

#include "core/ZORTestCommand.h"

/// Asks for a nesting result file, writes its content to the debug log, and draws its segments into the debug
/// visualization. Label and created types are established, though nothing is imported or created.
class ZORTestReadMSIFileCmd final : public ZORTestCommand
{
    Q_OBJECT
    Q_CLASSINFO("label", QT_TR_NOOP("Import STL Surface"))
    Q_CLASSINFO("createdTypes", "ZORGeoSurface")

public:
    Q_INVOKABLE explicit ZORTestReadMSIFileCmd(ZORTestEnvironment* environment);

    /// Emits Finished(false) when no file was chosen.
    void Execute() override;
};
