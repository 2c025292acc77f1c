// Test dialog "Project Point to Curve".

#pragma once

#include "core/ZORTestDialog.h"

class ZORTestGeometrySelector;

/// Adds the place of a curve that is nearest to a point.
class ZORTestGeoProjectPointCurveDlg final : public ZORTestDialog
{
    Q_OBJECT
    Q_CLASSINFO("label", QT_TR_NOOP("Project Point to Curve"))
    Q_CLASSINFO("createdTypes", "ZORGeoPointOnCurve")

public:
    Q_INVOKABLE explicit ZORTestGeoProjectPointCurveDlg(ZORTestEnvironment* environment);

    bool Apply() override;

private:
    ZORTestGeometrySelector* m_pointSel = nullptr;
    ZORTestGeometrySelector* m_curveSel = nullptr;
};
