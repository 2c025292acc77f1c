// Test dialog "Project Point to Surface".

#pragma once

#include "core/ZORTestDialog.h"

class ZORTestGeometrySelector;

/// Adds the place of a surface that is nearest to a point.
class ZORTestGeoProjectPointSurfaceDlg final : public ZORTestDialog
{
    Q_OBJECT
    Q_CLASSINFO("label", QT_TR_NOOP("Project Point to Surface"))
    Q_CLASSINFO("createdTypes", "ZORGeoPointOnSurface")

public:
    Q_INVOKABLE explicit ZORTestGeoProjectPointSurfaceDlg(ZORTestEnvironment* environment);

    bool Apply() override;

private:
    ZORTestGeometrySelector* m_pointSel = nullptr;
    ZORTestGeometrySelector* m_surfaceSel = nullptr;
};
