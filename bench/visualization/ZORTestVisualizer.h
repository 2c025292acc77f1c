// Base of the visualizers, which turn a geometry into something to draw.

#pragma once

#include <QObject>

class ZORGeoGeometry;
class ZORTestEnvironment;
class ZORVisVirtualObject;

/// Draws the geometries of one or more SDK classes. A concrete visualizer names them in its class
/// information "supportedGeometry" (class names separated by one blank), has an invokable constructor
/// without arguments, registers itself with ZOR_TEST_REGISTER and keeps no state: one instance per
/// class serves every geometry.
class ZORTestVisualizer : public QObject
{
    Q_OBJECT

public:
    /// Asks for display options and builds the visual object of \a geometry.
    /// \return owned by the caller, not yet added to an environment; null when the options were cancelled
    /// \throws ZORSysException when \a geometry is of a class that this visualizer does not draw
    virtual ZORVisVirtualObject* Visualize(ZORTestEnvironment* environment, ZORGeoGeometry* geometry) = 0;
};
