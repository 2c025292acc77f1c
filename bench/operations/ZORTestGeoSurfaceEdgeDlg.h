// Test dialog "Create Surface Edge Curves".

#pragma once

#include "core/ZORTestDialog.h"

class ZORTestGeometrySelector;

/// Adds the border curves of a surface, and shows its border sides in the debug visualization: pairs of
/// points, yellow.
class ZORTestGeoSurfaceEdgeDlg final : public ZORTestDialog
{
    Q_OBJECT
    Q_CLASSINFO("label", QT_TR_NOOP("Create Surface Edge Curves"))
    Q_CLASSINFO("createdTypes", "ZORGeoCurveOnSurface ZORGeoTriangleEdgeCurve")

public:
    Q_INVOKABLE explicit ZORTestGeoSurfaceEdgeDlg(ZORTestEnvironment* environment);

    bool Apply() override;

private:
    ZORTestGeometrySelector* m_surfaceSel = nullptr;
};
