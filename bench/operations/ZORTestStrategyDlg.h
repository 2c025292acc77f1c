// Test dialog "Using Strategy Selector".

#pragma once

#include "core/ZORTestDialog.h"

class ZORTestStrategySelector;

/// Takes a draping strategy from the selector of strategies, and reads and writes a setting.
///
/// Settings group "Debug/Strategy": "something" (text, written back as it was read).
class ZORTestStrategyDlg final : public ZORTestDialog
{
    Q_OBJECT
    Q_CLASSINFO("label", QT_TR_NOOP("Getting Strategy"))
    Q_CLASSINFO("createdTypes", "ZORCompStrategy")

public:
    Q_INVOKABLE explicit ZORTestStrategyDlg(ZORTestEnvironment* environment);

    bool Apply() override;

private:
    ZORTestStrategySelector* m_strategySel = nullptr;
};
