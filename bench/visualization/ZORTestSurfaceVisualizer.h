// Draws surface geometries.

#pragma once

#include "visualization/ZORTestVisualizer.h"

class ZORTestSurfaceVisualizer final : public ZORTestVisualizer
{
    Q_OBJECT
    Q_CLASSINFO("supportedGeometry", "ZORGeoSurface")

public:
    Q_INVOKABLE ZORTestSurfaceVisualizer();

    /// \throws ZORSysException "geometry is not a surface"
    ZORVisVirtualObject* Visualize(ZORTestEnvironment* environment, ZORGeoGeometry* geometry) override;
};
