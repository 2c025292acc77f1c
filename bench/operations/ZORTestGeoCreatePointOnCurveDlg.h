// Test dialog "Create Point on Curve".

#pragma once

#include "core/ZORTestDialog.h"

class ZORCmnUnitSpinBox;
class ZORTestGeometrySelector;

/// Adds the point at a distance along a curve, beyond its ends too.
class ZORTestGeoCreatePointOnCurveDlg final : public ZORTestDialog
{
    Q_OBJECT
    Q_CLASSINFO("label", QT_TR_NOOP("Create Point on Curve"))
    Q_CLASSINFO("createdTypes", "ZORGeoPointOnCurve")

public:
    Q_INVOKABLE explicit ZORTestGeoCreatePointOnCurveDlg(ZORTestEnvironment* environment);

    bool Apply() override;

private:
    ZORTestGeometrySelector* m_curveSel = nullptr;
    ZORCmnUnitSpinBox* m_distanceSpin = nullptr;
};
