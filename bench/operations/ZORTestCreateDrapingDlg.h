// Test dialog "Create Draping".

#pragma once

#include "core/ZORTestDialog.h"

class ZORTestGeometrySelector;

/// Takes what a draping starts from and checks it. Nothing is draped.
class ZORTestCreateDrapingDlg final : public ZORTestDialog
{
    Q_OBJECT
    Q_CLASSINFO("label", QT_TR_NOOP("Create Draping"))
    Q_CLASSINFO("createdTypes", "ZORCompStrategy")

public:
    Q_INVOKABLE explicit ZORTestCreateDrapingDlg(ZORTestEnvironment* environment);

    bool Apply() override;

private:
    ZORTestGeometrySelector* m_strategySel = nullptr;
    ZORTestGeometrySelector* m_pointSel = nullptr;
    ZORTestGeometrySelector* m_surfaceSel = nullptr;
};
