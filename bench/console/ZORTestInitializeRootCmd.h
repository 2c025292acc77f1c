// Test command "Initialize Root".

#pragma once

#include "core/ZORTestCommand.h"

/// Asks for a class of feature root and makes sure that the container has its root.
class ZORTestInitializeRootCmd final : public ZORTestCommand
{
    Q_OBJECT
    Q_CLASSINFO("label", QT_TR_NOOP("Initialize Root"))

public:
    Q_INVOKABLE explicit ZORTestInitializeRootCmd(ZORTestEnvironment* environment);

    /// Cancelling the query chooses the class that it shows, like every query of the bench that picks an item
    /// from a list. Without any class to choose nothing is created, and Finished(false) is emitted.
    void Execute() override;
};
