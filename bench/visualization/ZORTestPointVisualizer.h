// Draws point geometries.

#pragma once

#include "visualization/ZORTestVisualizer.h"

class ZORTestPointVisualizer final : public ZORTestVisualizer
{
    Q_OBJECT
    Q_CLASSINFO("supportedGeometry", "ZORGeoPoint")

public:
    Q_INVOKABLE ZORTestPointVisualizer();

    /// \throws ZORSysException "geometry is not a point"
    ZORVisVirtualObject* Visualize(ZORTestEnvironment* environment, ZORGeoGeometry* geometry) override;
};
