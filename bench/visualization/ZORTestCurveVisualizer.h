// Draws curve geometries.

#pragma once

#include "visualization/ZORTestVisualizer.h"

class ZORTestCurveVisualizer final : public ZORTestVisualizer
{
    Q_OBJECT
    Q_CLASSINFO("supportedGeometry", "ZORGeoCurve")

public:
    Q_INVOKABLE ZORTestCurveVisualizer();

    /// \throws ZORSysException "geometry is not a curve"
    ZORVisVirtualObject* Visualize(ZORTestEnvironment* environment, ZORGeoGeometry* geometry) override;
};
