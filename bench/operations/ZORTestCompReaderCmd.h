// Test command that reads composites source files.

#pragma once

#include "core/ZORTestCommand.h"

/// Asks for a composites source file and adds what it holds to the composites root. The formats and the
/// filters of the file dialog are those of the SDK.
class ZORTestCompReaderCmd final : public ZORTestCommand
{
    Q_OBJECT
    Q_CLASSINFO("label", QT_TR_NOOP("Create Point"))

public:
    Q_INVOKABLE explicit ZORTestCompReaderCmd(ZORTestEnvironment* environment);

    /// \throws ZORSysException from the reader and the processor; nothing is added then
    void Execute() override;
};
