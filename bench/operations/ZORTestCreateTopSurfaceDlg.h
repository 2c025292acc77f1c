// Test dialog "Create Topological Surface".

#pragma once

#include "core/ZORTestDialog.h"

class QDoubleSpinBox;
class ZORTestGeometrySelector;

/// Adds the body of a surface, divided into faces where it turns.
class ZORTestCreateTopSurfaceDlg final : public ZORTestDialog
{
    Q_OBJECT
    Q_CLASSINFO("label", "Create Topological Surface")
    Q_CLASSINFO("createdTypes", "ZORTopBody")
    Q_CLASSINFO("bodyDim", "2")

public:
    Q_INVOKABLE explicit ZORTestCreateTopSurfaceDlg(ZORTestEnvironment* environment);

    bool Apply() override;

private:
    ZORTestGeometrySelector* m_surfaceSel = nullptr;
    QDoubleSpinBox* m_toleranceSpin = nullptr; // degrees
};
