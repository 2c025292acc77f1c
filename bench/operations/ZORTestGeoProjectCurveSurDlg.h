// Test dialog "Project Curve to Surface".

#pragma once

#include "core/ZORTestDialog.h"

class ZORTestGeometrySelector;

/// Adds the projection of a curve on a surface.
class ZORTestGeoProjectCurveSurDlg final : public ZORTestDialog
{
    Q_OBJECT
    Q_CLASSINFO("label", QT_TR_NOOP("Project Curve to Surface"))
    Q_CLASSINFO("createdTypes", "ZORGeoCurveOnSurface")

public:
    Q_INVOKABLE explicit ZORTestGeoProjectCurveSurDlg(ZORTestEnvironment* environment);

    bool Apply() override;

private:
    ZORTestGeometrySelector* m_curveSel = nullptr;
    ZORTestGeometrySelector* m_surfaceSel = nullptr;
};
