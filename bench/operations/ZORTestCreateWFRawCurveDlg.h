// Test dialog "Create WF Raw Curve".

#pragma once

#include "core/ZORTestDialog.h"

class ZORTestGeometrySelector;

/// Adds a raw curve around a curve of the container to a feature folder.
class ZORTestCreateWFRawCurveDlg final : public ZORTestDialog
{
    Q_OBJECT
    Q_CLASSINFO("label", "Create WF Raw Curve")

public:
    Q_INVOKABLE explicit ZORTestCreateWFRawCurveDlg(ZORTestEnvironment* environment);

    bool Apply() override;

private:
    ZORTestGeometrySelector* m_curveSel = nullptr;
    ZORTestGeometrySelector* m_folderSel = nullptr;
};
