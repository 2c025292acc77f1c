// Test dialog "Create Topological Projection".

#pragma once

#include "core/ZORTestDialog.h"

class ZORTestGeometrySelector;

/// Adds the projection of a body of points or curves on the body of a surface.
class ZORTestTopProjectDlg final : public ZORTestDialog
{
    Q_OBJECT
    Q_CLASSINFO("label", QT_TR_NOOP("Create Topological Curve")) // established: that of the curve dialog

public:
    Q_INVOKABLE explicit ZORTestTopProjectDlg(ZORTestEnvironment* environment);

    bool Apply() override;

private:
    ZORTestGeometrySelector* m_projectedSel = nullptr;
    ZORTestGeometrySelector* m_supportSel = nullptr;
};
