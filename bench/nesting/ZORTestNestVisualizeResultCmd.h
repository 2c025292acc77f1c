// Test command "MSI to PNG...".

#pragma once

#include "core/ZORTestCommand.h"

/// Asks for a nesting result file and a size, and saves a picture of the result.
class ZORTestNestVisualizeResultCmd final : public ZORTestCommand
{
    Q_OBJECT
    Q_CLASSINFO("label", QT_TR_NOOP("Create Nesting Result Image"))

public:
    Q_INVOKABLE explicit ZORTestNestVisualizeResultCmd(ZORTestEnvironment* environment);

    /// Emits Finished(false) when there is no result to show. Tells nothing when the picture cannot be saved.
    void Execute() override;
};
