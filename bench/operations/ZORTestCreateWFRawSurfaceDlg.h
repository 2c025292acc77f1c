// Test dialog "Create WF Raw Surface".

#pragma once

#include "core/ZORTestDialog.h"

class ZORTestGeometrySelector;

/// Adds a raw surface around a surface of the container to a feature folder.
class ZORTestCreateWFRawSurfaceDlg final : public ZORTestDialog
{
    Q_OBJECT
    Q_CLASSINFO("label", "Create WF Raw Surface")

public:
    Q_INVOKABLE explicit ZORTestCreateWFRawSurfaceDlg(ZORTestEnvironment* environment);

    bool Apply() override;

private:
    ZORTestGeometrySelector* m_surfaceSel = nullptr;
    ZORTestGeometrySelector* m_folderSel = nullptr;
};
