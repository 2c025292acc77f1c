// Test dialog "Clean Curve".

#pragma once

#include "core/ZORTestDialog.h"

class ZORTestGeometrySelector;

/// Reports that a curve has no errors; nothing is checked so far.
class ZORTestGeoCleanCurveDlg final : public ZORTestDialog
{
    Q_OBJECT
    Q_CLASSINFO("label", QT_TR_NOOP("Clean Curve"))

public:
    Q_INVOKABLE explicit ZORTestGeoCleanCurveDlg(ZORTestEnvironment* environment);

    bool Apply() override;

private:
    ZORTestGeometrySelector* m_curveSel = nullptr;
};
